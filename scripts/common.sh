# shellcheck shell=bash disable=SC2034
# Shared by run, test and bench: installs what is missing and builds. Sourced from the top folder.
set -euo pipefail

build_packages=(ca-certificates cmake g++ ninja-build qtbase5-dev libqt5svg5-dev libkf5holidays-dev nlohmann-json3-dev)
run_packages=(libqt5sql5-sqlite libqt5svg5 libkf5holidays5 qttranslations5-l10n fonts-dejavu-core)

say() { printf '%s\n' "$*" >&2; }

# A UTF-8 locale, or Cyrillic file names and messages come out as question marks.
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

# Installs the named Debian packages that are not there yet.
install_packages() {
    if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
        say "This system is not Debian. What Debian calls the following packages must be installed:"
        say "  $*"
        say "Going on with what is there."
        return 0
    fi
    local missing
    mapfile -t missing < <(missing_packages "$@")
    [ ${#missing[@]} -gt 0 ] || return 0
    say "Installing: ${missing[*]}"
    as_root apt-get update -q >&2
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}" >&2
}

# Builds everything into build/; further arguments go to the configuration.
build() {
    local log=build/build.log
    mkdir -p build
    say "Building in build/ …"
    if ! { cmake --preset release "$@" && cmake --build build; } >"$log" 2>&1; then
        tail -n 60 "$log" >&2
        say "The build failed. All of it is in $log."
        return 1
    fi
    if grep -q 'warning:' "$log"; then
        grep 'warning:' "$log" >&2
    fi
}
