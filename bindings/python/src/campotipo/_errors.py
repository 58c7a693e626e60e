"""What goes wrong, with its place."""

from __future__ import annotations


class Error(ValueError):
    """What was asked for cannot be done. The other errors of this package are of its kind."""


class LayoutError(Error):
    """A layout that cannot be used; `line` and `column` count from 1, 0 where there is none."""

    def __init__(self, text: str, line: int = 0, column: int = 0) -> None:
        super().__init__(text)
        self.line = line
        self.column = column


class RecordError(Error):
    """Bytes that do not follow the layout, or a value that is invalid.

    `record` counts from 1 and `byte` from 0; `kind` and `field` are "" where there is none.
    """

    def __init__(
        self, text: str, record: int = 0, byte: int = 0, kind: str = "", field: str = ""
    ) -> None:
        super().__init__(text)
        self.record = record
        self.byte = byte
        self.kind = kind
        self.field = field
