"""Makes each allocation of an action fail in turn. test_memory.py runs this program in processes of their own.

    python failing_memory.py SCENARIO STRIDE

prints a line for each kind of wrong outcome, and the number of allocations that were made to fail. LD_PRELOAD
must name the library of tests/preload.
"""

import ast
import collections
import ctypes
import gc
import os
import signal
import sys
import tempfile

_failing = ctypes.CDLL(None)  # finds the functions of the library in LD_PRELOAD

LONG = "a text that is too long for the place in which short ones stand"


class World:
    """A model with contents, and a description of everything that can be seen of it."""

    def __init__(self, history=0):
        import K7Q
        import K7Q._records  # imported now: an import that runs out of memory may load a wrong file
        import K7Q._tuples
        import Tarvelon._diff
        from Tarvelon.metamodel.arplatform import Factory, common, variant

        self.K7Q, self.common, self.variant = K7Q, common, variant
        self.model = model = K7Q.Model.create()
        self.package = common.Package(model, "P")
        self.constant = variant.SystemConst(model, "C")
        self.package.PackagedElement.append(self.constant)
        self.formula = variant.SystemConstDependentFormula(model, "f")
        self.formula.SysConst.append(self.constant)
        self.other = variant.SystemConst(model, LONG)
        self.factory = Factory.createNewFactory(model)
        self.told = []
        self.path = os.path.join(FOLDER, "saved.xmi")
        self.unheard = []
        sys.unraisablehook = lambda error: self.unheard.append(type(error.exc_value).__name__)
        if history:
            model.history = history
            self.package.category = "1"
            self.package.category = "2"
            model.undo()

    def listen(self):
        self.model.listen(lambda changes: self.told.append(len(changes)))

    def shown(self):
        state = (self.model.to_json(None), self.model.undoable, self.model.redoable)
        copy = self.model.clone().to_json(None)
        assert copy == state[0], (copy, state[0])
        return state


def _statistics():
    import _tarvelon_host

    gc.collect()
    return _tarvelon_host.statistics()


# The actions of a scenario. An action is repeated after a failure and must then have the same result.
ACTIONS = {}


def action(history=0, stride=1):
    """Registers a function by its name, with the limit of the history and the stride of a short run."""

    def enter(function):
        ACTIONS[function.__name__] = (function, history, stride)
        return function

    return enter


@action(stride=5)
def construct_first(w):
    return w.common.ModeDeclarationGroup(w.model, LONG)


@action()
def construct(w):
    return w.common.Package(w.model, LONG)


@action(history=10)
def construct_with_history(w):
    return w.common.Package(w.model, LONG)


@action(history=10, stride=5)
def construct_first_with_history(w):
    return w.common.ModeDeclarationGroup(w.model, LONG)


@action(stride=5)
def factory_create(w):
    return w.factory.create("common.ModeDeclarationGroup", LONG)


@action(history=10, stride=5)
def factory_create_with_history(w):
    return w.factory.create("common.ModeDeclarationGroup", LONG)


@action()
def clone(w):
    return w.package.clone()


@action(history=10)
def clone_with_history(w):
    return w.package.clone()


@action()
def clone_model(w):
    return w.model.clone()


@action()
def set_text(w):
    w.package.category = LONG


@action(history=10)
def set_text_with_history(w):
    w.package.category = LONG


@action(history=10)
def delete_text(w):
    del w.package.category


@action()
def read(w):
    assert w.package.Name == "P"
    assert [each.Name for each in w.package.PackagedElement] == ["C"]


@action()
def find(w):
    assert w.model.find("/P/C") == w.constant


@action(stride=13)
def instances(w):
    assert w.constant in w.model.instances(w.common.Packageable)
    assert len(w.model.objects()) == 4


@action()
def referrers(w):
    assert len(w.constant.referrers()) == 1


@action(history=10)
def append(w):
    w.package.PackagedElement.append(w.other)


@action(history=10)
def remove(w):
    w.formula.SysConst.clear()


@action(history=10, stride=5)
def destroy(w):
    if w.package.isvalid():
        w.package.destroy()


@action(history=10)
def transaction(w):
    with w.model.transaction():
        w.constant.Name = "D"
        w.variant.SystemConst(w.model, LONG)


@action(history=10)
def undo(w):
    if w.model.undoable == 1:
        w.model.undo()


@action(history=10)
def redo(w):
    if w.model.redoable == 1:
        w.model.redo()


@action(stride=3)
def save_anew(w):
    w.model.save(w.path.replace("saved", "anew"))


@action(stride=3)
def save(w):
    w.model.save(w.path)


@action(stride=5)
def load(w):
    w.K7Q.Model.load(w.path).close()


@action(stride=97)
def validate(w):
    w.model.validate()


@action(stride=3)
def diff(w):
    import Tarvelon

    copy = w.model.clone()
    w.common.Package(copy, "new")
    assert len(Tarvelon.diff(w.model, copy)) == 1


@action()
def to_json(w):
    w.model.to_json()


@action()
def listen(w):
    with w.model.listen(lambda changes: w.told.append(len(changes))):
        w.package.category = LONG


def _in_child(turn):
    """Runs turn(tell) in a child process. Returns what it told, and how it ended if it crashed."""
    read_end, write_end = os.pipe()
    child = os.fork()
    if not child:
        code = 1
        try:
            os.close(read_end)
            signal.alarm(60)
            turn(lambda text: os.write(write_end, text.encode()))
            code = 0
        finally:
            os._exit(code)
    os.close(write_end)
    with os.fdopen(read_end, "rb") as told:
        text = told.read().decode()
    status = os.waitpid(child, 0)[1]
    if os.WIFSIGNALED(status):
        return f"ended by signal {os.WTERMSIG(status)}"
    return text if status == 0 else f"ended with code {os.WEXITSTATUS(status)} {text}"


def _failure_of(act, n, expected):
    """Runs act() with its n-th allocation failing. Returns the exception that it raises, None if it
    succeeds, and whether there was an n-th allocation."""
    failure = None
    try:
        _failing.failingArm(n)
        act()
    except expected as error:
        failure = error
    while True:
        try:
            return failure, not _failing.failingDisarm()
        except MemoryError:  # failingDisarm() has made the failing allocation
            pass


def _watch(before, after, world, act, n):
    """Describes what is wrong with one attempt; nothing if all is well; "end" if there was no n-th
    allocation."""
    counts = _statistics()
    error, was_reached = _failure_of(lambda: act(world), n, MemoryError)
    faults = []
    if error is not None:
        error = None  # its traceback keeps the created objects alive
        if world.shown() != before:
            faults.append(f"half changed: {world.shown()} instead of {before}")
        now = _statistics()
        for kind in ("bindings", "arrays", "objects"):
            if now[kind] > counts[kind]:
                faults.append(f"left {now[kind] - counts[kind]} {kind}")
        act(world)
    if world.shown() != after:
        faults.append(f"at the end {world.shown()} instead of {after}")
    return "; ".join(faults) if was_reached else "end"


def _guarded(turn):
    def run(tell):
        try:
            tell(turn())
        except BaseException as error:
            _failing.failingDisarm()
            tell(f"raised {type(error).__name__}: {error}")

    return run


def _walk(turn, stride, most=100_000):
    """Runs turn(n) in a child process for n = 1, 2, ... until an attempt reports the end."""
    outcomes = collections.defaultdict(list)
    for n in range(1, most, stride):
        told = _in_child(_guarded(lambda: turn(n)))
        if told == "end":
            break
        outcomes[told].append(n)
    points = sum(map(len, outcomes.values()))
    outcomes.pop("", None)
    for told, where in sorted(outcomes.items()):
        print(f"{len(where)} times, first at {where[0]}: {told[:600]}")
    print(f"{points} points")


def run_action(name, stride):
    act, history, _ = ACTIONS[name]

    def once(is_to_act):
        world = World(history)
        if is_to_act:
            act(world)
        return world.shown()

    # In child processes, because each attempt is a first use.
    _in_child(lambda tell: (world := World()).model.save(world.path))
    shown = [_in_child(_guarded(lambda: repr(once(does)))) for does in (False, True)]
    if any(text.startswith("raised") for text in shown):
        sys.exit(f"the action fails with memory enough: {shown}")
    before, after = map(ast.literal_eval, shown)
    world = World(history)
    _walk(lambda n: _watch(before, after, world, act, n), stride)


def run_import(stride):
    def turn(n):
        def act():
            import K7Q  # noqa: F401

        # The interpreter may raise another error itself when memory runs out, "cannot import" for example.
        error, was_reached = _failure_of(act, n, Exception)
        error = None
        import K7Q
        from Tarvelon.metamodel.arplatform import Factory, common, port, system  # noqa: F401

        model = K7Q.Model.create()
        common.Package(model, "P")
        assert len(model.to_json()) > 10
        return "" if was_reached else "end"

    _walk(turn, stride)


def run_listeners(stride):
    """A change with listeners. A listener that is not called is reported."""
    world = World()
    objects = []
    world.model.listen(world.told.append)
    world.constant.listen(objects.append)

    def turn(n):
        def act():
            world.constant.category = LONG

        error, was_reached = _failure_of(act, n, MemoryError)
        if error is None:
            assert len(world.told) + len(objects) + len(world.unheard) == 2, (world.told, objects, world.unheard)
            assert set(world.unheard) <= {"MemoryError"}, world.unheard
            assert [] not in world.told + objects
        return "" if was_reached else "end"

    _walk(turn, stride)


def run_packages(stride):
    """The first use of the packages and of their classes."""
    import K7Q

    def turn(n):
        def act():
            from Tarvelon.metamodel.arplatform import common

            model = K7Q.Model.create()
            common.Package(model, "P")
            return dir(common)

        error, was_reached = _failure_of(act, n, Exception)  # an import may fail otherwise
        error = None
        names = act()
        assert len(names) == len(set(names)) > 200, len(names)
        return "" if was_reached else "end"

    _walk(turn, stride)


if __name__ == "__main__":
    _failing.failingArm.argtypes = [ctypes.c_ulong]
    _failing.failingArm.restype = None
    scenario, stride = sys.argv[1], int(sys.argv[2])
    runs = {"import": run_import, "listeners": run_listeners, "packages": run_packages}
    with tempfile.TemporaryDirectory() as FOLDER:
        if scenario in runs:
            runs[scenario](stride)
        else:
            run_action(scenario, stride)
