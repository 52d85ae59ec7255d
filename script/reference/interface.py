#!/usr/bin/env python3
"""Makes the reference page of the automation interface from its IDL, in the notation of Visual Basic.

usage: interface.py IDL-FILE PAGES-FOLDER

Fails, naming the line, if an interface or a member has no helpstring, or the name of an enumeration no comment behind
it.
"""

import re
import sys
from dataclasses import dataclass, field
from pathlib import Path

from pages import escaped, paragraph, table, write_page

TYPES = {
    "VARIANT_BOOL": "Boolean",
    "short": "Integer",
    "long": "Long",
    "double": "Double",
    "BSTR": "String",
    "VARIANT": "Variant",
    "IDispatch*": "Object",
    "IUnknown*": "Unknown",
}

# Interfaces by the name under which hosts know them.
HEADINGS = {
    "_QBDataExchange": "QBDataExchange",
    "__QBDataExchange": "Events of QBDataExchange",
    "_cSubtotals": "cSubtotals",
    "_QBCollection": "Collections",
}


@dataclass
class Member:
    name: str
    number: str
    notation: str
    help: str


@dataclass
class Interface:
    name: str
    help: str
    identifier: str
    members: list[Member] = field(default_factory=list)


class Idl:
    """The parsed text. Complaints name what is undocumented."""

    def __init__(self, file: Path) -> None:
        self.file = file
        self.text = file.read_text(encoding="utf-8")
        self.complaints: list[str] = []

    def complain(self, position: int, what: str) -> None:
        line = self.text.count("\n", 0, position) + 1
        self.complaints.append(f"idl/{self.file.name}:{line}: {what} is undocumented")

    def help(self, attributes: str, position: int, what: str) -> str:
        found = re.search(r'helpstring\("([^"]*)"\)', attributes)
        if not found or not found[1]:
            self.complain(position, what)
        return found[1] if found else ""

    def enumerations(self) -> list[tuple[str, str, list[list[str]]]]:
        result = []
        for found in re.finditer(r"typedef\s*\[(.*?)\]\s*enum (\w+) \{(.*?)\}", self.text, re.S):
            rows = []
            for value in re.finditer(r"(\w+) = (\d+),?[ ]*(?://[ ]*(.*))?", found[3]):
                if not value[3]:
                    self.complain(found.start(3) + value.start(), value[1])
                rows.append([f"`{value[1]}`", value[2], escaped(value[3] or "")])
            result.append((found[2], self.help(found[1], found.start(2), found[2]), rows))
        return result

    def interfaces(self) -> list[Interface]:
        result = []
        pattern = r"\[([^\[\]]*)\]\s*(?:disp)?interface (\w+)(?: : IDispatch)? \{(.*?)\n  \};"
        for found in re.finditer(pattern, self.text, re.S):
            interface = Interface(found[2], self.help(found[1], found.start(2), found[2]), identifier(found[1]))
            previous: dict[str, Member] = {}
            for member in re.finditer(r"\[(id\(.*?\).*?)\]\s*(HRESULT|void) (\w+)\((.*?)\);", found[3], re.S):
                self.add(interface, previous, member, found.start(3) + member.start())
            result.append(interface)
        return result

    def add(self, interface: Interface, previous: dict[str, Member], found: re.Match, position: int) -> None:
        attributes, name, arguments = found[1], found[3], found[4]
        help_text = self.help(attributes, position, name)
        number = re.match(r"id\((-?\d+)\)", attributes)[1]
        if name in previous:
            previous[name].notation += ", Set" if "propputref" in attributes else ", Let"
            return
        member = Member(name, number, notation(name, attributes, arguments), help_text)
        previous[name] = member
        interface.members.append(member)

    def classes(self) -> list[list[str]]:
        rows = []
        for found in re.finditer(r"\[([^\[\]]*)\]\s*coclass (\w+) \{", self.text):
            program = "" if "noncreatable" in found[1] else f"`KRN6_QB2002.{found[2]}`"
            rows.append([f"`{found[2]}`", program, f"`{identifier(found[1])}`",
                         escaped(self.help(found[1], found.start(2), found[2]))])
        return rows


def identifier(attributes: str) -> str:
    return "{" + re.search(r"uuid\(([-\w]+)\)", attributes)[1] + "}"


def type_name(text: str) -> str:
    text = text.replace(" ", "")
    return TYPES.get(text) or TYPES.get(text.removesuffix("*")) or text.removesuffix("*")


def notation(name: str, attributes: str, arguments: str) -> str:
    """Returns a member as Visual Basic declares it."""
    parameters = []
    result = ""
    for found in re.finditer(r"\[([^\[\]]*)\] (\w+\**) (\w+)", arguments):
        kind, type_text, parameter = found[1], found[2].strip(), found[3]
        if "retval" in kind:
            result = type_name(type_text.removesuffix("*"))
            continue
        default = re.search(r'defaultvalue\(("[^"]*"|\w+)\)', kind)
        text = "ByRef " if "out" in kind else ""
        text += f"{parameter} As {type_name(type_text)}" + (f" = {default[1]}" if default else "")
        parameters.append(f"[{text}]" if "optional" in kind else text)
    listed = ", ".join(parameters)
    if "propget" in attributes:
        return f"Property {name}{f'({listed})' if listed else ''} As {result}: Get"
    return f"Function {name}({listed}) As {result}" if result else f"Sub {name}({listed})"


def main() -> int:
    idl, folder = Idl(Path(sys.argv[1])), Path(sys.argv[2])
    enumerations, interfaces, classes = idl.enumerations(), idl.interfaces(), idl.classes()
    if idl.complaints:
        print("\n".join(idl.complaints), file=sys.stderr)
        return 1
    library = re.search(r"\[([^\[\]]*)\]\s*library (\w+)", idl.text)
    version = re.search(r"version\(([\d.]+)\)", library[1])[1]
    parts = [
        "# Automation interface",
        paragraph(f"The type library `{library[2]}` {version}, `{identifier(library[1])}`, is in `KRN6_QB2002.dll`. "
                  "Members of the same name in C++ are described in more detail: "
                  "[`QBDataExchange`](qb_data_exchange.md), [`cSubtotals`](subtotals.md). How to use them: [the guide for hosts](../host-guide.md)."),
        "## Classes",
        table(["Class", "Program identifier", "Class identifier", "What it does"], classes),
    ]
    for interface in interfaces:
        if not interface.members:
            continue
        rows = [[member.number, f"`{member.notation}`", escaped(member.help)] for member in interface.members]
        parts += [f"## {HEADINGS[interface.name]}",
                  paragraph(f"{escaped(interface.help)}. Interface `{interface.name}`, `{interface.identifier}`."),
                  table(["Id", "Member", "What it is"], rows)]
    parts.append("## Enumerations")
    for name, help_text, rows in enumerations:
        parts += [f"### {name}", paragraph(escaped(help_text) + "."), table(["Name", "Number", "Meaning"], rows)]
    write_page(folder, "automation.md", "idl/krn6_qb2002.idl", parts)
    return 0


if __name__ == "__main__":
    sys.exit(main())
