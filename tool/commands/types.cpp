#include "commands/commands.hpp"
#include "kinds/checks.hpp"
#include "kinds/type.hpp"
#include "terminal/aligned.hpp"
#include "terminal/failure.hpp"
#include "terminal/output.hpp"

namespace campotipo::tool {

using namespace campotipo::records;

namespace {

constexpr const char *kExample = "Example:\n  campotipo types";

std::string size(int number, const char *unit) {
  return number == 0 ? std::string("variable") : std::to_string(number) + " " + unit;
}

std::string keys(const FieldType &type) {
  constexpr struct {
    unsigned key;
    const char *name;
  } kNames[] = {{kPositions, "positions"}, {kBytes, "bytes"},     {kDigits, "digits"},
                {kDecimals, "decimals"},   {kOptions, "options"}, {kFold, "fold"},
                {kEncoding, "encoding"},   {kFormat, "format"},   {kDateEncoding, "encoding"},
                {kSeparator, "separator"}, {kSign, "sign"},       {kPad, "pad"},
                {kStored, "stored"},       {kPivot, "pivot"},     {kEmpty, "empty"},
                {kBits, "bits, order"},    {kValue, "value, hex"}};
  std::string all;
  for (const auto &[key, name] : kNames) {
    if ((type.keys & key) != 0) all += (all.empty() ? "" : ", ") + std::string(name);
  }
  return all;
}

int types() {
  Output output("");
  AlignedTable table({{"type"}, {"kind"}, {"bytes", true}, {"holds"}, {"text"}, {"keys"}}, output);
  for (const FieldType &type : field_types()) {
    table.add({type.name, type.family, size(type.bytes, ""), size(type.count, type.unit), type.form,
               keys(type)});
  }
  table.finish();
  std::string checks;
  for (const NamedCheck &check : named_checks()) checks += std::string(" ") + check.name;
  output.write("\nEvery field may have: name, count, column, join, check (one of" + checks +
               ").\n");
  output.commit();
  return kGood;
}

}  // namespace

void add_types(CLI::App &app, Action &action) {
  CLI::App *command = app.add_subcommand("types", "List the field types");
  command->footer(kExample);
  command->callback([&action] { action = types; });
}

}  // namespace campotipo::tool
