"""Layouts: which kinds of record a file has, and their fields."""

from __future__ import annotations

import os

from . import _core

TYPE_CHECKING = False
if TYPE_CHECKING:
    from collections.abc import Sequence


class Field:
    """A field of a record: its name in a flat table, its type, and where it stands."""

    __slots__ = ("bytes", "family", "name", "offset", "type")

    def __init__(self, name: str, type: str, family: str, offset: int, bytes: int) -> None:
        self.name = name
        self.type = type
        self.family = family
        self.offset = offset
        self.bytes = bytes

    def __repr__(self) -> str:
        return f"<Field {self.name}: {self.type}, {self.bytes} bytes at {self.offset}>"


class Kind:
    """A kind of record: its name, its bytes and its fields, those with a value."""

    __slots__ = ("bytes", "fields", "main", "name")

    def __init__(self, name: str, bytes: int, main: bool, fields: Sequence[Field]) -> None:
        self.name = name
        self.bytes = bytes
        self.main = main
        self.fields = tuple(fields)

    def __repr__(self) -> str:
        return f"<Kind {self.name}: {self.bytes} bytes, {len(self.fields)} fields>"


class Layout:
    """A layout, made by layout(). It never changes, is shared between threads, and is pickled by
    its text.

    `name` is the name that it gives itself, `kinds` are its kinds of record, `text` is its TOML.
    """

    __slots__ = ("_handle", "_place", "kinds", "name", "text")

    def __init__(self, text: str, place: str = "layout") -> None:
        self._place = place
        self._handle = _core.layout_parse(text.encode(), os.fsencode(place))
        self.text = text
        self.name = _core.layout_name(self._handle)
        self.kinds = tuple(
            Kind(name, size, main, [Field(*field) for field in fields])
            for name, size, main, fields in _core.layout_kinds(self._handle)
        )

    def kind(self, name: str | None = None) -> Kind:
        """The kind of this name; without one the only kind, or the main one.

        >>> layout("examples/bancos.toml").kind()
        <Kind banco: 288 bytes, 9 fields>
        """
        return self.kinds[_core.layout_find_kind(self._handle, name)]

    def __reduce__(self) -> tuple[type[Layout], tuple[str, str]]:
        return Layout, (self.text, self._place)

    def __repr__(self) -> str:
        return f"<Layout {self.name}: {', '.join(kind.name for kind in self.kinds)}>"


def layout(place: str | os.PathLike[str] | Layout) -> Layout:
    """Reads a layout: a text (it has a line feed in it), a path (of an existing file, or one that
    ends in ".toml"), or the name of a ready layout, in this order.

    Raises LayoutError with line and column for a layout that cannot be used, and Error, with near
    names, for a name that is not known.

    >>> banco = layout("examples/bancos.toml")
    >>> banco.name, banco.kinds[0].bytes
    ('banco', 288)
    >>> layout('name = "x"\\n[[field]]\\nname = "a"\\ntype = "BIN1"\\n').kinds[0].fields
    (<Field a: BIN1, 1 bytes at 0>,)
    """
    if isinstance(place, Layout):
        return place
    path = os.fspath(place)
    if not isinstance(path, str):
        raise TypeError(f"a layout is a str, a path or a Layout, not {type(place).__name__}")
    if isinstance(place, str) and "\n" in place:
        return Layout(place)
    if path.endswith(".toml") or os.path.exists(path) or place is not path:
        with open(path, encoding="utf-8", newline="") as file:
            try:
                return Layout(file.read(), path)
            except UnicodeDecodeError as error:
                raise _core_error(f"{path}: byte {error.start}: no UTF-8") from None
    text = _core.layout_ready(path)
    if text is None:
        _core.layout_unknown(path)
    return Layout(text or "", path)


def _core_error(text: str) -> Exception:
    from ._errors import LayoutError

    return LayoutError(text)


def layouts() -> list[str]:
    """The names of the ready layouts, which layout() and open() take."""
    return _core.layout_ready_names()
