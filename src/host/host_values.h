// Reading a host object's GUID text: items, takes and tracks alike.
#pragma once

#include <string>

namespace ZOLVA {

// The object's "GUID" string read through its GetSet...Info_String function
// into a 64-byte buffer; empty when the host lacks the function or refuses.
template <typename Object>
std::string GuidOf(bool (*getSetString)(Object*, const char*, char*, bool), Object* object) {
  char guid[64] = {};
  if (!object || !getSetString || !getSetString(object, "GUID", guid, false)) return std::string();
  guid[sizeof guid - 1] = '\0';
  return guid;
}

}  // namespace ZOLVA
