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
#ifdef _WIN32
    // MinGW's C++ library knows only the "C" locale, so there only the C
    // library's locale changes, under the Windows names for German.
    for (const char* name : {"de-DE", "German_Germany.1252", "German"}) {
      if ((active = std::setlocale(LC_ALL, name) != nullptr)) return;
    }
    return;
#endif
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
#ifndef _WIN32
    std::locale::global(previous_);
#endif
    std::setlocale(LC_ALL, "C");
  }
  bool active = false;

 private:
  std::locale previous_;
};

}  // namespace sim
