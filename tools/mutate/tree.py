"""A copy of the tree in which faults are planted. It is built and tested without a fault, then with one at a
time."""

import concurrent.futures
import json
import os
import re
import resource
import shutil
import subprocess
import time
from pathlib import Path
from typing import NamedTuple

from operators import planted

PRESET = "mutate"
# Tests that do not run the built code, or run it in the same way as other tests.
LEFT_OUT = re.compile(r"^(install|docs|stubs|entry|layers|exports|compatibility|tools|examples)\.")
# Tests that use the engine like the others but take ten times as long.
OF_THE_HOST = re.compile(r"^python\.")
# A suite that takes longer than this runs only for lines that no other suite reaches.
LONG_SECONDS = 10
# A suite that takes longer than this is left out.
MOST_SECONDS = 120
FILTER = "--gtest_filter="
MEMORY_BYTES = 6 << 30


class Test(NamedTuple):
    """A suite of GoogleTest or a file of pytest: how to run it, and its time without a fault."""

    name: str
    command: tuple
    environment: dict
    folder: str
    seconds: float = 0.0


def joined(tests):
    """Joins the tests of each suite into one, because a process for each test would spend most of its time on
    profiles."""
    suites = {}
    for test in tests:
        suites.setdefault((".".join(test.name.split(".")[:2]), test.command[0]), []).append(test)
    for (name, program), members in suites.items():
        filters = [part.removeprefix(FILTER) for each in members for part in each.command if part.startswith(FILTER)]
        if filters:
            command = (program, FILTER + ":".join(filters), "--gtest_fail_fast")
            yield members[0]._replace(name=name, command=command)
        else:
            yield from members


def limit_memory():
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY_BYTES, MEMORY_BYTES))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def run(test, profile, timeout):
    """Whether a test passes. A test that is skipped passes; a test that takes too long does not."""
    environment = {**os.environ, **test.environment, "GCOV_PREFIX": str(profile), "GCOV_PREFIX_STRIP": "0"}
    process = subprocess.Popen(test.command, cwd=test.folder, env=environment, stdin=subprocess.DEVNULL,
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True,
                               preexec_fn=limit_memory)
    try:
        return process.wait(timeout) in (0, 77)
    except subprocess.TimeoutExpired:
        return False
    finally:
        if process.poll() is None:
            os.killpg(process.pid, 9)
            process.wait()


class Tree:
    def __init__(self, root, with_host):
        self.with_host = with_host
        self.origin = root
        self.root = root / "build" / PRESET / "tree"
        self.build = self.root / "build" / PRESET
        self.reached = {}
        self.tests = []

    def prepare(self, files):
        """Updates the copy, builds it, and finds the tests that reach the lines of the given files."""
        self.copy()
        # The type stubs are written by a script that loads the libraries: a fault may keep it from ending.
        self.call("cmake", "--preset", PRESET, f"-DTARVELON_PYTHON={'ON' if self.with_host else 'OFF'}", cwd=self.root)
        if not self.compile():
            raise SystemExit(f"the tree does not build without a fault: ninja -C {self.build}")
        self.tests = self.list_tests()
        profiles = self.build / "profiles"
        shutil.rmtree(profiles, ignore_errors=True)
        self.tests = self.run_without_fault(profiles)
        self.reached = self.read_profiles(profiles, files)
        shutil.rmtree(profiles)

    def call(self, *command, cwd):
        result = subprocess.run(command, cwd=cwd, capture_output=True, text=True)
        if result.returncode != 0:
            raise SystemExit(f"{' '.join(map(str, command))} failed:\n{result.stdout[-3000:]}{result.stderr[-3000:]}")
        return result.stdout

    def copy(self):
        """Copies the files of the checkout. An unchanged file keeps its time, so that it is not built
        again."""
        names = self.call("git", "ls-files", "-z", "--cached", "--others", "--exclude-standard", cwd=self.origin)
        wanted = {name for name in names.split("\0") if name and (self.origin / name).is_file()}
        for name in wanted:
            source, target = self.origin / name, self.root / name
            if not target.is_file() or target.read_bytes() != source.read_bytes():
                target.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(source, target)
        for target in [each for each in self.root.rglob("*") if each.is_file()]:
            name = target.relative_to(self.root).as_posix()
            if not name.startswith("build/") and name not in wanted:
                target.unlink()

    def compile(self):
        """Whether everything builds, within ten minutes."""
        process = subprocess.Popen(["ninja", "-C", str(self.build), "--quiet"], stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL, start_new_session=True)
        try:
            return process.wait(600) == 0
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, 9)
            process.wait()
            return False

    def list_tests(self):
        listed = json.loads(self.call("ctest", "--show-only=json-v1", cwd=self.build))["tests"]
        found = []
        for each in listed:
            properties = {one["name"]: one["value"] for one in each["properties"]}
            environment = dict(pair.split("=", 1) for pair in properties.get("ENVIRONMENT", []))
            folder = properties.get("WORKING_DIRECTORY", str(self.build))
            # A program that is not built has no command.
            is_left_out = LEFT_OUT.match(each["name"]) or (not self.with_host and OF_THE_HOST.match(each["name"]))
            if "command" in each and not is_left_out:
                found.append(Test(each["name"], tuple(each["command"]), environment, folder))
        return list(joined(found))

    def run_without_fault(self, profiles):
        def timed(test):
            started = time.monotonic()
            passes = run(test, profiles / test.name, MOST_SECONDS)
            return test._replace(seconds=time.monotonic() - started), passes

        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
            results = list(pool.map(timed, self.tests))
        for test, passes in results:
            if not passes:
                print(f"left out: {test.name} fails without a fault", flush=True)
        kept = [test for test, passes in results if passes]
        if len(kept) < 0.9 * len(results):
            raise SystemExit(f"{len(results) - len(kept)} of {len(results)} tests fail without a fault")
        return sorted(kept, key=lambda test: test.seconds)

    def read_profiles(self, profiles, files):
        """For each file: its lines with code, each with the suites of tests that reach the line."""
        commands = json.loads((self.build / "compile_commands.json").read_text())
        objects = {each["file"]: self.build / re.search(r" -o (\S+)", each["command"])[1] for each in commands}
        jobs = []
        for file in sorted(files):
            notes = Path(f"{objects[str(self.root / file)]}".removesuffix(".o") + ".gcno")
            for suite in sorted(each for each in profiles.iterdir()):
                counts = Path(f"{suite}{notes}").with_suffix(".gcda")
                if counts.is_file():
                    jobs.append((file, suite.name, notes, counts))

        def lines(job):
            file, suite, notes, counts = job
            shutil.copy(notes, counts.with_suffix(".gcno"))
            output = self.call("gcov", "--json-format", "--stdout", str(counts), cwd=self.build)
            found = {}
            for each in json.loads(output)["files"]:
                if (self.build / each["file"]).resolve() == self.root / file:
                    for line in each["lines"]:
                        found[line["line_number"]] = found.get(line["line_number"], 0) + line["count"]
            return file, suite, found

        reached = {file: {} for file in files}
        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
            for file, suite, found in pool.map(lines, jobs):
                for line, count in found.items():
                    suites = reached[file].setdefault(line, set())
                    if count:
                        suites.add(suite)
        return reached

    def tests_of(self, mutant):
        """The tests that reach the mutant's line, fast ones first. For a line within a statement, its first
        line counts."""
        lines = self.reached[mutant.file]
        line = max((each for each in lines if each <= mutant.line), default=None)
        suites = lines.get(line, set())
        found = [test for test in self.tests if test.name in suites]
        quick = [test for test in found if test.seconds <= LONG_SECONDS]
        return quick or found

    def try_out(self, mutant):
        """The outcome for a fault, and the test that has found it."""
        tests = self.tests_of(mutant)
        if not tests:
            return "no test reaches it", ""
        path = self.root / mutant.file
        text = path.read_text()
        path.write_text(planted(text, mutant))
        try:
            if not self.compile():
                return "does not compile", ""
            return self.first_failure(tests)
        finally:
            path.write_text(text)

    def first_failure(self, tests):
        scratch = self.build / "scratch"
        failed = []

        def attempt(test):
            if not failed and not run(test, scratch, 20 + 10 * test.seconds):
                failed.append(test.name)

        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
            list(pool.map(attempt, tests))
        shutil.rmtree(scratch, ignore_errors=True)
        return ("killed", failed[0]) if failed else ("survived", "")
