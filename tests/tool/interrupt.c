/* Preloaded into the command: ends it by the signal KILL_WITH in front of or behind the KILL_AT-th
 * of its calls that files are made with, and with NAMED set, refuses files without a name. */

#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <signal.h>
#include <stdarg.h>
#include <stdatomic.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

static void point(void) {
  static atomic_int points;
  const char *at = getenv("KILL_AT");
  if (at != NULL && atomic_fetch_add(&points, 1) + 1 == atoi(at)) {
    kill(getpid(), atoi(getenv("KILL_WITH")));
  }
}

#define REAL(type, name, parameters) \
  static type(*real) parameters;     \
  if (real == NULL) *(void **)&real = dlsym(RTLD_NEXT, name)

#define CALL(type, arguments) \
  type result;                \
  int error;                  \
  point();                    \
  result = real arguments;    \
  error = errno;              \
  point();                    \
  errno = error;              \
  return result

int open(const char *path, int flags, ...) {
  REAL(int, "open", (const char *, int, ...));
  mode_t mode = 0;
  va_list more;
  va_start(more, flags);
  if ((flags & (O_CREAT | __O_TMPFILE)) != 0) mode = va_arg(more, mode_t);
  va_end(more);
  if ((flags & __O_TMPFILE) != 0 && getenv("NAMED") != NULL) {
    errno = EOPNOTSUPP;
    return -1;
  }
  CALL(int, (path, flags, mode));
}

ssize_t write(int file, const void *bytes, size_t count) {
  REAL(ssize_t, "write", (int, const void *, size_t));
  CALL(ssize_t, (file, bytes, count));
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
