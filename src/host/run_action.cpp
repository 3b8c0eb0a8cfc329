#include "host/run_action.h"

#include <sys/stat.h>

#include <string>

#include "host/guard.h"

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
// Kept until the host quits: the first script registered stays the one that
// runs, even if a later search finds it elsewhere.
int g_scriptCommandId = 0;
std::string g_scriptPath;

bool IsRegularFile(const std::string& path) {
  struct stat info;
  return !path.empty() && ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

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

void RunScript() {
  if (!IsRegularFile(g_scriptPath)) g_scriptPath = FindScript();
  if (g_scriptPath.empty()) {
    if (ShowMessageBox) ShowMessageBox(kNotFoundMessage, kSection, 0);
    return;
  }
  const std::string::size_type slash = g_scriptPath.rfind('/');
  if (slash != std::string::npos && SetExtState) {
    SetExtState(kSection, kLibPathKey, g_scriptPath.substr(0, slash + 1).c_str(), false);
  }
  if (g_scriptCommandId == 0 && AddRemoveReaScript) {
    g_scriptCommandId = AddRemoveReaScript(true, 0, g_scriptPath.c_str(), true);
  }
  if (g_scriptCommandId >= 1 && Main_OnCommand) Main_OnCommand(g_scriptCommandId, 0);
}

}  // namespace

void SetRunActionCommandId(int commandId) { g_actionCommandId = commandId; }

bool OnAction(KbdSectionInfo*, int command, int, int, int, HWND) {
  if (g_actionCommandId == 0 || command != g_actionCommandId) return false;
  GuardedVoid(RunScript);
  return true;
}

}  // namespace ZOLVA
