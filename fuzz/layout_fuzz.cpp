// Any text as a layout file: it is refused with a message, or everything can be drawn from it.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "app/failure.hpp"
#include "layout/drawings.hpp"
#include "layout/reader.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  using namespace campotipo::tool;
  if (size > 4096) return 0;
  try {
    const Layout layout = parse_layout({reinterpret_cast<const char *>(data), size}, "fuzz.toml");
    for (const RecordType &record : layout.types) {
      if (record.bytes > 1 << 16 || record.fields.size() > 200) return 0;
      std::size_t at = 0;
      for (const Span &span : spans(record)) {
        if (span.offset != at) std::abort();
        at += span.bytes;
      }
      if (at != record.bytes) std::abort();
      const std::vector<unsigned char> zeros(record.bytes);
      for (const Field &field : record.fields) {
        field_text(field, zeros.data());
        field_fault(field, zeros.data());
      }
      svg(layout, record);
    }
    c_header(layout);
    sql_tables(layout);
  } catch (const Failure &failure) {
    if (std::string_view(failure.what()).find("fuzz.toml:") == std::string_view::npos) std::abort();
  }
  return 0;
}
