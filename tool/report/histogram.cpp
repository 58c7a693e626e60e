#include "report/histogram.hpp"

#include <algorithm>
#include <cstdio>

#include "findings/finding_counts.hpp"
#include "text/quote.hpp"

namespace campotipo::tool {

using namespace campotipo::records;

namespace {

constexpr int kHeight = 40;
constexpr double kWidth = 220;

std::string number(double value) {
  char digits[32];
  std::snprintf(digits, sizeof digits, "%.1f", value);
  return digits;
}

}  // namespace

Histogram::Histogram(const FieldStatistics &field)
    : field_(&field), used_(field.measured() && field.high() > field.low()), counts_(kBars) {}

void Histogram::add(const unsigned char *record) {
  const Field &field = field_->field();
  const bool empty = field_empty(field, record);
  if (!used_ || (empty && (field.type->traits & kRight) == 0)) return;
  const double value = field.type->measure(record + field.offset, field.params);
  // A value that the first reading did not meet: the file has changed.
  if (!(value >= field_->low() && value <= field_->high())) return;
  const double part = (value - field_->low()) / (field_->high() - field_->low());
  ++counts_[std::min(kBars - 1, static_cast<std::size_t>(part * double(kBars)))];
}

std::string bars(const std::vector<std::uint64_t> &counts, const std::vector<std::string> &titles,
                 const std::string &left, const std::string &right) {
  const std::uint64_t most =
      std::max<std::uint64_t>(1, *std::max_element(counts.begin(), counts.end()));
  const double step = kWidth / double(counts.size());
  std::string out = "<svg class=\"bars\" viewBox=\"0 0 " + number(kWidth) + " " +
                    std::to_string(kHeight + 1) +
                    "\" preserveAspectRatio=\"none\" role=\"img\" "
                    "aria-label=\"distribution\">";
  for (std::size_t i = 0; i < counts.size(); ++i) {
    if (counts[i] == 0) continue;
    const double height = std::max(1.5, double(counts[i]) / double(most) * kHeight);
    out += "<rect x=\"" + number(double(i) * step + 0.5) + "\" y=\"" + number(kHeight - height) +
           "\" width=\"" + number(std::max(1.0, step - 1)) + "\" height=\"" + number(height) +
           "\"><title>" +
           html((i < titles.size() ? titles[i] + ": " : "") + std::to_string(counts[i])) +
           "</title></rect>";
  }
  return out + "<path d=\"M0 " + std::to_string(kHeight) + ".5h" + number(kWidth) +
         "\"/></svg><div class=\"ends\"><span>" + html(left) + "</span><span>" + html(right) +
         "</span></div>";
}

std::string shares(const FieldStatistics &field) {
  std::vector<std::pair<std::string, std::uint64_t>> rows(field.few().begin(), field.few().end());
  std::stable_sort(rows.begin(), rows.end(),
                   [](const auto &a, const auto &b) { return a.second > b.second; });
  std::string out = "<ul class=\"shares\">";
  for (const auto &[text, count] : rows) {
    const double part = 100 * double(count) / double(std::max<std::uint64_t>(1, field.count()));
    out += "<li><span class=\"fill\" style=\"width:" + number(part) + "%\"></span><span>" +
           (text.empty() ? "<i>empty</i>" : html(shortened(text))) + "</span><b>" +
           std::to_string(count) + "</b></li>";
  }
  return out + "</ul>";
}

}  // namespace campotipo::tool
