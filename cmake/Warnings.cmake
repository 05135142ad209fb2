# What every target of the project is compiled with; private, so that it reaches no user of it, and
# errors only here: a compiler of the future may warn of what is no fault.
# Designated initializers leave members to their defaults, which is what they are for; and GCC 12 sees
# overlapping copies where texts are joined at -O3 (GCC bug 105651).
function(quoracc_target target)
  if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
                                             -Wcast-align -Wunused -Wno-missing-field-initializers
                                             $<$<BOOL:${QUORACC_WERROR}>:-Werror>
                                             $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
  endif()
  quoracc_harden(${target})
endfunction()
