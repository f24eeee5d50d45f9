"""Builds one site of all documentation, including the pages of the metamodel: build.py FOLDER.

The sources are collected in FOLDER/source, the site is FOLDER/html, and the path of its first page is
printed. Links and references without a target are errors.
"""

import re
import shutil
import sys
from pathlib import Path

TOOLS = Path(__file__).resolve().parent
ROOT = TOOLS.parents[1]
sys.path.append(str(TOOLS))
sys.dont_write_bytecode = True  # writes nothing into the source tree

import metamodel  # noqa: E402  in this folder
import pages  # noqa: E402

LINK = re.compile(r"\]\(([^)#:]+)(?:#[^)]*)?\)")


def linked(page):
    """The files of the tree to which a Markdown page links."""
    for target in LINK.findall(page.read_text(encoding="utf-8")):
        file = (page.parent / target).resolve()
        if file.is_file() and file.is_relative_to(ROOT):
            yield file


def written():
    """The hand-written pages by their path in the tree, and the files to which they link."""
    found = [ROOT / name for name in ("README.md", "CHANGELOG.md", "CONTRIBUTING.md")]
    found += sorted((ROOT / "docs").glob("*.md"))
    found += {file for page in found for file in linked(page)} - set(found)
    return {str(file.relative_to(ROOT)): file.read_bytes() for file in found}


def index():
    """The first page. Pages of docs/ that it does not list are added at its end."""
    text = (TOOLS / "index.rst").read_text(encoding="utf-8")
    others = [page.stem for page in sorted((ROOT / "docs").glob("*.md")) if f"docs/{page.stem}\n" not in text]
    return (text + "".join(f"   docs/{name}\n" for name in others)).encode()


def sources():
    made = {**written(), "index.rst": index(), "conf.py": (TOOLS / "conf.py").read_bytes(),
            "_static/site.css": (TOOLS / "site.css").read_bytes()}
    purpose = metamodel.host.documentation(metamodel.PLATFORM)["purpose"]
    for name, text in pages.pages(metamodel.load(), purpose).items():
        made[f"metamodel/{name}.rst"] = text.encode()
    return made


def main(folder):
    from sphinx.cmd.build import main as sphinx

    folder = Path(folder).resolve()
    # Starts from nothing: every page contains the list of all pages, and removed pages must not stay.
    for name in ("source", "doctrees", "html"):
        shutil.rmtree(folder / name, ignore_errors=True)
    for name, content in sources().items():
        file = folder / "source" / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(content)
    failed = sphinx(["-b", "html", "-W", "--keep-going", "-q", "-j", "auto", "-d", str(folder / "doctrees"),
                     str(folder / "source"), str(folder / "html")])
    if not failed:
        print(folder / "html" / "index.html")
    return failed


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
