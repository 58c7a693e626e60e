#include <campotipo/bits.h>
#include <curl/curl.h>
#include <glib.h>
#include <uuid/uuid.h>

#include <cstring>
#include <random>
#include <string>
#include <unordered_set>

#include "bench/subsystems.hpp"

namespace campotipo::bench {
namespace {

// Seven fields of 78 bits, as a record and as the compiler's own packed bit fields.
struct Unpacked {
  std::uint16_t a;
  std::uint8_t b;
  std::uint32_t c;
  std::uint8_t d;
  std::uint16_t e;
  std::uint8_t f;
  std::uint16_t g;
};

constexpr ZBTFIELD_CAMPO kTable[] = {
    {11, offsetof(Unpacked, a)}, {3, offsetof(Unpacked, b)},
    {27, offsetof(Unpacked, c)}, {5, offsetof(Unpacked, d)},
    {13, offsetof(Unpacked, e)}, {7, offsetof(Unpacked, f)},
    {12, offsetof(Unpacked, g)}, {0, 0},
};

struct [[gnu::packed]] Compiled {
  std::uint64_t a : 11, b : 3, c : 27, d : 5, e : 13;
  std::uint32_t f : 7, g : 12;
};

const unsigned char *bytes(const Unpacked &record) {
  return reinterpret_cast<const unsigned char *>(&record);
}

void naive_pack(unsigned char *packed, const unsigned char *record, bool big) {
  int at = 0;
  for (const ZBTFIELD_CAMPO *field = kTable; field->bits != 0; at += field->bits, ++field)
    for (int i = 0; i < field->bits; ++i) {
      const unsigned char *from = record + field->deslocamento;
      const int p = big ? at + field->bits - 1 - i : at + i;
      const auto mask = static_cast<unsigned char>(big ? 0x80 >> p % 8 : 1 << p % 8);
      if ((from[i / 8] >> (i % 8) & 1) != 0)
        packed[p / 8] |= mask;
      else
        packed[p / 8] &= static_cast<unsigned char>(~mask);
    }
}

void bit_fields() {
  static Unpacked records[kInputs];
  static unsigned char packed[kInputs][2][16];
  static unsigned char out[16];
  static Unpacked back;
  static Compiled compiled;
  std::mt19937 random(13);
  for (std::size_t i = 0; i < kInputs; ++i) {
    records[i] = {static_cast<std::uint16_t>(random() % 2048),
                  static_cast<std::uint8_t>(random() % 8),
                  static_cast<std::uint32_t>(random() % (1u << 27)),
                  static_cast<std::uint8_t>(random() % 32),
                  static_cast<std::uint16_t>(random() % 8192),
                  static_cast<std::uint8_t>(random() % 128),
                  static_cast<std::uint16_t>(random() % 4096)};
    ZBTFIELD_monta_dados(packed[i][0], kTable, bytes(records[i]));
    ZBTFIELD_big_monta_dados(packed[i][1], kTable, bytes(records[i]));
  }
  for (bool big : {false, true}) {
    const std::string order = big ? "big" : "little";
    const auto pack = big ? ZBTFIELD_big_monta_dados : ZBTFIELD_monta_dados;
    const auto unpack = big ? ZBTFIELD_big_extrai_dados : ZBTFIELD_extrai_dados;
    const auto shown = [] { return std::string(reinterpret_cast<char *>(out), 10); };
    Task("bits", "pack 7 fields of 78 bits, " + order, 16)
        .ours([=](std::size_t i) { pack(out, kTable, bytes(records[i])), clobber(); },
              [=](std::size_t i) {
                std::memset(out, 0, sizeof out);
                return pack(out, kTable, bytes(records[i])), shown();
              })
        .peer(
            "bit loop (inline)",
            [=](std::size_t i) { naive_pack(out, bytes(records[i]), big), clobber(); },
            [=](std::size_t i) {
              std::memset(out, 0, sizeof out);
              return naive_pack(out, bytes(records[i]), big), shown();
            })
        .peer("compiler's bit fields (inline)", [=](std::size_t i) {
          const Unpacked &r = records[i];
          compiled.a = r.a, compiled.b = r.b & 7u, compiled.c = r.c, compiled.d = r.d & 31u;
          compiled.e = r.e, compiled.f = r.f & 127u, compiled.g = r.g & 4095u;
          clobber();
        });
    Task("bits", "unpack 7 fields of 78 bits, " + order, 18).ours([=](std::size_t i) {
      unpack(reinterpret_cast<unsigned char *>(&back), packed[i][big], kTable), clobber();
    });
  }
  for (int width : {1, 8, 16, 33, 64, 100, 140}) {
    static unsigned char field[32], area[64];
    Task("growth", "bits of one field/" + std::to_string(width)).ours([width](std::size_t i) {
      ZBTFIELD_extrai_campo(field, area, static_cast<int>(i % 32), width), clobber();
    });
  }
}

void bit_table() {
  static TABBOOL table;
  static int index[kInputs];
  static std::unordered_set<int> set;
  TABBOOL_cria(&table, 100000, -50000, 0);
  std::mt19937 random(17);
  for (int &i : index) {
    i = static_cast<int>(random() % 100000) - 50000;
    if (random() % 2 == 0) TABBOOL_seta(&table, i), set.insert(i);
  }
  Task("bits", "test a bit of a table", 3.5)
      .ours([&](std::size_t i) { keep(TABBOOL_testa(&table, index[i])); },
            [&](std::size_t i) { return std::to_string(TABBOOL_testa(&table, index[i])); })
      .peer(
          "std::unordered_set (inline)", [&](std::size_t i) { keep(set.count(index[i])); },
          [&](std::size_t i) { return std::to_string(set.count(index[i])); });
}

void guids() {
  static unsigned char values[kInputs][16];
  static char texts[kInputs][40];
  static unsigned char out[16];
  static char text[64];
  std::mt19937 random(19);
  for (std::size_t i = 0; i < kInputs; ++i) {
    for (auto &byte : values[i]) byte = static_cast<unsigned char>(random());
    ZGUID_string(texts[i], values[i], ZGUID_HIFENS);
  }
  const auto given = [&](std::size_t i) {
    return std::string(reinterpret_cast<char *>(values[i]), 16);
  };
  Task("bits", "parse a GUID", 9)
      .ours([&](std::size_t i) { ZGUID_parse(out, texts[i]), clobber(); }, given)
      .peer(
          "libuuid", [&](std::size_t i) { keep(uuid_parse(texts[i], out)), clobber(); },
          [&](std::size_t i) {
            uuid_parse(texts[i], out);
            return std::string(reinterpret_cast<char *>(out), 16);
          });
  Task("bits", "print a GUID", 8)
      .ours([&](std::size_t i) { ZGUID_string(text, values[i], ZGUID_HIFENS), clobber(); },
            [&](std::size_t i) { return std::string(texts[i]); })
      .peer(
          "libuuid", [&](std::size_t i) { uuid_unparse_lower(values[i], text), clobber(); },
          [&](std::size_t i) { return uuid_unparse_lower(values[i], text), std::string(text); });
  Task("bits", "make a GUID", 0)
      .ours([&](std::size_t) { ZGUID_gera(out), clobber(); })
      .peer("libuuid", [&](std::size_t) { uuid_generate_random(out), clobber(); });
}

// `length` bytes, one in `every` of which has to be escaped; 0 for none.
std::string plain_text(std::size_t length, std::size_t every, unsigned seed) {
  std::mt19937 random(seed);
  std::string text;
  while (text.size() < length)
    text += every != 0 && random() % every == 0 ? " /&?=+%#"[random() % 8]
                                                : static_cast<char>('a' + random() % 26);
  return text;
}

void url_texts() {
  static std::string texts[kInputs], encoded[kInputs], clean[kInputs];
  static char out[512];
  for (std::size_t i = 0; i < kInputs; ++i) {
    texts[i] = plain_text(64, 8, static_cast<unsigned>(i));
    clean[i] = plain_text(64, 0, static_cast<unsigned>(i));
    encoded[i] = URLENCOD_codifica(out, texts[i].c_str());
  }
  CURL *curl = curl_easy_init();
  Task("bits", "URL text of 64 bytes, 8 escapes, encode")
      .ours([&](std::size_t i) { URLENCOD_codifica(out, texts[i].c_str()), clobber(); },
            [&](std::size_t i) { return encoded[i]; })
      .peer(
          "libcurl",
          [curl](std::size_t i) {
            char *given = curl_easy_escape(curl, texts[i].c_str(), 0);
            keep(given);
            curl_free(given);
          },
          [curl](std::size_t i) {
            char *given = curl_easy_escape(curl, texts[i].c_str(), 0);
            std::string text = given;
            curl_free(given);
            return text;
          })
      .peer("GLib", [&](std::size_t i) {
        char *given = g_uri_escape_string(texts[i].c_str(), nullptr, FALSE);
        keep(given);
        g_free(given);
      });
  Task("bits", "URL text of 64 bytes, 8 escapes, decode")
      .ours(
          [&](std::size_t i) { URLENCOD_decodifica(out, encoded[i].c_str()), clobber(); },
          [&](std::size_t i) { return std::string(URLENCOD_decodifica(out, encoded[i].c_str())); })
      .peer(
          "libcurl",
          [curl](std::size_t i) {
            char *given = curl_easy_unescape(curl, encoded[i].c_str(), 0, nullptr);
            keep(given);
            curl_free(given);
          },
          [&](std::size_t i) { return texts[i]; })
      .peer("GLib", [&](std::size_t i) {
        char *given = g_uri_unescape_string(encoded[i].c_str(), nullptr);
        keep(given);
        g_free(given);
      });
  Task("bits", "URL text of 64 bytes, nothing to escape, encode")
      .ours([&](std::size_t i) { URLENCOD_codifica(out, clean[i].c_str()), clobber(); })
      .floor("strcpy", [&](std::size_t i) { std::strcpy(out, clean[i].c_str()), clobber(); });
  for (std::size_t length : {8, 32, 128, 512, 2048}) {
    static char big[3 * 2048 + 1];
    std::string &text = *new std::string(plain_text(length, 8, 1));
    Task("growth", "bytes of URL text encoded/" + std::to_string(length)).ours([&](std::size_t) {
      URLENCOD_codifica(big, text.c_str()), clobber();
    });
  }
}

}  // namespace

void register_bits() {
  bit_fields();
  bit_table();
  guids();
  url_texts();
}

}  // namespace campotipo::bench
