# Completion of corvane for bash.

# Splits what stands before the cursor into words as the shell would, without running anything of it: quotes
# and backslashes go, variables stay as they are typed. Fills _corvane_words, and _corvane_quote with the
# quote that is still open.
_corvane_split() {
    local line=$1 word="" quote="" started="" character i
    _corvane_words=()
    for ((i = 0; i < ${#line}; i++)); do
        character=${line:i:1}
        if [[ $character == "\\" && $quote != "'" ]]; then
            ((++i))
            word+=${line:i:1}
            started=yes
        elif [[ -n $quote ]]; then
            if [[ $character == "$quote" ]]; then quote=""; else word+=$character; fi
        elif [[ $character == [\"\'] ]]; then
            quote=$character
            started=yes
        elif [[ $character == [[:blank:]] ]]; then
            [[ -z $started ]] || _corvane_words+=("$word")
            word="" started=""
        else
            word+=$character
            started=yes
        fi
    done
    _corvane_words+=("$word")
    _corvane_quote=$quote
}

# The text as it may stand on a command line, within the open quote where there is one.
_corvane_quoted() {
    local text=$1 result="" character i
    if [[ $_corvane_quote == "'" ]]; then
        REPLY=${text//"'"/"'\\''"}
        return
    fi
    local plain='[[:alnum:]_./,+%-]'
    [[ $_corvane_quote == '"' ]] && plain='[^"$`\\!]'
    for ((i = 0; i < ${#text}; i++)); do
        character=${text:i:1}
        # shellcheck disable=SC2053  # a pattern
        if [[ $character == $plain ]]; then result+=$character; else result+="\\$character"; fi
    done
    REPLY=$result
}

_corvane() {
    local _corvane_words _corvane_quote REPLY candidate word meaning
    COMPREPLY=()
    _corvane_split "${COMP_LINE:0:COMP_POINT}"
    local typed=${_corvane_words[-1]} last=${COMP_WORDS[COMP_CWORD]}
    # Bash replaces its own last word only, which begins behind a "=".
    local kept=""
    [[ $typed == --*=* && $last != --* ]] && kept=${typed%%=*}=
    while IFS= read -r candidate; do
        if [[ $candidate != *$'\t'* ]]; then
            compopt -o filenames
            [[ $candidate == :directories ]] && mapfile -t COMPREPLY < <(compgen -d -- "${typed#"$kept"}")
            [[ $candidate == :files ]] && mapfile -t COMPREPLY < <(compgen -f -- "${typed#"$kept"}")
            return
        fi
        word=${candidate%%$'\t'*} meaning=${candidate#*$'\t'}
        if [[ $COMP_TYPE == 63 && -n $meaning ]]; then
            COMPREPLY+=("${word#"$kept"}  ($meaning)") # a list to read; nothing of it is inserted
            continue
        fi
        _corvane_quoted "${word#"$kept"}"
        COMPREPLY+=("$REPLY")
    done < <(command corvane complete -- "${_corvane_words[@]:1}" 2>/dev/null)
}

complete -F _corvane corvane
