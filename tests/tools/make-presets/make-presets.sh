#!/usr/bin/env bash
# make-presets as a person runs it. usage: make-presets.sh PROGRAM SIMULATOR SLOW-LIBRARY CASE
# Exit status 77 tells that the case cannot be tried on this machine.
set -u
program=$1
simulator=$2
slow=$3
case=$4

root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
export HOME=$root/home
mkdir "$HOME"
folder="$HOME/Library/Audio/Presets/Tavrin Corporation/RDL3_RDL5 VST"
out=$root/out
err=$root/err
failures=0

# expect WHAT TEST...: notes a failure and goes on.
expect() {
  local what=$1
  shift
  "$@" && return
  echo "FAILED: $what"
  echo "--- out"; cat "$out"
  echo "--- err"; cat "$err"
  failures=$((failures + 1))
}

make_presets() {
  "$program" --library "$simulator" "$@" >"$out" 2>"$err"
  status=$?
}

says() { grep -qF -- "$1" "$out"; }
says_line() { grep -qFx -- "$1" "$out"; }
complains() { grep -qF -- "$1" "$err"; }
sentences() { [ "$(wc -l <"$err")" -eq "$1" ]; }
files() { [ "$(find "$folder" -type f -name '*.vstpreset' | wc -l)" -eq "$1" ]; }
nothing_else() { [ -z "$(find "$folder" -mindepth 1 ! -name '*.vstpreset')" ]; }
# Every file ends with its list of three chunks: 8 and 3 times 20 bytes.
whole() {
  local file
  while IFS= read -r -d '' file; do
    [ "$(tail -c 68 "$file" | head -c 4)" = List ] || return 1
  done < <(find "$folder" -type f -print0)
}

# The simulator has 170 voices, two of which have one cleaned name.
case $case in
writes-one-file-a-voice)
  make_presets --user
  expect "succeeds" [ $status -eq 0 ]
  expect "says how many" says "written 170, in 169 files: 1 of them over another one"
  expect "names the voice that replaced another" complains \
    'The preset of bank 12, voice 1, "Rise_Fall" has the file name of an earlier one'
  expect "as many files" files 169
  expect "nothing else" nothing_else
  expect "all whole" whole
  ;;
leaves-standing-files)
  make_presets
  find "$folder" -type f -exec touch -d 2001-01-01 {} +
  make_presets --no-overwrite
  expect "succeeds" [ $status -eq 0 ]
  expect "writes none" says_line "  written 0"
  expect "skips all" says "skipped 170, their files stand already"
  expect "all untouched" [ -z "$(find "$folder" -type f -newermt 2002-01-01)" ]
  make_presets
  expect "overwrites by default" [ -z "$(find "$folder" -type f ! -newermt 2002-01-01)" ]
  ;;
writes-asked-banks-only)
  make_presets --bank 9 --bank 9
  expect "writes the bank's four" says "written 4, in 4 files"
  expect "four files" files 4
  make_presets --bank 15
  expect "refuses others" [ $status -eq 2 ]
  ;;
leaves-excluded-names-out)
  printf 'Gig Bank Friday\r\n\nGig Bank Monday.vstpreset\n' >"$root/names"
  make_presets --bank 9 --exclude "$root/names"
  expect "excludes one" says "excluded 1"
  expect "writes the others" says "written 3"
  expect "not that file" [ ! -e "$folder/Gig Bank Friday.vstpreset" ]
  make_presets --exclude "$root/none"
  expect "fails without the list" [ $status -eq 1 ]
  expect "says why" complains "names '$root/none' cannot be read: No such file or directory."
  ;;
only-tries-in-a-dry-run)
  make_presets --dry-run --verbose
  expect "succeeds" [ $status -eq 0 ]
  expect "counts all" says "written 170"
  expect "names them" says "Gig Bank Friday.vstpreset"
  expect "makes no folder" [ ! -e "$HOME/Library" ]
  ;;
names-the-voice-that-fails)
  simulator=$slow make_presets --bank 7 --bank 8
  expect "fails" [ $status -eq 1 ]
  expect "counts three" says "failed 3"
  expect "one sentence each" sentences 3
  expect "unknown category, made printable" complains \
    'bank 7, voice 0, "Odd?[2J" failed: the editor library does not know its category.'
  expect "no code" complains 'bank 7, voice 1, "Odder" failed: its category code is no number.'
  expect "no data" complains 'bank 8, voice 0, "Hollow" failed: the editor library has no data for it.'
  expect "no files" files 0
  expect "nothing else" nothing_else
  ;;
goes-on-after-an-error-that-the-library-left)
  simulator=$slow make_presets --bank 8 --bank 9 --bank 10 --bank 14
  expect "fails" [ $status -eq 1 ]
  expect "for two" says "failed 2"
  expect "no data" complains 'bank 8, voice 0, "Hollow" failed: the editor library has no data for it.'
  expect "none either" complains 'bank 10, voice 0, "Torn" failed: the editor library has no data for it.'
  expect "writes the others" says "written 2"
  expect "two files" files 2
  expect "all whole" whole
  ;;
leaves-whole-files-when-interrupted)
  # A job of an interactive shell, for others start with Ctrl-C ignored.
  set -m
  "$program" --library "$slow" --bank 0 >"$out" 2>"$err" &
  job=$!
  for _ in $(seq 200); do
    [ "$(find "$HOME" -name '*.vstpreset' | wc -l)" -gt 20 ] && break
    sleep 0.05
  done
  kill -INT "$job"
  wait "$job"
  status=$?
  expect "says so" [ $status -eq 130 ]
  expect "in a sentence" complains "Interrupted; what is written is whole."
  expect "counts the rest" says "not tried"
  expect "before the end" [ "$(find "$folder" -type f | wc -l)" -lt 500 ]
  expect "nothing else" nothing_else
  expect "all whole" whole
  ;;
says-what-is-in-the-way)
  touch "$HOME/Library"
  make_presets
  expect "a file for a folder" complains "cannot be made: '$HOME/Library' is not a folder."
  expect "one sentence" sentences 1
  rm "$HOME/Library"
  mkdir -p "${folder%/*}"
  touch "$folder"
  make_presets
  expect "a file for the last folder" complains "cannot be made: '$folder' is not a folder."
  rm "$folder"
  mkdir -p "$folder/Gig Bank Friday.vstpreset"
  make_presets --bank 9
  expect "a folder for a file" complains \
    '"Gig Bank Friday" failed: its file cannot be written: Is a directory.'
  expect "the others stand" files 3
  HOME='' make_presets
  expect "no home" complains "The environment variable HOME names no folder"
  expect "fails" [ $status -eq 1 ]
  simulator=$root/none make_presets
  expect "no library" complains "The editor library cannot be loaded: $root/none"
  simulator=$program make_presets
  expect "no library of this kind" sentences 1
  expect "fails" [ $status -eq 1 ]
  ;;
says-that-a-folder-is-read-only)
  bwrap --dev-bind / / true 2>"$err" || { cat "$err"; exit 77; }
  bwrap --dev-bind / / --ro-bind "$HOME" "$HOME" \
    "$program" --library "$simulator" >"$out" 2>"$err"
  expect "fails" [ $? -eq 1 ]
  expect "before it is made" complains "'$HOME' cannot be written to: Read-only file system."
  mkdir -p "$folder"
  bwrap --dev-bind / / --ro-bind "$HOME" "$HOME" \
    "$program" --library "$simulator" >"$out" 2>"$err"
  expect "once it stands" complains "'$folder' cannot be written to: Read-only file system."
  expect "one sentence" sentences 1
  ;;
writes-into-the-library-of-every-user)
  bwrap --dev-bind / / true 2>"$err" || { cat "$err"; exit 77; }
  # A root that is all of this machine's but its /Library.
  sandbox=()
  for entry in /*; do
    if [ -L "$entry" ]; then
      sandbox+=(--symlink "$(readlink "$entry")" "$entry")
    elif [ "$entry" != /Library ]; then
      sandbox+=(--dev-bind-try "$entry" "$entry")
    fi
  done
  bwrap "${sandbox[@]}" "$program" --library "$simulator" --system >"$out" 2>"$err"
  expect "fails without a /Library" [ $? -eq 1 ]
  expect "which is not its to make" complains "there is no folder '/Library'."
  expect "one sentence" sentences 1
  mkdir "$root/all"
  bwrap "${sandbox[@]}" --bind "$root/all" /Library \
    "$program" --library "$simulator" --system --bank 9 >"$out" 2>"$err"
  expect "succeeds with one" [ $? -eq 0 ]
  expect "says where" says '/Library/Audio/Presets/Tavrin Corporation/RDL3_RDL5 VST:'
  folder="$root/all/Audio/Presets/Tavrin Corporation/RDL3_RDL5 VST"
  expect "four files" files 4
  expect "nothing else" nothing_else
  expect "nothing in the user's own" [ ! -e "$HOME/Library" ]
  ;;
says-that-the-disk-is-full)
  bwrap --dev-bind / / true 2>"$err" || { cat "$err"; exit 77; }
  program=$program simulator=$simulator out=$out err=$err folder=$folder \
    bwrap --dev-bind / / --size 120000 --tmpfs "$HOME" bash -c '
      "$program" --library "$simulator" >"$out" 2>"$err"
      echo $? >"$out.status"
      find "$folder" -mindepth 1 | wc -l >"$out.all"
      find "$folder" -type f -exec sh -c "tail -c 68 \"\$1\" | head -c 4; echo" - {} \; | grep -vc List >"$out.torn"'
  expect "fails" [ "$(cat "$out.status")" -eq 1 ]
  expect "in one sentence" sentences 1
  expect "says why" complains "failed: its file cannot be written: No space left on device."
  expect "stops there" says "failed 1"
  expect "and says what is left" says "not tried"
  expect "some were written" [ "$(cat "$out.all")" -gt 0 ]
  expect "all of them whole" [ "$(cat "$out.torn")" -eq 0 ]
  ;;
*)
  echo "no case '$case'"
  exit 2
  ;;
esac
[ $failures -eq 0 ]
