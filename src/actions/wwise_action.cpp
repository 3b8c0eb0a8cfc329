// Exporting the clusters to a Wwise project's own Work Unit format, through
// the same script functions (and so the same checks and refusals) an
// interface script uses.
#include <string>
#include <string_view>
#include <vector>

#include "actions/action_support.h"
#include "actions/actions.h"
#include "actions/cluster_score.h"
#include "actions/render_settings.h"
#include "host/api_frame.h"
#include "json/json_text.h"
#include "json/text_scan.h"

namespace ZOLVA_Wwise {
extern const ZOLVA::Module kModule;
}

namespace ZOLVA_Actions {
namespace {

constexpr char kExport[] = "ZOLVA: Export clusters to Wwise";
constexpr char kSection[] = "ZOLVA";
constexpr char kProjectKey[] = "wwise_project";
constexpr char kOutputKey[] = "wwise_output";
constexpr size_t kPathSize = 4096;  // as REAPER's file dialog asks

// A Wwise script function's guarded entry, found by its public name.
template <typename Function>
Function WwiseFunction(const char* name) {
  const ZOLVA::Module& module = ZOLVA_Wwise::kModule;
  for (size_t i = 0; i < module.apiCount; ++i) {
    if (std::string_view(module.api[i].publicName) == name) return reinterpret_cast<Function>(module.api[i].typedAddress());
  }
  return nullptr;
}

// The strings of a result's array member, in order.
std::vector<std::string> StringList(std::string_view json, std::string_view key) {
  std::vector<std::string> list;
  size_t at = ZOLVA::Text::FindMemberValue(json, key);
  if (at == std::string_view::npos || at >= json.size() || json[at] != '[') return list;
  for (++at; at < json.size() && json[at] != ']';) {
    if (json[at] != '"') {
      ++at;
      continue;
    }
    bool closed = false;
    list.push_back(ZOLVA::Text::ReadEscapedString(json, at, at, closed));
  }
  return list;
}

std::string Member(std::string_view json, std::string_view key) {
  const size_t at = ZOLVA::Text::FindMemberValue(json, key);
  if (at == std::string_view::npos || at >= json.size()) return std::string();
  if (json[at] != '"') return std::string(json.substr(at, json.find_first_of(",}", at) - at));
  size_t end = 0;
  bool closed = false;
  return ZOLVA::Text::ReadEscapedString(json, at, end, closed);
}

std::string Remembered(const char* key, const std::string& fallback) {
  const char* value = GetExtState ? GetExtState(kSection, key) : nullptr;
  return value && *value ? value : fallback;
}

std::string StemOf(const std::string& path) {
  std::string name = path.substr(FolderOf(path).size());
  if (!name.empty() && (name[0] == '/' || name[0] == '\\')) name.erase(0, 1);
  const size_t dot = name.rfind('.');
  return dot == std::string::npos || dot == 0 ? name : name.substr(0, dot);
}

// The Wwise project and the output folder: a file dialog for the project
// where REAPER has one, else both as fields of one input dialog.
bool AskPaths(std::string& wwiseProject, std::string& output) {
  if (GetUserFileNameForRead) {
    std::vector<char> path(kPathSize, '\0');
    wwiseProject.copy(path.data(), path.size() - 1);
    if (!GetUserFileNameForRead(path.data(), "ZOLVA: Choose the Wwise project (.wproj)", "wproj")) return false;
    path.back() = '\0';
    wwiseProject = path.data();
    return AskText("ZOLVA: Export clusters to Wwise", "Output folder:", output);
  }
  std::vector<char> fields(kPathSize, '\0');
  (wwiseProject + "\n" + output).copy(fields.data(), fields.size() - 1);
  if (!GetUserInputs("ZOLVA: Export clusters to Wwise",
                     2, "Wwise project (.wproj):,Output folder:,extrawidth=300,separator=\n", fields.data(),
                     static_cast<int>(kPathSize))) {
    return false;
  }
  fields.back() = '\0';
  const std::string answer = fields.data();
  const size_t split = answer.find('\n');
  wwiseProject = answer.substr(0, split);
  output = split == std::string::npos ? std::string() : answer.substr(split + 1);
  return true;
}

}  // namespace

void ExportClustersToWwise() {
  if (!Ready(kExport, {ZOLVA_HOST_FUNCTION(GetUserInputs), ZOLVA_HOST_FUNCTION(EnumProjects)}) ||
      !HasClusters(kExport)) {
    return;
  }
  const std::string project = ProjectFile();
  if (project.empty()) {
    Tell(std::string(kExport) + ": save the project first (File > Save project).\n\nThe export suggests a folder "
         "\"Wwise export\" beside the project file for the Work Units, takes the segments' audio from the "
         "project's render folder, and names the Work Units after the project; an unsaved project has none of "
         "these yet.");
    return;
  }
  std::string wwiseProject = Remembered(kProjectKey, std::string());
  std::string output = Remembered(kOutputKey, FolderOf(project) + "/Wwise export");
  if (!AskPaths(wwiseProject, output)) return;
  if (wwiseProject.empty() || output.empty()) {
    Tell(std::string(kExport) + ": both the Wwise project (.wproj) and the output folder are needed.\n\nRun the "
         "action again and give both. Nothing was written.");
    return;
  }
  using Transform = const char* (*)(const char*);
  using Generate = const char* (*)(const char*, const char*);
  const Transform transform = WwiseFunction<Transform>("ZOLVA_Wwise_TransformSchema");
  const Generate generate = WwiseFunction<Generate>("ZOLVA_Wwise_GenerateWorkUnits");
  if (!transform || !generate) return;
  const std::string score = ClusterScoreJson(StemOf(project), RenderFolder(project));
  std::string result = transform(score.c_str());
  if (result.find("\"success\":true") != std::string::npos) {
    std::string options = "{\"format\":\"native\",\"wwiseProject\":";
    ZOLVA::Json::AppendString(options, wwiseProject);
    result = generate(output.c_str(), (options + "}").c_str());
  }
  if (result.find("\"success\":true") == std::string::npos) {
    Tell("ZOLVA could not export to Wwise:\n\n" + Member(result, "error") +
         "\n\nCorrect the Wwise project or the output folder and run \"ZOLVA: Export clusters to Wwise...\" again.");
    return;
  }
  if (SetExtState) {
    SetExtState(kSection, kProjectKey, wwiseProject.c_str(), true);
    SetExtState(kSection, kOutputKey, output.c_str(), true);
  }
  std::string report = "ZOLVA: exported to " + output + " for " + wwiseProject + "\n  " +
                       Member(result, "segments_created") + " segments, " + Member(result, "containers_created") +
                       " containers, " + Member(result, "events_created") + " events\n  Work Units:\n";
  for (const std::string& file : StringList(result, "files")) report += "    " + file + "\n";
  const std::vector<std::string> warnings = StringList(result, "warnings");
  if (!warnings.empty()) report += "  Warnings:\n";
  for (const std::string& warning : warnings) report += "    " + warning + "\n";
  report += "  Next: back up the Wwise project, copy these files (never the folders) into its folders of the same "
            "names, then reload the project in Wwise.\n";
  Console(report);
}

}  // namespace ZOLVA_Actions
