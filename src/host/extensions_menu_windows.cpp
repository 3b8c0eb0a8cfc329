// Menus on Windows: REAPER's menus are user32 menus, built with user32's own
// functions.
#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include "host/extensions_menu_platform.h"

namespace ZOLVA {
namespace MenuPlatform {

bool Load() { return true; }

HMENU NewMenu() { return CreatePopupMenu(); }

void Append(HMENU menu, const char* name, int commandId, HMENU submenu) {
  constexpr ItemFlags kFlags{MIIM_TYPE, MIIM_ID, MIIM_SUBMENU, MFT_STRING, MFT_SEPARATOR};
  const MENUITEMINFOA item = ItemInfo<MENUITEMINFOA>(kFlags, name, commandId, submenu);
  InsertMenuItemA(menu, static_cast<UINT>(GetMenuItemCount(menu)), TRUE, &item);
}

}  // namespace MenuPlatform
}  // namespace ZOLVA
