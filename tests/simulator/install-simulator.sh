#!/usr/bin/env bash
# Tests scripts/install-simulator as a user runs it, in a temporary folder.
# usage: install-simulator.sh SCRIPT LIBRARY CASE
# Exit status 77: this case cannot be tried on this machine.
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

# expect WHAT TEST...: reports a failure and goes on.
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
installs-and-removes)
  run --library "$library"
  expect "installs" succeeds
  expect "says where" says "$target"
  expect "the library's bytes" is_library "$library"
  expect "all users can read and load it" [ -r "$target" -a -x "$target" ]
  expect "installs the module of its MIDI port beside it" cmp -s "${library%/*}/simulator-midi-port.so" "$place/simulator-midi-port.so"
  expect "installs its own record, and nothing else" only_these 3
  run --remove
  expect "removes" succeeds
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
  expect "removes the folders that it made" is_empty
  ;;
refuses-a-library-that-it-did-not-install)
  for before in nothing its-own; do
    [ "$before" = nothing ] || { rm "$target" && run --library "$library"; }
    foreign "the instrument's, over $before"
    run --library "$library"
    expect "refuses to install" refuses
    run --remove
    expect "refuses to remove" refuses
    expect "does not touch it" holds "the instrument's, over $before"
  done
  ;;
refuses-a-link-to-its-own-library)
  run --library "$library"
  mv "$target" "$place/elsewhere"
  ln -s elsewhere "$target"
  run --remove
  expect "refuses to remove" refuses
  expect "leaves the link" [ -L "$target" ]
  ;;
installs-again-where-its-library-was-deleted)
  run --library "$library"
  rm "$target"
  run --library "$library"
  expect "installs" is_library "$library"
  rm "$target"
  run --remove
  expect "removes its record" is_empty
  ;;
leaves-folders-that-others-use)
  mkdir -p "${place%/VST/*}"
  run --library "$library"
  echo song >"${place%/*}/song"
  run --remove
  expect "removes" succeeds
  expect "does not remove what is beside it" [ "$(cat "${place%/*}/song")" = song ]
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
  expect "refuses --remove with --library" [ "$status" -eq 1 ]
  run --install
  expect "refuses an unknown option" [ "$status" -eq 2 ]
  ;;
asks-for-rights-once)
  # A user who may not write, and a sudo that gives the right. Root may write everywhere, so another user
  # runs the script.
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
  expect "does not ask for what cannot be done" [ ! -e "$tools/asked" ]
  run_as_user --remove
  expect "removes" succeeds
  expect "asks once to remove" asked 1
  expect "leaves nothing" is_empty
  ;;
*)
  echo "no such case: $case" >&2
  exit 2
  ;;
esac
rm -f "$out"
exit $((failures > 0))
