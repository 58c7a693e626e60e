/* Preloaded into the command: ends it by the signal KILL_WITH in front of or behind the KILL_AT-th
 * of its calls that files are made with, or where that is 0 lets the call fail. NAMED=files refuses
 * files without a name, NAMED=descriptors the names of descriptors. */

#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <signal.h>
#include <stdarg.h>
#include <stdatomic.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

/* Whether the call is to fail. */
static int point(void) {
  static atomic_int points;
  const char *at = getenv("KILL_AT");
  int signal;
  if (at == NULL || atomic_fetch_add(&points, 1) + 1 != atoi(at)) return 0;
  signal = atoi(getenv("KILL_WITH"));
  if (signal != 0) kill(getpid(), signal);
  return signal == 0;
}

static int refused(const char *what) {
  const char *named = getenv("NAMED");
  return named != NULL && strcmp(named, what) == 0;
}

#define REAL(type, name, parameters) \
  static type(*real) parameters;     \
  if (real == NULL) *(void **)&real = dlsym(RTLD_NEXT, name)

#define CALL(type, arguments) \
  type result = -1;           \
  int error = EIO;            \
  if (!point()) {             \
    result = real arguments;  \
    error = errno;            \
    point();                  \
  }                           \
  errno = error;              \
  return result

int open(const char *path, int flags, ...) {
  REAL(int, "open", (const char *, int, ...));
  mode_t mode = 0;
  va_list more;
  va_start(more, flags);
  if ((flags & (O_CREAT | __O_TMPFILE)) != 0) mode = va_arg(more, mode_t);
  va_end(more);
  if ((flags & __O_TMPFILE) != 0 && refused("files")) {
    errno = EOPNOTSUPP;
    return -1;
  }
  CALL(int, (path, flags, mode));
}

ssize_t write(int file, const void *bytes, size_t count) {
  REAL(ssize_t, "write", (int, const void *, size_t));
  CALL(ssize_t, (file, bytes, count));
}

int access(const char *path, int mode) {
  REAL(int, "access", (const char *, int));
  if (strncmp(path, "/proc/", 6) == 0 && refused("descriptors")) return -1;
  CALL(int, (path, mode));
}

int fchmod(int file, mode_t mode) {
  REAL(int, "fchmod", (int, mode_t));
  CALL(int, (file, mode));
}

int fsync(int file) {
  REAL(int, "fsync", (int));
  CALL(int, (file));
}

int linkat(int from_folder, const char *from, int to_folder, const char *to, int flags) {
  REAL(int, "linkat", (int, const char *, int, const char *, int));
  CALL(int, (from_folder, from, to_folder, to, flags));
}

int rename(const char *from, const char *to) {
  REAL(int, "rename", (const char *, const char *));
  CALL(int, (from, to));
}

int close(int file) {
  REAL(int, "close", (int));
  CALL(int, (file));
}
