#pragma once

#include "idnumbers/taxpayer.hpp"

// Check tables of the documents that the engine can express.
namespace campotipo::idnumbers::tables {

// 0 and 1 have no digit of their own: both give 0.
inline constexpr unsigned char kElevenLess[16] = {0, 0, 9, 8, 7, 6, 5, 4, 3, 2, 1};
inline constexpr unsigned char kTenLess[16] = {0, 9, 8, 7, 6, 5, 4, 3, 2, 1};
// 0, 1 and 10 give 1: the general digit of a bank slip is never 0.
inline constexpr unsigned char kBankSlip[16] = {1, 1, 9, 8, 7, 6, 5, 4, 3, 2, 1};
// The remainder itself, and 0 for 10.
inline constexpr unsigned char kRemainder[16] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0};
inline constexpr unsigned char kRemainderSpMg[16] = {1, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0};
// Remainder 1 asks for a digit 10, which no text holds.
inline constexpr unsigned char kHealthCard[16] = {0, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1};

// Weights from `first` to `last` over and over from the right, stepping over the digit's own place.
constexpr Table cycling(unsigned char position, unsigned char modulus, unsigned char flags,
                        int first, int last, const unsigned char (&results)[16]) {
  Table table{position, modulus, flags, {}, {}};
  const int step = first < last ? 1 : -1;
  int weight = first;
  for (unsigned i = 0; i < kMaxLength; ++i) {
    if (i == position) continue;
    table.weights[i] = static_cast<unsigned char>(weight);
    weight = weight == last ? first : weight + step;
  }
  for (unsigned i = 0; i < 16; ++i) table.results[i] = results[i];
  return table;
}

// Weights that fall from `first` to `last`, beginning at place `from`.
constexpr Table falling(unsigned char position, unsigned from, int first, int last,
                        const unsigned char (&results)[16]) {
  Table table{position, 11, 0, {}, {}};
  for (int weight = first; weight >= last; --weight)
    table.weights[from++] = static_cast<unsigned char>(weight);
  for (unsigned i = 0; i < 16; ++i) table.results[i] = results[i];
  return table;
}

inline constexpr unsigned char kSumAcceptingZero = kDigitSum | kZeroAccepted;

inline constexpr Table kPis = cycling(0, 11, 0, 2, 9, kElevenLess);
inline constexpr Table kAccessKey = kPis;
inline constexpr Table kModulo10 = cycling(0, 10, kSumAcceptingZero, 2, 1, kTenLess);
inline constexpr Table kModulo11 = cycling(0, 11, kZeroAccepted, 2, 9, kElevenLess);
inline constexpr Table kBankSlipGeneral = cycling(39, 11, 0, 2, 9, kBankSlip);
inline constexpr Table kUtilityGeneral10 = cycling(40, 10, kDigitSum, 2, 1, kTenLess);
inline constexpr Table kUtilityGeneral11 = cycling(40, 11, 0, 2, 9, kElevenLess);
inline constexpr Table kVoterFirst = falling(1, 4, 9, 2, kRemainder);
inline constexpr Table kVoterSecond = falling(0, 1, 9, 7, kRemainder);
inline constexpr Table kVoterFirstSpMg = falling(1, 4, 9, 2, kRemainderSpMg);
inline constexpr Table kVoterSecondSpMg = falling(0, 1, 9, 7, kRemainderSpMg);
inline constexpr Table kCard = cycling(0, 10, kDigitSum, 2, 1, kTenLess);
inline constexpr Table kHealth = cycling(0, 11, 0, 2, 15, kHealthCard);

static_assert(kBankSlipGeneral.weights[38] == 8 && kBankSlipGeneral.weights[40] == 9);
static_assert(kVoterFirst.weights[4] == 9 && kVoterFirst.weights[11] == 2);

}  // namespace campotipo::idnumbers::tables
