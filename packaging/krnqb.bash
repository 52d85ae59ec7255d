# bash completion for krnqb. The commands, their options and their choices come from the help of the program itself.

# _krnqb_asks_for_files KIND: whether the value of an option or argument is a file or a folder.
_krnqb_asks_for_files() { [[ $1 =~ ^(FILE|DIR|DOC|LEDGER|DOCUMENT)s?(\.\.\.)?$ ]]; }

_krnqb() {
  local program=${COMP_WORDS[0]/#\~/$HOME} current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  local words=() word help commands index
  COMPREPLY=()

  # The command is the leading words, as far as the help knows them.
  help=$("$program" help 2>/dev/null) || return
  for ((index = 1; index < COMP_CWORD; index++)); do
    commands=$(awk '/^Commands:/ { inside = 1; next } /^$/ { inside = 0 } inside { print $1 }' <<<"$help")
    word=${COMP_WORDS[index]}
    if ! grep -qxFe "$word" <<<"$commands"; then
      # Without a command there is nothing to offer.
      if [[ -n $commands && $word != -* ]]; then return; fi
      break
    fi
    words+=("$word")
    # What comes after "help" is a command again.
    if [[ ${words[0]} == help ]]; then help=$("$program" help "${words[@]:1}" 2>/dev/null) || return
    else help=$("$program" help "${words[@]}" 2>/dev/null) || return; fi
  done
  commands=$(awk '/^Commands:/ { inside = 1; next } /^$/ { inside = 0 } inside { print $1 }' <<<"$help")

  # Lines such as "  --plan FILE (required)      Plan file to import into".
  local kind meaning
  if [[ $previous == --* ]]; then
    kind=$(awk -v option="$previous" '$1 == option && $2 ~ /^[A-Z][A-Z-]*$/ && /^  --[a-z-]+ [A-Z]/ { print $2; exit }' <<<"$help")
    if [[ -n $kind ]]; then
      if _krnqb_asks_for_files "$kind"; then
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
      elif [[ $kind =~ ^(CHOICE|P)$ ]]; then
        # "Monthly amounts: none, planned, actual or all [none]"
        meaning=$(awk -v option="$previous" '$1 == option { sub(/\[.*/, ""); print; exit }' <<<"$help")
        mapfile -t COMPREPLY < <(compgen -W "$(grep -oE '[a-z]+(, [a-z]+)* or [a-z]+' <<<"$meaning" |
          sed -E 's/,| or / /g')" -- "$current")
      fi
      return
    fi
  fi

  if [[ $current == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$(grep -oE '^  (-h,)?--[a-z-]+' <<<"$help" | sed -E 's/^ *(-h,)?//')" -- "$current")
  elif [[ -n $commands ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$commands" -- "$current")
  elif [[ ${words[0]-} != help ]]; then
    # The arguments: choices such as "income|expense", or files.
    local argument
    argument=$(awk '/^Usage: / { print }' <<<"$help" | grep -oE '[a-z]+(\|[a-z]+)+' | head -n 1)
    if [[ -n $argument ]]; then
      mapfile -t COMPREPLY < <(compgen -W "${argument//|/ }" -- "$current")
    elif grep -qE '^Usage: .*\b(FILE|DIR|LEDGER|DOC)' <<<"$help"; then
      compopt -o filenames 2>/dev/null
      mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
  fi
}

complete -F _krnqb krnqb
