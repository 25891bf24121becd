# shellcheck shell=sh
# Sourced by ./check, ./demo and ./bench: gets the Debian packages that are missing, and runs noisy
# commands quietly.

started=$(date +%s)

# say TEXT: a line that tells how far things are, after the seconds since the start.
say() {
    printf '==> %4d s  %s\n' "$(($(date +%s) - started))" "$1"
}

# quietly LOG COMMAND...: runs COMMAND with its output in the file LOG, and shows the last of it if
# the command fails. Returns the command's status.
quietly() {
    log=$1
    shift
    "$@" >"$log" 2>&1 && return
    status=$?
    tail -n 100 "$log"
    printf '(all of it: %s)\n' "$log"
    return $status
}

# The names among the arguments of the packages that are not installed.
missing_packages() {
    for package in "$@"; do
        case $(dpkg-query -W -f '${Status}' "$package" 2>/dev/null) in
            *" installed") ;;
            *) printf '%s ' "$package" ;;
        esac
    done
}

as_root() {
    if [ "$(id -u)" = 0 ]; then
        "$@"
    else
        sudo "$@"
    fi
}

install_packages() {
    as_root apt-get update && as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y --no-install-recommends "$@"
}

# need_packages LOG PACKAGE...: installs the Debian packages that the program's build and the
# sandbox take, and the PACKAGEs, as far as they are missing. Where it can't, it says what is needed
# and returns 0, for the same tools may have come from elsewhere; it returns something else only
# when apt-get was asked and failed.
need_packages() {
    log=$1
    shift
    set -- g++ cmake ninja-build libncurses-dev util-linux mount iproute2 hostname "$@"
    if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
        say "Not a Debian system: this needs what these Debian packages hold: $*"
        return
    fi
    missing=$(missing_packages "$@")
    [ -n "$missing" ] || return 0
    if [ "$(id -u)" != 0 ] && ! command -v sudo >/dev/null; then
        say "There is no sudo; as root, run: apt-get install $missing"
        return
    fi
    say "Installing $missing"
    # shellcheck disable=SC2086  # one word per package
    install_packages $missing >"$log" 2>&1 && return
    status=$?
    say "These packages could not be got (no network?); install them, and run this again: $missing"
    say "What apt-get said is in $log"
    return $status
}
