// Menus on Linux and macOS, where REAPER's menus are SWELL menus. REAPER hands
// SWELL's functions out by name through SWELLAPI_GetFunc: on Linux its
// libSwell.so exports that function; on macOS the application delegate answers
// it from -swellGetAPPAPIFunc. Both are looked up at run time, so the module
// links against neither, and exports nothing of SWELL's own.
//
// The only file of the extension that calls dlsym.
#include <dlfcn.h>

#include <cstdint>

#include "host/extensions_menu_platform.h"

namespace ZOLVA {
namespace MenuPlatform {
namespace {

// SWELL's MENUITEMINFO (Win32's layout on 64-bit systems), and the flag values
// SWELL gives its fields: its MIIM_ values differ from Win32's.
struct SwellMenuItemInfo {
  unsigned int cbSize, fMask, fType, fState, wID;
  HMENU hSubMenu;
  void* hbmpChecked;
  void* hbmpUnchecked;
  std::uintptr_t dwItemData;
  char* dwTypeData;
  int cch;
  void* hbmpItem;
};
constexpr ItemFlags kFlags{/*MIIM_TYPE*/ 4, /*MIIM_ID*/ 1, /*MIIM_SUBMENU*/ 8,
                           /*MFT_STRING*/ 0, /*MFT_SEPARATOR*/ 0x800};
constexpr std::uintptr_t kSwellApiVersion = 0x100;  // SWELLAPI_GetFunc(nullptr)'s answer
using SwellBool = signed char;
using SwellGetFunc = void* (*)(const char* name);

HMENU (*g_createPopupMenu)() = nullptr;
void (*g_insertMenuItem)(HMENU, int position, SwellBool byPosition, SwellMenuItemInfo*) = nullptr;
int (*g_getMenuItemCount)(HMENU) = nullptr;

template <typename F>
F Global(const char* name) {
  return reinterpret_cast<F>(dlsym(RTLD_DEFAULT, name));
}

#ifdef __APPLE__
// Objective-C's BOOL, as -respondsToSelector: returns it.
#if defined(__arm64__) || defined(__aarch64__)
using ObjcBool = bool;
#else
using ObjcBool = signed char;
#endif

// [[NSApplication sharedApplication] delegate] asked for -swellGetAPPAPIFunc,
// through the C functions of the Objective-C runtime REAPER has loaded.
SwellGetFunc FindSwell() {
  using Id = void*;
  using Sel = void*;
  const auto getClass = Global<Id (*)(const char*)>("objc_getClass");
  const auto selector = Global<Sel (*)(const char*)>("sel_registerName");
  const auto send = Global<Id (*)(Id, Sel)>("objc_msgSend");
  const auto responds = Global<ObjcBool (*)(Id, Sel, Sel)>("objc_msgSend");
  if (!getClass || !selector || !send) return nullptr;
  const Id applicationClass = getClass("NSApplication");
  const Id application = applicationClass ? send(applicationClass, selector("sharedApplication")) : nullptr;
  const Id delegate = application ? send(application, selector("delegate")) : nullptr;
  const Sel getter = selector("swellGetAPPAPIFunc");
  if (!delegate || !responds(delegate, selector("respondsToSelector:"), getter)) return nullptr;
  return reinterpret_cast<SwellGetFunc>(send(delegate, getter));
}
#else
SwellGetFunc FindSwell() { return Global<SwellGetFunc>("SWELLAPI_GetFunc"); }
#endif

template <typename F>
void Resolve(SwellGetFunc getFunc, F& slot, const char* name) {
  slot = reinterpret_cast<F>(getFunc(name));
}

}  // namespace

bool Load() {
  const SwellGetFunc getFunc = FindSwell();
  if (!getFunc || reinterpret_cast<std::uintptr_t>(getFunc(nullptr)) != kSwellApiVersion) return false;
  Resolve(getFunc, g_createPopupMenu, "CreatePopupMenu");
  Resolve(getFunc, g_insertMenuItem, "InsertMenuItem");
  Resolve(getFunc, g_getMenuItemCount, "GetMenuItemCount");
  return g_createPopupMenu && g_insertMenuItem && g_getMenuItemCount;
}

HMENU NewMenu() { return g_createPopupMenu(); }

void Append(HMENU menu, const char* name, int commandId, HMENU submenu) {
  SwellMenuItemInfo item = ItemInfo<SwellMenuItemInfo>(kFlags, name, commandId, submenu);
  g_insertMenuItem(menu, g_getMenuItemCount(menu), 1, &item);
}

}  // namespace MenuPlatform
}  // namespace ZOLVA
