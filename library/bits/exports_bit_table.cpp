#include "bits/bit_table.hpp"

namespace table = campotipo::bits::table;

extern "C" {

void TABBOOL_cria(TABBOOL *tabela, int tamanho, int base, int padrao) {
  table::create(tabela, tamanho, base, padrao);
}
void TABBOOL_destroi(TABBOOL *tabela) { table::destroy(tabela); }
void TABBOOL_seta(TABBOOL *tabela, int index) { table::write<true>(tabela, index); }
void TABBOOL_reseta(TABBOOL *tabela, int index) { table::write<false>(tabela, index); }
int TABBOOL_testa(const TABBOOL *tabela, int index) { return table::test(tabela, index); }
}
