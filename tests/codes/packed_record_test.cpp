#include <campotipo/codes.h>
#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

// A record that is destroyed at the end of its scope.
struct Record : CODALFNN {
  Record(int n, int flags) { CODALFNN_cria(this, n, flags); }
  Record(const Record &) = delete;
  Record &operator=(const Record &) = delete;
  ~Record() { CODALFNN_destroi(this); }
};

TEST(PackedRecord, DoesWhatTheEngineDoesOnItsBuffer) {
  for (int n : {1, 5, 33, 200})
    for (const char *text : {"", "7", "A7", "ab-1  ", "HELLO WORLD", "A\001B", "  12"})
      for (int opc = 0; opc < 16; ++opc) {
        // The forms without options take those of the record.
        Record record(n, opc), other(n, ~opc);
        std::string expected(static_cast<std::size_t>(CODALFA_BYTES(n)), '\0');
        auto *field = reinterpret_cast<unsigned char *>(expected.data());
        char out[256], expected_out[256];
        EXPECT_EQ(CODALFNN_opc_salvou(&other, text, opc), CODALFA_opc_salvou(field, text, n, opc));
        CODALFNN_atob(&record, text);
        EXPECT_EQ(std::memcmp(record.dados, field, expected.size()), 0) << text << ' ' << opc;
        CODALFNN_opc_atob(&record, "", ~opc);
        CODALFNN_opc_atob(&record, text, opc);
        EXPECT_EQ(CODALFNN_compara(&record, &other), 0);
        for (int width : {0, 8}) {
          CODALFA_opc_extrai(expected_out, field, n, opc, width);
          EXPECT_STREQ(CODALFNN_opc_btoa(out, &other, opc, width), expected_out);
        }
        CODALFA_opc_extrai(expected_out, field, n, opc, 0);
        EXPECT_STREQ(CODALFNN_btoa(out, &record), expected_out);
        EXPECT_EQ(CODALFNN_nao_zero(&record, opc), CODALFA_nao_zero(field, n, opc));
        EXPECT_EQ(CODALFNN_bem_formado(&record) + CODALFNN_ok(&record), 2);
        EXPECT_EQ(CODALFNN_numero_de_caracteres(&record), n);
      }
}

TEST(PackedRecord, HoldsNothingWhenItIsNotValid) {
  for (int n : {0, -1, -2, -3, -5, INT_MIN, CODALFNN_MAX_CARACTERES + 1, INT_MAX}) {
    Record record(n, CODALFA_OPC_ZEROS);
    EXPECT_EQ(record.caracteres, n);
    void *const nothing = std::malloc(0);
    EXPECT_EQ(record.dados != nullptr, n <= 0 && n >= -2 && nothing != nullptr) << n;
    std::free(nothing);
    for (int round = 0; round < 2; ++round) {
      char text[] = "before", other[] = "before";
      CODALFNN_opc_atob(&record, "A", 0);
      CODALFNN_atob(&record, "A");
      EXPECT_EQ(CODALFNN_ok(&record) + CODALFNN_numero_de_caracteres(&record) +
                    CODALFNN_opc_salvou(&record, "A", 0) + CODALFNN_nao_zero(&record, 0) +
                    CODALFNN_bem_formado(&record),
                0)
          << n;
      EXPECT_STREQ(CODALFNN_opc_btoa(text, &record, 0, 5), "");
      EXPECT_STREQ(CODALFNN_btoa(other, &record), "");
      CODALFNN_destroi(&record);
    }
    EXPECT_EQ(record.caracteres, 0);
    EXPECT_EQ(record.dados, nullptr);
    EXPECT_EQ(record.opc, CODALFA_OPC_ZEROS);
  }
}

TEST(PackedRecord, HasARealBufferAtTheMostPositions) {
  Record record(CODALFNN_MAX_CARACTERES, 0);
  if (record.dados == nullptr) GTEST_SKIP() << "no memory for it";
  record.dados[(6 * std::size_t{CODALFNN_MAX_CARACTERES} + 7) / 8 - 1] = 1;
  record.dados[0] = 0xFF;
  EXPECT_EQ(CODALFNN_bem_formado(&record), 0) << "a code above 50";
}

TEST(PackedRecord, OrdersValidBeforeNotValid) {
  Record a(5, 0), b(5, 0), longer(6, 0), none(0, 0), also_none(-3, 0);
  CODALFNN_atob(&a, "A");
  CODALFNN_atob(&b, "B");
  CODALFNN_atob(&longer, "C");
  const struct {
    const CODALFNN *left, *right;
    int result;
  } cases[] = {{&a, &a, 0},      {&a, &b, -1},    {&b, &a, 1},         {&a, &longer, 0},
               {&longer, &a, 0}, {&a, &none, -1}, {&none, &longer, 1}, {&none, &also_none, 0}};
  for (const auto &c : cases) EXPECT_EQ(CODALFNN_compara(c.left, c.right), c.result);
}

}  // namespace
