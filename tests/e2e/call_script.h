// Call scripts: end-to-end cases written as data, run against the loaded
// extension in a fresh simulated host (the format is described in call_script.cpp).
#pragma once

#include <string>

#include "reascript.h"

namespace e2e {

void RunCallScript(const std::string& path);

}  // namespace e2e
