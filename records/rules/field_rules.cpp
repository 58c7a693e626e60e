#include "rules/field_rules.hpp"

#include <algorithm>
#include <cstring>

namespace campotipo::records {

namespace {

int order(const Field &field, const unsigned char *record, const std::string &stored) {
  const auto *bound = reinterpret_cast<const unsigned char *>(stored.data());
  return field.type->compare(record + field.offset, bound, field.params);
}

std::string text_of(const Field &field, const std::string &stored) {
  std::string record(field.offset, '\0');
  record += stored;
  return field_text(field, reinterpret_cast<const unsigned char *>(record.data()));
}

bool fail(Breach &breach, What what, std::string text, std::string expected = "") {
  breach = {what, std::move(text), std::move(expected)};
  return false;
}

bool check_holds(const RecordType &type, const FieldRules &rules, const unsigned char *record,
                 Breach &breach) {
  const Field &by = type.fields[rules.check_by];
  for (const auto &[stored, check] : rules.checks) {
    if (!has_form(by, record, stored)) continue;
    const Field &field = type.fields[rules.field];
    if (holds(*check, field_text(field, record))) return true;
    return fail(breach, What::kCheckDigit, check->fault);
  }
  return true;
}

}  // namespace

const FieldRules *rules_of(const RecordType &type, const Field &field) {
  for (const FieldRules &rules : type.rules) {
    if (&type.fields[rules.field] == &field) return &rules;
  }
  return nullptr;
}

const Condition *condition_of(const RecordType &type, const Field &field) {
  for (const Condition &condition : type.when) {
    if (&type.fields[condition.field] == &field) return &condition;
  }
  return nullptr;
}

const std::string *constant_of(const RecordType &type, const Field &field) {
  if (const Condition *condition = condition_of(type, field)) {
    return condition->stored.size() == 1 ? condition->stored.data() : nullptr;
  }
  const FieldRules *rules = rules_of(type, field);
  return rules != nullptr && rules->constant ? &rules->values[0].stored : nullptr;
}

bool is_filled(const RecordType &type, const Field &field) {
  const FieldRules *rules = rules_of(type, field);
  return constant_of(type, field) != nullptr || (rules != nullptr && rules->follows());
}

bool has_form(const Field &field, const unsigned char *record, const std::string &stored) {
  return std::memcmp(record + field.offset, stored.data(), field.bytes) == 0;
}

bool obeys(const RecordType &type, const FieldRules &rules, const unsigned char *record,
           Breach &breach) {
  const Field &field = type.fields[rules.field];
  if (rules.constant) {
    if (has_form(field, record, rules.values[0].stored)) return true;
    return fail(breach, What::kConstant, "not the value that it always has", rules.values[0].text);
  }
  const bool listed = std::any_of(rules.values.begin(), rules.values.end(), [&](const auto &value) {
    return has_form(field, record, value.stored);
  });
  const bool looks = rules.required || !rules.values.empty() || !rules.least.empty() ||
                     !rules.greatest.empty() || rules.check_by != FieldRules::kNone;
  if (!listed && looks && field_absent(field, record)) {
    if (!rules.required) return true;
    return fail(breach, What::kRequired, "has no value, and must have one");
  }
  const bool known = rules.values.empty() || listed;
  if (!known) return fail(breach, What::kNotAllowed, "none of the values that it may have");
  if (!rules.least.empty() && order(field, record, rules.least) < 0) {
    return fail(breach, What::kOutOfRange, "less than " + text_of(field, rules.least));
  }
  if (!rules.greatest.empty() && order(field, record, rules.greatest) > 0) {
    return fail(breach, What::kOutOfRange, "greater than " + text_of(field, rules.greatest));
  }
  return rules.check_by == FieldRules::kNone || check_holds(type, rules, record, breach);
}

}  // namespace campotipo::records
