// Memory that runs out at each allocation of the C face in turn: an error, and nothing is left behind.

#include <campotipo-records/records.h>
#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <memory>
#include <string>

#include "tests/util/failing_malloc.hpp"

namespace {

using campotipo::test::FailingHeap;

constexpr const char *kLayout =
    "name = \"conta\"\nencoding = \"CP850\"\nheader = 2\n"
    "[[field]]\nname = \"numero\"\ntype = \"BIN4\"\n"
    "[[field]]\nname = \"nome\"\ntype = \"CODSTR\"\nbytes = 40\n"
    "[[field]]\nname = \"saldo\"\ntype = \"BINQ17\"\ndecimals = 2\n"
    "[[field]]\nname = \"aberta\"\ntype = \"DATAC\"\nencoding = \"packed\"\n"
    "[[field]]\nname = \"codigo\"\ntype = \"CODALF12\"\ncount = 2\n"
    "[[field]]\nname = \"sinal\"\ntype = \"ZBTFIELD\"\nbits = [1, 7]\n";
constexpr char kRows[] =
    "numero,nome,saldo,aberta\n"
    "7,a name that no short string holds: \xC3\xA7\xC3\xA3o,1.50,29/02/2024\n"
    "8,\"another, in quotes\",12345678901234567890123.45,\n";

template <class Structure>
Structure sized() {
  Structure made = {};
  made.size = sizeof made;
  return made;
}

struct Free {
  void operator()(campotipo_layout *layout) const { campotipo_layout_free(layout); }
  void operator()(campotipo_reader *reader) const { campotipo_reader_free(reader); }
  void operator()(campotipo_rows *rows) const { campotipo_rows_free(rows); }
  void operator()(campotipo_loader *loader) const { campotipo_loader_free(loader); }
  template <class Arrow>
  void operator()(Arrow *arrow) const {
    if (arrow->release != nullptr) arrow->release(arrow);
  }
};
template <class Handle>
using Held = std::unique_ptr<Handle, Free>;

// What the steps make, in memory that no step asks for.
struct File {
  std::array<char, 4096> bytes;
  std::size_t size = 0;
};

int write(void *context, const void *bytes, std::size_t count) {
  File &file = *static_cast<File *>(context);
  if (file.size + count > file.bytes.size()) return 1;
  std::memcpy(file.bytes.data() + file.size, bytes, count);
  file.size += count;
  return 0;
}

campotipo_status parse(Held<campotipo_layout> &layout) {
  campotipo_layout *made = nullptr;
  const campotipo_status status =
      campotipo_layout_parse(kLayout, std::strlen(kLayout), "x", &made, nullptr);
  layout.reset(made);
  return status;
}

campotipo_status begin(const campotipo_layout *layout, File &file, Held<campotipo_loader> &loader) {
  auto sink = sized<campotipo_sink>();
  sink.write = write;
  sink.context = &file;
  campotipo_loader *made = nullptr;
  const campotipo_status status = campotipo_loader_open(layout, &sink, nullptr, &made, nullptr);
  loader.reset(made);
  return status;
}

campotipo_status load(const campotipo_layout *layout, File &file) {
  Held<campotipo_loader> loader;
  if (const campotipo_status status = begin(layout, file, loader)) return status;
  auto csv = sized<campotipo_input>();
  csv.memory = kRows;
  csv.memory_bytes = sizeof kRows - 1;
  if (const campotipo_status status = campotipo_load(loader.get(), nullptr, &csv, nullptr))
    return status;
  return campotipo_loader_finish(loader.get(), nullptr);
}

campotipo_status open(const campotipo_layout *layout, const File &file,
                      Held<campotipo_reader> &reader) {
  auto input = sized<campotipo_input>();
  input.memory = file.bytes.data();
  input.memory_bytes = file.size;
  campotipo_reader *made = nullptr;
  const campotipo_status status = campotipo_reader_open(layout, &input, nullptr, 0, &made, nullptr);
  reader.reset(made);
  return status;
}

campotipo_status decode(const campotipo_layout *layout, const File &file) {
  Held<campotipo_reader> reader;
  if (const campotipo_status status = open(layout, file, reader)) return status;
  auto block = sized<campotipo_block>();
  if (const campotipo_status status = campotipo_reader_next(reader.get(), &block, nullptr)) {
    return status;
  }
  std::int64_t values[2];
  auto column = sized<campotipo_column>();
  column.values = values;
  const campotipo_status status =
      campotipo_decode(layout, 0, 0, 0, block.records, block.count, &column, nullptr);
  if (status == CAMPOTIPO_OK) {
    EXPECT_EQ(15, values[0] + values[1]);
  }
  return status;
}

campotipo_status rows(const campotipo_layout *layout, const File &file) {
  Held<campotipo_reader> reader;
  if (const campotipo_status status = open(layout, file, reader)) return status;
  campotipo_rows *made = nullptr;
  if (const campotipo_status status = campotipo_rows_open(reader.get(), nullptr, &made, nullptr)) {
    return status;
  }
  static_cast<void>(reader.release());
  const Held<campotipo_rows> rows(made);
  const char *text = nullptr;
  std::size_t bytes = 0;
  return campotipo_rows_next(made, &text, &bytes, nullptr);
}

campotipo_status status_of(int code) {
  return code == 0 ? CAMPOTIPO_OK : code == ENOMEM ? CAMPOTIPO_MEMORY : CAMPOTIPO_INPUT;
}

// The records as columns, and these as records again.
campotipo_status columns(const campotipo_layout *layout, const File &file) {
  Held<campotipo_reader> reader;
  if (const campotipo_status status = open(layout, file, reader)) return status;
  ArrowArrayStream stream = {};
  ArrowSchema schema = {};
  ArrowArray batch = {};
  if (const campotipo_status status = campotipo_stream(reader.get(), nullptr, &stream, nullptr)) {
    return status;
  }
  static_cast<void>(reader.release());
  const Held<ArrowArrayStream> held_stream(&stream);
  if (const int code = stream.get_schema(&stream, &schema)) return status_of(code);
  const Held<ArrowSchema> held_schema(&schema);
  if (const int code = stream.get_next(&stream, &batch)) return status_of(code);
  const Held<ArrowArray> held_batch(&batch);
  File again;
  Held<campotipo_loader> loader;
  if (const campotipo_status status = begin(layout, again, loader)) return status;
  if (const campotipo_status status =
          campotipo_encode(loader.get(), nullptr, &schema, &batch, nullptr)) {
    return status;
  }
  const campotipo_status status = campotipo_loader_finish(loader.get(), nullptr);
  if (status == CAMPOTIPO_OK) {
    EXPECT_EQ(file.size, again.size);
    EXPECT_EQ(0, std::memcmp(file.bytes.data(), again.bytes.data(), file.size));
  }
  return status;
}

campotipo_status splits(const campotipo_layout *layout, const File &file) {
  auto input = sized<campotipo_input>();
  input.memory = file.bytes.data();
  input.memory_bytes = file.size;
  campotipo_range ranges[2];
  std::size_t made = 0;
  return campotipo_splits(layout, &input, 2, ranges, &made, nullptr);
}

// The step with the heap failing from its first allocation on, from the second, and so on up to the
// run in which none fails.
template <class Step>
void at_each_point(Step step) {
  // What the C library and this one keep for good is there before.
  ASSERT_EQ(CAMPOTIPO_OK, step());
  for (int point = 1;; ++point) {
    SCOPED_TRACE(point);
    const FailingHeap heap(point);
    const campotipo_status status = step();
    EXPECT_EQ(heap.failed() ? CAMPOTIPO_MEMORY : CAMPOTIPO_OK, status);
    EXPECT_EQ(0, heap.blocks());
    if (!heap.failed() || testing::Test::HasFailure()) return;
  }
}

TEST(FaceHeap, LayoutsAreParsedOrRefused) {
  at_each_point([] {
    Held<campotipo_layout> layout;
    return parse(layout);
  });
}

TEST(FaceHeap, FilesAreReadAndWrittenOrRefused) {
  Held<campotipo_layout> layout;
  ASSERT_EQ(CAMPOTIPO_OK, parse(layout));
  File file;
  ASSERT_EQ(CAMPOTIPO_OK, load(layout.get(), file));
  for (const auto step : {decode, rows, columns, splits}) {
    at_each_point([&] { return step(layout.get(), file); });
  }
  at_each_point([&] {
    File other;
    return load(layout.get(), other);
  });
}

}  // namespace
