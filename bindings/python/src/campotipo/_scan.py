"""Files of records as lazy frames of polars."""

from __future__ import annotations

from . import _core
from ._records import Records, open

TYPE_CHECKING = False
if TYPE_CHECKING:
    import os
    from collections.abc import Iterator, Sequence
    from typing import Any

    import polars

    from ._layout import Layout
    from ._records import Faults, Wide


def scan_polars(
    layout: str | os.PathLike[str] | Layout,
    path: Any,
    kind: str | None = None,
    fields: Sequence[str] | None = None,
    wide: Wide = "string",
    faults: Faults = "error",
    skip: bool = False,
) -> polars.LazyFrame:
    """A lazy frame of polars over records: only the columns that the query uses are decoded, and
    reading ends with the rows that it asks for. Arguments as those of open(); polars is needed.

    >>> banks = scan_polars("examples/bancos.toml", "bancos.reg")
    >>> banks.select("compe").head(2).collect()["compe"].to_list()
    ['001', '003']
    """
    import polars
    from polars.io.plugins import register_io_source

    records = open(layout, path, kind, fields, wide=wide, faults=faults, skip=skip)
    schema = polars.DataFrame(_Empty(records)).schema

    def read(
        columns: list[str] | None,
        predicate: polars.Expr | None,
        n_rows: int | None,
        batch_size: int | None,
    ) -> Iterator[polars.DataFrame]:
        chosen = records if columns is None else _with_fields(records, columns)
        left = n_rows
        rows = batch_size or 0
        if left is not None:
            rows = min(rows or 65536, max(left, 1))
        for batch in chosen.batches(rows):
            frame = polars.DataFrame(batch)
            if left is not None:
                frame = frame.head(left)
                left -= frame.height
            yield frame if predicate is None else frame.filter(predicate)
            if left == 0:
                break

    return register_io_source(read, schema=schema)


class _Empty:
    """The columns of records, and none of them."""

    def __init__(self, records: Records) -> None:
        self.records = records

    def __arrow_c_stream__(self, requested_schema: object = None) -> object:
        return _core.stream(*self.records._arguments([]))


def _with_fields(records: Records, columns: list[str]) -> Records:
    kind, _, wide, times, faults, skip = records._options
    # A query may ask for no column, only for the number of rows.
    options = kind, columns or ["_record"], wide, times, faults, skip
    return Records(records._layout, records._sources, records._files, options)
