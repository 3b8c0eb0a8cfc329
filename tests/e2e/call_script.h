// Call scripts (see call_script.cpp for the notation), for the tests that keep
// their lines elsewhere than in scripts/.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace e2e {

struct ScriptLine {
  std::string where;  // file:line, for failures
  std::string text;
};

// Runs the lines against a fresh host with the extension loaded; each of
// `texts` is bound as ${name}.
void RunCallLines(const std::vector<ScriptLine>& lines, const std::map<std::string, std::string>& texts = {});

}  // namespace e2e
