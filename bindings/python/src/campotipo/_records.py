"""Files of records, read as columns and as rows."""

from __future__ import annotations

import operator

from . import _core
from ._errors import Error
from ._layout import Layout, layout as layout_of
from ._sources import sources_of

TYPE_CHECKING = False
if TYPE_CHECKING:
    import os
    from collections.abc import Iterator, Sequence
    from typing import Any, Literal

    from ._sources import Source

    Wide = Literal["string", "decimal128", "decimal256"]
    Times = Literal["s", "ns"]
    Faults = Literal["error", "null"]

_WORDS: dict[str, tuple[str, ...]] = {
    "wide": ("string", "decimal128", "decimal256"),
    "times": ("s", "ns"),
    "faults": ("error", "null"),
}
_SHOWN = 5
_WIDTH = 80


class Records:
    """Records of one kind, made by open(). Nothing is read before it is asked for.

    - Arrow: anything that takes an object with `__arrow_c_stream__` reads it, as `pyarrow.table`,
      `polars.DataFrame`, `pandas.DataFrame.from_arrow` and DuckDB do: a new stream each time.
    - `for row in records` gives dicts of exact values: int, str, bool, `decimal.Decimal`,
      `datetime.date`, `datetime.time`, None.
    - `len(records)` is the number of rows, counted by reading through the file once and kept.
    - `records.splits(n)` are at most n such objects, which together hold each record once.

    It is pickled where it is read from paths.
    """

    __slots__ = ("_counted", "_files", "_layout", "_options", "_sources")

    _options: tuple[str | None, list[str] | None, int, int, int, bool]

    def __init__(
        self,
        layout: Layout,
        sources: Sequence[Source],
        files: bool,
        options: tuple[str | None, list[str] | None, int, int, int, bool],
    ) -> None:
        self._layout = layout
        self._sources = list(sources)
        self._files = files
        self._options = options
        self._counted: tuple[int, int] | None = None

    @property
    def layout(self) -> Layout:
        """The layout that it is read by."""
        return self._layout

    @property
    def kind(self) -> str:
        """The kind of its records."""
        return self._layout.kind(self._options[0]).name

    def _arguments(
        self, sources: Sequence[Source] | None = None, exact: bool = False, batch_rows: int = 0
    ) -> tuple[Any, ...]:
        kind, fields, wide, times, faults, skip = self._options
        # A number that columns show as text is a Decimal in rows.
        wide = 2 if exact and wide == 0 else wide
        places = [each.place() for each in (self._sources if sources is None else sources) if each.count != 0]
        handle = self._layout._handle
        return handle, places, kind, fields, wide, times, faults, skip, self._files, batch_rows

    def __arrow_c_stream__(self, requested_schema: object = None) -> object:
        """A new Arrow C stream of the records."""
        return _core.stream(*self._arguments())

    def __arrow_c_schema__(self) -> object:
        """The Arrow schema of the columns; no file is read."""
        return _core.schema(*self._arguments([]))

    def batches(self, rows: int = 0) -> Iterator[_core.Batch]:
        """The records as Arrow batches of so many rows at most (0: 65536), one after the other.

        >>> banks = open("examples/bancos.toml", "bancos.reg")
        >>> [len(batch) for batch in banks.batches(200)]
        [200, 200, 113]
        """
        return _core.batches(*self._arguments(batch_rows=rows))

    def __iter__(self) -> Iterator[dict[str, Any]]:
        return _core.rows(*self._arguments(exact=True))

    def _count(self) -> tuple[int, int]:
        if not all(source.again for source in self._sources):
            raise TypeError("these records cannot be read twice, so they are not counted")
        if self._counted is None:
            self._counted = _core.count(*self._arguments())
        return self._counted

    def __len__(self) -> int:
        return self._count()[0]

    def __bool__(self) -> bool:
        return True

    @property
    def skipped(self) -> int:
        """How many records do not follow the layout and are passed over, with `skip=True`."""
        return self._count()[1]

    def splits(self, n: int) -> list[Records]:
        """At most n parts of about the same size, in order, which together hold each record once.

        Each has the same columns, and can be sent to another process where the whole is read from
        paths. Records in memory, in open files and in compressed files stay one part.

        >>> banks = open("examples/bancos.toml", "bancos.reg")
        >>> [len(part) for part in banks.splits(4)]
        [129, 128, 128, 128]
        """
        n = operator.index(n)
        if n < 1:
            raise Error("splits: at least 1 is needed")
        groups: list[list[Source]] = []
        files = len(self._sources)
        if files >= n:
            bounds = [files * i // n for i in range(n + 1)]
            groups = [self._sources[a:b] for a, b in zip(bounds, bounds[1:])]
        else:
            for at, source in enumerate(self._sources):
                wanted = n // files + (at < n % files)
                groups += [[part] for part in source.splits(self._layout, wanted)]
        return [Records(self._layout, group, self._files, self._options) for group in groups]

    def __repr__(self) -> str:
        names = [source.name for source in self._sources[:2]] + ["..."] * (len(self._sources) > 2)
        head = f"<campotipo.Records: {self.kind} of {', '.join(names) or 'no file'}>"
        if not self._sources or not all(source.again for source in self._sources):
            return head
        try:
            part = self._sources[0].head(_SHOWN)
            rows = list(_core.rows(*self._arguments([part], exact=True)))
        except Exception as error:
            return f"{head}\n{type(error).__name__}: {error}"
        return "\n".join([head, *_table(rows)])

    def __getstate__(self) -> Any:
        return self._layout, self._sources, self._files, self._options

    def __setstate__(self, state: Any) -> None:
        self._layout, self._sources, self._files, self._options = state
        self._counted = None


def _table(rows: list[dict[str, Any]]) -> Iterator[str]:
    """Rows as lines of text, as many columns as a line has room for."""
    if not rows:
        return
    lines = [""] * (len(rows) + 1)
    for name in rows[0]:
        cells = [name] + ["" if row[name] is None else str(row[name]) for row in rows]
        width = min(max(map(len, cells)), 24)
        if len(lines[0]) + 2 + width > _WIDTH:
            lines = [line + "  ..." for line in lines[:1]] + lines[1:]
            break
        gap = "  " if lines[0] else ""
        lines = [
            line + gap + (cell if len(cell) <= width else cell[: width - 1] + "…").ljust(width)
            for line, cell in zip(lines, cells)
        ]
    yield from (line.rstrip() for line in lines)


def _word(name: str, word: str) -> int:
    words = _WORDS[name]
    if word not in words:
        raise Error(f"{name}: one of {', '.join(words)}, not {word!r}")
    return words.index(word)


def open(
    layout: str | os.PathLike[str] | Layout,
    path: Any,
    kind: str | None = None,
    fields: Sequence[str] | None = None,
    first: int = 1,
    count: int | None = None,
    wide: Wide = "string",
    times: Times = "s",
    faults: Faults = "error",
    skip: bool = False,
) -> Records:
    """Opens records of one kind.

    - `layout`: as layout() takes it.
    - `path`: a path, whose name may end in ".gz"; an open binary file; bytes or a memory map; a file
      of fsspec. A list of these, a folder or a pattern ("2024*.reg") is read as one, in the order
      of the names, and has the column `_file`.
    - `kind`: without it the only kind, or the main one of the layout.
    - `fields`: the columns wanted, in this order; without it all, behind `_record`, the number of
      the record in its file.
    - `first`, `count`: which records of the file, counted from 1, all kinds together.
    - `wide`: what numbers of more than 38 digits become in columns: "string", "decimal128" (an error
      for what does not fit) or "decimal256".
    - `times`: "s" or "ns", the unit of times in columns.
    - `faults`: "error" ends the reading at an invalid value, with its place; "null" reads it as null
      and names its field in the column `_fault`.
    - `skip`: pass over records that do not follow the layout, and count them in `skipped`.

    >>> banks = open("examples/bancos.toml", "bancos.reg", fields=["compe", "inicio_operacao"])
    >>> next(iter(banks))
    {'compe': '001', 'inicio_operacao': datetime.date(2002, 4, 22)}
    """
    read_by = layout_of(layout)
    options = (
        kind,
        None if fields is None else [str(field) for field in fields],
        _word("wide", wide),
        _word("times", times),
        _word("faults", faults),
        bool(skip),
    )
    if isinstance(fields, str):
        raise TypeError("fields: a list of names, not a str")
    if fields is not None and not options[1]:
        raise Error("fields: at least one is needed")
    first = operator.index(first)
    many = None if count is None else operator.index(count)
    if first < 1 or (many is not None and many < 0):
        raise Error("first counts from 1, and count from 0")
    if max(first, many or 0) >= 2**62:
        raise Error("first and count: no file has so many records")
    sources, files = sources_of(path)
    if (first, many) != (1, None):
        if len(sources) > 1:
            raise Error("first and count number the records of one file")
        sources = [sources[0].part(first, many)]
    made = Records(read_by, sources, files or "_file" in (options[1] or ()), options)
    made.__arrow_c_schema__()  # kinds and fields that are not there are told at once
    return made
