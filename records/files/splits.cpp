#include "files/splits.hpp"

#include <algorithm>

#include "errors/error.hpp"

namespace campotipo::records {

namespace {

using Range = RecordStream::Range;

// Where some of the records stand: every `step`th one, so that memory does not grow with the file.
class Marks {
 public:
  explicit Marks(std::size_t wanted) : most_(std::max<std::size_t>(4096, 16 * wanted)) {}

  void add(std::uint64_t number, std::uint64_t byte) {
    if ((number - 1) % step_ != 0) return;
    marks_.push_back({number, Range{}.count, byte});
    if (marks_.size() < most_) return;
    step_ *= 2;
    std::erase_if(marks_, [&](const Range &mark) { return (mark.from - 1) % step_ != 0; });
  }

  // The marks nearest behind equal parts of the bytes, each range ending where the next begins.
  std::vector<Range> ranges(std::size_t wanted, std::uint64_t end) const {
    std::vector<Range> chosen;
    if (marks_.empty()) return chosen;
    const std::uint64_t begin = marks_[0].byte;
    for (std::size_t i = 0; i < wanted; ++i) {
      const std::uint64_t place =
          begin + static_cast<std::uint64_t>(static_cast<long double>(end - begin) *
                                             static_cast<long double>(i) /
                                             static_cast<long double>(wanted));
      const auto found = std::lower_bound(
          marks_.begin(), marks_.end(), place,
          [](const Range &mark, std::uint64_t wanted_byte) { return mark.byte < wanted_byte; });
      if (found == marks_.end()) break;
      if (!chosen.empty() && chosen.back().from == found->from) continue;
      chosen.push_back(*found);
    }
    for (std::size_t i = 0; i + 1 < chosen.size(); ++i) {
      chosen[i].count = chosen[i + 1].from - chosen[i].from;
    }
    return chosen;
  }

 private:
  std::size_t most_;
  std::uint64_t step_ = 1;
  std::vector<Range> marks_;
};

std::vector<Range> by_arithmetic(const Layout &layout, std::uint64_t size, std::uint64_t stride,
                                 std::size_t wanted) {
  const std::uint64_t around = layout.header.bytes + layout.trailer.bytes;
  const std::uint64_t records = size > around ? (size - around) / stride : 0;
  // What is left of a record cut short is told by the range that comes to it.
  const bool rest = size > around && (size - around) % stride != 0;
  const std::uint64_t parts = std::min<std::uint64_t>(wanted, std::max<std::uint64_t>(1, records));
  std::vector<Range> ranges;
  if (records == 0 && !rest) return ranges;
  for (std::uint64_t i = 0; i < parts; ++i) {
    const std::uint64_t begin = records / parts * i + std::min(i, records % parts);
    const std::uint64_t end = records / parts * (i + 1) + std::min(i + 1, records % parts);
    ranges.push_back({begin + 1, end - begin, layout.header.bytes + begin * stride});
  }
  ranges.back().count = Range{}.count;
  return ranges;
}

// Bytes of the first line, where it has the length that the layout tells; else 0.
std::uint64_t first_line(const Layout &layout, Source &source) {
  const std::size_t size = layout.most_bytes();
  std::string line(size + 2, '\0');
  line.resize(source.read(line.data(), line.size()));
  if (line.size() > size && line[size] == '\n' && line[size - 1] != '\r') return size + 1;
  return line.ends_with("\r\n") && line.size() == size + 2 ? size + 2 : 0;
}

// Whether each range begins behind the end of a line. `at`: how far the source is read.
bool begin_lines(Source &source, std::uint64_t at, const std::vector<Range> &ranges) {
  for (const Range &range : ranges) {
    if (range.byte <= at) continue;
    char end = '\0';
    if (!source.skip(range.byte - 1 - at) || source.read(&end, 1) != 1 || end != '\n') return false;
    at = range.byte;
  }
  return true;
}

// Lines of one length are cut by arithmetic where they stand in their places, else not at all.
std::vector<Range> by_lines(const Layout &layout, Source &source, std::size_t wanted) {
  const std::uint64_t stride = first_line(layout, source);
  if (stride != 0) {
    auto ranges = by_arithmetic(layout, source.size(), stride, wanted);
    const std::uint64_t read = std::min<std::uint64_t>(source.size(), layout.most_bytes() + 2);
    if (begin_lines(source, read, ranges)) {
      if (ranges.size() > 1) ranges[0].byte = Range::kFront;
      return ranges;
    }
  }
  return {Range{}};
}

}  // namespace

std::vector<Range> splits(const Layout &layout, Source &source, std::size_t wanted) {
  if (layout.fixed_size() && source.size() != 0) {
    return by_arithmetic(layout, source.size(), layout.most_bytes(), wanted);
  }
  if (layout.lines() && layout.one_length() && source.size() != 0) {
    return by_lines(layout, source, wanted);
  }
  Marks marks(wanted);
  RecordStream stream(source, layout);
  RecordBlock block;
  std::uint64_t end = 0;
  bool faults = false;
  while (stream.read(block)) {
    faults = faults || !block.faults.empty();
    for (const RecordBlock::Record &record : block.records) {
      // In front of what tells its length.
      marks.add(block.number(record),
                block.place(record) - static_cast<std::uint64_t>(layout.prefix.bytes));
    }
    end = block.offset + block.size();
  }
  auto ranges = marks.ranges(wanted, end);
  // Faults in front of the first record belong to the first range.
  if (ranges.empty() && faults) ranges.emplace_back();
  if (ranges.empty()) return ranges;
  ranges[0] = {1, ranges.size() > 1 ? ranges[1].from - 1 : Range{}.count, 0};
  return ranges;
}

}  // namespace campotipo::records
