#compdef fontengine
# Completes the sub-commands and options of fontengine in zsh. They are asked of the tool, so none can be missing.

_fontengine_entries() { # TOOL HEADING [COMMAND]: NAME:DESCRIPTION of the lines below a heading of the help
  "$1" ${3:+"$3"} --help 2>/dev/null | sed -n "/^$2:\$/,/^\$/p" |
    sed -nE 's/^  (-[a-zA-Z],)?([^ ]+)( .*( {2,}|REQUIRED )| +)([^ ].*)$/\2:\5/p'
}

_fontengine() {
  local tool=${(Q)words[1]} command= word
  local -a entries
  for word in ${words[2,CURRENT-1]}; do
    [[ $word == -* ]] || { command=$word; break }
  done

  case ${words[CURRENT-1]} in
    --painter)
      compadd raster vector
      return ;;
    --layout)
      compadd shaped plain
      return ;;
    --align)
      compadd start end center justify
      return ;;
    --direction)
      compadd auto ltr rtl
      return ;;
    --family)
      entries=(${(f)"$(fc-list : family 2>/dev/null | sed 's/,.*//' | sort -u)"})
      compadd -a entries
      return ;;
    -o | --output | --file | --font)
      _files
      return ;;
  esac

  if [[ -z $command && $PREFIX != -* ]]; then
    entries=(${(f)"$(_fontengine_entries $tool Subcommands)"})
    _describe command entries
  elif [[ $PREFIX == -* ]]; then
    entries=(${(f)"$(_fontengine_entries $tool Options $command)"})
    _describe -o option entries
  else
    _files
  fi
}

_fontengine "$@"
