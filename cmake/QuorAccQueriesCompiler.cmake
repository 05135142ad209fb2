# quoracc_check_compiler(RESULT): puts into RESULT why the compiler cannot build or use the library;
# empty where it can. Ranges and std::source_location are what older ones lack.
function(quoracc_check_compiler result)
  set(oldest_GNU 11)
  set(oldest_Clang 16)
  set(oldest_AppleClang 15)
  set(oldest_MSVC 19.30)
  set(oldest ${oldest_${CMAKE_CXX_COMPILER_ID}})
  set(${result} "" PARENT_SCOPE)
  if(oldest AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS oldest)
    set(${result} "QuorAccQueries needs C++20 with std::source_location: \
${CMAKE_CXX_COMPILER_ID} ${oldest} or newer, and this is ${CMAKE_CXX_COMPILER_VERSION}. \
Name a newer compiler with -DCMAKE_CXX_COMPILER=..." PARENT_SCOPE)
  endif()
endfunction()
