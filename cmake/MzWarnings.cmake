# Warning and sanitizer flags shared by every target of the project.
add_library(mz_project_options INTERFACE)
target_compile_options(mz_project_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
                                                   -Woverloaded-virtual -Wconversion -Wsign-conversion)
if(MZ_WARNINGS_AS_ERRORS)
  target_compile_options(mz_project_options INTERFACE -Werror)
endif()

if(MZ_SANITIZE)
  set(_mz_san -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    list(APPEND _mz_san -fsanitize-ignorelist=${PROJECT_SOURCE_DIR}/cmake/sanitizer-ignorelist.txt)
  endif()
  add_compile_options(${_mz_san})
  add_link_options(${_mz_san})
endif()

if(MZ_BUILD_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "MZ_BUILD_FUZZ needs Clang")
  endif()
  # Coverage for the fuzzer in every library it reaches.
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

if(MZ_COVERAGE)
  add_compile_options(--coverage -O0)
  add_link_options(--coverage)
endif()

# Every project target links this to get the flags above.
function(mz_target_defaults target)
  target_link_libraries(${target} PRIVATE mz_project_options)
endfunction()
