#include <campotipo/idnumbers.h>

#include "idnumbers/letter_code.hpp"

using campotipo::idnumbers::LetterCode;

extern "C" {

int LETRABIN_para_binario(int character) { return LetterCode<false, false>::to_number(character); }
int LETR0BIN_para_binario(int character) { return LetterCode<true, false>::to_number(character); }
int LETRNBIN_para_binario(int character) { return LetterCode<false, true>::to_number(character); }
int LETR0NBIN_para_binario(int character) { return LetterCode<true, true>::to_number(character); }

int LETRABIN_para_letra(int number) { return LetterCode<false, false>::to_character(number); }
int LETR0BIN_para_letra(int number) { return LetterCode<true, false>::to_character(number); }
int LETRNBIN_para_letra(int number) { return LetterCode<false, true>::to_character(number); }
int LETR0NBIN_para_letra(int number) { return LetterCode<true, true>::to_character(number); }

int LETRABIN_bem_formado(int number) { return LetterCode<false, false>::has(number); }
int LETR0BIN_bem_formado(int number) { return LetterCode<true, false>::has(number); }
int LETRNBIN_bem_formado(int number) { return LetterCode<false, true>::has(number); }
int LETR0NBIN_bem_formado(int number) { return LetterCode<true, true>::has(number); }
}
