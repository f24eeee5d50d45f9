"""Measures copies, differences and JSON for each object, compared with building the same objects in the same
run.

Times are processor times, the best of several rounds, because other programs on the machine can only add
time.
"""

import gc
import json
import os
import platform
import sys
import time

import K7Q
import Tarvelon
from Tarvelon.metamodel.arplatform import behavior, common, component, instance

# The number of objects for each runnable: itself, four accesses with their references, and two events.
RUNNABLES = 100


def build(count):
    """Builds a model with at least `count` objects: 100 runnables in a component, 11 objects a runnable."""
    model = K7Q.Model.create()
    root = common.Package(model, "Root")
    made = 1
    while made < count:
        atomic = component.AtomicComponent(model)
        atomic.Name = f"ComponentOfTheModel{made:05}"
        atomic.Behavior = behavior.ApplicationComponentBehavior(model)
        atomic.Behavior.Name = "Behavior"
        root.PackagedElement.append(atomic)
        made += 2
        for number in range(RUNNABLES):
            made += add_runnable(model, atomic.Behavior, number)
    return model, root, made


def add_runnable(model, owner, number):
    runnable = behavior.Runnable(model, f"step{number}", f"RunnableOfTheModel{number:06}")
    owner.Runnables.append(runnable)
    for index in range(4):
        access = behavior.FlowDataAccess(model)
        access.Name = f"Access{index}"
        access.instanceRef = instance.FlowDataPortInstanceRef(model)
        runnable.dataAccess.append(access)
    for index in range(2):
        event = behavior.TimingEvent(model, 0.01, f"Event{number}_{index}")
        event.StartOnEvent = runnable
        owner.Events.append(event)
    return 11


def reflect(target, seen):
    """The same as to_dict(), but written in Python with the descriptions of the properties, for
    comparison."""
    record = {"class": type(target).__name__}
    for name, is_held, is_many in seen.setdefault(type(target), list(descriptions(target))):
        value = getattr(target, name)
        if not value and value is not False:
            continue
        if is_many:
            record[name] = [reflect(each, seen) if is_held else shown(each) for each in value]
        else:
            record[name] = reflect(value, seen) if is_held else shown(value)
    return record


def descriptions(target):
    meta = type(target).MetaProperty()
    for name in dir(type(meta)):
        if name.startswith("_") or not name[0].isupper():
            continue
        each = getattr(meta, name)()
        spellings = (name, name[0].lower() + name[1:])
        attribute = next((one for one in spellings if hasattr(type(target), one)), None)
        if attribute and not each.isReadOnly():
            yield attribute, each.isContainment(), each.upperBound() == -1


def shown(value):
    if hasattr(type(value), "Owner"):
        return path(value)
    return value if isinstance(value, (int, float)) else str(value)


def path(target):
    above = "" if target.Owner is None else path(target.Owner)
    return f"{above}/{target.Name}" if hasattr(type(target), "Name") else above


def best(action, rounds=3):
    """The processor time in seconds."""
    times = []
    for _ in range(rounds):
        gc.collect()
        started = time.process_time()
        result = action()
        times.append(time.process_time() - started)
        del result
    return min(times)


def figures(model, root, other):
    """The names and functions of the measurements."""
    yield "clone a package of all", lambda: root.clone().destroy()
    yield "clone the model", lambda: model.clone().close()
    yield "diff with an equal model", lambda: Tarvelon.diff(model, other)
    yield "to_json on one line", lambda: model.to_json(None)
    yield "to_dict", model.to_dict


def measure(count):
    started = time.process_time()
    model, root, made = build(count)
    building = (time.process_time() - started) / made
    with model, model.clone() as other:
        print(f"{made} objects, built in {building * 1e9:.0f} ns each")
        for name, action in figures(model, root, other):
            each = best(action) / made
            print(f"  {name:32}{each * 1e9:7.0f} ns an object{each / building:8.2f} of building one")
        if made < 200_000:
            each = best(lambda: json.dumps(reflect(root, {})), 1) / made
            print(f"  {'JSON by reflection, in Python':32}{each * 1e9:7.0f} ns an object"
                  f"{each / building:8.2f} of building one")


def main():
    print(f"Copies, Python {platform.python_version()}, {os.cpu_count()} cores")
    gc.disable()
    sys.setrecursionlimit(10_000)
    for count in (10_000, 100_000, 1_000_000):
        measure(count)


if __name__ == "__main__":
    main()
