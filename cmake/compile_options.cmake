# Warnings are errors in our own code, for all targets that call zentor_compile_options.
set(ZENTOR_SANITIZE "" CACHE STRING "Sanitizers for all targets, e.g. address,undefined")

if(ZENTOR_SANITIZE)
  add_compile_options(-fsanitize=${ZENTOR_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${ZENTOR_SANITIZE})
endif()

if(ZENTOR_BUILD_FUZZ)
  # RapidJSON adds an offset to a null pointer when its stack is empty, which clang objects to.
  add_compile_options(-fsanitize=fuzzer-no-link -fno-sanitize=pointer-overflow)
endif()

function(zentor_compile_options target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wold-style-cast
    -Woverloaded-virtual -Werror)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # GCC 12 sees overlaps in std::string operators that are not there (GCC bug 105651).
    target_compile_options(${target} PRIVATE -Wno-restrict)
  endif()
  if(WIN32)
    target_compile_definitions(${target} PRIVATE UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0601)
  endif()
endfunction()
