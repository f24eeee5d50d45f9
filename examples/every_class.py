"""Makes one object of every class of the metamodel, and writes and reads every property that can be set.

    ./tarvelon run examples/every_class.py

The program names no class and no property of the metamodel. It uses only the model's own descriptions.
"""

import K7Q
from Tarvelon.metamodel import arplatform, foundation, types
from Tarvelon.metamodel.arplatform import Factory

TEXT = "text"
NUMBERS = {"logical scalar": True, "int32 scalar": 7, "double scalar": 0.5}


def packages():
    """The packages of the platform as modules, in the order of the root package."""
    root = arplatform.MetaPackage()
    return [getattr(arplatform, package.name()) for package in root.subPackages()]


def concrete_classes():
    """All non-abstract classes, including those of foundation and types, which have the classes of values."""
    for package in [*packages(), foundation, types]:
        for description in package.MetaPackage().classes():
            if not description.isAbstract():
                yield getattr(package, description.name())


class Maker:
    """Makes values for properties."""

    def __init__(self, model):
        self.model = model
        self.classes = list(concrete_classes())

    def concrete(self, name):
        """The first non-abstract class that is the class with that dotted name or a subclass; None if there is none."""
        package, _, short = name.rpartition(".")
        wanted = getattr(module_of(package), short)
        return next((cls for cls in self.classes if issubclass(cls, wanted)), None)

    def value(self, type_name):
        if type_name in NUMBERS:
            return NUMBERS[type_name]
        if type_name == "char vector":
            return TEXT
        package, _, short = type_name.rpartition(".")
        named = getattr(module_of(package), short)
        if hasattr(named, "fromString"):
            return list(named)[-1]
        cls = self.concrete(type_name)
        return cls(self.model) if cls else None


def module_of(package):
    module = K7Q if package == "K7Q" else foundation if package.endswith("foundation") else types
    return getattr(arplatform, package.rpartition(".")[2]) if ".arplatform." in package else module


def attribute_of(cls, description):
    """The attribute that shows a property: the same name, perhaps with a small first letter."""
    name = description.name()
    return next((each for each in (name, name[0].lower() + name[1:]) if hasattr(cls, each)), None)


def write_and_read(target, name, description, maker):
    """Sets a property, or adds to it. True if the same value is read back; None if no value can be made."""
    value = maker.value(description.type())
    if value is None:
        return None
    present = getattr(target, name)
    if hasattr(present, "append"):
        present.append(value)
        return present[-1] == value and getattr(target, name)[-1] == value
    setattr(target, name, value)
    return getattr(target, name) == value


def main():
    with Factory.createNewModel() as model:
        factory = Factory.createNewFactory(model)
        maker = Maker(model)
        made = written = 0
        left = []
        for package in packages():
            for cls in (each for each in maker.classes if each.__module__ == package.__name__):
                target = factory.create(cls)
                made += 1
                for description in cls.MetaProperty():
                    attribute = attribute_of(cls, description)
                    if attribute is None or description.isReadOnly():
                        continue
                    outcome = write_and_read(target, attribute, description, maker)
                    if outcome is None:
                        left.append(f"{cls.__name__}.{attribute}")
                    elif not outcome:
                        raise SystemExit(f"{cls.__name__}.{attribute} does not read back")
                    else:
                        written += 1
        print(f"{made} classes made, {written} properties written and read")
        print("nothing can be made for:", ", ".join(sorted(set(left))) or "none")


if __name__ == "__main__":
    main()
