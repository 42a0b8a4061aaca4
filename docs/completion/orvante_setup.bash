# Completion of the arguments of orvante_setup in bash.

# Folders, and the files whose name has that ending.
_orvante_setup_files() { # ending
    local name
    while IFS= read -r name; do
        COMPREPLY+=("$name")
    done < <(compgen -f -X "!*.$1" -- "$current"; compgen -d -- "$current")
    compopt -o filenames 2>/dev/null
}

_orvante_setup() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} options
    options='-f --file -o --output -l --log -n --nthreads -a --archive -h --help --version -- --ignore_rest'
    COMPREPLY=()
    case $previous in
    -f | --file) _orvante_setup_files json ;;
    -o | --output | -a | --archive) _orvante_setup_files h5 ;;
    -l | --log) ;; # any whole number
    -n | --nthreads) mapfile -t COMPREPLY < <(compgen -W "$(seq "$(nproc 2>/dev/null || echo 1)")" -- "$current") ;;
    *) mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current") ;;
    esac
}

complete -F _orvante_setup orvante_setup
