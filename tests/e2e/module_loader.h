// Opens a built module and reads what it exports: dlopen / nm on Linux and
// macOS, LoadLibraryW / the PE export table on Windows.
#pragma once

#include <string>
#include <vector>

namespace e2e {

// The opened module; throws std::runtime_error with the loader's message.
void* OpenModule(const std::string& utf8Path);
// The address of an exported function, or nullptr.
void* ModuleSymbol(void* module, const char* name);
void CloseModule(void* module);

// The names the module at the path exports, in the order the system lists them.
std::vector<std::string> ExportedNames(const std::string& utf8Path);

}  // namespace e2e
