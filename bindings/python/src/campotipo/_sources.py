"""Where records come from: what open() takes, one class for each."""

from __future__ import annotations

import io
import os

from . import _core
from ._errors import Error

TYPE_CHECKING = False
if TYPE_CHECKING:
    from collections.abc import Callable
    from typing import Any, cast

    from ._layout import Layout

    # (path, memory, opener, closes, name, first, count, byte), as the core takes it.
    Place = tuple[bytes | None, Any, Callable[[], Any] | None, bool, str, int, int, int]

else:

    def cast(_: object, value: object) -> object:
        return value


_ALL = 2**63


class Source:
    """Records of one file; `first` counts from 1, `count` is None to the end, 0 for none."""

    __slots__ = ("byte", "count", "first", "name")

    again = True  # it can be read more than once

    def __init__(self, name: str, first: int = 1, count: int | None = None, byte: int = 0) -> None:
        self.name = name
        self.first = first
        self.count = count
        self.byte = byte

    def place(self) -> Place:
        path, memory, opener, closes = self.what()
        return path, memory, opener, closes, self.name, self.first, self.count or 0, self.byte

    def what(self) -> tuple[bytes | None, Any, Callable[[], Any] | None, bool]:
        raise NotImplementedError

    def part(self, first: int, count: int | None, byte: int = 0) -> Source:
        """The same source with another range."""
        made = type(self).__new__(type(self))
        for each in type(self).__mro__:
            for slot in getattr(each, "__slots__", ()):
                setattr(made, slot, getattr(self, slot))
        made.first, made.count, made.byte = first, count, byte
        return made

    def head(self, rows: int) -> Source:
        """Its first records, for a look at them."""
        return self.part(self.first, rows if self.count is None else min(rows, self.count), self.byte)

    def splits(self, layout: Layout, wanted: int) -> list[Source]:
        return [self]


class PathSource(Source):
    """A path, opened by the core, or by gzip where its name ends in ".gz"."""

    __slots__ = ("path",)

    def __init__(self, path: str | bytes) -> None:
        super().__init__(os.fsdecode(path))
        self.path = os.fsencode(path)
        os.stat(self.path)  # what is not there is told at once, as Python tells it

    def compressed(self) -> bool:
        return self.path.endswith(b".gz")

    def what(self) -> tuple[bytes | None, Any, Callable[[], Any] | None, bool]:
        if self.compressed():
            import gzip

            path = self.path
            return None, None, lambda: gzip.open(path, "rb"), True
        # The core reads standard input for "-".
        return (b"./-" if self.path == b"-" else self.path), None, None, False

    def splits(self, layout: Layout, wanted: int) -> list[Source]:
        if self.compressed() or wanted == 1:
            return [self]
        begin, end = self.first, self.first + (_ALL if self.count is None else self.count)
        parts: list[Source] = []
        for first, count, byte in _core.splits(layout._handle, self.what()[0] or b"", wanted):
            behind = first + (count or _ALL)
            low, high = max(first, begin), min(behind, end)
            if low < high:
                whole = None if high - low >= _ALL // 2 else high - low
                parts.append(self.part(low, whole, byte if low == first else 0))
        return parts or [self]


class MemorySource(Source):
    """Bytes, a memory map, whatever has the buffer protocol; it stays as it is meanwhile."""

    __slots__ = ("memory",)

    def __init__(self, memory: Any) -> None:
        super().__init__("input")
        self.memory = memory

    def what(self) -> tuple[bytes | None, Any, Callable[[], Any] | None, bool]:
        return None, self.memory, None, False

    def __reduce__(self) -> Any:
        raise TypeError("records in memory are not pickled: give a path")


class FileSource(Source):
    """An open binary file, read from where it stands; anew each time where it can seek."""

    __slots__ = ("again", "begin", "file", "taken")

    def __init__(self, file: Any) -> None:
        name = getattr(file, "name", None)
        super().__init__(name if isinstance(name, str) else "input")
        self.file = file
        self.taken = [False]
        seekable = getattr(file, "seekable", None)
        self.again = bool(seekable is not None and seekable())
        self.begin = file.tell() if self.again else 0

    def what(self) -> tuple[bytes | None, Any, Callable[[], Any] | None, bool]:
        return None, None, self.rewound, False

    def rewound(self) -> Any:
        if self.again:
            self.file.seek(self.begin)
        elif self.taken[0]:
            raise Error(f"{self.name}: cannot be read twice")
        self.taken[0] = True
        return self.file

    def __reduce__(self) -> Any:
        raise TypeError("an open file is not pickled: give a path")


class OpenableSource(Source):
    """What has open(), as the files of fsspec before they are opened."""

    __slots__ = ("file",)

    def __init__(self, file: Any) -> None:
        super().__init__(str(getattr(file, "path", "input")))
        self.file = file

    def what(self) -> tuple[bytes | None, Any, Callable[[], Any] | None, bool]:
        return None, None, self.file.open, True


def sources_of(path: Any) -> tuple[list[Source], bool]:
    """The sources that a caller means, and whether they are several files."""
    if isinstance(path, str):
        return _paths(path)
    if isinstance(path, os.PathLike):
        return _paths(os.fspath(cast("os.PathLike[str]", path)))
    if isinstance(path, (list, tuple)):
        each: list[Any] = list(cast("list[Any]", path))
        made = [source for one in each for source in sources_of(one)[0]]
        if not made:
            raise Error("no files are told")
        return made, True
    try:
        memoryview(path)
    except TypeError:
        pass
    else:
        return [MemorySource(path)], False
    if hasattr(path, "read"):
        if isinstance(path, io.TextIOBase) or isinstance(getattr(path, "encoding", None), str):
            raise TypeError("the file is open as text: open it with mode 'rb'")
        return [FileSource(path)], False
    if callable(getattr(path, "open", None)):
        return [OpenableSource(path)], False
    raise TypeError(f"a path, bytes or a binary file is needed, not {type(path).__name__}")


def _paths(path: str | bytes) -> tuple[list[Source], bool]:
    text = os.fsdecode(path)
    if os.path.isdir(text):
        names = sorted(entry.path for entry in os.scandir(text) if entry.is_file())
    elif any(mark in text for mark in "*?[") and not os.path.exists(text):
        import glob

        names = sorted(glob.glob(text, recursive=True))
    else:
        return [PathSource(path)], False
    if not names:
        raise Error(f"{text}: no file")
    return [PathSource(name) for name in names], True
