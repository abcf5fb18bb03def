#!/usr/bin/env python3
"""Checks what cpack would make the macOS installer of. The installer itself needs a Mac.

check_installer.py BUILD SOURCES PLACE, where BUILD was configured for macOS and PLACE is the bundle's
folder on the user's disk. Fills in the distribution's template as cpack's productbuild generator does,
with a choice and a payload for each of cpack's components, and checks the result, the texts and the
component's property list. Prints the distribution; exits with 1 and says everything that is wrong.
"""
import pathlib
import plistlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

BUNDLE = "RDL3_RDL5 VST.vst3"
ARCHITECTURES = {"arm64", "x86_64"}

# Runs in CMake, which reads the configuration and fills in the template itself. The options are those
# that the generator writes into CPACK_APPLE_PKG_INSTALLER_CONTENT, and not into the older variable.
RENDER = r"""
include("${CONFIG}")
foreach(name LICENSE README WELCOME)
  string(REGEX REPLACE ".*\\." "${name}." CPACK_RESOURCE_FILE_${name}_NOPATH "${CPACK_RESOURCE_FILE_${name}}")
endforeach()
set(choices "<choices-outline>")
foreach(component ${CPACK_COMPONENTS_ALL})
  string(APPEND choices "<line choice='${component}Choice'></line>")
endforeach()
string(APPEND choices "</choices-outline>")
foreach(component ${CPACK_COMPONENTS_ALL})
  set(id "${CPACK_PRODUCTBUILD_IDENTIFIER}.${component}")
  string(APPEND choices "<choice id='${component}Choice'><pkg-ref id='${id}'/></choice>"
    "<pkg-ref id='${id}'>file:./Contents/Packages/${CPACK_PACKAGE_FILE_NAME}-${component}.pkg</pkg-ref>")
endforeach()
set(CPACK_PACKAGEMAKER_CHOICES "${choices}")
set(CPACK_APPLE_PKG_INSTALLER_CONTENT "<options customize='allow' rootVolumeOnly='false'/>${choices}")
set(template "${CMAKE_ROOT}/Modules/Internal/CPack/CPack.distribution.dist.in")
foreach(folder ${CPACK_MODULE_PATH})
  if(EXISTS "${folder}/CPack.distribution.dist.in")
    set(template "${folder}/CPack.distribution.dist.in")
    break()
  endif()
endforeach()
configure_file("${template}" "${OUTPUT}/distribution.dist" @ONLY)
foreach(component ${CPACK_COMPONENTS_ALL})
  string(TOUPPER "${component}" upper)
  file(WRITE "${OUTPUT}/${component}.plist-path" "${CPACK_COMPONENT_${upper}_PLIST}")
endforeach()
foreach(name LICENSE README WELCOME)
  file(WRITE "${OUTPUT}/${name}.path" "${CPACK_RESOURCE_FILE_${name}}")
  configure_file("${CPACK_RESOURCE_FILE_${name}}" "${OUTPUT}/${name}" @ONLY)
endforeach()
file(WRITE "${OUTPUT}/cmake-root" "${CMAKE_ROOT}")
"""

wrong = []


def expect(condition, text):
    if not condition:
        wrong.append(text)


def render(build, output):
    script = output / "render.cmake"
    script.write_text(RENDER)
    subprocess.run(["cmake", f"-DCONFIG={build}/CPackConfig.cmake", f"-DOUTPUT={output}", "-P", script],
                   check=True)
    print((output / "distribution.dist").read_text())
    return ElementTree.parse(output / "distribution.dist").getroot()


def attributes(root, path):
    """The attributes of the one element there; an empty set of them when there is none."""
    found = root.findall(path)
    expect(len(found) == 1, f"the distribution has {len(found)} elements {path}, not 1")
    return found[0].attrib if found else {}


def check_distribution(root, sources, place):
    name = re.search(r'kPlugInName = "([^"]*)"', (sources / "basics/PlugInInfo.h").read_text())[1]
    title = root.findtext("title")
    expect(title == name, f'the title is "{title}", not "{name}"')

    options = attributes(root, "options")
    found = set(filter(None, options.get("hostArchitectures", "").split(",")))
    expect(found == ARCHITECTURES, f"the Installer may run for {sorted(found)} only")
    expect(options.get("customize") == "never", "the Installer offers a choice where there is none")
    plist = plistlib.loads((sources / "module/mac/Info.plist.in").read_bytes())
    oldest = attributes(root, "volume-check/allowed-os-versions/os-version").get("min")
    expect(oldest == plist["LSMinimumSystemVersion"], f"the oldest macOS is {oldest}")
    domains = attributes(root, "domains")
    expect(domains == {"enable_anywhere": "false", "enable_currentUserHome": "false",
                       "enable_localSystem": "true"}, f"{place} is below the root alone: {domains}")


def check_payload(root):
    """Everything that is selected has a package to install. Returns the packages' identifiers."""
    lines = [line.get("choice") for line in root.findall("choices-outline//line")]
    chosen = [ref.get("id") for line in lines
              for ref in root.findall(f"choice[@id='{line}']/pkg-ref")]
    packages = {ref.get("id"): ref.text for ref in root.findall("pkg-ref") if ref.text}
    expect(lines, "the installer has no payload")
    expect(len(chosen) == len(lines) and set(chosen) == set(packages),
           f"choices {chosen} and packages {sorted(packages)} differ")
    return chosen


def check_component(build, output, place):
    installed = output / "installed"
    subprocess.run(["cmake", "--install", build, "--prefix", installed, "--component", "plug-in"],
                   check=True, stdout=subprocess.DEVNULL)
    bundles = [str(path.relative_to(installed)) for path in installed.rglob("*.vst3")]
    expect(bundles == [f"{place.strip('/')}/{BUNDLE}"], f"the component's bundles are {bundles}")

    for path in output.glob("*.plist-path"):
        expect(path.stem == "plug-in", f"{path.stem} is another component")
        expect(path.read_text(), "the component has no property list, so that its bundle is relocatable")
        listed = plistlib.loads(pathlib.Path(path.read_text()).read_bytes()) if path.read_text() else []
        print(listed)
        expect([entry["RootRelativeBundlePath"] for entry in listed] == bundles,
               "the property list is for another bundle")
        # A copy elsewhere stays as it is, and an installer of any version installs that version.
        expect(all(entry["BundleIsRelocatable"] is False for entry in listed), "the bundle is relocatable")
        expect(all(entry["BundleIsVersionChecked"] is False for entry in listed),
               "an older version is not installed over a newer one")


def check_texts(output, place, identifiers):
    own = (output / "cmake-root").read_text()
    for name in ("LICENSE", "README", "WELCOME"):
        path = (output / f"{name}.path").read_text()
        text = (output / name).read_text()
        expect(path.endswith(".txt"), f"the Installer takes {path} for no text")
        expect(not path.startswith(own), f"{name} is CPack's own text")
        expect("CPack" not in text, f"{name} speaks of CPack")
        expect(not re.search(r"@\w+@", text), f"{name} has places that nothing filled in")
        if name != "LICENSE":
            expect(max(map(len, text.splitlines())) <= 76, f"{name} is too wide for the Installer's page")
    welcome, readme = ((output / name).read_text() for name in ("WELCOME", "README"))
    for name, text in (("WELCOME", welcome), ("README", readme)):
        expect(f"{place}/{BUNDLE}" in text, f"{name} does not say where the plug-in goes")
    for identifier in identifiers:
        expect(f"pkgutil --forget {identifier}" in readme, "README does not say how to remove the package")


def main():
    build, sources, place = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), sys.argv[3]
    with tempfile.TemporaryDirectory() as folder:
        output = pathlib.Path(folder)
        root = render(build, output)
        check_distribution(root, sources, place)
        check_component(build, output, place)
        check_texts(output, place, check_payload(root))
    for text in wrong:
        print(f"check_installer: {text}", file=sys.stderr)
    sys.exit(1 if wrong else 0)


main()
