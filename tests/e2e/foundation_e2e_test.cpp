// Loading, registration, unloading and the run action, with the built module in the simulated host.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>

#include "reascript.h"

namespace {

TEST(Foundation, ExportsOnlyTheEntryPoint) {
  std::unique_ptr<FILE, int (*)(FILE*)> nm(popen("nm -D --defined-only '" ZOLVA_MODULE_PATH "'", "r"), pclose);
  ASSERT_TRUE(nm);
  std::string symbols;
  for (char line[512]; fgets(line, sizeof line, nm.get());) symbols += std::strrchr(line, ' ') + 1;
  EXPECT_EQ(symbols, "ReaperPluginEntry\n");
}

TEST(Foundation, CallsNoHostFunctionItWasNotGivenOrBeforeItIsLoaded) {
  sim::Host host;
  EXPECT_EQ(e2e::Extension(host, /*load=*/false).Unload(), 0);
  EXPECT_EQ(host.hostCalls, 0u);
  host.record.GetFunc = [](const char*) -> void* { return nullptr; };
  e2e::Extension ext(host);
  EXPECT_EQ(ext.loadResult, 1);
  EXPECT_EQ(ext.Unload(), 0);
  EXPECT_EQ(host.hostCalls, 0u);
}

// api_definitions.txt lists every script function in registration order, one a
// line as name|return|types|names|help. A module is known by its name prefix.
TEST(Foundation, RegistersTheListedFunctionsAndWithdrawsOnlyTheirApiNames) {
  std::vector<std::string> names, definitions, expected{"custom_action", "hookcommand2"};
  std::vector<std::vector<std::string>> modules;  // runs of names of one module
  auto moduleOf = [](const std::string& name) -> std::string {
    for (const char* prefix : {"ZOLVA_Render_", "ZOLVA_Cluster_", "ZOLVA_Wwise_", "ZOLVA_Tree"}) {
      if (name.rfind(prefix, 0) == 0) return prefix;
    }
    return "Region";
  };
  std::ifstream file(ZOLVA_E2E_DATA "/api_definitions.txt");
  for (std::string line; std::getline(file, line);) {
    const std::string name = line.substr(0, line.find('|'));
    std::string definition = line.substr(name.size() + 1) + '\0';
    std::replace(definition.begin(), definition.end(), '|', '\0');
    definitions.push_back(definition);
    for (const char* prefix : {"API_", "APIvararg_", "APIdef_"}) expected.push_back(prefix + name);
    if (modules.empty() || moduleOf(modules.back().back()) != moduleOf(name)) modules.emplace_back();
    modules.back().push_back(name);
  }
  ASSERT_FALSE(definitions.empty());

  sim::Host host;
  e2e::Extension ext(host);
  ext.Unload();  // withdraws "-API_" of each function, the modules in reverse, then the action and the hook
  std::for_each(modules.rbegin(), modules.rend(), [&](const std::vector<std::string>& module) {
    for (const std::string& name : module) expected.push_back("-API_" + name);
  });
  expected.insert(expected.end(), {"-custom_action", "-hookcommand2"});
  for (const sim::Registration& r : host.registerLog) names.push_back(r.name);
  EXPECT_EQ(names, expected);
  for (size_t i = 0; i < definitions.size() && 4 + 3 * i < host.registerLog.size(); ++i) {
    EXPECT_EQ(host.registerLog[4 + 3 * i].definition, definitions[i]) << host.registerLog[4 + 3 * i].name;
  }
  // Only the vararg entries and definitions stay, and their keys and texts still read as registered.
  EXPECT_EQ(host.registered.size(), 2 * definitions.size());
  for (const auto& [key, r] : host.registered) {
    EXPECT_TRUE(key.rfind("API_", 0) != 0 && r.name == r.key) << key;
    EXPECT_EQ(std::memcmp(r.value, r.definition.data(), r.definition.size()), 0) << key;
  }
  EXPECT_TRUE(host.customActions.empty() && host.hooks.empty());
}

TEST(Foundation, RunActionStartsTheScriptThroughTheHook) {
  sim::Host host;
  const std::filesystem::path folder = std::filesystem::path(host.resourcePath) / "Scripts/KTR-ReaScripts";
  std::filesystem::create_directories(folder);
  std::ofstream(folder / "ZOLVA-Cluster_manager.lua") << "-- interface\n";
  e2e::Extension ext(host);
  const int action = host.customActions.at("ZOLVA_OPEN_COMMAND");
  EXPECT_FALSE(host.RunCommand(action + 1));
  EXPECT_TRUE(host.RunCommand(action));
  ASSERT_EQ(host.scriptRegistrations.size(), 1u);
  EXPECT_EQ(host.scriptRegistrations[0].path, (folder / "ZOLVA-Cluster_manager.lua").string());
  EXPECT_EQ(host.commands, (std::vector<std::pair<int, int>>{{host.nextScriptCommandId - 1, 0}}));
  EXPECT_EQ((host.extState[{"ZOLVA", "lib_path"}].first), folder.string() + "/");
}

}  // namespace
