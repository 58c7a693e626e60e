#include "columns/plan.hpp"

#include "errors/error.hpp"
#include "text/nearest.hpp"

namespace campotipo::records {

namespace {

using Source = PlannedColumn::Source;

constexpr struct {
  const char *name;
  Source source;
  Physical physical;
} kBeside[] = {{"_record", Source::kRecord, Physical::kInt64},
               {"_file", Source::kFile, Physical::kUtf8},
               {"_fault", Source::kFault, Physical::kUtf8}};

PlannedColumn beside(Source wanted) {
  for (const auto &[name, source, physical] : kBeside) {
    if (source == wanted) return {name, source, nullptr, {physical}, nullptr};
  }
  return {};
}

PlannedColumn of_field(const Field &field, const ColumnOptions &options) {
  const ColumnType type = column_type(field, options.wide, options.times);
  return {field.flat, Source::kField, &field, type, kernels().decode(*field.type, type)};
}

PlannedColumn named_column(const ColumnPlan &plan, const ColumnOptions &options,
                           const std::string &name) {
  for (const auto &known : kBeside) {
    if (name == known.name) return beside(known.source);
  }
  std::vector<std::string> names;
  for (const Field &field : plan.kind->fields) {
    names.push_back(field.flat);
    if (names.back() == name) return of_field(field, options);
  }
  const std::string near = nearest(name, names);
  throw Error(ErrorCode::kArgument, plan.layout->file + ": no field of \"" + plan.kind->name +
                                        "\" is called \"" + name + "\"" +
                                        (near.empty() ? "" : ", expected \"" + near + "\"?"));
}

}  // namespace

const RecordType &kind_for(const Layout &layout, const std::string &name) {
  if (name.empty() && !layout.several()) return layout.types[0];
  std::string all;
  for (const RecordType &type : layout.types) {
    if (type.name == name || (name.empty() && type.main)) return type;
    all += (all.empty() ? "" : ", ") + type.name;
  }
  if (name.empty()) {
    throw Error(ErrorCode::kArgument, layout.file +
                                          ": has several kinds of record, one of them has "
                                          "to be asked for: " +
                                          all);
  }
  throw Error(ErrorCode::kArgument, layout.file + ": no kind of record is called \"" + name +
                                        "\", expected one of " + all);
}

ColumnPlan column_plan(const Layout &layout, const ColumnOptions &options) {
  ColumnPlan plan;
  plan.layout = &layout;
  plan.kind = &kind_for(layout, options.kind);
  plan.faults_become_null = options.faults_become_null;
  plan.file = options.file;
  if (!options.fields.empty()) {
    for (const std::string &name : options.fields) {
      plan.columns.push_back(named_column(plan, options, name));
      if (plan.columns.back().source == Source::kFault && !options.faults_become_null) {
        throw Error(ErrorCode::kArgument, "_fault is there only where faults become null");
      }
      if (plan.columns.back().source == Source::kFile && options.file.empty()) {
        throw Error(ErrorCode::kArgument, "_file is there only where the file has a name");
      }
    }
    return plan;
  }
  if (options.record_numbers) plan.columns.push_back(beside(Source::kRecord));
  if (!options.file.empty()) plan.columns.push_back(beside(Source::kFile));
  for (const Field &field : plan.kind->fields) {
    plan.columns.push_back(of_field(field, options));
  }
  if (options.faults_become_null) plan.columns.push_back(beside(Source::kFault));
  return plan;
}

}  // namespace campotipo::records
