// Reads the cluster references out of an item's "P_EXT:ZOLVA" text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ZOLVA_Render {

// The text is never parsed as JSON. Each occurrence of the word
// "cluster_guid" names one cluster: the GUID is the next double-quoted text
// after the word. A quote directly after the word closes the word itself as a
// JSON key ("cluster_guid":"{...}"), so it is not taken as the GUID's opening
// quote. Empty GUIDs are dropped; a GUID named twice is listed twice.
std::vector<std::string> ExtractClusterGuids(std::string_view text);

}  // namespace ZOLVA_Render
