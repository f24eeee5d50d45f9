"""A model as plain dicts and lists, with transactions and a history, for comparison with the real model."""

# The properties of each class: texts and other single values, lists, and the lists that contain their
# elements.
SINGLE = {"Package": ["Name", "category"], "SystemConst": ["Name", "category"], "ModeDeclaration": ["Name", "Value"],
          "Sdx": ["sdx"], "Runnable": ["Name", "symbol"], "TimingEvent": ["Name", "Period", "StartOnEvent"],
          "DdsEventDeployment": ["Name", "TopicName"], "PostBuildVariantCondition": []}
LISTS = {"Package": ["PackagedElement", "PackageImport"], "Runnable": ["Events"],
         "DdsEventDeployment": ["TransportProtocol"], "PostBuildVariantCondition": ["ValueVariationPoint"]}
REFERENCES = {"sdx", "StartOnEvent", "PackagedElement", "PackageImport", "Events"}
HOLDING = {"PackagedElement"}
FITTING = {"PackagedElement": {"Package", "SystemConst"}, "PackageImport": {"Package"}, "Events": {"TimingEvent"},
           "StartOnEvent": {"Runnable"}, "sdx": {"Package", "SystemConst"}}
OPPOSITE = {"StartOnEvent": "Events", "Events": "StartOnEvent"}


class Refused(Exception):
    """Raised for a change that the real model refuses. Nothing has changed then."""


class PlainModel:
    """The state is one dict, so a snapshot is a copy. A change returns its number of journal entries, 0 if
    it changes nothing."""

    def __init__(self):
        self.objects = {}
        self.limit, self.undoable, self.redoable = 0, [], []
        self.open = []  # for each open transaction: the state before it, and has_steps before it
        self.has_steps = False

    # Batches

    def snapshot(self):
        return {key: {name: list(value) if isinstance(value, list) else value for name, value in values.items()}
                for key, values in self.objects.items()}

    def change(self, edit):
        """Makes a change. Returns whether listeners are told of it now."""
        before = self.snapshot()
        try:
            has_steps = edit()
        except Refused:
            self.objects = before
            raise
        if self.open:
            self.has_steps = self.has_steps or bool(has_steps)
            return False
        return bool(has_steps) and self.record(before)

    def record(self, before):
        self.redoable.clear()
        if self.limit:
            self.undoable.append(before)
            del self.undoable[:-self.limit]
        return True

    def begin(self):
        self.open.append((self.snapshot(), self.has_steps))

    def commit(self):
        before, _ = self.open.pop()
        if self.open:
            return False
        has_steps, self.has_steps = self.has_steps, False
        return has_steps and self.record(before)

    def roll_back(self, index):
        self.objects, self.has_steps = self.open[index]
        del self.open[index:]

    def set_limit(self, limit):
        self.require_outside()
        if len(self.undoable) + len(self.redoable) > limit:
            self.redoable.clear()
        del self.undoable[:max(0, len(self.undoable) - limit)]
        self.limit = limit

    def undo(self):
        return self.step(self.undoable, self.redoable)

    def redo(self):
        return self.step(self.redoable, self.undoable)

    def step(self, taken, given):
        self.require_outside()
        if not taken:
            return False
        given.append(self.objects)
        self.objects = taken.pop()
        return True

    def require_outside(self):
        if self.open:
            raise Refused("a transaction is open")

    # Objects

    def make(self, key, kind, values):
        self.objects[key] = {"kind": kind, **dict.fromkeys(SINGLE[kind]),
                             **{name: [] for name in LISTS.get(kind, ())}, **values}
        return True

    def owner_of(self, key):
        for owner, values in self.objects.items():
            for name in HOLDING & values.keys():
                if key in values[name]:
                    return owner
        return None

    def holders_of(self, key):
        while key is not None:
            yield key
            key = self.owner_of(key)

    def tree(self, key):
        """An object and all objects that it contains, in order."""
        yield key
        for name in LISTS.get(self.objects[key]["kind"], ()):
            for each in self.objects[key][name] if name in HOLDING else ():
                yield from self.tree(each)

    def destroy(self, key):
        gone = set(self.tree(key))
        for each in gone:
            del self.objects[each]
        for values in self.objects.values():
            for name in REFERENCES & values.keys():
                if isinstance(values[name], list):
                    values[name] = [each for each in values[name] if each not in gone]
                elif values[name] in gone:
                    values[name] = None
        return True

    def referrers_of(self, key):
        """The references to an object as sorted pairs of object and property, without its owner."""
        found = [(each, name) for each, values in self.objects.items() for name in REFERENCES & values.keys()
                 if name not in HOLDING
                 and (key in values[name] if isinstance(values[name], list) else values[name] == key)]
        return sorted(found)

    def path_of(self, key):
        names = [self.objects[each].get("Name") for each in self.holders_of(key)]
        return "".join(f"/{name}" for name in reversed(names) if name)

    # Values

    def set(self, key, name, value):
        values = self.objects[key]
        if name in REFERENCES:
            if values[name] == value:
                return False
            self.unlink(key, name)
            values[name] = value
            if name in OPPOSITE and value is not None:
                self.objects[value][OPPOSITE[name]].append(key)
            return True
        has_value, values[name] = values[name] is not None, value
        return has_value or value is not None

    def unlink(self, key, name):
        """Removes a single-valued reference from the list of its opposite."""
        value = self.objects[key][name]
        if name in OPPOSITE and value is not None:
            self.objects[value][OPPOSITE[name]].remove(key)

    # Lists

    def check(self, key, name, value):
        if name in HOLDING and value in self.holders_of(key):
            raise Refused("it would hold itself")

    def enter(self, key, name, value):
        """Removes an element from where it was, before it is added to a list."""
        if name in HOLDING and (owner := self.owner_of(value)) is not None:
            for each in HOLDING & self.objects[owner].keys():
                if value in self.objects[owner][each]:
                    self.objects[owner][each].remove(value)
        if name in OPPOSITE:
            self.unlink(value, OPPOSITE[name])
            self.objects[value][OPPOSITE[name]] = key

    def leave(self, name, values):
        for each in values if name in OPPOSITE else ():
            self.objects[each][OPPOSITE[name]] = None

    def insert(self, key, name, index, value):
        """Inserts at an index from 0; None appends."""
        elements = self.objects[key][name]
        if name in REFERENCES:
            self.check(key, name, value)
            if value in elements:
                return index is not None and self.move(elements, value, index)
            self.enter(key, name, value)
        elements.insert(len(elements) if index is None else index, value)
        return True

    @staticmethod
    def move(elements, value, index):
        at = elements.index(value)
        to = index - 1 if at < index else index  # its removal moves the later elements forward
        elements.insert(to, elements.pop(at))
        return at != to

    def replace(self, key, name, index, value):
        elements = self.objects[key][name]
        if name in REFERENCES:
            self.check(key, name, value)
            if elements[index] == value:
                return False
            if value in elements:
                other = elements.index(value)
                elements[index], elements[other] = elements[other], elements[index]
                return True
            self.leave(name, [elements[index]])
            kept = elements[index]
            self.enter(key, name, value)
            elements[elements.index(kept)] = value
            return True
        elements[index] = value
        return True

    def erase(self, key, name, first, last):
        elements = self.objects[key][name]
        self.leave(name, elements[first:last])
        gone = bool(elements[first:last])
        del elements[first:last]
        return gone

    def remove_all(self, key, name, value):
        elements = self.objects[key][name]
        count = elements.count(value)
        if count:
            self.leave(name, [value])
        elements[:] = [each for each in elements if each != value]
        return count > 0
