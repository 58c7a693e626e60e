// Any bytes as columns of Arrow: each table is refused with a message or becomes whole records, and
// what columns say of these records becomes the same records again.

#include <campotipo-records/records.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr const char *kLayout =
    "name='r'\nencoding='CP850'\nlength={bytes=2}\n[[field]]\nname='a'\ntype='BIN3'\n"
    "[[field]]\nname='b'\ntype='BIN8'\ndecimals=4\n[[field]]\nname='c'\ntype='BINQ10'\ndecimals=2\n"
    "[[field]]\nname='d'\ntype='BINQ16'\n[[field]]\nname='e'\ntype='BINQ21'\ndecimals=30\n"
    "[[field]]\nname='f'\ntype='QUANTIA'\n[[field]]\nname='g'\ntype='PORC2'\n[[field]]\nname='h'\n"
    "type='DATAC'\nencoding='packed'\n[[field]]\nname='i'\ntype='DATAC'\nencoding='decimal'\n"
    "format='DD/MM/AA'\n[[field]]\nname='j'\ntype='HORAC'\n[[field]]\nname='k'\ntype='HHMMSS'\n"
    "[[field]]\nname='l'\ntype='ZBTFIELD'\nbits=[1, 13, 40, 64]\n[[field]]\nname='m'\n"
    "type='CODALF12'\n[[field]]\nname='n'\ntype='CODSTR'\nbytes=9\n[[field]]\nname='o'\n"
    "type='BSTR23'\n[[field]]\nname='p'\ntype='ZGUID'\n[[field]]\ntype='fill'\nhex='07'\n";

constexpr const char *kNames[] = {"a",        "b", "c", "d", "e",        "f",        "g",
                                  "h",        "i", "j", "k", "l_parte1", "l_parte2", "l_parte3",
                                  "l_parte4", "m", "n", "o", "p",        "_record",  "z"};
constexpr const char *kFormats[] = {
    "n",           "b",    "c",    "C",    "s",       "S",        "i",         "I",      "l",
    "L",           "u",    "U",    "vu",   "tdD",     "tdm",      "tts",       "ttm",    "ttu",
    "ttn",         "tss:", "tsm:", "tsu:", "tsn:",    "d:9,2,32", "d:18,0,64", "d:38,4", "d:38,-2",
    "d:60,30,256", "d:5",  "z",    "e",    "tss:UTC", "+s",       ""};

void require(bool holds) {
  if (!holds) std::abort();
}

template <class Structure>
Structure sized() {
  Structure made = {};
  made.size = sizeof made;
  return made;
}

const campotipo_layout *layout() {
  static campotipo_layout *const known = [] {
    campotipo_layout *made = nullptr;
    require(campotipo_layout_parse(kLayout, std::strlen(kLayout), nullptr, &made, nullptr) == 0);
    return made;
  }();
  return known;
}

// The bytes of the input, zeros behind them.
class Bytes {
 public:
  Bytes(const std::uint8_t *data, std::size_t size) : at_(data), left_(size) {}
  std::uint8_t next() {
    if (left_ == 0) return 0;
    --left_;
    return *at_++;
  }
  void fill(void *dest, std::size_t count) {
    auto *out = static_cast<std::uint8_t *>(dest);
    for (std::size_t i = 0; i < count; ++i) out[i] = next();
  }

 private:
  const std::uint8_t *at_;
  std::size_t left_;
};

// A column with memory of exactly its size, as far as the format tells.
struct Column {
  ArrowSchema schema = {};
  ArrowArray array = {};
  std::array<const void *, 4> buffers = {};
  std::deque<std::vector<std::uint8_t>> memory;
  std::deque<Column> dictionary;

  const void *keep(Bytes &in, std::size_t bytes) {
    auto &mine = memory.emplace_back(bytes);
    in.fill(mine.data(), bytes);
    return mine.data();
  }

  // Ends that follow one another, of a text of as many bytes as the last one says.
  template <class Offset>
  void texts(Bytes &in, std::size_t rows) {
    std::vector<Offset> ends(rows + 1);
    for (std::size_t i = 0; i < rows; ++i) ends[i + 1] = ends[i] + Offset{in.next()} % 40;
    auto &mine = memory.emplace_back(ends.size() * sizeof(Offset));
    std::memcpy(mine.data(), ends.data(), mine.size());
    buffers[1] = mine.data();
    buffers[2] = keep(in, static_cast<std::size_t>(ends[rows]));
    array.n_buffers = 3;
  }

  void views(Bytes &in, std::size_t rows) {
    buffers[1] = keep(in, 16 * rows);
    const std::int64_t size = 64;
    buffers[2] = keep(in, size);
    auto &sizes = memory.emplace_back(8);
    std::memcpy(sizes.data(), &size, 8);
    buffers[3] = sizes.data();
    array.n_buffers = 4;
  }

  Column(Bytes &in, std::size_t rows, bool inner) {
    const std::uint8_t told = in.next();
    schema.format = kFormats[in.next() % std::size(kFormats)];
    schema.name = kNames[in.next() % std::size(kNames)];
    schema.release = [](ArrowSchema *) {};
    array.release = [](ArrowArray *) {};
    array.buffers = buffers.data();
    array.offset = told % 4;
    array.length = static_cast<std::int64_t>(rows);
    const std::size_t all = rows + static_cast<std::size_t>(array.offset);
    const std::string_view format = schema.format;
    if ((told & 4) != 0) buffers[0] = keep(in, all / 8 + 1);
    if (format == "u") {
      texts<std::int32_t>(in, all);
    } else if (format == "U") {
      texts<std::int64_t>(in, all);
    } else if (format == "vu") {
      views(in, all);
    } else {
      buffers[1] = keep(in, 32 * all);
      array.n_buffers = format == "n" ? 0 : 2;
    }
    if ((told & 8) != 0 && !inner) {
      dictionary.emplace_back(in, in.next() % 5, true);
      schema.dictionary = &dictionary[0].schema;
      array.dictionary = &dictionary[0].array;
    }
    if ((told & 0xF0) == 0xF0) array.n_buffers = in.next() % 4;
    if ((told & 0xF0) == 0xE0 && rows > 1) array.length = static_cast<std::int8_t>(in.next()) % 2;
  }
};

struct Table {
  std::deque<Column> columns;
  std::vector<ArrowSchema *> schemas;
  std::vector<ArrowArray *> arrays;
  ArrowSchema schema = {};
  ArrowArray array = {};
  std::array<const void *, 1> buffers = {};

  explicit Table(Bytes &in) {
    const std::size_t rows = in.next() % 8;
    const std::size_t count = in.next() % 4;
    for (std::size_t i = 0; i < count; ++i) columns.emplace_back(in, rows, false);
    for (Column &column : columns) {
      schemas.push_back(&column.schema);
      arrays.push_back(&column.array);
    }
    schema.format = "+s";
    schema.n_children = static_cast<std::int64_t>(count);
    schema.children = schemas.data();
    schema.release = [](ArrowSchema *) {};
    array.length = static_cast<std::int64_t>(rows);
    array.n_children = static_cast<std::int64_t>(count);
    array.children = arrays.data();
    array.n_buffers = 1;
    array.buffers = buffers.data();
    array.release = [](ArrowArray *) {};
  }
};

// The records of a table; false where it is refused.
bool encode(const ArrowSchema &schema, const ArrowArray &array, bool lossy, std::string &made,
            std::uint64_t &losses) {
  auto sink = sized<campotipo_sink>();
  auto options = sized<campotipo_loader_options>();
  auto error = sized<campotipo_error>();
  campotipo_loader *loader = nullptr;
  sink.context = &made;
  sink.write = [](void *context, const void *bytes, std::size_t count) {
    static_cast<std::string *>(context)->append(static_cast<const char *>(bytes), count);
    return 0;
  };
  options.lossy = lossy ? 1 : 0;
  require(campotipo_loader_open(layout(), &sink, &options, &loader, &error) == 0);
  const campotipo_status status = campotipo_encode(loader, nullptr, &schema, &array, &error);
  if (status == CAMPOTIPO_OK) require(campotipo_loader_finish(loader, &error) == 0);
  if (status != CAMPOTIPO_OK) require(error.status == status && error.text[0] != '\0');
  losses = campotipo_loader_losses(loader);
  campotipo_loader_free(loader);
  return status == CAMPOTIPO_OK;
}

// Records as columns and back. A value that is no value of a column ends it.
void come_back(const std::string &made, std::size_t rows) {
  auto input = sized<campotipo_input>();
  input.memory = made.data();
  input.memory_bytes = made.size();
  campotipo_reader *reader = nullptr;
  ArrowArrayStream stream = {};
  ArrowSchema schema = {};
  ArrowArray batch = {};
  require(campotipo_reader_open(layout(), &input, nullptr, 0, &reader, nullptr) == 0);
  require(campotipo_stream(reader, nullptr, &stream, nullptr) == 0);
  require(stream.get_schema(&stream, &schema) == 0);
  if (stream.get_next(&stream, &batch) == 0 && batch.release != nullptr) {
    std::string again;
    std::uint64_t losses = 0;
    require(batch.length == static_cast<std::int64_t>(rows));
    require(encode(schema, batch, false, again, losses) && again == made);
    batch.release(&batch);
  }
  schema.release(&schema);
  stream.release(&stream);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  Bytes in(data, size);
  const Table table(in);
  std::string strict;
  std::string lossy;
  std::uint64_t refused = 0;
  std::uint64_t losses = 0;
  const bool whole = encode(table.schema, table.array, false, strict, refused);
  const bool stored = encode(table.schema, table.array, true, lossy, losses);
  require(whole == (stored && losses == 0));
  if (whole) require(strict == lossy);
  if (stored) come_back(lossy, static_cast<std::size_t>(table.array.length));
  return 0;
}
