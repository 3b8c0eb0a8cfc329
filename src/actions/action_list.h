// The native actions as REAPER sees them: registered in the main section of
// the action list under stable command ids, run through the command hook,
// and the audition toggle's state reported to menus and toolbars.
#pragma once

#include <string>
#include <vector>

namespace ZOLVA_Actions {

// Registers every action ("custom_action"), in list order, and the toggle
// state callback ("toggleaction").
void RegisterActions();
// Withdraws them in reverse order.
void UnregisterActions();

// True when `command` is one of these actions (it ran, whatever happened);
// false for any other command, which is left alone.
bool RunAction(int command);

// For "toggleaction": 1 on, 0 off, -1 for a command that is not a toggle of ours.
int ActionToggleState(int command);

// Each registered action's name and command id, in list order.
struct RegisteredAction {
  std::string name;
  int commandId;
};
std::vector<RegisteredAction> RegisteredActions();

}  // namespace ZOLVA_Actions
