#!/usr/bin/env python3
"""Packs a build for Debian and checks the package's files, their modes and its dependencies.

check_deb.py SOURCES BUILD VERSION
"""
import gzip
import hashlib
import io
import os
import pathlib
import shutil
import subprocess
import sys
import tarfile
import tempfile

PACKAGE = "rdl3-rdl5-vst"
TOOLS = ("check-library", "make-presets", "play", "with-simulator")
BUNDLE = "RDL3_RDL5 VST.vst3"
DOCUMENTS = f"usr/share/doc/{PACKAGE}"


def run(*command, **options):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, **options).stdout


def fail(text):
    sys.exit(f"check_deb: {text}")


def pack(build, folder):
    done = subprocess.run(["cpack", "-G", "DEB", "-B", folder], cwd=build, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True)
    packages = list(pathlib.Path(folder).glob("*.deb"))
    if done.returncode or len(packages) != 1:
        fail(f"cpack made {len(packages)} packages:\n{done.stdout}")
    return packages[0]


def files_below(folder):
    return [path for path in folder.rglob("*") if path.is_file()]


def expected_files(sources, build):
    """The mode of each path."""
    files = {f"{DOCUMENTS}/{name}": 0o644 for name in ("copyright", "changelog.gz", "changelog.Debian.gz")}
    for tool in TOOLS:
        name = f"rdl3-rdl5-{tool}"
        files[f"usr/bin/{name}"] = 0o755
        files[f"usr/share/man/man1/{name}.1.gz"] = 0o644
        files[f"usr/share/bash-completion/completions/{name}"] = 0o644
    files["usr/share/zsh/vendor-completions/_rdl3_rdl5_tools"] = 0o644
    for path in files_below(sources / "docs"):
        files[f"{DOCUMENTS}/{path.relative_to(sources / 'docs')}"] = 0o644
    for path in files_below(build / BUNDLE):
        files[f"usr/lib/vst3/{path.relative_to(build)}"] = 0o755 if path.suffix == ".so" else 0o644
    for path in files_below(build / "staging/Library"):
        files[f"usr/lib/{PACKAGE}/{path.relative_to(build)}"] = 0o644
    return files


def members(package, part):
    """The members of the package's control or file archive, by path without a leading "./"."""
    with tarfile.open(fileobj=io.BytesIO(run("dpkg-deb", part, package))) as archive:
        return {member.name.lstrip("./"): (member, archive.extractfile(member).read() if member.isfile() else None)
                for member in archive}


def check_files(files, expected):
    wrong = [f"{path} is missing" for path in sorted(expected.keys() - files.keys())]
    for path, (member, _) in sorted(files.items()):
        if (member.uname, member.gname, member.uid, member.gid) != ("root", "root", 0, 0):
            wrong.append(f"{path} belongs to {member.uname}:{member.gname}")
        if member.isdir():
            mode = 0o755
        elif member.isfile() and path in expected:
            mode = expected[path]
        else:
            wrong.append(f"{path} should not be in it")
            continue
        if member.mode != mode:
            wrong.append(f"{path} has mode {member.mode:o} and not {mode:o}")
    return wrong


def check_contents(files, control, build):
    wrong = []
    for path in files_below(build / BUNDLE):
        name = f"usr/lib/vst3/{path.relative_to(build)}"
        if name in files and files[name][1] != path.read_bytes():
            wrong.append(f"{name} is not the build's")
    for path, (_, content) in files.items():
        if path.endswith(".1.gz"):
            title = f'.TH {pathlib.Path(path).name[:-5].upper()} "1"'
            if title not in gzip.decompress(content).decode():
                wrong.append(f"{path} is no manual page with '{title}'")
    said = {line[34:]: line[:32] for line in control["md5sums"][1].decode().splitlines()}
    sums = {path: hashlib.md5(content).hexdigest() for path, (_, content) in files.items() if content is not None}
    if said != sums:
        wrong.append(f"md5sums differ for {sorted(path for path in said.keys() | sums.keys() if said.get(path) != sums.get(path))}")
    return wrong


def check_fields(package, version):
    wanted = {"Package": PACKAGE, "Version": f"{version}-1", "Section": "sound", "Priority": "optional",
              "Recommends": "bubblewrap",
              "Architecture": run("dpkg", "--print-architecture", text=True).strip()}
    fields = {name: run("dpkg-deb", "--field", package, name, text=True).strip() for name in [*wanted, "Depends"]}
    wrong = [f"{name} is '{fields[name]}' and not '{value}'" for name, value in wanted.items() if fields[name] != value]
    # The plug-in's run-time, and the one library that play does not contain.
    wrong += [f"it depends on '{fields['Depends']}' and not on {library}"
              for library in ("libc6 (>= ", "libstdc++6 (>= ", "libsmf0 (>= ") if library not in fields["Depends"]]
    return wrong


def check_by_lintian(package):
    if not shutil.which("lintian"):
        fail("no lintian here (scripts/setup test installs it)")
    words = [] if os.geteuid() else ["--allow-root"]
    judged = subprocess.run(["lintian", "--fail-on", "error", *words, package], stdout=subprocess.PIPE,
                            stderr=subprocess.STDOUT, text=True)
    print(judged.stdout, end="")
    return ["lintian finds errors, see above"] if judged.returncode else []


def main():
    sources, build, version = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), sys.argv[3]
    with tempfile.TemporaryDirectory() as folder:
        package = pack(build, folder)
        print(run("dpkg-deb", "--info", package, text=True) + run("dpkg-deb", "--contents", package, text=True))
        files, control = members(package, "--fsys-tarfile"), members(package, "--ctrl-tarfile")
        files.pop("", None)  # the root itself
        wrong = check_files(files, expected_files(sources, build))
        wrong += check_contents(files, control, build)
        wrong += check_fields(package, version)
        wrong += check_by_lintian(package)
    if wrong:
        fail("\n  ".join(["the package is not as it should be:", *wrong]))


main()
