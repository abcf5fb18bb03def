#!/usr/bin/env bash
# Installs the tools into a scratch folder and uses them from there. usage: installed-tools.sh BUILD
set -euo pipefail
build=$1

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
fail() {
  echo "FAILED: $*"
  exit 1
}

cmake --install "$build" --prefix "$scratch" --component tools >/dev/null
export PATH="$scratch/bin:$PATH" HOME="$scratch/home"
mkdir "$HOME"

prefix=rdl3-rdl5-
for tool in "$prefix"{check-library,make-presets,play,with-simulator}; do
  [ "$(command -v "$tool")" = "$scratch/bin/$tool" ] || fail "$tool is not installed"
  [ "$("$tool" --version)" = "$tool (RDL3/RDL5 VST) 1.6.6" ] || fail "$tool tells another version"
  page="$scratch/share/man/man1/$tool.1.gz"
  warnings=$(MANROFFSEQ='' man --warnings -l "$page" 2>&1 >"$scratch/page") || fail "no manual page of $tool"
  [ -z "$warnings" ] || fail "the manual page of $tool: $warnings"
  for heading in NAME SYNOPSIS DESCRIPTION OPTIONS; do
    grep -q "^$heading" "$scratch/page" || fail "the manual page of $tool has no $heading"
  done
  # Nothing of the machine that it was made on.
  ! zgrep -qF "$build" "$page" || fail "the manual page of $tool names $build"
done

complete_line() {
  local line=$1
  source /usr/share/bash-completion/bash_completion
  source "$scratch/share/bash-completion/completions/${line%% *}"
  COMP_WORDS=($line) COMP_CWORD=1 COMP_LINE=$line COMP_POINT=${#line}
  _rdl3_rdl5_tools "${COMP_WORDS[@]}" "${line%% *}"
  echo "${COMPREPLY[*]}"
}
export scratch
export -f complete_line
completed() { bash -c 'complete_line "$1"' - "$1"; }
# expect LINE WORD: what becomes of a line's last word.
expect() {
  local became
  became=$(completed "$prefix$1")
  [ "$became" = "$2" ] || fail "$prefix$1 becomes '$became'"
}
expect "check-library --st" --strict
expect "play --so" --soundfont
expect "with-simulator --no-l" --no-library

# The installed bundle is found, and so is the simulator.
mkdir "$HOME/.vst3"
cp -r "$build/RDL3_RDL5 VST.vst3" "$HOME/.vst3/"
"${prefix}with-simulator" "${prefix}check-library" >"$scratch/out" || fail "$(cat "$scratch/out")"
grep -qF "\"$HOME/.vst3/RDL3_RDL5 VST.vst3\" is RDL3/RDL5 VST 1.6.6." "$scratch/out" || fail "$(cat "$scratch/out")"
# One that names another does so as it is to be typed.
! "${prefix}with-simulator" --no-library "${prefix}play" 2>"$scratch/err" || fail "it plays without a song"
grep -qF "\"${prefix}with-simulator ${prefix}play song.mid\"" "$scratch/err" || fail "$(cat "$scratch/err")"
echo "passed"
