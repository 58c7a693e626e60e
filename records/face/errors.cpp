#include "face/errors.hpp"

#include <algorithm>
#include <cstring>

#include "errors/error.hpp"

namespace campotipo::records::face {

namespace {

campotipo_status status_of(ErrorCode code) {
  switch (code) {
    case ErrorCode::kArgument:
      return CAMPOTIPO_ARGUMENT;
    case ErrorCode::kMemory:
      return CAMPOTIPO_MEMORY;
    case ErrorCode::kLayout:
      return CAMPOTIPO_LAYOUT;
    case ErrorCode::kInput:
      return CAMPOTIPO_INPUT;
    case ErrorCode::kOutput:
      return CAMPOTIPO_OUTPUT;
    case ErrorCode::kRecord:
      return CAMPOTIPO_RECORD;
    case ErrorCode::kValue:
      break;
  }
  return CAMPOTIPO_VALUE;
}

// What does not fit is cut in front of a character, not inside it.
template <std::size_t Size>
void copy(char (&dest)[Size], std::string_view text) {
  std::size_t length = std::min(text.size(), Size - 1);
  while (length < text.size() && length > 0 &&
         (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) {
    --length;
  }
  std::memcpy(dest, text.data(), length);
  dest[length] = '\0';
}

void fill(campotipo_error *out, campotipo_status status, std::string_view text) {
  const std::size_t size = out->size;
  *out = {};
  out->size = size;
  out->status = status;
  copy(out->text, text);
}

bool usable(const campotipo_error *out) {
  return out != nullptr && out->size >= sizeof(campotipo_error);
}

}  // namespace

campotipo_status tell(campotipo_error *out, const Error &error) {
  const campotipo_status status = status_of(error.code());
  if (!usable(out)) return status;
  fill(out, status, error.text());
  out->line = error.line;
  out->column = error.column;
  out->record = error.record;
  out->byte = error.byte;
  copy(out->kind, error.kind);
  copy(out->field, error.field);
  return status;
}

campotipo_status tell_current(campotipo_error *out) {
  try {
    throw;
  } catch (const Error &error) {
    return tell(out, error);
  } catch (const std::bad_alloc &) {
    if (usable(out)) fill(out, CAMPOTIPO_MEMORY, "out of memory");
    return CAMPOTIPO_MEMORY;
  } catch (const std::exception &error) {
    if (usable(out)) fill(out, CAMPOTIPO_ARGUMENT, error.what());
    return CAMPOTIPO_ARGUMENT;
  }
}

}  // namespace campotipo::records::face
