# What every target of Ledrix shares: the language level, the warnings, the sanitizers.
set(LEDRIX_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize takes them")
option(LEDRIX_FUZZ "Build the fuzzers (clang only)" OFF)

function(ledrix_target name)
  target_compile_features(${name} PUBLIC cxx_std_20)
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  # -Wno-restrict: the compiler of Debian 12 sees overlaps in std::string that are none.
  target_compile_options(${name} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                                         -Wno-sign-conversion -Wno-missing-field-initializers
                                         -Wno-restrict -Werror)
  if(LEDRIX_SANITIZE)
    target_compile_options(${name} PRIVATE -fsanitize=${LEDRIX_SANITIZE} -fno-omit-frame-pointer
                                           -fno-sanitize-recover=all)
    target_link_options(${name} PRIVATE -fsanitize=${LEDRIX_SANITIZE})
  endif()
  if(LEDRIX_FUZZ)
    target_compile_options(${name} PRIVATE -fsanitize=fuzzer-no-link)
  endif()
endfunction()
