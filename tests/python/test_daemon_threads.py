"""The interpreter ends while a daemon thread is in Python code that the host has called. It must end
without a crash."""

import os

import pytest

START = """
import gc, sys, threading, time, weakref
import K7Q
from Tarvelon.metamodel.arplatform import Factory, common, manifest, variant
model = K7Q.Model.create()
package = common.Package(model, "P")
texts = variant.PostBuildVariantCondition(model).ValueVariationPoint
texts += ["a", "b"]
is_inside = threading.Event()

def stay(*ignored, **names):
    "Python code that never returns, and that waits for the interpreter's lock all the time."
    is_inside.set()
    while True:
        time.sleep(0.00001)

class Staying:
    "Each way into Python code."
    __call__ = __del__ = __eq__ = __index__ = __iter__ = __fspath__ = __repr__ = __len__ = stay
    __hash__ = object.__hash__

class Late:
    "Only its end is Python code."
    __del__ = stay
    def __call__(self, *ignored): pass

class Text(str):
    __repr__ = stay

class Number(int):
    __repr__ = stay

def last_of_model(keep):
    "A model with a listener, which nothing else holds."
    own = K7Q.Model.create()
    own.listen(keep)
    return own
"""

END = """
threading.Thread(target=run, daemon=True).start()
assert is_inside.wait(60)
"""

# Ways in which the host calls Python code. Each is the body of a function that a thread runs.
CALLS = {
    "a listener": "model.listen(stay); package.Name = 'x'",
    "a listener in a transaction's end": "model.listen(stay)\n with model.transaction(): package.Name = 'x'",
    "a listener in a construction": "model.listen(stay); common.Package(model, 'x')",
    "a listener in an undo": "model.history = 9; package.Name = 'x'; model.listen(stay); model.undo()",
    "a listener of an object": "package.listen(stay); package.destroy()",
    "the hook for what a listener raises": "sys.unraisablehook = stay; model.listen(lambda _: 1 / 0); package.Name = 'x'",
    "a listener's end with its subscription": "model.listen(Late()).close()",
    "a listener's end with its model": "own = last_of_model(Late()); del own",
    "a listener's end with the close of its model": "last_of_model(Late()).close()",
    "a listener's end behind a change": 
        "late = model.listen(Late()); model.listen(lambda _: late.close()); package.Name = 'x'",
    "a rule": "K7Q.rule('staying', common.Package)(stay); model.validate()",
    "the progress of a save": "model.save(path, progress=stay)",
    "the progress of a load": "model.save(path); K7Q.Model.load(path, progress=stay)",
    "a path": "model.save(Staying())",
    "a comparison in index": "texts.index(Staying())",
    "a comparison in count": "texts.count(Staying())",
    "a comparison in remove": "texts.remove(Staying())",
    "a comparison in a test for an element": "Staying() in texts",
    "a comparison of descriptions": "Staying() in common.Package.MetaProperty()",
    "an index": "texts[Staying()]",
    "an index of an assignment": "texts[Staying()] = 'c'",
    "an index of a slice": "texts[Staying():]",
    "a whole number as an argument": "texts.insert(Staying(), 'c')",
    "a number as a value": "common.ModeDeclaration(model).Value = Staying()",
    "the length of a history": "model.history = Staying()",
    "an iteration": "texts.extend(Staying())",
    "a generator": "texts.extend(stay() for _ in [1])",
    "a text in an error": "texts.remove(Text('x'))",
    "a number in an error": "texts[Number(9)]",
    "the stream of what is printed": "sys.stdout = type('Stream', (), {'write': stay, 'flush': lambda self: None})(); variant.BindingTimeKind.LinkTime.disp()",
    "a callback of a weak reference to an object": "kept = weakref.ref(common.Package(model, 'y'), stay)",
    "a callback of a weak reference to a sequence": "kept = weakref.ref(package.PackagedElement, stay)",
    "a callback of a weak reference to an iterator": "kept = weakref.ref(texts.begin(), stay)",
    "a callback of a weak reference to a model": "kept = weakref.ref(K7Q.Model.create(), stay)",
    "the end of elements that were added": "texts.extend(iter(['c', Late()]))",
    "the collector":
        "cycle = [Late()]; cycle.append(cycle); del cycle; gc.set_threshold(1)\n while True: model.instances(common.Package)",
}


def program(body, path):
    return f"{START}\npath = {str(path)!r}\ndef run():\n {body}\n{END}"


@pytest.mark.parametrize("name", CALLS)
def test_the_interpreter_ends_inside(python, name, tmp_path):
    # A thread that the interpreter kills keeps its references. That is not a leak of the host.
    environment = {**os.environ, "ASAN_OPTIONS": os.environ.get("ASAN_OPTIONS", "") + ":detect_leaks=0"}
    # With TARVELON_ENDINGS=200 this runs 200 times, because the order in which threads get the GIL varies.
    for _ in range(int(os.environ.get("TARVELON_ENDINGS", 1))):
        assert python(program(CALLS[name], tmp_path / "model.xmi"), env=environment) == ""
