# Completions of korvane for bash.
_korvane() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    local command=${COMP_WORDS[1]-} options=''
    COMPREPLY=()
    if [ "$COMP_CWORD" -eq 1 ]; then
        mapfile -t COMPREPLY < <(compgen -W 'open explore parse replay --help --version' -- "$word")
        return
    fi
    case $command in
        open) options='--help' ;;
        explore) options='--functions --no-functions --precise --json --script --all --window --record --cell-timeout --help' ;;
        replay) options='--help' ;;
        parse) options='--functions --no-functions --json --count --help' ;;
    esac
    case $before in
        --cell-timeout) return ;;
        --script | --record) options='' ;;
    esac
    if [ -n "$options" ] && [ "${word#-}" != "$word" ]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
    elif [ "$command" != parse ]; then
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
    fi
}
complete -F _korvane korvane
