# How every target of the program is compiled, and the short forms used by the folders.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()

add_library(bellmark_options INTERFACE)
target_include_directories(bellmark_options INTERFACE "${CMAKE_SOURCE_DIR}/src")
target_compile_options(bellmark_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror
  # The results must not depend on how a compiler contracts a product and a sum.
  -ffp-contract=off)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 warns of overlapping copies in every "text" + std::string it inlines (GCC bug 105651).
  target_compile_options(bellmark_options INTERFACE -Wno-restrict)
endif()
if(BELLMARK_SANITIZE)
  target_compile_options(bellmark_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(bellmark_options INTERFACE -fsanitize=address,undefined)
endif()
if(BELLMARK_FUZZ)
  target_compile_options(bellmark_options INTERFACE -fsanitize=fuzzer-no-link,address,undefined)
  target_link_options(bellmark_options INTERFACE -fsanitize=address,undefined)
endif()

# bellmark_library(NAME SOURCES a.cpp b.cpp DEPENDS bellmark_x): one folder, one library.
function(bellmark_library name)
  cmake_parse_arguments(PARSE_ARGV 1 LIBRARY "" "" "SOURCES;DEPENDS")
  add_library(bellmark_${name} STATIC ${LIBRARY_SOURCES})
  target_link_libraries(bellmark_${name} PUBLIC bellmark_options ${LIBRARY_DEPENDS})
endfunction()

# bellmark_test(NAME SOURCES a_test.cpp DEPENDS bellmark_x): a GoogleTest program, its cases found by ctest.
function(bellmark_test name)
  cmake_parse_arguments(PARSE_ARGV 1 TEST "" "" "SOURCES;DEPENDS")
  add_executable(${name} ${TEST_SOURCES})
  target_link_libraries(${name} PRIVATE ${TEST_DEPENDS} bellmark_options GTest::gtest GTest::gmock GTest::gtest_main)
  target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}")
  target_compile_definitions(${name} PRIVATE BELLMARK_SOURCE_FOLDER="${CMAKE_SOURCE_DIR}")
  add_test(NAME ${name} COMMAND ${name})
endfunction()

if(BELLMARK_FUZZ)
  add_custom_target(fuzz_targets)
endif()

# bellmark_fuzz(NAME SOURCES a_fuzz.cpp DEPENDS bellmark_x): a libFuzzer program, built by the fuzz preset alone.
function(bellmark_fuzz name)
  if(NOT BELLMARK_FUZZ)
    return()
  endif()
  cmake_parse_arguments(PARSE_ARGV 1 FUZZ "" "" "SOURCES;DEPENDS")
  add_executable(${name} ${FUZZ_SOURCES})
  target_link_libraries(${name} PRIVATE ${FUZZ_DEPENDS} bellmark_options)
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  add_dependencies(fuzz_targets ${name})
endfunction()
