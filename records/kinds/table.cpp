#include <campotipo-support/money.h>
#include <campotipo-support/numbers.h>
#include <campotipo/codes.h>
#include <campotipo/percent.h>
#include <campotipo/quantities.h>

#include <algorithm>

#include "kinds/bits.hpp"
#include "kinds/characters.hpp"
#include "kinds/dates.hpp"
#include "kinds/money.hpp"
#include "kinds/numbers.hpp"
#include "kinds/text_dates.hpp"
#include "kinds/text_numbers.hpp"
#include "kinds/texts.hpp"
#include "kinds/type.hpp"

namespace campotipo::records {

namespace {

// The percents have no order of their own in the library: that of the numbers they are.
constexpr FieldType kTypes[] = {
    texts::code<5, CODALF05_opc_salvou, CODALF05_btoa, CODALF05_compara, CODALF05_nao_zero>(
        "CODALF05"),
    texts::code<12, CODALF12_opc_salvou, CODALF12_btoa, CODALF12_compara, CODALF12_nao_zero>(
        "CODALF12"),
    texts::code<14, CODALF14_opc_salvou, CODALF14_btoa, CODALF14_compara, CODALF14_nao_zero>(
        "CODALF14"),
    texts::code<17, CODALF17_opc_salvou, CODALF17_btoa, CODALF17_compara, CODALF17_nao_zero>(
        "CODALF17"),
    texts::code<20, CODALF20_opc_salvou, CODALF20_btoa, CODALF20_compara, CODALF20_nao_zero>(
        "CODALF20"),
    texts::code<32, CODALF32_opc_salvou, CODALF32_btoa, CODALF32_compara, CODALF32_nao_zero>(
        "CODALF32"),
    texts::code<36, CODALF36_opc_salvou, CODALF36_btoa, CODALF36_compara, CODALF36_nao_zero>(
        "CODALF36"),
    texts::code<40, CODALF40_opc_salvou, CODALF40_btoa, CODALF40_compara, CODALF40_nao_zero>(
        "CODALF40"),
    texts::any_code("CODALFA"),
    texts::string<50, CODSTR50_compara, CODSTR50_nao_zero>("CODSTR50"),
    texts::string<52, CODSTR52_compara, CODSTR52_nao_zero>("CODSTR52"),
    texts::any_string("CODSTR"),
    texts::digits<21, 10, BSTR21_atob, BSTR21_btoa, BSTR21_bem_formado>("BSTR21"),
    texts::digits<23, 11, BSTR23_atob, BSTR23_btoa, BSTR23_bem_formado>("BSTR23"),
    texts::digits<26, 12, BSTR26_atob, BSTR26_btoa, BSTR26_bem_formado>("BSTR26"),
    texts::digits<28, 13, BSTR28_atob, BSTR28_btoa, BSTR28_bem_formado>("BSTR28"),
    texts::digits<31, 14, BSTR31_atob, BSTR31_btoa, BSTR31_bem_formado>("BSTR31"),
    texts::digits<33, 15, BSTR33_atob, BSTR33_btoa, BSTR33_bem_formado>("BSTR33"),
    texts::digits<35, 16, BSTR35_atob, BSTR35_btoa, BSTR35_bem_formado>("BSTR35"),
    texts::digits<38, 17, BSTR38_atob, BSTR38_btoa, BSTR38_bem_formado>("BSTR38"),
    numbers::binary<1, _ato1fixo, _1toafixo, BIN1_compara>("BIN1"),
    numbers::binary<2, _ato2fixo, _2toafixo, BIN2_compara>("BIN2"),
    numbers::binary<3, _ato3fixo, _3toafixo, BIN3_compara>("BIN3"),
    numbers::binary<4, _ato4fixo, _4toafixo, BIN4_compara>("BIN4"),
    numbers::binary<5, _ato5fixo, _5toafixo, BIN5_compara>("BIN5"),
    numbers::binary<6, _ato6fixo, _6toafixo, BIN6_compara>("BIN6"),
    numbers::binary<7, _ato7fixo, _7toafixo, BIN7_compara>("BIN7"),
    numbers::binary<8, _ato8fixo, _8toafixo, BIN8_compara>("BIN8"),
    numbers::quantity<9, BINQ9_atob_fixo, BINQ9_btoafixo, BINQ9_compara, BINQ9_bem_formado>(
        "BINQ9"),
    numbers::quantity<10, BINQ10_atob_fixo, BINQ10_btoafixo, BINQ10_compara, BINQ10_bem_formado>(
        "BINQ10"),
    numbers::quantity<11, BINQ11_atob_fixo, BINQ11_btoafixo, BINQ11_compara, BINQ11_bem_formado>(
        "BINQ11"),
    numbers::quantity<12, BINQ12_atob_fixo, BINQ12_btoafixo, BINQ12_compara, BINQ12_bem_formado>(
        "BINQ12"),
    numbers::quantity<13, BINQ13_atob_fixo, BINQ13_btoafixo, BINQ13_compara, BINQ13_bem_formado>(
        "BINQ13"),
    numbers::quantity<14, BINQ14_atob_fixo, BINQ14_btoafixo, BINQ14_compara, BINQ14_bem_formado>(
        "BINQ14"),
    numbers::quantity<15, BINQ15_atob_fixo, BINQ15_btoafixo, BINQ15_compara, BINQ15_bem_formado>(
        "BINQ15"),
    numbers::quantity<16, BINQ16_atob_fixo, BINQ16_btoafixo, BINQ16_compara, BINQ16_bem_formado>(
        "BINQ16"),
    numbers::quantity<17, BINQ17_atob_fixo, BINQ17_btoafixo, BINQ17_compara, BINQ17_bem_formado>(
        "BINQ17"),
    numbers::quantity<18, BINQ18_atob_fixo, BINQ18_btoafixo, BINQ18_compara, BINQ18_bem_formado>(
        "BINQ18"),
    numbers::quantity<19, BINQ19_atob_fixo, BINQ19_btoafixo, BINQ19_compara, BINQ19_bem_formado>(
        "BINQ19"),
    numbers::quantity<20, BINQ20_atob_fixo, BINQ20_btoafixo, BINQ20_compara, BINQ20_bem_formado>(
        "BINQ20"),
    numbers::quantity<21, BINQ21_atob_fixo, BINQ21_btoafixo, BINQ21_compara, BINQ21_bem_formado>(
        "BINQ21"),
    money::percent<1, 0, _ato1fixo, PORC0_edita, BIN1_compara>("PORC0"),
    money::percent<2, 1, _ato2fixo, PORC1_edita, BIN2_compara>("PORC1"),
    money::percent<2, 2, _ato2fixo, PORC2_edita, BIN2_compara>("PORC2"),
    money::percent<4, 4, _ato4fixo, PORC4_edita, BIN4_compara>("PORC4"),
    money::money("QUANTIA", "-1234.56", "NUMERIC(19, 2)"),
    money::money("PARCELA", "-1234.5678", "NUMERIC(19, %s)"),
    dates::date("DATAC"),
    times::hour_minute("HORAC"),
    times::hour_minute_second("HHMMSS"),
    bits::area("ZBTFIELD"),
    bits::guid("ZGUID"),
    characters::text("TEXT"),
    characters::digits("DIGITS"),
    text_numbers::number("NUM"),
    text_dates::date("DATE"),
    text_dates::time("TIME"),
    bits::fill("fill"),
};

}  // namespace

std::span<const FieldType> field_types() { return kTypes; }

const FieldType *field_type(std::string_view name) {
  const auto *found = std::find_if(std::begin(kTypes), std::end(kTypes),
                                   [&](const FieldType &type) { return name == type.name; });
  return found == std::end(kTypes) ? nullptr : found;
}

bool is_bit_area(const FieldType &type) { return (type.keys & kBits) != 0; }

bool is_fill(const FieldType &type) { return (type.keys & kValue) != 0; }

}  // namespace campotipo::records
