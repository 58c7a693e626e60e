// Files that change while they are read.
#include <campotipo-records/records.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "tests/records/face_fixture.hpp"

namespace {

using campotipo::test::Face;
using campotipo::test::kBytes;
using campotipo::test::record;
using campotipo::test::sized;

// A file of records in a folder of the system, which goes away with it.
class DiskFile {
 public:
  explicit DiskFile(std::size_t records) {
    fd_ = mkstemp(path_);
    std::string bytes;
    for (std::size_t i = 0; i < records; ++i) bytes += record();
    if (fd_ < 0 || ::write(fd_, bytes.data(), bytes.size()) != ssize_t(bytes.size())) std::abort();
  }
  DiskFile(const DiskFile &) = delete;
  DiskFile &operator=(const DiskFile &) = delete;
  ~DiskFile() {
    close(fd_);
    unlink(path_);
  }

  const char *path() const { return path_; }
  void cut(std::size_t bytes) const {
    if (ftruncate(fd_, static_cast<off_t>(bytes)) != 0) std::abort();
  }

 private:
  char path_[32] = "/tmp/campotipo-face-XXXXXX";
  int fd_;
};

constexpr std::size_t kRecords = 100000;

// The records read in front of the end, and how it came.
campotipo_status read_all(campotipo_reader *reader, std::uint64_t &records,
                          campotipo_error &error) {
  auto block = sized<campotipo_block>();
  campotipo_status status = CAMPOTIPO_OK;
  while ((status = campotipo_reader_next(reader, &block, &error)) == CAMPOTIPO_OK) {
    for (std::size_t i = 0; i < block.count; ++i) EXPECT_EQ(7, *block.records[i]);
    records += block.count;
  }
  return status;
}

TEST(FaceFiles, AFileThatShrinksGivesAnError) {
  // At the end of a record, inside one, to nothing.
  for (const std::size_t left : {kBytes * 90000, kBytes * 90000 + 5, std::size_t{0}}) {
    Face face;
    const DiskFile file(kRecords);
    auto input = sized<campotipo_input>();
    input.path = file.path();
    ASSERT_EQ(0, campotipo_reader_open(face.layout, &input, nullptr, 0, &face.reader, &face.error));
    auto block = sized<campotipo_block>();
    ASSERT_EQ(0, campotipo_reader_next(face.reader, &block, &face.error));
    std::uint64_t records = block.count;
    file.cut(left);
    const campotipo_status status = read_all(face.reader, records, face.error);
    EXPECT_LT(status, 0) << left << " bytes left, " << records << " records read";
    EXPECT_LT(records, kRecords);
    EXPECT_NE('\0', face.error.text[0]);
  }
}

TEST(FaceFiles, AFileThatIsDeletedIsReadToItsEnd) {
  Face face;
  auto input = sized<campotipo_input>();
  {
    const DiskFile file(kRecords);
    input.path = file.path();
    ASSERT_EQ(0, campotipo_reader_open(face.layout, &input, nullptr, 0, &face.reader, &face.error));
  }
  std::uint64_t records = 0;
  EXPECT_EQ(CAMPOTIPO_END, read_all(face.reader, records, face.error));
  EXPECT_EQ(kRecords, records);
}

TEST(FaceFiles, WhatCannotBeReadLeavesNoDescriptor) {
  Face face;
  const int before = dup(0);
  close(before);
  auto input = sized<campotipo_input>();
  for (const char *path : {"/", "/nowhere/x"}) {
    input.path = path;
    EXPECT_EQ(CAMPOTIPO_INPUT,
              campotipo_reader_open(face.layout, &input, nullptr, 0, &face.reader, &face.error));
    EXPECT_EQ(CAMPOTIPO_INPUT, campotipo_layout_open(path[1] == '\0' ? "/usr" : "/nowhere/x.toml",
                                                     &face.layout, &face.error));
  }
  const int after = dup(0);
  close(after);
  EXPECT_EQ(before, after);
}

}  // namespace
