#include <fcntl.h>
#include <link.h>
#include <pthread.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstring>

// What the C++ library, linked in whole, and the system calls of this library would ask of a newer C
// library than that of the oldest system which a file built once has to run on. The definitions here
// stand inside the file and are seen by it alone.

// Threads moved from a library of their own, and got a new version with that. The old one stays.
// The compiler takes a value that is handed on for one that is read.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#define OLD_VERSION(result, name, parameters, arguments)                    \
  extern "C" result campotipo_old_##name parameters;                        \
  __asm__(".symver campotipo_old_" #name ", " #name "@GLIBC_2.2.5");        \
  extern "C" __attribute__((visibility("hidden"))) result name parameters { \
    return campotipo_old_##name arguments;                                  \
  }

OLD_VERSION(int, pthread_once, (pthread_once_t * once, void (*call)(void)), (once, call))
OLD_VERSION(int, pthread_key_create, (pthread_key_t * key, void (*drop)(void *)), (key, drop))
OLD_VERSION(int, pthread_key_delete, (pthread_key_t key) noexcept, (key))
OLD_VERSION(void *, pthread_getspecific, (pthread_key_t key) noexcept, (key))
OLD_VERSION(int, pthread_setspecific, (pthread_key_t key, const void *value) noexcept, (key, value))
OLD_VERSION(int, pthread_rwlock_rdlock, (pthread_rwlock_t * lock) noexcept, (lock))
OLD_VERSION(int, pthread_rwlock_wrlock, (pthread_rwlock_t * lock) noexcept, (lock))
OLD_VERSION(int, pthread_rwlock_unlock, (pthread_rwlock_t * lock) noexcept, (lock))
OLD_VERSION(int, __pthread_key_create, (pthread_key_t * key, void (*drop)(void *)), (key, drop))
#undef OLD_VERSION
#pragma GCC diagnostic pop

extern "C" {

// The kernel's structure is the one of the C library on this machine.
__attribute__((visibility("hidden"))) int fstat(int fd, struct stat *out) noexcept {
  return static_cast<int>(syscall(SYS_fstat, fd, out));
}

__attribute__((visibility("hidden"))) int stat(const char *path, struct stat *out) noexcept {
  return static_cast<int>(syscall(SYS_stat, path, out));
}

__attribute__((visibility("hidden"))) int fstat64(int fd, struct stat64 *out) noexcept {
  return static_cast<int>(syscall(SYS_fstat, fd, out));
}

// Of std::random_device, which nothing here uses.
__attribute__((visibility("hidden"))) int getentropy(void *dest, size_t bytes) noexcept {
  return syscall(SYS_getrandom, dest, bytes, 0) == static_cast<long>(bytes) ? 0 : -1;
}

__attribute__((visibility("hidden"))) __uint32_t arc4random() noexcept {
  __uint32_t number = 0;
  getentropy(&number, sizeof number);
  return number;
}

// Whether there are threads: taken for granted.
extern __attribute__((visibility("hidden"))) char __libc_single_threaded;
char __libc_single_threaded = 0;

}  // extern "C"

namespace {

struct Search {
  ElfW(Addr) place;
  struct dl_find_object *found;
};

int look(struct dl_phdr_info *object, size_t, void *argument) {
  auto *search = static_cast<Search *>(argument);
  bool here = false;
  ElfW(Addr) frames = 0;
  for (int i = 0; i < object->dlpi_phnum; ++i) {
    const ElfW(Phdr) &part = object->dlpi_phdr[i];
    const ElfW(Addr) begin = object->dlpi_addr + part.p_vaddr;
    if (part.p_type == PT_LOAD && search->place - begin < part.p_memsz) {
      here = true;
      search->found->dlfo_map_start = reinterpret_cast<void *>(begin);
      search->found->dlfo_map_end = reinterpret_cast<void *>(begin + part.p_memsz);
    }
    if (part.p_type == PT_GNU_EH_FRAME) frames = begin;
  }
  if (!here || frames == 0) return 0;
  search->found->dlfo_eh_frame = reinterpret_cast<void *>(frames);
  return 1;
}

}  // namespace

// How the unwinder finds the tables of an exception's way: by the list of loaded files, as it did
// before the C library had this.
extern "C" __attribute__((visibility("hidden"))) int _dl_find_object(
    void *place, struct dl_find_object *found) noexcept {
  std::memset(found, 0, sizeof *found);
  Search search = {reinterpret_cast<ElfW(Addr)>(place), found};
  return dl_iterate_phdr(look, &search) != 0 ? 0 : -1;
}
