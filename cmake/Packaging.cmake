# Release files for the platform being built:
#
#   cmake --build <build folder> --target release
#
# writes into <build folder>/release/ the archive
# ZOLVA-<version>-<platform>.tar.gz (.zip on Windows) holding the library,
# README.md, LICENSE, CHANGELOG.md, docs/api.md, docs/zolva.lua and the
# example script,
# and next to it the bare library, which the ReaPack description
# (packaging/reapack/ZOLVA.ext) points its download links at.

# The platform part of the file name, as the library's name states it.
if(APPLE)
  if("arm64" IN_LIST CMAKE_OSX_ARCHITECTURES AND "x86_64" IN_LIST CMAKE_OSX_ARCHITECTURES)
    set(_zolva_platform "macos-universal")
  else()
    # A cross build makes one architecture on purpose; the slices are joined afterwards.
    if(NOT CMAKE_CROSSCOMPILING)
      message(WARNING "CMAKE_OSX_ARCHITECTURES is \"${CMAKE_OSX_ARCHITECTURES}\": the release archive will "
                      "not be universal (arm64;x86_64)")
    endif()
    string(REPLACE ";" "-" _zolva_arch "${CMAKE_OSX_ARCHITECTURES}")
    if(NOT _zolva_arch)
      set(_zolva_arch "${CMAKE_SYSTEM_PROCESSOR}")
    endif()
    set(_zolva_platform "macos-${_zolva_arch}")
  endif()
  set(CPACK_GENERATOR TGZ)
elseif(WIN32)
  set(_zolva_platform "windows-x64")
  set(CPACK_GENERATOR ZIP)
else()
  set(_zolva_platform "linux-${CMAKE_SYSTEM_PROCESSOR}")
  set(CPACK_GENERATOR TGZ)
endif()

if(NOT EXISTS "${PROJECT_SOURCE_DIR}/README.md" OR NOT EXISTS "${PROJECT_SOURCE_DIR}/LICENSE")
  message(FATAL_ERROR "README.md and LICENSE go into the release archive; one of them is missing")
endif()

# The archive's own install component, with paths relative to the archive,
# apart from the install into REAPER's UserPlugins folder.
install(TARGETS reaper_zolva
  LIBRARY DESTINATION . COMPONENT release EXCLUDE_FROM_ALL
  RUNTIME DESTINATION . COMPONENT release EXCLUDE_FROM_ALL)
install(FILES "${PROJECT_SOURCE_DIR}/README.md" "${PROJECT_SOURCE_DIR}/LICENSE"
  DESTINATION . COMPONENT release EXCLUDE_FROM_ALL)
if(EXISTS "${PROJECT_SOURCE_DIR}/CHANGELOG.md")
  install(FILES "${PROJECT_SOURCE_DIR}/CHANGELOG.md" DESTINATION . COMPONENT release EXCLUDE_FROM_ALL)
endif()
install(FILES "${PROJECT_SOURCE_DIR}/docs/api.md" "${PROJECT_SOURCE_DIR}/docs/zolva.lua"
  DESTINATION docs COMPONENT release EXCLUDE_FROM_ALL)
install(FILES "${PROJECT_SOURCE_DIR}/examples/zolva_example.lua"
  DESTINATION examples COMPONENT release EXCLUDE_FROM_ALL)

set(CPACK_PACKAGE_NAME "ZOLVA")
set(CPACK_PACKAGE_VENDOR "ZOLVA developers")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_FILE_NAME "ZOLVA-${PROJECT_VERSION}-${_zolva_platform}")
set(CPACK_PACKAGE_DIRECTORY "${CMAKE_BINARY_DIR}/release")
set(CPACK_RESOURCE_FILE_LICENSE "${PROJECT_SOURCE_DIR}/LICENSE")
# Only the release component, never the install into UserPlugins.
set(CPACK_INSTALL_CMAKE_PROJECTS "${CMAKE_BINARY_DIR};${PROJECT_NAME};release;/")
set(CPACK_ERROR_ON_ABSOLUTE_INSTALL_DESTINATION ON)
set(CPACK_ARCHIVE_COMPONENT_INSTALL OFF)
set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY ON)
set(CPACK_STRIP_FILES ON)
include(CPack)

# The bare library is the stripped one the archive holds, taken from an
# install of the same component.
set(_zolva_staging "${CMAKE_BINARY_DIR}/release/staging")
add_custom_target(release
  COMMAND "${CMAKE_CPACK_COMMAND}" --config "${CMAKE_BINARY_DIR}/CPackConfig.cmake" -C "$<CONFIG>"
  COMMAND "${CMAKE_COMMAND}" --install "${CMAKE_BINARY_DIR}" --config "$<CONFIG>" --component release --strip
          --prefix "${_zolva_staging}"
  COMMAND "${CMAKE_COMMAND}" -E copy "${_zolva_staging}/$<TARGET_FILE_NAME:reaper_zolva>"
          "${CMAKE_BINARY_DIR}/release/"
  COMMAND "${CMAKE_COMMAND}" -E rm -rf "${_zolva_staging}" "${CMAKE_BINARY_DIR}/release/_CPack_Packages"
  DEPENDS reaper_zolva
  WORKING_DIRECTORY "${CMAKE_BINARY_DIR}"
  COMMENT "Writing the release files into ${CMAKE_BINARY_DIR}/release"
  VERBATIM)
