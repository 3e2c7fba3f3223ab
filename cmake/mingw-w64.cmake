# Builds for 64-bit Windows with Debian's MinGW-w64. The tests run under Wine.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# The program runs where no compiler is installed.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
find_program(WINE_PROGRAM NAMES wine64 wine PATHS /usr/lib/wine)
if(WINE_PROGRAM)
  set(CMAKE_CROSSCOMPILING_EMULATOR "${WINE_PROGRAM}")
endif()

# Headers alone, the same on every system. The host's other headers must not be seen.
if(EXISTS /usr/include/boost AND NOT EXISTS "${CMAKE_BINARY_DIR}/headers/boost")
  file(MAKE_DIRECTORY "${CMAKE_BINARY_DIR}/headers")
  file(CREATE_LINK /usr/include/boost "${CMAKE_BINARY_DIR}/headers/boost" SYMBOLIC)
endif()
list(APPEND CMAKE_FIND_ROOT_PATH "${CMAKE_BINARY_DIR}/headers")
set(Boost_INCLUDE_DIR "${CMAKE_BINARY_DIR}/headers" CACHE PATH "")
