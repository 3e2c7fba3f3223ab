# How every target of the program is compiled, and the short forms used by the folders.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  # Without these ccache does not know a precompiled header again that was built anew from the same text.
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CMAKE_COMMAND}" -E env
    "CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime" "${CCACHE_PROGRAM}")
endif()

# Links a test of sanitized code in a tenth of the time.
find_program(MOLD_PROGRAM mold)
if(MOLD_PROGRAM AND NOT CMAKE_CROSSCOMPILING)
  add_link_options(-fuse-ld=mold)
endif()

add_library(bellmark_options INTERFACE)
target_include_directories(bellmark_options INTERFACE "${CMAKE_SOURCE_DIR}/src")
target_compile_options(bellmark_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror
  # The results must not depend on how a compiler contracts a product and a sum.
  -ffp-contract=off)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 warns of overlapping copies in every "text" + std::string it inlines (GCC bug 105651), and where the headers are
  # precompiled, of copies and indexes out of bounds in the library's own strings and vectors: not the sources' faults.
  target_compile_options(bellmark_options INTERFACE
    -Wno-restrict -Wno-array-bounds -Wno-stringop-overflow -Wno-stringop-overread)
endif()
if(BELLMARK_SANITIZE)
  target_compile_options(bellmark_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(bellmark_options INTERFACE -fsanitize=address,undefined)
endif()
if(BELLMARK_FUZZ)
  target_compile_options(bellmark_options INTERFACE -fsanitize=fuzzer-no-link,address,undefined)
  target_link_options(bellmark_options INTERFACE -fsanitize=address,undefined)
endif()

# bellmark_precompile(TARGET FROM [headers]): the target's sources start from the precompiled headers of the library FROM, or
# from precompiled headers of their own. Libraries that share them must have the same definitions and options.
function(bellmark_precompile target from)
  if(ARGN)
    target_precompile_headers(${target} PRIVATE "${CMAKE_SOURCE_DIR}/src/standard_headers.h" ${ARGN})
  else()
    target_precompile_headers(${target} REUSE_FROM ${from})
  endif()
endfunction()

# bellmark_library(NAME SOURCES a.cpp b.cpp DEPENDS bellmark_x PRECOMPILE <x.h>): one folder, one library.
function(bellmark_library name)
  cmake_parse_arguments(PARSE_ARGV 1 LIBRARY "" "" "SOURCES;DEPENDS;PRECOMPILE")
  add_library(bellmark_${name} STATIC ${LIBRARY_SOURCES})
  target_link_libraries(bellmark_${name} PUBLIC bellmark_options ${LIBRARY_DEPENDS})
  bellmark_precompile(bellmark_${name} bellmark_standard_headers ${LIBRARY_PRECOMPILE})
  bellmark_record_dependencies("${name}" ${LIBRARY_DEPENDS})
  # Target all_verify_interface_header_sets compiles each header by itself.
  file(GLOB headers CONFIGURE_DEPENDS "*.h")
  target_sources(bellmark_${name} INTERFACE FILE_SET HEADERS BASE_DIRS "${CMAKE_SOURCE_DIR}/src" FILES ${headers})
  set_target_properties(bellmark_${name} PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON)
endfunction()

# bellmark_program(NAME DEPENDS bellmark_x): the program of a folder, from its main.cpp.
function(bellmark_program name)
  cmake_parse_arguments(PARSE_ARGV 1 PROGRAM "" "" "DEPENDS")
  add_executable(${name} main.cpp)
  target_link_libraries(${name} PRIVATE ${PROGRAM_DEPENDS})
  if(WIN32)
    target_sources(${name} PRIVATE "${CMAKE_SOURCE_DIR}/cmake/windows/program.rc")
  endif()
  get_filename_component(folder "${CMAKE_CURRENT_SOURCE_DIR}" NAME)
  bellmark_record_dependencies("${folder}/main.cpp" ${PROGRAM_DEPENDS})
endfunction()

# The graph of the libraries, for the test of the architecture: a line "setup fwd tables" for each library, and one with
# "console/main.cpp" in front for each program.
function(bellmark_record_dependencies from)
  list(FILTER ARGN INCLUDE REGEX "^bellmark_")
  list(TRANSFORM ARGN REPLACE "^bellmark_" "")
  list(JOIN ARGN " " depends)
  set_property(GLOBAL APPEND PROPERTY BELLMARK_DEPENDENCIES "${from} ${depends}")
endfunction()

# bellmark_test(NAME SOURCES a_test.cpp DEPENDS bellmark_x PRECOMPILE <x.h>): a GoogleTest program, its cases found by ctest.
function(bellmark_test name)
  cmake_parse_arguments(PARSE_ARGV 1 TEST "" "" "SOURCES;DEPENDS;PRECOMPILE")
  add_executable(${name} ${TEST_SOURCES})
  target_link_libraries(${name} PRIVATE ${TEST_DEPENDS} bellmark_test_headers)
  bellmark_precompile(${name} bellmark_test_headers ${TEST_PRECOMPILE})
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
