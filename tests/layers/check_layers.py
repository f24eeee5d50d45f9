"""Reads every #include of the project and fails if a layer includes a header of a higher layer.

usage: check_layers.py ROOT

A layer may only include headers of its own and of lower layers. The folder of a file decides what the file may include:
RULES contains the rules, and the first rule that fits a file applies. The folders of the rules are relative to
src/tarvelon. An include names a header relative to src, in quotes: "tarvelon/boundary/hx/Array.h".

Both the module and the platform's libraries use

  rows      the headers of arplatform/<package>/, which contain the metamodel as tables
  binding/  linked into the module and into the libraries that publish their own packages in the same way
  handles   the sequence and iterator handles and proxies in boundary/

Apart from these, the module includes nothing of platform/, and platform/ includes nothing of the module.
"""

import re
import sys
from pathlib import Path
from typing import NamedTuple

SUFFIXES = {".h", ".hpp", ".hh", ".inl", ".ipp", ".inc", ".tcc", ".cpp", ".cc", ".cxx", ".c"}
HEADERS = SUFFIXES - {".cpp", ".cc", ".cxx", ".c"}

# Folders whose files may include anything of the layers: no layer includes them.
FREE = {"python", "examples", "bench", "tests"}

# The rooms of the Python host from the bottom up: its folders, each of which is a layer. Module.cpp is above all rooms.
HOST = "python/host/"
HOST_ROOMS = ("interpreter", "objects", "members", "sequences", "types", "engine")

# The folder of all layers, and the beginning of each include of their files.
SOURCES = "src/"
PRODUCT = "tarvelon/"

# The rows are headers in any folder below these.
ARPLATFORM_ROWS = "rows of arplatform/"
FOUNDATION_ROWS = "rows of foundation/ and types/"

MODULE = ("boundary/", "binding/", "module/", "collections/", "factory/", "arplatform/")
# System headers for replacing a file atomically, and the header of the XML parser.
FILES_NEEDS = frozenset({"dirent.h", "expat.h", "fcntl.h", "sys/file.h", "sys/random.h", "sys/stat.h", "sys/xattr.h"})
# The system header for functions that run at a thread's end.
HX_NEEDS = frozenset({"pthread.h"})
# The libraries of the platform from the bottom up, each with its rooms (folders) from the bottom up. Rooms in one tuple
# are on the same level and do not include each other. A library without rooms is one room.
PLATFORM = {
    "hx": (),
    "ruvo": (),
    "k7q": (("values",), ("handles",), ("sequences",), ("properties",), ("classes",)),
    "model": (("words",), ("metamodel",), ("objects",), ("names",), ("values",), ("changes",), ("views",),
              ("copy", "validation", "audit"), ("api",)),
    "files": (("shared",), ("xmi", "ecore", "arxml"), ("formats",)),
}
# The headers that a library offers to all of its rooms.
OFFERED = {"model": "platform/model/api/", "files": "platform/files/Files.h"}


class Rule(NamedTuple):
    """What the files below `folder` may include: our own files by folder, and Boost or not."""

    folder: str
    allowed: tuple
    boost: bool
    headers_only: bool = False
    others: frozenset = frozenset()  # headers of the system and of libraries that this folder alone needs


def platform_rules(library):
    """The rules of one library: of each room, then of the headers that it offers and of what lies beside the rooms."""
    libraries = list(PLATFORM)
    lower = tuple(f"platform/{name}/" for name in libraries[: libraries.index(library)])
    rows = (ARPLATFORM_ROWS, FOUNDATION_ROWS) if library in ("model", "files") else ()
    others = {"hx": HX_NEEDS, "files": FILES_NEEDS}.get(library, frozenset())
    base = ("boundary/", "binding/") + lower + rows
    folder, rooms, offered = f"platform/{library}/", PLATFORM[library], OFFERED.get(library)
    if not rooms:
        return [Rule(folder, base + (folder,), boost=True, others=others)]
    rules = []
    if offered:
        rules.append(Rule(offered, ("boundary/",) + lower + rows + (offered,), boost=False, headers_only=True))
        base += (offered,)
    for level, names in enumerate(rooms):
        below = tuple(f"{folder}{name}/" for row in rooms[:level] for name in row)
        rules += [Rule(f"{folder}{name}/", base + below + (f"{folder}{name}/",), boost=True, others=others) for name in names]
    return rules


RULES = [
    Rule("boundary/", ("boundary/",), boost=True),
    Rule("binding/", ("boundary/", "binding/"), boost=False),
    Rule("arplatform/", ("boundary/", ARPLATFORM_ROWS), boost=False, headers_only=True),
    Rule("arplatform/", MODULE, boost=True),
    Rule("module/", MODULE, boost=True),
    Rule("collections/", MODULE, boost=True),
    Rule("factory/", MODULE, boost=True),
    Rule("foundation/", ("boundary/", "binding/", "foundation/", "types/"), boost=False),
    Rule("types/", ("boundary/", "binding/", "foundation/", "types/"), boost=False),
] + [rule for library in PLATFORM for rule in platform_rules(library)]

STANDARD = set(
    """
    algorithm any array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv chrono
    cinttypes climits clocale cmath codecvt compare complex concepts condition_variable coroutine csetjmp
    csignal cstdarg cstddef cstdint cstdio cstdlib cstring ctime cuchar cwchar cwctype deque exception
    execution filesystem format forward_list fstream functional future initializer_list iomanip ios iosfwd
    iostream istream iterator latch limits list locale map memory memory_resource mutex new numbers
    numeric optional ostream queue random ranges ratio regex scoped_allocator semaphore set shared_mutex
    source_location span sstream stack stdexcept stop_token streambuf string string_view syncstream
    system_error thread tuple type_traits typeindex typeinfo unordered_map unordered_set utility valarray
    variant vector version
    """.split()
)
# Headers of the C++ and C libraries on our systems that are not part of the standard.
SYSTEM = {"cxxabi.h", "dlfcn.h", "unistd.h"}

INCLUDE = re.compile(r"^[ \t]*#[ \t]*(?:include|include_next|import)\b[ \t]*(.*)$", re.MULTILINE)
TARGET = re.compile(r'(?:"([^"]+)"|<([^>]+)>)')


def sources(root):
    """All C++ files of the repository, as paths from its root, without hidden folders and build/."""
    for path in sorted(root.rglob("*")):
        name = path.relative_to(root)
        if name.parts[0] == "build" or any(part.startswith(".") for part in name.parts):
            continue
        if path.suffix in SUFFIXES and path.is_file():
            yield name


def rule_of(file):
    for rule in RULES:
        if file.as_posix().startswith(SOURCES + PRODUCT + rule.folder) and (not rule.headers_only or file.suffix in HEADERS):
            return rule
    return None


def is_allowed(target, rule):
    """Whether `rule` allows a file to include `target`, one of our own files."""
    is_header = Path(target).suffix in HEADERS
    for allowed in rule.allowed:
        if allowed == ARPLATFORM_ROWS:
            fits = target.startswith("arplatform/") and is_header
        elif allowed == FOUNDATION_ROWS:
            fits = target.startswith(("foundation/", "types/")) and is_header
        else:
            fits = target.startswith(allowed)
        if fits:
            return True
    return False


def complaint(root, rule, text):
    """What is wrong with the include whose operand is `text`; None if it is allowed."""
    match = TARGET.match(text)
    if not match:
        return f"includes the macro {text}: write the name itself, so that it can be checked"
    target = match[1] or match[2]
    if (root / SOURCES / target).is_file():
        if ".." in Path(target).parts:
            return f"includes {target}: write the name from {SOURCES}, without .."
        if target.startswith(PRODUCT) and is_allowed(target.removeprefix(PRODUCT), rule):
            return None
        return f"includes {target}: {rule.folder} may include {', '.join(rule.allowed)} of our own"
    if match[1]:
        return f'includes "{target}", which is no file: write the name from {SOURCES}'
    if target.startswith("boost/"):
        return None if rule.boost else f"includes <{target}>: {rule.folder} does without Boost"
    if target in STANDARD or target in SYSTEM or target in rule.others:
        return None
    outside = "the standard library and Boost" if rule.boost else "the standard library"
    return f"includes <{target}>: {rule.folder} may include {outside} alone"


def host_complaints(root, file):
    """What a file in a room of the Python host includes from rooms above, or beside the rooms."""
    name = file.as_posix()
    if not name.startswith(HOST) or name.count("/") != HOST.count("/") + 1:
        return []
    room = file.parts[2]
    if room not in HOST_ROOMS:
        return [f"{file}: lies in no room; its folder must be entered in HOST_ROOMS"]
    below = tuple(f"{HOST}{each}/" for each in HOST_ROOMS[: HOST_ROOMS.index(room) + 1])
    found = re.findall(rf'#include "({HOST}[^"]+)"', (root / file).read_text(encoding="utf-8"))
    return [f"{file}: includes {each}: {HOST}{room}/ may include {', '.join(below)}" for each in found if not each.startswith(below)]


def check(root):
    """Returns the complaints, the number of files and the number of includes."""
    complaints, files, includes = [], 0, 0
    for file in sources(root):
        if file.parts[0] in FREE:
            complaints += host_complaints(root, file)
            continue
        files += 1
        rule = rule_of(file)
        if rule is None:
            complaints.append(f"{file}: lies in no layer; its folder must be entered in RULES or PLATFORM")
            continue
        text = (root / file).read_text(encoding="utf-8")
        for match in INCLUDE.finditer(text):
            includes += 1
            found = complaint(root, rule, match[1].strip())
            if found:
                complaints.append(f"{file}:{text.count(chr(10), 0, match.start()) + 1}: {found}")
    return complaints, files, includes


def main(arguments):
    if len(arguments) != 1:
        sys.exit(__doc__)
    complaints, files, includes = check(Path(arguments[0]))
    print(f"{includes} includes in {files} files, {len(complaints)} that may not be")
    print("\n".join(complaints))
    # Finding no files is an error, because such a check would always pass.
    return 1 if complaints or files == 0 else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
