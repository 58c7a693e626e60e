#include <campotipo-support/text.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

struct GrowableText {
  char *characters;
  std::size_t length;
  std::size_t capacity;
  bool ended;  // memory ran out, and the text takes no more
};

constexpr std::size_t kFirstCapacity = 256;

// Makes room for `count` more characters and the NUL, which is more than there is.
bool grow(GrowableText *text, std::size_t count) {
  const std::size_t needed = text->length + count + 1;
  const std::size_t capacity = needed > 2 * text->capacity ? needed : 2 * text->capacity;
  auto *grown = static_cast<char *>(std::realloc(text->characters, capacity));
  text->ended = grown == nullptr;
  if (text->ended) return false;
  text->characters = grown;
  text->capacity = capacity;
  return true;
}

}  // namespace

extern "C" {

int LINHAFLEX_cria(LINHAFLEX *handle) {
  auto *text = static_cast<GrowableText *>(std::malloc(sizeof(GrowableText)));
  if (text == nullptr) return 1;
  *text = {static_cast<char *>(std::malloc(kFirstCapacity)), 0, kFirstCapacity, false};
  if (text->characters == nullptr) {
    std::free(text);
    return 1;
  }
  text->characters[0] = '\0';
  *handle = text;
  return 0;
}

int LINHAFLEX_printf(LINHAFLEX handle, const char *format, ...) {
  auto *text = static_cast<GrowableText *>(handle);
  if (text->ended) return -1;
  const std::size_t room = text->capacity - text->length;
  va_list arguments;
  va_start(arguments, format);
  va_list again;
  va_copy(again, arguments);
  // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): va_start is above
  int count = std::vsnprintf(text->characters + text->length, room, format, arguments);
  if (count >= 0 && static_cast<std::size_t>(count) >= room) {
    const auto length = static_cast<std::size_t>(count);
    count = grow(text, length)
                ? std::vsnprintf(text->characters + text->length, length + 1, format, again)
                : -1;
  }
  va_end(again);
  va_end(arguments);
  if (count > 0) text->length += static_cast<std::size_t>(count);
  text->characters[text->length] = '\0';
  return count;
}

const char *LINHAFLEX_str(LINHAFLEX handle) {
  return static_cast<const GrowableText *>(handle)->characters;
}

void LINHAFLEX_destroi(LINHAFLEX handle) {
  auto *text = static_cast<GrowableText *>(handle);
  std::free(text->characters);
  std::free(text);
}
}
