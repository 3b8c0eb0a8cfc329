// A forgiving reader of the tags of an XML text, enough to find objects and
// their attributes in Wwise documents: no validation, no tree, one pass.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ZOLVA_Wwise::Native {

struct Tag {
  enum Kind { Start, End, Empty } kind = Start;  // <a>, </a>, <a/>
  std::string_view name;
  std::vector<std::pair<std::string_view, std::string>> attributes;  // values with entities decoded

  // The value of an attribute, or null.
  const std::string* Attribute(std::string_view attribute) const;
};

// Calls `onTag` for every start, end and empty-element tag in text order.
// Declarations, comments, CDATA sections and text are stepped over; a tag
// left open at the end of the text ends the scan. Linear in the text.
void ScanTags(std::string_view text, const std::function<void(const Tag&)>& onTag);

}  // namespace ZOLVA_Wwise::Native
