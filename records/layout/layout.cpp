#include "layout/layout.hpp"

#include <algorithm>
#include <cstring>

#include "kinds/exact.hpp"
#include "text/scan.hpp"

namespace campotipo::records {

namespace {

bool smaller(const RecordType &a, const RecordType &b) { return a.bytes < b.bytes; }

}  // namespace

std::string path_name(const std::vector<PathStep> &path, bool with_places) {
  std::string name;
  for (const PathStep &step : path) {
    if (step.index < 0) {
      name += (name.empty() ? "" : "_") + step.key;
    } else if (with_places) {
      name += "_" + std::to_string(step.index + 1);
    }
  }
  return name;
}

std::size_t Layout::least_bytes() const {
  return std::min_element(types.begin(), types.end(), smaller)->bytes;
}

std::size_t Layout::most_bytes() const {
  return std::max_element(types.begin(), types.end(), smaller)->bytes;
}

bool RecordType::holds(const Condition &condition, const unsigned char *record) const {
  const Field &field = fields[condition.field];
  const unsigned char *at = record + field.offset;
  // Parts of a bit area share their bytes with others.
  const bool part = is_bit_area(*field.type);
  return std::any_of(
      condition.stored.begin(), condition.stored.end(), [&](const std::string &stored) {
        const auto *wanted = reinterpret_cast<const unsigned char *>(stored.data());
        return part ? field.type->compare(at, wanted, field.params) == 0
                    : at[0] == wanted[0] && std::memcmp(at, wanted, field.bytes) == 0;
      });
}

std::size_t Layout::told_bytes() const {
  std::size_t most = 0;
  for (const RecordType &type : types) most = std::max(most, type.told_bytes);
  return most;
}

const RecordType *Layout::type_of(const unsigned char *record, std::size_t bytes) const {
  for (const RecordType &type : types) {
    const bool is = bytes >= type.told_bytes && std::all_of(type.when.begin(), type.when.end(),
                                                            [&](const Condition &condition) {
                                                              return type.holds(condition, record);
                                                            });
    if (is) return &type;
  }
  return nullptr;
}

const RecordType *Layout::type_named(std::string_view wanted) const {
  for (const RecordType &type : types) {
    if (type.name == wanted) return &type;
  }
  return nullptr;
}

std::size_t line_end_in(const RecordType &type, const unsigned char *record) {
  std::size_t least = type.bytes;
  for (const char end : {'\n', '\r'}) {
    const void *found = std::memchr(record, end, least);
    if (found != nullptr) {
      least = static_cast<std::size_t>(static_cast<const unsigned char *>(found) - record);
    }
  }
  return least;
}

std::string field_text(const Field &field, const unsigned char *record) {
  std::string text(field.type->room(field.params) + scan::kPadding, '\0');
  const char *end = field.type->put(text.data(), record + field.offset, field.params);
  text.resize(static_cast<std::size_t>(end - text.data()));
  return text;
}

bool field_empty(const Field &field, const unsigned char *record) {
  const unsigned char *bytes = record + field.offset;
  if (field.type->content != nullptr) return field.type->content(bytes, field.params) == 0;
  return std::all_of(bytes, bytes + field.bytes, [](unsigned char byte) { return byte == 0; });
}

namespace {

// The text of a field where no memory has to be asked for it, as is the case for most.
class ShortText {
 public:
  ShortText(const Field &field, const unsigned char *record) {
    const std::size_t room = field.type->room(field.params) + 1 + scan::kPadding;
    if (room > sizeof short_) long_.resize(room);
    char *text = long_.empty() ? short_ : long_.data();
    char *end = field.type->put(text, record + field.offset, field.params);
    std::memset(end, 0, 1 + scan::kPadding);
    text_ = PaddedText::followed_by_padding(text, static_cast<std::size_t>(end - text));
  }

  PaddedText text() const { return text_; }

 private:
  char short_[256];
  std::string long_;
  PaddedText text_;
};

bool comes_back(const Field &field, const unsigned char *bytes, PaddedText text) {
  unsigned char some[256] = {};
  std::vector<unsigned char> many(field.bytes > sizeof some ? field.bytes : 0);
  unsigned char *again = many.empty() ? some : many.data();
  if (is_bit_area(*field.type)) std::copy_n(bytes, field.bytes, again);
  field.type->take(again, text, field.params);
  return std::memcmp(again, bytes, field.bytes) == 0;
}

}  // namespace

bool field_absent(const Field &field, const unsigned char *record) {
  return ShortText(field, record).text().empty();
}

const char *field_fault(const Field &field, const unsigned char *record, What *what) {
  const auto set = [&](What word) {
    if (what != nullptr) *what = word;
  };
  const unsigned char *bytes = record + field.offset;
  const Look look = look_at(*field.type, bytes, field.params);
  if (look == Look::kGood && field.check == nullptr) return nullptr;
  const char *fault = field.type->fault(bytes, field.params);
  set(What::kInvalid);
  if (fault != nullptr || is_fill(*field.type)) return fault;
  if (look == Look::kComesBack && field.check == nullptr) return nullptr;
  const ShortText text(field, record);
  set(What::kCheckDigit);
  if (field.check != nullptr && !holds(*field.check, text.text().view())) return field.check->fault;
  set(What::kNotCanonical);
  return comes_back(field, bytes, text.text()) ? nullptr : "does not come back from its text";
}

}  // namespace campotipo::records
