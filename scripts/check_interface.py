#!/usr/bin/env python3
"""check_interface.py LIBRARY [--symbols] [--update]

Compares what LIBRARY exports with tests/abi/interface.txt and fails when they differ: for each class
of the exported headers its size, bases and members, the slots of its virtual functions, its other
functions with what they return, and the symbols that a host links against besides; for each
enumeration its values. Sizes, slots and the like are read by abidw from the debug information that
g++ makes; with --symbols only the symbols are compared, which any build has. Of a Windows
library, a .dll, the symbols alone are compared, with tests/abi/windows_symbols.txt. With --update
writes the file instead.
"""

import difflib
import pathlib
import re
import subprocess
import sys
import xml.etree.ElementTree as ElementTree

RECORD = pathlib.Path(__file__).resolve().parent.parent / "tests/abi/interface.txt"
WINDOWS_RECORD = RECORD.with_name("windows_symbols.txt")
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
    if special or (slot < 0 and signature not in types.symbols):
        return []  # a constructor has several symbols, which are listed as such
    result = types.name(function.find("return").get("type-id"))
    pure = "" if signature in types.symbols else " = 0"
    return [f"  slot {slot:3}: {result} {signature}{pure}" if slot >= 0
            else f"  function: {result} {signature}"]


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


def exported_symbols(library):
    listed = run(["nm", "-D", "--defined-only", "--format=posix", library])
    return readable(sorted({line.split()[0] for line in listed.splitlines()}))


def windows_symbols(library):
    listed = run(["x86_64-w64-mingw32-objdump", "-p", library])
    table = listed.split("[Ordinal/Name Pointer] Table")[1].split("\n\n")[0]
    return readable(sorted(re.findall(r"\] (_\w+)$", table, re.MULTILINE)))


def readable(lines):
    """Demangled; the names of one function become one."""
    return run(["c++filt"], "\n".join(lines)).replace(STRING, "std::string").splitlines()


def missing_symbols(lines, symbols):
    """The symbols that no line ends with."""
    ends = {line.strip() for line in lines}
    return sorted({symbol for symbol in symbols
                   if not any(end.endswith(f" {symbol}") for end in ends)})


def describe(library):
    types = Types(ElementTree.fromstring(run(["abidw", "--no-corpus-path", library])))
    described = {}
    for name, element in types.exported:
        if element.tag == "class-decl":
            described.setdefault("class " + name, set()).update(describe_class(element, types))
        elif element.tag == "enum-decl":
            described.setdefault("enum " + name, set()).update(describe_enum(element, types))
    lines = []
    for heading in sorted(described):
        lines += [heading, *sorted(described[heading])]
    if not described:
        sys.exit(f"interface: {library} holds no debug information")
    lines = readable(lines)
    others = missing_symbols(lines, exported_symbols(library))
    return lines + ["other symbols"] + [f"  symbol: {symbol}" for symbol in others]


def compare_symbols(library, recorded):
    symbols = exported_symbols(library)
    found = [f"not exported: {line.strip()}" for line in recorded
             if re.match(r"  (slot|function|symbol).*[^0]$", line)
             and not any(line.endswith(f" {symbol}") for symbol in symbols)]
    return found + [f"not listed: {symbol}" for symbol in missing_symbols(recorded, symbols)]


def main():
    library, options = sys.argv[1], sys.argv[2:]
    is_windows = library.endswith(".dll")
    record, read = (WINDOWS_RECORD, windows_symbols) if is_windows else (RECORD, describe)
    if "--update" in options:
        lines = read(library)
        record.write_text("\n".join(lines) + "\n")
        print(f"interface: wrote {len(lines)} lines")
        return
    recorded = record.read_text().splitlines()
    if "--symbols" in options and not is_windows:
        difference = compare_symbols(library, recorded)
    else:
        difference = list(difflib.unified_diff(recorded, read(library), record.name, library,
                                               lineterm=""))
    if difference:
        print(*difference, sep="\n")
        sys.exit(f"interface: {library} is not what {record.name} says; hosts may have to be "
                 f"compiled\nagain. When that is meant: {sys.argv[0]} {library} --update")
    print("interface: ok")


if __name__ == "__main__":
    main()
