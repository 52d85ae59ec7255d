#!/usr/bin/env python3
"""Makes a reference page of every public header from Doxygen's XML.

usage: headers.py XML-FOLDER PAGES-FOLDER

Fails, naming file and line, if something public is undocumented. One comment may describe members of the same name that
follow each other, such as a getter and its setter. What overrides a documented function needs no comment of its own,
nor do defaulted and deleted functions.
"""

import re
import sys
from dataclasses import dataclass, field
from pathlib import Path
from xml.etree import ElementTree

from pages import escaped, first_sentence, paragraph, table, write_page

PUBLIC_SECTIONS = ("public-", "user-defined")


@dataclass
class Member:
    """A function, variable, type alias or enumeration."""

    kind: str
    name: str
    declaration: str
    description: str
    file: str
    line: int
    needs_description: bool
    values: list[tuple[str, str, str]] = field(default_factory=list)  # of an enumeration: name, value, description


@dataclass
class Compound:
    """A class or structure with its public members, or what a header declares in a namespace."""

    kind: str
    name: str
    bases: list[str]
    description: str
    file: str
    line: int
    members: list[Member]
    prefix: str = ""  # of a template: its parameters


def plain(element: ElementTree.Element | None) -> str:
    """Returns the text of an element and its descendants."""
    return "" if element is None else " ".join("".join(element.itertext()).split())


class Reader:
    """Reads Doxygen's XML. Remembers which names have a heading of their own, for links."""

    def __init__(self, folder: Path) -> None:
        self.roots = [ElementTree.parse(file).getroot() for file in sorted(folder.glob("*.xml"))]
        self.definitions = [found for root in self.roots for found in root.findall("compounddef")]
        self.pages: dict[str, str] = {}
        for definition in self.definitions:
            if definition.get("kind") in ("class", "struct"):
                self.learn(definition, short_name(plain(definition.find("compoundname"))))
            for member in definition.iter("memberdef"):
                if member.get("kind") == "enum" and member.get("prot") == "public":
                    self.learn(member, plain(member.find("name")))

    def learn(self, element: ElementTree.Element, name: str) -> None:
        self.pages[name] = f"{Path(element.find('location').get('file')).stem}.md#{anchor(name)}"

    def markdown(self, element: ElementTree.Element | None) -> str:
        """Returns a description. A name in it that has a heading is a link."""
        if element is None:
            return ""
        parts = [escaped(element.text or "")]
        for child in element:
            if child.tag == "computeroutput":
                code = plain(child)
                parts.append(f"[`{code}`]({self.pages[code]})" if code in self.pages else f"`{code}`")
            else:
                parts.append(self.markdown(child))
            if child.tag == "para":
                parts.append(" ")
            parts.append(escaped(child.tail or ""))
        return "".join(parts)

    def description(self, element: ElementTree.Element) -> str:
        texts = [self.markdown(element.find(name)) for name in ("briefdescription", "detaileddescription")]
        return " ".join(" ".join(texts).split())

    def member(self, element: ElementTree.Element) -> Member:
        location = element.find("location")
        arguments = plain(element.find("argsstring"))
        values = [
            (plain(value.find("name")), plain(value.find("initializer")).removeprefix("= "), self.description(value))
            for value in element.findall("enumvalue")
        ]
        is_given = arguments.endswith(("=default", "=delete"))
        return Member(
            kind=element.get("kind"),
            name=plain(element.find("name")),
            declaration=declaration(element),
            description=self.description(element),
            file=location.get("file"),
            line=int(location.get("line")),
            needs_description=not is_given and element.find("reimplements") is None,
            values=values,
        )

    def compound(self, element: ElementTree.Element) -> Compound:
        location = element.find("location")
        members = [
            self.member(member)
            for section in element.findall("sectiondef")
            if section.get("kind").startswith(PUBLIC_SECTIONS)
            for member in section.findall("memberdef")
            if member.get("prot") == "public" and member.get("kind") != "friend"
        ]
        members.sort(key=lambda member: member.line)
        return Compound(
            kind=element.get("kind"),
            name=short_name(plain(element.find("compoundname"))),
            bases=[short_name(plain(base)) for base in element.findall("basecompoundref")
                   if base.get("prot") == "public"],
            description=self.description(element),
            file=location.get("file"),
            line=int(location.get("line")),
            members=members,
            prefix=template_prefix(element),
        )

    def compounds(self) -> list[Compound]:
        return [self.compound(found) for found in self.definitions
                if found.get("kind") in ("class", "struct") and found.get("prot") == "public"]

    def namespace_members(self) -> list[tuple[str, Member]]:
        """Returns what is declared in namespaces, with the name of the namespace below krnqb."""
        return [(short_name(plain(found.find("compoundname"))), self.member(member))
                for found in self.definitions if found.get("kind") == "namespace"
                for member in found.iter("memberdef")]


def short_name(name: str) -> str:
    return re.sub(r"^krnqb(::|$)", "", name)


def anchor(heading: str) -> str:
    """Returns the anchor that Markdown gives a heading."""
    return re.sub(r"[^\w -]", "", heading.lower()).replace(" ", "-")


def tidy(code: str) -> str:
    """Returns a declaration spelled as in the headers."""
    code = re.sub(r"(\w|>) ([&*]+)\s*(?=[\w.]|$)", r"\1\2 ", code)
    code = re.sub(r"(\w|>) ([&*]+)(?=[,)>])", r"\1\2", code)
    code = code.replace("< ", "<").replace(" >", ">").replace("krnqb::", "")
    code = re.sub(r"\s*(?<![<>=!])=(?!=)\s*", " = ", code)
    return re.sub(r"\s+", " ", code).strip()


def template_prefix(element: ElementTree.Element) -> str:
    if element.find("templateparamlist") is None:
        return ""
    parameters = [plain(parameter) for parameter in element.findall("templateparamlist/param")]
    return f"template <{', '.join(parameters)}> "


def declaration(element: ElementTree.Element) -> str:
    kind = element.get("kind")
    type_text = plain(element.find("type"))
    name = plain(element.find("name"))
    if kind == "typedef":
        return tidy(f"using {name} = {type_text}") + ";"
    if kind == "enum":
        return f"enum {'class ' if element.get('strong') == 'yes' else ''}{name}"
    words = [template_prefix(element)]
    if element.get("static") == "yes":
        words.append("static")
    if element.get("virt") in ("virtual", "pure-virtual") and element.find("reimplements") is None:
        words.append("virtual")
    if element.get("explicit") == "yes":
        words.append("explicit")
    text = " ".join([*words, type_text, name]) + plain(element.find("argsstring"))
    initializer = plain(element.find("initializer"))
    if kind == "variable" and initializer:
        text += " " + initializer
    return tidy(text) + ";"


def undocumented(reader: Reader) -> list[str]:
    """Returns a line for everything public without a description."""
    complaints = []

    def need(description: str, file: str, line: int, what: str) -> None:
        if not description:
            complaints.append(f"include/{file}:{line}: {what} is undocumented")

    def check(members: list[Member]) -> None:
        previous = None
        for member in members:
            is_described_above = previous is not None and previous.name == member.name and previous.description
            if member.needs_description and not is_described_above:
                need(member.description, member.file, member.line, member.name)
            for name, _, description in member.values:
                need(description, member.file, member.line, f"{member.name}::{name}")
            if member.description or not is_described_above:
                previous = member

    for compound in reader.compounds():
        need(compound.description, compound.file, compound.line, compound.name)
        check(compound.members)
    by_file: dict[str, list[Member]] = {}
    for _, member in reader.namespace_members():
        by_file.setdefault(member.file, []).append(member)
    for members in by_file.values():
        check(sorted(members, key=lambda member: member.line))
    return complaints


def cell(description: str) -> str:
    """Returns a description for a table: one that is a mere phrase has no period."""
    return description.removesuffix(".") if description.count(". ") == 0 else description


def enumeration_parts(member: Member) -> list[str]:
    has_numbers = any(value for _, value, _ in member.values)
    headings = ["Name", "Number", "Meaning"] if has_numbers else ["Name", "Meaning"]
    rows = [[f"`{name}`", *([value] if has_numbers else []), cell(description)]
            for name, value, description in member.values]
    return [f"## {member.name}", f"`{member.declaration}`", paragraph(member.description), table(headings, rows)]


def fields_part(members: list[Member]) -> str:
    rows = [[f"`{member.declaration.removesuffix(';')}`", cell(member.description)] for member in members]
    return table(["Member", "Meaning"], rows)


def function_parts(members: list[Member], level: str = "###") -> list[str]:
    """Returns the functions; those of the same name that follow each other have one heading."""
    parts = []
    previous = ""
    declarations: list[str] = []
    description = ""

    def close() -> None:
        if declarations:
            parts.append("```cpp\n" + "\n".join(declarations) + "\n```")
            parts.append(paragraph(description))
            declarations.clear()

    for member in members:
        if not member.description and not member.needs_description:
            continue
        if member.name != previous:
            close()
            parts.append(f"{level} {member.name}")
        elif member.description:
            close()
        if member.description:
            description = member.description
        declarations.append(member.declaration)
        previous = member.name
    close()
    return parts


def compound_parts(compound: Compound) -> list[str]:
    bases = f" : {', '.join(compound.bases)}" if compound.bases else ""
    parts = [f"## {compound.name}", f"`{compound.prefix}{compound.kind} {compound.name}{bases}`",
             paragraph(compound.description)]
    fields = [member for member in compound.members if member.kind in ("variable", "typedef")]
    if fields:
        parts.append(fields_part(fields))
    return parts + function_parts([member for member in compound.members if member.kind == "function"])


def header_parts(file: str, reader: Reader) -> list[str]:
    """Returns the page of a header: its declarations in order."""
    placed: list[tuple[int, list[str]]] = []
    for compound in reader.compounds():
        if compound.file == file:
            placed.append((compound.line, compound_parts(compound)))
    loose: dict[str, list[Member]] = {}
    for namespace, member in reader.namespace_members():
        if member.file != file:
            continue
        if member.kind == "enum":
            placed.append((member.line, enumeration_parts(member)))
        elif member.kind == "function":
            placed.append((member.line, function_parts([member], "##")))
        else:
            loose.setdefault(namespace, []).append(member)
    for namespace, members in loose.items():
        heading = f"## Constants of `{namespace}`" if namespace else "## Types"
        placed.append((members[0].line, [heading, fields_part(members)]))
    placed.sort(key=lambda part: part[0])
    parts = [f"# {file}",
             f"`#include <{file}>`, [the header](../../include/{file}). All names are in namespace `krnqb`."]
    for _, lines in placed:
        parts += lines
    return parts


def index_rows(files: list[str], reader: Reader) -> list[list[str]]:
    rows = []
    for file in files:
        named = [(compound.line, compound.name, compound.description) for compound in reader.compounds()
                 if compound.file == file and "::" not in compound.name]
        named += [(member.line, member.name, member.description) for _, member in reader.namespace_members()
                  if member.file == file and member.kind == "enum"]
        page = f"{Path(file).stem}.md"
        for _, name, description in sorted(named):
            rows.append([f"[`{name}`]({page}#{anchor(name)})", f"[{file}]({page})", first_sentence(description)])
    return rows


def main() -> int:
    source, folder = Path(sys.argv[1]), Path(sys.argv[2])
    reader = Reader(source)
    complaints = undocumented(reader)
    if complaints:
        print("\n".join(sorted(complaints)), file=sys.stderr)
        return 1
    files = sorted({compound.file for compound in reader.compounds()}
                   | {member.file for _, member in reader.namespace_members()})
    for file in files:
        write_page(folder, f"{Path(file).stem}.md", f"include/{file}", header_parts(file, reader))
    rows = index_rows(files, reader)
    write_page(folder, "README.md", "include/krnqb and idl", [
        "# Reference",
        paragraph("Automation hosts: [the members of the automation interface](automation.md), and their descriptions "
                  "in C++, which are more detailed: [`QBDataExchange`](qb_data_exchange.md). How to use them: "
                  "[the guide for hosts](../host-guide.md)."),
        table(["Type", "Header", "What it is"], rows),
    ])
    return 0


if __name__ == "__main__":
    sys.exit(main())
