"""docs/python.md, run as it stands: what each block prints is what the page tells, and the chart is the
one that it makes. CAMPOTIPO_WRITE_PAGE=1 writes both anew."""

import contextlib
import io
import os
import pathlib
import re

DOCS = pathlib.Path(__file__).parents[2] / "docs"
BLOCK = re.compile(r"```python\n(.*?)```\n(?:\n```text\n(.*?)```\n)?", re.S)


def test_the_page_runs_and_tells_the_truth(tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    page = (DOCS / "python.md").read_text(encoding="utf-8")
    names = {}

    def run(block):
        printed = io.StringIO()
        with contextlib.redirect_stdout(printed):
            exec(compile(block[1], "docs/python.md", "exec"), names)
        told = f"\n```text\n{printed.getvalue()}```\n" if printed.getvalue() else ""
        return f"```python\n{block[1]}```\n{told}"

    ran = BLOCK.sub(run, page)
    chart = (tmp_path / "python.svg").read_text()
    if os.environ.get("CAMPOTIPO_WRITE_PAGE"):
        (DOCS / "python.md").write_text(ran, encoding="utf-8")
        (DOCS / "python.svg").write_text(chart)
    assert ran.count("```text") >= 5
    assert ran == (DOCS / "python.md").read_text(encoding="utf-8")
    assert chart == (DOCS / "python.svg").read_text()
