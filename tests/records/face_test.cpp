// The C face: every error, the order of frees, memory that ends at a page, memory that runs out.
#include <campotipo-records/records.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "tests/records/face_fixture.hpp"
#include "tests/util/guarded_buffer.hpp"

namespace {

using campotipo::test::Face;
using campotipo::test::GuardedBuffer;
using campotipo::test::kBytes;
using campotipo::test::kKinds;
using campotipo::test::kLayout;
using campotipo::test::record;
using campotipo::test::sized;

TEST(Face, TellsWhereALayoutIsWrong) {
  campotipo_layout *layout = nullptr;
  const struct {
    const char *text;
    std::uint32_t line;
  } kWrong[] = {{"name = \"x\"\n[[field]]\nname = \"a\"\ntype = \"BIN9\"\n", 4},
                {"name = \"x\"\n[[field]\n", 2},
                {"name = \"x\"\nnombre = 1\n[[field]]\nname = \"a\"\ntype = \"BIN1\"\n", 2}};
  for (const auto &[text, line] : kWrong) {
    auto error = sized<campotipo_error>();
    EXPECT_EQ(CAMPOTIPO_LAYOUT,
              campotipo_layout_parse(text, std::strlen(text), "x.toml", &layout, &error));
    EXPECT_EQ(CAMPOTIPO_LAYOUT, error.status);
    EXPECT_EQ(line, error.line) << error.text;
    EXPECT_NE(0U, error.column) << error.text;
    EXPECT_EQ(0, std::strncmp(error.text, "x.toml:", 7)) << error.text;
    EXPECT_EQ(CAMPOTIPO_LAYOUT,
              campotipo_layout_parse(text, std::strlen(text), nullptr, &layout, nullptr));
  }
  auto error = sized<campotipo_error>();
  EXPECT_EQ(CAMPOTIPO_INPUT, campotipo_layout_open("/nowhere/x.toml", &layout, &error));
  EXPECT_EQ(CAMPOTIPO_ARGUMENT, campotipo_layout_open("nowhere", &layout, &error));
  EXPECT_EQ(nullptr, layout);
}

TEST(Face, ListsKindsAndFields) {
  Face face;
  const struct {
    const char *name;
    std::size_t offset;
    int wide, physical, precision, scale;
  } kFields[] = {{"numero", 0, 0, CAMPOTIPO_INT64, 0, 0},
                 {"nome", 4, 0, CAMPOTIPO_UTF8, 0, 0},
                 {"saldo", 10, 0, CAMPOTIPO_UTF8, 0, 0},
                 {"saldo", 10, 1, CAMPOTIPO_DECIMAL128, 38, 2},
                 {"saldo", 10, 2, CAMPOTIPO_DECIMAL256, 40, 2},
                 {"aberta", 27, 0, CAMPOTIPO_DATE32, 0, 0},
                 {"sinal_parte1", 30, 0, CAMPOTIPO_BOOL, 0, 0},
                 {"sinal_parte2", 30, 0, CAMPOTIPO_INT32, 0, 0}};
  std::size_t number = 0;
  for (const auto &known : kFields) {
    auto field = sized<campotipo_field>();
    if (known.wide != 0) --number;
    ASSERT_EQ(CAMPOTIPO_OK, campotipo_layout_field(face.layout, 0, number++, known.wide, &field));
    EXPECT_STREQ(known.name, field.name);
    EXPECT_EQ(known.offset, field.offset);
    EXPECT_EQ(known.physical, field.physical) << known.name;
    EXPECT_EQ(known.precision, field.precision);
    EXPECT_EQ(known.scale, field.scale);
  }
  auto field = sized<campotipo_field>();
  EXPECT_EQ(CAMPOTIPO_ARGUMENT, campotipo_layout_field(face.layout, 0, number, 0, &field));
  EXPECT_EQ(CAMPOTIPO_ARGUMENT, campotipo_layout_field(face.layout, 1, 0, 0, &field));
  EXPECT_EQ(CAMPOTIPO_ARGUMENT, campotipo_layout_field(face.layout, 0, 0, 3, &field));
  auto kind = sized<campotipo_kind>();
  EXPECT_EQ(CAMPOTIPO_OK, campotipo_layout_kind(face.layout, 0, &kind));
  EXPECT_EQ(kBytes, kind.bytes);
  kind.size = 1;
  EXPECT_EQ(CAMPOTIPO_ARGUMENT, campotipo_layout_kind(face.layout, 0, &kind));
}

TEST(Face, FindsTheKindThatIsMeant) {
  Face face(kKinds);
  std::size_t kind = 9;
  EXPECT_EQ(CAMPOTIPO_OK, campotipo_layout_find_kind(face.layout, "a", &kind, nullptr));
  EXPECT_EQ(0U, kind);
  EXPECT_EQ(CAMPOTIPO_OK, campotipo_layout_find_kind(face.layout, nullptr, &kind, nullptr));
  EXPECT_EQ(1U, kind);
  EXPECT_EQ(CAMPOTIPO_ARGUMENT, campotipo_layout_find_kind(face.layout, "c", &kind, &face.error));
  EXPECT_NE(nullptr, std::strstr(face.error.text, "a, b")) << face.error.text;
}

TEST(Face, HandsOutRecordsThenTheError) {
  Face face;
  const std::string bytes = record() + record() + "rest";
  ASSERT_EQ(CAMPOTIPO_OK, face.open(bytes));
  auto block = sized<campotipo_block>();
  ASSERT_EQ(CAMPOTIPO_OK, campotipo_reader_next(face.reader, &block, &face.error));
  ASSERT_EQ(2U, block.count);
  EXPECT_EQ(0, std::memcmp(block.records[1], record().data(), kBytes));
  EXPECT_EQ(2U, block.numbers[1]);
  EXPECT_EQ(kBytes, block.offset + static_cast<std::uint64_t>(block.records[1] - block.base));
  EXPECT_EQ(CAMPOTIPO_RECORD, campotipo_reader_next(face.reader, &block, &face.error));
  EXPECT_EQ(3U, face.error.record);
  EXPECT_EQ(2 * kBytes, face.error.byte);
  EXPECT_EQ(CAMPOTIPO_END, campotipo_reader_next(face.reader, &block, &face.error));
}

TEST(Face, PassesOverWhatIsNoRecordWhereAsked) {
  Face face(kKinds);
  const std::string bytes("\1\2\5\0\1\7\7\7", 8);
  ASSERT_EQ(CAMPOTIPO_OK, face.open(bytes, CAMPOTIPO_SKIP));
  auto block = sized<campotipo_block>();
  std::size_t records = 0;
  while (campotipo_reader_next(face.reader, &block, &face.error) == CAMPOTIPO_OK) {
    records += block.count;
  }
  EXPECT_EQ(3U, records);
  EXPECT_EQ(1U, campotipo_reader_skipped(face.reader));
}

TEST(Face, ReadsWithCallbacks) {
  struct Host {
    std::string bytes;
    std::size_t at = 0;
    std::size_t fails_at = SIZE_MAX;
  };
  const auto read = [](void *context, void *dest, std::size_t room) -> std::int64_t {
    auto &host = *static_cast<Host *>(context);
    if (host.at >= host.fails_at) return -1;
    const std::size_t count = std::min({room, host.bytes.size() - host.at, std::size_t{5}});
    std::memcpy(dest, host.bytes.data() + host.at, count);
    host.at += count;
    return std::int64_t(count);
  };
  for (const bool fails : {false, true}) {
    Face face;
    Host host{record() + record(), 0, fails ? kBytes : SIZE_MAX};
    auto input = sized<campotipo_input>();
    input.name = "host";
    input.read = read;
    input.context = &host;
    ASSERT_EQ(CAMPOTIPO_OK,
              campotipo_reader_open(face.layout, &input, nullptr, 0, &face.reader, &face.error));
    auto block = sized<campotipo_block>();
    const campotipo_status status = campotipo_reader_next(face.reader, &block, &face.error);
    EXPECT_EQ(fails ? CAMPOTIPO_INPUT : CAMPOTIPO_OK, status) << face.error.text;
    if (!fails) {
      EXPECT_EQ(2U, block.count);
    }
  }
}

TEST(Face, RefusesInputsThatNameNoSourceOrTwo) {
  Face face;
  auto input = sized<campotipo_input>();
  input.path = "x";
  input.memory = "y";
  input.memory_bytes = 1;
  EXPECT_EQ(CAMPOTIPO_ARGUMENT,
            campotipo_reader_open(face.layout, &input, nullptr, 0, &face.reader, &face.error));
  input.memory = nullptr;
  input.path = "/nowhere/x";
  EXPECT_EQ(CAMPOTIPO_INPUT,
            campotipo_reader_open(face.layout, &input, nullptr, 0, &face.reader, &face.error));
  input.size = 3;
  EXPECT_EQ(CAMPOTIPO_ARGUMENT,
            campotipo_reader_open(face.layout, &input, nullptr, 0, &face.reader, &face.error));
  EXPECT_EQ(CAMPOTIPO_ARGUMENT,
            campotipo_reader_open(face.layout, nullptr, nullptr, 0, &face.reader, &face.error));
  EXPECT_EQ(nullptr, face.reader);
}

// Values, offsets, texts, validity and faults each end at a page that cannot be touched.
TEST(Face, DecodesIntoMemoryOfTheCallerAndNotABytePast) {
  Face face;
  constexpr std::size_t kRows = 13;
  GuardedBuffer memory[6];
  unsigned char *stored = memory[5].at_end(kRows * kBytes);
  std::array<const unsigned char *, kRows> records;
  for (std::size_t i = 0; i < kRows; ++i) {
    std::memcpy(stored + i * kBytes, record().data(), kBytes);
    records[i] = stored + i * kBytes;
  }
  stored[5 * kBytes + 29] = 0x00;  // a date in the other encoding
  constexpr std::size_t kSizes[] = {0, 0, 4, 8, 16, 32, 0, 4, 4, 8};
  for (int wide = 0; wide <= 2; ++wide) {
    for (std::size_t number = 0; number < 6; ++number) {
      auto field = sized<campotipo_field>();
      ASSERT_EQ(CAMPOTIPO_OK, campotipo_layout_field(face.layout, 0, number, wide, &field));
      const std::size_t size = kSizes[field.physical];
      auto column = sized<campotipo_column>();
      column.values = memory[0].at_end(size == 0 ? (kRows + 7) / 8 : size * kRows);
      column.offsets = reinterpret_cast<std::int32_t *>(memory[1].at_end(4 * (kRows + 1)));
      column.text = memory[2].text_at_end(field.room * kRows);
      column.room = field.room * kRows;
      column.validity = memory[3].at_end((kRows + 7) / 8);
      column.faults = memory[4].at_end((kRows + 7) / 8);
      ASSERT_EQ(CAMPOTIPO_OK, campotipo_decode(face.layout, 0, number, wide, records.data(), kRows,
                                               &column, &face.error))
          << face.error.text;
      const bool date = field.physical == CAMPOTIPO_DATE32;
      EXPECT_EQ(date ? kRows : 0, column.nulls) << field.name;
      EXPECT_EQ(date ? 1 << 5 : 0, column.faults[0]) << field.name;
      if (field.physical == CAMPOTIPO_UTF8) {
        --column.room;
        EXPECT_EQ(CAMPOTIPO_ARGUMENT, campotipo_decode(face.layout, 0, number, wide, records.data(),
                                                       kRows, &column, &face.error));
      }
      column.faults = nullptr;
      EXPECT_EQ(date                               ? CAMPOTIPO_VALUE
                : field.physical == CAMPOTIPO_UTF8 ? CAMPOTIPO_ARGUMENT
                                                   : 0,
                campotipo_decode(face.layout, 0, number, wide, records.data(), kRows, &column,
                                 &face.error));
      if (date) {
        EXPECT_EQ(6U, face.error.record);
      }
    }
  }
}

TEST(Face, FreesInAnyOrder) {
  campotipo_layout_free(nullptr);
  campotipo_reader_free(nullptr);
  campotipo_rows_free(nullptr);
  const std::string bytes = record();
  for (const bool layout_first : {true, false}) {
    Face face;
    ASSERT_EQ(CAMPOTIPO_OK, face.open(bytes));
    ArrowArrayStream stream = {};
    ASSERT_EQ(CAMPOTIPO_OK, campotipo_stream(face.reader, nullptr, &stream, &face.error));
    face.reader = nullptr;
    if (layout_first) {
      campotipo_layout_free(face.layout);
      face.layout = nullptr;
    }
    ArrowSchema schema = {};
    ArrowArray batch = {};
    ASSERT_EQ(0, stream.get_schema(&stream, &schema));
    ASSERT_EQ(0, stream.get_next(&stream, &batch));
    stream.release(&stream);
    EXPECT_EQ(1, batch.length);
    // A child that is moved out outlives its parent.
    ArrowArray moved = *batch.children[1];
    batch.children[1]->release = nullptr;
    batch.release(&batch);
    EXPECT_EQ(7, *static_cast<const std::int64_t *>(moved.buffers[1]));
    moved.release(&moved);
    schema.release(&schema);
  }
}

TEST(Face, AStreamTellsThePlaceOfWhatIsWrong) {
  Face face;
  std::string bytes = record() + record();
  bytes[kBytes + 29] = char(0xFF);  // the date of the second record
  ASSERT_EQ(CAMPOTIPO_OK, face.open(bytes));
  auto options = sized<campotipo_stream_options>();
  options.batch_rows = 1;
  ArrowArrayStream stream = {};
  ASSERT_EQ(CAMPOTIPO_OK, campotipo_stream(face.reader, &options, &stream, &face.error));
  face.reader = nullptr;
  ArrowArray batch = {};
  auto error = sized<campotipo_error>();
  ASSERT_EQ(0, stream.get_next(&stream, &batch));
  batch.release(&batch);
  EXPECT_EQ(CAMPOTIPO_OK, campotipo_stream_error(&stream, &error));
  EXPECT_EQ(CAMPOTIPO_OK, error.status);
  EXPECT_EQ(nullptr, stream.get_last_error(&stream));
  ASSERT_EQ(EINVAL, stream.get_next(&stream, &batch));
  EXPECT_EQ(CAMPOTIPO_OK, campotipo_stream_error(&stream, &error));
  EXPECT_EQ(CAMPOTIPO_VALUE, error.status);
  EXPECT_EQ(2U, error.record);
  EXPECT_EQ(kBytes + 27, error.byte);
  EXPECT_STREQ("aberta", error.field);
  EXPECT_STREQ(stream.get_last_error(&stream), error.text);
  EXPECT_EQ(CAMPOTIPO_ARGUMENT, campotipo_stream_error(nullptr, &error));
  EXPECT_EQ(CAMPOTIPO_ARGUMENT, campotipo_stream_error(&stream, nullptr));
  stream.release(&stream);
  EXPECT_EQ(CAMPOTIPO_ARGUMENT, campotipo_stream_error(&stream, &error));
}

TEST(Face, AStreamThatIsRefusedLeavesTheReader) {
  Face face;
  const std::string bytes = record();
  ASSERT_EQ(CAMPOTIPO_OK, face.open(bytes));
  auto options = sized<campotipo_stream_options>();
  const char *const fields[] = {"saldos"};
  options.fields = fields;
  options.n_fields = 1;
  ArrowArrayStream stream = {};
  EXPECT_EQ(CAMPOTIPO_ARGUMENT, campotipo_stream(face.reader, &options, &stream, &face.error));
  EXPECT_NE(nullptr, std::strstr(face.error.text, "saldo\"?")) << face.error.text;
  auto block = sized<campotipo_block>();
  EXPECT_EQ(CAMPOTIPO_OK, campotipo_reader_next(face.reader, &block, &face.error));
}

TEST(Face, WritesRows) {
  const struct {
    int format, hex, no_header;
    const char *text;
  } kForms[] = {
      {CAMPOTIPO_ROWS_CSV, 0, 0, "tipo,valor\r\n"},
      {CAMPOTIPO_ROWS_NDJSON, 0, 0, ""},
  };
  for (const auto &form : kForms) {
    Face face(kKinds);
    const std::string file("\1\2\5\0", 4);
    ASSERT_EQ(CAMPOTIPO_OK, face.open(file));
    auto options = sized<campotipo_rows_options>();
    options.format = form.format;
    campotipo_rows *rows = nullptr;
    ASSERT_EQ(CAMPOTIPO_OK, campotipo_rows_open(face.reader, &options, &rows, &face.error));
    face.reader = nullptr;
    std::string all;
    const char *text = nullptr;
    std::size_t bytes = 0;
    while (campotipo_rows_next(rows, &text, &bytes, &face.error) == CAMPOTIPO_OK) {
      all.append(text, bytes);
    }
    campotipo_rows_free(rows);
    EXPECT_EQ(form.format == CAMPOTIPO_ROWS_CSV
                  ? "record,tipo,valor\r\na,1,\r\nb,2,5\r\n"
                  : "{\"record\":\"a\",\"tipo\":1}\n{\"record\":\"b\",\"tipo\":2,\"valor\":5}\n",
              all);
  }
}

TEST(Face, OneLayoutServesThreads) {
  Face face;
  std::string bytes;
  for (int i = 0; i < 5000; ++i) bytes += record();
  std::vector<std::thread> threads;
  std::array<std::int64_t, 4> sums = {};
  for (std::size_t t = 0; t < sums.size(); ++t) {
    threads.emplace_back([&, t] {
      auto input = sized<campotipo_input>();
      input.memory = bytes.data();
      input.memory_bytes = bytes.size();
      campotipo_reader *reader = nullptr;
      ArrowArrayStream stream = {};
      ArrowArray batch = {};
      if (campotipo_reader_open(face.layout, &input, nullptr, 0, &reader, nullptr) != 0) return;
      if (campotipo_stream(reader, nullptr, &stream, nullptr) != 0) return;
      while (stream.get_next(&stream, &batch) == 0 && batch.release != nullptr) {
        sums[t] += batch.length;
        batch.release(&batch);
      }
      stream.release(&stream);
    });
  }
  for (std::thread &thread : threads) thread.join();
  for (const std::int64_t sum : sums) EXPECT_EQ(5000, sum);
}

}  // namespace
