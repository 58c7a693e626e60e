#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "findings/statistics.hpp"
#include "findings/validator.hpp"
#include "layout/layout.hpp"
#include "report/histogram.hpp"

namespace campotipo::tool {

using namespace campotipo::records;

// One kind of record: what is known of its fields.
struct KindReport {
  const RecordType *type = nullptr;
  std::uint64_t records = 0;
  std::vector<FieldStatistics> fields;
  std::vector<Histogram> histograms;
  std::vector<std::vector<std::string>> samples;  // first records, a text for each field
};

struct Report {
  const Layout *layout = nullptr;
  std::string file;
  std::uint64_t bytes = 0;
  const Validator *validator = nullptr;
  std::vector<KindReport> kinds;
};

// One page of HTML that needs nothing else.
std::string report_page(const Report &report);

}  // namespace campotipo::tool
