"""The arguments that constructors of the metamodel and create methods of the factory refuse."""

import collections

import pytest

import K7Q
import _tarvelon_host
from catalog import ROOT, class_named, constructors_of, live_objects, metamodel_classes, reflection
from Tarvelon.metamodel.arplatform import Factory

MODEL, TEXT, NOTHING = "K7Q.Model", "char vector", "an empty value"
NUMBERS = ["logical scalar", "int32 scalar", "double scalar"]
ENUMERATION = f"{ROOT}.variant.BindingTimeKind"
# Each of these values is passed to every parameter that does not accept it.
KINDS = [MODEL, TEXT, *NUMBERS, NOTHING, ENUMERATION,
         f"{ROOT}.common.AdminData", f"{ROOT}.common.ModeDeclaration"]
FOREIGN = [("list", []), ("bytes", b"x")]


class Maker:
    """The constructors of a class, or the factory's methods that create it."""

    def __init__(self, name, records, cls=None):
        self.name, self.cls, self.made = name, cls, records[0]["result"]
        self.lists = [each["arguments"] for each in records]
        self.names = [each["parameterNames"] for each in records]
        self.place = name if cls else f"Factory.{name}"

    def call(self, model, values):
        return self.cls(*values) if self.cls else getattr(Factory.createNewFactory(model), self.name)(*values)

    def no_match(self, values):
        """The whole error text for arguments that no overload accepts."""
        listed = [f"\n    {self.name}({', '.join(named(*each))})" for each in zip(self.lists, self.names)]
        noun = "constructor" if self.cls else "signature"
        return (f"{self.place}: no {noun} takes ({', '.join(map(shown, values))}); there "
                f"{'is' if len(listed) == 1 else 'are'}{''.join(listed)}")


def named(arguments, names):
    """The parameters with their names, where names are published."""
    each_name = names.split(",") if names else [""] * len(arguments)
    return [f"{kind} {name.strip()}".strip() for kind, name in zip(arguments, each_name)]


def shown(value):
    """A value as a list of arguments in an error shows it."""
    plain = {type(None): NOTHING, str: TEXT, bool: NUMBERS[0], int: NUMBERS[1], float: NUMBERS[2]}
    return plain.get(type(value)) or f"{type(value).__module__}.{type(value).__name__}"


def factory_makers():
    methods = collections.defaultdict(list)
    for cls in _tarvelon_host.describe(ROOT)["classes"]:
        for each in cls["methods"] if cls["name"] == "Factory" else []:
            if each["name"].startswith("createmetamodel"):
                methods[each["name"]].append(each)
    return [Maker(name, records) for name, records in methods.items()]


CONSTRUCTORS = [Maker(each["name"], constructors_of(each), class_named(each["fullName"]))
                for each in metamodel_classes() if constructors_of(each)]
ABSTRACT = [class_named(each["fullName"]) for each in metamodel_classes() if not constructors_of(each)]
FACTORY = factory_makers()
EVERY = pytest.mark.parametrize("maker",
                                [pytest.param(each, id=each.place) for each in CONSTRUCTORS + FACTORY])


def is_class(kind):
    return "." in kind and not is_enumeration(kind)


def is_enumeration(kind):
    return "." in kind and kind != MODEL and hasattr(class_named(kind), "fromString")


def is_class_of_objects(kind):
    return kind != MODEL and is_class(kind)


def takes(parameter, kind):
    """Whether a value of that kind is accepted by that parameter, as far as its kind decides."""
    if parameter in NUMBERS:
        return kind in NUMBERS
    if kind == NOTHING:
        return "." in parameter
    if is_class(parameter) and is_class(kind):
        return issubclass(class_named(kind), class_named(parameter))
    return kind == parameter


def too_few(maker):
    """Each argument list without its last argument, unless the result is another valid list."""
    return [each[:-1] for each in maker.lists if each and each[:-1] not in maker.lists]


def overloads(maker):
    return [each[:-1] for each in maker.lists if each and each[:-1] in maker.lists]


def too_many(maker):
    longer = [[*each, more] for each in maker.lists for more in (MODEL, TEXT)]
    return [each for each in longer if each not in maker.lists]


def wrong_kinds(maker, offered=KINDS):
    return [[*each[:place], kind, *each[place + 1:]] for each in maker.lists
            for place, parameter in enumerate(each) for kind in offered if not takes(parameter, kind)]


def places(maker, is_wanted):
    return [(each, place) for each in maker.lists for place, kind in enumerate(each) if is_wanted(kind)]


@pytest.fixture(scope="module")
def model():
    with Factory.createNewModel() as made:
        yield made


@pytest.fixture(scope="module")
def other():
    with Factory.createNewModel() as made:
        yield made


def value(model, kind):
    if kind in (MODEL, NOTHING):
        return {MODEL: model, NOTHING: None}[kind]
    return reflection.Maker(model).value(kind)


def values(model, kinds):
    return [value(model, each) for each in kinds]


def refused(maker, model, arguments, error):
    """The error of such a call, which must not create an object."""
    before = live_objects()
    with pytest.raises(error) as raised:
        maker.call(model, arguments)
    assert isinstance(raised.value, K7Q.Exception)
    assert live_objects() == before
    return str(raised.value)


@EVERY
def test_the_right_arguments_make_one_object(model, maker):
    for kinds in maker.lists + overloads(maker):
        arguments = values(model, kinds)
        before = live_objects()
        made = maker.call(model, arguments)
        assert live_objects() == before + 1 and made.isvalid()


@EVERY
def test_another_number_of_arguments_is_a_type_error_that_lists_what_there_is(model, maker):
    for kinds in too_few(maker) + too_many(maker):
        arguments = values(model, kinds)
        assert refused(maker, model, arguments, K7Q.WrongType) == maker.no_match(arguments)


@EVERY
def test_a_value_of_a_wrong_kind_or_class_is_a_type_error_that_lists_what_there_is(model, maker):
    for kinds in wrong_kinds(maker):
        arguments = values(model, kinds)
        assert refused(maker, model, arguments, K7Q.WrongType) == maker.no_match(arguments)


@EVERY
def test_a_value_that_no_model_has_is_named_with_its_place(model, maker):
    for kinds, place in places(maker, lambda kind: True):
        for name, foreign in FOREIGN:
            arguments = values(model, kinds)
            arguments[place] = foreign
            text = refused(maker, model, arguments, K7Q.WrongType)
            assert text.startswith(f"{maker.place}, argument {place + 1}: expected a bool, int, float, str, "
                                   f"model object or None, got {name}; there ")
            assert f"\n    {maker.name}(" in text


@EVERY
def test_half_a_number_is_out_of_range_where_a_whole_one_is_meant(model, maker):
    for kinds, place in places(maker, lambda kind: kind == "int32 scalar"):
        arguments = values(model, kinds)
        arguments[place] = 0.5
        text = refused(maker, model, arguments, K7Q.OutOfRange)
        assert text.startswith(f"{maker.place}, argument {place + 1}: expected int32 scalar (a whole number")
        assert text.endswith(", got double scalar 0.5")


@EVERY
def test_an_object_of_another_model_is_a_value_error(model, other, maker):
    for kinds, place in places(maker, is_class_of_objects):
        arguments = values(model, kinds)
        arguments[place] = value(other, kinds[place])
        text = refused(maker, model, arguments, K7Q.WrongValue)
        assert " of the same model, got " in text
        assert text.endswith(" of another model; create the object in the same model")


@EVERY
def test_nothing_for_an_enumeration_is_a_type_error_and_for_a_model_the_null_text(model, maker):
    for kinds, place in places(maker, lambda kind: kind == MODEL or is_enumeration(kind)):
        arguments = values(model, kinds)
        arguments[place] = None
        text = refused(maker, model, arguments, K7Q.Exception)
        assert ("Cannot access NULL ref" if kinds[place] == MODEL else
                f"{maker.place}, argument {place + 1}: expected a value of the enumeration, got None") in text


def filled_by(maker, kinds, place):
    """The description of the property that an argument sets.

    The factory's parameters have the names of properties; five have the full names.
    """
    made = class_named(maker.made)
    names = next(each.names[-1] for each in FACTORY if each.made == maker.made).split(",")
    name = names[place - len(kinds)].strip().rpartition("_")[2].removeprefix("a")
    described = {each.name(): each for each in made.MetaProperty()}
    return described.get(name) or described[name[0].upper() + name[1:]]


@EVERY
def test_nothing_for_an_object_unsets_an_optional_property_and_is_refused_for_a_required_one(model, maker):
    for kinds, place in places(maker, is_class_of_objects):
        arguments = values(model, kinds)
        arguments[place] = None
        if filled_by(maker, kinds, place).lowerBound() == 1:
            text = refused(maker, model, arguments, K7Q.WrongValue)
            assert ", got nothing; give an object of that class or of a subclass" in text
        else:
            before = live_objects()
            assert maker.call(model, arguments).isvalid() and live_objects() == before + 1


@pytest.mark.parametrize("cls", [pytest.param(each, id=each.__name__) for each in ABSTRACT])
def test_an_abstract_class_says_which_classes_below_it_are_not(model, cls):
    below = {f"{each.__module__}.{each.__name__}" for each in reflection.concrete_classes()
             if issubclass(each, cls)}
    name = f"{cls.__module__}.{cls.__name__}"
    for call in (lambda: cls(model), cls, lambda: cls(model, "Name")):
        before = live_objects()
        with pytest.raises(K7Q.WrongType) as raised:
            call()
        assert live_objects() == before
        text = str(raised.value)
        start, _, listed = text.partition("; construct one of its subclasses: ")
        if not below:
            assert text == (f"class '{name}' is abstract: it has no constructor; none of its subclasses has one")
            continue
        assert start == f"class '{name}' is abstract: it has no constructor"
        shown_names, _, more = listed.partition(" and ")
        offered = shown_names.split(", ")
        assert len(set(offered)) == len(offered) == min(12, len(below)) and set(offered) <= below
        assert more == (f"{len(below) - 12} more" if len(below) > 12 else "")


@pytest.mark.parametrize("cls", [pytest.param(each, id=each.__name__) for each in ABSTRACT])
def test_the_factory_says_the_same_of_an_abstract_class(model, cls):
    factory = Factory.createNewFactory(model)
    with pytest.raises(K7Q.WrongType) as constructed:
        cls(model)
    name = f"{cls.__module__}.{cls.__name__}"
    for call in (lambda: factory.create(cls), lambda: factory.create(name.removeprefix(ROOT + "."), "Name"),
                 lambda: factory.createFromString(name), lambda: factory.createFromString(name, "Name")):
        before = live_objects()
        with pytest.raises(K7Q.WrongType) as raised:
            call()
        assert live_objects() == before
        assert str(raised.value).removeprefix("Factory.create: ") == str(constructed.value)


def test_only_one_abstract_class_has_none_below_it():
    assert [each.__name__ for each in ABSTRACT
            if not any(issubclass(one, each) for one in reflection.concrete_classes())] == \
        ["InstantiationTimingEventProps"]


LISTS = {
    "lists": lambda maker: maker.lists,
    "without the last argument another list": overloads,
    "without the last argument none": too_few,
    "one argument more": too_many,
    "an argument of a wrong kind or class": wrong_kinds,
    "places": lambda maker: places(maker, lambda kind: True),
    "places of objects": lambda maker: places(maker, is_class_of_objects),
    "places of enumerations": lambda maker: places(maker, is_enumeration),
    "places of whole numbers": lambda maker: places(maker, lambda kind: kind == "int32 scalar"),
}


@pytest.mark.parametrize("makers, counts", [
    (CONSTRUCTORS, [408, 101, 307, 743, 5158, 700, 102, 8, 3]),
    (FACTORY, [408, 101, 84, 743, 2302, 292, 102, 8, 3]),
])
def test_every_list_is_among_them(makers, counts):
    """Checks the number of overloads of each kind, so that an empty list makes the test fail."""
    assert len(makers) == 223
    found = {name: sum(len(of(each)) for each in makers) for name, of in LISTS.items()}
    assert found == dict(zip(LISTS, counts))


def test_every_abstract_class_is_among_them():
    assert len(ABSTRACT) == 61 and len(CONSTRUCTORS) + len(ABSTRACT) == 284
