// Every call script in scripts/, each against a fresh host with the extension loaded.
#include <gtest/gtest.h>

#include <filesystem>

#include "call_script.h"

namespace {

std::vector<std::string> Scripts() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(ZOLVA_E2E_DATA "/scripts")) {
    names.push_back(entry.path().stem().string());
  }
  return names;
}

class CallScript : public ::testing::TestWithParam<std::string> {};

TEST_P(CallScript, Runs) { e2e::RunCallScript(ZOLVA_E2E_DATA "/scripts/" + GetParam() + ".calls"); }

INSTANTIATE_TEST_SUITE_P(E2E, CallScript, ::testing::ValuesIn(Scripts()),
                         [](const auto& info) { return info.param; });

}  // namespace
