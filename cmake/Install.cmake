# The CMake package: what is installed, and under which names other projects link it.
#
#   QuorAccQueries::QuorAccQueries   the component with its contracts
#   QuorAccQueries::Host             the reference host, where it was built
#
# Both names also work for a project that takes this one in with add_subdirectory.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/QuorAccQueries)
set(header_dir ${CMAKE_INSTALL_INCLUDEDIR}/QuorAccQueries)

# quoracc_install(TARGET NAME): installs a library as QuorAccQueries::NAME; its headers are found
# under `root` here and under the one header folder once installed.
function(quoracc_install target name root)
  set_target_properties(${target} PROPERTIES
    EXPORT_NAME ${name}
    INTERFACE_INCLUDE_DIRECTORIES "$<BUILD_INTERFACE:${root}>;$<INSTALL_INTERFACE:${header_dir}>")
  add_library(QuorAccQueries::${name} ALIAS ${target})
  install(TARGETS ${target} EXPORT QuorAccQueries ARCHIVE LIBRARY)
  add_dependencies(product ${target})
endfunction()

# Everything that is installed, in one build target.
add_custom_target(product)

quoracc_install(quoracc_platform Platform ${PROJECT_SOURCE_DIR}/src)
quoracc_install(quoracc_component QuorAccQueries ${PROJECT_SOURCE_DIR}/src)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/src/ DESTINATION ${header_dir}
        FILES_MATCHING PATTERN "*.h")

if(QUORACC_HOST)
  add_library(quoracc_host INTERFACE)
  target_link_libraries(quoracc_host INTERFACE quoracc_application quoracc_company)
  foreach(library Sql Sqlite_Sql Engines Application Company Host)
    string(TOLOWER quoracc_${library} target)
    quoracc_install(${target} ${library} ${PROJECT_SOURCE_DIR})
  endforeach()
  foreach(header sql/types.h sql/catalogue.h sql/front_end.h engines/store.h application/host.h
                 company/company.h)
    cmake_path(GET header PARENT_PATH folder)
    install(FILES ${PROJECT_SOURCE_DIR}/host/${header} DESTINATION ${header_dir}/host/${folder})
  endforeach()
  install(TARGETS quoracc RUNTIME)
  add_dependencies(product quoracc)
endif()

install(EXPORT QuorAccQueries NAMESPACE QuorAccQueries:: FILE QuorAccQueriesTargets.cmake
        DESTINATION ${package_dir})
configure_package_config_file(cmake/QuorAccQueriesConfig.cmake.in QuorAccQueriesConfig.cmake
                              INSTALL_DESTINATION ${package_dir} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(QuorAccQueriesConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/QuorAccQueriesConfig.cmake
              ${PROJECT_BINARY_DIR}/QuorAccQueriesConfigVersion.cmake
        DESTINATION ${package_dir})
