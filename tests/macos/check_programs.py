#!/usr/bin/env python3
"""Compiles the simulator, the tools and the test programs for macOS in builds that configure-darwin made,
each in a folder that is named after its architecture:

check_programs.py read SOURCES BUILD COMPILED    The compiler checks the sources with all warnings and
    generates no code, which takes half the time. The plug-in's own sources are compiled with the bundle,
    and COMPILED is another build for a Mac, if there is one: what that compiles is not read again.
check_programs.py link SOURCES BUILD... Everything is compiled and linked. libc++, Apple's frameworks,
    GoogleTest, libsmf, GLib and pugixml are not here, so the linker leaves unknown symbols open. Each open
    symbol must belong to one of these libraries.
"""
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys

# Symbols as the linker sees them: with an underscore before the C name.
THEIRS = re.compile(r"""_(
    _Z(T[ISTV]|T[hv][0-9n_]*_)?N?K?(S[tabsiod]|7testing|4pugi)  # the C++ library, GoogleTest, pugixml
  | _Z(TI[a-z]$|TVN10__cxxabiv1)                                # types of the C++ run-time
  | _Z(n[aw]|d[al])                                             # operator new and delete
  | __cxa_ | __gxx_ | __dynamic_cast
  | smf_ | g_[a-z]                                              # libsmf and GLib
  | main$                                                       # GoogleTest's
  | (CF|kCF|NS|OBJC_CLASS_\$_NS|objc_|__CFConstantString)       # Core Foundation, AppKit, Objective-C
  | Audio                                                       # Core Audio's clock
  )""", re.VERBOSE)
# The other folders are the plug-in, which is compiled with the bundle.
FOLDERS = ("simulator", "tools", "tests")


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def ninja(build, *arguments):
    result = subprocess.run(["ninja", "-C", build, *arguments], stdout=subprocess.PIPE,
                            stderr=subprocess.STDOUT, text=True)
    if result.returncode:
        print(result.stdout[-20000:])
        sys.exit(f"check_programs: {build.name} does not build")


def is_program(path):
    """A Mach-O program or module, whatever its name is."""
    with open(path, "rb") as file:
        start = file.read(16)
    return start[:4] == b"\xcf\xfa\xed\xfe" and start[12:13] in (b"\x02", b"\x08")


def programs(build):
    found = [path for path in build.rglob("*")
             if path.is_file() and not path.is_symlink() and path.suffix != ".o" and is_program(path)]
    return sorted(path for path in found if path.name != "RDL3_RDL5 VST")


def open_symbols(program):
    tables = run("llvm-objdump-14", "--macho", "--bind", "--lazy-bind", "--weak-bind", program)
    return {line.split()[-1] for line in tables.splitlines() if " flat-namespace " in line}


def link(build):
    """The open symbols of no known library, each with its program."""
    ninja(build, "all", "moduleinfotool", "validator")
    wrong = []
    for program in programs(build):
        foreign = sorted(symbol for symbol in open_symbols(program) if not THEIRS.match(symbol))
        wrong += [f"{build.name}: {program.name} needs {symbol}" for symbol in foreign]
        print(f"{build.name} compiled and linked: {program.relative_to(build)}")
    return wrong


def compilation(entry):
    """The words of the command without ccache, and the file that it makes."""
    words = shlex.split(entry["command"])
    at = words.index("-o")
    return words[next(i for i, word in enumerate(words) if "clang" in word):], words[at + 1]


def in_ninja(path):
    return re.sub(r"([$: ])", r"$\1", str(path))


def together(file):
    """The sources that are compiled as one with this file, if CMake wrote it for that; else itself."""
    if file.parent.name != "Unity":
        return [file]
    return [pathlib.Path(name) for name in re.findall(r'^#include "(.*)"$', file.read_text(), re.MULTILINE)]


def commands(build):
    """CMake's compile commands; none where there is no such build."""
    file = build / "compile_commands.json"
    return json.loads(file.read_text()) if file.exists() else []


def read(build, sources, compiled):
    ninja(build, "build.ninja")  # sources that came or went
    entries = commands(build)
    known = {source for entry in commands(compiled) for source in together(pathlib.Path(entry["file"]))}
    # A ninja file of its own, so that only changed sources are read again.
    lines = ["builddir = read", "rule read",
             "  command = cd $folder && $words -MD -MF $out.d -MT $out && touch $out",
             "  depfile = $out.d", "  deps = gcc"]
    entry_of = {}
    for entry in entries:
        file = pathlib.Path(entry["file"])
        source = together(file)[0]
        own = source.is_relative_to(sources) and source.relative_to(sources).parts[0] in FOLDERS
        if known.issuperset(together(file)):
            continue
        if own or source.suffix == ".mm":  # the SDK's sources for a Mac, too
            entry_of.setdefault(file, entry)  # once, even if several programs have it
    precompiled = [compilation(entry)[1] for entry in entries if "cmake_pch" in entry["file"]]
    generated = {str(source.relative_to(build)) for file in entry_of for source in together(file)
                 if source.is_relative_to(build)}
    ninja(build, *precompiled, *sorted(generated))
    for source, entry in entry_of.items():
        words, output = compilation(entry)
        words[words.index("-c")] = "-fsyntax-only"
        del words[words.index("-o"):words.index("-o") + 2]
        lines += [f"build {in_ninja(output)}.read: read {in_ninja(source)}",
                  f"  folder = {shlex.quote(entry['directory'])}",
                  "  words = " + shlex.join(words).replace("$", "$$")]
    (build / "read.ninja").write_text("\n".join(lines) + "\n")
    ninja(build, "-f", "read.ninja", "-k", "0")
    for source in sorted({source for file in entry_of for source in together(file)}):
        print(f"{build.name} read: {os.path.relpath(source, sources)}")


def main():
    what = sys.argv[1]
    sources, *builds = (pathlib.Path(word).resolve() for word in sys.argv[2:])
    if what == "read":
        read(builds[0], sources, builds[1])
        return
    wrong = [line for build in builds for line in link(build)]
    if wrong:
        sys.exit("check_programs: symbols of no known library:\n  " + "\n  ".join(wrong))


main()
