#include "host/run_action.h"

#include <string>

#include "host/files.h"

namespace ZOLVA {
namespace {

constexpr const char* kSection = "ZOLVA";
constexpr const char* kLibPathKey = "lib_path";
constexpr const char* kScriptName = "ZOLVA-Cluster_manager.lua";
constexpr const char* kCandidates[] = {
    "/Scripts/ZOLVA/ZOLVA/ZOLVA-Cluster_manager.lua",
    "/Scripts/ZOLVA/ZOLVA-Cluster_manager.lua",
    "/Scripts/KTR-Scripts/ZOLVA-Cluster_manager.lua",
    "/Scripts/KTR-ReaScripts/ZOLVA-Cluster_manager.lua",
};
// The fourth folder is left out of the message on purpose.
constexpr const char* kNotFoundMessage =
    "ZOLVA script not found.\n\nPlease ensure ZOLVA is installed in one of:\n"
    "Scripts/ZOLVA/ZOLVA/  (ReaPack install)\nScripts/ZOLVA/\nScripts/KTR-Scripts/";

int g_actionCommandId = 0;

using Files::IsRegularFile;

std::string FindScript() {
  if (GetExtState) {
    const char* libPath = GetExtState(kSection, kLibPathKey);
    if (libPath && *libPath) {
      std::string candidate = std::string(libPath) + kScriptName;
      if (IsRegularFile(candidate)) return candidate;
    }
  }
  const char* resource = GetResourcePath ? GetResourcePath() : nullptr;
  if (!resource) return std::string();
  std::string candidates[4];
  for (int i = 0; i < 4; ++i) candidates[i] = std::string(resource) + kCandidates[i];
  for (const std::string& candidate : candidates) {
    if (IsRegularFile(candidate)) return candidate;
  }
  return std::string();
}

}  // namespace

void ScriptLauncher::Run() {
  if (!IsRegularFile(scriptPath_)) scriptPath_ = FindScript();
  if (scriptPath_.empty()) {
    if (ShowMessageBox) ShowMessageBox(kNotFoundMessage, kSection, 0);
    return;
  }
  const std::string::size_type slash = Files::LastSeparator(scriptPath_);
  if (slash != std::string::npos && SetExtState) {
    SetExtState(kSection, kLibPathKey, scriptPath_.substr(0, slash + 1).c_str(), false);
  }
  if (scriptCommandId_ == 0 && AddRemoveReaScript) {
    scriptCommandId_ = AddRemoveReaScript(true, 0, scriptPath_.c_str(), true);
  }
  if (scriptCommandId_ >= 1 && Main_OnCommand) Main_OnCommand(scriptCommandId_, 0);
}

void SetRunActionCommandId(int commandId) { g_actionCommandId = commandId; }

bool OnAction(KbdSectionInfo*, int command, int, int, int, HWND) {
  if (g_actionCommandId == 0 || command != g_actionCommandId) return false;
  static ScriptLauncher launcher;  // kept until the host quits
  launcher.Run();
  return true;
}

}  // namespace ZOLVA
