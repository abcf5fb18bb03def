#!/usr/bin/env bash
# Runs ./run, ./test and scripts/setup as on a Mac: a copy of the scripts, with stand-ins for a Mac's programs
# that log how they were called. usage: mac-scripts.sh SOURCES CASE
set -u
sources=$1
case=$2

root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
project="$root/project" bin="$root/bin" brewed="$root/brewed" log="$root/log" out="$root/out"
place="$root/place" # names the library that is installed as the editor library
mkdir -p "$project/tools/play" "$bin" "$brewed"
cp -R "$sources/scripts" "$sources/run" "$sources/test" "$project"
cp "$sources/tools/play/demo.mid" "$project/tools/play"
: >"$log"
failures=0

# The path has nothing else of this machine: no apt-get, no dpkg-query.
for tool in awk bash basename cat chmod cp cut date dirname env false getconf grep head id mkdir mktemp mv rm sed sort \
  tail tr true; do
  ln -s "$(type -P "$tool")" "$bin/$tool"
done

# stand_in FILE: makes a program of the script on standard input.
stand_in() {
  { printf '#!/usr/bin/env bash\nroot="%s" brewed="%s" log="%s" place="%s"\n' "$root" "$brewed" "$log" "$place" && cat; } >"$1"
  chmod 755 "$1"
}
stand_in "$bin/uname" <<<'echo Darwin'
stand_in "$bin/sw_vers" <<<'echo "${MACOS:-14.5}"'
stand_in "$bin/xcode-select" <<<'[ -z "${NO_COMPILER:-}" ]'
stand_in "$bin/brew" <<'END'
case $1 in
list) [ -f "$brewed/$3" ] && echo "$3 $(cat "$brewed/$3")" ;;
install)
  echo "brew $*" >>"$log"
  for package in "${@:3}"; do echo 99.1 >"$brewed/$package"; done
  ;;
esac
END
stand_in "$bin/git" <<'END'
echo "git $*" >>"$log"
case " $* " in
*" clone "*)
  mkdir -p "${@: -1}/pluginterfaces/vst"
  echo "#define kVstVersionString \"VST ${SDK:-3.7.10}\"" >"${@: -1}/pluginterfaces/vst/vsttypes.h"
  ;;
esac
END
stand_in "$bin/cmake" <<'END'
echo "cmake $*" >>"$log"
mkdir -p build/release
touch build/release/build.ninja
cp "$root/with-simulator" "$root/play" build/release
END
stand_in "$bin/ctest" <<'END'
echo "ctest $(cat "$place" 2>/dev/null || echo nothing): ${*: -2}" >>"$log"
while [ $# -gt 0 ]; do
  [ "$1" != --output-junit ] || echo '<testsuite tests="3" failures="0" skipped="0">' >"$2"
  shift
done
END
stand_in "$root/with-simulator" <<'END'
[ "$(cat "$place" 2>/dev/null)" = simulator ] || exit 125
exec "$@"
END
stand_in "$root/play" <<<'echo "play $*" >>"$log"; echo the report'
stand_in "$project/scripts/install-simulator" <<'END'
echo "install-simulator ${*##*/}" >>"$log"
[ "${1:-}" = --remove ] && rm "$place" && exit
library=${2:-simulator}
echo "${library##*/}" >"$place"
END

# expect WHAT TEST...: counts a failure and goes on.
expect() {
  local what=$1
  shift
  "$@" && return
  echo "FAILED: $what"
  cat "$log" "$out"
  failures=$((failures + 1))
}
on_a_mac() {
  env -i "PATH=$bin" "HOME=$root" "TMPDIR=$root" ${settings[@]+"${settings[@]}"} "$project/$1" "${@:2}" >"$out" 2>&1
  status=$?
}
settings=()
installed() { for package in cmake ninja ccache pkgconf cli11 nlohmann-json libsmf rtmidi googletest pugixml; do echo 99 >"$brewed/$package"; done; }
succeeds() { [ "$status" -eq 0 ]; }
fails() { [ "$status" -eq 1 ] && grep -qF -- "$1" "$out"; }
called() { grep -qxF -- "$1" "$log"; }
never_called() { ! grep -q "^$1" "$log"; }
sdk="$project/build/sdk/vst3sdk-3.7.10"

case $case in
installs-what-is-missing)
  echo 3.30.1 >"$brewed/cmake"
  echo 1.3_1 >"$brewed/libsmf"
  on_a_mac scripts/setup run
  expect "succeeds" succeeds
  expect "installs the rest" called "brew install --quiet ninja ccache pkgconf cli11 nlohmann-json rtmidi"
  on_a_mac scripts/setup test
  expect "installs what the tests need" called "brew install --quiet googletest pugixml"
  : >"$log"
  on_a_mac scripts/setup test
  expect "has nothing to do the third time" [ ! -s "$log" ]
  ;;
refuses-what-is-too-old)
  installed
  echo 3.9.6 >"$brewed/cmake"
  on_a_mac scripts/setup run
  expect "names the package and both versions" fails "Homebrew's cmake is 3.9.6, and 3.23 is needed"
  settings=(MACOS=10.15.7)
  on_a_mac scripts/setup run
  expect "names the system" fails "this is macOS 10.15.7, and the plug-in needs 11.0"
  settings=(NO_COMPILER=1)
  on_a_mac scripts/setup run
  expect "tells where a compiler comes from" fails "xcode-select --install"
  ;;
fetches-the-sdk)
  installed
  settings=(SDK=3.8.0)
  on_a_mac scripts/setup run
  expect "refuses another version" fails "does not say that it is the VST 3 SDK 3.7.10"
  expect "keeps nothing of another version" [ ! -e "$sdk" ]
  settings=()
  : >"$log"
  on_a_mac scripts/setup run
  expect "takes the wanted one" [ -f "$sdk/pluginterfaces/vst/vsttypes.h" ]
  expect "clones it by its tag" grep -q 'clone .*--branch v3.7.10_build_14 https://.*/vst3sdk.git' "$log"
  expect "fetches its submodules" grep -q 'submodule .* base cmake pluginterfaces public.sdk vstgui4$' "$log"
  rm -rf "$sdk"
  : >"$log"
  mkdir -p "$root/mine/pluginterfaces/base"
  touch "$root/mine/pluginterfaces/base/funknown.h"
  settings=("VST3_SDK_DIR=$root/mine")
  on_a_mac scripts/setup run
  expect "uses a checkout that it is told of" succeeds
  expect "fetches no other checkout" never_called git
  ;;
runs)
  installed
  on_a_mac run
  expect "succeeds" succeeds
  expect "puts the simulator in its place" called "install-simulator "
  expect "plays the song of its own, without a sound" called \
    "play $project/tools/play/demo.mid --midi-out $project/build/run/demo.mid --report $project/build/run/demo.html"
  expect "shows the report" grep -q "the report" "$out"
  : >"$log"
  on_a_mac run "$project/tools/play/demo.mid" --realtime
  expect "passes options on" called \
    "play $project/tools/play/demo.mid --midi-out $project/build/run/demo.mid --report $project/build/run/demo.html --realtime"
  expect "asks for the simulator once" never_called install-simulator
  ;;
tests)
  installed
  on_a_mac test
  expect "succeeds" succeeds
  expect "counts six runs of three" [ "$(tail -n 1 "$out")" = "18 passed, 0 failed" ]
  tests_with() { grep -qxF -- "ctest $1: -${3:-R} $2" "$log"; }
  expect "runs most tests with the simulator" tests_with simulator ^plugin- E
  expect "runs tests with the scripted library" tests_with vstk2x_scripted_library.so ^plugin-scripted/
  expect "runs tests with a library without the connect entry" tests_with vstk2x_scripted_library_without_connect.so ^plugin-without-connect/
  expect "runs tests with a library without the observer entry" tests_with vstk2x_scripted_library_without_observer.so ^plugin-without-observer/
  expect "runs tests with a library that gives a null connection" tests_with vstk2x_scripted_library_null_connection.so ^plugin-null-connection/
  expect "runs tests without a library" tests_with nothing ^plugin-no-library/
  expect "leaves no library installed" [ ! -e "$place" ]
  ;;
*)
  echo "no such case: $case" >&2
  exit 2
  ;;
esac
exit $((failures > 0))
