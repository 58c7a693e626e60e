#include <campotipo/codes.h>
#include <glib.h>
#include <openssl/evp.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "bench/subsystems.hpp"
#include "tests/members/digit_string.hpp"
#include "tests/members/packed_code.hpp"

namespace campotipo::bench {
namespace {

constexpr std::string_view kAlphabet = CODALFA_ALFABETO;
constexpr const test::PackedCode &kTwelve = test::kPackedCodes[1];
static_assert(kTwelve.n == 12 && kTwelve.bytes == 9);
constexpr const test::DigitString &kDigits = test::kDigitStrings[0];

// 512 codes of 12 characters out of the first `kinds` of an order of usual characters, with their
// stored form, and base64 texts of the same length for the peers that know only that.
struct Codes {
  explicit Codes(std::string_view from) {
    std::mt19937 random(9);
    for (std::size_t i = 0; i < kInputs; ++i) {
      for (int k = 0; k < 12; ++k) text[i][k] = from[random() % from.size()];
      text[i][12] = '\0';
      kTwelve.save_only(field[i], text[i], 0);
      EVP_EncodeBlock(reinterpret_cast<unsigned char *>(base64[i]), field[i], 9);
    }
  }
  char text[kInputs][16];
  unsigned char field[kInputs][9];
  char base64[kInputs][16];
};

// The obvious way: each character looked up, each bit moved.
void naive_pack(unsigned char *dest, const char *text) {
  std::memset(dest, 0, 9);
  for (unsigned k = 0; k < 12 && text[k] != '\0'; ++k) {
    const char *found = std::strchr(kAlphabet.data(), std::toupper(text[k]));
    const unsigned code =
        found != nullptr ? static_cast<unsigned>(found - kAlphabet.data()) + 1 : 0;
    for (unsigned bit = 0; bit < 6; ++bit)
      if ((code >> (5 - bit) & 1) != 0)
        dest[(6 * k + bit) / 8] |= static_cast<unsigned char>(0x80 >> (6 * k + bit) % 8);
  }
}

void naive_unpack(char *text, const unsigned char *src) {
  unsigned k = 0;
  for (; k < 12; ++k) {
    unsigned code = 0;
    for (unsigned bit = 6 * k; bit < 6 * k + 6; ++bit)
      code = code << 1 | (src[bit / 8] >> (7 - bit % 8) & 1);
    if (code == 0 || code > kAlphabet.size()) break;
    text[k] = kAlphabet[code - 1];
  }
  text[k] = '\0';
}

std::string bytes_of(const unsigned char *field, std::size_t count) {
  return {reinterpret_cast<const char *>(field), count};
}

void twelve(const char *kind, const Codes &codes, double goal) {
  static unsigned char out[16];
  Task pack("codes", std::string("12 characters to 9 bytes, ") + kind, goal);
  pack.ours([&](std::size_t i) { keep(kTwelve.save(out, codes.text[i], 0)), clobber(); },
            [&](std::size_t i) { return bytes_of(codes.field[i], 9); })
      .peer(
          "strchr and bit loop", [&](std::size_t i) { naive_pack(out, codes.text[i]), clobber(); },
          [&](std::size_t i) { return naive_pack(out, codes.text[i]), bytes_of(out, 9); })
      .peer(
          "OpenSSL base64",
          [&](std::size_t i) {
            keep(
                EVP_DecodeBlock(out, reinterpret_cast<const unsigned char *>(codes.base64[i]), 12));
            clobber();
          },
          [&](std::size_t i) {
            EVP_DecodeBlock(out, reinterpret_cast<const unsigned char *>(codes.base64[i]), 12);
            return bytes_of(out, 9);
          })
      .peer("GLib base64",
            [&](std::size_t i) {
              gsize size;
              guchar *decoded = g_base64_decode(codes.base64[i], &size);
              keep(decoded);
              g_free(decoded);
            })
      .floor("copy of 9 bytes",
             [&](std::size_t i) { std::memcpy(out, codes.text[i], 9), clobber(); });
}

void untwelve(const char *kind, const Codes &codes) {
  static char text[32];
  Task unpack("codes", std::string("9 bytes to 12 characters, ") + kind, 6);
  unpack
      .ours([&](std::size_t i) { kTwelve.read_whole(text, codes.field[i]), clobber(); },
            [&](std::size_t i) { return std::string(kTwelve.read_whole(text, codes.field[i])); })
      .peer(
          "bit loop", [&](std::size_t i) { naive_unpack(text, codes.field[i]), clobber(); },
          [&](std::size_t i) { return naive_unpack(text, codes.field[i]), std::string(text); })
      .peer("OpenSSL base64", [&](std::size_t i) {
        keep(EVP_EncodeBlock(reinterpret_cast<unsigned char *>(text), codes.field[i], 9));
        clobber();
      });
}

void sizes() {
  static unsigned char out[512];
  for (int n : {5, 12, 20, 40, 80, 160, 320}) {
    std::string &text = *new std::string;
    for (int k = 0; k < n; ++k) text += kAlphabet[static_cast<std::size_t>(1 + (7 * k) % 36)];
    Task("growth", "characters packed/" + std::to_string(n)).ours([&, n](std::size_t) {
      keep(CODALFA_opc_salvou(out, text.c_str(), n, 0)), clobber();
    });
    Task("growth", "bytes of fixed string/" + std::to_string(n)).ours([&, n](std::size_t) {
      CODSTR_opc_salva(out, text.c_str(), n, 0), clobber();
    });
  }
}

void others(const Codes &codes) {
  static unsigned char out[64];
  static char text[64];
  Task("codes", "compare 12 characters", 0).ours([&](std::size_t i) {
    keep(kTwelve.compare(codes.field[i], codes.field[(i + 1) % kInputs]));
  });
  Task("codes", "digit string of 12 digits, store", 0).ours([&](std::size_t i) {
    keep(kDigits.save(out, codes.text[i])), clobber();
  });
  static unsigned char fields[kInputs][kDigits.bytes];
  for (std::size_t i = 0; i < kInputs; ++i) kDigits.save(fields[i], codes.text[i]);
  Task("codes", "digit string of 12 digits, show", 0).ours([&](std::size_t i) {
    kDigits.read(text, fields[i]), clobber();
  });
}

}  // namespace

void register_codes() {
  static const Codes capitals("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ");
  static const Codes all("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-._/+,:#@*$%!");
  static const Codes small("0123456789abcdefghijklmnopqrstuvwxyz");
  static const Codes digits("0123456789");
  twelve("digits and capitals", capitals, 5);
  twelve("whole alphabet", all, 7);
  twelve("small letters too", small, 7);
  untwelve("digits and capitals", capitals);
  untwelve("whole alphabet", all);
  others(digits);
  sizes();
}

}  // namespace campotipo::bench
