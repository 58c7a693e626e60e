// Rows into records through the C face.
#include <campotipo-records/records.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "tests/records/face_fixture.hpp"

namespace {

using campotipo::test::Face;
using campotipo::test::kKinds;
using campotipo::test::kLayout;
using campotipo::test::sized;

// A loader whose file is a string, and the losses it told.
struct Loading {
  std::string file;
  std::vector<std::string> lost;
  std::size_t most = SIZE_MAX;  // bytes that the sink takes
  campotipo_loader *loader = nullptr;
  campotipo_error error = sized<campotipo_error>();
  campotipo_loader_options options = sized<campotipo_loader_options>();

  Loading() = default;
  Loading(const Loading &) = delete;
  Loading &operator=(const Loading &) = delete;
  ~Loading() { campotipo_loader_free(loader); }

  void tell_losses() {
    options.context = this;
    options.lost = [](void *context, const campotipo_error *loss) {
      static_cast<Loading *>(context)->lost.push_back(
          std::to_string(loss->line) + " " + std::to_string(loss->record) + " " + loss->field);
    };
  }

  campotipo_status open(const campotipo_layout *layout) {
    auto sink = sized<campotipo_sink>();
    sink.context = this;
    sink.write = [](void *context, const void *bytes, std::size_t count) {
      auto &mine = *static_cast<Loading *>(context);
      if (mine.file.size() + count > mine.most) return 1;
      mine.file.append(static_cast<const char *>(bytes), count);
      return 0;
    };
    return campotipo_loader_open(layout, &sink, &options, &loader, &error);
  }

  campotipo_status load(const std::string &csv) {
    auto input = sized<campotipo_input>();
    input.name = "rows";
    input.memory = csv.data();
    input.memory_bytes = csv.size();
    return campotipo_load(loader, nullptr, &input, &error);
  }

  campotipo_status finish() { return campotipo_loader_finish(loader, &error); }
};

std::string rows_of(const campotipo_layout *layout, const std::string &file) {
  auto error = sized<campotipo_error>();
  auto input = sized<campotipo_input>();
  input.memory = file.data();
  input.memory_bytes = file.size();
  campotipo_reader *reader = nullptr;
  campotipo_rows *rows = nullptr;
  EXPECT_EQ(0, campotipo_reader_open(layout, &input, nullptr, 0, &reader, &error)) << error.text;
  EXPECT_EQ(0, campotipo_rows_open(reader, nullptr, &rows, &error)) << error.text;
  std::string all;
  const char *text = nullptr;
  std::size_t bytes = 0;
  while (campotipo_rows_next(rows, &text, &bytes, &error) == CAMPOTIPO_OK) all.append(text, bytes);
  campotipo_rows_free(rows);
  return all;
}

TEST(Loader, TakesBackTheRowsOfAFile) {
  Face face;
  std::string file;
  for (int i = 0; i < 20000; ++i) {
    file += campotipo::test::record();
    std::memcpy(&file[file.size() - campotipo::test::kBytes], &i, sizeof i);
  }
  Loading loading;
  ASSERT_EQ(CAMPOTIPO_OK, loading.open(face.layout)) << loading.error.text;
  ASSERT_EQ(CAMPOTIPO_OK, loading.load(rows_of(face.layout, file))) << loading.error.text;
  ASSERT_EQ(CAMPOTIPO_OK, loading.finish());
  EXPECT_TRUE(loading.file == file);
  EXPECT_EQ(20000U, campotipo_loader_records(loading.loader));
  EXPECT_EQ(0U, campotipo_loader_losses(loading.loader));
}

TEST(Loader, AddsFilesOfAllKindsOneBehindTheOther) {
  Face face(kKinds);
  Loading loading;
  ASSERT_EQ(CAMPOTIPO_OK, loading.open(face.layout));
  ASSERT_EQ(CAMPOTIPO_OK, loading.load("record,valor\nb,5\na,\n")) << loading.error.text;
  ASSERT_EQ(CAMPOTIPO_OK, loading.load("valor,record\r\n258,b\r\n"));
  ASSERT_EQ(CAMPOTIPO_OK, loading.finish());
  EXPECT_EQ(std::string("\2\5\0\1\2\2\1", 7), loading.file);
  EXPECT_EQ(CAMPOTIPO_ARGUMENT, loading.finish());
  EXPECT_EQ(CAMPOTIPO_ARGUMENT, loading.load("record,valor\nb,5\n"));
}

TEST(Loader, WritesWhatStandsAroundTheRecords) {
  const char *layout =
      "name = \"x\"\nheader = { hex = \"616263\" }\ntrailer = 2\n"
      "[[field]]\nname = \"a\"\ntype = \"BIN1\"\n";
  const struct {
    const char *header, *trailer;
    std::size_t header_bytes, trailer_bytes;
    int bare;
    std::string file;  // "": refused
  } kCases[] = {{nullptr, nullptr, 0, 0, 0, std::string("abc\7\0\0", 6)},
                {"xyz", "uv", 3, 2, 0, "xyz\7uv"},
                {nullptr, "uv", 0, 2, 0, "abc\7uv"},
                {nullptr, nullptr, 0, 0, 1, "\7"},
                {"xy", nullptr, 2, 0, 0, ""},
                {nullptr, "uvw", 0, 3, 0, ""}};
  for (const auto &known : kCases) {
    Face face(layout);
    Loading loading;
    loading.options.header = known.header;
    loading.options.header_bytes = known.header_bytes;
    loading.options.trailer = known.trailer;
    loading.options.trailer_bytes = known.trailer_bytes;
    loading.options.bare = known.bare;
    const campotipo_status opened = loading.open(face.layout);
    EXPECT_EQ(known.file.empty() ? CAMPOTIPO_ARGUMENT : CAMPOTIPO_OK, opened) << loading.error.text;
    if (opened != CAMPOTIPO_OK) continue;
    ASSERT_EQ(CAMPOTIPO_OK, loading.load("a\n7\n")) << loading.error.text;
    ASSERT_EQ(CAMPOTIPO_OK, loading.finish());
    EXPECT_EQ(known.file, loading.file);
  }
}

TEST(Loader, TellsWhereARowIsRefused) {
  const struct {
    const char *csv;
    campotipo_status status;
    std::uint32_t line;
    std::uint64_t record;
    const char *field;
  } kCases[] = {
      {"numero,nome\n1,ana\n2,mariana\n", CAMPOTIPO_VALUE, 3, 2, "nome"},
      {"numero,nome\n1,\"a\nb\"\n2,x\n-3,x\n", CAMPOTIPO_VALUE, 5, 3, "numero"},
      {"numero,saldo\n1,1.234\n", CAMPOTIPO_VALUE, 2, 1, "saldo"},
      {"numero,aberta\n1,31/02/2024\n", CAMPOTIPO_VALUE, 2, 1, "aberta"},
      {"numero,nome\n1\n", CAMPOTIPO_RECORD, 2, 1, ""},
      {"numero,nome\n1,\"x\n", CAMPOTIPO_RECORD, 2, 1, ""},
      {"numero,nomes\n1,x\n", CAMPOTIPO_INPUT, 0, 0, ""},
      {"numero,numero\n1,1\n", CAMPOTIPO_INPUT, 0, 0, ""},
      {"", CAMPOTIPO_INPUT, 0, 0, ""},
  };
  for (const auto &known : kCases) {
    Face face;
    Loading loading;
    ASSERT_EQ(CAMPOTIPO_OK, loading.open(face.layout));
    EXPECT_EQ(known.status, loading.load(known.csv)) << known.csv;
    EXPECT_EQ(known.line, loading.error.line) << loading.error.text;
    EXPECT_EQ(known.record, loading.error.record) << loading.error.text;
    EXPECT_STREQ(known.field, loading.error.field);
    EXPECT_EQ(0, std::strncmp("rows:", loading.error.text, 5)) << loading.error.text;
    EXPECT_EQ(CAMPOTIPO_ARGUMENT, loading.finish());
    EXPECT_EQ("", loading.file);
  }
}

TEST(Loader, TellsEveryLossInOrder) {
  const std::string csv = "numero,nome,saldo\n1,mariana,1.234\n2,ana,2\nx,joaquim,3\n4,ana,4.009\n";
  const std::vector<std::string> all = {"2 1 nome", "2 1 saldo", "4 3 numero", "4 3 nome",
                                        "5 4 saldo"};
  for (const bool lossy : {false, true}) {
    Face face;
    Loading loading;
    loading.options.lossy = lossy ? 1 : 0;
    loading.tell_losses();
    ASSERT_EQ(CAMPOTIPO_OK, loading.open(face.layout));
    EXPECT_EQ(CAMPOTIPO_OK, loading.load(csv));
    EXPECT_EQ(all, loading.lost);
    EXPECT_EQ(5U, campotipo_loader_losses(loading.loader));
    EXPECT_EQ(4U, campotipo_loader_records(loading.loader));
    EXPECT_EQ(lossy ? CAMPOTIPO_OK : CAMPOTIPO_VALUE, loading.finish());
    EXPECT_EQ(lossy ? 4 * campotipo::test::kBytes : 0, loading.file.size());
    if (!lossy) continue;
    const std::string rows = rows_of(face.layout, loading.file);
    EXPECT_EQ("1,marian,1.23,,0,0\r\n2,ana,2.00,,0,0\r\n0,joaqui,3.00,,0,0\r\n4,ana,4.00,,0,0\r\n",
              rows.substr(rows.find('\n') + 1));
  }
}

TEST(Loader, PassesOverColumnsThatItIsTold) {
  Face face;
  Loading loading;
  const char *const ignored[] = {"obs", "nome"};
  loading.options.ignored = ignored;
  loading.options.n_ignored = 2;
  ASSERT_EQ(CAMPOTIPO_OK, loading.open(face.layout));
  ASSERT_EQ(CAMPOTIPO_OK, loading.load("numero,obs,nome\n7,x,a name too long\n"));
  ASSERT_EQ(CAMPOTIPO_OK, loading.finish());
  EXPECT_EQ('\7', loading.file[0]);
  EXPECT_EQ('\0', loading.file[4]);
}

TEST(Loader, TellsOfASinkThatTakesNoMore) {
  Face face;
  Loading loading;
  loading.most = 3 * campotipo::test::kBytes;
  ASSERT_EQ(CAMPOTIPO_OK, loading.open(face.layout));
  EXPECT_EQ(CAMPOTIPO_OK, loading.load("numero\n1\n2\n3\n"));
  EXPECT_EQ(CAMPOTIPO_OUTPUT, loading.load("numero\n4\n"));
  EXPECT_EQ(CAMPOTIPO_ARGUMENT, loading.finish());
  EXPECT_EQ(loading.most, loading.file.size());
}

TEST(Loader, RefusesWhatItIsNotTold) {
  Face face;
  auto sink = sized<campotipo_sink>();
  campotipo_loader *loader = nullptr;
  EXPECT_EQ(CAMPOTIPO_ARGUMENT,
            campotipo_loader_open(face.layout, &sink, nullptr, &loader, &face.error));
  EXPECT_EQ(CAMPOTIPO_ARGUMENT,
            campotipo_loader_open(face.layout, nullptr, nullptr, &loader, &face.error));
  EXPECT_EQ(nullptr, loader);
  EXPECT_EQ(CAMPOTIPO_ARGUMENT, campotipo_load(nullptr, nullptr, nullptr, &face.error));
  EXPECT_EQ(CAMPOTIPO_ARGUMENT, campotipo_loader_finish(nullptr, &face.error));
  Loading loading;
  ASSERT_EQ(CAMPOTIPO_OK, loading.open(face.layout));
  EXPECT_EQ(CAMPOTIPO_ARGUMENT, campotipo_load(loading.loader, nullptr, nullptr, &face.error));
  EXPECT_EQ(CAMPOTIPO_OK, loading.finish());
  campotipo_loader_free(nullptr);
}

}  // namespace
