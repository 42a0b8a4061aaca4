# shellcheck shell=bash
# What the scripts of this folder share; to be sourced. Everything said here goes to standard error, so that the
# standard output of a script belongs to the program that it runs.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)

# Status of a script that fails before the program that it is to run has started.
failure_status=1

# Steps that are over within this many seconds are not announced.
quiet_seconds=1

say() {
    printf '%s\n' "$*" >&2
}

die() {
    printf '%s: %s\n' "$(basename "$0")" "$1" >&2
    shift
    local line
    for line in "$@"; do
        say "  $line"
    done
    exit "$failure_status"
}

in_terminal() {
    [[ -t 2 && ${TERM:-dumb} != dumb ]]
}

last_line() {
    tail -n 1 "$1" 2>/dev/null | tr -d '\r' | cut -c 1-100
}

# No script ends without a word, even where nothing was foreseen.
set -E
trap 'say "$0: stopped by an error in line $LINENO of ${BASH_SOURCE[0]##*/}: $BASH_COMMAND"' ERR

# Shows that a step is alive: in a terminal one line that is rewritten every second, else a line every 15 seconds.
# Ends by itself when the script that started it is gone.
show_progress() { # description, log file, process id of the script
    local seconds=0
    while sleep 1 >/dev/null 2>&1 && kill -0 "$3" 2>/dev/null; do
        seconds=$((seconds + 1))
        if ((seconds == quiet_seconds)); then
            say "$1 …"
        elif in_terminal; then
            printf '\r\033[K%4d s  %.70s' "$seconds" "$(last_line "$2")" >&2
        elif ((seconds % 15 == 0)); then
            say "$(printf '%4d s  %s' "$seconds" "$(last_line "$2")")"
        fi
    done
}

# Runs a command with its output kept in a log file; returns the command's status.
run_logged() { # description, log file, command and its arguments
    local what=$1 log=$2 status=0 start=$SECONDS ticker
    shift 2
    : >"$log"
    show_progress "$what" "$log" "$$" </dev/null 9>&- &
    ticker=$!
    "$@" >>"$log" 2>&1 </dev/null || status=$?
    kill "$ticker" 2>/dev/null || true
    wait "$ticker" 2>/dev/null || true
    if ((SECONDS - start > quiet_seconds)); then
        if in_terminal; then printf '\r\033[K' >&2; fi
        ((status != 0)) || say "$(printf '%4d s  done' $((SECONDS - start)))"
    fi
    return "$status"
}

# What a build says about its first failure, or else how its output ends.
show_failure() { # log file
    local first
    first=$(awk '/^(FAILED:|CMake Error)/ && !found++ {print NR}' "$1")
    say "----- from $1:"
    if [[ -n $first ]]; then
        awk -v first="$first" 'NR >= first && NR < first + 40' "$1" >&2
    else
        tail -n 30 "$1" >&2
    fi
    say "-----"
}

# A build folder that was made by another place's copy of the tree cannot be used there: it is started afresh.
configure() { # preset, options
    local preset=$1 folder=$root/build/$1 log=$root/build/configure-$1.log home fresh=()
    local stamp=$folder/.configured
    shift
    if [[ -f $folder/CMakeCache.txt ]]; then
        home=$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$folder/CMakeCache.txt")
        [[ $home -ef $root ]] || fresh=(--fresh)
    fi
    if [[ $# -eq 0 && ${#fresh[@]} -eq 0 && -f $folder/build.ninja && $stamp -nt $root/CMakePresets.json ]]; then
        return
    fi
    if ! run_logged "Configuring build/$preset (seconds)" "$log" \
        cmake "${fresh[@]}" --preset "$preset" -S "$root" "$@"; then
        show_failure "$log"
        die "cmake could not configure build/$preset; its whole output is in $log"
    fi
    touch "$stamp"
}

require_writable() { # files and folders
    local path
    for path in "$@"; do
        [[ ! -e $path || -w $path ]] ||
            die "cannot write to $path" \
                "It belongs to another user: give this one the right to write there, or build in a copy of the tree."
    done
}

# One build at a time: a second caller waits for the first one.
lock_build() { # preset
    [[ -d $root/build ]] || require_writable "$root"
    mkdir -p "$root/build"
    require_writable "$root/build" "$root/build/.lock" "$root/build/$1"
    command -v flock >/dev/null || return 0
    exec 9>"$root/build/.lock"
    flock -n 9 && return
    say "Waiting for another build in $root/build …"
    flock 9
}

unlock_build() {
    exec 9>&-
}

# Configures a preset if need be and brings its programs up to date.
build() { # preset, how long it takes at first, options of the configuration (-D…) and targets (all if none)
    local preset=$1 duration=$2 log=$root/build/build-$1.log argument options=() targets=()
    shift 2
    for argument in "$@"; do
        case $argument in
        -*) options+=("$argument") ;;
        *) targets+=(--target "$argument") ;;
        esac
    done
    lock_build "$preset"
    configure "$preset" "${options[@]}"
    if ! run_logged "Building build/$preset (the first time $duration)" "$log" \
        cmake --build "$root/build/$preset" "${targets[@]}"; then
        show_failure "$log"
        die "the build in build/$preset failed; its whole output is in $log"
    fi
    unlock_build
}
