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
  MENUITEMINFOA item{};
  item.cbSize = sizeof item;
  item.fMask = MIIM_TYPE | (submenu ? MIIM_SUBMENU : MIIM_ID);
  item.fType = name ? MFT_STRING : MFT_SEPARATOR;
  item.wID = static_cast<UINT>(commandId);
  item.hSubMenu = submenu;
  item.dwTypeData = const_cast<char*>(name);  // user32 copies the text
  InsertMenuItemA(menu, static_cast<UINT>(GetMenuItemCount(menu)), TRUE, &item);
}

}  // namespace MenuPlatform
}  // namespace ZOLVA
