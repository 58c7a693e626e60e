#include "report/page.hpp"

#include <campotipo/version.h>

#include <algorithm>

#include "pictures/drawings.hpp"
#include "report/style.hpp"
#include "text/quote.hpp"

namespace campotipo::tool {

using namespace campotipo::records;

namespace {

std::string grouped(std::uint64_t number) {
  std::string digits = std::to_string(number);
  for (int at = static_cast<int>(digits.size()) - 3; at > 0; at -= 3) {
    digits.insert(static_cast<std::size_t>(at), "\xE2\x80\xAF");
  }
  return digits;
}

std::string tile(const std::string &number, const std::string &what, const std::string &kind) {
  return "<div class=\"tile " + kind + "\"><b>" + number + "</b>" + what + "</div>\n";
}

std::string section(const std::string &title, const std::string &body) {
  return "<section><h2>" + html(title) + "</h2>\n" + body + "</section>\n";
}

std::string tiles(const Report &report) {
  std::size_t fields = 0;
  for (const RecordType &type : report.layout->types) fields += type.fields.size();
  const std::uint64_t findings = report.validator->findings().total();
  return "<div class=\"tiles\">\n" + tile(grouped(report.validator->records()), "records", "") +
         tile(grouped(report.bytes), "bytes", "") + tile(grouped(fields), "fields", "") +
         (findings == 0 ? tile("0", "invalid values", "good")
                        : tile(grouped(findings), "findings", "bad")) +
         "</div>\n";
}

std::string findings(const Report &report) {
  const FindingCounts &tally = report.validator->findings();
  if (tally.empty()) return "<p>Every value of every record is valid.</p>\n";
  std::string rows;
  for (const FindingCounts::Line &line : tally.lines()) {
    std::string places;
    for (const Location &place : line.entry.places) {
      places += (places.empty() ? "" : "<br>") +
                (place.record == 0 ? "" : "record " + std::to_string(place.record) + ", ") +
                "byte " + std::to_string(place.offset) +
                (place.value.empty() ? "" : ": " + html(place.value));
    }
    rows += "<tr><td>" + html(line.field) + "</td><td>" + html(line.what) +
            "</td><td class=\"n\"><span class=\"badge\">" + grouped(line.entry.count) +
            "</span></td><td class=\"v\">" + places + "</td></tr>\n";
  }
  return "<div class=\"scroll\"><table class=\"findings\"><thead><tr><th>Field</th><th>What is "
         "wrong</th>"
         "<th class=\"n\">Values</th><th>First places</th></tr></thead><tbody>\n" +
         rows + "</tbody></table></div>\n";
}

// The length of texts, up to the longest there is.
std::string length_bars(const FieldStatistics &field) {
  const auto &lengths = field.lengths();
  std::size_t last = lengths.size();
  while (last > 1 && lengths[last - 1] == 0) --last;
  std::vector<std::string> titles;
  for (std::size_t i = 0; i < last; ++i) titles.push_back(std::to_string(i) + " characters");
  const std::string end = last == lengths.size() ? std::to_string(last - 1) + " or more"
                                                 : std::to_string(last - 1) + " characters";
  return bars({lengths.begin(), lengths.begin() + static_cast<std::ptrdiff_t>(last)}, titles,
              "length 0", end);
}

std::string field_card(const FieldStatistics &statistics, const Histogram &histogram) {
  const Field &field = statistics.field();
  const std::string distinct =
      (statistics.distinct().exact() ? "" : "about ") + grouped(statistics.distinct().value());
  std::string out = "<div class=\"field\"><header><h3>" + html(field.name) +
                    "</h3><span class=\"kind\" style=\"background:" + family_colour(*field.type) +
                    "\">" + html(field.type->name) + "</span></header>\n<dl>";
  const auto line = [&](const char *what, const std::string &value) {
    out += std::string("<dt>") + what + "</dt><dd>" + value + "</dd>";
  };
  line("distinct", distinct);
  if (statistics.empty() != 0) line("empty", grouped(statistics.empty()));
  if (!statistics.least().empty()) line("least", html(shortened(statistics.least())));
  if (!statistics.greatest().empty()) line("greatest", html(shortened(statistics.greatest())));
  out += "</dl>\n";
  if (!statistics.few().empty()) {
    out += shares(statistics);
  } else if (histogram.used()) {
    out += bars(histogram.counts(), {}, statistics.least(), statistics.greatest());
  } else if ((field.type->traits & kText) != 0) {
    out += length_bars(statistics);
  }
  return out + "</div>\n";
}

std::string samples(const KindReport &kind) {
  std::string head = "<tr><th class=\"n\">#</th>";
  for (const Field &field : kind.type->fields) head += "<th>" + html(field.name) + "</th>";
  std::string rows;
  for (std::size_t i = 0; i < kind.samples.size(); ++i) {
    rows += "<tr><td class=\"n soft\">" + std::to_string(i + 1) + "</td>";
    for (const std::string &text : kind.samples[i]) rows += "<td>" + html(text) + "</td>";
    rows += "</tr>\n";
  }
  return "<div class=\"scroll\"><table class=\"samples\"><thead>" + head +
         "</tr></thead><tbody>\n" + rows + "</tbody></table></div>\n";
}

std::string kind_sections(const Report &report, const KindReport &kind) {
  const std::string suffix =
      report.layout->several() ? ": " + kind.type->name + " (" + std::to_string(kind.records) + ")"
                               : "";
  std::string cards = "<div class=\"fields\">\n";
  for (std::size_t i = 0; i < kind.fields.size(); ++i) {
    cards += field_card(kind.fields[i], kind.histograms[i]);
  }
  return section("Layout" + suffix,
                 "<div class=\"scroll picture\">" + svg(*report.layout, *kind.type) + "</div>\n") +
         section("Fields" + suffix, cards + "</div>\n") +
         section("First records" + suffix,
                 kind.samples.empty() ? "<p>There are none.</p>\n" : samples(kind));
}

}  // namespace

std::string report_page(const Report &report) {
  const std::size_t slash = report.file.rfind('/');
  const std::string title = report.file.substr(slash == std::string::npos ? 0 : slash + 1);
  std::string page =
      "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
      "<link rel=\"icon\" href=\"data:,\">\n<title>" +
      html(title) + "</title>\n<style>" + kStyle + "</style>\n</head>\n<body>\n<main>\n" + "<h1>" +
      html(title) + "</h1>\n<div class=\"soft\">Records of " + html(report.layout->name) + ", as " +
      html(report.layout->file) + " tells them</div>\n" + tiles(report) +
      section("Findings", findings(report));
  for (const KindReport &kind : report.kinds) page += kind_sections(report, kind);
  return page + "<footer>campotipo " CAMPOTIPO_VERSION "</footer>\n</main>\n</body>\n</html>\n";
}

}  // namespace campotipo::tool
