// A host may switch the process to a decimal-comma locale at any time; the
// checks that numbers ignore the locale run inside one of these.
#pragma once

#include <clocale>
#include <locale>
#include <stdexcept>

namespace sim {

// Switches the C and C++ locales to de_DE.UTF-8 (under any of its spellings)
// for its lifetime; `active` is false when no such locale is installed.
class CommaLocale {
 public:
  CommaLocale() {
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "de_DE"}) {
      try {
        previous_ = std::locale::global(std::locale(name));
        active = std::setlocale(LC_ALL, name) != nullptr;
        return;
      } catch (const std::runtime_error&) {
      }
    }
  }
  ~CommaLocale() {
    if (!active) return;
    std::locale::global(previous_);
    std::setlocale(LC_ALL, "C");
  }
  bool active = false;

 private:
  std::locale previous_;
};

}  // namespace sim
