// Lets the Linux module, which carries the C++ runtime and libgcc inside it,
// load with glibc 2.31 (Ubuntu 20.04, Debian 11).
//
// The static runtime of a newer GCC, built against a newer glibc, asks for a
// few symbols at versions 2.31 does not have. The module is linked with
// --wrap=<symbol> for each of them (ZOLVA_GLIBC_WRAPPED in CMakeLists.txt),
// which sends its references to the __wrap_<symbol> definitions below; each
// uses only what glibc 2.31 offers:
//
// - pthread_once, __pthread_key_create, dlsym: the same functions at their
//   first version. Up to glibc 2.33 they live in libpthread.so.0 and
//   libdl.so.2, which the module therefore names as needed; from 2.34 on
//   libc.so.6 keeps that version.
// - stat, lstat, fstat64: the __xstat functions those were before 2.33,
//   still exported by later versions.
// - __libc_single_threaded: glibc's hint that the process has one thread, so
//   that the runtime may count references without atomic operations. The
//   module's copy always says no: REAPER runs many threads anyway.
// - arc4random (std::random_device): getentropy, there since 2.25.
// - _dl_find_object (the unwinder finding the frame table of a code address):
//   dl_iterate_phdr, as libgcc did before it.
//
// Nothing here is exported: the module's version script keeps every symbol
// but ReaperPluginEntry local.
#include <dlfcn.h>
#include <link.h>
#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>

#if defined(__x86_64__)
#define ZOLVA_GLIBC_FIRST "GLIBC_2.2.5"
constexpr int kStatVersion = 1;
#elif defined(__aarch64__)
#define ZOLVA_GLIBC_FIRST "GLIBC_2.17"
constexpr int kStatVersion = 0;
#else
#error "glibc symbol versions are known for x86_64 and aarch64 only"
#endif

// Binds the declared name to glibc's symbol at the architecture's first version.
#define ZOLVA_BIND_FIRST(declared, symbol) __asm__(".symver " #declared ", " #symbol "@" ZOLVA_GLIBC_FIRST)

extern "C" {
int zolva_glibc_pthread_once(pthread_once_t* once, void (*init)());
int zolva_glibc_pthread_key_create(pthread_key_t* key, void (*destroy)(void*));
void* zolva_glibc_dlsym(void* handle, const char* name);
int zolva_glibc_xstat(int version, const char* path, struct stat* result);
int zolva_glibc_lxstat(int version, const char* path, struct stat* result);
int zolva_glibc_fxstat64(int version, int fd, struct stat64* result);
}
ZOLVA_BIND_FIRST(zolva_glibc_pthread_once, pthread_once);
ZOLVA_BIND_FIRST(zolva_glibc_pthread_key_create, __pthread_key_create);
ZOLVA_BIND_FIRST(zolva_glibc_dlsym, dlsym);
ZOLVA_BIND_FIRST(zolva_glibc_xstat, __xstat);
ZOLVA_BIND_FIRST(zolva_glibc_lxstat, __lxstat);
ZOLVA_BIND_FIRST(zolva_glibc_fxstat64, __fxstat64);

namespace {

#ifdef DLFO_STRUCT_HAS_EH_DBASE
struct ObjectSearch {
  std::uintptr_t address;
  dl_find_object* result;
};

// dl_iterate_phdr's callback: 1 (stop) once the object holding the address is found.
int FindObject(dl_phdr_info* info, size_t, void* data) {
  auto& search = *static_cast<ObjectSearch*>(data);
  std::uintptr_t start = UINTPTR_MAX, end = 0;
  void* frames = nullptr;
  bool holds = false;
  for (ElfW(Half) i = 0; i < info->dlpi_phnum; ++i) {
    const ElfW(Phdr)& segment = info->dlpi_phdr[i];
    const std::uintptr_t begin = info->dlpi_addr + segment.p_vaddr;
    if (segment.p_type == PT_LOAD) {
      if (begin < start) start = begin;
      if (begin + segment.p_memsz > end) end = begin + segment.p_memsz;
      holds = holds || (search.address >= begin && search.address - begin < segment.p_memsz);
    } else if (segment.p_type == PT_GNU_EH_FRAME) {
      frames = reinterpret_cast<void*>(begin);
    }
  }
  if (!holds) return 0;
  *search.result = dl_find_object{};
  search.result->dlfo_map_start = reinterpret_cast<void*>(start);
  search.result->dlfo_map_end = reinterpret_cast<void*>(end);
  search.result->dlfo_eh_frame = frames;
  return 1;
}
#endif

}  // namespace

extern "C" {

char __wrap___libc_single_threaded = 0;

int __wrap_pthread_once(pthread_once_t* once, void (*init)()) { return zolva_glibc_pthread_once(once, init); }

int __wrap___pthread_key_create(pthread_key_t* key, void (*destroy)(void*)) {
  return zolva_glibc_pthread_key_create(key, destroy);
}

void* __wrap_dlsym(void* handle, const char* name) { return zolva_glibc_dlsym(handle, name); }

int __wrap_stat(const char* path, struct stat* result) { return zolva_glibc_xstat(kStatVersion, path, result); }

int __wrap_lstat(const char* path, struct stat* result) { return zolva_glibc_lxstat(kStatVersion, path, result); }

int __wrap_fstat64(int fd, struct stat64* result) { return zolva_glibc_fxstat64(kStatVersion, fd, result); }

std::uint32_t __wrap_arc4random() {
  std::uint32_t value;
  // Fails only without the kernel's getrandom (Linux 3.17, 2014); glibc's own
  // arc4random ends the process when it finds no entropy, too.
  if (getentropy(&value, sizeof value) != 0) std::abort();
  return value;
}

#ifdef DLFO_STRUCT_HAS_EH_DBASE
// 0 with *result filled when a loaded object holds address, else -1. Of the
// result, the unwinder reads only dlfo_eh_frame; dlfo_link_map stays null.
int __wrap__dl_find_object(void* address, dl_find_object* result) {
  ObjectSearch search{reinterpret_cast<std::uintptr_t>(address), result};
  return dl_iterate_phdr(FindObject, &search) ? 0 : -1;
}
#endif

}  // extern "C"
