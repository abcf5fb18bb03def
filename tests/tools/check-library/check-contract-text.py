#!/usr/bin/env python3
"""Compares the tables of docs/editor-library.md with the interfaces that they describe: the same
operations in the same slots. usage: check-contract-text.py SOURCES"""
import pathlib
import re
import sys

sources = pathlib.Path(sys.argv[1])
text = (sources / "docs/editor-library.md").read_text()
# In the order in which their tables stand in the text.
INTERFACES = {"VstIEditorConnect": 47, "VstIControllerInterface": 13}


def declared(interface):
    header = (sources / "editorlib" / f"{interface}.h").read_text()
    names = re.findall(r"^    virtual [^;]*?(\w+)\([^;]*\) = 0;", header, re.MULTILINE)
    return ["reserved" if name.startswith("reserved") else name for name in names]


def described(table):
    rows = []
    for line in table.splitlines()[2:]:
        row = re.match(r"\| (\d+) \| `?(\w+)`? \|", line)
        if not row:
            break
        if int(row[1]) != len(rows):
            sys.exit(f"slot {row[1]} stands in row {len(rows)}")
        rows.append(row[2])
    return rows


tables = text.split("| slot | operation")[1:]
for (interface, slots), table in zip(INTERFACES.items(), tables, strict=True):
    wanted, found = declared(interface), described(table)
    if len(wanted) != slots:
        sys.exit(f"{interface}.h declares {len(wanted)} operations, not {slots}")
    for slot in range(slots):
        if slot >= len(found) or found[slot] != wanted[slot]:
            sys.exit(f"{interface}: slot {slot} is {wanted[slot]}, and the text has "
                     f"{found[slot] if slot < len(found) else 'nothing'}")
    print(f"{interface}: {slots} slots as declared")
