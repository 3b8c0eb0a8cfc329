#include "host/files.h"

#ifndef _WIN32
#include <sys/stat.h>

#include <cerrno>
#endif

#include <fstream>
#include <system_error>

namespace ZOLVA::Files {

namespace fs = std::filesystem;

fs::path FromUtf8(const std::string& utf8) { return fs::u8path(utf8); }

bool IsRegularFile(const std::string& utf8) {
  std::error_code ec;
  return !utf8.empty() && fs::is_regular_file(FromUtf8(utf8), ec);
}

bool SameFile(const std::string& a, const std::string& b) {
  std::error_code ec;
  return IsRegularFile(a) && IsRegularFile(b) && fs::equivalent(FromUtf8(a), FromUtf8(b), ec);
}

bool MakeDirectory(const std::string& utf8) {
#ifdef _WIN32
  std::error_code ec;
  const fs::path path = FromUtf8(utf8);
  if (fs::create_directory(path, ec) || !ec) return true;
  return fs::exists(fs::symlink_status(path, ec));
#else
  // The mode is the reason for mkdir here: std::filesystem would use 0777.
  return ::mkdir(utf8.c_str(), 0755) == 0 || errno == EEXIST;
#endif
}

std::string::size_type LastSeparator(const std::string& path) {
#ifdef _WIN32
  return path.find_last_of("/\\");
#else
  return path.rfind('/');
#endif
}

bool SameFolder(const std::string& a, const std::string& b) {
  std::error_code ec;
  return !a.empty() && !b.empty() && fs::is_directory(FromUtf8(a), ec) && fs::equivalent(FromUtf8(a), FromUtf8(b), ec);
}

bool WriteWholeFile(const std::string& utf8, const std::string& content) {
  std::ofstream out(FromUtf8(utf8), std::ios::binary | std::ios::trunc);
  if (!out) return false;
  out.write(content.data(), static_cast<std::streamsize>(content.size()));
  out.close();
  return !out.fail();
}

bool CopyRegularFile(const std::string& from, const std::string& to) {
  if (!IsRegularFile(from)) return false;
  if (SameFile(from, to)) return true;
  std::ifstream in(FromUtf8(from), std::ios::binary);
  if (!in) return false;
  std::ofstream out(FromUtf8(to), std::ios::binary | std::ios::trunc);
  if (!out) return false;
  char buffer[1 << 16];
  while (in.read(buffer, sizeof buffer) || in.gcount() > 0) {
    if (!out.write(buffer, in.gcount())) return false;
  }
  if (in.bad()) return false;
  out.close();
  return !out.fail();
}

}  // namespace ZOLVA::Files
