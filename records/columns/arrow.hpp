#pragma once

#include <campotipo-records/arrow.h>

#include "columns/batch.hpp"

// Batches and their types as the Arrow C data interface hands them over.
namespace campotipo::records {

// Fills a structure that the receiver releases. Throws std::bad_alloc, with nothing left behind.
void export_schema(const ColumnPlan &plan, ArrowSchema *out);

// The same for the values gathered, which the batch gives away.
void export_batch(Batch &batch, ArrowArray *out);

}  // namespace campotipo::records
