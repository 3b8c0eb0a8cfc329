#include "module_loader.h"

#include <cstdio>
#include <cstring>
#include <memory>
#include <stdexcept>

#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <filesystem>
#else
#include <dlfcn.h>
#endif

namespace e2e {

#ifdef _WIN32

void* OpenModule(const std::string& utf8Path) {
  HMODULE module = LoadLibraryW(std::filesystem::u8path(utf8Path).c_str());
  if (!module) throw std::runtime_error("LoadLibraryW(" + utf8Path + ") failed: error " + std::to_string(GetLastError()));
  return module;
}

void* ModuleSymbol(void* module, const char* name) {
  // Through void(*)(), the one function type a cast from FARPROC may go to without a warning.
  const auto function = reinterpret_cast<void (*)()>(GetProcAddress(static_cast<HMODULE>(module), name));
  return function ? reinterpret_cast<void*>(function) : nullptr;
}

void CloseModule(void* module) { FreeLibrary(static_cast<HMODULE>(module)); }

// Read from the export directory of the mapped image. Exports by ordinal only
// have no name, so they are listed as "#<ordinal>" to fail the comparison too.
std::vector<std::string> ExportedNames(const std::string& utf8Path) {
  std::vector<std::string> names;
  void* module = OpenModule(utf8Path);
  const auto* base = static_cast<const unsigned char*>(module);
  const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
  const auto* nt = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
  const IMAGE_DATA_DIRECTORY& entry = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
  if (entry.VirtualAddress != 0 && entry.Size != 0) {
    const auto* exports = reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(base + entry.VirtualAddress);
    const auto* nameRvas = reinterpret_cast<const DWORD*>(base + exports->AddressOfNames);
    for (DWORD i = 0; i < exports->NumberOfNames; ++i) names.emplace_back(reinterpret_cast<const char*>(base + nameRvas[i]));
    for (DWORD i = exports->NumberOfNames; i < exports->NumberOfFunctions; ++i) {
      names.push_back("#" + std::to_string(exports->Base + i));
    }
  }
  CloseModule(module);
  return names;
}

#else

void* OpenModule(const std::string& utf8Path) {
  void* module = dlopen(utf8Path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!module) throw std::runtime_error(dlerror());
  return module;
}

void* ModuleSymbol(void* module, const char* name) { return dlsym(module, name); }

void CloseModule(void* module) { dlclose(module); }

// nm's last column of its dynamic, defined symbols. A Mach-O file has no
// dynamic symbol table: there it is the external, defined symbols of the
// running architecture's slice, whose C names start with an underscore.
std::vector<std::string> ExportedNames(const std::string& utf8Path) {
  std::vector<std::string> names;
#if defined(__APPLE__) && defined(__aarch64__)
  const std::string command = "nm -gUj -arch arm64 '" + utf8Path + "'";
#elif defined(__APPLE__)
  const std::string command = "nm -gUj -arch x86_64 '" + utf8Path + "'";
#else
  const std::string command = "nm -D --defined-only '" + utf8Path + "'";
#endif
  std::unique_ptr<FILE, int (*)(FILE*)> nm(popen(command.c_str(), "r"), pclose);
  if (!nm) throw std::runtime_error("cannot run " + command);
  for (char line[512]; fgets(line, sizeof line, nm.get());) {
    std::string name = std::strrchr(line, ' ') ? std::strrchr(line, ' ') + 1 : line;
    if (!name.empty() && name.back() == '\n') name.pop_back();
#ifdef __APPLE__
    if (!name.empty() && name.front() == '_') name.erase(0, 1);
#endif
    names.push_back(name);
  }
  return names;
}

#endif

}  // namespace e2e
