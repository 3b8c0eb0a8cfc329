# Link rules for the zig macOS cross build (cmake/zig-macos.cmake), read after
# CMake's own Darwin rules. The module goes through lld; zig links programs.
# zig's linker knows none of the -Wl options CMake adds for Apple's linker,
# nor the -Wl,-v with which it looks into a compiler.
set(CMAKE_C_VERBOSE_FLAG "-v")
set(CMAKE_CXX_VERBOSE_FLAG "-v")
set(CMAKE_C_LINK_FLAGS "")
set(CMAKE_CXX_LINK_FLAGS "")
set(CMAKE_SHARED_MODULE_CREATE_CXX_FLAGS "")
set(CMAKE_CXX_CREATE_SHARED_MODULE
    "${CMAKE_CURRENT_LIST_DIR}/zig-macos-link-module.sh ${ZOLVA_ZIG} ${_zolva_zig_target} ${ZOLVA_LD64} ${ZOLVA_MACOS_ARCH} ${CMAKE_OSX_DEPLOYMENT_TARGET} <LINK_FLAGS> -o <TARGET> <OBJECTS> <LINK_LIBRARIES>")
