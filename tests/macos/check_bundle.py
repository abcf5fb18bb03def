#!/usr/bin/env python3
"""Checks the macOS bundle that build-bundle makes.

check_bundle.py CHECK BUNDLE SOURCES VERSION, where CHECK is "exports", "imports", "layout", or
"confined": which sources include a framework's header.
Prints what it found; exits with 1 and says what is wrong.
"""
import json
import pathlib
import plistlib
import re
import subprocess
import sys

ARCHITECTURES = ("x86_64", "arm64")
NAME = "RDL3_RDL5 VST"
OWN_FOLDERS = ("module", "processor", "controller", "view", "presets", "editorlib", "hostapi",
               "support", "platform", "basics")
# The entry points, and the only two files that may call Carbon and the File Manager.
FRAMEWORK_INCLUDES = {
    "module/mac/BundleEntry.h CoreFoundation",
    "platform/mac/CurrentEvent.mm AppKit",
    "platform/mac/CurrentEvent.mm Carbon",
    "platform/mac/PresetFolders.cpp CoreServices",
}
EXPORTS = {"_GetPluginFactory", "_bundleEntry", "_bundleExit"}


def tool(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def expect(condition, text):
    if not condition:
        sys.exit(f"check_bundle: {text}")


def expect_same(what, found, wanted):
    for line in sorted(found - wanted):
        print(f"  unexpected {what}: {line}")
    for line in sorted(wanted - found):
        print(f"  missing {what}: {line}")
    expect(found == wanted, f"the {what}s differ")


def objdump(binary, arch, option):
    """The lines of objdump's table."""
    return tool("llvm-objdump-14", "--macho", f"--arch={arch}", option, binary).splitlines()


def exports(binary, arch):
    return {line.split()[-1] for line in objdump(binary, arch, "--exports-trie")
            if line.startswith("0x")}


def imports(binary, arch):
    """As "library symbol", from all three tables that the loader binds from."""
    found = set()
    for option in ("--bind", "--lazy-bind", "--weak-bind"):
        for line in objdump(binary, arch, option):
            if line.startswith("__"):
                fields = line.removesuffix(" (weak import)").split()
                found.add(" ".join(fields[-2:]))
    return found


def documented_imports(path, arch):
    wanted, library = set(), None
    for line in path.read_text().splitlines():
        line = line.split("#")[0].strip()
        if not line:
            continue
        if line.startswith("["):
            library = line.strip("[]")
            continue
        *only, symbol = line.split()
        if not only or only == [arch]:
            wanted.add(f"{library} {symbol}")
    return wanted


def constant(sources, name):
    text = (sources / "basics/PlugInInfo.h").read_text()
    found = re.search(rf'{name} = "([^"]*)"', text)
    expect(found, f"basics/PlugInInfo.h has no {name}")
    return found[1]


def check_exports(bundle, _sources, _version):
    for arch in ARCHITECTURES:
        found = exports(bundle / "Contents/MacOS" / NAME, arch)
        print(f"{arch} exports: {' '.join(sorted(found))}")
        expect_same("export", found, EXPORTS)


def check_imports(bundle, sources, _version):
    for arch in ARCHITECTURES:
        found = imports(bundle / "Contents/MacOS" / NAME, arch)
        print(f"{arch} imports:")
        for line in sorted(found):
            print(f"  {line}")
        expect_same("import", found, documented_imports(sources / "tests/macos/imports.txt", arch))


def check_layout(bundle, sources, version):
    contents = bundle / "Contents"
    files = {str(path.relative_to(bundle)) for path in bundle.rglob("*") if path.is_file()}
    print("\n".join(sorted(files)))
    expect_same("file", files, {"Contents/Info.plist", "Contents/PkgInfo", f"Contents/MacOS/{NAME}",
                                "Contents/Resources/moduleinfo.json"})
    binary = contents / "MacOS" / NAME
    expect(tool("llvm-lipo-14", "-archs", binary).split() == list(ARCHITECTURES),
           "the binary is not for x86_64 and arm64")
    for arch in ARCHITECTURES:
        header = objdump(binary, arch, "--private-header")[-1].split()
        expect("BUNDLE" in header, f"the {arch} binary is not a bundle: {header}")
        expect("minos 11.0" in tool("llvm-objdump-14", "--macho", f"--arch={arch}",
                                    "--private-headers", binary),
               f"the {arch} binary is not for macOS 11")

    plugin_version = constant(sources, "kPlugInVersion")
    expect(plugin_version == version, f"the project is {version}, the plug-in {plugin_version}")
    # A file name cannot hold the slash in the plug-in's name.
    plugin_name = constant(sources, "kPlugInName")
    expect(plugin_name.replace("/", "_") == NAME, "the names differ")
    vendor = constant(sources, "kPlugInVendor").split()[0].lower()
    identifier = f"com.{vendor}.vst3." + plugin_name.split()[0].lower().replace("/", "-")
    plist = plistlib.loads((contents / "Info.plist").read_bytes())
    wanted = {
        "CFBundleDevelopmentRegion": "en",
        "CFBundleExecutable": NAME,
        "CFBundleIdentifier": identifier,
        "CFBundleInfoDictionaryVersion": "6.0",
        "CFBundleName": NAME,
        "CFBundlePackageType": "BNDL",
        "CFBundleShortVersionString": version,
        "CFBundleSignature": "????",
        "CFBundleVersion": version,
        "LSMinimumSystemVersion": "11.0",
        "NSHighResolutionCapable": True,
    }
    expect_same("Info.plist entry", set(plist.items()), set(wanted.items()))
    expect((contents / "PkgInfo").read_bytes() ==
           (plist["CFBundlePackageType"] + plist["CFBundleSignature"]).encode(),
           "PkgInfo differs from Info.plist")

    # The tool writes a trailing comma where JSON has none.
    text = re.sub(r",(\s*[}\]])", r"\1", (contents / "Resources/moduleinfo.json").read_text())
    info = json.loads(text)
    expect(info["Version"] == version, "moduleinfo.json is for another version")
    expect([entry["Name"] for entry in info["Classes"]] ==
           [constant(sources, "kPlugInName"), constant(sources, "kControllerName")],
           "moduleinfo.json lists other classes")


def check_confined(_bundle, sources, _version):
    found = set()
    for folder in OWN_FOLDERS:
        for path in (sources / folder).rglob("*"):
            if path.suffix not in (".h", ".cpp", ".mm"):
                continue
            for framework in re.findall(r"^\s*#\s*(?:include|import)\s*<([A-Z]\w+)/", path.read_text(),
                                        re.MULTILINE):
                found.add(f"{path.relative_to(sources)} {framework}")
    print("\n".join(sorted(found)))
    expect_same("framework include", found, FRAMEWORK_INCLUDES)


def main():
    check, bundle, sources, version = sys.argv[1:]
    checks = {"exports": check_exports, "imports": check_imports, "layout": check_layout,
              "confined": check_confined}
    checks[check](pathlib.Path(bundle), pathlib.Path(sources), version)


main()
