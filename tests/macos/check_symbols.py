#!/usr/bin/env python3
"""Checks that a module to be handed out is stripped, and that a crash in it can be read.

check_symbols.py MODULE SYMBOLS: the binary of the bundle, and the file that its symbols were put
into. Looks up an address in the middle of a function that is not exported, as one does with a crash report.
"""
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

FUNCTION = "Steinberg::Vst::VstK2x::process(Steinberg::Vst::ProcessData&)"
FILE = "processor/VstK2x.cpp"
# The Linux module, in bytes.
LARGEST = 330 * 1024


def tool(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def expect(condition, text):
    if not condition:
        sys.exit(f"check_symbols: {text}")


def address_in(symbols, nm, name):
    """An address in the middle of the function."""
    listed = sorted((int(line.split()[0], 16), line.split(maxsplit=2)[2])
                    for line in tool(nm, "-C", "--defined-only", symbols).splitlines())
    starts = [start for start, found in listed if found == name]
    expect(starts, f"the symbols do not name {name}")
    following = min(start for start, _ in listed if start > starts[0])
    return (starts[0] + following) // 2


def expect_place(what, place):
    """place: what a tool prints for an address in the function."""
    expect(FUNCTION in place and re.search(re.escape(FILE) + r":\d+", place),
           f"{what} prints for an address in {FUNCTION}:\n{place}")


def check_linux(module, symbols):
    sections = tool("readelf", "--sections", "--wide", module)
    for section in (".symtab", ".strtab", ".debug_"):
        expect(section not in sections, f"the module still has {section}")
    size = module.stat().st_size
    print(f"{size:,} bytes, symbols {symbols.stat().st_size:,} bytes")
    expect(size <= LARGEST, f"the module has {size:,} bytes, more than {LARGEST:,}")

    identity = [re.search(r"Build ID: (\w+)", tool("readelf", "--notes", file))
                for file in (module, symbols)]
    expect(all(identity) and identity[0][1] == identity[1][1], "the build IDs differ")

    address = hex(address_in(symbols, "nm", FUNCTION))
    look_up = ("addr2line", "--functions", "--inlines", "--demangle", "--exe")
    expect_place("the symbols file", tool(*look_up, symbols, address))
    with tempfile.TemporaryDirectory() as folder:
        shutil.copy(module, folder)
        beside = pathlib.Path(folder) / module.name
        expect(FILE not in tool(*look_up, beside, address), "the module itself has line numbers")
        shutil.copy(symbols, folder)
        expect_place("a module with its symbols beside it", tool(*look_up, beside, address))


def check_mac(module, symbols):
    listed = tool("llvm-nm-14", "--debug-syms", module).splitlines()
    local = [line for line in listed if re.search(r"^[0-9a-f]+ [a-z-] ", line)]
    expect(not local, "the module still has local symbols:\n" + "\n".join(local[:5]))

    identity = [re.search(r"UUID: (\S+)", tool("llvm-dwarfdump-14", "--uuid", file))
                for file in (module, symbols)]
    expect(all(identity) and identity[0][1] == identity[1][1], "the UUIDs differ")

    address = hex(address_in(symbols, "llvm-nm-14", FUNCTION))
    expect_place("the .dSYM", tool("llvm-symbolizer-14", "--inlines", f"--obj={symbols}", address))
    print(f"{module.stat().st_size:,} bytes, symbols {symbols.stat().st_size:,} bytes")


def main():
    module, symbols = (pathlib.Path(name) for name in sys.argv[1:])
    expect(symbols.is_file(), f"there are no symbols in {symbols}")
    is_linux = module.read_bytes().startswith(b"\x7fELF")
    (check_linux if is_linux else check_mac)(module, symbols)


if __name__ == "__main__":
    main()
