// The menu calls of the platform REAPER runs on: user32 on Windows, SWELL
// (REAPER's own Win32 layer) on Linux and macOS. One source file per kind
// defines them.
#pragma once

#include "host/reaper_api.h"

namespace ZOLVA {
namespace MenuPlatform {

// Finds the menu functions; false when the platform offers none of them.
bool Load();

// A new, empty popup menu (null on failure).
HMENU NewMenu();

// Appends one item to the end of `menu`: a separator when `name` is null,
// else a text item that opens `submenu` when one is given, or runs
// `commandId`.
void Append(HMENU menu, const char* name, int commandId, HMENU submenu);

}  // namespace MenuPlatform
}  // namespace ZOLVA
