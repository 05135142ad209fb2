# The CMake package: what is installed, and under which names other projects link it.
#
#   component   target
#   Component   QuorAccQueries::QuorAccQueries   the component with its contracts
#   Host        QuorAccQueries::Host             the reference host, where it was built
#
# Both names also work for a project that takes this one in with add_subdirectory.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/QuorAccQueries)
set(header_dir ${CMAKE_INSTALL_INCLUDEDIR}/QuorAccQueries)
set(data_dir ${CMAKE_INSTALL_DATADIR}/QuorAccQueries)

# quoracc_package(TARGET NAME COMPONENT ROOT): a library as QuorAccQueries::NAME, part of a component
# of the package; its headers are found under ROOT here and under the one header folder once installed.
function(quoracc_package target name component root)
  set_target_properties(${target} PROPERTIES
    EXPORT_NAME ${name}
    INTERFACE_INCLUDE_DIRECTORIES "$<BUILD_INTERFACE:${root}>;$<INSTALL_INTERFACE:${header_dir}>")
  add_library(QuorAccQueries::${name} ALIAS ${target})
  add_dependencies(quoracc_product ${target})
  get_target_property(type ${target} TYPE)
  if(type STREQUAL SHARED_LIBRARY)
    set_target_properties(${target} PROPERTIES
      VERSION ${PROJECT_VERSION}
      SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}
      INSTALL_RPATH $ORIGIN)
    if(UNIX AND NOT APPLE)
      set(exports ${PROJECT_SOURCE_DIR}/cmake/exports.map)
      target_link_options(${target} PRIVATE LINKER:--version-script=${exports})
      set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${exports})
    endif()
  endif()
  if(QUORACC_INSTALL)
    install(TARGETS ${target} EXPORT QuorAccQueries${component})
  endif()
endfunction()

# Everything that is installed, in one build target.
add_custom_target(quoracc_product)

quoracc_package(quoracc_platform Platform Component ${PROJECT_SOURCE_DIR}/src)
quoracc_package(quoracc_component QuorAccQueries Component ${PROJECT_SOURCE_DIR}/src)
set(components Component)

if(QUORACC_HOST)
  add_library(quoracc_host INTERFACE)
  target_link_libraries(quoracc_host INTERFACE quoracc_application quoracc_company)
  foreach(library Sql Rows Written_Sql Sqlite_Sql Postgres Odbc Engines Application Company Host)
    string(TOLOWER quoracc_${library} target)
    if(NOT TARGET ${target})
      continue()
    endif()
    quoracc_package(${target} ${library} Host ${PROJECT_SOURCE_DIR})
  endforeach()
  list(APPEND components Host)
  add_dependencies(quoracc_product quoracc)
  if(TARGET quoracc_manual)
    add_dependencies(quoracc_product quoracc_manual)
  endif()
endif()

if(NOT QUORACC_INSTALL)
  return()
endif()

install(DIRECTORY ${PROJECT_SOURCE_DIR}/src/ DESTINATION ${header_dir}
        FILES_MATCHING PATTERN "*.h")
install(FILES ${PROJECT_SOURCE_DIR}/README.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs DESTINATION ${CMAKE_INSTALL_DOCDIR})

if(QUORACC_HOST)
  foreach(header sql/types.h sql/catalogue.h sql/front_end.h engines/store.h application/host.h
                 company/company.h)
    cmake_path(GET header PARENT_PATH folder)
    install(FILES ${PROJECT_SOURCE_DIR}/host/${header} DESTINATION ${header_dir}/host/${folder})
  endforeach()
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/host/company/schema DESTINATION ${data_dir}
          FILES_MATCHING PATTERN "*.sql")
  install(TARGETS quoracc RUNTIME)
  if(TARGET quoracc_manual)
    get_target_property(manual quoracc_manual QUORACC_FOLDER)
    install(FILES ${manual}/quoracc.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
    install(FILES ${manual}/quoracc.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
            RENAME quoracc)
    install(FILES ${manual}/quoracc.zsh DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions
            RENAME _quoracc)
    install(FILES ${manual}/quoracc.fish
            DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
  endif()
endif()

foreach(component IN LISTS components)
  install(EXPORT QuorAccQueries${component} NAMESPACE QuorAccQueries::
          FILE QuorAccQueries${component}.cmake DESTINATION ${package_dir})
endforeach()
configure_package_config_file(cmake/QuorAccQueriesConfig.cmake.in QuorAccQueriesConfig.cmake
                              INSTALL_DESTINATION ${package_dir} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(QuorAccQueriesConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/QuorAccQueriesConfig.cmake
              ${PROJECT_BINARY_DIR}/QuorAccQueriesConfigVersion.cmake
              ${PROJECT_SOURCE_DIR}/cmake/QuorAccQueriesCompiler.cmake
        DESTINATION ${package_dir})
