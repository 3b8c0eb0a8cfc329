#include "cluster/base64.h"

#include <array>

namespace ZOLVA_Cluster::Serialize {
namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr int8_t kInvalid = -1;

// Six-bit value of each byte, or kInvalid for bytes outside the alphabet.
const std::array<int8_t, 256>& DecodeTable() {
  static const std::array<int8_t, 256> table = [] {
    std::array<int8_t, 256> t{};
    t.fill(kInvalid);
    for (int i = 0; i < 64; ++i) t[static_cast<uint8_t>(kAlphabet[i])] = static_cast<int8_t>(i);
    return t;
  }();
  return table;
}

}  // namespace

std::string Base64Encode(const std::vector<uint8_t>& bytes) {
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  size_t i = 0;
  for (; i + 3 <= bytes.size(); i += 3) {
    const uint32_t group = (uint32_t{bytes[i]} << 16) | (uint32_t{bytes[i + 1]} << 8) | bytes[i + 2];
    text += kAlphabet[(group >> 18) & 63];
    text += kAlphabet[(group >> 12) & 63];
    text += kAlphabet[(group >> 6) & 63];
    text += kAlphabet[group & 63];
  }
  const size_t rest = bytes.size() - i;
  if (rest > 0) {
    uint32_t group = uint32_t{bytes[i]} << 16;
    if (rest == 2) group |= uint32_t{bytes[i + 1]} << 8;
    text += kAlphabet[(group >> 18) & 63];
    text += kAlphabet[(group >> 12) & 63];
    text += rest == 2 ? kAlphabet[(group >> 6) & 63] : '=';
    text += '=';
  }
  return text;
}

std::vector<uint8_t> Base64Decode(std::string_view text) {
  std::vector<uint8_t> bytes;
  if (text.empty() || text.size() % 4 != 0) return bytes;
  const auto& table = DecodeTable();
  bytes.reserve(text.size() / 4 * 3);
  for (size_t i = 0; i < text.size(); i += 4) {
    int8_t v[4];
    for (int k = 0; k < 4; ++k) v[k] = table[static_cast<uint8_t>(text[i + k])];
    if (v[0] == kInvalid || v[1] == kInvalid) break;
    const uint32_t group = (uint32_t(v[0]) << 18) | (uint32_t(v[1]) << 12) |
                           (uint32_t(v[2] == kInvalid ? 0 : v[2]) << 6) |
                           uint32_t(v[3] == kInvalid ? 0 : v[3]);
    bytes.push_back(static_cast<uint8_t>(group >> 16));
    if (text[i + 2] != '=') bytes.push_back(static_cast<uint8_t>(group >> 8));
    if (text[i + 3] != '=') bytes.push_back(static_cast<uint8_t>(group));
  }
  return bytes;
}

}  // namespace ZOLVA_Cluster::Serialize
