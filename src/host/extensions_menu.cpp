#include "host/extensions_menu.h"

#include <cstring>
#include <utility>

#include "host/api_frame.h"
#include "host/extensions_menu_platform.h"

namespace ZOLVA {
namespace {

constexpr const char* kMenuId = "Main extensions";
constexpr const char* kSubmenuName = "ZOLVA";
constexpr int kMenuCreated = 0;  // the hook's flag when REAPER has just made the menu

std::vector<MenuEntry> g_entries;
bool g_hooked = false;

// REAPER calls this for every menu it builds (flag 0) and again each time one
// is about to open (flag 1); the submenu goes into a new Extensions menu once.
void OnCustomMenu(const char* menuId, HMENU menu, int flag) {
  if (flag != kMenuCreated || !menu || !menuId || std::strcmp(menuId, kMenuId) != 0) return;
  HMENU submenu = MenuPlatform::NewMenu();
  if (!submenu) return;
  for (const MenuEntry& entry : g_entries) {
    MenuPlatform::Append(submenu, entry.commandId != 0 ? entry.name.c_str() : nullptr, entry.commandId, nullptr);
  }
  MenuPlatform::Append(menu, kSubmenuName, 0, submenu);
}

void* HookPointer() { return reinterpret_cast<void*>(Guarded<&OnCustomMenu, NoFailure::value>); }

}  // namespace

void InstallExtensionsMenu(std::vector<MenuEntry> entries) {
  g_entries = std::move(entries);
  if (g_hooked || !plugin_register || !AddExtensionsMainMenu || !MenuPlatform::Load()) return;
  AddExtensionsMainMenu();
  g_hooked = plugin_register("hookcustommenu", HookPointer()) != 0;
}

void RemoveExtensionsMenu() {
  if (g_hooked && plugin_register) plugin_register("-hookcustommenu", HookPointer());
  g_hooked = false;
  g_entries.clear();
}

}  // namespace ZOLVA
