#include "quantities/scaling.hpp"

namespace scaling = campotipo::quantities::scaling;

extern "C" {
int BINQ16_div_por_potencia_de_dez(unsigned char *dest, const unsigned char *src,
                                   unsigned int power) {
  return scaling::divide<16>(dest, src, power);
}
int BINQ17_div_por_potencia_de_dez(unsigned char *dest, const unsigned char *src,
                                   unsigned int power) {
  return scaling::divide<17>(dest, src, power);
}
int BINQ18_div_por_potencia_de_dez(unsigned char *dest, const unsigned char *src,
                                   unsigned int power) {
  return scaling::divide<18>(dest, src, power);
}
int BINQ19_div_por_potencia_de_dez(unsigned char *dest, const unsigned char *src,
                                   unsigned int power) {
  return scaling::divide<19>(dest, src, power);
}
int BINQ20_div_por_potencia_de_dez(unsigned char *dest, const unsigned char *src,
                                   unsigned int power) {
  return scaling::divide<20>(dest, src, power);
}
int BINQ21_div_por_potencia_de_dez(unsigned char *dest, const unsigned char *src,
                                   unsigned int power) {
  return scaling::divide<21>(dest, src, power);
}

int BINQ16_div_por_10(unsigned char *dest, const unsigned char *src) {
  return scaling::divide<16>(dest, src, 1);
}
int BINQ17_div_por_10(unsigned char *dest, const unsigned char *src) {
  return scaling::divide<17>(dest, src, 1);
}
int BINQ18_div_por_10(unsigned char *dest, const unsigned char *src) {
  return scaling::divide<18>(dest, src, 1);
}
int BINQ19_div_por_10(unsigned char *dest, const unsigned char *src) {
  return scaling::divide<19>(dest, src, 1);
}
int BINQ20_div_por_10(unsigned char *dest, const unsigned char *src) {
  return scaling::divide<20>(dest, src, 1);
}
int BINQ21_div_por_10(unsigned char *dest, const unsigned char *src) {
  return scaling::divide<21>(dest, src, 1);
}

int BINQ16_div_por_100(unsigned char *dest, const unsigned char *src) {
  return scaling::divide<16>(dest, src, 2);
}
int BINQ17_div_por_100(unsigned char *dest, const unsigned char *src) {
  return scaling::divide<17>(dest, src, 2);
}
int BINQ18_div_por_100(unsigned char *dest, const unsigned char *src) {
  return scaling::divide<18>(dest, src, 2);
}
int BINQ19_div_por_100(unsigned char *dest, const unsigned char *src) {
  return scaling::divide<19>(dest, src, 2);
}
int BINQ20_div_por_100(unsigned char *dest, const unsigned char *src) {
  return scaling::divide<20>(dest, src, 2);
}
int BINQ21_div_por_100(unsigned char *dest, const unsigned char *src) {
  return scaling::divide<21>(dest, src, 2);
}

void BINQ16_mul_por_potencia_de_dez(unsigned char *dest, const unsigned char *src,
                                    unsigned int power) {
  scaling::multiply<16>(dest, src, power);
}
void BINQ17_mul_por_potencia_de_dez(unsigned char *dest, const unsigned char *src,
                                    unsigned int power) {
  scaling::multiply<17>(dest, src, power);
}
void BINQ18_mul_por_potencia_de_dez(unsigned char *dest, const unsigned char *src,
                                    unsigned int power) {
  scaling::multiply<18>(dest, src, power);
}
void BINQ19_mul_por_potencia_de_dez(unsigned char *dest, const unsigned char *src,
                                    unsigned int power) {
  scaling::multiply<19>(dest, src, power);
}
void BINQ20_mul_por_potencia_de_dez(unsigned char *dest, const unsigned char *src,
                                    unsigned int power) {
  scaling::multiply<20>(dest, src, power);
}
void BINQ21_mul_por_potencia_de_dez(unsigned char *dest, const unsigned char *src,
                                    unsigned int power) {
  scaling::multiply<21>(dest, src, power);
}

void BINQ16_mul_por_10(unsigned char *dest, const unsigned char *src) {
  scaling::multiply<16>(dest, src, 1);
}
void BINQ17_mul_por_10(unsigned char *dest, const unsigned char *src) {
  scaling::multiply<17>(dest, src, 1);
}
void BINQ18_mul_por_10(unsigned char *dest, const unsigned char *src) {
  scaling::multiply<18>(dest, src, 1);
}
void BINQ19_mul_por_10(unsigned char *dest, const unsigned char *src) {
  scaling::multiply<19>(dest, src, 1);
}
void BINQ20_mul_por_10(unsigned char *dest, const unsigned char *src) {
  scaling::multiply<20>(dest, src, 1);
}
void BINQ21_mul_por_10(unsigned char *dest, const unsigned char *src) {
  scaling::multiply<21>(dest, src, 1);
}

void BINQ16_mul_por_100(unsigned char *dest, const unsigned char *src) {
  scaling::multiply<16>(dest, src, 2);
}
void BINQ17_mul_por_100(unsigned char *dest, const unsigned char *src) {
  scaling::multiply<17>(dest, src, 2);
}
void BINQ18_mul_por_100(unsigned char *dest, const unsigned char *src) {
  scaling::multiply<18>(dest, src, 2);
}
void BINQ19_mul_por_100(unsigned char *dest, const unsigned char *src) {
  scaling::multiply<19>(dest, src, 2);
}
void BINQ20_mul_por_100(unsigned char *dest, const unsigned char *src) {
  scaling::multiply<20>(dest, src, 2);
}
void BINQ21_mul_por_100(unsigned char *dest, const unsigned char *src) {
  scaling::multiply<21>(dest, src, 2);
}
}
