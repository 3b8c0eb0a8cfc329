#include "render/cluster_refs.h"

#include "json/text_scan.h"

namespace ZOLVA_Render {

std::vector<std::string> ExtractClusterGuids(std::string_view text) {
  static constexpr std::string_view kWord = "cluster_guid";
  std::vector<std::string> guids;
  size_t pos = 0;
  while ((pos = text.find(kWord, pos)) != std::string_view::npos) {
    const size_t open = ZOLVA::Text::FindValueQuote(text, pos + kWord.size());
    if (open == std::string_view::npos) break;
    const size_t close = text.find('"', open + 1);
    if (close == std::string_view::npos) break;
    if (close > open + 1) guids.emplace_back(text.substr(open + 1, close - open - 1));
    pos = close + 1;
  }
  return guids;
}

}  // namespace ZOLVA_Render
