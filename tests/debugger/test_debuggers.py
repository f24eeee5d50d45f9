"""gdb and lldb print objects, texts, names, lists and steps as tools/debugger shows them."""

import os
import shutil
import subprocess
from pathlib import Path

import pytest

ROOT = Path(__file__).resolve().parents[2]
# The values of look() in Subject.cpp. A list of two words ends in the addresses of its objects.
SHOWN = {
    "package": "common.Package 'Brakes ä' (number 0)",
    "nameless": "common.Package (number 1)",
    "destroyed": "variant.SystemConst 'D' (number 3, destroyed, can be restored)",
    "list": "2 words [0x",
    "text": '"Brakes ä", 1 references',
    "name": "'Tarvelon.metamodel.arplatform.common.Package'",
    "step": "Value common.Package 'Brakes ä' (number 0), slot 3: nothing -> 0x2",
}


def run(debugger, script, tmp_path, *options):
    """Stops the program in look() and prints its arguments. Returns a line for each."""
    if not shutil.which(debugger):
        pytest.skip(f"{debugger} is missing: './tarvelon install ci' installs it")
    file = tmp_path / "script"
    file.write_text("\n".join(script) + "\n")
    # lldb of Debian 12 does not find its own Python modules.
    environment = {**os.environ, "PYTHONPATH": "/usr/lib/llvm-14/lib/python3.11/dist-packages", "LC_ALL": "C.UTF-8"}
    done = subprocess.run([debugger, *options, str(file), os.environ["TARVELON_SUBJECT"]], cwd=ROOT, env=environment,
                          capture_output=True, text=True, stdin=subprocess.DEVNULL, timeout=240)
    return done.stdout + done.stderr


def test_gdb(tmp_path):
    printed = run("gdb", ["source tools/debugger/gdb_printers.py", "break look", "run", *(f"print {name}" for name in SHOWN)],
                  tmp_path, "-q", "-batch", "-nx", "-x")

    for number, shown in enumerate(SHOWN.values(), 1):
        line = next((line for line in printed.splitlines() if line.startswith(f"${number} = ")), printed)
        assert f": {shown}" in line


def test_lldb(tmp_path):
    printed = run("lldb-14", ["command script import tools/debugger/lldb_summaries.py", "breakpoint set -n look", "run",
                              "frame variable " + " ".join(SHOWN)], tmp_path, "-b", "-x", "-s")

    for name, shown in SHOWN.items():
        line = next((line for line in printed.splitlines() if f") {name} = 0x" in line), printed)
        assert f" {shown}" in line
