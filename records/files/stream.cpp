#include "files/stream.hpp"

#include <algorithm>
#include <cstring>

namespace campotipo::records {

namespace {
// How much longer than told a record may be for what stands behind it to be read on.
constexpr std::size_t kTolerance = 1U << 20;

constexpr const char *kNoKind = "a record of no kind that the layout knows";
constexpr const char *kNothingBehind = "; nothing behind it can be read";
}  // namespace

std::string StreamFault::text() const {
  const std::string where = record == 0 ? "" : "record " + std::to_string(record) + ", ";
  return where + "byte " + std::to_string(offset) + ": " + what;
}

RecordStream::RecordStream(Source &input, const Layout &layout, Range range, std::size_t block)
    : input_(&input),
      layout_(&layout),
      kinds_(layout),
      block_(block),
      from_(range.from),
      byte_(range.byte) {
  constexpr auto kMost = std::numeric_limits<std::uint64_t>::max();
  end_ = range.count < kMost - from_ ? from_ + range.count : kMost;
}

// Of the records in front of the first one wanted nothing is told.
void RecordStream::fault(RecordBlock &block, std::size_t at, std::uint64_t record, What word,
                         const std::string &what) {
  if (record != 0 && record < from_) return;
  block.faults.push_back({record, block.offset + at, what, word});
}

void RecordStream::last_fault(RecordBlock &block, std::size_t at, std::uint64_t record, What word,
                              const std::string &what) {
  block.faults.push_back({record, block.offset + at, what, word});
  done_ = true;
}

// The header, and the records in front of the first one wanted where they need not be read.
void RecordStream::begin(RecordBlock &block) {
  begun_ = true;
  const std::size_t header = layout_->header.bytes;
  std::string bytes(header, '\0');
  const std::size_t got = input_->read(bytes.data(), header);
  if (got < header) {
    last_fault(block, got, 0, What::kMargin,
               "incomplete header: the file ends before its " + std::to_string(header) + " bytes");
  } else if (!layout_->header.content.empty() && bytes != layout_->header.content) {
    fault(block, 0, 0, What::kMargin, "the header holds other bytes than told");
  }
  offset_ = header;
  by_place_ = layout_->lines() && layout_->one_length() && byte_ != 0;
  if (byte_ == Range::kFront) return;
  if (byte_ != 0 && !done_) return layout_->lines() ? begin_at_line(block) : begin_at_byte(block);
  const std::uint64_t skipped = from_ - 1;
  const std::size_t size = layout_->most_bytes();
  if (skipped == 0 || done_ || !layout_->fixed_size()) return;
  const std::uint64_t room = input_->size() > header ? (input_->size() - header) / size : 0;
  if (skipped < room && input_->skip(skipped * size)) {
    offset_ += skipped * size;
    next_ += skipped;
  }
}

void RecordStream::begin_at_byte(RecordBlock &block) {
  next_ = from_;
  if (byte_ <= offset_ || input_->skip(byte_ - offset_)) {
    offset_ = std::max(byte_, offset_);
    return;
  }
  std::vector<char> passed(64U << 10);
  while (offset_ < byte_) {
    const std::uint64_t wanted = std::min<std::uint64_t>(passed.size(), byte_ - offset_);
    const std::size_t got = input_->read(passed.data(), static_cast<std::size_t>(wanted));
    offset_ += got;
    if (got == wanted) continue;
    return last_fault(block, 0, 0, What::kIncomplete,
                      "the file ends in front of byte " + std::to_string(byte_));
  }
}

// A line begins behind the end of another.
void RecordStream::begin_at_line(RecordBlock &block) {
  const std::uint64_t line = byte_--;
  begin_at_byte(block);
  byte_ = line;
  if (done_) return;
  char end = '\0';
  if (input_->memory() != nullptr) {
    end = offset_ < input_->size() ? static_cast<char>(input_->memory()[offset_]) : '\0';
  } else if (input_->read(&end, 1) == 0) {
    end = '\0';
  }
  ++offset_;
  block.offset = offset_;
  if (by_place_ && from_ > 1) {
    const std::uint64_t stride = byte_ / (from_ - 1);
    const std::uint64_t size = layout_->most_bytes();
    if (byte_ % (from_ - 1) == 0 && (stride == size + 1 || stride == size + 2)) stride_ = stride;
    if (stride_ == 0) end = '\0';
  }
  if (end == '\n') return;
  last_fault(block, 0, next_, What::kLineLength,
             "no line of this number begins here: the lines are of unlike length or end");
  block.faults.back().fatal = true;
}

void RecordStream::read_more(RecordBlock &block) {
  const std::size_t least = layout_->trailer.bytes + layout_->most_bytes() + 8;
  const std::size_t wanted = std::max({block_, 2 * least, 2 * left_ + least});
  if (input_->memory() != nullptr) {
    const std::uint64_t left = input_->size() - std::min(offset_, input_->size());
    block.window = input_->memory() + (input_->size() - left);
    block.window_size = static_cast<std::size_t>(std::min<std::uint64_t>(wanted, left));
    ended_ = block.window_size == left;
    return;
  }
  block.own.resize(wanted);
  std::copy(rest_.begin(), rest_.end(), block.own.begin());
  const std::size_t kept = rest_.size();
  const std::size_t got = input_->read(block.own.data() + kept, block.own.size() - kept);
  ended_ = kept + got < block.own.size();
  block.own.resize(kept + got);
}

std::size_t RecordStream::stored_length(const unsigned char *prefix) const {
  std::size_t length = 0;
  const int bytes = layout_->prefix.bytes;
  for (int i = 0; i < bytes; ++i) {
    length = length << 8 | prefix[layout_->prefix.big ? i : bytes - 1 - i];
  }
  if (!layout_->prefix.counts_itself) return length;
  return length < static_cast<std::size_t>(bytes) ? 0 : length - static_cast<std::size_t>(bytes);
}

void RecordStream::push(RecordBlock &block, std::size_t at, const RecordType &type) {
  if (block.records.empty()) block.first = next_;
  block.records.push_back(
      {static_cast<std::uint32_t>(at), static_cast<std::uint32_t>(next_ - block.first), &type});
}

// False where the next record is not complete yet, or nothing can be read behind it.
bool RecordStream::split_one(RecordBlock &block, std::size_t usable, std::size_t &at) {
  const auto prefix = static_cast<std::size_t>(layout_->prefix.bytes);
  const bool known_length = prefix != 0 || layout_->fixed_size();
  const std::size_t left = usable - at;
  const unsigned char *record = block.data() + at + prefix;
  if (left == 0 || left < prefix) return false;
  // At the end of the file what is there has to do.
  if (!known_length && left < layout_->told_bytes() && !ended_) return false;
  std::size_t length = prefix == 0 ? layout_->most_bytes() : stored_length(record - prefix);
  if (prefix != 0 && length > layout_->most_bytes() + kTolerance) {
    last_fault(block, at, next_, What::kLineLength,
               "a record of " + std::to_string(length) + " bytes, expected at most " +
                   std::to_string(layout_->most_bytes()) + kNothingBehind);
    block.faults.back().fatal = true;
    return false;
  }
  if (known_length && left - prefix < length) return false;
  const RecordType *type = kinds_.of(record, known_length ? length : left);
  if (type == nullptr) {
    if (!known_length) {
      if (left < layout_->told_bytes()) return false;
      last_fault(block, at, next_, What::kUnknownKind, kNoKind + std::string(kNothingBehind));
      block.faults.back().fatal = true;
      return false;
    }
    fault(block, at + prefix, next_, What::kUnknownKind, kNoKind);
  } else if (prefix == 0) {
    length = type->bytes;
  } else if (length != type->bytes) {
    fault(block, at, next_, What::kLineLength,
          "a record of " + std::to_string(length) + " bytes, expected " +
              std::to_string(type->bytes));
    type = nullptr;
  }
  if (left - prefix < length) return false;
  if (next_ >= from_ && type != nullptr) push(block, at + prefix, *type);
  at += prefix + length;
  ++next_;
  return true;
}

// Records of one kind, one behind the other: all that the block holds whole.
void RecordStream::split_plain(RecordBlock &block, std::size_t usable, std::size_t &at) {
  const RecordType &type = layout_->types[0];
  const std::uint64_t wanted = end_ - next_;
  const std::uint64_t count = std::min<std::uint64_t>(usable / type.bytes, wanted);
  const std::uint64_t passed = from_ > next_ ? std::min(from_ - next_, count) : 0;
  block.first = next_ + passed;
  block.records.reserve(static_cast<std::size_t>(count - passed));
  for (std::uint64_t i = passed; i < count; ++i) {
    block.records.push_back({static_cast<std::uint32_t>(i * type.bytes),
                             static_cast<std::uint32_t>(i - passed), &type});
  }
  at = static_cast<std::size_t>(count) * type.bytes;
  next_ += count;
}

void RecordStream::split(RecordBlock &block, std::size_t usable) {
  std::size_t at = 0;
  if (layout_->lines()) {
    split_lines(block, at);
  } else {
    if (layout_->plain() && !done_) split_plain(block, usable, at);
    while (!done_ && next_ < end_ && split_one(block, usable, at)) {
    }
  }
  if (by_place_ && !done_ && (next_ >= end_ || ended_)) look_at_range(block, at);
  if (next_ >= end_) done_ = true;
  if (done_) return;
  left_ = block.size() - at;
  if (block.window == nullptr) rest_.assign(block.data() + at, block.data() + block.size());
  offset_ = block.offset + at;
  if (!ended_) return;
  done_ = true;
  if (!layout_->lines()) finish(block, at);
}

// The end of the file: what stands there is the trailer and nothing else.
void RecordStream::finish(RecordBlock &block, std::size_t at) {
  const Margin &trailer = layout_->trailer;
  const std::size_t left = block.size() - at;
  if (left < trailer.bytes) {
    fault(
        block, at, 0, What::kMargin,
        "incomplete trailer: the file ends before its " + std::to_string(trailer.bytes) + " bytes");
  } else if (left > trailer.bytes) {
    last_fault(block, at, next_, What::kIncomplete,
               "incomplete record: the file ends " + std::to_string(left - trailer.bytes) +
                   " bytes into it");
  } else if (!trailer.content.empty() &&
             std::memcmp(block.data() + at, trailer.content.data(), left) != 0) {
    fault(block, at, 0, What::kMargin, "the trailer holds other bytes than told");
  }
}

bool RecordStream::read(RecordBlock &block) {
  block.records.clear();
  block.faults.clear();
  block.notes.clear();
  if (!begun_) begin(block);
  while (!done_) {
    block.offset = offset_;
    block.first = next_;
    read_more(block);
    const std::size_t trailer = layout_->trailer.bytes;
    split(block, block.size() > trailer ? block.size() - trailer : 0);
    if (!block.records.empty() || !block.faults.empty() || !block.notes.empty()) return true;
  }
  return !block.faults.empty();
}

}  // namespace campotipo::records
