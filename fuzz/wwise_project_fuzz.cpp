// Wwise project files and Work Units are read from the user's disk: any
// bytes are scanned without harm, and what is found is what the text says.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "wwise/native/project_reader.h"
#include "wwise/native/xml_scan.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  using namespace ZOLVA_Wwise::Native;
  const int version = ProjectSchemaVersion(text);
  if (version < 0 || (version > 0 && text.find("Project") == std::string_view::npos)) std::abort();
  ProjectInfo info;
  const std::string workUnit = ReadWorkUnit(text, info);
  size_t tags = 0;
  ScanTags(text, [&](const Tag& tag) {
    ++tags;
    if (tag.name.empty() || tag.name.size() > size) std::abort();
  });
  if (tags > size || info.groups.size() + info.triggers.size() > tags || workUnit.size() > size) std::abort();
  // Each tag defines at most one ID and carries at most two ShortIDs (its own and a media ID).
  if (info.objectIds.size() > tags || info.shortIds.size() > 2 * tags) std::abort();
  for (const auto& [shortId, unit] : info.shortIds) {
    if (unit.empty()) std::abort();  // an ID outside a Work Unit is not read
  }
  return 0;
}
