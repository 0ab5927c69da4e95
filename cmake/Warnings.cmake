# vemra_warnings(TARGET): the warnings that all of the project's own code is built with.
function(vemra_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wshadow -Wnon-virtual-dtor
    -Woverloaded-virtual -Wformat=2 -Wundef)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # g++ 12 sees overlapping copies in any optimised "text" + string.
    target_compile_options(${target} PRIVATE -Wno-restrict)
  endif()
  if(VEMRA_WARNINGS_AS_ERRORS)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()
