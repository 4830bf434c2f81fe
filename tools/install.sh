#!/usr/bin/env bash
# Installs the packages of tools/packages that are missing, and does nothing, the network least
# of all, when none is. Without the right to install it prints the line that would, and fails.
# Speaks on standard error only: the output belongs to the command that is about to run.
set -euo pipefail
exec </dev/null >&2

# Another system than Debian brings its own packages; there the build says what it misses.
command -v dpkg-query >/dev/null || exit 0

mapfile -t wanted < <(grep -v '^#' "$(dirname "${BASH_SOURCE[0]}")/packages")
installed=$(dpkg-query -W -f='${Package} ${db:Status-Status}\n' "${wanted[@]}" 2>/dev/null || true)
missing=()
for package in "${wanted[@]}"; do
    grep -qxF "$package installed" <<<"$installed" || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

install=(apt-get install -y --no-install-recommends "${missing[@]}")
as_root=()
if [ "$(id -u)" -ne 0 ]; then
    as_root=(sudo)
    # sudo asks for a password on the terminal itself, so only where there is one.
    (: </dev/tty) 2>/dev/null || as_root=(sudo -n)
    if ! command -v sudo >/dev/null || ! "${as_root[@]}" true 2>/dev/null; then
        echo "Missing packages. Run this as root, then try again: ${install[*]}"
        exit 1
    fi
fi

echo "Installing ${missing[*]} ..."
apt() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive "$@" -qq -o DPkg::Lock::Timeout=300
}
log=$(mktemp)
trap 'rm -f "$log"' EXIT
# The lists of packages that the machine has are good enough as long as they lead to the packages.
if ! apt "${install[@]}" >"$log" 2>&1; then
    apt apt-get update >"$log" 2>&1 || true
    if ! apt "${install[@]}" >>"$log" 2>&1; then
        cat "$log"
        echo "The packages could not be installed: ${missing[*]}"
        exit 1
    fi
fi
