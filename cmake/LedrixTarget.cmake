# What every target of Ledrix shares: the language level, the warnings, the sanitizers, and whether
# a room is compiled as one.
set(LEDRIX_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize takes them")
option(LEDRIX_FUZZ "Build the fuzzers (clang only)" OFF)
option(LEDRIX_WERROR "Stop at a warning" OFF)
option(LEDRIX_UNITY "Compile a room, a folder of sources, as one: all of it several times faster" OFF)

# Groups a target's sources by folder. A source that cannot share a unit with its room is taken out
# by its property SKIP_UNITY_BUILD_INCLUSION, set where it is listed, with the reason.
function(ledrix_join_rooms name)
  get_target_property(sources ${name} SOURCES)
  foreach(source IN LISTS sources)
    get_filename_component(room ${source} DIRECTORY)
    string(MAKE_C_IDENTIFIER "room/${room}" room)
    set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${room})
  endforeach()
  set_target_properties(${name} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
endfunction()

function(ledrix_target name)
  target_compile_features(${name} PUBLIC cxx_std_20)
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  # -Wno-restrict: the compiler of Debian 12 sees overlaps in std::string that are none.
  target_compile_options(${name} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                                         -Wno-sign-conversion -Wno-missing-field-initializers
                                         $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
  if(LEDRIX_WERROR)
    target_compile_options(${name} PRIVATE -Werror)
  endif()
  if(LEDRIX_UNITY)  # deferred: by the end of the folder's CMakeLists.txt all sources are named
    cmake_language(EVAL CODE "cmake_language(DEFER CALL ledrix_join_rooms ${name})")
  endif()
  if(LEDRIX_SANITIZE)
    target_compile_options(${name} PRIVATE -fsanitize=${LEDRIX_SANITIZE} -fno-omit-frame-pointer
                                           -fno-sanitize-recover=all)
    target_link_options(${name} PRIVATE -fsanitize=${LEDRIX_SANITIZE})
  endif()
  if(LEDRIX_FUZZ)
    target_compile_options(${name} PRIVATE -fsanitize=fuzzer-no-link)
  endif()
endfunction()
