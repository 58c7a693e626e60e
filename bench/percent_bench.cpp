#include <campotipo-support/money.h>
#include <campotipo/percent.h>
#include <gmp.h>

#include <boost/multiprecision/cpp_dec_float.hpp>
#include <cmath>
#include <cstring>
#include <random>
#include <string>

#include "bench/subsystems.hpp"
#include "tests/members/percent.hpp"

namespace campotipo::bench {
namespace {

// 512 amounts and percents of two decimals.
struct Amounts {
  Amounts() {
    std::mt19937_64 random(5);
    for (std::size_t i = 0; i < kInputs; ++i) {
      units[i] = static_cast<long>(random() % 100000000000);
      stored[i] = static_cast<std::uint16_t>(1 + random() % 9999);
      _QUANTIA_atov(&value[i], (std::to_string(units[i] / 100) + '.' +
                                std::to_string(100 + units[i] % 100).substr(1))
                                   .c_str());
      std::memcpy(percent[i], &stored[i], 2);
      mpz_init_set_si(gmp[i], units[i]);
    }
  }
  QUANTIA value[kInputs];
  unsigned char percent[kInputs][2];
  long units[kInputs];
  std::uint16_t stored[kInputs];
  mpz_t gmp[kInputs];
};

// Units of a value, read out of its text.
std::string units_of(const QUANTIA &value) {
  char text[QUANTIA_TEXT_SIZE];
  std::string digits = _QUANTIA_vtoa(text, &value);
  digits.erase(digits.size() - 3, 1);
  return std::to_string(std::stol(digits));
}

boost::multiprecision::cpp_dec_float_50 decimal_product(const Amounts &amounts, std::size_t i) {
  using Decimal = boost::multiprecision::cpp_dec_float_50;
  return floor(Decimal(amounts.units[i]) * amounts.stored[i] / 10000 + Decimal(0.5));
}

constexpr const test::Family &kNone = test::kFamilies[0], &kTwo = test::kFamilies[2];
static_assert(kNone.kind.decimals == 0 && kTwo.kind.decimals == 2);
constexpr const char *kRules[] = {"cut", "five up", "NBR"};
constexpr unsigned kFiveUp = 1;

void rules(const Amounts &amounts) {
  static QUANTIA out;
  static mpz_t product;
  mpz_init2(product, 192);
  for (unsigned rule = 0; rule < std::size(kRules); ++rule) {
    const auto multiply = kTwo.multiply[rule];
    Task task("percent", std::string("two decimals, ") + kRules[rule], 15);
    task.ours(
        [&, multiply](std::size_t i) {
          multiply(&out, &amounts.value[i], amounts.percent[i]), clobber();
        },
        [&](std::size_t i) {
          return multiply(&out, &amounts.value[i], amounts.percent[i]), units_of(out);
        });
    if (rule != kFiveUp) continue;
    task.peer(
            "GMP",
            [&](std::size_t i) {
              mpz_mul_ui(product, amounts.gmp[i], amounts.stored[i]);
              mpz_add_ui(product, product, 5000);
              mpz_tdiv_q_ui(product, product, 10000);
              clobber();
            },
            [&](std::size_t i) {
              mpz_mul_ui(product, amounts.gmp[i], amounts.stored[i]);
              mpz_add_ui(product, product, 5000);
              mpz_tdiv_q_ui(product, product, 10000);
              return std::to_string(mpz_get_si(product));
            })
        .peer(
            "cpp_dec_float_50", [&](std::size_t i) { keep(decimal_product(amounts, i)); },
            [&](std::size_t i) {
              return std::to_string(decimal_product(amounts, i).convert_to<long>());
            })
        .peer("double and llround (not exact)", [&](std::size_t i) {
          keep(std::llround(static_cast<double>(amounts.units[i]) * amounts.stored[i] / 10000.0));
        });
  }
}

// The base found back, for targets and percents far apart: the cost does not follow them.
void inverses() {
  static QUANTIA out;
  for (const char *target : {"10", "10000", "10000000000"}) {
    QUANTIA &value = *new QUANTIA;
    _QUANTIA_atov(&value, target);
    for (unsigned char percent : {1, 25, 60, 99}) {
      Task("growth", std::string("base found back, target ") + target + ".00, percent/" +
                         std::to_string(percent))
          .ours([&, percent](std::size_t) { kNone.search[0](&out, &value, &percent), clobber(); });
    }
  }
  QUANTIA &target = *new QUANTIA;
  _QUANTIA_atov(&target, "10000");
  static const unsigned char percent = 25;
  Task("percent", "base found back, target 10^6 units, 25%", 1500)
      .ours([&](std::size_t) { kNone.search[0](&out, &target, &percent), clobber(); },
            [&](std::size_t) { return kNone.search[0](&out, &target, &percent), units_of(out); });
}

void texts(const Amounts &amounts) {
  static char text[16];
  Task("percent", "print two decimals", 0)
      .ours([&](std::size_t i) { kTwo.edit[0](text, amounts.percent[i]), clobber(); },
            [&](std::size_t i) { return std::string(kTwo.edit[0](text, amounts.percent[i])); })
      .peer(
          "snprintf",
          [&](std::size_t i) {
            std::snprintf(text, sizeof text, "%u.%02u%%", amounts.stored[i] / 100u,
                          amounts.stored[i] % 100u);
            clobber();
          },
          [&](std::size_t i) {
            std::snprintf(text, sizeof text, "%u.%02u%%", amounts.stored[i] / 100u,
                          amounts.stored[i] % 100u);
            return std::string(text);
          });
}

}  // namespace

void register_percent() {
  static const Amounts amounts;
  rules(amounts);
  inverses();
  texts(amounts);
}

}  // namespace campotipo::bench
