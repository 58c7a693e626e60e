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
  const char *const texts[] = {"", "7", "A7", "ab-1  ", "HELLO WORLD", "A\001B", "  12"};
  for (int n : {1, 5, 12, 33, 64, 200}) {
    Record record(n, CODALFA_OPC_ZEROS);
    Record other(n, 0);
    ASSERT_EQ(CODALFNN_ok(&record), 1);
    EXPECT_EQ(CODALFNN_numero_de_caracteres(&record), n);
    for (const char *text : texts) {
      for (int opc = 0; opc < 16; ++opc) {
        const auto size = static_cast<std::size_t>(CODALFA_BYTES(n));
        std::string expected(size, '\0');
        auto *field = reinterpret_cast<unsigned char *>(expected.data());
        char out[256], expected_out[256];
        const int result = CODALFA_opc_salvou(field, text, n, opc);
        EXPECT_EQ(CODALFNN_opc_salvou(&record, text, opc), result);
        EXPECT_EQ(std::memcmp(record.dados, field, size), 0) << text << ' ' << opc;
        CODALFA_opc_extrai(expected_out, field, n, opc, 8);
        EXPECT_EQ(CODALFNN_opc_btoa(out, &record, opc, 8), out);
        EXPECT_STREQ(out, expected_out);
        EXPECT_EQ(CODALFNN_nao_zero(&record, opc), CODALFA_nao_zero(field, n, opc));

        // The forms without options take those of the record.
        CODALFNN_opc_atob(&other, text, CODALFA_OPC_ZEROS);
        CODALFNN_atob(&record, text);
        EXPECT_EQ(CODALFNN_compara(&record, &other), 0);
        CODALFNN_opc_btoa(expected_out, &other, CODALFA_OPC_ZEROS, 0);
        EXPECT_STREQ(CODALFNN_btoa(out, &record), expected_out);
      }
    }
  }
}

TEST(PackedRecord, HoldsNothingWhenItIsNotValid) {
  const int sizes[] = {0, -1, -2, -3, -5, INT_MIN, CODALFNN_MAX_CARACTERES + 1, INT_MAX};
  for (int n : sizes) {
    Record record(n, CODALFA_OPC_ZEROS);
    EXPECT_EQ(record.caracteres, n);
    EXPECT_EQ(record.opc, CODALFA_OPC_ZEROS);
    void *const nothing = std::malloc(0);
    EXPECT_EQ(record.dados != nullptr, n <= 0 && n >= -2 && nothing != nullptr) << n;
    std::free(nothing);
    for (int round = 0; round < 2; ++round) {
      char text[8] = "before";
      EXPECT_EQ(CODALFNN_ok(&record), 0) << n;
      EXPECT_EQ(CODALFNN_numero_de_caracteres(&record), 0);
      EXPECT_EQ(CODALFNN_opc_salvou(&record, "A", 0), 0);
      CODALFNN_opc_atob(&record, "A", 0);
      CODALFNN_atob(&record, "A");
      EXPECT_EQ(CODALFNN_nao_zero(&record, 0), 0);
      EXPECT_EQ(CODALFNN_opc_btoa(text, &record, 0, 5), text);
      EXPECT_STREQ(text, "");
      std::strcpy(text, "before");
      EXPECT_STREQ(CODALFNN_btoa(text, &record), "");
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
  EXPECT_EQ(CODALFNN_numero_de_caracteres(&record), CODALFNN_MAX_CARACTERES);
  record.dados[(6 * std::size_t{CODALFNN_MAX_CARACTERES} + 7) / 8 - 1] = 1;
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

TEST(PackedRecord, ExampleOfTheManual) {
  CODALFNN code;
  char text[6];
  CODALFNN_cria(&code, 5, CODALFA_OPC_ZEROS);
  CODALFNN_atob(&code, "7");
  EXPECT_STREQ(CODALFNN_opc_btoa(text, &code, 0, 0), "00007");
  EXPECT_STREQ(CODALFNN_btoa(text, &code), "7");
  CODALFNN_destroi(&code);
}

}  // namespace
