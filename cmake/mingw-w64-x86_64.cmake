# Cross-compiles for 64-bit Windows with Debian's MinGW-w64 (package
# g++-mingw-w64-x86-64-posix; the posix flavour has std::thread and std::mutex):
#
#   cmake -S . -B build-windows -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-x86_64.cmake
#
# The test programs then run under Wine (ctest uses it as the emulator), with
# GoogleTest built from its source (Debian package googletest, /usr/src/googletest).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR AMD64)

set(_zolva_mingw x86_64-w64-mingw32)
find_program(CMAKE_CXX_COMPILER NAMES ${_zolva_mingw}-g++-posix ${_zolva_mingw}-g++ REQUIRED)
# GoogleTest's project enables C as well.
find_program(CMAKE_C_COMPILER NAMES ${_zolva_mingw}-gcc-posix ${_zolva_mingw}-gcc REQUIRED)
find_program(CMAKE_RC_COMPILER NAMES ${_zolva_mingw}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${_zolva_mingw})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

find_program(_zolva_wine NAMES wine wine64)
if(_zolva_wine)
  set(CMAKE_CROSSCOMPILING_EMULATOR "${_zolva_wine}")
endif()
set(ZOLVA_GTEST_SOURCE_DIR /usr/src/googletest CACHE PATH "GoogleTest source to build with the project")
