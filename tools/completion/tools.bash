# bash completion for the tools of RDL3/RDL5 VST: the options that their help names, else files.
_rdl3_rdl5_tools() {
  local cur prev words cword
  _init_completion || return
  if [[ $cur == -* ]]; then
    COMPREPLY=($(compgen -W '$(_parse_help "$1")' -- "$cur"))
  else
    _filedir
  fi
} && complete -F _rdl3_rdl5_tools rdl3-rdl5-{check-library,make-presets,play,with-simulator}
