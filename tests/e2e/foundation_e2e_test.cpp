// Loading, registration, unloading and the run action, with the built module in the simulated host.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <fstream>

#include "module_loader.h"
#include "reascript.h"

namespace {

TEST(Foundation, ExportsOnlyTheEntryPoint) {
  EXPECT_EQ(e2e::ExportedNames(ZOLVA_MODULE_PATH), std::vector<std::string>{"ReaperPluginEntry"});
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
// line as name|return|types|names|help. Modules, known by their name prefixes,
// withdraw in reverse order; each withdraws only the "API_" names, in its own order.
// The ten native actions and their toggle callback come before all of it and go after it.
TEST(Foundation, RegistersTheListedFunctionsAndWithdrawsOnlyTheirApiNames) {
#ifdef __APPLE__  // the module asks the application delegate for SWELL's menus, which a test program has not
  const std::vector<std::string> menu;
#else
  const std::vector<std::string> menu{"hookcustommenu"};
#endif
  std::vector<std::string> log, expected(10, "custom_action");
  expected.insert(expected.end(), {"toggleaction", "custom_action", "hookcommand2"});
  expected.insert(expected.end(), menu.begin(), menu.end());
  std::vector<std::vector<std::string>> withdrawals;  // per module
  std::string lastModule;
  size_t functions = 0;
  std::ifstream file(ZOLVA_E2E_DATA "/api_definitions.txt");
  for (std::string line; std::getline(file, line);) {
    const std::string name = line.substr(0, line.find('|')), definition = line.substr(name.size() + 1) + '|';
    for (const std::string& prefix : {std::string("API_"), std::string("APIvararg_"), "APIdef_" + definition}) expected.push_back(prefix + name);
    const size_t word = name.find('_', 6);  // ZOLVA_Render_..., or ZOLVA_Tree... and the region functions
    const std::string module = word != std::string::npos ? name.substr(0, word) : name.substr(0, 10) == "ZOLVA_Tree" ? "Tree" : "";
    if (module != lastModule || withdrawals.empty()) withdrawals.emplace_back(), lastModule = module;
    ++functions;
    withdrawals.back().push_back("-API_" + name);
  }
  for (auto m = withdrawals.rbegin(); m != withdrawals.rend(); ++m) expected.insert(expected.end(), m->begin(), m->end());
  for (const std::string& key : menu) expected.push_back("-" + key);
  expected.insert(expected.end(), {"-custom_action", "-hookcommand2", "-toggleaction"});
  expected.insert(expected.end(), 10, "-custom_action");
  sim::Host host;
  e2e::Extension ext(host);  // stays open: the kept keys and texts live in it
  ext.Unload();
  for (const sim::Registration& r : host.registerLog) {
    std::string definition = r.definition;
    std::replace(definition.begin(), definition.end(), '\0', '|');
    log.push_back(r.name.rfind("APIdef_", 0) == 0 ? "APIdef_" + definition + r.name.substr(7) : r.name);
  }
  EXPECT_EQ(log, expected);
  // Only the vararg entries and definitions stay, their keys and texts still reading as registered.
  EXPECT_EQ(host.registered.size(), 2 * functions);
  for (const auto& [key, r] : host.registered) {
    EXPECT_TRUE(key.rfind("API_", 0) != 0 && r.name == r.key) << key;
    EXPECT_EQ(std::memcmp(r.value, r.definition.data(), r.definition.size()), 0) << key;
  }
  EXPECT_TRUE(host.customActions.empty() && host.hooks.empty());
}

// The hook runs the launcher for the action's own command only.
TEST(Foundation, RunActionGoesThroughTheHook) {
  sim::Host host;
  e2e::Extension ext(host);
  const int action = host.customActions.at("ZOLVA_OPEN_COMMAND");
  EXPECT_FALSE(host.RunCommand(action + 1));
  EXPECT_TRUE(host.messageBoxes.empty());
  EXPECT_TRUE(host.RunCommand(action));
  EXPECT_EQ(host.messageBoxes.size(), 1u);  // nothing installed in the fresh resource folder
}

}  // namespace
