# A Debian with nothing in it but its base, in the folder $system. Sourced by packaging/try, which has mounts and
# processes of its own.
# shellcheck shell=bash
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
: "${root:?names the folder of the project}"

declare -rA suites=([12]=bookworm [13]=trixie)
# Set by packaging/try: the release, where all of it lies, the system in there, the tar of its base, where Debian is
# got, and where ccache keeps what is compiled.
release=
folder=
system=
base=
mirror=http://deb.debian.org/debian
compiled=

say()
{
    printf '== Debian %s: %s\n' "$release" "$*"
}

inside()
{
    env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 HOME=/root DEBIAN_FRONTEND=noninteractive \
        ${compiled:+CCACHE_DIR=/var/cache/ccache CCACHE_UMASK=000 CCACHE_BASEDIR=/home CCACHE_NOHASHDIR=1} chroot "$system" "$@"
}

# Without any network but a loopback of its own: what is on this machine's ports is in nobody's way.
offline()
{
    export -f inside
    system=$system compiled=$compiled unshare --net \
        bash -euc 'ip link set lo up; inside "$@"' offline "$@"
}

# A person without rights, whose home is the only place to write in.
as_visitor()
{
    offline setpriv --reuid visitor --regid visitor --init-groups env HOME=/home/visitor USER=visitor "$@"
}

apt_inside()
{
    inside apt-get -q -y --no-install-recommends "$@" </dev/null >>"$folder/apt.log" 2>&1 \
        || { tail -n 20 "$folder/apt.log" >&2; return 1; }
}

make_base()
{
    say "Making a base"
    debootstrap --variant=minbase "${suites[$release]}" "$system" "$mirror" >"$folder/debootstrap.log"
    tar -C "$system" -cf "$base.new" . && mv "$base.new" "$base"
}

# The mounts are this process's own and end with it; the devices are those that debootstrap makes.
fresh_system()
{
    rm -rf --one-file-system "$system"
    mkdir -p "$system"
    if [[ -e $base ]]; then
        tar -C "$system" -xf "$base"
    else
        make_base
    fi
    mount -t proc proc "$system/proc"
    mkdir -p "$system/dev/shm" "$system/dev/pts"
    mount -t tmpfs -o mode=1777 tmpfs "$system/dev/shm"
    mount -t devpts -o newinstance,ptmxmode=0666 devpts "$system/dev/pts"
    cp /etc/resolv.conf "$system/etc/resolv.conf"
    printf '127.0.0.1 localhost\n::1 localhost\n' >"$system/etc/hosts" # which the installer of a system writes
    inside useradd --create-home --shell /bin/bash visitor
}

# What was compiled in earlier trials, for those who ask for it.
share_compiled()
{
    [[ -n $compiled ]] || return 0
    mkdir -p "$compiled" "$system/var/cache/ccache"
    chmod 1777 "$compiled"
    mount --bind "$compiled" "$system/var/cache/ccache"
    apt_inside install ccache
}

leave_system()
{
    umount --recursive "$system/proc" "$system/dev/shm" "$system/dev/pts"
    [[ -z $compiled ]] || umount "$system/var/cache/ccache" 2>/dev/null || true
}

# The tree as it is, with nothing that was built.
copy_checkout()
{
    local checkout="$system/home/visitor/tideloft"
    mkdir -p "$checkout"
    tar -C "$root" --exclude=./build --exclude=./tour --exclude=./.tideloft-local --exclude=./.git \
        --exclude=__pycache__ -cf - . | tar -C "$checkout" -xf -
    inside chown -R visitor: /home/visitor/tideloft
}
