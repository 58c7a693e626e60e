#include <campotipo-support/numbers.h>
#include <campotipo/campotipo.h>
#include <fmt/compile.h>
#include <gmp.h>

#include <boost/multiprecision/cpp_int.hpp>
#include <charconv>
#include <cstring>
#include <random>
#include <vector>

#include "bench/subsystems.hpp"
#include "tests/members/numeric.hpp"

namespace campotipo::bench {
namespace {

constexpr const test::Numeric &kEight = test::kBinaries[8 - 1];
constexpr const test::Numeric &kThirtyEight = test::kQuantities[16 - 9];
constexpr const test::Numeric &kFifty = test::kQuantities[21 - 9];
static_assert(kEight.bytes == 8 && kThirtyEight.digits == 38 && kFifty.digits == 50);

std::mt19937_64 random_words(7);

// 512 numbers as text, without leading zeros, each of `digits` digits or, for 0, of 8 to 19.
struct Texts {
  explicit Texts(std::size_t digits) : of(kInputs) {
    for (std::string &text : of) {
      const std::size_t count = digits != 0 ? digits : 8 + random_words() % 12;
      text.resize(count);
      for (char &digit : text) digit = static_cast<char>('0' + random_words() % 10);
      text[0] = static_cast<char>('1' + random_words() % 9);
    }
  }
  std::vector<std::string> of;
};

struct Word {
  alignas(64) unsigned char bytes[kInputs][8];
  explicit Word(const Texts &texts) {
    for (std::size_t i = 0; i < kInputs; ++i) kEight.from_text(bytes[i], texts.of[i].c_str());
  }
  std::uint64_t value(std::size_t i) const {
    std::uint64_t word;
    std::memcpy(&word, bytes[i], 8);
    return word;
  }
};

// Inputs live as long as the program: the timed operations refer to them.
template <class T, class... Arguments>
const T &lasting(Arguments &&...arguments) {
  return *new T(std::forward<Arguments>(arguments)...);
}

void eight_bytes(std::size_t digits, double parse_goal, double print_goal) {
  const std::string of = digits != 0 ? std::to_string(digits) + " digits" : "8 to 19 digits";
  const Texts &texts = lasting<Texts>(digits);
  const Word &words = lasting<Word>(texts);
  static unsigned char out[8];
  static char text[64];
  const auto number = [](std::uint64_t value) { return std::to_string(value); };

  Task("numbers", "parse " + of, parse_goal)
      .ours([&](std::size_t i) { kEight.from_text(out, texts.of[i].c_str()), clobber(); },
            [&, number](std::size_t i) { return number(words.value(i)); })
      .peer(
          "strtoull", [&](std::size_t i) { keep(std::strtoull(texts.of[i].c_str(), nullptr, 10)); },
          [&, number](std::size_t i) {
            return number(std::strtoull(texts.of[i].c_str(), nullptr, 10));
          })
      .peer(
          "from_chars",
          [&](std::size_t i) {
            const char *from = texts.of[i].c_str();
            std::uint64_t value = 0;
            std::from_chars(from, from + std::strlen(from), value);
            keep(value);
          },
          [&, number](std::size_t i) {
            std::uint64_t value = 0;
            std::from_chars(texts.of[i].data(), texts.of[i].data() + texts.of[i].size(), value);
            return number(value);
          });
  Task("numbers", "print " + of, print_goal)
      .ours([&](std::size_t i) { kEight.to_text(text, words.bytes[i]), clobber(); },
            [&](std::size_t i) { return std::string(kEight.to_text(text, words.bytes[i])); })
      .peer(
          "snprintf",
          [&](std::size_t i) {
            std::snprintf(text, sizeof text, "%lu", words.value(i));
            clobber();
          },
          [&, number](std::size_t i) { return number(words.value(i)); })
      .peer(
          "to_chars",
          [&](std::size_t i) {
            *std::to_chars(text, text + 32, words.value(i)).ptr = '\0';
            clobber();
          },
          [&, number](std::size_t i) { return number(words.value(i)); })
      .peer(
          "fmt",
          [&](std::size_t i) {
            *fmt::format_to(text, FMT_COMPILE("{}"), words.value(i)) = '\0';
            clobber();
          },
          [&](std::size_t i) { return fmt::format("{}", words.value(i)); });
}

// One member with its operations, so that each task is told once.
struct Wide : test::Numeric {
  Wide(const Numeric &member, double to_parse, double to_print)
      : Numeric(member), parse_goal(to_parse), print_goal(to_print) {}
  double parse_goal, print_goal;
};

// The same numbers in every contender's own form.
struct Numbers {
  Numbers(const Wide &member, const Texts &texts) {
    mpz_init(power);
    mpz_ui_pow_ui(power, 10, 7);
    for (std::size_t i = 0; i < kInputs; ++i) {
      member.from_text(fields[i], texts.of[i].c_str());
      mpz_init_set_str(gmp[i], texts.of[i].c_str(), 10);
      boost[i].assign(texts.of[i].c_str());
    }
  }
  using Boost = boost::multiprecision::number<boost::multiprecision::cpp_int_backend<
      192, 192, boost::multiprecision::unsigned_magnitude, boost::multiprecision::unchecked>>;
  alignas(64) unsigned char fields[kInputs][32];
  mpz_t gmp[kInputs];
  Boost boost[kInputs];
  mpz_t power;
};

void text_of(const Wide &member, const std::string &of, const Texts &texts,
             const Numbers &numbers) {
  static unsigned char out[32];
  static char text[80];
  static mpz_t parsed;
  static Numbers::Boost boost_parsed;
  mpz_init2(parsed, 192);
  const auto given = [&](std::size_t i) { return texts.of[i]; };
  Task("quantities", "parse " + of, member.parse_goal)
      .ours([&](std::size_t i) { member.from_text(out, texts.of[i].c_str()), clobber(); }, given)
      .peer(
          "GMP", [&](std::size_t i) { mpz_set_str(parsed, texts.of[i].c_str(), 10), clobber(); },
          [&](std::size_t i) { return std::string(mpz_get_str(text, 10, numbers.gmp[i])); })
      .peer(
          "Boost.Multiprecision",
          [&](std::size_t i) { boost_parsed.assign(texts.of[i].c_str()), clobber(); },
          [&](std::size_t i) { return numbers.boost[i].str(); })
      .peer(
          "from_chars on 19 digits",
          [&](std::size_t i) {
            const char *from = texts.of[i].c_str();
            const char *end = from + std::strlen(from);
            while (end != from) {
              const char *begin = end - from > 19 ? end - 19 : from;
              std::uint64_t limb = 0;
              std::from_chars(begin, end, limb);
              keep(limb);
              end = begin;
            }
          },
          given);
  Task("quantities", "print " + of, member.print_goal)
      .ours([&](std::size_t i) { member.to_text(text, numbers.fields[i]), clobber(); },
            [&](std::size_t i) { return std::string(member.to_text(text, numbers.fields[i])); })
      .peer(
          "GMP", [&](std::size_t i) { mpz_get_str(text, 10, numbers.gmp[i]), clobber(); }, given)
      .peer(
          "Boost.Multiprecision", [&](std::size_t i) { keep(numbers.boost[i].str()); }, given);
}

void arithmetic_of(const Wide &member, const std::string &of, const Numbers &numbers) {
  static unsigned char out[32];
  static char text[80];
  static mpz_t result, limit;
  static Numbers::Boost boost_result;
  mpz_init2(result, 256);
  mpz_init(limit);
  mpz_ui_pow_ui(limit, 10, static_cast<unsigned>(member.digits));
  const auto shown = [&](std::size_t) { return std::string(member.to_text(text, out)); };
  const auto next = [](std::size_t i) { return (i + 1) % kInputs; };
  Task("quantities", "compare " + of, 4)
      .ours(
          [&, next](std::size_t i) {
            keep(member.compare(numbers.fields[i], numbers.fields[next(i)]));
          },
          [&, next](std::size_t i) {
            return std::to_string(member.compare(numbers.fields[i], numbers.fields[next(i)]));
          })
      .peer(
          "GMP", [&, next](std::size_t i) { keep(mpz_cmp(numbers.gmp[i], numbers.gmp[next(i)])); },
          [&, next](std::size_t i) {
            const int order = mpz_cmp(numbers.gmp[i], numbers.gmp[next(i)]);
            return std::to_string((order > 0) - (order < 0));
          })
      .peer("Boost.Multiprecision (inline)",
            [&, next](std::size_t i) { keep(numbers.boost[i].compare(numbers.boost[next(i)])); });
  Task("quantities", "multiply by 10^7, " + of, 8)
      .ours([&](std::size_t i) { member.scaling.multiply(out, numbers.fields[i], 7), clobber(); },
            [&, shown](std::size_t i) {
              return member.scaling.multiply(out, numbers.fields[i], 7), shown(i);
            })
      .peer(
          "GMP", [&](std::size_t i) { mpz_mul(result, numbers.gmp[i], numbers.power), clobber(); },
          [&](std::size_t i) {
            mpz_mul(result, numbers.gmp[i], numbers.power);
            mpz_mod(result, result, limit);  // digits past the capacity are lost on the left
            return std::string(mpz_get_str(text, 10, result));
          })
      .peer("GMP, power made too", [&](std::size_t i) {
        mpz_ui_pow_ui(limit, 10, 7);
        mpz_mul(result, numbers.gmp[i], limit);
        clobber();
      });
  Task("quantities", "divide by 10^7, " + of, 8)
      .ours(
          [&](std::size_t i) { keep(member.scaling.divide(out, numbers.fields[i], 7)), clobber(); },
          [&, shown](std::size_t i) {
            return member.scaling.divide(out, numbers.fields[i], 7), shown(i);
          })
      .peer(
          "GMP",
          [&](std::size_t i) { mpz_tdiv_q(result, numbers.gmp[i], numbers.power), clobber(); },
          [&](std::size_t i) {
            mpz_tdiv_q(result, numbers.gmp[i], numbers.power);
            return std::string(mpz_get_str(text, 10, result));
          })
      .peer("Boost.Multiprecision (inline)", [&](std::size_t i) {
        boost_result = numbers.boost[i] / 10000000u;
        clobber();
      });
}

// Cost over the power: flat, since a power is a shift of digits.
void growth() {
  static unsigned char out[32];
  static const Wide member(kFifty, 0, 0);
  const Numbers &numbers = lasting<Numbers>(member, lasting<Texts>(50));
  for (unsigned power : {1u, 9u, 18u, 27u, 36u, 45u})
    Task("growth", "50 digits by a power of ten/" + std::to_string(power))
        .ours([&, power](std::size_t i) {
          kFifty.scaling.multiply(out, numbers.fields[i], power);
          clobber();
        });
  for (std::size_t digits : {5, 10, 20, 30, 40, 50}) {
    const Texts &texts = lasting<Texts>(digits);
    Task("growth", "digits parsed/" + std::to_string(digits)).ours([&](std::size_t i) {
      kFifty.from_text(out, texts.of[i].c_str());
      clobber();
    });
  }
}

}  // namespace

void register_floor() {
  static unsigned char out[64], in[kInputs][64];
  Task("floor", "call").ours([](std::size_t) { keep(CODALFA_menor_caracter()); });
  Task("floor", "memcpy of 16 bytes").ours([](std::size_t i) {
    std::memcpy(out, in[i], 16), clobber();
  });
}

void register_quantities() {
  eight_bytes(8, 6, 7);
  eight_bytes(13, 6, 8.5);
  eight_bytes(19, 6, 8.5);
  eight_bytes(0, 6, 8.5);
  static const Wide members[] = {{kThirtyEight, 15, 20}, {kFifty, 21, 28}};
  for (const Wide &member : members) {
    const std::string of = std::to_string(member.digits) + " digits";
    const Texts &texts = lasting<Texts>(static_cast<std::size_t>(member.digits));
    const Numbers &numbers = lasting<Numbers>(member, texts);
    text_of(member, of, texts, numbers);
    arithmetic_of(member, of, numbers);
  }
  growth();
}

}  // namespace campotipo::bench
