#!/usr/bin/env python3
"""check_class_layout.py LIBRARY [--update]

Compares the binary layout of what the exported headers declare, as abidw reads it from the debug
information of LIBRARY, with tests/abi/class_layout.txt and fails when they differ: sizes, bases and
members of classes, slots of virtual functions, return types, values of enumerators. With --update
writes the list instead. What else a host links against is in exported_symbols.txt.
"""

import difflib
import pathlib
import subprocess
import sys
import xml.etree.ElementTree as ElementTree

RECORD = pathlib.Path(__file__).resolve().parent.parent / "tests/abi/class_layout.txt"
EXPORTED = "include/mcbinning/"
STRING = "std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> >"
SCOPES = ("namespace-decl", "class-decl", "union-decl")
SUFFIXES = {"pointer-type-def": "*", "reference-type-def": "&"}


def run(command, text=None):
    return subprocess.run(command, input=text, stdout=subprocess.PIPE, text=True, check=True).stdout


class Types:
    """The types of a corpus by name, those that the exported headers declare, and all symbols."""

    def __init__(self, corpus):
        self.named = {}
        self.elements = {}
        self.exported = []
        self.symbols = set()
        for symbol in corpus.iter("elf-symbol"):
            self.symbols.update([symbol.get("name"), *symbol.get("alias", "").split(",")])
        for unit in corpus.iter("abi-instr"):
            self._collect(unit, "")

    def _collect(self, scope, prefix):
        for element in scope:
            if element.tag == "member-type":
                self._collect(element, prefix)
                continue
            name = prefix + element.get("name", "")
            if "id" in element.attrib:
                self.elements[element.get("id")] = element
                self.named[element.get("id")] = name
                is_defined = element.get("is-declaration-only") is None
                if is_defined and EXPORTED in element.get("filepath", ""):
                    self.exported.append((name, element))
            if element.tag in SCOPES:
                self._collect(element, name + "::")

    def name(self, identifier):
        element = self.elements[identifier]
        if element.tag == "qualified-type-def":
            qualifiers = [q for q in ("const", "volatile") if element.get(q) == "yes"]
            return " ".join([self.name(element.get("type-id")), *qualifiers])
        if element.tag in SUFFIXES:
            rvalue = "&" if element.get("kind") == "rvalue" else ""
            return self.name(element.get("type-id")) + SUFFIXES[element.tag] + rvalue
        return self.named[identifier].replace(STRING, "std::string")


def describe_function(member, types):
    """The lines of one member function, none for what no host can call or override."""
    function = member.find("function-decl")
    signature = function.get("mangled-name", function.get("name"))
    slot = int(member.get("vtable-offset", "-1"))
    special = member.get("constructor") == "yes" or member.get("destructor") == "yes"
    result = "" if special else types.name(function.find("return").get("type-id")) + " "
    if slot >= 0:
        return [f"  slot {slot:3}: {result}{signature}"]
    if special or member.get("access") == "private" or signature not in types.symbols:
        return []
    return [f"  function: {result}{signature}"]


def describe_class(element, types):
    lines = {f"  size {int(element.get('size-in-bits')) // 8:4}"}
    for base in element.findall("base-class"):
        offset = int(base.get("layout-offset-in-bits")) // 8
        lines.add(f"  base {offset:4}: {types.name(base.get('type-id'))}")
    for member in element.findall("data-member"):
        if member.get("static") != "yes":
            variable = member.find("var-decl")
            declared = f"{types.name(variable.get('type-id'))} {variable.get('name')}"
            offset = int(member.get("layout-offset-in-bits")) // 8
            lines.add(f"  member {offset:3}: {declared}")
    for member in element.findall("member-function"):
        lines.update(describe_function(member, types))
    return lines


def describe_enum(element, types):
    lines = {f"  type: {types.name(element.find('underlying-type').get('type-id'))}"}
    for enumerator in element.findall("enumerator"):
        lines.add(f"  value {enumerator.get('value')}: {enumerator.get('name')}")
    return lines


def describe(corpus):
    types = Types(corpus)
    described = {}
    for name, element in types.exported:
        if element.tag == "class-decl":
            described.setdefault("class " + name, set()).update(describe_class(element, types))
        elif element.tag == "enum-decl":
            described.setdefault("enum " + name, set()).update(describe_enum(element, types))
    lines = []
    for heading in sorted(described):
        lines += [heading, *sorted(described[heading])]
    return run(["c++filt"], "\n".join(lines)).replace(STRING, "std::string").splitlines()


def main():
    library = sys.argv[1]
    lines = describe(ElementTree.fromstring(run(["abidw", "--no-corpus-path", library])))
    if not any(line.startswith("class ") for line in lines):
        sys.exit(f"layout: {library} holds no debug information")
    if "--update" in sys.argv[2:]:
        RECORD.write_text("\n".join(lines) + "\n")
        print(f"layout: wrote {len(lines)} lines")
        return
    recorded = RECORD.read_text().splitlines()
    if lines != recorded:
        difference = difflib.unified_diff(recorded, lines, RECORD.name, library, lineterm="")
        print(*difference, sep="\n")
        sys.exit(f"layout: {library} is not what {RECORD.name} says; hosts may have to be compiled\n"
                 f"again. When that is meant: {sys.argv[0]} {library} --update")
    print("layout: ok")


if __name__ == "__main__":
    main()
