#pragma once

#include <campotipo-records/records.h>

#include <new>
#include <string_view>
#include <utility>

#include "errors/error.hpp"

// Where exceptions end: what the C face gives instead.
namespace campotipo::records::face {

campotipo_status tell(campotipo_error *out, const Error &error);

// The error that is being handled.
campotipo_status tell_current(campotipo_error *out);

template <class Work>
campotipo_status guarded(campotipo_error *out, Work &&work) noexcept {
  try {
    return std::forward<Work>(work)();
  } catch (...) {
    return tell_current(out);
  }
}

[[noreturn]] inline void refuse(const char *what) { throw Error(ErrorCode::kArgument, what); }

// A structure of the caller: of a size that this library knows, or a later and longer one.
template <class Structure>
void check_size(const Structure *structure, const char *name) {
  if (structure == nullptr) throw Error(ErrorCode::kArgument, std::string(name) + " is null");
  if (structure->size < sizeof(Structure)) {
    throw Error(ErrorCode::kArgument,
                std::string(name) + ".size is not sizeof(campotipo_" + name + "): set it");
  }
}

}  // namespace campotipo::records::face
