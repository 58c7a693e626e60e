#include "codes/digit_string.hpp"

namespace digit_string = campotipo::codes::digit_string;

extern "C" {

int BSTR21_atob(unsigned char *dest, const char *text) {
  return digit_string::from_text<9>(dest, text);
}
int BSTR23_atob(unsigned char *dest, const char *text) {
  return digit_string::from_text<10>(dest, text);
}
int BSTR26_atob(unsigned char *dest, const char *text) {
  return digit_string::from_text<11>(dest, text);
}
int BSTR28_atob(unsigned char *dest, const char *text) {
  return digit_string::from_text<12>(dest, text);
}
int BSTR31_atob(unsigned char *dest, const char *text) {
  return digit_string::from_text<13>(dest, text);
}
int BSTR33_atob(unsigned char *dest, const char *text) {
  return digit_string::from_text<14>(dest, text);
}
int BSTR35_atob(unsigned char *dest, const char *text) {
  return digit_string::from_text<15>(dest, text);
}
int BSTR38_atob(unsigned char *dest, const char *text) {
  return digit_string::from_text<16>(dest, text);
}

char *BSTR21_btoa(char *text, const unsigned char *src) {
  return digit_string::to_text<9>(text, src);
}
char *BSTR23_btoa(char *text, const unsigned char *src) {
  return digit_string::to_text<10>(text, src);
}
char *BSTR26_btoa(char *text, const unsigned char *src) {
  return digit_string::to_text<11>(text, src);
}
char *BSTR28_btoa(char *text, const unsigned char *src) {
  return digit_string::to_text<12>(text, src);
}
char *BSTR31_btoa(char *text, const unsigned char *src) {
  return digit_string::to_text<13>(text, src);
}
char *BSTR33_btoa(char *text, const unsigned char *src) {
  return digit_string::to_text<14>(text, src);
}
char *BSTR35_btoa(char *text, const unsigned char *src) {
  return digit_string::to_text<15>(text, src);
}
char *BSTR38_btoa(char *text, const unsigned char *src) {
  return digit_string::to_text<16>(text, src);
}

int BSTR21_bem_formado(const unsigned char *src) { return digit_string::is_well_formed<9>(src); }
int BSTR23_bem_formado(const unsigned char *src) { return digit_string::is_well_formed<10>(src); }
int BSTR26_bem_formado(const unsigned char *src) { return digit_string::is_well_formed<11>(src); }
int BSTR28_bem_formado(const unsigned char *src) { return digit_string::is_well_formed<12>(src); }
int BSTR31_bem_formado(const unsigned char *src) { return digit_string::is_well_formed<13>(src); }
int BSTR33_bem_formado(const unsigned char *src) { return digit_string::is_well_formed<14>(src); }
int BSTR35_bem_formado(const unsigned char *src) { return digit_string::is_well_formed<15>(src); }
int BSTR38_bem_formado(const unsigned char *src) { return digit_string::is_well_formed<16>(src); }
}
