// Reading the interface script's "V2 schema" JSON by key search into a V2Schema.
#pragma once

#include <string_view>

#include "wwise/model.h"

namespace ZOLVA_Wwise::Schema {

// Fills `schema`; true when the text is non-empty and yields at least one
// cluster or group.
bool ParseV2Schema(std::string_view json, V2Schema& schema);

// "horizontal", "vertical", "oneshot", "random", "switch" (exact spellings), else OtherGroup.
GroupType StringToGroupType(std::string_view text);

}  // namespace ZOLVA_Wwise::Schema
