#include "actions/action_support.h"

#include <vector>

#include "cluster/cluster_edit.h"
#include "cluster/persistence.h"
#include "host/files.h"
#include "json/number_text.h"

namespace ZOLVA_Actions {
namespace {

constexpr char kTitle[] = "ZOLVA";
constexpr int kOk = 0, kOkCancel = 1, kYesNo = 4;
constexpr int kAnswerOk = 1, kAnswerYes = 6;
// Items and project state (the clusters live in the project's extension state).
constexpr int kUndoStateItems = 4, kUndoStateMiscCfg = 8;
// REAPER's input dialog holds at most this much text.
constexpr int kInputSize = 4096;

int Box(const std::string& text, int type) { return ShowMessageBox ? ShowMessageBox(text.c_str(), kTitle, type) : 0; }

}  // namespace

void Tell(const std::string& text) { Box(text, kOk); }
bool AskYesNo(const std::string& text) { return Box(text, kYesNo) == kAnswerYes; }
bool AskOkCancel(const std::string& text) { return Box(text, kOkCancel) == kAnswerOk; }

bool AskText(const char* title, const char* caption, std::string& value) {
  if (!GetUserInputs) return false;
  std::vector<char> buffer(kInputSize, '\0');
  value.copy(buffer.data(), buffer.size() - 1);
  // A wider field, so that a long name or path shows whole; fields parted by
  // a line feed rather than the default comma, which names and paths may hold.
  const std::string captions = std::string(caption) + ",extrawidth=200,separator=\n";
  if (!GetUserInputs(title, 1, captions.c_str(), buffer.data(), kInputSize)) return false;
  buffer.back() = '\0';
  value = buffer.data();
  return true;
}

void Console(const std::string& text) {
  if (ShowConsoleMsg) ShowConsoleMsg(text.c_str());
}

bool HostHas(const char* action, std::initializer_list<std::pair<const char*, bool>> functions) {
  for (const auto& function : functions) {
    if (function.second) continue;
    // Without a message box there is no one to tell.
    Tell(std::string(action) + " needs the REAPER function " + function.first +
         ", which this version of REAPER does not have.\n\nUpdate REAPER to use this action; the other ZOLVA "
         "actions keep working.");
    return false;
  }
  return true;
}

bool LoadClusters() {
  const std::string error = ZOLVA_Cluster::SyncRegistryWithProject();
  if (error.empty()) return true;
  Tell(error + "\n\nNothing was changed. Open the project in the ZOLVA interface script to repair its clusters, "
               "or remove the project's ZOLVA data.");
  return false;
}

bool Ready(const char* action, HostFunctions functions) { return HostHas(action, functions) && LoadClusters(); }

bool ReadyToChange(const char* action, HostFunctions functions) {
  return HostHas(action, {ZOLVA_HOST_FUNCTION(Undo_BeginBlock2), ZOLVA_HOST_FUNCTION(Undo_EndBlock2)}) &&
         Ready(action, functions);
}

bool HasClusters(const char* action) {
  if (!ZOLVA_Cluster::AllClusters().empty()) return true;
  Tell(std::string(action) + ": this project has no clusters yet.\n\nCreate one with \"ZOLVA: Create cluster from "
       "time selection...\", then run the action again.");
  return false;
}

std::string ProjectFile() {
  char path[4096] = {};
  if (!EnumProjects || !EnumProjects(-1, path, sizeof path)) return std::string();
  path[sizeof path - 1] = '\0';
  return path;
}

std::string FolderOf(const std::string& path) {
  const std::string::size_type separator = ZOLVA::Files::LastSeparator(path);
  return separator == std::string::npos ? std::string() : path.substr(0, separator);
}

std::string ClusterAtCursor(const char* action) {
  const double cursor = GetCursorPositionEx ? GetCursorPositionEx(nullptr) : 0.0;
  std::string guid = ZOLVA_Cluster::ClusterAt(cursor);
  if (guid.empty()) {
    Tell(std::string(action) + ": no cluster lies at the edit cursor (" + Seconds(cursor) +
         ").\n\nMove the edit cursor into a cluster's range and run the action again. \"ZOLVA: List clusters\" "
         "shows every cluster's range.");
  }
  return guid;
}

std::string Seconds(double value) {
  std::string text;
  ZOLVA::Json::AppendFixed(text, value, 3);
  return text + " s";
}

ProjectChange::ProjectChange(const char* undoName) : undoName_(undoName) {
  if (Undo_BeginBlock2) Undo_BeginBlock2(nullptr);
  if (PreventUIRefresh) PreventUIRefresh(1);
}

ProjectChange::~ProjectChange() {
  if (PreventUIRefresh) PreventUIRefresh(-1);
  if (UpdateArrange) UpdateArrange();
  if (Undo_EndBlock2) Undo_EndBlock2(nullptr, undoName_, kUndoStateItems | kUndoStateMiscCfg);
}

}  // namespace ZOLVA_Actions
