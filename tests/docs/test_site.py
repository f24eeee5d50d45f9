"""The site that `./tarvelon docs` builds, as a browser without a network sees it."""

import subprocess
import sys
from html.parser import HTMLParser
from pathlib import Path
from urllib.parse import unquote, urlsplit

import pytest

pytest.importorskip("sphinx", reason="python3-sphinx is missing: './tarvelon install docs' installs it")

ROOT = Path(__file__).resolve().parents[2]
BUILD = [sys.executable, "-P", str(ROOT / "tools" / "docs" / "build.py")]
LOADED = {("script", "src"), ("img", "src"), ("link", "href"), ("iframe", "src")}


class Page(HTMLParser):
    """The link targets of a page, its links, and the files that it loads."""

    def __init__(self, file):
        super().__init__()
        self.file, self.ids, self.links, self.loads = file, set(), set(), set()
        self.feed(file.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attributes):
        for name, value in attributes:
            if name == "id":
                self.ids.add(value)
            elif name in ("href", "src"):
                (self.loads if (tag, name) in LOADED else self.links).add(value)


@pytest.fixture(scope="module")
def site(tmp_path_factory):
    folder = tmp_path_factory.mktemp("docs")
    done = subprocess.run([*BUILD, str(folder)], capture_output=True, text=True, timeout=600)
    assert done.returncode == 0, done.stdout + done.stderr
    assert done.stdout.splitlines()[-1] == str(folder / "html" / "index.html")
    html = folder / "html"
    return {file.relative_to(html).as_posix(): Page(file) for file in html.rglob("*.html")}


def test_every_link_leads_to_a_place_that_is_there(site):
    pages = {page.file.resolve(): page for page in site.values()}
    for page in site.values():
        for link in page.links | page.loads:
            parts = urlsplit(link)
            if parts.scheme or parts.netloc:
                continue
            file = (page.file.parent / unquote(parts.path)).resolve() if parts.path else page.file.resolve()
            assert file.is_file(), f"{page.file.name}: {link}"
            if parts.fragment and file in pages:
                assert unquote(parts.fragment) in pages[file].ids, f"{page.file.name}: {link}"


def test_nothing_is_loaded_from_elsewhere(site):
    assert [load for page in site.values() for load in page.loads if urlsplit(load).netloc] == []


def test_each_class_and_enumeration_has_its_anchor(site):
    anchors = {name for path, page in site.items() if path.startswith("metamodel/")
               for name in page.ids if name.startswith(f"{Path(path).stem}.")}

    assert len(anchors) == 284 + 28 + 53 + 11  # with foundation and types
    assert "behavior.Runnable" in site["metamodel/behavior.html"].ids
    assert {"composition.AssemblyConnector"} <= site["metamodel/composition.html"].ids


def test_the_index_of_the_metamodel_leads_to_every_class(site):
    targets = {urlsplit(link).fragment for link in site["metamodel/index.html"].links}

    assert {name for path, page in site.items() if path.startswith("metamodel/")
            for name in page.ids if name.startswith(f"{Path(path).stem}.")} <= targets
    assert "../docs/howto.html" in site["metamodel/index.html"].links


def test_all_that_people_have_written_is_there(site):
    written = [ROOT / name for name in ("README.md", "CHANGELOG.md", "CONTRIBUTING.md")]
    written += (ROOT / "docs").glob("*.md")

    first = {urlsplit(link).path for link in site["index.html"].links}
    for page in written:
        assert page.relative_to(ROOT).with_suffix(".html").as_posix() in first


def test_the_search_reads_its_index_as_a_script_which_files_may(site):
    page = site["search.html"]
    index = (page.file.parent / "searchindex.js").read_text(encoding="utf-8")

    assert "searchindex.js" in page.loads
    assert index.startswith("Search.setIndex(") and "AssemblyConnector" in index


def test_the_way_to_connecting_two_ports_is_short(site):
    assert "docs/howto.html" in site["index.html"].links
    assert "connect-two-ports" in site["docs/howto.html"].ids


def test_a_link_to_nowhere_fails(tmp_path):
    code = f"""
import sys
sys.argv = ["build.py"]
sys.path.append({str(ROOT / "tools" / "docs")!r})
import build
made = {{"index.rst": b"Page\\n====\\n\\n:doc:`nowhere` :py:class:`behavior.Nothing`\\n",
        "conf.py": (build.TOOLS / "conf.py").read_bytes(), "_static/site.css": b""}}
build.sources = lambda: made
sys.exit(build.main({str(tmp_path)!r}))
"""
    done = subprocess.run([sys.executable, "-c", code], capture_output=True, text=True, timeout=300)

    assert done.returncode != 0 and "index.html" not in done.stdout
    assert "unknown document: 'nowhere'" in done.stderr and "behavior.Nothing" in done.stderr
