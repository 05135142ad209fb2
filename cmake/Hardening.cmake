# What hardens release builds against faults that are found in them one day: guarded stacks, checked
# buffers, addresses that are not known beforehand, tables that are read-only once the program runs.
# Private to each target, and left to the flags of whoever builds where these speak of the same.
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

# quoracc_harden(TARGET): called for every target of the project.
function(quoracc_harden target)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang" OR WIN32)
    return()
  endif()
  set(flags "${CMAKE_CXX_FLAGS} ${CMAKE_CXX_FLAGS_RELEASE} ${CMAKE_CXX_FLAGS_RELWITHDEBINFO}")
  set(release $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
  if(NOT flags MATCHES "stack-protector")
    target_compile_options(${target} PRIVATE $<${release}:-fstack-protector-strong>)
  endif()
  # Sanitizers look at the calls that this would replace.
  if(NOT flags MATCHES "FORTIFY_SOURCE|-fsanitize")
    target_compile_options(${target} PRIVATE
      $<${release}:-U_FORTIFY_SOURCE> $<${release}:-D_FORTIFY_SOURCE=2>)
  endif()
  get_target_property(type ${target} TYPE)
  if(type STREQUAL "EXECUTABLE")
    set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE ON)
  endif()
  if(NOT APPLE AND NOT type STREQUAL "STATIC_LIBRARY")
    target_link_options(${target} PRIVATE $<${release}:LINKER:-z,relro,-z,now>)
  endif()
endfunction()
