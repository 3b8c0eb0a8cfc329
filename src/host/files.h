// File-system checks and folder creation on UTF-8 paths, the same on every
// platform: on Windows the paths reach the wide (UTF-16) system calls, so that
// names with non-ASCII characters work there too.
#pragma once

#include <filesystem>
#include <string>

namespace ZOLVA::Files {

// The path a UTF-8 string names (not the Windows ANSI code page's reading of it).
std::filesystem::path FromUtf8(const std::string& utf8);

// True when the path names a regular file, following symbolic links.
bool IsRegularFile(const std::string& utf8);

// True when both paths name the same existing regular file.
bool SameFile(const std::string& a, const std::string& b);

// Makes one folder (0755 before the umask where modes exist); true when it was
// made or something already stands at the path.
bool MakeDirectory(const std::string& utf8);

// Position of the last folder separator ('/', and '\' on Windows), or npos.
std::string::size_type LastSeparator(const std::string& path);

}  // namespace ZOLVA::Files
