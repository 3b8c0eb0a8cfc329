// What every native action shares: messages and prompts in the user's
// language of REAPER's own dialogs, the host functions an action cannot do
// without, the registry brought in line with the current project, and the
// bracket that turns one action's changes into one undo point.
#pragma once

#include <initializer_list>
#include <string>
#include <utility>

#include "host/reaper_api.h"

namespace ZOLVA_Actions {

// A message box titled "ZOLVA" with an OK button.
void Tell(const std::string& text);
// A Yes/No box titled "ZOLVA"; true for Yes.
bool AskYesNo(const std::string& text);
// An OK/Cancel box titled "ZOLVA"; true for OK.
bool AskOkCancel(const std::string& text);

// One text from the user through REAPER's input dialog, `value` as the
// default; false when the user cancels.
bool AskText(const char* title, const char* caption, std::string& value);

// A line (or lines) in REAPER's console window.
void Console(const std::string& text);

// True when the host has every function named: each pair is a name and
// whether its pointer is set. Otherwise the user learns which one this
// REAPER lacks, and the action does nothing.
bool HostHas(const char* action, std::initializer_list<std::pair<const char*, bool>> functions);
#define ZOLVA_HOST_FUNCTION(name) std::pair<const char*, bool>(#name, name != nullptr)

// Brings the registry in line with the current project; false (after
// telling the user why) when the project's clusters cannot be read.
bool LoadClusters();

using HostFunctions = std::initializer_list<std::pair<const char*, bool>>;
// HostHas, then LoadClusters: what every action does first.
bool Ready(const char* action, HostFunctions functions);
// The same for an action that changes the project: the undo block's
// functions are needed too.
bool ReadyToChange(const char* action, HostFunctions functions);

// False (after telling the user how to make one) when the project has no
// clusters.
bool HasClusters(const char* action);

// The current project's file, empty while it has never been saved.
std::string ProjectFile();
// The folder of a path (without the last separator); empty for a bare name.
std::string FolderOf(const std::string& path);

// The innermost cluster at the edit cursor; empty (after telling the user
// what to do) when there is none. `action` names the action in the message.
std::string ClusterAtCursor(const char* action);

// Seconds as "12.500 s", the same in every locale.
std::string Seconds(double value);

// One undo point for one action: UI refresh held and the undo block open
// from construction to destruction, balanced on every path. Opened only
// after every prompt has been answered, so a cancelled action leaves none.
class ProjectChange {
 public:
  explicit ProjectChange(const char* undoName);
  ~ProjectChange();
  ProjectChange(const ProjectChange&) = delete;
  ProjectChange& operator=(const ProjectChange&) = delete;

 private:
  const char* undoName_;
};

}  // namespace ZOLVA_Actions
