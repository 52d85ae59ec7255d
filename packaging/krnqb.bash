# bash completion for krnqb. The commands, their options and their choices come from the help of the program itself.

# _krnqb_commands HELP: prints the commands that a help lists.
_krnqb_commands() { awk '/^Commands:/ { inside = 1; next } /^$/ { inside = 0 } inside { print $1 }' <<<"$1"; }

# _krnqb_offer WORDS: offers those of the words that begin like the last one typed.
_krnqb_offer() { mapfile -t COMPREPLY < <(compgen -W "$1" -- "${COMP_WORDS[COMP_CWORD]}"); }

_krnqb_offer_files() {
  compopt -o filenames 2>/dev/null
  mapfile -t COMPREPLY < <(compgen -f -- "${COMP_WORDS[COMP_CWORD]}")
}

# _krnqb_offer_values HELP OPTION: offers values of an option. Fails if it is an option without a value. The help has
# lines such as "  --balances CHOICE           Monthly amounts: none, planned, actual or all [none]".
_krnqb_offer_values() {
  local line kind choices
  line=$(awk -v option="$2" '$1 == option' <<<"$1" | head -n 1)
  if [[ ! $line =~ ^\ +--[a-z-]+\ \[?([A-Z][A-Z-]*)]?\  ]]; then return 1; fi
  kind=${BASH_REMATCH[1]}
  case $kind in
    FILE | DIR | DOC | PATH) _krnqb_offer_files ;;
    CHOICE | P)
      choices=$(grep -oE '[a-z]+(, [a-z]+)* or [a-z]+' <<<"${line%%[*}" | sed -E 's/,| or / /g')
      _krnqb_offer "$choices"
      ;;
  esac
}

_krnqb() {
  local program=${COMP_WORDS[0]/#\~/$HOME} current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  local words=() word help commands choices
  COMPREPLY=()

  # The command is the leading words, as far as the help knows them.
  help=$("$program" help 2>/dev/null) || return
  commands=$(_krnqb_commands "$help")
  for word in "${COMP_WORDS[@]:1:COMP_CWORD - 1}"; do
    if [[ -z $commands || $word == -* ]]; then break; fi
    # Without a command there is nothing to offer.
    if ! grep -qxFe "$word" <<<"$commands"; then return; fi
    # What comes after "help" is a command again.
    if [[ $word != help ]]; then words+=("$word"); fi
    help=$("$program" help "${words[@]}" 2>/dev/null) || return
    commands=$(_krnqb_commands "$help")
  done

  if [[ $previous == --* ]] && _krnqb_offer_values "$help" "$previous"; then return; fi
  if [[ $current == -* ]]; then
    _krnqb_offer "$(grep -oE '^  (-h,)?--[a-z-]+' <<<"$help" | sed -E 's/^ *(-h,)?//')"
  elif [[ -n $commands ]]; then
    _krnqb_offer "$commands"
  elif [[ ${COMP_WORDS[1]} != help ]]; then
    # The arguments: choices such as "income|expense", or files.
    choices=$(grep '^Usage: ' <<<"$help" | grep -oE '[a-z]+(\|[a-z]+)+' | head -n 1)
    if [[ -n $choices ]]; then
      _krnqb_offer "${choices//|/ }"
    elif grep -qE '^Usage: .*\b(FILE|DIR|LEDGER|DOC)\b' <<<"$help"; then
      _krnqb_offer_files
    fi
  fi
}

complete -F _krnqb krnqb
