# Completes the sub-commands and options of fontengine in bash. They are asked of the tool, so none can be missing.

_fontengine_names() { # the first words below a heading of the help
  "$1" ${3:+"$3"} --help 2>/dev/null | sed -n "/^$2:\$/,/^\$/s/^  \([^ ]\{1,\}\).*/\1/p" | tr , '\n'
}

_fontengine() {
  local cur prev words cword
  _init_completion || return
  local tool=${words[0]} command='' word
  for word in "${words[@]:1:cword-1}"; do
    [[ $word == -* ]] || { command=$word; break; }
  done

  case $prev in
    --painter) mapfile -t COMPREPLY < <(compgen -W 'raster vector' -- "$cur"); return ;;
    --layout) mapfile -t COMPREPLY < <(compgen -W 'shaped plain' -- "$cur"); return ;;
    --align) mapfile -t COMPREPLY < <(compgen -W 'start end center justify' -- "$cur"); return ;;
    --direction) mapfile -t COMPREPLY < <(compgen -W 'auto ltr rtl' -- "$cur"); return ;;
    --family)
      mapfile -t COMPREPLY < <(fc-list : family 2>/dev/null | sed 's/,.*//' | sort -u | grep -F -- "${cur//[\"\'\\]/}" |
        sed 's/ /\\ /g')
      return ;;
    -o | --output | --file | --font) _filedir; return ;;
  esac

  if [[ -z $command && $cur != -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$(_fontengine_names "$tool" Subcommands)" -- "$cur")
  elif [[ $cur == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$(_fontengine_names "$tool" Options "$command")" -- "$cur")
  else
    _filedir
  fi
} && complete -F _fontengine fontengine
