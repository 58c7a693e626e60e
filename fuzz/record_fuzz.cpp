// Any bytes as a file of records, under several layouts: they are cut without reading past their
// end, and well-formed records come back from CSV byte for byte.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "app/failure.hpp"
#include "fuzz/memory_file.hpp"
#include "layout/reader.hpp"
#include "records/examiner.hpp"
#include "records/loader.hpp"
#include "records/program.hpp"
#include "records/stream.hpp"

namespace {

using namespace campotipo::tool;

const char *const kLayouts[] = {
    "name='r'\n[[field]]\nname='a'\ntype='CODALF05'\n[[field]]\nname='b'\ntype='CODSTR'\nbytes=3\n"
    "[[field]]\nname='c'\ntype='DATAC'\n[[field]]\nname='d'\ntype='BINQ9'\ndecimals=2\n",
    "name='r'\nheader=2\ntrailer=1\n[[field]]\nname='a'\ntype='BSTR21'\n[[field]]\nname='b'\n"
    "type='HORAC'\n[[field]]\nname='c'\ntype='ZBTFIELD'\norder='big'\nbits=[3, 9]\n",
    "name='r'\nselect='t'\n[[record]]\nname='h'\nwhen='1'\n[[record.field]]\nname='t'\n"
    "type='BIN1'\n[[record]]\nname='d'\nwhen=['2', '3']\n[[record.field]]\nname='t'\ntype='BIN1'\n"
    "[[record.field]]\nname='q'\ntype='QUANTIA'\n",
    "name='r'\nselect='t'\nlength={bytes=2, order='big'}\n[[record]]\nname='h'\nwhen='1'\n"
    "[[record.field]]\nname='t'\ntype='BIN1'\n[[record]]\nname='d'\n[[record.field]]\nname='t'\n"
    "type='BIN1'\n[[record.field]]\nname='p'\ntype='PORC4'\n",
};

const Layout &layout(std::size_t which) {
  static const Layout known[] = {parse_layout(kLayouts[0], "0"), parse_layout(kLayouts[1], "1"),
                                 parse_layout(kLayouts[2], "2"), parse_layout(kLayouts[3], "3")};
  return known[which % 4];
}

bool well_formed(const RecordBlock &block, const RecordBlock::Record &record) {
  for (const Field &field : record.type->fields) {
    if (field_fault(field, block.record(record)) != nullptr) return false;
  }
  return true;
}

std::string load(const Layout &told, const std::string &csv) {
  const campotipo::fuzz::MemoryFile file(reinterpret_cast<const std::uint8_t *>(csv.data()),
                                         csv.size());
  Input input(file.path());
  CsvStream stream(input);
  std::vector<std::string> header;
  if (!stream.header(header)) std::abort();
  const Loader loader(told, header, {}, "fuzz");
  std::string records;
  LoadedBlock block;
  while (stream.fill(block.csv)) {
    loader.load(block, false);
    if (!block.lost.empty() || !block.fault.empty()) std::abort();
    records += block.records.view();
  }
  return records;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  if (size < 1) return 0;
  const Layout &told = layout(data[0]);
  const campotipo::fuzz::MemoryFile file(data + 1, size - 1);
  const auto programs = csv_programs(told, told.columns, false, "\r\n");
  const auto json = json_programs(told, told.columns, true);
  for (const bool go_on : {false, true}) {
    Input input(file.path());
    RecordStream stream(input, told, go_on);
    Examiner examiner(told, "fuzz");
    RecordBlock block;
    Buffer csv;
    Buffer other;
    csv.append(csv_header(told, told.columns, false, "\r\n"));
    std::string kept;
    while (stream.fill(block)) {
      examiner.add(block);
      for (const RecordBlock::Record &record : block.records) {
        const auto kind = static_cast<std::size_t>(record.type - told.types.data());
        json[kind].run(block.record(record), other);
        if (!well_formed(block, record)) continue;
        programs[kind].run(block.record(record), csv);
        kept += length_prefix(told, *record.type);
        kept.append(reinterpret_cast<const char *>(block.record(record)), record.type->bytes);
      }
    }
    examiner.json();
    if (load(told, std::string(csv.view())) != kept) std::abort();
  }
  return 0;
}
