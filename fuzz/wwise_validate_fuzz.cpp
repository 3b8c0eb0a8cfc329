// Work Unit files come from anywhere on disk: any content validates or not
// exactly as the four markers, searched as plain text in that order, decide.
#include <stdlib.h>  // mkdtemp

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "wwise/export.h"

namespace {

// The first of the markers that the text lacks, or "" when it has them all.
std::string FirstMissing(std::string_view text) {
  const std::pair<const char*, const char*> markers[] = {
      {"<?xml", "Missing XML declaration"},
      {"<WwiseDocument", "Missing WwiseDocument element"},
      {"</WwiseDocument>", "Unclosed WwiseDocument element"},
      {"<WorkUnit", "Missing WorkUnit element"},
  };
  for (const auto& [marker, message] : markers) {
    if (text.find(marker) == std::string_view::npos) return message;
  }
  return "";
}

std::string g_folder;

void RemoveFolder() { std::filesystem::remove_all(g_folder); }

// One file, in a folder of its own that goes at exit, rewritten per input.
const std::string& FilePath() {
  static const std::string path = [] {
    g_folder = (std::filesystem::temp_directory_path() / "zolva validate XXXXXX").string();
    if (!::mkdtemp(g_folder.data())) std::abort();
    std::atexit(RemoveFolder);
    return g_folder + "/unit \xc3\xa9.wwu";
  }();
  return path;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  {
    std::ofstream out(FilePath(), std::ios::binary | std::ios::trunc);
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
    if (!out.flush()) std::abort();
  }
  std::string error = "stale";
  const bool valid = ZOLVA_Wwise::Export::ValidateWWUFile(FilePath(), error);
  const std::string expected = FirstMissing(text);
  if (valid != expected.empty() || error != expected) std::abort();
  return 0;
}
