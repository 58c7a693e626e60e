#include "support/money.hpp"

#include <campotipo-support/money.h>

namespace money = campotipo::money;

namespace {
constexpr int kQuantiaDecimals = 2;
}

extern "C" {
int PARCELA_fixo = 4;

void _QUANTIA_atov(QUANTIA *dest, const char *text) { money::parse(dest, text, kQuantiaDecimals); }
void PARCELA_atov(PARCELA *dest, const char *text) { money::parse(dest, text, PARCELA_fixo); }

char *_QUANTIA_vtoa(char *text, const QUANTIA *value) {
  return money::print(text, value, kQuantiaDecimals);
}
char *PARCELA_vtoa(char *text, const PARCELA *value) {
  return money::print(text, value, PARCELA_fixo);
}

int _QUANTIA_comp(const QUANTIA *a, const QUANTIA *b) { return money::compare(a, b); }
int PARCELA_comp(const PARCELA *a, const PARCELA *b) { return money::compare(a, b); }

void _QUANTIA_copia(QUANTIA *dest, const QUANTIA *src) { *dest = *src; }
void PARCELA_copia(PARCELA *dest, const PARCELA *src) { *dest = *src; }

int _QUANTIA_se_zero(const QUANTIA *value) { return money::sign(value); }
int PARCELA_se_zero(const PARCELA *value) { return money::sign(value); }

int _QUANTIA_div_byte(QUANTIA *dest, const QUANTIA *src, int divisor) {
  return money::divide(dest, src, divisor);
}
int PARCELA_div_byte(PARCELA *dest, const PARCELA *src, int divisor) {
  return money::divide(dest, src, divisor);
}

void _QUANTIA_mul_byte(QUANTIA *dest, const QUANTIA *src, int factor) {
  money::multiply(dest, src, factor);
}
void PARCELA_mul_byte(PARCELA *dest, const PARCELA *src, int factor) {
  money::multiply(dest, src, factor);
}

void _QUANTIA_som_long(QUANTIA *dest, const QUANTIA *src, long units) {
  money::add(dest, src, units);
}
void PARCELA_som_long(PARCELA *dest, const PARCELA *src, long units) {
  money::add(dest, src, units);
}

void _QUANTIA_porc_mul(QUANTIA *dest, const QUANTIA *src, long factor) {
  money::percent_of(dest, src, factor);
}
void PARCELA_porc_mul(PARCELA *dest, const PARCELA *src, long factor) {
  money::percent_of(dest, src, factor);
}

void _QUANTIA_porc_div(long *ratio, const QUANTIA *numerator, const QUANTIA *denominator) {
  money::percent_ratio(ratio, numerator, denominator);
}
void PARCELA_porc_div(long *ratio, const PARCELA *numerator, const PARCELA *denominator) {
  money::percent_ratio(ratio, numerator, denominator);
}

// The count of units holds nothing below a unit.
void _QUANTIA_trunca(QUANTIA *) {}
}
