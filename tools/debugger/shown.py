"""The texts of Tarvelon's types for debuggers. gdb_printers.py and lldb_summaries.py read the memory of the program.

A value is anything with these methods: field(name), element(index), deref(), number(), address(), memory(address, size).
"""

KINDS = ("Value", "Element", "Move", "Exchange", "Life")
# Of Instance::mState (objects/Instance.h).
PRESENCE = (1 << 48) - 1
EXTERNAL, GONE, DYING, DELETED = (1 << bit for bit in (56, 57, 58, 59))
NO_SLOT = 0xFF
HEAD = 24  # of K7Q::NSInterface::StringIntf: the characters are behind it


def name(value):
    """An interned name: its characters in quotes."""
    entry = value.field("mEntry")
    if not entry.number():
        return "''"
    entry = entry.deref()
    return repr(value.memory(entry.field("text").number(), entry.field("length").number()).decode("utf-8"))


def text(value):
    """A text of a model: its characters in double quotes, and its reference count."""
    units = value.memory(value.address() + HEAD, 2 * value.field("mLength").number())
    return f'"{units.decode("utf-16-le", "replace")}", {value.field("mReferences").number()} references'


def words_of(value):
    """The words of an object by slot."""
    state = value.field("mState").number()
    inline = value.field("mWords")
    slots = [slot for slot in range(48) if state >> slot & 1]
    first = inline.element(0).field("words").number() if state & EXTERNAL else inline.address()
    return {slot: int.from_bytes(value.memory(first + 8 * place, 8), "little") for place, slot in enumerate(slots)}


def own_name(value):
    """The characters of the object's property Name, or None."""
    slot = value.field("mClass").deref().field("nameSlot").number()
    address = words_of(value).get(slot, 0) if slot != NO_SLOT else 0
    if not address:
        return None
    length = int.from_bytes(value.memory(address + HEAD - 4, 4), "little")
    return value.memory(address + HEAD, 2 * length).decode("utf-16-le", "replace")


def instance(value):
    """An object: its class, name, number, and what has become of it."""
    class_name = name(value.field("mClass").deref().field("names").field("_M_elems").element(0)).strip("'")
    own = own_name(value)
    state = value.field("mState").number()
    marks = [word for bit, word in ((GONE, "expired"), (DYING, "being destroyed"), (DELETED, "destroyed, can be restored"))
             if state & bit]
    return " ".join([".".join(class_name.split(".")[-2:]), *([repr(own)] if own is not None else []),
                     f"(number {value.field('mNumber').number()}{''.join(', ' + mark for mark in marks)})"])


def word_list(value):
    """A list: its size and its words."""
    size = value.field("mSize").number()
    first = value.field("mWords").number() + 8 * value.field("mFirst").number()
    words = [int.from_bytes(value.memory(first + 8 * index, 8), "little") for index in range(min(size, 16))]
    return f"{size} words [{', '.join(f'{word:#x}' for word in words)}{', ...' if size > 16 else ''}]"


def step(value):
    """A step: what it changes, and both words."""
    kind = KINDS[value.field("kind").number()]
    place = instance(value.field("object").deref())
    if kind == "Life":
        return f"{'create' if value.field('hasAfter').number() else 'destroy'} {place}"
    before, after = (f"{value.field(side).field('bits').number():#x}" if value.field(has).number() else "nothing"
                     for side, has in (("before", "hasBefore"), ("after", "hasAfter")))
    index = "" if kind == "Value" else f"[{value.field('index').number()}]"
    return f"{kind} {place}, slot {value.field('slot').number()}{index}: {before} -> {after}"


NATIVE = "Tarvelon::metamodel::native::"
# The regular expression of a type's name, and the function that shows its values.
TYPES = {
    r"^ruvo::RVOInternedBase<.*>$": name,
    r"^K7Q::NSInterface::StringIntf$": text,
    rf"^{NATIVE}Instance$": instance,
    rf"^{NATIVE}WordList$": word_list,
    rf"^{NATIVE}Step$": step,
}
