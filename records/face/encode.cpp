#include <campotipo-records/records.h>

#include "columns/encoder.hpp"
#include "columns/plan.hpp"
#include "face/errors.hpp"
#include "face/writing.hpp"
#include "findings/finding_counts.hpp"

namespace records = campotipo::records;
namespace face = campotipo::records::face;

namespace {

records::Error loss_error(const records::EncodeLoss &loss, const records::RecordType &kind,
                          const std::string &column, std::uint64_t record) {
  records::Error error(records::ErrorCode::kValue,
                       "record " + std::to_string(record) + ": column " + column + ": \"" +
                           records::shortened(loss.value) + "\" " + loss.what);
  error.record = record;
  error.kind = kind.name;
  error.field = column;
  return error;
}

void encode(face::Writing &writing, const char *kind_name, const ArrowSchema &schema,
            const ArrowArray &array) {
  const records::RecordType &kind =
      records::kind_for(writing.layout(), kind_name != nullptr ? kind_name : "");
  records::Encoder encoder(writing.layout(), kind, schema, array, writing.ignored());
  records::EncodedBlock block;
  while (encoder.next(block, writing.records())) {
    for (const records::EncodeLoss &loss : block.lost) {
      writing.lose(
          loss_error(loss, kind, encoder.column(loss.column), writing.records() + loss.row + 1));
    }
    writing.put(block, block.rows);
  }
}

}  // namespace

extern "C" {

campotipo_status campotipo_encode(campotipo_loader *loader, const char *kind,
                                  const struct ArrowSchema *schema, const struct ArrowArray *array,
                                  campotipo_error *error) {
  return face::guarded(error, [&] {
    if (loader == nullptr || schema == nullptr || array == nullptr) {
      face::refuse("loader, schema and array have to be told");
    }
    loader->writing.add([&] { encode(loader->writing, kind, *schema, *array); });
    return CAMPOTIPO_OK;
  });
}

}  // extern "C"
