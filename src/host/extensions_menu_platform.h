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

// The platform's values of the MENUITEMINFO flags Append uses: SWELL's differ
// from Win32's.
struct ItemFlags {
  unsigned int maskType, maskId, maskSubmenu, typeString, typeSeparator;
};

// Append's item as a MENUITEMINFO, whose fields Win32 and SWELL name alike.
// The text is only read: both copy it.
template <typename Info>
Info ItemInfo(const ItemFlags& flags, const char* name, int commandId, HMENU submenu) {
  Info item{};
  item.cbSize = sizeof item;
  item.fMask = flags.maskType | (submenu ? flags.maskSubmenu : flags.maskId);
  item.fType = name ? flags.typeString : flags.typeSeparator;
  item.wID = static_cast<unsigned int>(commandId);
  item.hSubMenu = submenu;
  item.dwTypeData = const_cast<char*>(name);
  return item;
}

}  // namespace MenuPlatform
}  // namespace ZOLVA
