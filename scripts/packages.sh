# What the project needs from Debian, and how it gets there. Sourced by ./run and ./test.
# shellcheck shell=bash
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
: "${root:?names the folder of the project}"

readonly packageLists="$root/packaging/debian-packages"

# The packages of the named lists, one a line. A list that is not there is a mistake in the script that names it.
listed_packages()
{
    local list
    for list in "$@"; do
        grep -v -e '^#' -e '^$' "$packageLists/$list.txt" || return
    done
}

is_installed()
{
    [[ $(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null) == installed ]]
}

missing_packages()
{
    local listed package
    listed=$(listed_packages "$@") || return
    while read -r package; do
        is_installed "$package" || printf '%s\n' "$package"
    done <<<"$listed"
}

# The number of the release that runs here, such as 12; a release that is not out yet has a name only.
system_release()
{
    (. /etc/os-release && echo "${VERSION_ID:-${VERSION_CODENAME:-unknown}}")
}

# Prints the command that gives root's rights without a question, or fails. Root needs none: an empty line.
root_command()
{
    if ((EUID == 0)); then
        echo
    elif command -v sudo >/dev/null && { [[ -t 0 ]] || sudo -n true 2>/dev/null; }; then
        echo sudo
    else
        return 1
    fi
}

# Installs what is missing of the named lists; exits with 3 when that is not possible, and with 2 without a list.
ensure_packages()
{
    local names missing become line
    if ! command -v dpkg-query >/dev/null; then
        echo "No Debian packages here: installed software is taken as it is." >&2
        return 0
    fi
    names=$(missing_packages "$@") || exit 2
    [[ -n $names ]] || return 0
    mapfile -t missing <<<"$names"
    line="apt-get install --no-install-recommends ${missing[*]}"
    echo "Missing: ${missing[*]}"
    if ! become=$(root_command); then
        printf 'They can be installed by root only. As root:\n\n    %s\n\n' "$line" >&2
        exit 3
    fi
    install_packages "$become" "${missing[@]}" && return 0
    printf 'That did not work. As root:\n\n    apt-get update && %s\n\n' "$line" >&2
    exit 3
}

# BECOME is empty or "sudo"; the rest are packages. Asks nothing.
install_packages()
{
    local become=$1
    shift
    local command=(env DEBIAN_FRONTEND=noninteractive apt-get -q -y)
    [[ -n $become ]] && command=("$become" "${command[@]}")
    "${command[@]}" update && "${command[@]}" install --no-install-recommends "$@" </dev/null
}
