"""Draws docs/house.svg: the rooms of the source code and which of them include which, read from the #include lines.

    /usr/bin/python3 tools/house.py [--check]

A box is a room: a folder of sources. An arrow says that a file of the upper room includes a header of the lower one.
Arrows that follow from others are left out, and so are those to boundary/, which every room includes. --check writes
nothing; it fails if the picture in docs/ is not the one of these sources.
"""

import re
import sys
from html import escape
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
PICTURE = ROOT / "docs" / "house.svg"
INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]+"([^"]+)"', re.MULTILINE)

# What is one room although it is several folders.
TOGETHER = {"arplatform rows": re.compile(r"src/tarvelon/(arplatform/.*\.h|(foundation|types)/.*\.h)$"),
            "module": re.compile(r"src/tarvelon/(module|collections|factory|arplatform)/")}
WIDTH, HEIGHT, GAP, MARGIN = 168, 40, 26, 24


def room_of(name):
    """The room of a file, None for one that is in no room."""
    for room, pattern in TOGETHER.items():
        if pattern.match(name):
            return room
    parts = name.removeprefix("src/tarvelon/").split("/")
    if name.startswith("python/host/"):
        return "host " + parts[2] if len(parts) > 3 else None
    if not name.startswith("src/tarvelon/"):
        return None
    if parts[0] == "platform":
        return " ".join(parts[1:3]) if len(parts) > 3 else parts[1]
    return parts[0]


def rooms(root):
    """{room: [number of files, set of the rooms that it includes]}"""
    found = {}
    for path in sorted([*(root / "src").rglob("*"), *(root / "python/host").rglob("*")]):
        name = path.relative_to(root).as_posix()
        room = room_of(name) if path.suffix in (".h", ".cpp") else None
        if room is None:
            continue
        text = (root / name).read_text(encoding="utf-8")
        entry = found.setdefault(room, [0, set()])
        entry[0] += 1
        for target in INCLUDE.findall(text):
            other = room_of("src/" + target if target.startswith("tarvelon/") else target)
            # The headers that programs include are declarations: what implements them is above them.
            if other and other != room and not (other == "model api" and room.startswith(("model ", "files "))):
                entry[1].add(other)
    return found


def reduced(found):
    """{room: the rooms below it that no other arrow leads to}, without boundary/."""
    below = {}

    def all_below(room, way=()):
        if room in way:
            sys.exit("house: rooms include each other: " + " -> ".join((*way, room)))
        if room not in below:
            below[room] = set()
            for each in found[room][1] - {"boundary"}:
                below[room] |= {each} | all_below(each, (*way, room))
        return below[room]

    return {room: sorted(each for each in found[room][1] - {"boundary"}
                         if not any(each in all_below(other) for other in found[room][1] - {each, "boundary"}))
            for room in found}


def levels(arrows):
    """The rooms by level: the lowest first, each room directly above the highest of those that it includes."""
    level = {}

    def level_of(room):
        if room not in level:
            level[room] = 1 + max(map(level_of, arrows[room]), default=-1)
        return level[room]

    rows = []
    for room in sorted(arrows):
        if room == "boundary":
            continue
        while len(rows) <= level_of(room):
            rows.append([])
        rows[level_of(room)].append(room)
    return [["boundary"]] + rows


def svg(found):
    arrows = reduced(found)
    rows = levels(arrows)
    wide = max(map(len, rows))
    width = 2 * MARGIN + wide * WIDTH + (wide - 1) * GAP
    height = 2 * MARGIN + len(rows) * HEIGHT + (len(rows) - 1) * GAP
    place = {}
    for index, row in enumerate(reversed(rows)):
        left = (width - len(row) * WIDTH - (len(row) - 1) * GAP) // 2
        for column, room in enumerate(row):
            place[room] = (left + column * (WIDTH + GAP), MARGIN + index * (HEIGHT + GAP))
    out = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" font-family="sans-serif" font-size="12">',
           '<rect width="100%" height="100%" fill="#ffffff"/>']
    for room, targets in sorted(arrows.items()):
        for target in targets:
            (x, y), (u, v) = place[room], place[target]
            x, u, y = x + WIDTH // 2, u + WIDTH // 2, y + HEIGHT
            bend = (v - y) // 2
            out.append(f'<path d="M{x} {y}C{x} {y + bend} {u} {v - bend} {u} {v}" fill="none" stroke="#8090a0"/>')
    for room, (x, y) in sorted(place.items()):
        many = f"{found[room][0]} file" + ("" if found[room][0] == 1 else "s")
        colour = {"model": "#dcebd8", "host": "#f3e3cf", "files": "#e6dcef"}.get(room.split()[0], "#dde6f2")
        out += [f'<rect x="{x}" y="{y}" width="{WIDTH}" height="{HEIGHT}" rx="4" fill="{colour}" stroke="#506070"/>',
                f'<text x="{x + WIDTH // 2}" y="{y + 17}" text-anchor="middle" font-weight="bold">{escape(room)}</text>',
                f'<text x="{x + WIDTH // 2}" y="{y + 32}" text-anchor="middle" fill="#506070">{many}</text>']
    return "\n".join([*out, "</svg>", ""])


def main(arguments):
    if arguments not in ([], ["--check"]):
        sys.exit(__doc__)
    picture = svg(rooms(ROOT))
    if arguments:
        if not PICTURE.is_file() or PICTURE.read_text(encoding="utf-8") != picture:
            sys.exit("docs/house.svg shows other rooms than the sources: run /usr/bin/python3 tools/house.py")
    else:
        PICTURE.write_text(picture, encoding="utf-8")


if __name__ == "__main__":
    main(sys.argv[1:])
