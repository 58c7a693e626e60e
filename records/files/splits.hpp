#pragma once

#include <vector>

#include "files/stream.hpp"

namespace campotipo::records {

// Ranges of about the same size, `wanted` at most, that hold every record once, in order. By
// arithmetic where records have one length and the size is known, else by reading the source through.
std::vector<RecordStream::Range> splits(const Layout &layout, Source &source, std::size_t wanted);

}  // namespace campotipo::records
