"""The operations of mixed_world's programs that read; they never change a model."""

import gc
import threading

from plain_model import HOLDING, LISTS, REFERENCES, SINGLE

import K7Q
import Tarvelon

UNSET = {"Name": "", "symbol": "", "Period": 0.0, "category": "", "TopicName": "", "Value": None, "sdx": None,
         "StartOnEvent": None}


def broken_rule(element):
    """names are not bad"""
    return ("Name", "bad") if element.Name == "bad" else None


class Reads:
    # Comparing

    def require_equal(self, pair):
        plain, model = pair.plain, pair.model
        alive = {key: pair.handles[key] for key in plain.objects}
        for key, handle in pair.handles.items():
            assert handle.isvalid() == (key in alive), f"{key} is {handle!r}"
        assert len(model.objects()) == len(alive)
        for key, values in plain.objects.items():
            self.require_values(pair, values, alive[key])
        for key, handle in alive.items():
            owner = plain.owner_of(key)
            assert handle.Owner is (None if owner is None else alive[owner]), f"the owner of {key}"
        assert (model.history, model.undoable, model.redoable) == (
            plain.limit, len(plain.undoable), len(plain.redoable))

    @staticmethod
    def require_values(pair, values, handle):
        for name in SINGLE[values["kind"]]:
            value = getattr(handle, name)
            expected = values[name]
            if expected is None:
                assert value == UNSET[name] or value is UNSET[name], f"{handle!r}.{name} is {value!r}"
            elif name in REFERENCES:
                assert value is pair.handles[expected], f"{handle!r}.{name} is {value!r}"
            else:
                assert value == expected, f"{handle!r}.{name} is {value!r}, expected {expected!r}"
        for name in LISTS.get(values["kind"], ()):
            expected = [pair.handles[each] if name in REFERENCES else each for each in values[name]]
            found = list(getattr(handle, name))
            assert found == expected, f"{handle!r}.{name} is {found!r}, expected {expected!r}"

    # Files and copies

    def do_save(self, pair, place):
        path = self.folder / f"{place % 2}.xmi"
        calls = []
        pair.model.save(path, progress=calls.append)
        loaded = K7Q.Model.load(path)
        difference = Tarvelon.diff(pair.model, loaded)
        assert not difference, str(difference)
        assert loaded.to_dict() == pair.model.to_dict()

    def do_failing_save(self, pair, place):
        try:
            pair.model.save(self.folder / f"{place % 2}.xmi", progress=lambda done: 1 / 0)
        except ZeroDivisionError:
            pass

    def do_load(self, pair, place):
        path = self.folder / f"{place % 2}.xmi"
        if path.exists():
            assert K7Q.Model.load(path).validate() is not None

    def do_clone_model(self, pair):
        copy = pair.model.clone()
        assert not Tarvelon.diff(pair.model, copy)
        assert copy.to_dict() == pair.model.to_dict()

    def do_clone(self, pair, key, owner):
        """Clones without an owner. Checks the references of the copy."""
        key = self.choose(self.of_kinds(pair, {"Package"}), key)
        if key is None or len(pair.plain.objects) > 20:
            return
        tree = list(pair.plain.tree(key))
        keys = {each: self.key() for each in tree}

        def plain():
            for each in tree:
                values = pair.plain.objects[each]
                pair.plain.objects[keys[each]] = {
                    name: [keys.get(one, one) for one in value] if isinstance(value, list) else value
                    for name, value in values.items()}
            return True

        def real():
            self.follow(pair, keys, key, pair.handles[key].clone())

        self.both(pair, plain, real)

    def follow(self, pair, keys, key, handle):
        pair.handles[keys[key]] = handle
        for name in HOLDING & pair.plain.objects[key].keys():
            for each, element in zip(pair.plain.objects[key][name], getattr(handle, name), strict=True):
                self.follow(pair, keys, each, element)

    # Views, iterators, searches

    def do_view(self, pair, key, way):
        key = self.choose(pair.plain.objects, key)
        if key is None:
            return
        handle, frozen = pair.handles[key], pair.model.frozen()
        views = [handle.asImmutable(), handle.asDeviant(frozen), handle.asDeviant(frozen).asImmutable(),
                 handle.asImmutable().asDeviant(frozen), handle.asImmutable().asMutable(),
                 type(handle).cast(handle)]
        view = views[way % 6]
        assert view == handle and (view is handle) == (way % 6 >= 4)
        values = pair.plain.objects[key]
        for name in SINGLE[values["kind"]]:
            assert getattr(view, name) == getattr(handle, name)
        for name in LISTS.get(values["kind"], ()):
            assert list(getattr(view, name)) == list(getattr(handle, name))
        if way % 6 < 4:
            for write in (lambda: setattr(view, SINGLE[values["kind"]][0], "refused"), lambda: view.destroy()):
                self.require_refused(write)

    @staticmethod
    def require_refused(action):
        try:
            action()
        except (K7Q.Exception, IndexError):  # IndexError: the list is empty
            return
        raise AssertionError("a write through a view was not refused")

    def do_hold_iterator(self, pair, key, name, index):
        key = self.choose([key for key, values in pair.plain.objects.items() if values["kind"] in LISTS], key)
        if key is None:
            return
        name = self.choose(LISTS[pair.plain.objects[key]["kind"]], name)
        elements = pair.plain.objects[key][name]
        place, index = getattr(pair.handles[key], name).begin(), index % (len(elements) + 1)
        for _ in range(index):
            place.getNext()
        pair.iterators.append((place, key, name, index))
        del pair.iterators[:-8]

    def do_read_iterators(self, pair):
        for place, key, name, index in list(pair.iterators):
            elements = pair.plain.objects.get(key, {}).get(name)
            try:
                item = place.item()
            except K7Q.Exception:  # also if the list has its old contents again
                continue
            assert elements is not None and index < len(elements), f"a gone place gave {item!r}"
            expected = pair.handles[elements[index]] if name in REFERENCES else elements[index]
            assert item == expected, f"{name}: {item!r}, expected {expected!r}"

    def do_find(self, pair, key):
        key = self.choose(pair.plain.objects, key)
        if key is None:
            return
        plain, handle = pair.plain, pair.handles[key]
        assert handle.qualifiedName == (plain.path_of(key) if plain.objects[key].get("Name") else "")
        same = [each for each in plain.objects
                if plain.objects[each].get("Name") and plain.path_of(each) == plain.path_of(key)]
        if plain.objects[key].get("Name"):
            found = pair.model.find_all(plain.path_of(key))
            assert set(map(id, found)) == {id(pair.handles[each]) for each in same}
            assert pair.model.find(plain.path_of(key)) is found[0]
        kind = plain.objects[key]["kind"]
        assert len(pair.model.instances(type(handle))) == len(self.of_kinds(pair, {kind}))
        names = {id(each): key for key, each in pair.handles.items()}
        mentioned = sorted((names[id(each.object)], each.property) for each in handle.referrers())
        assert mentioned == plain.referrers_of(key), f"{handle!r} is referred to by {mentioned}"

    def do_validate(self, pair):
        problems = pair.model.validate()
        ours = [each for each in problems if each.rule == "mixed-names"]
        bad = [key for key, values in pair.plain.objects.items()
               if values["kind"] == "Package" and values["Name"] == "bad"]
        assert sorted(id(each.object) for each in ours) == sorted(id(pair.handles[key]) for key in bad)
        assert pair.model.validate() == problems

    # Threads, garbage, ends

    def do_threads(self, pair):
        errors = []

        def read(each):
            try:
                before = each.model.to_json()
                for _ in range(3):
                    each.model.validate()
                    each.model.clone()
                    assert each.model.to_json() == before
            except BaseException as error:  # handed to the main thread
                errors.append(error)

        threads = [threading.Thread(target=read, args=(each,)) for each in (*self.pairs, pair)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        if errors:
            raise errors[0]

    def do_collect(self, pair, what):
        pair.iterators.clear()
        if what % 2:
            pair.handles = {key: handle for key, handle in pair.handles.items() if self.is_needed(pair, key)}
        gc.collect()

    @staticmethod
    def is_needed(pair, key):
        """Objects that undo may restore are identified by their handles."""
        states = [pair.plain.objects, *pair.plain.undoable, *pair.plain.redoable, *(each for each, _ in pair.plain.open)]
        return any(key in each for each in states)

    def do_new_model(self, pair):
        if len(self.pairs) < 3:
            self.new_model()

    def do_close(self, pair):
        """Closes a model with its open transactions and listeners."""
        self.pairs.remove(pair)
        pair.model.close()
        for handle in pair.handles.values():
            assert not handle.isvalid()
        for place, *_ in pair.iterators:
            self.require_refused(place.item)
        if not self.pairs:
            self.new_model()

    def do_drop(self, pair):
        """Drops all references to a model without closing it."""
        self.pairs.remove(pair)
        if not self.pairs:
            self.new_model()


