// The launcher's search, message and one-time registration, each case with a
// launcher as fresh as a newly started host has.
#include "host/run_action.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "sim_host.h"

namespace {

namespace fs = std::filesystem;

const std::pair<std::string, std::string> kLibPathKey("ZOLVA", "lib_path");
const char* const kFolders[] = {"Scripts/ZOLVA/ZOLVA", "Scripts/ZOLVA", "Scripts/KTR-Scripts", "Scripts/KTR-ReaScripts"};

struct Launcher : ZOLVA::ScriptLauncher {
  Launcher() { ZOLVA::ResolveHostApi(&sim::Host::GetFunc); }
  fs::path Folder(int i) const { return fs::path(host.resourcePath) / kFolders[i]; }
  std::string Script(int i) const { return (Folder(i) / "ZOLVA-Cluster_manager.lua").string(); }
  void Place(int i) const {
    fs::create_directories(Folder(i));
    std::ofstream(Script(i)) << "-- ui\n";
  }
  std::string LibPath() { return host.extState[kLibPathKey].first; }
  sim::Host host;
};

TEST(RunAction, NotInstalledShowsTheMessageByteForByte) {
  Launcher l;
  l.Run();
  ASSERT_EQ(l.host.messageBoxes.size(), 1u);
  EXPECT_EQ(l.host.messageBoxes[0].message,
            "ZOLVA script not found.\n\nPlease ensure ZOLVA is installed in one of:\n"
            "Scripts/ZOLVA/ZOLVA/  (ReaPack install)\nScripts/ZOLVA/\nScripts/KTR-Scripts/");
  EXPECT_EQ(l.host.messageBoxes[0].title + std::to_string(l.host.messageBoxes[0].type), "ZOLVA0");
  EXPECT_TRUE(l.host.scriptRegistrations.empty());
  l.host.resourcePathNull = true;
  l.Run();
  EXPECT_EQ(l.host.messageBoxes.size(), 2u);
}

TEST(RunAction, SearchesInOrderRemembersAndRegistersOnce) {
  Launcher l;
  l.Place(3);  // the folder the message leaves out is searched too
  l.Place(2);
  l.Run();
  ASSERT_EQ(l.host.scriptRegistrations.size(), 1u);
  const sim::ScriptRegistration& r = l.host.scriptRegistrations[0];
  EXPECT_TRUE(r.add && r.commit && r.section == 0 && r.path == l.Script(2));
  const std::pair<int, int> run(l.host.nextScriptCommandId - 1, 0);
  EXPECT_EQ(l.host.commands, (std::vector<std::pair<int, int>>{run}));
  EXPECT_EQ(l.host.extState[kLibPathKey], std::make_pair(l.Folder(2).string() + "/", false));

  l.Place(0);  // the remembered path is used as is: no search, no new registration
  const uint64_t before = l.host.hostCalls;
  l.Run();
  EXPECT_EQ(l.host.hostCalls - before, 2u);  // SetExtState, Main_OnCommand

  fs::remove(l.Script(2));  // gone, and lib_path names a folder without it: searched again
  l.Run();
  EXPECT_EQ(l.LibPath(), l.Folder(0).string() + "/");
  fs::remove(l.Script(0));  // lib_path wins over the resource folders when it holds the script
  l.host.extState[kLibPathKey] = {l.Folder(3).string() + "/", false};
  l.Run();
  EXPECT_EQ(l.LibPath(), l.Folder(3).string() + "/");
  EXPECT_EQ(l.host.scriptRegistrations.size(), 1u);
  EXPECT_EQ(l.host.commands, (std::vector<std::pair<int, int>>(4, run)));
}

TEST(RunAction, AFailedRegistrationIsRetriedANegativeIdIsKept) {
  Launcher l;
  l.Place(1);
  l.host.nextScriptCommandId = 0;
  l.Run();
  l.host.nextScriptCommandId = -5;
  l.Run();
  l.Run();
  EXPECT_EQ(l.host.scriptRegistrations.size(), 2u);
  EXPECT_TRUE(l.host.commands.empty());
  EXPECT_TRUE(l.host.messageBoxes.empty());
}

}  // namespace
