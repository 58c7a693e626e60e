#include "pictures/drawings.hpp"

#include <algorithm>
#include <set>
#include <string_view>

#include "kinds/dates.hpp"
#include "text/ascii.hpp"

namespace campotipo::tool {

using namespace campotipo::records;

std::vector<Span> spans(const RecordType &record) {
  std::vector<Span> all;
  for (const Field &field : record.fields) {
    if (is_bit_area(*field.type) && !all.empty() && all.back().offset == field.offset) {
      all.back().parts.push_back(&field);
      continue;
    }
    std::string name = field.name;
    if (is_bit_area(*field.type))
      name = path_name({field.path.begin(), field.path.end() - 1}, true);
    all.push_back({name, field.offset, field.bytes, &field, {}});
    if (is_bit_area(*field.type)) all.back().parts.push_back(&field);
  }
  for (const Field &filler : record.fillers) {
    all.push_back({filler.name, filler.offset, filler.bytes, &filler, {}});
  }
  std::sort(all.begin(), all.end(),
            [](const Span &a, const Span &b) { return a.offset < b.offset; });
  return all;
}

namespace {

// What else is told of a field that is stored as characters.
std::string characters_text(const Field &field) {
  const Params &p = field.params;
  const unsigned keys = field.type->keys;
  if ((keys & kStored) != 0) {
    return p.stored ? " " + p.stored->text : p.n == 4 ? " HHMM" : " HHMMSS";
  }
  constexpr const char *kSigns[] = {"", ", leading sign", ", trailing sign", ", overpunched sign"};
  const std::string sign = kSigns[static_cast<int>(p.sign)];
  return p.pad == '\0' ? sign : sign + ", filled with '" + p.pad + "'";
}

}  // namespace

std::string type_text(const Span &span) {
  const Field &field = *span.field;
  const Params &p = field.params;
  std::string text = field.type->name;
  const unsigned keys = field.type->keys;
  if ((keys & (kPositions | kBytes | kDigits)) != 0 && !is_fill(*field.type))
    text += " " + std::to_string(p.n);
  text += characters_text(field);
  if (!span.parts.empty()) {
    text += p.big ? " big:" : " little:";
    for (const Field *part : span.parts) {
      text += " " + part->path.back().key + ":" + std::to_string(part->params.n);
    }
  }
  if ((keys & kDecimals) != 0 && p.decimals > 0) {
    text += ", " + std::to_string(p.decimals) + " decimals";
  }
  if ((keys & kDateEncoding) != 0 && p.encoding != DateEncoding::kBoth) {
    text += p.encoding == DateEncoding::kPacked ? ", packed" : ", decimal";
  }
  if (field.check != nullptr) text += ", " + std::string(field.check->name);
  return text;
}

namespace {

using ascii::capitals;

// The word, with a number behind it where another has the same letters: macros are in capitals.
std::string unique(const std::string &base, std::set<std::string> &taken) {
  std::string word = base;
  for (int i = 2; !taken.insert(capitals(word)).second; ++i) word = base + "_" + std::to_string(i);
  return word;
}

// Keywords and other names of operators in C up to C23 and C++ up to C++23, and words that a compiler
// or a usual header defines as macros.
constexpr std::string_view kWords =
    " alignas alignof and and_eq asm auto bitand bitor bool break case catch char char8_t "
    "char16_t char32_t class compl concept const consteval constexpr constinit const_cast "
    "continue co_await co_return co_yield decltype default delete do double dynamic_cast else "
    "enum explicit export extern false float for friend goto if inline int long mutable "
    "namespace new noexcept not not_eq nullptr operator or or_eq private protected public "
    "register reinterpret_cast requires restrict return short signed sizeof static static_assert "
    "static_cast struct switch template this thread_local throw true try typedef typeid typename "
    "typeof typeof_unqual union unsigned using virtual void volatile wchar_t while xor xor_eq "
    "errno linux unix NULL EOF ";

}  // namespace

std::string c_name(const std::string &name, std::set<std::string> &taken) {
  std::string word;
  for (const char c : name) {
    const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
    word += plain ? c : '_';
  }
  if (word.empty() || (word[0] >= '0' && word[0] <= '9') || word[0] == '_') word = "f" + word;
  if (kWords.find(" " + word + " ") != std::string_view::npos) word += "_";
  return unique(word, taken);
}

namespace {

// Text inside a comment of C, which it neither ends nor begins anew.
std::string in_comment(std::string text) {
  for (std::size_t at = 1; at < text.size(); ++at) {
    if (text[at - 1] == '*' && text[at] == '/') text[at - 1] = '+';
    if (text[at - 1] == '/' && text[at] == '*') text[at] = '+';
  }
  return text;
}

std::string c_struct(const RecordType &record, const std::string &name,
                     std::set<std::string> &macros_taken) {
  std::set<std::string> taken;
  std::string macros =
      "#define " + capitals(name) + "_BYTES " + std::to_string(record.bytes) + "\n";
  std::string members;
  for (const Span &span : spans(record)) {
    const std::string member = c_name(span.name, taken);
    const std::string macro = unique(capitals(name + "_" + member), macros_taken);
    macros += "#define " + macro + "_OFFSET " + std::to_string(span.offset) + "\n";
    members += "  unsigned char " + member + "[" + std::to_string(span.bytes) + "]; /* " +
               in_comment(type_text(span)) + " */\n";
  }
  return macros + "\ntypedef struct " + name + " {\n" + members + "} " + name + ";\n\n" +
         "/* Members of characters leave no gap: a record is copied as it stands in the file. "
         "*/\n" +
         "typedef char " + name + "_has_no_gap[sizeof(" + name + ") == " + capitals(name) +
         "_BYTES ? 1 : -1];\n";
}

std::string quoted(const std::string &name) {
  std::string text = "\"";
  for (const char c : name) text += c == '"' ? std::string("\"\"") : std::string(1, c);
  return text + "\"";
}

std::string sql_type(const Field &field) {
  const Params &p = field.params;
  const int extra = (field.type->keys & kDecimals) != 0 && field.type->bytes <= 8 ? 1 : 0;
  const int count = std::max(field.type->count == 0 ? p.n : field.type->count + extra, p.decimals);
  std::string text = field.type->sql;
  const auto put = [&](std::string_view mark, int number) {
    const std::size_t at = text.find(mark);
    if (at != std::string::npos) text.replace(at, mark.size(), std::to_string(number));
  };
  put("%d", count);
  put("%s", p.decimals);
  return text;
}

std::string sql_column(const RecordType &record, const Column &column) {
  if (column.fields.size() == 1) return sql_type(record.fields[column.fields[0]]);
  const bool moment = column.fields.size() == 2 &&
                      std::string_view(record.fields[column.fields[0]].type->sql) == "DATE" &&
                      std::string_view(record.fields[column.fields[1]].type->sql) == "TIME";
  return moment ? "TIMESTAMP" : "VARCHAR(100)";
}

}  // namespace

std::string c_header(const Layout &layout) {
  std::set<std::string> taken;
  std::set<std::string> macros;
  std::set<std::string> guards;
  const std::string guard = capitals(c_name(layout.name, guards)) + "_RECORD_H";
  std::string text = "/* Made by \"campotipo layout --header\" from " + in_comment(layout.file) +
                     ". */\n#ifndef " + guard + "\n#define " + guard + "\n";
  for (const RecordType &record : layout.types) {
    text += "\n/* Record " + in_comment(record.name) + " */\n";
    text += c_struct(record, c_name(record.name, taken), macros);
  }
  return text + "\n#endif\n";
}

std::string sql_tables(const Layout &layout) {
  std::string text;
  for (const RecordType &record : layout.types) {
    text +=
        (text.empty() ? "" : "\n") + std::string("CREATE TABLE ") + quoted(record.name) + " (\n";
    for (std::size_t i = 0; i < record.columns.size(); ++i) {
      const Column &column = record.columns[i];
      text += "  " + quoted(column.name) + " " + sql_column(record, column) +
              (i + 1 < record.columns.size() ? ",\n" : "\n");
    }
    text += ");\n";
  }
  return text;
}

}  // namespace campotipo::tool
