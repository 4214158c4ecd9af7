# shellcheck shell=bash disable=SC2034
# Functions of run, test and bench, which source this file in the top folder.
set -euo pipefail

build_packages=(ca-certificates cmake g++ ninja-build qtbase5-dev libqt5svg5-dev libkf5holidays-dev nlohmann-json3-dev)
run_packages=(libqt5sql5-sqlite libqt5svg5 libkf5holidays5 qttranslations5-l10n fonts-dejavu-core)

say() { printf '%s\n' "$*" >&2; }

# Other locales show Cyrillic file names and messages as question marks.
case "${LC_ALL:-${LC_CTYPE:-${LANG:-}}}" in
*[Uu][Tt][Ff]*8*) ;;
*) export LC_ALL=C.UTF-8 ;;
esac

as_root() {
    if [ "$(id -u)" = 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        say "Administrator rights are needed for: $*"
        say "Run this as root, or install sudo."
        return 1
    fi
}

missing_packages() {
    local package
    for package in "$@"; do
        [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || echo "$package"
    done
}

# Installs those of the given Debian packages that are missing.
install_packages() {
    if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
        say "This system is not Debian. Install the equivalents of these Debian packages:"
        say "  $*"
        say "Continuing with the installed packages."
        return 0
    fi
    local missing
    mapfile -t missing < <(missing_packages "$@")
    [ ${#missing[@]} -gt 0 ] || return 0
    say "Installing: ${missing[*]}"
    as_root apt-get update -q >&2
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}" >&2
}

# Builds everything into build/. Passes its arguments to the configuration.
build() {
    local log=build/build.log
    mkdir -p build
    say "Building in build/ …"
    if ! { cmake --preset release "$@" && cmake --build build; } >"$log" 2>&1; then
        tail -n 60 "$log" >&2
        say "The build failed. The full log is $log."
        return 1
    fi
    if grep -q 'warning:' "$log"; then
        grep 'warning:' "$log" >&2
    fi
}
