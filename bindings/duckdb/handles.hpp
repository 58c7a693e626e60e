#pragma once

#include <campotipo-records/records.h>

#include <memory>

#include "host.hpp"

// Objects of the records library that free themselves.
namespace campotipo::duckdb {

struct FreeLayout {
  void operator()(campotipo_layout *layout) const { campotipo_layout_free(layout); }
};
struct FreeReader {
  void operator()(campotipo_reader *reader) const { campotipo_reader_free(reader); }
};
using Layout = std::unique_ptr<campotipo_layout, FreeLayout>;
using Reader = std::unique_ptr<campotipo_reader, FreeReader>;

// A structure that tells its own size, the rest zero.
template <class Structure>
Structure sized() {
  Structure made = {};
  made.size = sizeof made;
  return made;
}

// Throws what an error below zero tells.
inline campotipo_status checked(campotipo_status status, const campotipo_error &error) {
  if (status < 0) throw Failure(error.text);
  return status;
}

inline Layout open_layout(const std::string &place) {
  campotipo_layout *made = nullptr;
  auto error = sized<campotipo_error>();
  checked(campotipo_layout_open(place.c_str(), &made, &error), error);
  return Layout(made);
}

inline campotipo_input input_of(const std::string &path) {
  auto input = sized<campotipo_input>();
  input.path = path.c_str();
  return input;
}

}  // namespace campotipo::duckdb
