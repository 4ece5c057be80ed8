# Completion of orlwmi for bash. Commands, options and formats are what orlwmi's own help lists, so that they are those of
# the installed version.

_orlwmi_commands() { "$1" --help 2>/dev/null | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]\{1,\}\) .*/\1/p'; }

_orlwmi_options() {
    "$@" --help 2>/dev/null | sed -n '/^Options:/,/^$/s/^  \(-[^ ]*\).*/\1/p' | tr ',' '\n'
}

_orlwmi_formats() {
    "$@" --help 2>/dev/null | sed -n 's/^  --format [A-Z]*:{\(.*\)}.*/\1/p' | tr ',' '\n'
}

_orlwmi() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} i
    # Quoted or not, the program that is being completed tells about itself.
    local program=("${COMP_WORDS[0]}") choices=''
    for ((i = 1; i < COMP_CWORD; i++)); do
        if [[ ${COMP_WORDS[i]} != -* ]]; then
            program+=("${COMP_WORDS[i]}")
            break
        fi
    done
    if [[ $before == --format ]]; then
        choices=$(_orlwmi_formats "${program[@]}")
    elif [[ $word == -* ]]; then
        choices=$(_orlwmi_options "${program[@]}")
    elif [[ ${#program[@]} -eq 1 ]]; then
        choices=$(_orlwmi_commands "${program[@]}")
    else
        case ${program[1]}:$before in
        # Classes by name, for the commands that take one.
        enum:enum | class:class)
            choices=$("${program[0]}" classes --format csv --timeout 2 2>/dev/null | sed -n '2,$s/,.*//p')
            ;;
        esac
    fi
    # No choice holds a space or a pattern.
    # shellcheck disable=SC2207
    COMPREPLY=($(compgen -W "$choices" -- "$word"))
}

complete -F _orlwmi orlwmi
