// The stand-ins the Linux module uses for glibc symbols newer than 2.31 must
// answer as the glibc they stand in for does.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>

extern "C" {
int __wrap_stat(const char* path, struct stat* result);
int __wrap_lstat(const char* path, struct stat* result);
int __wrap_fstat64(int fd, struct stat64* result);
int __wrap__dl_find_object(void* address, dl_find_object* result);
}

namespace {

TEST(GlibcCompat, StatFamilyAnswersAsTodaysGlibc) {
  char folder[] = "/tmp/zolva_glibc_compat_XXXXXX";
  ASSERT_NE(mkdtemp(folder), nullptr);
  const std::string dir = folder, file = dir + "/file", link = dir + "/link";
  FILE* out = std::fopen(file.c_str(), "w");
  ASSERT_NE(out, nullptr);
  std::fputs("twelve bytes", out);
  std::fclose(out);
  ASSERT_EQ(symlink("file", link.c_str()), 0);
  for (const std::string& path : {dir, file, link, dir + "/missing"}) {
    for (const bool follow : {true, false}) {
      struct stat want {}, got {};
      errno = 0;
      const int wantResult = follow ? stat(path.c_str(), &want) : lstat(path.c_str(), &want);
      const int wantErrno = errno;
      errno = 0;
      const int gotResult = follow ? __wrap_stat(path.c_str(), &got) : __wrap_lstat(path.c_str(), &got);
      EXPECT_EQ(gotResult, wantResult) << path << (follow ? " stat" : " lstat");
      EXPECT_EQ(errno, wantErrno) << path;
      EXPECT_EQ(got.st_ino, want.st_ino) << path;
      EXPECT_EQ(got.st_mode, want.st_mode) << path;
      EXPECT_EQ(got.st_size, want.st_size) << path;
    }
  }
  struct stat64 opened {};
  FILE* in = std::fopen(file.c_str(), "r");
  ASSERT_NE(in, nullptr);
  EXPECT_EQ(__wrap_fstat64(fileno(in), &opened), 0);
  std::fclose(in);
  EXPECT_EQ(opened.st_size, 12);
  EXPECT_TRUE(S_ISREG(opened.st_mode));
  unlink(link.c_str());
  unlink(file.c_str());
  rmdir(folder);
}

#ifdef DLFO_STRUCT_HAS_EH_DBASE
int local_variable = 0;

TEST(GlibcCompat, FindsTheFrameTableOfAnAddressAsTodaysGlibc) {
  int on_stack = 0;
  const struct {
    const char* what;
    void* address;
  } cases[] = {{"function of this program", reinterpret_cast<void*>(&__wrap__dl_find_object)},
               {"variable of this program", &local_variable},
               {"function of the C library", reinterpret_cast<void*>(&getpid)},
               {"function of the C++ runtime", reinterpret_cast<void*>(&std::terminate)},
               {"stack", &on_stack},
               {"null", nullptr}};
  for (const auto& c : cases) {
    dl_find_object want{}, got{};
    const int found = _dl_find_object(c.address, &want);
    ASSERT_EQ(__wrap__dl_find_object(c.address, &got), found) << c.what;
    if (found != 0) continue;
    EXPECT_EQ(got.dlfo_eh_frame, want.dlfo_eh_frame) << c.what;
    EXPECT_NE(got.dlfo_eh_frame, nullptr) << c.what;
    EXPECT_LE(got.dlfo_map_start, c.address) << c.what;
    EXPECT_GT(got.dlfo_map_end, c.address) << c.what;
    EXPECT_EQ(got.dlfo_map_end, want.dlfo_map_end) << c.what;
  }
}
#endif

}  // namespace
