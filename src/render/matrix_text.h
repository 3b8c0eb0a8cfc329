// The texts the region render matrix functions read and write: the matrix
// snapshot and lists of quoted GUIDs.
#pragma once

#include <string>
#include <vector>

namespace ZOLVA_Render {

// One region's row: its displayed number and the track numbers rendered for
// it (1-based, -1 for the master track).
struct MatrixRow {
  int region = 0;
  std::vector<int> tracks;
};

// Appends {"idx":<region>,"tracks":[<t>,<t>,...]}.
void AppendMatrixRow(std::string& out, const MatrixRow& row);

// Reads a snapshot by text search, not by parsing: after the quoted member
// name "regions" and its '[', every "{\"idx\":" starts a row whose number runs
// to the next comma and whose tracks are the integers between the next '['
// and the ']' after it. A row whose number does not convert is dropped; a
// row cut short ends the reading. A null text gives nothing.
std::vector<MatrixRow> ReadMatrixSnapshot(const char* text);

// Every double-quoted text, in order; brackets and commas around them are
// ignored, an unterminated quote at the end is dropped. Null gives nothing.
std::vector<std::string> QuotedTexts(const char* text);

}  // namespace ZOLVA_Render
