// "ZOLVA: Run": finds the interface script, registers it with the host once
// and runs it.
#pragma once

#include "host/reaper_api.h"

namespace ZOLVA {

// The action's command id as the host handed it out at registration.
void SetRunActionCommandId(int commandId);

// The "hookcommand2" hook: true for the action's own command id (handled,
// whatever happened), false for every other command, which it leaves alone.
bool OnAction(KbdSectionInfo* section, int command, int val, int valhw, int relmode, HWND hwnd);

}  // namespace ZOLVA
