#!/usr/bin/env python3
"""Checks make-image with a Mach-O file that it knows, and that it refuses files that it does not know:
check_image.py LOADER, the folder of make-image.

A small bundle is compiled and linked for macOS, then made a part of a Linux program and run. Then single
bytes of it are changed. The tests that run the plug-in's code show that the frames for arm64 are right.
"""
import pathlib
import struct
import subprocess
import sys
import tempfile

LOADER = pathlib.Path(sys.argv[1]).resolve()
ROOT = LOADER.parents[2]
IMPORTS = ("_offeredText", "_throwSeven", "__ZTIi", "___gxx_personality_v0", "___cxa_begin_catch",
           "___cxa_end_catch", "__Unwind_Resume", "dyld_stub_binder")
X86_64, ARM64 = 0x01000007, 0x0100000C
SAYS = "initialisers 12, constants 5 text, beyond , beyond, variables 1 text, beyond, caught 31\n"


def run(*command, expected=0):
    done = subprocess.run(command, capture_output=True, text=True, check=False)
    assert expected is None or done.returncode == expected, f"{command}:\n{done.stderr}"
    return done


def compile_bundle(folder, arch):
    """The bytes of a bundle for one processor."""
    made = folder / arch
    run("clang++-14", f"--target={arch}-apple-macos11", "-std=c++17", "-O1", "-c",
        LOADER / "tests/Made.cpp", "-o", f"{made}.o")
    run("ld64.lld-14", "-bundle", "-arch", arch, "-platform_version", "macos", "11.0", "11.0",
        "-undefined", "dynamic_lookup", "-no_data_in_code_info", f"{made}.o", "-o", made)
    return bytearray(made.read_bytes())


def universal(part, processor):
    header = struct.pack(">7I", 0xCAFEBABE, 1, processor, 3 if processor == X86_64 else 0, 0x4000,
                         len(part), 14)
    return header.ljust(0x4000, b"\0") + part


def make_image(folder, part, arch="x86_64", processor=X86_64, without=None):
    """Runs make-image on the file."""
    (folder / "file").write_bytes(universal(part, processor))
    (folder / "imports").write_text("\n".join(name for name in IMPORTS if name != without))
    return run(LOADER / "make-image", folder / "file", arch, folder / "imports", folder / "image.s",
               expected=None)


class Made:
    """The bundle's bytes, to be changed."""

    def __init__(self, content):
        self.bytes = bytearray(content)
        self.commands, self.sections = {}, {}
        at = 32
        for _ in range(self.word(16)):
            self.commands.setdefault(self.word(at), at)
            if self.word(at) == 0x19:
                for section in range(at + 72, at + self.word(at + 4), 80):
                    name = self.bytes[section:section + 16].rstrip(b"\0").decode()
                    self.sections[name] = section
            at += self.word(at + 4)
        self.info = self.commands[0x80000022]

    def word(self, at):
        return struct.unpack_from("<I", self.bytes, at)[0]

    def put(self, at, *words):
        struct.pack_into(f"<{len(words)}I", self.bytes, at, *words)

    def put_opcodes(self, table, *opcodes):
        """table: 0 for the rebases, 1 binds, 3 lazy binds, 4 exports."""
        at = self.word(self.info + 8 + 8 * table)
        self.bytes[at:at + len(opcodes)] = bytes(opcodes)

    def unwind_info(self):
        return self.word(self.sections["__unwind_info"] + 48)


def put_command(number):
    return lambda made: made.put(made.commands[0x1B], number)  # in the place of LC_UUID


def put_opcodes(table, *opcodes):
    return lambda made: made.put_opcodes(table, *opcodes)


def put_encoding(encoding):
    """Replaces the first encoding, which several functions share."""
    return lambda made: made.put(made.unwind_info() + 28, encoding)


def cut(size):
    return lambda made: made.bytes.__delitem__(slice(size, None))


# What is wrong, the change that makes it wrong, and a part of make-image's message.
REFUSED = (
    ("no Mach-O file", lambda made: made.put(0, 0), "not a Mach-O file"),
    ("cut short in the header", cut(20), "truncated or malformed object"),
    ("cut short in a segment", cut(0x2000), "truncated or malformed object"),
    ("a library", lambda made: made.put(12, 6), "malformed"),
    ("a program", lambda made: made.put(12, 2), "no bundle"),
    ("an unknown load command", put_command(0x7F), "unknown load command"),
    ("a load command of no size", lambda made: made.put(36, 0), "malformed"),
    ("fixups of another kind", put_command(0x22), "malformed"),
    ("chained fixups", put_command(0x80000034), "unknown load command"),
    ("a thread-local variable", lambda made: made.put(made.sections["__common"] + 64, 0x12),
     "unknown kind S_THREAD_LOCAL_ZEROFILL"),
    ("an unknown rebase opcode", put_opcodes(0, 0x90), "bad rebase info"),
    ("a rebase of no pointer", put_opcodes(0, 0x12), "rebase of an unknown kind"),
    ("a rebase of no segment", put_opcodes(0, 0x11, 0x29, 0, 0x51), "bad segIndex"),
    ("a rebase of code", put_opcodes(0, 0x11, 0x20, 0, 0x51, 0), "rebase of an unknown kind: __TEXT"),
    ("an unknown bind opcode", put_opcodes(1, 0xF0), "bad bind info"),
    ("threaded binds", put_opcodes(1, 0xD0, 0x7F), "bad bind info"),
    ("a bind of no pointer", put_opcodes(1, 0x3E, 0x40, ord("_"), ord("a"), 0, 0x52, 0x71, 0, 0x90,
                                         0), "bind of an unknown kind"),
    ("a bind without a symbol", put_opcodes(1, 0x3E, 0x51, 0x71, 0, 0x90), "missing preceding"),
    ("an export list that leads into itself", put_opcodes(4, 0, 1, ord("a"), 0, 0), "export"),
    ("another version of the unwind table", lambda made: made.put(made.unwind_info(), 2), "version"),
    ("an unknown way to unwind", put_encoding(0x0F000000), "unknown way: 0xf000000"),
    ("an unknown register", put_encoding(0x01000007), "unknown register"),
    ("registers saved without a frame pointer", put_encoding(0x02020400), "without a frame pointer"),
    ("no personality", put_encoding(0x72000000), "does not say what"),
)


def main():
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        content = {arch: compile_bundle(folder, arch) for arch in ("x86_64", "arm64")}
        done = make_image(folder, content["arm64"], "arm64", ARM64)
        assert done.returncode == 0, done.stderr

        bad = 0

        def refused(what, result, word):
            nonlocal bad
            said = result.stderr.strip()
            is_refused = result.returncode == 1 and word in said
            bad += not is_refused
            print(f"{'' if is_refused else 'NOT REFUSED WITH ' + repr(word) + ', '}{what}: {said}")

        for what, change, word in REFUSED:
            made = Made(content["x86_64"])
            change(made)
            refused(what, make_image(folder, made.bytes), word)
        refused("nothing for the processor", make_image(folder, content["arm64"], processor=ARM64),
                "nothing in the file is for x86_64")
        refused("an import that nobody offers", make_image(folder, content["x86_64"],
                                                           without="_throwSeven"),
                "nobody offers the import _throwSeven")

        done = make_image(folder, content["x86_64"])
        assert done.returncode == 0, done.stderr
        run("clang++-14", "-std=c++17", "-O1", "-I", ROOT, LOADER / "tests/MadeHost.cpp",
            LOADER / "MacsImage.cpp", LOADER / "DarwinCalls.cpp", folder / "image.s", "-ldl", "-o",
            folder / "host")
        assert run(folder / "host").stdout == SAYS, run(folder / "host").stdout
        done = run(folder / "host", "write", expected=None)
        assert done.returncode < 0 and "constant data of the image was written" in done.stderr, done
        sys.exit(bad != 0)


main()
