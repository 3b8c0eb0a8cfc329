// The "ZOLVA" submenu of the Extensions menu, on Linux, where the module finds the simulated SWELL
// through this program's SWELLAPI_GetFunc (user32's menus and macOS' SWELL are not simulated).
#include <gtest/gtest.h>

#include "reascript.h"

#if !defined(_WIN32) && !defined(__APPLE__)
namespace {

using Items = std::vector<std::string>;

// Every Extensions menu REAPER builds gets the submenu, until unload; without SWELL or without the
// host's Extensions menu, no menu at all.
TEST(ExtensionsMenu, EveryExtensionsMenuGetsTheSubmenuUntilUnload) {
  for (const auto& [swell, hostMenu] : {std::pair{true, true}, {false, true}, {true, false}}) {
    SCOPED_TRACE(testing::Message() << "SWELL " << swell << ", host menu " << hostMenu);
    sim::Host host;
    host.swellPresent = swell;
    if (!hostMenu) host.record.GetFunc = [](const char* name) {
      return std::string(name) == "AddExtensionsMainMenu" ? nullptr : sim::Host::GetFunc(name);
    };
    e2e::Extension ext(host);
    const bool shown = swell && hostMenu;
    // Every action in the order it was registered, then apart "ZOLVA: Run".
    Items actions;
    for (const sim::Registration& r : host.registerLog) {
      const auto* action = static_cast<const custom_action_register_t*>(r.value);
      if (r.name != "custom_action" || std::string(action->idStr) == "ZOLVA_OPEN_COMMAND") continue;
      actions.push_back(std::string(action->name) + "=" + std::to_string(host.customActions.at(action->idStr)));
    }
    actions.push_back("-");
    actions.push_back("ZOLVA: Run=" + std::to_string(host.customActions.at("ZOLVA_OPEN_COMMAND")));
    EXPECT_EQ(actions.size(), 12u);
    for (int instance = 0; instance < 2; ++instance) {  // REAPER may build the menu again
      const size_t menu = host.ShowMenu("Main extensions");
      EXPECT_EQ(host.menus.at(menu), shown ? Items{"ZOLVA>" + std::to_string(menu + 1)} : Items{});
      EXPECT_EQ(shown ? host.menus.at(menu + 1) : actions, actions);  // the submenu
    }
    EXPECT_EQ(host.extensionsMenuRequests, shown);
    EXPECT_EQ(host.menus.at(host.ShowMenu("Main file")), Items{});
    ext.Unload();
    EXPECT_TRUE(host.menuHooks.empty());
  }
}

}  // namespace
#endif
