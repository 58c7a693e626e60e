// Any bytes as a CSV file: each row becomes a whole record or is told, and what comes out does not
// show in which blocks the file was read.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "errors/error.hpp"
#include "files/input.hpp"
#include "fuzz/memory_file.hpp"
#include "layout/reader.hpp"
#include "rows/loader.hpp"

namespace {

using namespace campotipo::records;

const Layout &layout() {
  static const auto known = parse_layout(
      "name='r'\n[[field]]\nname='a'\ntype='CODALF12'\n[[field]]\nname='b'\ntype='CODSTR'\n"
      "bytes=5\n[[field]]\nname='c'\ntype='BINQ9'\ndecimals=2\n[[field]]\nname='d'\n"
      "type='DATAC'\n[[field]]\nname='e'\ntype='HHMMSS'\ncolumn='d'\njoin=' '\n[[field]]\n"
      "name='f'\ntype='QUANTIA'\n[[field]]\nname='g'\ntype='ZGUID'\n[[field]]\nname='h'\n"
      "type='ZBTFIELD'\nbits=[3, 7]\n[[field]]\nname='i'\ntype='BSTR21'\n",
      "fuzz");
  return known;
}

// Everything that comes of a file, as one text.
std::string loaded(const std::string &path, std::size_t block) {
  std::string records;
  FindingCounts lost;
  std::uint64_t rows = 0;
  std::uint64_t lines = 0;
  std::string fault;
  try {
    Input input(path);
    CsvStream stream(input, block);
    std::vector<std::string> header;
    if (!stream.header(header)) return "no header";
    // The names a file gives are rarely those of the layout: take them in its order.
    std::vector<std::string> names = layout().columns;
    names.resize(std::min(names.size(), header.size()));
    const Loader loader(layout(), names, {}, "fuzz");
    LoadedBlock part;
    while (fault.empty() && stream.read(part.csv)) {
      loader.load(part);
      if (part.records.view().size() != part.rows * layout().types[0].bytes) std::abort();
      records += part.records.view();
      lost.merge(part.lost, rows, lines);
      rows += part.rows;
      if (!part.fault.empty())
        fault = part.fault + " at " + std::to_string(lines + part.fault_line);
      lines += part.lines;
    }
  } catch (const Error &failure) {
    fault = failure.what();
  }
  for (const FindingCounts::Line &line : lost.lines()) {
    records += "\n" + line.field + " " + line.what + " " + std::to_string(line.entry.count);
    for (const Location &place : line.entry.places) {
      records +=
          " " + std::to_string(place.record) + "@" + std::to_string(place.line) + " " + place.value;
    }
  }
  return records + "\n" + fault;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const campotipo::fuzz::MemoryFile file(data, size);
  const std::string whole = loaded(file.path(), size + 1);
  if (loaded(file.path(), 1 + size % 37) != whole) std::abort();
  return 0;
}
