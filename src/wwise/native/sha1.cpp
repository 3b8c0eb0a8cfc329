#include "wwise/native/sha1.h"

#include <string>

namespace ZOLVA_Wwise::Native {
namespace {

uint32_t Rotate(uint32_t value, int bits) { return (value << bits) | (value >> (32 - bits)); }

void Compress(uint32_t state[5], const uint8_t* block) {
  uint32_t w[80];
  for (int i = 0; i < 16; ++i) {
    w[i] = uint32_t{block[4 * i]} << 24 | uint32_t{block[4 * i + 1]} << 16 | uint32_t{block[4 * i + 2]} << 8 |
           uint32_t{block[4 * i + 3]};
  }
  for (int i = 16; i < 80; ++i) w[i] = Rotate(w[i - 3] ^ w[i - 8] ^ w[i - 14] ^ w[i - 16], 1);
  uint32_t a = state[0], b = state[1], c = state[2], d = state[3], e = state[4];
  for (int i = 0; i < 80; ++i) {
    uint32_t f, k;
    if (i < 20) {
      f = (b & c) | (~b & d), k = 0x5A827999u;
    } else if (i < 40) {
      f = b ^ c ^ d, k = 0x6ED9EBA1u;
    } else if (i < 60) {
      f = (b & c) | (b & d) | (c & d), k = 0x8F1BBCDCu;
    } else {
      f = b ^ c ^ d, k = 0xCA62C1D6u;
    }
    const uint32_t next = Rotate(a, 5) + f + e + k + w[i];
    e = d, d = c, c = Rotate(b, 30), b = a, a = next;
  }
  state[0] += a, state[1] += b, state[2] += c, state[3] += d, state[4] += e;
}

}  // namespace

std::array<uint8_t, 20> Sha1(std::string_view text) {
  uint32_t state[5] = {0x67452301u, 0xEFCDAB89u, 0x98BADCFEu, 0x10325476u, 0xC3D2E1F0u};
  const size_t whole = text.size() - text.size() % 64;
  for (size_t at = 0; at < whole; at += 64) Compress(state, reinterpret_cast<const uint8_t*>(text.data() + at));
  // The rest, a one bit, zeros, and the length in bits as a 64-bit big-endian number.
  std::string tail(text.substr(whole));
  tail += static_cast<char>(0x80);
  while (tail.size() % 64 != 56) tail += '\0';
  const uint64_t bits = static_cast<uint64_t>(text.size()) * 8;
  for (int shift = 56; shift >= 0; shift -= 8) tail += static_cast<char>((bits >> shift) & 0xFF);
  for (size_t at = 0; at < tail.size(); at += 64) Compress(state, reinterpret_cast<const uint8_t*>(tail.data() + at));
  std::array<uint8_t, 20> digest{};
  for (int i = 0; i < 20; ++i) digest[i] = static_cast<uint8_t>(state[i / 4] >> (24 - 8 * (i % 4)));
  return digest;
}

}  // namespace ZOLVA_Wwise::Native
