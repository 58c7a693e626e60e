// Records that stand in lines of text: where each begins and ends.

#include <cstring>

#include "files/stream.hpp"

namespace campotipo::records {

namespace {

constexpr unsigned char kEndOfText = 0x1A;

const char *name(LineEnd end) { return end == LineEnd::kCrLf ? "CR LF" : "LF"; }

}  // namespace

// What stands at a place of a block.
struct RecordStream::Line {
  std::size_t length = 0;         // without its end
  std::size_t end = 0;            // bytes of its end
  LineEnd ends = LineEnd::kNone;  // kNone: the file ends without one
  bool cut = false;               // a CR and nothing behind it
};

void RecordStream::split_lines(RecordBlock &block, std::size_t &at) {
  Line line;
  while (!done_ && next_ < end_) {
    if (!wary_ && !split_even_lines(block, at)) return;
    if (!find_line(block, at, line)) break;
    const RecordType *type = passed_ != 0 ? long_ : kinds_.of(block.data() + at, line.length);
    const std::size_t behind = at + line.length + line.end;
    line.length += passed_;
    // The beginning of a long line is no longer there: its place wraps round.
    take_line(block, at - passed_, line, type);
    passed_ = 0;
    at = behind;
  }
  if (!done_ && !ended_ && next_ < end_) keep_end(block, at);
}

// Of a line longer than any record, whose end has not come yet, the bytes that may belong to its end
// are kept.
void RecordStream::keep_end(RecordBlock &block, std::size_t &at) {
  const std::size_t left = block.size() - at;
  if (passed_ == 0) {
    if (left <= layout_->most_bytes() + 2) return;
    wary_ = true;
    long_ = kinds_.of(block.data() + at, left);
  }
  passed_ += left - 2;
  at = block.size() - 2;
}

// Lines of one length, one behind the other, by their ends alone: all that end where they should.
// True where one does not. Behind a line of another length the next one is looked through, since two
// short ones may be as long as one.
bool RecordStream::split_even_lines(RecordBlock &block, std::size_t &at) {
  const std::size_t size = layout_->most_bytes();
  const bool crlf = ends_ == LineEnd::kCrLf;
  const std::size_t stride = size + (crlf ? 2 : 1);
  const bool told = !layout_->several() && layout_->types[0].when.empty();
  const unsigned char *data = block.data();
  for (; block.size() - at >= stride; at += stride, ++next_) {
    if (next_ >= end_) return false;
    const unsigned char *line = data + at;
    // A CR in front of LF belongs to the end.
    const bool ended = crlf ? line[size] == '\r' && line[size + 1] == '\n'
                            : line[size] == '\n' && line[size - 1] != '\r';
    if (!ended) return true;
    const RecordType *type = told ? layout_->types.data() : kinds_.of(line, size);
    if (type == nullptr) return true;
    if (next_ >= from_) push(block, at, *type);
  }
  return ended_ && next_ < end_;
}

// False where nothing stands there, or no end has come yet.
bool RecordStream::find_line(const RecordBlock &block, std::size_t at, Line &line) const {
  line = {};
  const unsigned char *begin = block.data() + at;
  const std::size_t left = block.size() - at;
  if (left == 0) return false;
  const auto *end = static_cast<const unsigned char *>(std::memchr(begin, '\n', left));
  if (end == nullptr) {
    if (!ended_) return false;
    line.length = begin[left - 1] == kEndOfText ? left - 1 : left;
    line.cut = line.length > 0 && begin[line.length - 1] == '\r';
    if (line.cut) --line.length;
    line.end = left - line.length;
    return line.length != 0 || line.cut;
  }
  line.length = static_cast<std::size_t>(end - begin);
  const bool cr = line.length > 0 && end[-1] == '\r';
  line.ends = cr ? LineEnd::kCrLf : LineEnd::kLf;
  if (cr) --line.length;
  line.end = cr ? 2 : 1;
  return true;
}

// Whether a part of a file ends where the next one begins, so that both together hold each line once.
void RecordStream::look_at_range(RecordBlock &block, std::size_t at) {
  if (end_ == std::numeric_limits<std::uint64_t>::max()) return;
  const std::uint64_t place = (end_ - 1) * stride_;
  if (next_ == end_ && (stride_ == 0 || block.offset + at == place)) return;
  last_fault(block, at, next_, What::kLineLength,
             next_ == end_ ? "the line begins here, expected it at byte " + std::to_string(place) +
                                 ": the lines are of unlike length or end"
                           : "no line of this number is there: the lines are of unlike length");
  block.faults.back().fatal = true;
}

void RecordStream::look_at_end(RecordBlock &block, std::size_t at, const Line &line) {
  if (line.ends == LineEnd::kNone && !line.cut) return;
  if (ends_ == LineEnd::kNone) ends_ = line.ends;
  if (by_place_ && stride_ == 0) stride_ = layout_->most_bytes() + line.end;
  if (line.ends == ends_ || next_ < from_) return;
  const std::string what = line.cut ? "the line ends in CR"
                                    : "the line ends in " + std::string(name(line.ends)) +
                                          ", the first one in " + name(ends_);
  block.notes.push_back({next_, block.offset + at + line.length, what, What::kLineEnd});
}

void RecordStream::take_line(RecordBlock &block, std::size_t at, const Line &line,
                             const RecordType *type) {
  const bool even = layout_->one_length();
  const std::size_t expected = type != nullptr && !even ? type->bytes : layout_->most_bytes();
  const bool few = line.length < (type != nullptr ? expected : layout_->least_bytes());
  if (few && line.ends == LineEnd::kNone && !line.cut) {
    fault(block, at, next_, What::kIncomplete,
          "incomplete record: the file ends " + std::to_string(line.length) + " bytes into it");
  } else if (line.length != expected && (type != nullptr || even)) {
    const char *why = few && line.length != 0 ? " (were blanks cut at its end?)" : "";
    fault(block, at, next_, What::kLineLength,
          "a line of " + std::to_string(line.length) + " bytes, expected " +
              std::to_string(expected) + why);
  } else if (type == nullptr) {
    fault(block, at, next_, What::kUnknownKind, "a record of no kind that the layout knows");
  } else if (next_ >= from_) {
    push(block, at, *type);
  }
  look_at_end(block, at, line);
  wary_ = !even || line.length != expected || ends_ == LineEnd::kNone;
  ++next_;
}

}  // namespace campotipo::records
