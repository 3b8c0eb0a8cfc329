#include "render/matrix_text.h"

#include "json/text_scan.h"

namespace ZOLVA_Render {

void AppendMatrixRow(std::string& out, const MatrixRow& row) {
  out += "{\"idx\":" + std::to_string(row.region) + ",\"tracks\":[";
  for (size_t i = 0; i < row.tracks.size(); ++i) {
    if (i > 0) out += ',';
    out += std::to_string(row.tracks[i]);
  }
  out += "]}";
}

std::vector<MatrixRow> ReadMatrixSnapshot(const char* text) {
  std::vector<MatrixRow> rows;
  if (!text) return rows;
  const std::string_view s(text);
  size_t pos = s.find("\"regions\"");
  if (pos == std::string_view::npos) return rows;
  pos = s.find('[', pos);
  // Each step searches forward from where the last one ended, so the whole
  // reading is one pass over the text.
  while (pos != std::string_view::npos) {
    static constexpr std::string_view kRowStart = "{\"idx\":";
    const size_t row = s.find(kRowStart, pos);
    if (row == std::string_view::npos) break;
    const size_t number = row + kRowStart.size();
    const size_t comma = s.find(',', number);
    if (comma == std::string_view::npos) break;
    const size_t open = s.find('[', comma);
    if (open == std::string_view::npos) break;
    const size_t close = s.find(']', open);
    if (close == std::string_view::npos) break;
    if (const std::optional<int> region = ZOLVA::Text::ParseInteger<int>(s.substr(number, comma - number))) {
      const std::string tracks(s.substr(open + 1, close - open - 1));
      rows.push_back({*region, ZOLVA::Text::ScanIntegerList(tracks.c_str())});
    }
    pos = close + 1;
  }
  return rows;
}

std::vector<std::string> QuotedTexts(const char* text) {
  std::vector<std::string> texts;
  if (!text) return texts;
  const std::string_view s(text);
  size_t pos = 0;
  while ((pos = s.find('"', pos)) != std::string_view::npos) {
    const size_t close = s.find('"', pos + 1);
    if (close == std::string_view::npos) break;
    texts.emplace_back(s.substr(pos + 1, close - pos - 1));
    pos = close + 1;
  }
  return texts;
}

}  // namespace ZOLVA_Render
