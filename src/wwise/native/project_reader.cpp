#include "wwise/native/project_reader.h"

#include <charconv>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <system_error>

#include "host/files.h"
#include "wwise/native/xml_scan.h"

namespace ZOLVA_Wwise::Native {
namespace {

namespace fs = std::filesystem;

bool ReadWhole(const fs::path& path, std::string& text) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  text.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  return !in.bad();
}

bool EndsWith(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

std::string ToUtf8(const fs::path& path) {
  const auto text = path.u8string();
  return std::string(text.begin(), text.end());
}

std::optional<uint32_t> ShortIdValue(const std::string& text) {
  uint32_t value = 0;
  const char* end = text.data() + text.size();
  const auto [stop, ec] = std::from_chars(text.data(), end, value);
  if (ec != std::errc() || stop != end) return std::nullopt;
  return value;
}

// Folders of a project that hold no Work Units of its own.
bool SkippedFolder(const fs::path& name) {
  const std::string text = ToUtf8(name);
  return text.empty() || text[0] == '.' || text == "Originals" || text == "GeneratedSoundBanks";
}

}  // namespace

bool IsSupportedSchemaVersion(int version) { return version == 119 || version == 123; }

int ProjectSchemaVersion(std::string_view wprojText) {
  int version = 0;
  bool seen = false;
  ScanTags(wprojText, [&](const Tag& tag) {
    if (seen || tag.kind == Tag::End) return;
    seen = true;  // only the root element counts
    const std::string* type = tag.Attribute("Type");
    const std::string* schema = tag.Attribute("SchemaVersion");
    if (tag.name != "WwiseDocument" || !type || *type != "Project" || !schema) return;
    int value = 0;
    const char* end = schema->data() + schema->size();
    const auto [stop, ec] = std::from_chars(schema->data(), end, value);
    if (ec == std::errc() && stop == end && value > 0) version = value;
  });
  return version;
}

std::string ReadWorkUnit(std::string_view wwuText, ProjectInfo& info) {
  std::string workUnitId;
  GameSyncGroup* group = nullptr;  // the group whose values are being read
  size_t groupDepth = 0, depth = 0;
  ScanTags(wwuText, [&](const Tag& tag) {
    if (tag.kind == Tag::End) {
      if (depth > 0) --depth;
      if (group && depth < groupDepth) group = nullptr;
      return;
    }
    const std::string* name = tag.Attribute("Name");
    const std::string* id = tag.Attribute("ID");
    if (tag.name == "WwiseDocument" && id) workUnitId = *id;
    const bool reference = EndsWith(tag.name, "Ref");  // ObjectRef, AudioSourceRef: another object's ID
    if (id && !reference && !workUnitId.empty()) {
      if (tag.name == "MediaID") {
        if (const auto value = ShortIdValue(*id)) info.shortIds.emplace_back(*value, workUnitId);
      } else {
        info.objectIds.emplace_back(*id, workUnitId);
      }
    }
    if (const std::string* shortId = tag.Attribute("ShortID"); shortId && !workUnitId.empty()) {
      if (const auto value = ShortIdValue(*shortId)) info.shortIds.emplace_back(*value, workUnitId);
    }
    if (name && id && !workUnitId.empty()) {
      if (tag.name == "Bus" && *id == kMasterAudioBusId) info.masterBusWorkUnitId = workUnitId;
      if (tag.name == "Conversion" && *name == "Default Conversion Settings") info.conversion = {*name, *id, workUnitId};
      if (tag.name == "SwitchGroup" || tag.name == "StateGroup") {
        GameSyncGroup& added = info.groups.emplace_back();
        added.name = *name;
        added.id = *id;
        added.workUnitId = workUnitId;
        added.isState = tag.name == "StateGroup";
        group = tag.kind == Tag::Start ? &added : nullptr;
        groupDepth = depth + 1;
      } else if (group && (tag.name == "Switch" || tag.name == "State")) {
        group->values.push_back({*name, *id, workUnitId});
      } else if (tag.name == "Trigger") {
        info.triggers.push_back({*name, *id, workUnitId});
      }
    }
    if (tag.kind == Tag::Start) ++depth;
  });
  return workUnitId;
}

bool ReadProject(const std::string& wprojPath, ProjectInfo& info, std::string& error) {
  info = ProjectInfo();
  const fs::path path = ZOLVA::Files::FromUtf8(wprojPath);
  if (!ZOLVA::Files::IsRegularFile(wprojPath)) {
    error = "Wwise project not found: " + wprojPath;
    return false;
  }
  if (!EndsWith(wprojPath, ".wproj")) {
    error = "Not a Wwise project (.wproj): " + wprojPath;
    return false;
  }
  std::string text;
  if (!ReadWhole(path, text)) {
    error = "Cannot read Wwise project: " + wprojPath;
    return false;
  }
  info.schemaVersion = ProjectSchemaVersion(text);
  if (info.schemaVersion == 0) {
    error = "Not a Wwise project file: " + wprojPath;
    return false;
  }
  if (!IsSupportedSchemaVersion(info.schemaVersion)) {
    error = "Unsupported Wwise project schema version " + std::to_string(info.schemaVersion) +
            " (supported: 119 for Wwise 2023.1, 123 for Wwise 2024.1): " + wprojPath;
    return false;
  }
  const fs::path folder = path.parent_path();
  info.folder = ToUtf8(folder);
  std::error_code ec;
  for (fs::directory_iterator category(folder, ec), end; !ec && category != end; category.increment(ec)) {
    std::error_code ignored;
    if (SkippedFolder(category->path().filename()) || !category->is_directory(ignored)) continue;
    // Physical folders inside a category hold Work Units too.
    std::error_code inner;
    for (fs::recursive_directory_iterator it(category->path(), inner), stop; !inner && it != stop; it.increment(inner)) {
      if (it->path().extension() != ".wwu" || !it->is_regular_file(inner) || !ReadWhole(it->path(), text)) continue;
      const std::string id = ReadWorkUnit(text, info);
      const auto relative = it->path().lexically_relative(folder).generic_u8string();
      if (!id.empty()) info.workUnits[std::string(relative.begin(), relative.end())] = id;
    }
  }
  if (info.masterBusWorkUnitId.empty()) {
    error = "Master Audio Bus not found in the Wwise project's Master-Mixer Hierarchy: " + wprojPath;
    return false;
  }
  return true;
}

}  // namespace ZOLVA_Wwise::Native
