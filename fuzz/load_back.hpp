#pragma once

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "files/input.hpp"
#include "fuzz/memory_file.hpp"
#include "layout/layout.hpp"
#include "rows/loader.hpp"

namespace campotipo::fuzz {

// The records of a CSV file that the tool wrote itself: every value comes back whole.
inline std::string load_back(const records::Layout &layout, const std::string &csv,
                             std::size_t block) {
  const MemoryFile file(reinterpret_cast<const std::uint8_t *>(csv.data()), csv.size());
  records::Input input(file.path());
  records::CsvStream stream(input, block);
  std::vector<std::string> header;
  if (!stream.header(header)) std::abort();
  const records::Loader loader(layout, header, {}, "fuzz");
  std::string records;
  records::LoadedBlock loaded;
  while (stream.read(loaded.csv)) {
    loader.load(loaded);
    if (!loaded.lost.empty() || !loaded.fault.empty()) std::abort();
    records += loaded.records.view();
  }
  return records;
}

}  // namespace campotipo::fuzz
