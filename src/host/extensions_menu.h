// The "ZOLVA" submenu of REAPER's Extensions menu: the extension's actions,
// each item running its command id when chosen.
#pragma once

#include <string>
#include <vector>

namespace ZOLVA {

struct MenuEntry {
  std::string name;
  int commandId;  // 0: a separator
};

// Asks the host for its Extensions menu and registers a "hookcustommenu"
// callback that, each time REAPER builds that menu, appends a "ZOLVA" submenu
// holding the entries in order. Called again, it replaces the entries. Does
// nothing when the host or the platform's menu functions are missing.
void InstallExtensionsMenu(std::vector<MenuEntry> entries);

// Withdraws the callback; menus built before keep their items.
void RemoveExtensionsMenu();

}  // namespace ZOLVA
