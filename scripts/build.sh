# Configuring and building a preset. Sourced by ./run and ./test.
# shellcheck shell=bash
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
: "${root:?names the folder of the project}"

# ccache shortens a second build; nothing depends on it. It keeps nothing of what begins with pre-compiled headers
# unless it is told that no source asks for the time, or whether a macro of theirs is defined.
export CCACHE_SLOPPINESS=${CCACHE_SLOPPINESS:-pch_defines,time_macros,include_file_mtime,include_file_ctime}

build_preset()
{
    local preset=$1
    shift
    local launcher=()
    command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    echo "Building preset $preset in build/$preset"
    (
        cd "$root" || exit
        cmake --preset "$preset" "${launcher[@]}" -DTIDELOFT_TEST_TIMEOUT="${TIDELOFT_TEST_TIMEOUT:-300}" \
            --log-level=WARNING
        cmake --build --preset "$preset" "$@"
    )
}
