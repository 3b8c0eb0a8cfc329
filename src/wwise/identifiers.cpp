// The process-wide identifier generators of the Wwise model: GUIDs and
// ShortIds come from two independent Mersenne Twisters, each seeded once from
// the system's random device on first use and never reseeded.
#include <cstdint>
#include <mutex>
#include <random>
#include <string>

#include "wwise/transform.h"

namespace ZOLVA_Wwise::Schema {
namespace {

class Generator {
 public:
  Generator() : engine_(device_()) {}
  uint32_t Next() {
    std::lock_guard<std::mutex> lock(mutex_);
    return distribution_(engine_);
  }

 private:
  std::random_device device_;
  std::mt19937 engine_;
  std::uniform_int_distribution<uint32_t> distribution_{0, UINT32_MAX};
  std::mutex mutex_;  // the engine is shared by every caller
};

// Function-local statics: created on first use, once, safely across threads.
Generator& GuidGenerator() {
  static Generator generator;
  return generator;
}

Generator& ShortIdGenerator() {
  static Generator generator;
  return generator;
}

void AppendHex(std::string& out, uint32_t value, int digits) {
  static const char kDigits[] = "0123456789ABCDEF";
  for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4) out += kDigits[(value >> shift) & 0xF];
}

}  // namespace

// "{aaaaaaaa-bbbb-bbbb-cccc-ccccdddddddd}" from four draws a, b, c, d. No
// version or variant bits are set: every bit is random.
std::string GenerateWwiseGUID() {
  Generator& generator = GuidGenerator();
  const uint32_t a = generator.Next(), b = generator.Next(), c = generator.Next(), d = generator.Next();
  std::string guid;
  guid.reserve(38);
  guid += '{';
  AppendHex(guid, a, 8);
  guid += '-';
  AppendHex(guid, b >> 16, 4);
  guid += '-';
  AppendHex(guid, b, 4);
  guid += '-';
  AppendHex(guid, c >> 16, 4);
  guid += '-';
  AppendHex(guid, c, 4);
  AppendHex(guid, d, 8);
  guid += '}';
  return guid;
}

std::string GenerateShortId() { return std::to_string(ShortIdGenerator().Next()); }

}  // namespace ZOLVA_Wwise::Schema
