"""Builds one site of all documentation, the pages of the metamodel among it: build.py FOLDER.

The sources are put together in FOLDER/source, the site in FOLDER/html, and its first page is printed. What
pages refer to and is not there is an error.
"""

import re
import shutil
import sys
from pathlib import Path

TOOLS = Path(__file__).resolve().parent
ROOT = TOOLS.parents[1]
sys.path.append(str(TOOLS))
sys.dont_write_bytecode = True  # nothing is written beside the sources

import metamodel  # noqa: E402  beside this file
import pages  # noqa: E402

LINK = re.compile(r"\]\(([^)#:]+)(?:#[^)]*)?\)")


def linked(page):
    """The files that a page in Markdown links to, as far as they are in the tree."""
    for target in LINK.findall(page.read_text(encoding="utf-8")):
        file = (page.parent / target).resolve()
        if file.is_file() and file.is_relative_to(ROOT):
            yield file


def written():
    """What people have written: pages by their path in the tree, with the files that they link to."""
    found = [ROOT / name for name in ("README.md", "CHANGELOG.md", "CONTRIBUTING.md")]
    found += sorted((ROOT / "docs").glob("*.md"))
    found += {file for page in found for file in linked(page)} - set(found)
    return {str(file.relative_to(ROOT)): file.read_bytes() for file in found}


def index():
    """The first page, which lists what it does not name at its end."""
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
    # Anew each time: every page shows the list of all pages, and one that is gone must not stay.
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
