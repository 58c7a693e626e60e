// Any bytes as a file of records, under several layouts: they are cut without reading past their
// end, in any blocks alike, and well-formed records come back from CSV byte for byte.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <set>
#include <string>

#include "files/stream.hpp"
#include "findings/validator.hpp"
#include "fuzz/load_back.hpp"
#include "layout/reader.hpp"
#include "rows/row_writer.hpp"

namespace {

using namespace campotipo::records;

const char *const kLayouts[] = {
    "name='r'\n[[field]]\nname='a'\ntype='CODALF05'\n[[field]]\nname='b'\ntype='CODSTR'\nbytes=3\n"
    "[[field]]\nname='c'\ntype='DATAC'\n[[field]]\nname='d'\ntype='BINQ9'\ndecimals=2\n",
    "name='r'\nheader=2\ntrailer=1\n[[field]]\nname='a'\ntype='BSTR21'\n[[field]]\nname='b'\n"
    "type='HORAC'\n[[field]]\nname='c'\ntype='ZBTFIELD'\norder='big'\nbits=[3, 9]\n",
    "name='r'\n[[record]]\nname='h'\nwhen={t='1'}\n[[record.field]]\nname='t'\n"
    "type='BIN1'\n[[record]]\nname='d'\nwhen={t=['2', "
    "'3']}\n[[record.field]]\nname='t'\ntype='BIN1'\n"
    "[[record.field]]\nname='q'\ntype='QUANTIA'\n",
    "name='r'\nlength={bytes=2, order='big'}\n[[record]]\nname='h'\nwhen={t='1'}\n"
    "[[record.field]]\nname='t'\ntype='BIN1'\n[[record]]\nname='d'\n[[record.field]]\nname='t'\n"
    "type='BIN1'\n[[record.field]]\nname='p'\ntype='PORC4'\n",
    "name='r'\nlength={bytes=1, counts_itself=true}\ntrailer={hex='1A'}\nencoding='CP850'\n"
    "[[field]]\nname='d'\ntype='DATAC'\nencoding='packed'\nformat='AAAA-MM-DD'\n[[field]]\n"
    "name='h'\ntype='HHMMSS'\ncolumn='d'\njoin='T'\n[[field]]\nname='s'\ntype='CODSTR'\nbytes=4\n"
    "column='d'\njoin='T'\n",
    "name='r'\nline_end='crlf'\n[[record]]\nname='h'\nwhen={t='H'}\n[[record.field]]\nname='t'\n"
    "type='CODSTR'\nbytes=1\n[[record.field]]\nname='x'\ntype='CODSTR'\nbytes=4\n[[record]]\n"
    "name='d'\nwhen={t=['D', 'E'], u='2'}\n[[record.field]]\nname='t'\ntype='CODSTR'\nbytes=1\n"
    "[[record.field]]\nname='u'\ntype='CODSTR'\nbytes=1\n[[record.field]]\nname='q'\ntype='BIN3'\n",
    "name='r'\nline_end='lf'\n[[record]]\nname='h'\nwhen={t='H'}\n[[record.field]]\nname='t'\n"
    "type='CODSTR'\nbytes=1\n[[record]]\nname='d'\n[[record.field]]\nname='t'\ntype='CODSTR'\n"
    "bytes=4\n",
    "name='r'\nheader={hex='AB'}\n[[field]]\nname='g'\ncount=2\n[[field.field]]\nname='x'\n"
    "type='BIN2'\ncount=2\n[[field.field]]\nname='y'\ntype='ZBTFIELD'\nbits=[1, 7, 4]\n[[field]]\n"
    "type='fill'\nhex='20'\n[[field]]\nname='c'\ntype='CODALFA'\npositions=11\ncheck='CPF'\n",
    "name='r'\nfield=[{name='t',type='TEXT',bytes=3},{name='p',type='TEXT',bytes=2,pad='0'},"
    "{name='d',type='DIGITS',digits=3,empty=' '},{name='n',type='NUM',digits=4,decimals=2},"
    "{name='s',type='NUM',digits=2,sign='leading',pad=' ',empty=[' ','9']},"
    "{name='o',type='NUM',digits=20,sign='overpunch'},{name='a',type='DATE',stored='DDMMAA'},"
    "{name='h',type='TIME',stored='HHMM',column='a',join='T'}]\n",
    "name='r'\nencoding='UTF-8'\nfield=[{name='t',type='TEXT',bytes=18,empty=['0',' ']},"
    "{name='s',type='NUM',digits=40,decimals=40,sign='trailing'},"
    "{name='a',type='DATE',stored='AAAA-MM-DD',format='AA/MM/DD',empty=['99991231--','0']},"
    "{name='h',type='TIME',stored='HHMMSS'}]\n",
};

// A layout and what is made of it once.
struct Told {
  explicit Told(const char *toml)
      : layout(parse_layout(toml, "fuzz")),
        header(csv_header(layout, layout.columns, false, "\r\n")),
        csv(csv_writers(layout, layout.columns, false, "\r\n")),
        json(json_writers(layout, layout.columns, true)) {}
  Layout layout;
  std::string header;
  std::vector<RowWriter> csv;
  std::vector<RowWriter> json;
};

const Told &told(std::size_t which) {
  static const auto known = [] {
    std::deque<Told> all;
    for (const char *toml : kLayouts) all.emplace_back(toml);
    return all;
  }();
  return known[which % known.size()];
}

bool well_formed(const Layout &layout, const RecordBlock &block,
                 const RecordBlock::Record &record) {
  const auto good = [&](const Field &field) {
    return field_fault(field, block.record(record)) == nullptr;
  };
  const RecordType &type = *record.type;
  if (layout.lines() && line_end_in(type, block.record(record)) != type.bytes) return false;
  return std::all_of(type.fields.begin(), type.fields.end(), good) &&
         std::all_of(type.fillers.begin(), type.fillers.end(), good);
}

// What the file holds: its records and faults as one text, and the well-formed records as they
// stand there and as CSV.
struct Content {
  std::string all;
  std::string kept;
  Buffer csv;
};

Content content(const Told &how, const std::string &path, std::size_t size) {
  const Layout &layout = how.layout;
  Input input(path);
  RecordStream stream(input, layout, {}, size);
  Validator validator(layout, "fuzz");
  RecordBlock block;
  Buffer json;
  std::string faults;
  std::string notes;
  Content result;
  result.csv.append(how.header);
  while (stream.read(block)) {
    validator.add(block);
    for (const RecordBlock::Record &record : block.records) {
      const auto kind = static_cast<std::size_t>(record.type - layout.types.data());
      how.json[kind].run(block.record(record), json);
      result.all += record.type->name + "@" + std::to_string(block.place(record)) + "\n";
      if (!well_formed(layout, block, record)) continue;
      how.csv[kind].run(block.record(record), result.csv);
      result.kept += length_prefix(layout, *record.type);
      result.kept.append(reinterpret_cast<const char *>(block.record(record)), record.type->bytes);
      result.kept += line_end(layout);
    }
    for (const StreamFault &fault : block.faults) faults += fault.text() + "\n";
    for (const StreamFault &note : block.notes) notes += note.text() + "\n";
  }
  // Which of a field and a record was first found at fault may depend on the blocks.
  std::set<std::string> findings;
  for (const FindingCounts::Line &line : validator.findings().lines()) {
    std::string text = line.field + " " + line.what + " " + std::to_string(line.entry.count);
    for (const Location &place : line.entry.places) {
      text += " " + std::to_string(place.record) + "@" + std::to_string(place.offset) + place.value;
    }
    findings.insert(text + "\n");
  }
  for (const std::string &line : findings) result.all += line;
  validator.json();
  result.all += faults + notes + std::string(json.view());
  return result;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  if (size < 1) return 0;
  const Told &how = told(data[0]);
  const campotipo::fuzz::MemoryFile file(data + 1, size - 1);
  const Content whole = content(how, file.path(), size + 1);
  if (content(how, file.path(), 0).all != whole.all) std::abort();
  const std::string csv(whole.csv.view());
  if (campotipo::fuzz::load_back(how.layout, csv, csv.size() + 1) != whole.kept) std::abort();
  return 0;
}
