"""The C face of the records library through ctypes: what a host without a binding would write."""

import ctypes as c
import os
import re

import pyarrow

LIBRARY = c.CDLL(os.environ["CAMPOTIPO_RECORDS_LIBRARY"])
OK, END, SKIP = 0, 1, 1
WIDE = {"string": 0, "decimal128": 1, "decimal256": 2}
TIMES = {"s": 0, "ns": 1}
FAULTS = {"error": 0, "null": 1}


class Sized(c.Structure):
    """A structure that tells its own size first."""

    def __init__(self, **values):
        super().__init__(size=c.sizeof(type(self)), **values)


class Error(Sized):
    _fields_ = [("size", c.c_size_t), ("status", c.c_int), ("line", c.c_uint32),
                ("column", c.c_uint32), ("record", c.c_uint64), ("byte", c.c_uint64),
                ("kind", c.c_char * 256), ("field", c.c_char * 256), ("text", c.c_char * 1024)]


class Input(Sized):
    _fields_ = [("size", c.c_size_t), ("name", c.c_char_p), ("path", c.c_char_p),
                ("memory", c.c_void_p), ("memory_bytes", c.c_size_t), ("read", c.c_void_p),
                ("skip", c.c_void_p), ("context", c.c_void_p), ("file_bytes", c.c_uint64)]


class Range(Sized):
    _fields_ = [("size", c.c_size_t), ("first", c.c_uint64), ("count", c.c_uint64),
                ("byte", c.c_uint64)]


class StreamOptions(Sized):
    _fields_ = [("size", c.c_size_t), ("kind", c.c_char_p), ("fields", c.POINTER(c.c_char_p)),
                ("n_fields", c.c_size_t), ("wide", c.c_int), ("times", c.c_int),
                ("faults", c.c_int), ("file", c.c_char_p), ("batch_rows", c.c_size_t)]


WRITE = c.CFUNCTYPE(c.c_int, c.c_void_p, c.c_void_p, c.c_size_t)
LOST = c.CFUNCTYPE(None, c.c_void_p, c.POINTER(Error))


class Sink(Sized):
    _fields_ = [("size", c.c_size_t), ("write", WRITE), ("context", c.c_void_p)]


class LoaderOptions(Sized):
    _fields_ = [("size", c.c_size_t), ("lossy", c.c_int), ("lost", LOST), ("context", c.c_void_p),
                ("ignored", c.POINTER(c.c_char_p)), ("n_ignored", c.c_size_t),
                ("header", c.c_void_p), ("header_bytes", c.c_size_t), ("trailer", c.c_void_p),
                ("trailer_bytes", c.c_size_t), ("bare", c.c_int)]


class Block(Sized):
    _fields_ = [("size", c.c_size_t), ("count", c.c_size_t),
                ("records", c.POINTER(c.POINTER(c.c_ubyte))), ("numbers", c.POINTER(c.c_uint64)),
                ("kinds", c.POINTER(c.c_uint32)), ("base", c.c_void_p), ("offset", c.c_uint64)]


class Kind(Sized):
    _fields_ = [("size", c.c_size_t), ("name", c.c_char_p), ("bytes", c.c_size_t),
                ("fields", c.c_size_t), ("main", c.c_int)]


class CheckOptions(Sized):
    _fields_ = [("size", c.c_size_t), ("file", c.c_char_p), ("part", c.c_int),
                ("batch_rows", c.c_size_t)]


PARTS = {"all": 0, "values": 1, "file": 2}


class Lost:
    """A value that is not stored whole."""

    def __init__(self, error):
        text = error.text.decode()
        self.record, self.kind, self.field = error.record, error.kind.decode(), error.field.decode()
        self.what = text[text.rindex('" ') + 2:]


class Refused(Exception):
    def __init__(self, error):
        super().__init__(error.text.decode())
        self.status, self.record, self.byte = error.status, error.record, error.byte
        self.kind, self.field = error.kind.decode(), error.field.decode()


def call(function, *arguments):
    error = Error()
    status = getattr(LIBRARY, function)(*arguments, c.byref(error))
    if status < 0:
        raise Refused(error)
    return status


class Layout:
    def __init__(self, text):
        self.handle = c.c_void_p()
        self.has_lines = re.search(r"(?m)^line_end *=", text) is not None
        raw = text.encode()
        call("campotipo_layout_parse", raw, c.c_size_t(len(raw)), b"layout", c.byref(self.handle))

    def __del__(self):
        LIBRARY.campotipo_layout_free(self.handle)

    def reader(self, content, part=None, skip=False):
        reader = c.c_void_p()
        given = Input(memory=c.cast(c.c_char_p(content), c.c_void_p), memory_bytes=len(content))
        call("campotipo_reader_open", self.handle, c.byref(given),
             None if part is None else c.byref(part), c.c_uint(SKIP if skip else 0),
             c.byref(reader))
        return reader

    def stream(self, content, kind=None, fields=None, wide="string", times="s", faults="error",
               file=None, part=None, skip=False, batch_rows=0):
        """A RecordBatchReader over bytes, which have to live as long."""
        names = [name.encode() for name in fields or []]
        options = StreamOptions(kind=kind and kind.encode(),
                                fields=(c.c_char_p * len(names))(*names) if names else None,
                                n_fields=len(names), wide=WIDE[wide], times=TIMES[times],
                                faults=FAULTS[faults], file=file and file.encode(),
                                batch_rows=batch_rows)
        place = (c.c_uint64 * 5)()
        reader = self.reader(content, part, skip)
        try:
            call("campotipo_stream", reader, c.byref(options), place)
        except Refused:
            LIBRARY.campotipo_reader_free(reader)
            raise
        return pyarrow.RecordBatchReader._import_from_c(c.addressof(place))

    def check(self, content, part="all", range_=None, skip=False, file="file", batch_rows=0):
        """The findings in bytes, which have to live as long, as a RecordBatchReader."""
        options = CheckOptions(file=file.encode(), part=PARTS[part], batch_rows=batch_rows)
        place = (c.c_uint64 * 5)()
        reader = self.reader(content, range_, skip)
        try:
            call("campotipo_check", reader, c.byref(options), place)
        except Refused:
            LIBRARY.campotipo_reader_free(reader)
            raise
        return pyarrow.RecordBatchReader._import_from_c(c.addressof(place))

    def splits(self, content, wanted):
        parts = (Range * wanted)()
        made = c.c_size_t()
        given = Input(memory=c.cast(c.c_char_p(content), c.c_void_p), memory_bytes=len(content))
        call("campotipo_splits", self.handle, c.byref(given), c.c_size_t(wanted), parts,
             c.byref(made))
        return list(parts)[:made.value]

    def kind(self, name):
        """Number and bytes of a kind."""
        number, known = c.c_size_t(), Kind()
        call("campotipo_layout_find_kind", self.handle, (name or "").encode(), c.byref(number))
        LIBRARY.campotipo_layout_kind(self.handle, number, c.byref(known))
        return number.value, known.bytes

    def records(self, content, kind, numbers):
        """The bytes of records of a kind, by their numbers."""
        found, wanted = {}, set(numbers)
        reader, block = self.reader(content), Block()
        number, size = self.kind(kind)
        while call("campotipo_reader_next", reader, c.byref(block)) == OK:
            for i in range(block.count):
                if block.numbers[i] in wanted and block.kinds[i] == number:
                    found[block.numbers[i]] = c.string_at(block.records[i], size)
        LIBRARY.campotipo_reader_free(reader)
        return [found[each] for each in numbers]

    def write(self, tables, lossy=False, ignored=(), bare=False):
        """The file that tables make, each given with its kind, and what is lost."""
        parts, lost = [], []

        def write(_, data, count):
            parts.append(c.string_at(data, count))
            return 0

        names = [name.encode() for name in ignored]
        sink = Sink(write=WRITE(write))
        options = LoaderOptions(lossy=lossy, bare=bare, n_ignored=len(names),
                                ignored=(c.c_char_p * len(names))(*names) if names else None)
        if lossy:
            options.lost = LOST(lambda _, error: lost.append(Lost(error.contents)))
        loader = c.c_void_p()
        call("campotipo_loader_open", self.handle, c.byref(sink), c.byref(options), c.byref(loader))
        try:
            for kind, table in tables:
                for batch in table.to_batches():
                    self.add(loader, kind, batch)
            call("campotipo_loader_finish", loader)
        finally:
            LIBRARY.campotipo_loader_free(loader)
        return b"".join(parts), lost

    @staticmethod
    def add(loader, kind, batch):
        schema, array = (c.c_uint64 * 9)(), (c.c_uint64 * 10)()
        batch._export_to_c(c.addressof(array), c.addressof(schema))
        try:
            call("campotipo_encode", loader, (kind or "").encode(), schema, array)
        finally:
            for struct, at in ((schema, 7), (array, 8)):
                c.CFUNCTYPE(None, c.c_void_p)(struct[at])(c.addressof(struct))

    def encode(self, kind, table, lossy=False, ignored=()):
        """The records that a table makes, without what stands around each, and what is lost."""
        made, lost = self.write([(kind, table)], lossy, ignored, bare=True)
        size = self.kind(kind)[1]
        stride = len(made) // table.num_rows if table.num_rows else 0
        before = 0 if self.has_lines else stride - size
        return b"".join(made[at + before:at + before + size]
                        for at in range(0, len(made), stride or 1)), lost
