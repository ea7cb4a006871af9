"""Pretty-printers of gdb for the fields and handlers of OrbelLib.

    (gdb) source .../lib/orbellib/gdb/orbel.py
    (gdb) print *field
    $1 = DataStructure "scene" of 1 = {title = DataValue "title" = "Hello"}

They read memory only and call nothing in the program, so they work on core files too.
"""

import os

import gdb
import gdb.printing

UNREADABLE = "<not readable>"
MOST_ITEMS = 1 << 24


class Unsound(Exception):
    """What is read cannot be what the library made: the object is half-made, or destroyed."""


FAULTS = (gdb.error, gdb.MemoryError, Unsound, ValueError, OverflowError, RuntimeError)


def limit():
    """How many characters or items the user wants to see."""
    return gdb.parameter("print elements") or MOST_ITEMS


def quoted(data, is_cut=False):
    text = data.decode("utf-8", "backslashreplace")
    shown = "".join(c if c.isprintable() else c.encode("unicode_escape").decode() for c in text.replace('"', '\\"'))
    return '"' + shown + '"' + ("..." if is_cut else "")


def memory(address, size):
    return gdb.selected_inferior().read_memory(address, size).tobytes()


def pointer_at(address):
    return int.from_bytes(memory(address, 8), "little")


def bytes_of(string):
    """The content of a std::string, and whether it is cut."""
    length = int(string["_M_string_length"])
    if length < 0 or length > 1 << 40:
        raise Unsound()
    shown = min(length, limit())
    return memory(int(string["_M_dataplus"]["_M_p"]), shown) if shown else b"", shown < length


def shown_string(string):
    return quoted(*bytes_of(string))


def buffer_text(buffer):
    """A name in an array of characters that a zero ends."""
    data = memory(int(buffer.address), buffer.type.sizeof)
    if b"\0" not in data:
        raise Unsound()
    return data.split(b"\0")[0]


def items_of(vector):
    """The elements of a std::vector."""
    first = vector["_M_impl"]["_M_start"]
    count = int(vector["_M_impl"]["_M_finish"] - first)
    if count < 0 or count > MOST_ITEMS or count and int(first) % 8:
        raise Unsound()
    return (first[i] for i in range(count)), count


def derives_from(type, name):
    if type.name == name:
        return True
    return any(field.is_base_class and derives_from(field.type.strip_typedefs(), name) for field in type.fields())


def whole(value):
    """The object as what it was made as."""
    try:
        actual = value.dynamic_type
        if actual.name != value.type.name and derives_from(actual, value.type.strip_typedefs().unqualified().name):
            return value.address.cast(actual.pointer()).dereference()
    except FAULTS:
        pass
    return value


def field_at(address):
    return whole(gdb.Value(address).cast(gdb.lookup_type("DataField").pointer()).dereference())


def guarded(read):
    try:
        return read()
    except FAULTS:
        return UNREADABLE


class FieldPrinter:
    """A field: its class, its name, and what is stored in it or below it."""

    def __init__(self, value):
        self.field = whole(value)
        self.kind = self.field.type.strip_typedefs().unqualified()

    def to_string(self):
        return self.kind.name + " " + guarded(lambda: quoted(buffer_text(self.field["m_name"]))) + self.content()

    def content(self):
        if derives_from(self.kind, "DataValue"):
            return " = " + guarded(self.texts)
        if derives_from(self.kind, "DataArray") or derives_from(self.kind, "DataObject"):
            return " " + self.object_type() + "of " + guarded(lambda: str(self.count()))
        if derives_from(self.kind, "DataStructure"):
            return " of " + guarded(lambda: str(self.count()))
        return ""

    def texts(self):
        # A std::unique_ptr, whose members are named in another way in each version of the standard library.
        ties = pointer_at(int(self.field["m_ties"].address))
        pointer = gdb.lookup_type("FieldTies").pointer()
        part = ties and int(gdb.Value(ties).cast(pointer).dereference()["texts"]["m_part"])
        if part == 0:
            return shown_string(self.field["m_text"])
        # The list stands behind the count of those who share it.
        type = gdb.lookup_type("OrbelTexts")
        texts, count = items_of(gdb.Value(part + 8).cast(type.pointer()).dereference())
        shown = [shown_string(text) for text, _ in zip(texts, range(limit()))]
        return "{" + ", ".join(shown) + ("..." if len(shown) < count else "") + "}"

    def object_type(self):
        def read():
            type = self.field["m_objectType"]
            return int(type) and "<" + bytes_of(type["m_name"])[0].decode("utf-8", "backslashreplace") + ">"

        name = guarded(read)
        return name + " " if name else ""

    def count(self):
        if derives_from(self.kind, "DataArray"):
            return items_of(self.field["m_elements"])[1]
        return len(self.fields())

    def children(self):
        try:
            if derives_from(self.kind, "DataHashTable"):
                return iter(self.entries())
            if derives_from(self.kind, "DataArray"):
                return iter(self.elements())
            if derives_from(self.kind, "DataStructure"):
                return iter(self.fields())
        except FAULTS:
            pass
        return iter(())

    def elements(self):
        items, _ = items_of(self.field["m_elements"])
        return (("[%d]" % i, guarded(lambda: self.child(int(item)))) for i, item in enumerate(items))

    def entries(self):
        items, _ = items_of(self.field["m_order"])
        return (("[%s]" % guarded(lambda: shown_string(item["first"])), guarded(lambda: self.child(int(item["second"]))))
                for item in items)

    def fields(self):
        """Pairs of names and fields, in the order of a dump."""
        part = self.field["m_children"]["m_part"]
        if int(part) == 0:
            return []
        entries, _ = items_of(part["m_entries"])
        listed = []
        for entry in entries:
            word = int(entry["m_word"])
            if word & 1:
                listed.append(self.renamed(word & ~1))
            elif word:
                listed.append((guarded(lambda: buffer_text(field_at(word)["m_name"])), word))
        listed.sort(key=lambda item: item[0] if isinstance(item[0], bytes) else b"")
        return [(name.decode("utf-8", "backslashreplace") if isinstance(name, bytes) else name, self.child(address))
                for name, address in listed]

    def renamed(self, address):
        """A child that has another name by now than the one it stands here under, or is destroyed."""
        hold = pointer_at(address)
        key = gdb.Value(address + 8).cast(gdb.lookup_type("OrbelText").pointer()).dereference()
        return bytes_of(key)[0], pointer_at(hold + 8) if hold else 0

    @staticmethod
    def child(address):
        if address == 0:
            return "<destroyed>"
        return guarded(lambda: field_at(address))


class HandlerPrinter:
    """A handler: its class, its name, and the field it is registered on."""

    def __init__(self, value):
        self.handler = whole(value)

    def to_string(self):
        name = guarded(lambda: quoted(self.name()))
        return self.handler.type.strip_typedefs().unqualified().name + " " + name + guarded(self.place)

    def name(self):
        # A std::unique_ptr, like the ties of a field; the name comes first in what it points to.
        buffer = pointer_at(int(self.handler["m_details"].address))
        type = gdb.lookup_type("char").array(99).pointer()
        return buffer_text(gdb.Value(buffer).cast(type).dereference()) if buffer else b""

    def place(self):
        field = int(self.handler["m_field"])
        if int(self.handler["m_place"]["m_word"]) == 0 or field == 0:
            return " on no field"
        return " on " + guarded(lambda: quoted(buffer_text(field_at(field)["m_name"])))


class OrbelPrinters(gdb.printing.PrettyPrinter):
    def __init__(self):
        super().__init__("orbellib")

    def __call__(self, value):
        type = value.type.strip_typedefs()
        if type.code in (gdb.TYPE_CODE_REF, gdb.TYPE_CODE_RVALUE_REF):
            value = value.referenced_value()
            type = value.type.strip_typedefs()
        if type.code != gdb.TYPE_CODE_STRUCT or value.address is None:
            return None
        type = type.unqualified()
        if derives_from(type, "DataField"):
            return FieldPrinter(value)
        if derives_from(type, "DataHandler"):
            return HandlerPrinter(value)
        return None


def add_types():
    """A client's debug information leaves out the classes of the library."""
    # Not __file__, which names the script that gdb found first when that reads this one.
    path = os.path.join(os.path.dirname(os.path.realpath(add_types.__code__.co_filename)), "orbel-types.o")
    if os.path.exists(path) and all(objfile.filename != path for objfile in gdb.objfiles()):
        # Far from every address of a program, none of which is named after what is in this file then.
        gdb.execute("add-symbol-file '%s' -o 0x7fff00000000000" % path, to_string=True)


gdb.printing.register_pretty_printer(None, OrbelPrinters(), replace=True)
add_types()
