# Completion of nimbrel for bash.
_nimbrel() {
  local word=${COMP_WORDS[COMP_CWORD]} command=${COMP_WORDS[1]}
  COMPREPLY=()
  if [ "$COMP_CWORD" -eq 1 ]; then
    mapfile -t COMPREPLY < <(compgen -W "copy-latest search toggle-capture paste-from collections show quit export \
      import doctor classify transform --panel --help --version" -- "$word")
    return
  fi
  case "$command" in
    copy-latest | toggle-capture | search | collections)
      [[ $word == -* ]] && mapfile -t COMPREPLY < <(compgen -W "--json --notify" -- "$word") ;;
    show) mapfile -t COMPREPLY < <(compgen -W "--collections --notify" -- "$word") ;;
    paste-from)
      # One collection a line, whatever is in its name.
      local line
      while IFS= read -r line; do
        [[ $line == "$word"* ]] && COMPREPLY+=("$(printf '%q' "$line")")
      done < <(nimbrel collections --no-start 2>/dev/null) ;;
    export)
      if [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "--secrets --passphrase-file" -- "$word")
      else
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
      fi ;;
    import)
      if [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "--passphrase-file" -- "$word")
      else
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
      fi ;;
    doctor) mapfile -t COMPREPLY < <(compgen -W "--repair" -- "$word") ;;
    classify)
      if [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "--source --no-codes --multiline --lines" -- "$word")
      else
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
      fi ;;
    transform)
      if [ "$COMP_CWORD" -eq 2 ]; then
        mapfile -t COMPREPLY < <(compgen -W "uppercase lowercase titleCase trimWhitespace removeLineBreaks urlEncode \
          urlDecode base64Encode base64Decode formatJSON compactJSON" -- "$word")
      else
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
      fi ;;
  esac
}
complete -F _nimbrel nimbrel
