// Any bytes as a CSV file: each row becomes a whole record or is told, in blocks as in one piece.

#include <cstdint>
#include <cstdlib>

#include "app/failure.hpp"
#include "fuzz/memory_file.hpp"
#include "layout/reader.hpp"
#include "records/loader.hpp"

namespace {

const campotipo::tool::Layout &layout() {
  static const auto known = campotipo::tool::parse_layout(
      "name='r'\n[[field]]\nname='a'\ntype='CODALF12'\n[[field]]\nname='b'\ntype='CODSTR'\n"
      "bytes=5\n[[field]]\nname='c'\ntype='BINQ9'\ndecimals=2\n[[field]]\nname='d'\n"
      "type='DATAC'\n[[field]]\nname='e'\ntype='HHMMSS'\ncolumn='d'\njoin=' '\n[[field]]\n"
      "name='f'\ntype='QUANTIA'\n[[field]]\nname='g'\ntype='ZGUID'\n[[field]]\nname='h'\n"
      "type='ZBTFIELD'\nbits=[3, 7]\n[[field]]\nname='i'\ntype='BSTR21'\n",
      "fuzz");
  return known;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  using namespace campotipo::tool;
  const campotipo::fuzz::MemoryFile file(data, size);
  try {
    Input input(file.path());
    CsvStream stream(input);
    std::vector<std::string> header;
    if (!stream.header(header)) return 0;
    // The names a file gives are rarely those of the layout: take them in its order.
    std::vector<std::string> names = layout().columns;
    names.resize(std::min(names.size(), header.size()));
    const Loader loader(layout(), names, {}, "fuzz");
    LoadedBlock block;
    while (stream.fill(block.csv)) {
      loader.load(block, (size & 1) != 0);
      if (block.records.view().size() != block.rows * layout().types[0].bytes) std::abort();
      if (!block.fault.empty()) break;
    }
  } catch (const Failure &) {
  }
  return 0;
}
