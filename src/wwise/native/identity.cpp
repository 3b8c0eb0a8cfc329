#include "wwise/native/identity.h"

#include "wwise/native/sha1.h"

namespace ZOLVA_Wwise::Native {
namespace {

// Kept apart from any other use of the same texts.
constexpr char kGuidSpace[] = "ZOLVA Wwise object ID\n";
constexpr char kShortIdSpace[] = "ZOLVA Wwise ShortID\n";

// The role text, then with "#1", "#2", ... until `take` accepts what it gives.
template <typename Value, typename Derive, typename Take>
Value FirstFree(const std::string& role, Derive derive, Take take) {
  for (unsigned n = 0;; ++n) {
    const Value value = derive(n == 0 ? role : role + "#" + std::to_string(n));
    if (take(value)) return value;
  }
}

}  // namespace

std::string DerivedGuid(const std::string& text) {
  std::array<uint8_t, 20> digest = Sha1(kGuidSpace + text);
  digest[6] = static_cast<uint8_t>((digest[6] & 0x0F) | 0x40);  // version 4
  digest[8] = static_cast<uint8_t>((digest[8] & 0x3F) | 0x80);  // RFC 4122 variant
  static const char kDigits[] = "0123456789ABCDEF";
  std::string guid = "{";
  for (int i = 0; i < 16; ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) guid += '-';
    guid += kDigits[digest[i] >> 4];
    guid += kDigits[digest[i] & 0xF];
  }
  return guid + "}";
}

uint32_t DerivedShortId(const std::string& text) {
  const std::array<uint8_t, 20> digest = Sha1(kShortIdSpace + text);
  const uint32_t value = uint32_t{digest[0]} << 24 | uint32_t{digest[1]} << 16 | uint32_t{digest[2]} << 8 | digest[3];
  return value & 0x3FFFFFFFu;
}

const std::string& Identifiers::Guid(const std::string& role) {
  if (const auto it = guids_.find(role); it != guids_.end()) return it->second;
  const std::string guid = FirstFree<std::string>(role, DerivedGuid, [this](const std::string& value) {
    return !reserved_.guids.count(value) && usedGuids_.insert(value).second;
  });
  return guids_.emplace(role, guid).first->second;
}

uint32_t Identifiers::ShortId(const std::string& role) {
  if (const auto it = shortIds_.find(role); it != shortIds_.end()) return it->second;
  const uint32_t shortId = FirstFree<uint32_t>(role, DerivedShortId, [this](uint32_t value) {
    return value != 0 && !reserved_.shortIds.count(value) && usedShortIds_.insert(value).second;
  });
  return shortIds_.emplace(role, shortId).first->second;
}

}  // namespace ZOLVA_Wwise::Native
