#include <campotipo/documents.h>
#include <campotipo/idnumbers.h>

#include <cstring>
#include <random>
#include <string>

#include "bench/subsystems.hpp"

namespace campotipo::bench {
namespace {

// The loop that applications write, weights and all.
int naive(const char *text, int length, const int *first, const int *second) {
  for (int step = 0; step < 2; ++step) {
    const int count = length - 2 + step;
    const int *weights = step == 0 ? first : second;
    int total = 0;
    for (int i = 0; i < count; ++i) total += (text[i] - '0') * weights[i];
    const int digit = total % 11 < 2 ? 0 : 11 - total % 11;
    if (text[count] - '0' != digit) return 0;
  }
  return 1;
}

int naive_cpf(const char *text) {
  static const int first[] = {10, 9, 8, 7, 6, 5, 4, 3, 2},
                   second[] = {11, 10, 9, 8, 7, 6, 5, 4, 3, 2};
  return naive(text, 11, first, second);
}

int naive_cnpj(const char *text) {
  static const int first[] = {5, 4, 3, 2, 9, 8, 7, 6, 5, 4, 3, 2},
                   second[] = {6, 5, 4, 3, 2, 9, 8, 7, 6, 5, 4, 3, 2};
  return naive(text, 14, first, second);
}

struct Numbers {
  Numbers(int length, int (*make)(char *, int)) {
    std::mt19937 random(11);
    for (auto &number : text) {
      for (int k = 0; k < length; ++k) number[k] = static_cast<char>('0' + random() % 10);
      number[length] = '\0';
      make(number, 1);
      // One in four is wrong.
      if (random() % 4 == 0)
        number[random() % static_cast<unsigned>(length)] = static_cast<char>('0' + random() % 10);
    }
  }
  char text[kInputs][64];
};

void taxpayers() {
  static Numbers cpf(11, ZALGORITM_valida_CPF), cnpj(14, ZALGORITM_valida_CNPJ);
  const auto answer = [](int valid) { return std::to_string(valid); };
  Task("idnumbers", "CPF", 7)
      .ours([&](std::size_t i) { keep(ZALGORITM_valida_CPF(cpf.text[i], 0)); },
            [&, answer](std::size_t i) { return answer(ZALGORITM_valida_CPF(cpf.text[i], 0)); })
      .peer(
          "loop (inline)", [&](std::size_t i) { keep(naive_cpf(cpf.text[i])); },
          [&, answer](std::size_t i) { return answer(naive_cpf(cpf.text[i])); });
  Task("idnumbers", "CNPJ", 9)
      .ours([&](std::size_t i) { keep(ZALGORITM_valida_CNPJ(cnpj.text[i], 0)); },
            [&, answer](std::size_t i) { return answer(ZALGORITM_valida_CNPJ(cnpj.text[i], 0)); })
      .peer(
          "loop (inline)", [&](std::size_t i) { keep(naive_cnpj(cnpj.text[i])); },
          [&, answer](std::size_t i) { return answer(naive_cnpj(cnpj.text[i])); });
}

void tables() {
  static Numbers keys(44, DIGVERIF_monta_dv_modulo11);
  Task("idnumbers", "44 digits by table", 14).ours([&](std::size_t i) {
    keep(DIGVERIF_monta_dv_modulo11(keys.text[i], 0));
  });
  for (int length : {5, 11, 14, 20, 30, 44, 50}) {
    Numbers &numbers = *new Numbers(length, DIGVERIF_monta_dv_modulo11);
    Task("growth", "digits checked by table/" + std::to_string(length)).ours([&](std::size_t i) {
      keep(DIGVERIF_monta_dv_modulo11(numbers.text[i], 0));
    });
  }
}

int naive_alfa(const char *text) {
  static const int weights[] = {6, 5, 4, 3, 2, 9, 8, 7, 6, 5, 4, 3, 2};
  for (int count = 12; count < 14; ++count) {
    int total = 0;
    for (int i = 0; i < count; ++i) total += (text[i] - '0') * weights[i + 13 - count];
    const int digit = total % 11 < 2 ? 0 : 11 - total % 11;
    if (text[count] - '0' != digit) return 0;
  }
  return 1;
}

void documents() {
  static char letters[kInputs][16], punctuated[kInputs][24];
  static char out[64];
  std::mt19937 random(23);
  for (std::size_t i = 0; i < kInputs; ++i) {
    for (int k = 0; k < 12; ++k)
      letters[i][k] = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ"[random() % 36];
    std::memcpy(letters[i] + 12, "00", 3);
    DOCUMENTO_valida_CNPJ_alfa(letters[i], 1);
    if (random() % 4 == 0) letters[i][13] = static_cast<char>('0' + random() % 10);
    DOCUMENTO_edita_CNPJ(punctuated[i], letters[i]);
  }
  const auto answer = [](int valid) { return std::to_string(valid); };
  Task("idnumbers", "CNPJ with letters", 9)
      .ours(
          [&](std::size_t i) { keep(DOCUMENTO_valida_CNPJ_alfa(letters[i], 0)); },
          [&, answer](std::size_t i) { return answer(DOCUMENTO_valida_CNPJ_alfa(letters[i], 0)); })
      .peer(
          "loop (inline)", [&](std::size_t i) { keep(naive_alfa(letters[i])); },
          [&, answer](std::size_t i) { return answer(naive_alfa(letters[i])); });
  Task("idnumbers", "CNPJ with letters, punctuate").ours([&](std::size_t i) {
    DOCUMENTO_edita_CNPJ(out, letters[i]), clobber();
  });
  Task("idnumbers", "what a punctuated CNPJ can be").ours([&](std::size_t i) {
    keep(DOCUMENTO_identifica(punctuated[i]));
  });
}

void unique_numbers() {
  static char out[16];
  static const int parts[6] = {12, 345, 2024, 123456, 789, 2024};
  Task("idnumbers", "unique number, form B", 0).ours([&](std::size_t) {
    keep(ZALGORITM_gera_numeroB_unico(out, sizeof out, parts, parts + 1, parts + 2, parts + 3,
                                      parts + 4, parts + 5));
    clobber();
  });
}

}  // namespace

void register_idnumbers() {
  taxpayers();
  tables();
  documents();
  unique_numbers();
}

}  // namespace campotipo::bench
