#!/usr/bin/env bash
# Installs what the build and the tests need on Debian:
#
#   scripts/install_dependencies.sh [--run | --ci] [--quiet]
#
#   --run     only what scripts/run.sh needs: compiler, build tools, libraries, h5dump
#   --ci      also what .ci/run needs: clang, its sanitizers, formatter, linter, what the benchmarks compare with
#   --quiet   say nothing when everything is there
#
# Needs root or sudo, but only when something is missing. apt's configuration is left as it is.
set -euo pipefail
export LC_ALL=C DEBIAN_FRONTEND=noninteractive
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

run_packages=(g++ cmake ninja-build pkg-config libtclap-dev libkainjow-mustache-dev libhdf5-dev hdf5-tools)
test_packages=(git libgtest-dev libgmock-dev libbenchmark-dev python3 python3-h5py python3-jsonschema mandoc zsh
    dpkg-dev file lintian tidy chromium chromium-driver)
ci_packages=(clang clang-format clang-tidy llvm shellcheck rapidjson-dev libvalijson-dev)

# The JSON library is needed in exactly this version. A release of Debian that has another one takes the package of the
# release that carries it, which is for every architecture and depends on nothing.
json_package=nlohmann-json3-dev
json_version=3.11.3
json_release=trixie

apt_options=(-o "DPkg::Lock::Timeout=120" -o "Acquire::Retries=2" -o "Acquire::http::Timeout=30"
    -o "Acquire::Languages=none" -o "Dpkg::Use-Pty=0")

installed_version() { # package
    { dpkg-query -W -f '${db:Status-Status} ${Version}\n' "$1" 2>/dev/null || true; } | sed -n 's/^installed //p'
}

# Prints those of the packages that are not installed.
not_installed() {
    local installed package
    installed=$({ dpkg-query -W -f '${db:Status-Status} ${Package}\n' "$@" 2>/dev/null || true; } |
        sed -n 's/^installed //p')
    for package in "$@"; do
        grep -qxF -- "$package" <<<"$installed" || printf '%s\n' "$package"
    done
}

json_is_installed() {
    [[ $(installed_version "$json_package") == "$json_version"* ]]
}

# The sanitizers' runtime is packaged for each version of clang; the distribution's default one counts.
clang_runtime_package() {
    local clang
    clang=$({ dpkg-query -W -f '${Depends}' clang || apt-cache depends --important clang || true; } 2>/dev/null |
        sed -nE 's/.*\bclang-([0-9]+).*/\1/p')
    [[ -z $clang ]] || printf 'libclang-rt-%s-dev\n' "$clang"
}

# Sets wanted (packages that the level asks for) and missing.
find_missing() {
    local runtime list
    wanted=("${run_packages[@]}")
    if [[ $level != run ]]; then
        wanted+=("${test_packages[@]}")
        # Node.js from elsewhere brings its own npm, and Debian's would take its place.
        command -v npm >/dev/null || wanted+=(nodejs npm)
    fi
    if [[ $level == ci ]]; then
        runtime=$(clang_runtime_package)
        wanted+=("${ci_packages[@]}" ${runtime:+"$runtime"})
    fi
    list=$(not_installed "${wanted[@]}")
    mapfile -t missing < <(printf '%s' "$list")
}

# Names those of the packages that apt could not install, because it does not know them.
without_candidate() {
    local known package
    known=$(apt-cache policy "$@" 2>/dev/null |
        awk '/^[^ ]/ {name = $1} /^  Candidate:/ && $2 != "(none)" {print name}')
    for package in "$@"; do
        grep -qxF -- "$package:" <<<"$known" || printf '%s\n' "$package"
    done
}

fail_with_log() { # message, advice …
    say "----- errors in $log:"
    grep -E '^(E|W|Err|dpkg: error)' "$log" | head -n 12 >&2 || tail -n 12 "$log" >&2
    say "-----"
    keep_log=1
    die "$@" "The whole output is in $log"
}

update_lists() {
    run_logged "Fetching apt's package lists (a few seconds)" "$log" apt-get "${apt_options[@]}" \
        -o APT::Update::Error-Mode=any update
}

# Makes sure that apt knows the packages; its lists are empty on a fresh system.
require_candidates() {
    local unknown update_failed=
    unknown=$(without_candidate "$@")
    [[ -n $unknown ]] || return 0
    update_lists || update_failed=1
    unknown=$(without_candidate "$@")
    [[ -n $unknown ]] || return 0
    [[ -z $update_failed ]] ||
        fail_with_log "apt could not fetch its package lists, and does not know: ${unknown//$'\n'/ }" \
            "Check the network and the sources below /etc/apt, then run this again."
    die "apt knows no package: ${unknown//$'\n'/ }" \
        "Check that the sources below /etc/apt name Debian's component 'main'."
}

download_size() { # packages
    { apt-get "${apt_options[@]}" install --no-install-recommends --assume-no "$@" 2>/dev/null || true; } |
        sed -nE 's/^Need to get (.*) of archives.*/\1 to fetch/p; s/^After this operation, (.*) of add.*/\1 on disk/p' |
        paste -sd ' ' | sed 's/fetch /fetch, /'
}

apt_install() { # packages
    local size
    size=$(download_size "$@")
    run_logged "Installing $* with what they need${size:+ ($size)}" "$log" \
        apt-get "${apt_options[@]}" -q -y --no-install-recommends install "$@"
}

install_packages() { # packages
    require_candidates "$@"
    apt_install "$@" && return
    # Lists that are older than the mirror's state name files that are there no more.
    if grep -q '^E: Failed to fetch' "$log"; then
        say "Some packages could not be fetched; trying again with new package lists."
        if update_lists && apt_install "$@"; then
            return
        fi
    fi
    fail_with_log "apt could not install: $(not_installed "$@" | tr '\n' ' ')" \
        "The lines above say why; when that is mended (network, disk space, another apt at work), run this again."
}

# Prints the mirror that apt takes this release of Debian from.
debian_mirror() {
    # shellcheck disable=SC2016
    apt-get indextargets --format '$(ORIGIN) $(COMPONENT) $(LABEL) $(REPO_URI)' 'Created-By: Packages' |
        awk '$1 == "Debian" && $2 == "main" && $3 == "Debian" && !found++ {print $4}'
}

# Runs an apt command that sees nothing but the release with the JSON package, in folders of its own.
apt_of_json_release() { # apt command and its arguments
    local command=$1
    shift
    "$command" "${apt_options[@]}" -o "Dir::Etc::SourceList=$work/sources.list" -o Dir::Etc::SourceParts=/dev/null \
        -o Dir::Etc::Preferences=/dev/null -o Dir::Etc::PreferencesParts=/dev/null -o APT::Default-Release= \
        -o "Dir::State=$work/state" -o "Dir::Cache=$work/cache" -o Dir::State::Status=/var/lib/dpkg/status \
        -o APT::Update::Error-Mode=any -o Acquire::AllowInsecureRepositories=false "$@"
}

# Downloads the JSON package of the other release to $work, its signature checked by apt.
fetch_json_package() {
    local mirror=$1 keyring=/usr/share/keyrings/debian-archive-keyring.gpg source_options='' version
    [[ ! -f $keyring ]] || source_options="[signed-by=$keyring] "
    printf 'deb %s%s %s main\n' "$source_options" "$mirror" "$json_release" >"$work/sources.list"
    mkdir -p "$work/state/lists/partial" "$work/cache/archives/partial"
    apt_of_json_release apt-get update || return
    version=$(apt_of_json_release apt-cache madison "$json_package" | awk -v wanted="$json_version" \
        -F ' *[|] *' 'index($2, wanted) == 1 && !found++ {print $2}')
    if [[ -z $version ]]; then
        printf 'E: %s has no %s %s\n' "$json_release" "$json_package" "$json_version"
        return 1
    fi
    (cd "$work" && apt_of_json_release apt-get download "$json_package=$version")
}

json_header_version() {
    local header=/usr/include/nlohmann/detail/abi_macros.hpp part
    for part in MAJOR MINOR PATCH; do
        sed -nE "s/^#define NLOHMANN_JSON_VERSION_$part +([0-9]+).*/\\1/p" "$header" 2>/dev/null
    done | paste -sd .
}

refuse_newer_json() {
    local installed
    installed=$(installed_version "$json_package")
    if [[ -n $installed ]] && dpkg --compare-versions "$installed" gt "$json_version-999"; then
        die "$json_package $installed is installed, version $json_version is needed" \
            "Remove it (apt-get remove $json_package) and run this again."
    fi
}

install_json() {
    local candidate mirror
    refuse_newer_json
    require_candidates "$json_package"
    candidate=$(apt-cache policy "$json_package" | awk '/^  Candidate:/ {print $2}')
    if [[ $candidate == "$json_version"* ]]; then
        install_packages "$json_package"
    else
        mirror=$(debian_mirror)
        [[ -n $mirror ]] || update_lists || true
        mirror=$(debian_mirror)
        [[ -n $mirror ]] ||
            die "apt has no source for Debian's main component, so $json_package $json_version cannot be fetched" \
                "Install version $json_version of the JSON library by hand and run this again."
        run_logged "Fetching $json_package $json_version (this release has $candidate), a few seconds" "$log" \
            fetch_json_package "$mirror" ||
            fail_with_log "could not fetch $json_package $json_version of release '$json_release' from apt's mirror" \
                "Check the network, or install that version of the package by hand, and run this again."
        run_logged "Installing $json_package $json_version" "$log" dpkg -i "$work/$json_package"_*.deb ||
            fail_with_log "dpkg could not install $json_package $json_version"
    fi
    [[ $(json_header_version) == "$json_version" ]] ||
        die "after its installation $json_package is version '$(json_header_version)', not $json_version"
}

clean_up() {
    rm -rf -- "$work"
    [[ -n ${keep_log:-} ]] || rm -f -- "$log"
}

become_root() {
    if ((EUID == 0)); then
        return
    elif command -v sudo >/dev/null; then
        say "Some packages are missing: $lacking. Installing them with sudo."
        exec sudo -- "$root/scripts/install_dependencies.sh" "${arguments[@]}"
    fi
    die "some packages are missing, and installing them needs root or sudo: $lacking" \
        "As root, run: $(printf '%q' "$root/scripts/install_dependencies.sh")$level_argument"
}

read_arguments() {
    level="test"
    level_argument=
    quiet=
    local argument
    for argument in "$@"; do
        case $argument in
        --run | --ci) level=${argument#--} level_argument=" $argument" ;;
        --quiet) quiet=1 ;;
        *) die "unknown argument '$argument'" "Usage: install_dependencies.sh [--run | --ci] [--quiet]" ;;
        esac
    done
}

arguments=("$@")
read_arguments "$@"
if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    say "No apt on this system: the packages that Debian calls ${run_packages[*]} ${test_packages[*]}"
    say "and version $json_version of the JSON library ($json_package) are taken to be there already."
    exit 0
fi
find_missing
if ((${#missing[@]} == 0)) && json_is_installed; then
    [[ -n $quiet ]] || say "Everything that is needed is installed."
    exit 0
fi
lacking="${missing[*]}"
json_is_installed || lacking="${lacking:+$lacking }$json_package=$json_version"
become_root

work=$(mktemp -d)
chmod 755 "$work" # apt fetches as a user of its own
log=$(mktemp "${TMPDIR:-/tmp}/orvante-install-XXXXXX.log")
trap clean_up EXIT
if ((${#missing[@]} > 0)); then
    install_packages "${missing[@]}"
    # Only now is it certain which version of clang is the default one.
    find_missing
    ((${#missing[@]} == 0)) || install_packages "${missing[@]}"
fi
json_is_installed || install_json
say "Everything that is needed is installed."
