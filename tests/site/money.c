/*
 * A site's own money: amounts wrap where they leave the range, as no service of this project does.
 * It does all that <campotipo-support/money.h> tells, and counts what the library asks beyond the
 * demands that stand there. C99 and C++11.
 */
#include <campotipo-support/money.h>
#include <string.h>

__extension__ typedef __int128 wide;

#ifdef __cplusplus
extern "C" {
#endif
extern int site_money_breaches, site_money_multiplications;
int site_money_breaches = 0, site_money_multiplications = 0;
int PARCELA_fixo = 4;
#ifdef __cplusplus
}
#endif

static void demand(int kept) { site_money_breaches += !kept; }

static long units(const void *value) {
  long count;
  memcpy(&count, value, sizeof count);
  return count;
}

static void set(void *value, wide count) {
  const unsigned long wrapped = (unsigned long)count;
  memcpy(value, &wrapped, sizeof wrapped);
}

static void from_text(void *dest, const char *text, int decimals) {
  unsigned long count = 0;
  int negative, seen = 0;
  while (*text == ' ' || (*text >= '\t' && *text <= '\r')) ++text;
  negative = *text == '-';
  if (*text == '-' || *text == '+') ++text;
  for (; (*text >= '0' && *text <= '9') || (*text == '.' && !seen); ++text) {
    if (*text == '.') {
      seen = 1;
    } else if (!seen || decimals > 0) {
      count = count * 10 + (unsigned long)(*text - '0');
      decimals -= seen;
    }
  }
  for (; decimals > 0; --decimals) count *= 10;
  set(dest, negative ? (wide)(0 - count) : (wide)count);
}

static char *to_text(char *text, const void *value, int decimals) {
  const long count = units(value);
  unsigned long left = count < 0 ? 0 - (unsigned long)count : (unsigned long)count;
  char digits[64], *out = text;
  int length = 0;
  for (; left != 0 || length <= decimals; left /= 10) {
    if (length == decimals && decimals > 0) digits[length++] = '.', ++decimals;
    digits[length++] = (char)('0' + left % 10);
  }
  if (count < 0) *out++ = '-';
  while (length > 0) *out++ = digits[--length];
  *out = '\0';
  return text;
}

static int compare(long a, long b) { return (a > b) - (a < b); }

static int divide(void *dest, long count, int divisor) {
  demand(divisor == 10 || divisor == 100);
  set(dest, divisor == 0 ? 0 : (wide)count / divisor);
  return divisor == 0 ? 0 : (int)((wide)count % divisor);
}

static void add(void *dest, const void *src, long count) {
  demand(dest == src && (count == 1 || count == -1));
  set(dest, (wide)units(src) + count);
}

static void percent_of(void *dest, const void *src, long factor) {
  demand(dest != src && factor >= 0 && factor <= 429496729500);
  ++site_money_multiplications;
  set(dest, (wide)units(src) * factor / 10000);
}

static long ratio(long numerator, long denominator) {
  return denominator == 0 ? 0 : (long)((wide)numerator * 10000 / denominator);
}

/* In C++ a definition ends as its prototype does; in C that is nothing. */
#define MONEY(VALUE, NAME, DECIMALS)                                                             \
  void NAME##_atov(VALUE *dest, const char *text) CAMPOTIPO_NOEXCEPT {                           \
    from_text(dest, text, DECIMALS);                                                             \
  }                                                                                              \
  char *NAME##_vtoa(char *text, const VALUE *value) CAMPOTIPO_NOEXCEPT {                         \
    return to_text(text, value, DECIMALS);                                                       \
  }                                                                                              \
  int NAME##_comp(const VALUE *a, const VALUE *b) CAMPOTIPO_NOEXCEPT {                           \
    return compare(units(a), units(b));                                                          \
  }                                                                                              \
  void NAME##_copia(VALUE *dest, const VALUE *src) CAMPOTIPO_NOEXCEPT { *dest = *src; }          \
  int NAME##_se_zero(const VALUE *value) CAMPOTIPO_NOEXCEPT { return compare(units(value), 0); } \
  int NAME##_div_byte(VALUE *dest, const VALUE *src, int divisor) CAMPOTIPO_NOEXCEPT {           \
    return divide(dest, units(src), divisor);                                                    \
  }                                                                                              \
  void NAME##_mul_byte(VALUE *dest, const VALUE *src, int factor) CAMPOTIPO_NOEXCEPT {           \
    demand(factor == 10 || factor == 100);                                                       \
    set(dest, (wide)units(src) * factor);                                                        \
  }                                                                                              \
  void NAME##_som_long(VALUE *dest, const VALUE *src, long count) CAMPOTIPO_NOEXCEPT {           \
    add(dest, src, count);                                                                       \
  }                                                                                              \
  void NAME##_porc_mul(VALUE *dest, const VALUE *src, long factor) CAMPOTIPO_NOEXCEPT {          \
    percent_of(dest, src, factor);                                                               \
  }                                                                                              \
  void NAME##_porc_div(long *quotient, const VALUE *numerator, const VALUE *denominator)         \
      CAMPOTIPO_NOEXCEPT {                                                                       \
    *quotient = ratio(units(numerator), units(denominator));                                     \
  }

MONEY(QUANTIA, _QUANTIA, 2)
MONEY(PARCELA, PARCELA, PARCELA_fixo)

void _QUANTIA_trunca(QUANTIA *value) CAMPOTIPO_NOEXCEPT { (void)value; }
