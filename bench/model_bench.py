"""Builds the large model from Python, in all ways in which a script may do so.

The figures are nanoseconds of processor time for each object: the best of several rounds, because other
programs on the machine can only add time, and the median. The garbage collector runs as usual; its runs are
counted.
"""

import gc
import os
import platform
import statistics
import sys
import time

import K7Q
from Tarvelon.metamodel.arplatform import Factory, behavior, instance, interface, port

BEHAVIORS, RUNNABLES, ACCESSES, EVENTS = 1_000, 100, 4, 2
OBJECTS = BEHAVIORS * (1 + RUNNABLES * (1 + 2 * ACCESSES + EVENTS))
UNITS = 24
ROUNDS = 5
AIM = 2500


def name_of(kind, number):
    return kind + str(number).rjust(UNITS - len(kind), "_")


def by_classes(model, data, at):
    """behavior.Runnable(model, symbol, name), owner.Runnables.append(runnable)"""
    read = behavior.DataAccessKind.ImplicitRead
    for number in range(BEHAVIORS):
        owner = behavior.ApplicationComponentBehavior(model)
        owner.Name = name_of("Behavior", number)
        for step in range(RUNNABLES):
            runnable = behavior.Runnable(model, name_of("step", step), name_of("Step", step))
            owner.Runnables.append(runnable)
            for index in range(ACCESSES):
                target = instance.FlowDataPortInstanceRef(model, data, at)
                access = behavior.FlowDataAccess(model, target, read, name_of("Access", index))
                runnable.dataAccess.append(access)
            for index in range(EVENTS):
                event = behavior.TimingEvent(model, 0.01, name_of("Event", EVENTS * step + index))
                event.StartOnEvent = runnable
                owner.Events.append(event)


def by_properties(model, data, at):
    """runnable = behavior.Runnable(model), runnable.Name = name, ..."""
    read = behavior.DataAccessKind.ImplicitRead
    for number in range(BEHAVIORS):
        owner = behavior.ApplicationComponentBehavior(model)
        owner.Name = name_of("Behavior", number)
        for step in range(RUNNABLES):
            runnable = behavior.Runnable(model)
            runnable.Name = name_of("Step", step)
            runnable.symbol = name_of("step", step)
            owner.Runnables.append(runnable)
            for index in range(ACCESSES):
                access = behavior.FlowDataAccess(model)
                access.Name = name_of("Access", index)
                access.Kind = read
                access.instanceRef = instance.FlowDataPortInstanceRef(model, data, at)
                runnable.dataAccess.append(access)
            for index in range(EVENTS):
                event = behavior.TimingEvent(model)
                event.Name = name_of("Event", EVENTS * step + index)
                event.Period = 0.01
                event.StartOnEvent = runnable
                owner.Events.append(event)


def by_factory(model, data, at):
    """factory.create("behavior.Runnable", symbol, name), owner.Runnables.append(runnable)"""
    read = behavior.DataAccessKind.ImplicitRead
    factory = Factory.createNewFactory(model)
    for number in range(BEHAVIORS):
        owner = factory.create("behavior.ApplicationComponentBehavior")
        owner.Name = name_of("Behavior", number)
        for step in range(RUNNABLES):
            runnable = factory.create("behavior.Runnable", name_of("step", step), name_of("Step", step))
            owner.Runnables.append(runnable)
            for index in range(ACCESSES):
                target = factory.create("instance.FlowDataPortInstanceRef", data, at)
                access = factory.create("behavior.FlowDataAccess", target, read, name_of("Access", index))
                runnable.dataAccess.append(access)
            for index in range(EVENTS):
                event = factory.create("behavior.TimingEvent", 0.01, name_of("Event", EVENTS * step + index))
                event.StartOnEvent = runnable
                owner.Events.append(event)


def names_alone(*_):
    """the texts alone, without any model"""
    for number in range(BEHAVIORS):
        name_of("Behavior", number)
        for step in range(RUNNABLES):
            name_of("step", step), name_of("Step", step)
            for index in range(ACCESSES):
                name_of("Access", index)
            for index in range(EVENTS):
                name_of("Event", EVENTS * step + index)


def collections():
    return sum(each["collections"] for each in gc.get_stats())


def round_of(build):
    """Nanoseconds for each object of one model, the number of objects, and the runs of the garbage
    collector."""
    with K7Q.Model.create() as model:
        data, at = interface.FlowData(model), port.DataReceiverPort(model)
        gc.collect()
        collected = collections()
        started = time.process_time_ns()
        build(model, data, at)
        spent = time.process_time_ns() - started
        return spent / OBJECTS, len(model.objects()) - 2, collections() - collected


def main():
    print(f"A model of {OBJECTS} objects from Python {platform.python_version()}, {os.cpu_count()} cores; "
          f"nanoseconds an object (aim: at most {AIM})")
    print(f"{'':88}{'best':>7}{'median':>8}{'collections':>13}")
    for build in (by_classes, by_properties, by_factory, names_alone):
        rounds = [round_of(build) for _ in range(ROUNDS)]
        times = [spent for spent, _, _ in rounds]
        print(f"  {build.__doc__:86}{min(times):7.0f}{statistics.median(times):8.0f}{rounds[0][2]:13}")
        if build is not names_alone and any(made != OBJECTS for _, made, _ in rounds):
            sys.exit(f"expected {OBJECTS} objects, made {rounds[0][1]}")


if __name__ == "__main__":
    main()
