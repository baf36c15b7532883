# bash completion of ocmap. Commands, options and their values are read off the help, so that there is nothing to add here.

_ocmap_matching() {
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$2")
}

# What the pieces of a path may become: nodes whose names begin so, and those one step below.
_ocmap_paths() {
    local host=$1 begun=${2:-/}
    mapfile -t COMPREPLY < <({
        "$host" explain --list "$begun*"
        [[ $begun == */ ]] || "$host" explain --list "$begun/*"
    } 2>/dev/null)
    compopt -o nospace
}

_ocmap() {
    local host=$1 current=$2 previous=$3 command= word help
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        [[ $word == -* ]] || { command=$word; break; }
    done
    help=$("$host" ${command:+"$command"} --help 2>/dev/null) || return
    COMPREPLY=()
    if [[ $previous == --* ]]; then
        local values
        values=$(sed -n "s/^ *$previous [A-Z]*:{\([^}]*\)}.*/\1/p" <<<"$help")
        if [[ -n $values ]]; then
            _ocmap_matching "${values//,/ }" "$current"
            return
        elif grep -q "^ *$previous FILE" <<<"$help"; then
            return # a file
        fi
    fi
    if [[ $current == -* ]]; then
        _ocmap_matching "$(grep -o -e '^  \(-h,\)\?--[a-z-]*' <<<"$help" | sed 's/.*--/--/')" "$current"
    elif [[ -z $command ]]; then
        _ocmap_matching "$(sed -n '/^Subcommands:/,/^$/s/^  \([a-z-]*\) .*/\1/p' <<<"$help")" "$current"
    elif [[ $command == explain ]]; then
        _ocmap_paths "$host" "$current"
    fi
}

complete -o default -F _ocmap ocmap
