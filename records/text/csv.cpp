#include "text/csv.hpp"

#include <algorithm>
#include <cstring>

#include "errors/error.hpp"
#include "text/scan.hpp"

namespace campotipo::records {

namespace {

// A row longer than this is a quote that nobody closed.
constexpr std::size_t kLongestRow = 64U << 20;

// The place behind the last line end that stands outside quotes, 0 where there is none.
std::size_t last_row_end(const char *bytes, std::size_t size) {
  if (std::memchr(bytes, '"', size) == nullptr) {
    const void *end = memrchr(bytes, '\n', size);
    return end == nullptr ? 0
                          : static_cast<std::size_t>(static_cast<const char *>(end) - bytes) + 1;
  }
  std::size_t end = 0;
  bool quoted = false;
  for (std::size_t at = 0; at < size; at += 16) {
    const __m128i chunk = scan::load(bytes + at);
    const unsigned here = scan::first(size - at);
    const unsigned lines = scan::mask(scan::equal(chunk, '\n')) & here;
    unsigned quotes = scan::mask(scan::equal(chunk, '"')) & here;
    if (quotes == 0) {
      if (!quoted && lines != 0) end = at + static_cast<std::size_t>(std::bit_width(lines));
      continue;
    }
    for (unsigned both = lines | quotes; both != 0; both &= both - 1) {
      const unsigned lowest = both & (0U - both);
      if ((quotes & lowest) != 0) {
        quoted = !quoted;
      } else if (!quoted) {
        end = at + static_cast<std::size_t>(std::bit_width(lowest));
      }
    }
  }
  return end;
}

}  // namespace

bool CsvStream::header(std::vector<std::string> &names) {
  // A small first block, so that a pipe gives its first row without waiting for much more.
  CsvBlock block;
  block_ = std::min<std::size_t>(most_, 1U << 16);
  if (!read(block)) return false;
  if (block.size >= 3 && std::memcmp(block.bytes.data(), "\xEF\xBB\xBF", 3) == 0) {
    block.bytes.erase(block.bytes.begin(), block.bytes.begin() + 3);
    block.size -= 3;
  }
  const std::vector<char> whole = block.bytes;
  CsvRows rows(block);
  std::vector<PaddedText> cells;
  if (block.endless || !rows.next(cells)) {
    const char *fault =
        block.endless ? "a row without end, or a quote that is not closed" : rows.fault();
    if (fault == nullptr) return false;
    throw Error(ErrorCode::kInput,
                input_->name() + ":" + std::to_string(rows.line()) + ": " + fault);
  }
  for (const PaddedText &cell : cells) names.emplace_back(cell.view());
  const std::size_t behind = std::min(rows.at(), block.size);
  const auto from = whole.begin() + static_cast<std::ptrdiff_t>(behind);
  const auto to = whole.begin() + static_cast<std::ptrdiff_t>(block.size);
  rest_.insert(rest_.begin(), from, to);
  header_lines_ = rows.lines();
  block_ = most_;
  return true;
}

bool CsvStream::read_more(CsvBlock &block) {
  const std::size_t kept = rest_.size();
  const std::size_t wanted = std::max(block_, 2 * kept);
  block.bytes.resize(wanted + scan::kPadding);
  std::copy(rest_.begin(), rest_.end(), block.bytes.begin());
  const std::size_t got = ended_ ? 0 : input_->read(block.bytes.data() + kept, wanted - kept);
  ended_ = ended_ || kept + got < wanted;
  block.size = kept + got;
  return block.size != 0;
}

bool CsvStream::read(CsvBlock &block) {
  for (;;) {
    if (!read_more(block)) return false;
    const std::size_t end = ended_ ? block.size : last_row_end(block.bytes.data(), block.size);
    block.endless = end == 0 && block.size > kLongestRow;
    if (end == 0 && !block.endless) {
      rest_.assign(block.bytes.begin(),
                   block.bytes.begin() + static_cast<std::ptrdiff_t>(block.size));
      continue;
    }
    rest_.assign(block.bytes.begin() + static_cast<std::ptrdiff_t>(end),
                 block.bytes.begin() + static_cast<std::ptrdiff_t>(block.size));
    block.size = end;
    std::memset(block.bytes.data() + end, 0, scan::kPadding);
    block.has_nul = std::memchr(block.bytes.data(), 0, end) != nullptr;
    return true;
  }
}

CsvRows::End CsvRows::fail(const char *what) {
  fault_ = what;
  return End::kFault;
}

CsvRows::End CsvRows::plain(PaddedText &cell) {
  char *bytes = block_->bytes.data();
  const std::size_t size = block_->size;
  std::size_t end = at_;
  for (;; end += 16) {
    const __m128i chunk = scan::load(bytes + end);
    const unsigned found = scan::mask(_mm_or_si128(
        _mm_or_si128(scan::equal(chunk, ','), scan::equal(chunk, '\n')), scan::equal(chunk, '"')));
    if (found != 0) {
      end += static_cast<std::size_t>(std::countr_zero(found));
      break;
    }
    if (end + 16 >= size) {
      end = size;
      break;
    }
  }
  end = std::min(end, size);
  if (end < size && bytes[end] == '"') return fail("a quote inside a cell without quotes");
  const bool row = end == size || bytes[end] == '\n';
  std::size_t length = end - at_;
  if (row && length > 0 && bytes[end - 1] == '\r') --length;
  cell = PaddedText::followed_by_padding(bytes + at_, length);
  bytes[at_ + length] = '\0';
  bytes[end] = '\0';
  at_ = end + 1;
  return row ? End::kRow : End::kCell;
}

// The text moves to the front over its first quote, and each pair of quotes becomes one.
CsvRows::End CsvRows::quoted(PaddedText &cell) {
  char *bytes = block_->bytes.data();
  const std::size_t size = block_->size;
  const std::size_t start = at_;
  std::size_t from = start + 1;
  std::size_t to = start;
  for (;;) {
    const void *found = std::memchr(bytes + from, '"', size - from);
    if (found == nullptr) return fail("a quote that is not closed");
    const auto quote = static_cast<std::size_t>(static_cast<const char *>(found) - bytes);
    std::memmove(bytes + to, bytes + from, quote - from);
    to += quote - from;
    from = quote + 1;
    if (from >= size || bytes[from] != '"') break;
    bytes[to++] = '"';
    ++from;
  }
  if (from < size && bytes[from] == '\r') ++from;
  const bool row = from >= size || bytes[from] == '\n';
  if (!row && (bytes[from] != ',' || bytes[from - 1] == '\r')) {
    return fail("text behind the closing quote of a cell");
  }
  cell = PaddedText::followed_by_padding(bytes + start, to - start);
  next_line_ += static_cast<std::uint64_t>(std::count(bytes + start, bytes + to, '\n'));
  bytes[to] = '\0';
  at_ = from + 1;
  return row ? End::kRow : End::kCell;
}

bool CsvRows::next(std::vector<PaddedText> &cells) {
  cells.clear();
  if (at_ >= block_->size || fault_ != nullptr) return false;
  line_ = next_line_;
  for (;;) {
    PaddedText cell;
    const bool quotes = at_ < block_->size && block_->bytes[at_] == '"';
    const End end = quotes ? quoted(cell) : plain(cell);
    if (end == End::kFault) return false;
    cells.push_back(cell);
    if (end == End::kRow) break;
  }
  ++next_line_;
  return true;
}

}  // namespace campotipo::records
