// The identities of a native export's objects. Each object is named by a
// role text: what identifies it in the score (its cluster's or group's GUID,
// or the name of a Switch group or Trigger) and which of that source's
// objects it is. The GUID and ShortID are derived from that text alone, so
// the same score gives the same identities in every export, an edit changes
// only the objects it touches, and Wwise keeps seeing the same objects.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace ZOLVA_Wwise::Native {

// What the target project's own objects already use.
struct ReservedIds {
  std::unordered_set<std::string> guids;
  std::unordered_set<uint32_t> shortIds;
};

// Upper-case version-4 GUIDs in braces and ShortIDs that are never 0 and
// below 2^30, as Wwise's own. A role gets the same values each time it is
// asked for; distinct roles get distinct values, none of them reserved: on a
// clash the role text is derived again with "#1", "#2", ... appended.
class Identifiers {
 public:
  explicit Identifiers(ReservedIds reserved = {}) : reserved_(std::move(reserved)) {}

  const std::string& Guid(const std::string& role);
  uint32_t ShortId(const std::string& role);

 private:
  ReservedIds reserved_;
  std::unordered_map<std::string, std::string> guids_;
  std::unordered_map<std::string, uint32_t> shortIds_;
  std::unordered_set<std::string> usedGuids_;
  std::unordered_set<uint32_t> usedShortIds_;
};

// The GUID and the ShortID derived from one text, before clashes are looked at.
std::string DerivedGuid(const std::string& text);
uint32_t DerivedShortId(const std::string& text);

}  // namespace ZOLVA_Wwise::Native
