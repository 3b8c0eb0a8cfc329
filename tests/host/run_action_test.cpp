#include "host/run_action.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "sim_host.h"

namespace {

namespace fs = std::filesystem;

constexpr int kAction = 4242;
const std::pair<std::string, std::string> kLibPathKey("ZOLVA", "lib_path");
const char* const kFolders[] = {"Scripts/ZOLVA/ZOLVA", "Scripts/ZOLVA", "Scripts/KTR-Scripts",
                                "Scripts/KTR-ReaScripts"};

class Launcher {
 public:
  Launcher() {
    ZOLVA::ResolveHostApi(&sim::Host::GetFunc);
    ZOLVA::SetRunActionCommandId(kAction);
  }
  ~Launcher() { ZOLVA::ResolveHostApi(nullptr); }

  fs::path Folder(int i) const { return fs::path(host.resourcePath) / kFolders[i]; }
  std::string Script(int i) const { return (Folder(i) / "ZOLVA-Cluster_manager.lua").string(); }
  void Place(int i) const {
    fs::create_directories(Folder(i));
    std::ofstream(Script(i)) << "-- ui\n";
  }
  void Remove(int i) const { fs::remove(Script(i)); }
  bool Run(int command = kAction) { return ZOLVA::OnAction(nullptr, command, 0, -1, 0, nullptr); }
  std::string LibPath() { return host.extState[kLibPathKey].first; }

  sim::Host host;
};

// The launcher keeps its registration for the life of the process, so this
// walks one process's history in order.
TEST(RunAction, SearchesRemembersAndRegistersOnce) {
  Launcher l;

  // Not installed: the message, byte for byte, and nothing else.
  EXPECT_TRUE(l.Run());
  ASSERT_EQ(l.host.messageBoxes.size(), 1u);
  EXPECT_EQ(l.host.messageBoxes[0].message,
            "ZOLVA script not found.\n\nPlease ensure ZOLVA is installed in one of:\n"
            "Scripts/ZOLVA/ZOLVA/  (ReaPack install)\nScripts/ZOLVA/\nScripts/KTR-Scripts/");
  EXPECT_EQ(l.host.messageBoxes[0].title, "ZOLVA");
  EXPECT_EQ(l.host.messageBoxes[0].type, 0);
  EXPECT_TRUE(l.host.scriptRegistrations.empty());

  // Another command is left alone without a single host call.
  const uint64_t calls = l.host.hostCalls;
  EXPECT_FALSE(l.Run(kAction + 1));
  EXPECT_EQ(l.host.hostCalls, calls);

  // Only in the folder the message leaves out: still found and run.
  l.Place(3);
  l.Place(2);
  EXPECT_TRUE(l.Run());
  ASSERT_EQ(l.host.scriptRegistrations.size(), 1u);
  EXPECT_EQ(l.host.scriptRegistrations[0].path, l.Script(2));
  EXPECT_TRUE(l.host.scriptRegistrations[0].add && l.host.scriptRegistrations[0].commit);
  EXPECT_EQ(l.host.scriptRegistrations[0].section, 0);
  const int scriptCommand = l.host.nextScriptCommandId - 1;
  ASSERT_EQ(l.host.commands.size(), 1u);
  EXPECT_EQ(l.host.commands[0], std::make_pair(scriptCommand, 0));
  EXPECT_EQ(l.LibPath(), l.Folder(2).string() + "/");
  EXPECT_FALSE(l.host.extState[kLibPathKey].second);

  // The remembered path is used as is: no search, no new registration.
  l.Place(0);
  const uint64_t before = l.host.hostCalls;
  EXPECT_TRUE(l.Run());
  EXPECT_EQ(l.host.hostCalls - before, 2u);  // SetExtState, Main_OnCommand
  EXPECT_EQ(l.host.commands.back(), std::make_pair(scriptCommand, 0));

  // The remembered file is gone and lib_path names a folder without it: the
  // resource folders are searched in order again.
  l.Remove(2);
  EXPECT_TRUE(l.Run());
  EXPECT_EQ(l.LibPath(), l.Folder(0).string() + "/");
  EXPECT_EQ(l.host.scriptRegistrations.size(), 1u);
  EXPECT_EQ(l.host.commands.back(), std::make_pair(scriptCommand, 0));

  // lib_path wins over the resource folders when it holds the script.
  l.Remove(0);
  l.host.extState[kLibPathKey] = {l.Folder(3).string() + "/", false};
  EXPECT_TRUE(l.Run());
  EXPECT_EQ(l.LibPath(), l.Folder(3).string() + "/");
  EXPECT_EQ(l.host.scriptRegistrations.size(), 1u);

  // No resource folder at all: not found.
  l.Remove(3);
  l.host.resourcePathNull = true;
  EXPECT_TRUE(l.Run());
  EXPECT_EQ(l.host.messageBoxes.size(), 2u);
}

// A failed registration (0) is retried; a negative id is kept and runs nothing.
// Needs a process whose launcher has never registered anything.
TEST(RunActionDeathTest, NegativeScriptIdIsRemembered) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        Launcher l;
        l.Place(1);
        l.host.nextScriptCommandId = 0;
        l.Run();
        l.host.nextScriptCommandId = -5;
        l.Run();
        l.Run();
        const bool ok = l.host.scriptRegistrations.size() == 2 && l.host.commands.empty() &&
                        l.host.messageBoxes.empty();
        std::exit(ok ? 0 : 1);
      },
      ::testing::ExitedWithCode(0), "");
}

}  // namespace
