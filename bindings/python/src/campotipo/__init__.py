"""Value types of Brazilian commercial records, and files of such records, for Python.

    >>> import campotipo
    >>> campotipo.valida("CPF", "123.456.789-09")
    True
    >>> banks = campotipo.open("examples/bancos.toml", "bancos.reg")
    >>> len(banks)
    513

Files: layout(), layouts(), open(), scan_polars(), write(). Documents: valida(), limpa(), edita(),
identifica(), documentos(), of a text or of a whole column. Values: codalfa_, zbinario_, porc_,
datac_, zguid_, arredonda(), soma_dias(), soma_meses(). Errors: Error, LayoutError, RecordError.
"""

from __future__ import annotations

from ._core import Batch, Column, documentos, edita, identifica, limpa, valida
from ._core import VERSION as __version__
from ._errors import Error, LayoutError, RecordError
from ._layout import Field, Kind, Layout, layout, layouts
from ._records import Records, open
from ._scan import scan_polars
from ._values import (
    arredonda,
    codalfa_extrai,
    codalfa_salva,
    datac_extrai,
    datac_salva,
    porc_divide,
    porc_inv_multiplica,
    porc_inverte,
    porc_multiplica,
    soma_dias,
    soma_meses,
    zbinario_digitos,
    zbinario_extrai,
    zbinario_salva,
    zguid_gera,
    zguid_parse,
    zguid_string,
)
from ._writing import write

__all__ = [
    "Batch",
    "Column",
    "Error",
    "Field",
    "Kind",
    "Layout",
    "LayoutError",
    "RecordError",
    "Records",
    "__version__",
    "arredonda",
    "codalfa_extrai",
    "codalfa_salva",
    "datac_extrai",
    "datac_salva",
    "documentos",
    "edita",
    "identifica",
    "layout",
    "layouts",
    "limpa",
    "open",
    "porc_divide",
    "porc_inv_multiplica",
    "porc_inverte",
    "porc_multiplica",
    "scan_polars",
    "soma_dias",
    "soma_meses",
    "valida",
    "write",
    "zbinario_digitos",
    "zbinario_extrai",
    "zbinario_salva",
    "zguid_gera",
    "zguid_parse",
    "zguid_string",
]
