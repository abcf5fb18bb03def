#!/usr/bin/env python3
"""Lists the objects that a module destroys at exit, and fails for one that is not allowed here.

usage: check_exit_destructors.py (MODULE SYMBOLS)...
       SYMBOLS is the file that has the module's symbols: of one that is not stripped the module itself

A host may end its plug-ins in a static destructor of its own. By then exit has destroyed the statics of
every module that was loaded later, so terminate and a late tick must not use any of them.
Reads the x86-64 code that registers a destructor: its arguments are the destructor and the object.
"""
import re
import subprocess
import sys

# There are many interface and class IDs. Their destructor does nothing.
NOTHING_DONE = "Steinberg::FUID::~FUID()"
# What else may be destroyed, and why.
CONVERSION = "the SDK's conversion of texts, which neither terminate nor a tick uses"
HARMLESS = {
    "Steinberg::(anonymous namespace)::LinuxPlatformTimer::runLoop":
        "a running timer has its own reference",
    "Steinberg::Singleton::deleter": "nothing in the module is such a singleton",
    "Steinberg::(anonymous namespace)::converter()::instance": CONVERSION,
    "converter()::gConverter": CONVERSION,
    "converterFacet()::gFacet": CONVERSION,
    "Steinberg::Vst::platform::TimerPlatformFactory::getGraphicsDeviceFactory() const::none":
        "has no data, and nothing is drawn",
    "VSTGUI::gPlatformFactory": "used only when a timer starts",
}
CALL = re.compile(r"\t(?:call|jmp)\s.*<__cxa_atexit@plt>")
LOAD = re.compile(r"\tlea\s.*\(%rip\),%(\w+)\s+# ([0-9a-f]+) <")
COPY = re.compile(r"\tmov\s+%(\w+),%(\w+)$")


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def names_by_address(symbols):
    lines = (line.split(" ", 2) for line in output_of("nm", "-C", "--defined-only", symbols).splitlines())
    return {int(address, 16): name for address, _, name in lines}


def registered(module, symbols):
    """(destructor, object) of every registration."""
    names = names_by_address(symbols)
    held = {}
    for line in output_of("objdump", "-d", "-C", "--no-show-raw-insn", module).splitlines():
        if load := LOAD.search(line):
            held[load[1]] = names.get(int(load[2], 16), load[2])
        elif copy := COPY.search(line):
            held[copy[2]] = held.get(copy[1], "?")
        elif CALL.search(line):
            yield held.get("rdi", "?"), held.get("rsi", "?")
        elif line.endswith(">:"):
            held = {}


def main():
    modules = zip(sys.argv[1::2], sys.argv[2::2])
    found = {pair for module, symbols in modules for pair in registered(module, symbols)}
    ids = sum(destructor == NOTHING_DONE for destructor, _ in found)
    print(f"{ids} IDs")
    unknown = 0
    for destructor, name in sorted(found):
        if destructor == NOTHING_DONE:
            continue
        why = HARMLESS.get(name)
        unknown += why is None
        print(f"{name}: {why or f'NOT LISTED, destroyed by {destructor}'}")
    if unknown or not ids:
        sys.exit(f"{unknown} not listed" if unknown else "found no registration: is this x86-64 code?")


if __name__ == "__main__":
    main()
