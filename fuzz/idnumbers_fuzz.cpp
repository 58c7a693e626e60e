// Check digits, documents and unique numbers against the digit-by-digit models of the tests.

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "tests/idnumbers/agreement.hpp"

#define CHECK(condition) ((condition) ? void() : __builtin_trap())

namespace test = campotipo::test;

namespace {

void check_form_b(const int (&values)[6]) {
  char text[ZALGORITM_NUMEROB_UNICO_TEXT_SIZE];
  int back[6];
  CHECK(ZALGORITM_gera_numeroB_unico(text, sizeof text, values, values + 1, values + 2, values + 3,
                                     values + 4, values + 5) == 0);
  CHECK(ZALGORITM_numeroB_unico_bem_formado(text) == 1);
  CHECK(ZALGORITM_extrai_numeroB_unico(text, back, back + 1, back + 2, back + 3, back + 4,
                                       back + 5) == 0);
  CHECK(back[0] == (values[0] & 127) && back[1] == (values[1] & 1023));
  CHECK(back[2] == (values[2] & 2047) && back[3] == 0);
  CHECK(back[4] == (values[4] & 255) && back[5] == 0);
}

}  // namespace

// A byte that chooses, six values, the head of a table, and the text. The rest of the table is cut
// out of all of it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  static thread_local test::TextMemory memory;
  int values[6];
  constexpr std::size_t kTable = 1 + sizeof values, kText = kTable + 3;
  if (size < kText) return 0;
  const unsigned choice = data[0];
  std::memcpy(values, data + 1, sizeof values);
  ZALGORITM_TABELA table{data[kTable], data[kTable + 1], data[kTable + 2], {}, {}};
  for (std::size_t i = 0; i < sizeof table.weights; ++i) table.weights[i] = data[i * 7 % size];
  for (std::size_t i = 0; i < sizeof table.results; ++i) table.results[i] = data[i * 5 % size];
  if (choice & 4) table.modulus = static_cast<unsigned char>(table.modulus % 18);
  if (choice & 8) table.position = static_cast<unsigned char>(table.position % 52);

  std::string text(reinterpret_cast<const char *>(data) + kText,
                   std::min<std::size_t>(size - kText, 4000));
  // Most of the time digits, which a fuzzer is slow to find.
  if (choice & 2) {
    for (char &c : text) c = static_cast<char>('0' + static_cast<unsigned char>(c) % 10);
  }
  text = text.c_str();

  const int make = static_cast<int>(choice & 1);
  CHECK(test::engine_agrees(&memory, table, text, make));
  CHECK(test::taxpayers_agree(&memory, text, make));
  for (const test::Document &document : test::kDocuments) {
    CHECK(test::document_agrees(&memory, document, text, make));
    CHECK(test::punctuation_agrees(&memory, document, text));
  }
  CHECK(test::identified(&memory, text));
  check_form_b(values);
  return 0;
}
