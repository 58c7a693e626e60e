#include "fields/checks.hpp"

#include <campotipo/idnumbers.h>

#include <algorithm>
#include <string>

namespace campotipo::tool {

namespace {

constexpr NamedCheck kChecks[] = {
    {"CPF", "CPF", "check digits of a CPF fail", ZALGORITM_valida_CPF},
    {"CNPJ", "CNPJ", "check digits of a CNPJ fail", ZALGORITM_valida_CNPJ},
    {"modulo11", "modulo 11", "check digit modulo 11 fails", DIGVERIF_monta_dv_modulo11},
};

}  // namespace

std::span<const NamedCheck> named_checks() { return kChecks; }

const NamedCheck *named_check(std::string_view name) {
  const auto *found = std::find_if(std::begin(kChecks), std::end(kChecks),
                                   [&](const NamedCheck &check) { return name == check.name; });
  return found == std::end(kChecks) ? nullptr : found;
}

bool holds(const NamedCheck &check, std::string_view text) {
  std::string clean;
  for (const char c : text) {
    if (std::string_view(".-/ ").find(c) == std::string_view::npos) clean += c;
  }
  if (clean.find_first_not_of('0') == std::string::npos) return true;
  return check.holds(clean.data(), 0) != 0;
}

}  // namespace campotipo::tool
