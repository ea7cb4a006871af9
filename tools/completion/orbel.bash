# Completion of the program orbel in bash.

_orbel() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} verb=${COMP_WORDS[1]:-}
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        # Verbs and options as the program itself tells them.
        mapfile -t COMPREPLY < <(compgen -W "$(orbel --help 2>/dev/null |
            sed -n '/^Subcommands:/,$s/^  \([a-z]*\) .*/\1/p') --help --version" -- "$word")
        return
    fi
    case $before in
        --format)
            mapfile -t COMPREPLY < <(compgen -W "text markdown json dot" -- "$word")
            return
            ;;
        --type)
            mapfile -t COMPREPLY < <(compgen -W "$(orbel types --format json 2>/dev/null |
                sed -n 's/^      "name": "\(.*\)",$/\1/p')" -- "$word")
            return
            ;;
        --dump) return ;;
    esac
    if [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$(orbel "$verb" --help 2>/dev/null |
            grep -oE '^  (-[a-zA-Z],)?--[a-z-]+' | grep -oE -- '--[a-z-]+')" -- "$word")
        return
    fi
    mapfile -t COMPREPLY < <(compgen -f -- "$word")
}

complete -o filenames -F _orbel orbel
