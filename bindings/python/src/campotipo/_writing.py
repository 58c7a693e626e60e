"""Files of records, written."""

from __future__ import annotations

import os

from . import _core
from ._errors import Error
from ._layout import layout as layout_of
from ._records import open as open_records

TYPE_CHECKING = False
if TYPE_CHECKING:
    from collections.abc import Callable, Iterable, Iterator
    from typing import Any

    from ._layout import Layout

_ROWS = 10_000  # of a batch


def write(
    layout: str | os.PathLike[str] | Layout,
    path: Any,
    rows: Any,
    kind: str | None = None,
    lossy: bool = False,
) -> tuple[int, int]:
    """Writes records of one kind; gives how many, and how many of their values are not stored whole.

    - `path`: a path, whose file is whole or is not there, or an open binary file.
    - `rows`: anything with Arrow's stream protocol, as frames and tables are, or dicts of values (for
      those pyarrow is needed). Columns are found by their names; what is missing or null is no value;
      `_record`, `_file` and `_fault` are passed over.
    - `lossy`: without it a value that its field does not hold whole raises RecordError.

    >>> import campotipo
    >>> banks = campotipo.open("examples/bancos.toml", "bancos.reg")
    >>> write("examples/bancos.toml", "copy.reg", banks)
    (513, 0)
    """
    read_by = layout_of(layout)
    read_by.kind(kind)  # one that is not there is told before anything is made
    if not hasattr(rows, "__arrow_c_stream__"):
        rows = _table(read_by, kind, rows)

    def into(write: Callable[[bytes], Any]) -> tuple[int, int]:
        stream = rows.__arrow_c_stream__()
        return _core.write_records(read_by._handle, kind, lossy, stream, write)

    if hasattr(path, "write"):
        return into(lambda content: _all_of(path, content))
    return _whole(os.fspath(path), into)


def _all_of(file: Any, content: bytes) -> None:
    """A raw file may take a part."""
    rest = memoryview(content)
    while rest:
        taken = file.write(rest)
        if taken is None or taken == len(rest):
            return
        rest = rest[taken:]


def _whole(path: Any, into: Callable[[Callable[[bytes], Any]], tuple[int, int]]) -> tuple[int, int]:
    """Writes beside the path, and takes its place at the end."""
    import tempfile

    path = os.path.realpath(path)
    folder, name = os.path.split(path)
    with tempfile.NamedTemporaryFile(dir=folder, prefix=name, delete=False) as file:
        try:
            told = into(file.write)
            file.flush()
            mask = os.umask(0)
            os.umask(mask)
            os.chmod(file.name, 0o666 & ~mask)
            os.replace(file.name, path)
        except BaseException:
            os.unlink(file.name)
            raise
    return told


def _table(layout: Layout, kind: str | None, rows: Iterable[dict[str, Any]]) -> Any:
    """Rows as a stream of the columns that the layout has."""
    from importlib import import_module

    try:
        pyarrow: Any = import_module("pyarrow")
    except ImportError:
        raise Error("rows of dicts need pyarrow; frames and tables do not") from None
    schema = pyarrow.schema(open_records(layout, b"", kind, wide="decimal256"))
    names = set(schema.names) | {"_file", "_fault"}
    each = iter(rows)  # what is none is told at once

    def batches() -> Iterator[Any]:
        some: list[dict[str, Any]] = []
        for number, row in enumerate(each, 1):
            if not names.issuperset(row):
                unknown = min(set(row) - names)
                raise Error(f"row {number}: {unknown!r} is no column of {layout.kind(kind).name}")
            some.append(row)
            if len(some) == _ROWS:
                yield pyarrow.RecordBatch.from_pylist(some, schema)
                some = []
        if some:
            yield pyarrow.RecordBatch.from_pylist(some, schema)

    return pyarrow.RecordBatchReader.from_batches(schema, batches())
