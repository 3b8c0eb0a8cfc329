# Cross-compiles for 64-bit ARM Linux with Debian's cross compiler (package
# g++-aarch64-linux-gnu):
#
#   cmake -S . -B build-aarch64 -DCMAKE_TOOLCHAIN_FILE=cmake/aarch64-linux-gnu.cmake
#
# The test programs then run under qemu-user (ctest uses it as the emulator;
# package qemu-user-static or qemu-user), with GoogleTest built from its source
# (Debian package googletest, /usr/src/googletest). Commands the tests start
# (xmllint, nm) are the machine's own and run natively.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)

set(_zolva_triple aarch64-linux-gnu)
find_program(CMAKE_CXX_COMPILER NAMES ${_zolva_triple}-g++ REQUIRED)
# GoogleTest's project enables C as well.
find_program(CMAKE_C_COMPILER NAMES ${_zolva_triple}-gcc REQUIRED)
set(CMAKE_FIND_ROOT_PATH /usr/${_zolva_triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

find_program(_zolva_qemu NAMES qemu-aarch64-static qemu-aarch64)
if(_zolva_qemu)
  # -L: the target's dynamic loader and libraries.
  set(CMAKE_CROSSCOMPILING_EMULATOR "${_zolva_qemu};-L;/usr/${_zolva_triple}")
endif()
set(ZOLVA_GTEST_SOURCE_DIR /usr/src/googletest CACHE PATH "GoogleTest source to build with the project")
