"""What must not crash, hang, leak or lie: files that vanish, files that raise, threads, signals, forks,
other interpreters, wrong arguments."""

import gc
import io
import os
import pickle
import resource
import signal
import subprocess
import sys
import textwrap
import threading
import time

import pyarrow
import pytest

import campotipo

TOML = 'name = "x"\n[[field]]\nname = "n"\ntype = "BIN4"\n[[field]]\nname = "t"\ntype = "CODSTR"\nbytes = 4\n'
RECORD = b"\x01\x02\x03\x00abcd"


def run(code, **environment):
    """A program of its own; its output."""
    done = subprocess.run([sys.executable, "-c", textwrap.dedent(code)], capture_output=True, text=True,
                          timeout=120, env={**os.environ, **environment})
    assert done.returncode == 0, done.stderr
    return done.stdout.strip()


@pytest.fixture
def big(tmp_path):
    path = tmp_path / "big.reg"
    path.write_bytes(RECORD * 400_000)
    return path


def test_layouts_tell_line_and_column(tmp_path):
    with pytest.raises(campotipo.LayoutError) as caught:
        campotipo.layout(TOML.replace("BIN4", "BIN9"))
    assert (caught.value.line, caught.value.column) == (4, 8)
    same = pickle.loads(pickle.dumps(caught.value))
    assert (str(same), same.line, same.column) == (str(caught.value), 4, 8)
    path = tmp_path / "é.toml"
    path.write_text("name =\n", encoding="utf-8")
    with pytest.raises(campotipo.LayoutError, match="é.toml:1"):
        campotipo.layout(path)
    path.write_bytes(b"\xff\xfe")
    with pytest.raises(campotipo.LayoutError, match="no UTF-8"):
        campotipo.layout(str(path))
    for wrong in ("nowhere.toml", tmp_path / "nowhere", ):
        with pytest.raises(FileNotFoundError):
            campotipo.layout(wrong)
    with pytest.raises(IsADirectoryError):
        campotipo.layout(tmp_path)
    for name in ("nowhere", "a\0b", ""):
        with pytest.raises(ValueError):
            campotipo.layout(name)
    for wrong in (1, None, b"x\n", 1.5):
        with pytest.raises(TypeError):
            campotipo.layout(wrong)
    with pytest.raises(campotipo.Error):
        campotipo.layout(TOML).kind("y")


@pytest.mark.parametrize("options, error", [
    ({"kind": "y"}, campotipo.Error), ({"fields": ["m"]}, campotipo.Error),
    ({"fields": []}, campotipo.Error), ({"fields": "n"}, TypeError), ({"first": 0}, campotipo.Error),
    ({"first": -1}, campotipo.Error), ({"first": 1.5}, TypeError), ({"count": -1}, campotipo.Error),
    ({"first": 2**70}, (OverflowError, campotipo.Error)), ({"wide": "long"}, campotipo.Error),
    ({"times": "ms"}, campotipo.Error), ({"faults": None}, campotipo.Error), ({"kind": 1}, TypeError),
    ({"fields": ["a\0b"]}, ValueError), ({"kind": "\ud800"}, ValueError)])
def test_wrong_options(options, error):
    with pytest.raises(error):
        list(campotipo.open(TOML, RECORD, **options))


def test_wrong_sources(tmp_path):
    for wrong, error in ((tmp_path / "no", FileNotFoundError), ("no/*.reg", FileNotFoundError),
                         (1, TypeError), (None, TypeError), (io.StringIO("x"), TypeError), ([], ValueError),
                         (object(), TypeError), ("a\0b", ValueError), ([tmp_path / "no"], FileNotFoundError)):
        with pytest.raises((error, ValueError)):
            campotipo.open(TOML, wrong)
    with pytest.raises(campotipo.Error, match="at least 1"):
        campotipo.open(TOML, RECORD).splits(0)
    with pytest.raises(TypeError):
        campotipo.open(TOML, RECORD).splits("2")
    for unpicklable in (RECORD, io.BytesIO(RECORD)):
        with pytest.raises(TypeError, match="give a path"):
            pickle.dumps(campotipo.open(TOML, unpicklable))


def test_a_truth_and_a_picture():
    records = campotipo.open(TOML, RECORD * 9)
    assert bool(campotipo.open(TOML, b"")) and len(campotipo.open(TOML, b"")) == 0
    text = repr(records)
    assert text.count("\n") == 6 and "abcd" in text and max(map(len, text.split("\n"))) <= 80
    assert "RecordError: input: " in repr(campotipo.open(TOML, RECORD + b"x"))


def test_incomplete_records_are_told_or_counted():
    cut = RECORD * 3 + b"xyz"
    for read in (list, len, pyarrow.table):
        with pytest.raises(ValueError):
            read(campotipo.open(TOML, cut))
    records = campotipo.open(TOML, cut, skip=True)
    assert (len(records), records.skipped, len(list(records))) == (3, 1, 3)
    with pytest.raises(campotipo.RecordError) as caught:
        list(campotipo.open(TOML, cut))
    assert (caught.value.record, caught.value.byte) == (4, 24)


class Pipe(io.RawIOBase):
    """A file that cannot seek, and gives a few bytes at a time."""

    def __init__(self, content):
        self.rest = io.BytesIO(content)

    def readable(self):
        return True

    def readinto(self, room):
        return self.rest.readinto(room[:3])


def test_what_is_read_once_is_read_once():
    records = campotipo.open(TOML, Pipe(RECORD * 5))
    with pytest.raises(TypeError, match="twice"):
        len(records)
    assert "Records" in repr(records) and bool(records)
    assert pyarrow.table(records).num_rows == 5
    with pytest.raises(campotipo.Error, match="twice"):
        list(records)


class Raises(io.RawIOBase):
    def __init__(self, error, good=0):
        self.error, self.good = error, good

    def readable(self):
        return True

    def readinto(self, room):
        if self.good:
            self.good -= 1
            room[:8] = RECORD
            return 8
        raise self.error


class Lies:
    def __init__(self, answer):
        self.answer = answer

    def read(self, count):
        return self.answer(count) if callable(self.answer) else self.answer


def test_what_a_file_raises_comes_out():
    class Own(Exception):
        pass

    for good in (0, 3):
        with pytest.raises(Own, match="mine"):
            list(campotipo.open(TOML, Raises(Own("mine"), good)))
        with pytest.raises((OSError, pyarrow.ArrowException), match="mine"):
            pyarrow.table(campotipo.open(TOML, Raises(Own("mine"), good)))
    for answer in (None, "text", 5, lambda count: b"x" * (count + 1), b"x" * 2**21):
        with pytest.raises((TypeError, ValueError)):
            list(campotipo.open(TOML, Lies(answer)))
    closed = io.BytesIO(RECORD)
    records = campotipo.open(TOML, closed)
    closed.close()
    with pytest.raises(ValueError, match="closed"):
        list(records)


def test_an_interrupted_file_ends_every_reader():
    with pytest.raises(KeyboardInterrupt):
        list(campotipo.open(TOML, Raises(KeyboardInterrupt())))
    with pytest.raises((OSError, pyarrow.ArrowException), match="KeyboardInterrupt"):
        pyarrow.table(campotipo.open(TOML, Raises(KeyboardInterrupt())))


def test_a_file_that_is_cut_or_goes(big):
    records = campotipo.open(TOML, big)
    batches = records.batches(1000)
    next(batches)
    os.truncate(big, 800_003)
    with pytest.raises((campotipo.Error, OSError)):
        for _ in batches:
            pass
    os.remove(big)
    for read in (list, len, pyarrow.table, lambda gone: gone.splits(3)):
        with pytest.raises(OSError):
            read(records)
    assert "Error" in repr(records)


def test_memory_stays_as_long_as_it_is_read():
    content = bytearray(RECORD * 1000)
    stream = pyarrow.RecordBatchReader.from_stream(campotipo.open(TOML, content))
    with pytest.raises(BufferError):
        content.clear()
    assert stream.read_all().num_rows == 1000
    del stream
    gc.collect()
    content.clear()


def test_threads_on_ranges_and_on_one_iterator(big):
    records = campotipo.open(TOML, big)
    tables = {}

    def read(at, part):
        tables[at] = pyarrow.table(part).num_rows

    threads = [threading.Thread(target=read, args=each) for each in enumerate(records.splits(8))]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert sum(tables.values()) == 400_000

    rows, seen, refused = iter(records.batches(500)), [], []

    def share():
        while True:
            try:
                seen.append(len(next(rows)))
            except StopIteration:
                return
            except campotipo.Error as error:
                refused.append(str(error))

    threads = [threading.Thread(target=share) for _ in range(4)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert sum(seen) == 400_000
    assert all("another thread" in text for text in refused)


def test_a_stream_of_the_parent_is_refused_in_a_child(big):
    batches = campotipo.open(TOML, big).batches(1000)
    next(batches)
    child = os.fork()
    if child == 0:
        try:
            next(batches)
        except OSError as error:
            fine = "another process" in str(error)
            fine = fine and len(campotipo.open(TOML, big)) == 400_000
            os._exit(0 if fine else 1)
        os._exit(2)
    assert os.waitpid(child, 0)[1] == 0
    assert 1000 + sum(map(len, batches)) == 400_000


@pytest.mark.parametrize("read", [
    "for _ in range(10**6): len(campotipo.open(toml, path))",
    "for _ in range(10**6): list(campotipo.open(toml, path))",
    "import pyarrow\nfor _ in range(10**6): pyarrow.table(campotipo.open(toml, path))",
    "import polars\nfor _ in range(10**6): polars.DataFrame(campotipo.open(toml, path))"])
def test_control_c_stops_a_long_read(big, read):
    code = f"import campotipo\ntoml, path = {TOML!r}, {str(big)!r}\nprint('go', flush=True)\n{read}\n"
    child = subprocess.Popen([sys.executable, "-c", code], stdout=subprocess.PIPE,
                             stderr=subprocess.PIPE, text=True)
    assert child.stdout.readline() == "go\n"
    time.sleep(1.5)
    child.send_signal(signal.SIGINT)
    _, told = child.communicate(timeout=60)
    assert "KeyboardInterrupt" in told
    assert child.returncode in (1, 130, -signal.SIGINT)


def test_other_interpreters_are_refused_or_work():
    told = run("""
        import sys
        try:
            import _xxsubinterpreters as others
        except ImportError:
            import _interpreters as others
        other = others.create()
        others.run_string(other, '''
        try:
            import campotipo
            print("works", campotipo.valida("CPF", "12345678909"))
        except ImportError as error:
            print("refused", error)
        '''.replace("\\n        ", "\\n"))
        import campotipo
        print(campotipo.valida("CPF", "12345678909"))
        """)
    first, last = told.split("\n")
    assert first == "works True" or first.startswith("refused ")
    assert last == "True"


def test_the_end_of_a_program_with_streams_open(big):
    assert run(f"""
        import campotipo, threading, pyarrow
        records = campotipo.open({TOML!r}, {str(big)!r})
        kept = [iter(records), records.batches(), records.__arrow_c_stream__(),
                pyarrow.RecordBatchReader.from_stream(records), campotipo.valida("CPF", ["1"])]
        [next(each) for each in kept[:2]]
        threading.Thread(target=lambda: list(records), daemon=True).start()
        print("end")
        """) == "end"


def grown(work):
    """How many KiB the process grows by more of the same work."""
    def most():
        gc.collect()
        return resource.getrusage(resource.RUSAGE_SELF).ru_maxrss
    for _ in range(3):
        work()
    before = most()
    for _ in range(12):
        work()
    return most() - before


def values():
    for _ in range(30_000):
        campotipo.valida("CPF", "123.456.789-09")
        campotipo.edita("CPF", "12345678909")
        campotipo.identifica("12345678909")
        try:
            campotipo.limpa("CPF", "x")
        except campotipo.Error:
            pass


def columns():
    for _ in range(300):
        column = campotipo.edita("CPF", ["12345678909", None, "x"] * 100)
        pyarrow.array(column), column.to_list(), column[1]
        pyarrow.array(campotipo.identifica(pyarrow.array(["12345678909"] * 100)))
        memoryview(campotipo.valida("CPF", ["12345678909"]))


def files():
    layout = campotipo.layout(TOML)
    for _ in range(200):
        records = campotipo.open(layout, RECORD * 100)
        list(records), pyarrow.table(records), len(records), repr(records)
        [pyarrow.record_batch(batch) for batch in records.batches(7)]
        list(campotipo.open(layout, io.BytesIO(RECORD * 100)))
        records.__arrow_c_stream__(), iter(records), records.batches()
        for wrong in (RECORD + b"x", Raises(OSError("mine"))):
            try:
                list(campotipo.open(layout, wrong))
            except (OSError, campotipo.Error):
                pass


@pytest.mark.parametrize("work", [values, columns, files])
def test_nothing_grows(work):
    assert grown(work) < 3000


def test_references_are_given_back():
    content = RECORD * 3
    file = io.BytesIO(content)
    before = sys.getrefcount(content), sys.getrefcount(file), sys.getrefcount(None)
    for _ in range(1000):
        list(campotipo.open(TOML, content))
        pyarrow.table(campotipo.open(TOML, file))
        file.seek(0)
        campotipo.valida("CPF", [None, "x"]).to_list()
    gc.collect()
    after = sys.getrefcount(content), sys.getrefcount(file), sys.getrefcount(None)
    assert before[:2] == after[:2]
    assert abs(before[2] - after[2]) < 500 or sys.version_info >= (3, 12)
