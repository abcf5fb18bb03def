#!/usr/bin/env bash
# scripts/install-simulator as a person runs it, below a folder of its own.
# usage: install-simulator.sh SCRIPT LIBRARY CASE
# Exit status 77 tells that the case cannot be tried on this machine.
set -u
script=$1
library=$2
case=$3

root=$(cd "$(mktemp -d)" && pwd)
trap 'chmod -R u+w "$root"; rm -rf "$root"' EXIT
place="$root/Library/Application Support/Tavrin/VST/RDL3_RDL5"
target="$place/libvst_rdl3_rdl5_vstserver.1.dylib"
out=$(mktemp)
failures=0

# expect WHAT TEST...: notes a failure and goes on.
expect() {
  local what=$1
  shift
  "$@" && return
  echo "FAILED: $what"
  cat "$out"
  find "$root"
  failures=$((failures + 1))
}

run() {
  "$script" --root "$root" "$@" >"$out" 2>&1
  status=$?
}

says() { grep -qF -- "$1" "$out"; }
succeeds() { [ "$status" -eq 0 ]; }
refuses() { [ "$status" -eq 1 ] && says refused; }
is_library() { cmp -s "$1" "$target"; }
holds() { [ "$(cat "$target")" = "$1" ]; }
is_empty() { [ -z "$(ls -A "$root")" ]; }
only_these() { [ "$(find "$root" ! -type d | wc -l)" -eq "$1" ]; }
foreign() { mkdir -p "$place" && echo "$1" >"$target"; }

case $case in
installs-and-takes-away)
  run --library "$library"
  expect "installs" succeeds
  expect "says where" says "$target"
  expect "the library's bytes" is_library "$library"
  expect "that a program of any user loads" [ -r "$target" -a -x "$target" ]
  expect "the module of its MIDI port beside it" cmp -s "${library%/*}/simulator-midi-port.so" "$place/simulator-midi-port.so"
  expect "and its own record, nothing else" only_these 3
  run --remove
  expect "takes away" succeeds
  expect "says what" says "Took away $target"
  expect "leaves nothing" is_empty
  ;;
replaces-what-it-installed)
  echo older >"$root/older"
  run --library "$root/older"
  run --library "$library"
  expect "replaces" succeeds
  expect "the newer one" is_library "$library"
  rm "$root/older"
  run --remove
  expect "still knows the folders that it made" is_empty
  ;;
refuses-a-library-of-somebody-else)
  foreign "the instrument's"
  run --library "$library"
  expect "refuses to install" refuses
  expect "leaves it" holds "the instrument's"
  run --remove
  expect "refuses to take away" refuses
  expect "leaves it" holds "the instrument's"
  ;;
refuses-a-library-that-came-over-its-own)
  run --library "$library"
  foreign "the instrument's, over the simulator"
  run --remove
  expect "refuses to take away" refuses
  run --library "$library"
  expect "refuses to replace" refuses
  expect "leaves it" holds "the instrument's, over the simulator"
  ;;
refuses-a-link-to-its-own-library)
  run --library "$library"
  mv "$target" "$place/elsewhere"
  ln -s elsewhere "$target"
  run --remove
  expect "refuses to take away" refuses
  expect "leaves the link" [ -L "$target" ]
  ;;
installs-again-where-its-library-was-deleted)
  run --library "$library"
  rm "$target"
  run --library "$library"
  expect "installs" is_library "$library"
  rm "$target"
  run --remove
  expect "takes its record away" is_empty
  ;;
leaves-folders-that-others-use)
  mkdir -p "${place%/VST/*}"
  run --library "$library"
  echo song >"${place%/*}/song"
  run --remove
  expect "takes away" succeeds
  expect "but not what is beside it" [ "$(cat "${place%/*}/song")" = song ]
  rm "${place%/*}/song"
  run --remove
  expect "has nothing more to do" succeeds
  expect "says so" says "nothing to take away"
  expect "a folder that it did not make stays" [ -d "${place%/VST/*}" ]
  ;;
says-that-there-is-no-library-to-install)
  run --library "$root/none"
  expect "fails" [ "$status" -eq 1 ]
  expect "says which" says "$root/none"
  expect "makes nothing" is_empty
  run --remove --library "$library"
  expect "has no use for two wishes" [ "$status" -eq 1 ]
  run --install
  expect "knows no other option" [ "$status" -eq 2 ]
  ;;
asks-for-rights-once)
  # A user who may not write, and a sudo that lets them. Root may everywhere, so somebody else runs it.
  as_user=()
  if [ "$(id -u)" -eq 0 ]; then
    command -v setpriv >/dev/null || exit 77
    as_user=(setpriv --reuid 65534 --regid 65534 --clear-groups)
  fi
  tools=$(mktemp -d)
  trap 'chmod -R u+w "$root"; rm -rf "$root" "$tools"' EXIT
  cp "$script" "$tools/install-simulator"
  cp "$library" "$tools/library"
  printf '#!/bin/sh\necho asked >>"%s/asked"\nchmod -R u+w "%s"\nshift\nexec "$@"\n' "$tools" "$root" >"$tools/sudo"
  chmod 755 "$tools/sudo"
  [ ${#as_user[@]} -eq 0 ] || chown -R 65534:65534 "$root" "$tools"
  run_as_user() {
    chmod -R a-w "$root"
    rm -f "$tools/asked"
    ${as_user[@]+"${as_user[@]}"} env "PATH=$tools:$PATH" "$tools/install-simulator" --root "$root" "$@" >"$out" 2>&1
    status=$?
  }
  asked() { [ "$(grep -c . "$tools/asked" 2>/dev/null)" = "$1" ]; }
  run_as_user --library "$tools/library"
  expect "installs" succeeds
  expect "asks once" asked 1
  expect "says why it asks" says "belongs to the administrator"
  expect "the library's bytes" is_library "$library"
  run_as_user --library "$tools/none"
  expect "asks for nothing that cannot be done" [ ! -e "$tools/asked" ]
  run_as_user --remove
  expect "takes away" succeeds
  expect "asks once for that" asked 1
  expect "leaves nothing" is_empty
  ;;
*)
  echo "no such case: $case" >&2
  exit 2
  ;;
esac
rm -f "$out"
exit $((failures > 0))
