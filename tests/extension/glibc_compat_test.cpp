// The stand-ins the Linux module uses for glibc symbols newer than 2.31 must
// answer as today's glibc does.
#include <dlfcn.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <exception>
#include <tuple>

extern "C" {
int __wrap_stat(const char* path, struct stat* result);
int __wrap_lstat(const char* path, struct stat* result);
int __wrap_fstat64(int fd, struct stat64* result);
int __wrap__dl_find_object(void* address, dl_find_object* result);
}

namespace {

template <typename Stat>
auto Identity(const Stat& s) { return std::make_tuple(s.st_dev, s.st_ino, s.st_mode, s.st_size); }

TEST(GlibcCompat, StatFamilyAnswersAsTodaysGlibc) {
  // A folder, a link to a file, a link to a folder, nothing.
  for (const char* path : {"/", "/proc/self/exe", "/proc/self", "/zolva-missing"}) {
    for (const bool follow : {true, false}) {
      struct stat want {}, got {};
      errno = 0;
      const int wantResult = follow ? stat(path, &want) : lstat(path, &want), wantErrno = errno;
      errno = 0;
      EXPECT_EQ(follow ? __wrap_stat(path, &got) : __wrap_lstat(path, &got), wantResult) << path << follow;
      EXPECT_EQ(errno, wantErrno) << path << follow;
      EXPECT_EQ(Identity(got), Identity(want)) << path << follow;
    }
  }
  const int fd = open("/proc/self/exe", O_RDONLY);
  struct stat64 want {}, got {};
  EXPECT_EQ(__wrap_fstat64(fd, &got), fstat64(fd, &want));
  EXPECT_EQ(Identity(got), Identity(want));
  close(fd);
}

#ifdef DLFO_STRUCT_HAS_EH_DBASE
int program_variable = 0;

TEST(GlibcCompat, FindsTheFrameTableOfAnAddressAsTodaysGlibc) {
  int on_stack = 0;
  for (void* address : {reinterpret_cast<void*>(&__wrap__dl_find_object), static_cast<void*>(&program_variable),
                        reinterpret_cast<void*>(&getpid), reinterpret_cast<void*>(&std::terminate),
                        static_cast<void*>(&on_stack), static_cast<void*>(nullptr)}) {
    dl_find_object want{}, got{};
    const int found = _dl_find_object(address, &want);
    ASSERT_EQ(__wrap__dl_find_object(address, &got), found) << address;
    if (found != 0) continue;
    EXPECT_EQ(got.dlfo_eh_frame, want.dlfo_eh_frame) << address;
    EXPECT_GT(got.dlfo_map_end, address) << address;
    EXPECT_LE(got.dlfo_map_start, address) << address;
  }
}
#endif

}  // namespace
