// "ZOLVA: Run": finds the interface script, registers it with the host once
// and runs it.
#pragma once

#include <string>

#include "host/reaper_api.h"

namespace ZOLVA {

// Finds, registers and runs the interface script. The extension keeps one
// launcher for the life of the process: the first script registered stays the
// one that runs, even if a later search finds it elsewhere.
class ScriptLauncher {
 public:
  void Run();

 private:
  int scriptCommandId_ = 0;  // 0: not registered yet
  std::string scriptPath_;   // where the script was last found
};

// The action's command id as the host handed it out at registration.
void SetRunActionCommandId(int commandId);

// The "hookcommand2" hook: true for the action's own command id (handled,
// whatever happened), false for every other command, which it leaves alone.
bool OnAction(KbdSectionInfo* section, int command, int val, int valhw, int relmode, HWND hwnd);

}  // namespace ZOLVA
