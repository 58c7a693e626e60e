#include "support/numbers.hpp"

#include <campotipo-support/numbers.h>

namespace numbers = campotipo::numbers;
using campotipo::bytes::load_le;
using campotipo::bytes::store;

extern "C" {
int _ato1(unsigned char *dest, const char *text) { return numbers::parse<1>(dest, text); }
int _ato2(unsigned char *dest, const char *text) { return numbers::parse<2>(dest, text); }
int _ato3(unsigned char *dest, const char *text) { return numbers::parse<3>(dest, text); }
int _ato4(unsigned char *dest, const char *text) { return numbers::parse<4>(dest, text); }
int _ato5(unsigned char *dest, const char *text) { return numbers::parse<5>(dest, text); }
int _ato6(unsigned char *dest, const char *text) { return numbers::parse<6>(dest, text); }
int _ato7(unsigned char *dest, const char *text) { return numbers::parse<7>(dest, text); }
int _ato8(unsigned char *dest, const char *text) { return numbers::parse<8>(dest, text); }

int _ato1fixo(unsigned char *dest, const char *text, int decimals) {
  return numbers::parse_fixed<1>(dest, text, decimals);
}
int _ato2fixo(unsigned char *dest, const char *text, int decimals) {
  return numbers::parse_fixed<2>(dest, text, decimals);
}
int _ato3fixo(unsigned char *dest, const char *text, int decimals) {
  return numbers::parse_fixed<3>(dest, text, decimals);
}
int _ato4fixo(unsigned char *dest, const char *text, int decimals) {
  return numbers::parse_fixed<4>(dest, text, decimals);
}
int _ato5fixo(unsigned char *dest, const char *text, int decimals) {
  return numbers::parse_fixed<5>(dest, text, decimals);
}
int _ato6fixo(unsigned char *dest, const char *text, int decimals) {
  return numbers::parse_fixed<6>(dest, text, decimals);
}
int _ato7fixo(unsigned char *dest, const char *text, int decimals) {
  return numbers::parse_fixed<7>(dest, text, decimals);
}
int _ato8fixo(unsigned char *dest, const char *text, int decimals) {
  return numbers::parse_fixed<8>(dest, text, decimals);
}

char *_1toa(char *text, const unsigned char *src) { return numbers::print<1>(text, src); }
char *_2toa(char *text, const unsigned char *src) { return numbers::print<2>(text, src); }
char *_3toa(char *text, const unsigned char *src) { return numbers::print<3>(text, src); }
char *_4toa(char *text, const unsigned char *src) { return numbers::print<4>(text, src); }
char *_5toa(char *text, const unsigned char *src) { return numbers::print<5>(text, src); }
char *_6toa(char *text, const unsigned char *src) { return numbers::print<6>(text, src); }
char *_7toa(char *text, const unsigned char *src) { return numbers::print<7>(text, src); }
char *_8toa(char *text, const unsigned char *src) { return numbers::print<8>(text, src); }

char *_1toafixo(char *text, const unsigned char *src, int decimals) {
  return numbers::print_fixed<1>(text, src, decimals);
}
char *_2toafixo(char *text, const unsigned char *src, int decimals) {
  return numbers::print_fixed<2>(text, src, decimals);
}
char *_3toafixo(char *text, const unsigned char *src, int decimals) {
  return numbers::print_fixed<3>(text, src, decimals);
}
char *_4toafixo(char *text, const unsigned char *src, int decimals) {
  return numbers::print_fixed<4>(text, src, decimals);
}
char *_5toafixo(char *text, const unsigned char *src, int decimals) {
  return numbers::print_fixed<5>(text, src, decimals);
}
char *_6toafixo(char *text, const unsigned char *src, int decimals) {
  return numbers::print_fixed<6>(text, src, decimals);
}
char *_7toafixo(char *text, const unsigned char *src, int decimals) {
  return numbers::print_fixed<7>(text, src, decimals);
}
char *_8toafixo(char *text, const unsigned char *src, int decimals) {
  return numbers::print_fixed<8>(text, src, decimals);
}

char *_8btoa(const unsigned char *src, char *text, int digits) {
  return numbers::to_text_exact(text, load_le<8>(src), digits);
}

int BIN1_compara(const unsigned char *a, const unsigned char *b) {
  return numbers::compare<1>(a, b);
}
int BIN2_compara(const unsigned char *a, const unsigned char *b) {
  return numbers::compare<2>(a, b);
}
int BIN3_compara(const unsigned char *a, const unsigned char *b) {
  return numbers::compare<3>(a, b);
}
int BIN4_compara(const unsigned char *a, const unsigned char *b) {
  return numbers::compare<4>(a, b);
}
int BIN5_compara(const unsigned char *a, const unsigned char *b) {
  return numbers::compare<5>(a, b);
}
int BIN6_compara(const unsigned char *a, const unsigned char *b) {
  return numbers::compare<6>(a, b);
}
int BIN7_compara(const unsigned char *a, const unsigned char *b) {
  return numbers::compare<7>(a, b);
}
int BIN8_compara(const unsigned char *a, const unsigned char *b) {
  return numbers::compare<8>(a, b);
}

void _8soma(unsigned char *dest, const unsigned char *a, const unsigned char *b) {
  store(dest, load_le<8>(a) + load_le<8>(b));
}
void _8byte_mul_byte(unsigned char *dest, const unsigned char *src, int factor) {
  store(dest, load_le<8>(src) * static_cast<std::uint64_t>(factor));
}
void _8byte_div_byte(unsigned char *dest, const unsigned char *src, int divisor) {
  const auto by = static_cast<std::uint64_t>(divisor);
  store(dest, by != 0 ? load_le<8>(src) / by : 0);
}

uint32_t _3ulong(const unsigned char *src) { return static_cast<uint32_t>(load_le<3>(src)); }
void _3to8(unsigned char *dest, const unsigned char *src) { store(dest, load_le<3>(src)); }
}
