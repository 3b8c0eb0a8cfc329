// Base64 with the standard alphabet and '=' padding, as both levels of the
// stored cluster container use it. The decoder is deliberately lenient in
// the ways the stored format has always been read.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ZOLVA_Cluster::Serialize {

// Padded to a multiple of four characters, no line breaks.
std::string Base64Encode(const std::vector<uint8_t>& bytes);

// Gives no bytes for an empty text or a length that is not a multiple of
// four. Works in groups of four: an invalid first or second character ends
// decoding (bytes so far are kept); an invalid third or fourth character
// counts as zero bits. A group yields its second byte unless the third
// character is '=', its third unless the fourth is '='.
std::vector<uint8_t> Base64Decode(std::string_view text);

}  // namespace ZOLVA_Cluster::Serialize
