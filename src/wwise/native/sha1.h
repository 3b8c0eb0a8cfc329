// SHA-1 of a text: the digest the native export derives its identifiers
// from (as name-based UUIDs do), so that the same text always gives the
// same identifier on every platform.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace ZOLVA_Wwise::Native {

std::array<uint8_t, 20> Sha1(std::string_view text);

}  // namespace ZOLVA_Wwise::Native
