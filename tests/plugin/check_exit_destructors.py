#!/usr/bin/env python3
"""Names what a module has destroyed at exit, and fails for what is not listed here.

usage: check_exit_destructors.py MODULE...

A host may end its plug-ins in a static destructor of its own, when exit has destroyed the statics of
every module that was loaded later. So nothing that an end or a late tick uses may be among these.
Reads the x86-64 code that registers a destructor: its arguments are the destructor and the object.
"""
import re
import subprocess
import sys

# Objects of the interface and class IDs' type are many; this destructor does nothing.
NOTHING_DONE = "Steinberg::FUID::~FUID()"
# What else may be destroyed, and why that does no harm.
CONVERSION = "the SDK's conversion of texts, which no end and no tick asks for"
HARMLESS = {
    "Steinberg::(anonymous namespace)::LinuxPlatformTimer::runLoop":
        "a timer that runs holds a reference of its own",
    "Steinberg::Singleton::deleter": "nothing in the module is such a singleton",
    "Steinberg::(anonymous namespace)::converter()::instance": CONVERSION,
    "converter()::gConverter": CONVERSION,
    "converterFacet()::gFacet": CONVERSION,
    "Steinberg::Vst::platform::TimerPlatformFactory::getGraphicsDeviceFactory() const::none":
        "has no data, and nobody draws",
    "VSTGUI::gPlatformFactory": "only a timer that starts asks for it",
}
CALL = re.compile(r"\t(?:call|jmp)\s.*<__cxa_atexit@plt>")
LOAD = re.compile(r"\tlea\s.*\(%rip\),%(\w+)\s+# [0-9a-f]+ <(.*)>")
COPY = re.compile(r"\tmov\s+%(\w+),%(\w+)$")


def registered(module):
    """(destructor, object) of every registration."""
    code = subprocess.run(["objdump", "-d", "-C", "--no-show-raw-insn", module], check=True,
                          capture_output=True, text=True).stdout
    held = {}
    for line in code.splitlines():
        if load := LOAD.search(line):
            held[load[1]] = load[2]
        elif copy := COPY.search(line):
            held[copy[2]] = held.get(copy[1], "?")
        elif CALL.search(line):
            yield held.get("rdi", "?"), held.get("rsi", "?")
        elif line.endswith(">:"):
            held = {}


def main():
    found = {pair for module in sys.argv[1:] for pair in registered(module)}
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
        sys.exit(f"{unknown} not listed" if unknown else "found no registration: reads another code")


if __name__ == "__main__":
    main()
