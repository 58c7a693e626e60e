#include "layout/ready.hpp"

#include <unistd.h>

#include <vector>

#include "errors/error.hpp"
#include "layout/reader.hpp"
#include "layout/ready_texts.hpp"
#include "text/nearest.hpp"

namespace campotipo::records {

const char *ready_layout(const std::string &name) {
  for (const ReadyText *ready = ready_texts(); ready->name != nullptr; ++ready) {
    if (name == ready->name) return ready->text;
  }
  return nullptr;
}

const char *ready_layout_name(std::size_t at) {
  const ReadyText *ready = ready_texts();
  for (; at > 0 && ready->name != nullptr; --at) ++ready;
  return ready->name;
}

Layout layout_at_place(const std::string &place) {
  if (place.find('\n') != std::string::npos) return parse_layout(place, "layout");
  if (place.ends_with(".toml") || access(place.c_str(), F_OK) == 0) return read_layout(place);
  if (const char *text = ready_layout(place)) return parse_layout(text, place);
  std::vector<std::string> names;
  for (const ReadyText *ready = ready_texts(); ready->name != nullptr; ++ready) {
    names.emplace_back(ready->name);
  }
  const std::string near = nearest(place, names);
  throw Error(ErrorCode::kArgument, place + ": no file and no ready layout has this name" +
                                        (near.empty() ? "" : ", expected \"" + near + "\"?"));
}

}  // namespace campotipo::records
