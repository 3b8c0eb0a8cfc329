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

// True when both paths name the same existing folder.
bool SameFolder(const std::string& a, const std::string& b);

// Truncates and writes; true only when every byte reached the file, so a
// write that fails part way (a full disk shows at the final flush) is never
// reported as done.
bool WriteWholeFile(const std::string& utf8, const std::string& content);

// Copies a regular file byte for byte; false when either side cannot be
// opened or the copy does not complete. A source that already is the
// destination is left as it is (opening it for writing would empty it).
bool CopyRegularFile(const std::string& from, const std::string& to);

// Position of the last folder separator ('/', and '\' on Windows), or npos.
std::string::size_type LastSeparator(const std::string& path);

}  // namespace ZOLVA::Files
