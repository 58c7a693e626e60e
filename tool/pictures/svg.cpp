#include <algorithm>
#include <cstdio>
#include <map>

#include "pictures/drawings.hpp"
#include "text/quote.hpp"
#include "text/utf8.hpp"

namespace campotipo::tool {

using namespace campotipo::records;

namespace {

constexpr int kWidth = 960;
constexpr int kMargin = 56;  // for the offsets on the left
constexpr int kRow = 46;
constexpr int kTop = 64;
constexpr std::size_t kMostRows = 24;
constexpr double kLetter = 7.2;  // mean width of one, in the size that names are written in

std::size_t bytes_in_row(std::size_t bytes) {
  if (bytes <= 16) return std::max<std::size_t>(bytes, 4);
  std::size_t row = 32;
  while ((bytes + row - 1) / row > kMostRows) row *= 2;
  return row;
}

class Picture {
 public:
  explicit Picture(const RecordType &record)
      : record_(&record),
        row_bytes_(bytes_in_row(record.bytes)),
        scale_(double(kWidth - kMargin - 2) / double(row_bytes_)) {}

  std::string draw(const std::string &title) {
    const std::size_t rows = (record_->bytes + row_bytes_ - 1) / row_bytes_;
    const int height = kTop + static_cast<int>(rows) * kRow + 42;
    out_ = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " + number(kWidth) + " " +
           number(height) + "\" role=\"img\" font-family=\"system-ui, sans-serif\" " +
           "font-size=\"12\">\n<title>" + html(title) + "</title>\n" +
           "<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n" + "<text x=\"" +
           number(kMargin) +
           "\" y=\"22\" font-size=\"15\" font-weight=\"600\" "
           "fill=\"#1c2430\">" +
           html(title) + "</text>\n";
    ruler();
    for (std::size_t row = 0; row < rows; ++row) {
      out_ += text(kMargin - 8, kTop + double(row) * kRow + 25, std::to_string(row * row_bytes_),
                   "end", "#7a8594");
    }
    for (const Span &span : spans(*record_)) draw(span);
    legend(height - 14);
    return out_ + "</svg>\n";
  }

 private:
  static std::string number(double value) {
    char digits[32];
    std::snprintf(digits, sizeof digits, "%.1f", value);
    std::string short_form = digits;
    if (short_form.ends_with(".0")) short_form.resize(short_form.size() - 2);
    return short_form;
  }

  static std::string text(double x, double y, const std::string &what, const char *anchor,
                          const char *colour) {
    return "<text x=\"" + number(x) + "\" y=\"" + number(y) + "\" text-anchor=\"" + anchor +
           "\" fill=\"" + colour + "\">" + html(what) + "</text>\n";
  }

  void ruler() {
    const std::size_t step = std::max<std::size_t>(1, row_bytes_ / 8);
    for (std::size_t byte = 0; byte < row_bytes_; byte += step) {
      const double x = kMargin + double(byte) * scale_;
      out_ += "<path d=\"M" + number(x) + " " + number(kTop - 10) + "v6\" stroke=\"#b9c2cd\"/>\n";
      out_ += text(x, kTop - 14, "+" + std::to_string(byte), "start", "#7a8594");
    }
  }

  // A span that does not end with its row goes on in the next one; its name stands in the longest
  // piece.
  void draw(const Span &span) {
    families_[span.field->type->family] = family_colour(*span.field->type);
    struct Piece {
      double x, y, width;
    };
    std::vector<Piece> pieces;
    for (std::size_t at = span.offset; at < span.offset + span.bytes;) {
      const std::size_t row = at / row_bytes_;
      const std::size_t end = std::min(span.offset + span.bytes, (row + 1) * row_bytes_);
      pieces.push_back({kMargin + double(at % row_bytes_) * scale_, kTop + double(row) * kRow,
                        double(end - at) * scale_});
      at = end;
    }
    out_ += "<g><title>" +
            html(span.name + ": bytes " + std::to_string(span.offset) + " to " +
                 std::to_string(span.offset + span.bytes - 1) + ", " + type_text(span)) +
            "</title>\n";
    const Piece *longest = &pieces[0];
    for (const Piece &piece : pieces) {
      if (piece.width > longest->width) longest = &piece;
      out_ += "<rect x=\"" + number(piece.x + 1) + "\" y=\"" + number(piece.y) + "\" width=\"" +
              number(std::max(1.0, piece.width - 2)) + "\" height=\"" + number(kRow - 8) +
              "\" rx=\"3\" fill=\"" + family_colour(*span.field->type) +
              "\" stroke=\"#00000022\"/>\n";
    }
    label(span, longest->x, longest->y, longest->width);
    out_ += "</g>\n";
  }

  void label(const Span &span, double x, double y, double width) {
    const auto fits = [&](const std::string &what) {
      return double(utf8::length(what)) * kLetter < width - 8;
    };
    const std::string size = std::string(span.field->type->name) + " · " +
                             std::to_string(span.bytes) + (span.bytes == 1 ? " byte" : " bytes");
    std::string name = is_fill(*span.field->type) ? "" : span.name;
    if (!fits(name)) {
      const auto letters = static_cast<std::size_t>(std::max(0.0, (width - 16) / kLetter));
      name = letters < 3 ? "" : utf8::first(name, letters) + "…";
    }
    if (name.empty() && !is_fill(*span.field->type)) return upright(span.name, x, y, width);
    if (!name.empty()) out_ += text(x + 6, y + 16, name, "start", "#1c2430");
    const std::string below = fits(size) ? size : std::to_string(span.bytes);
    if (fits(below)) out_ += text(x + 6, y + 31, below, "start", "#4c5866");
  }

  // A field of a byte or two is as high as its name is long.
  void upright(const std::string &name, double x, double y, double width) {
    constexpr double kSmall = 4.4;
    const auto letters = static_cast<std::size_t>((kRow - 12) / kSmall);
    const std::string shown =
        utf8::length(name) <= letters ? name : utf8::first(name, letters - 1) + "…";
    const std::string place = number(x + width / 2 + 3) + " " + number(y + kRow - 11);
    out_ += "<text transform=\"translate(" + place +
            ") rotate(-90)\" font-size=\"8\" fill=\"#1c2430\">" + html(shown) + "</text>\n";
  }

  void legend(double y) {
    double x = kMargin;
    for (const auto &[family, colour] : families_) {
      out_ += "<rect x=\"" + number(x) + "\" y=\"" + number(y - 10) +
              "\" width=\"12\" height=\"12\" rx=\"2\" fill=\"" + colour +
              "\" stroke=\"#00000022\"/>\n";
      out_ += text(x + 17, y, family, "start", "#4c5866");
      x += 30 + double(family.size()) * 6.6;
    }
  }

  const RecordType *record_;
  std::size_t row_bytes_;
  double scale_;
  std::map<std::string, std::string> families_;
  std::string out_;
};

}  // namespace

const char *family_colour(const FieldType &type) {
  constexpr struct {
    std::string_view family;
    const char *colour;
  } kColours[] = {
      {"packed code", "#bfd9ff"},    {"string", "#d4e8fc"},         {"digit string", "#c9e4de"},
      {"binary number", "#fde2b8"},  {"wide quantity", "#fbd0a5"},  {"percent", "#f9e79f"},
      {"money value", "#cdeac0"},    {"date", "#e2cff4"},           {"time of day", "#f0d4ee"},
      {"text", "#dcecc9"},           {"digits", "#c2e5ea"},         {"number in digits", "#ffe8a3"},
      {"date in digits", "#dccbf5"}, {"time in digits", "#f7d0e2"}, {"bit area", "#ffd1d1"},
      {"GUID", "#d6dbe6"},           {"unused bytes", "#eef0f3"}};
  for (const auto &[family, colour] : kColours) {
    if (family == type.family) return colour;
  }
  return "#ffffff";
}

std::string svg(const Layout &layout, const RecordType &record) {
  const std::string kind = layout.several() ? layout.name + ": " + record.name : record.name;
  return Picture(record).draw(kind + ", " + std::to_string(record.bytes) + " bytes");
}

}  // namespace campotipo::tool
