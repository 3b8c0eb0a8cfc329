// Loading, unloading and the run action, with the real module in the simulated host.
#include <gtest/gtest.h>

#include <dlfcn.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "reascript.h"

namespace {

TEST(Foundation, ExportsOnlyTheEntryPoint) {
  const std::string command = std::string("nm -D --defined-only ") + ZOLVA_MODULE_PATH;
  std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
  ASSERT_TRUE(pipe);
  std::string symbols;
  char line[512];
  while (fgets(line, sizeof line, pipe.get())) {
    std::string text(line);
    const std::string::size_type space = text.rfind(' ');
    symbols += text.substr(space + 1);
  }
  EXPECT_EQ(symbols, "ReaperPluginEntry\n");
}

TEST(Foundation, LoadsIntoAHostThatKnowsNoFunction) {
  sim::Host host;
  for (const char* name : {"plugin_register", "GetExtState", "ShowMessageBox", "CountMediaItems"}) {
    host.missingFunctions.insert(name);
  }
  e2e::LoadedExtension ext(host);
  EXPECT_EQ(ext.loadResult(), 1);
  EXPECT_TRUE(host.registerLog.empty());
  EXPECT_EQ(ext.Unload(), 0);
  EXPECT_TRUE(host.registerLog.empty());
}

TEST(Foundation, LoadsWhenGetFuncAnswersNothing) {
  sim::Host host;
  host.Record()->GetFunc = [](const char*) -> void* { return nullptr; };
  e2e::LoadedExtension ext(host);
  EXPECT_EQ(ext.loadResult(), 1);
  EXPECT_EQ(ext.Unload(), 0);
  EXPECT_EQ(host.hostCalls, 0u);
}

TEST(Foundation, UnloadWithoutLoadCallsNothing) {
  sim::Host host;
  void* handle = dlopen(ZOLVA_MODULE_PATH, RTLD_NOW | RTLD_LOCAL);
  ASSERT_NE(handle, nullptr);
  auto entry = reinterpret_cast<int (*)(void*, reaper_plugin_info_t*)>(dlsym(handle, "ReaperPluginEntry"));
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(entry(handle, nullptr), 0);
  EXPECT_EQ(host.hostCalls, 0u);
  dlclose(handle);
}

TEST(Foundation, RegistersActionAndHookFirstAndWithdrawsOnlyApiNames) {
  sim::Host host;
  {
    e2e::LoadedExtension ext(host);
    ASSERT_EQ(ext.loadResult(), 1);
    ASSERT_GE(host.registerLog.size(), 2u);
    EXPECT_EQ(host.registerLog[0].name, "custom_action");
    EXPECT_EQ(host.registerLog[1].name, "hookcommand2");
    EXPECT_NE(host.CommandIdOf("ZOLVA_OPEN_COMMAND"), 0);
    EXPECT_EQ(host.hooks.size(), 1u);

    // The modules register in this order, each function as a triple: API_, APIvararg_, APIdef_.
    std::vector<size_t> firsts;
    for (const char* name : {"API_ZOLVA_Render_BuildItemCache", "API_ZOLVA_Cluster_GetVersion",
                             "API_ZOLVA_TreeAddCluster", "API_ZOLVA_GetEnumIndexFromGUID"}) {
      firsts.push_back(std::find_if(host.registerLog.begin(), host.registerLog.end(),
                                    [&](const sim::Registration& r) { return r.name == name; }) -
                       host.registerLog.begin());
    }
    EXPECT_EQ(firsts.front(), 2u);
    EXPECT_TRUE(std::is_sorted(firsts.begin(), firsts.end()));
    EXPECT_LT(firsts.back(), host.registerLog.size());
    EXPECT_EQ(host.registerLog.size(), 2 + 3 * 41u);  // 41 script functions so far
    for (size_t i = 2; i + 2 < host.registerLog.size() && host.registerLog[i].name[0] != '-'; i += 3) {
      const std::string name = host.registerLog[i].name.substr(4);
      EXPECT_EQ(host.registerLog[i].name, "API_" + name);
      EXPECT_EQ(host.registerLog[i + 1].name, "APIvararg_" + name);
      EXPECT_EQ(host.registerLog[i + 2].name, "APIdef_" + name);
    }
    const size_t registeredBefore = host.registerLog.size();
    EXPECT_EQ(ext.Unload(), 0);
    EXPECT_TRUE(host.RegistrationsIntact());
    for (size_t i = registeredBefore; i < host.registerLog.size(); ++i) {
      const std::string& name = host.registerLog[i].name;
      EXPECT_TRUE(name.rfind("-API_", 0) == 0 || name == "-custom_action" || name == "-hookcommand2") << name;
    }
    EXPECT_EQ(host.registerLog.back().name, "-hookcommand2");
    EXPECT_EQ(host.registerLog[host.registerLog.size() - 2].name, "-custom_action");
    EXPECT_TRUE(host.hooks.empty());
    for (const auto& kv : host.registered) {
      EXPECT_TRUE(kv.first.rfind("APIvararg_", 0) == 0 || kv.first.rfind("APIdef_", 0) == 0) << kv.first;
    }
  }
}

TEST(Foundation, RunActionStartsTheScriptThroughTheHook) {
  sim::Host host;
  const std::filesystem::path folder = std::filesystem::path(host.resourcePath) / "Scripts/KTR-ReaScripts";
  std::filesystem::create_directories(folder);
  std::ofstream(folder / "ZOLVA-Cluster_manager.lua") << "-- interface\n";

  e2e::LoadedExtension ext(host);
  const int action = host.CommandIdOf("ZOLVA_OPEN_COMMAND");
  EXPECT_FALSE(host.RunCommand(action + 1));
  EXPECT_TRUE(host.commands.empty());
  EXPECT_TRUE(host.RunCommand(action));
  ASSERT_EQ(host.scriptRegistrations.size(), 1u);
  EXPECT_EQ(host.scriptRegistrations[0].path, (folder / "ZOLVA-Cluster_manager.lua").string());
  ASSERT_EQ(host.commands.size(), 1u);
  EXPECT_EQ(host.commands[0].first, host.nextScriptCommandId - 1);
  const std::pair<std::string, std::string> libPathKey("ZOLVA", "lib_path");
  EXPECT_EQ(host.extState[libPathKey].first, folder.string() + "/");
}

}  // namespace
