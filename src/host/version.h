// The extension's version text, taken from the build's project version.
#pragma once

namespace ZOLVA {

inline constexpr char kVersion[] = ZOLVA_VERSION;

}  // namespace ZOLVA
