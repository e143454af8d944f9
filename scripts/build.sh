# Configuring and building a preset. Sourced by ./run and ./test.
# shellcheck shell=bash
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
: "${root:?names the folder of the project}"

# ccache shortens a second build; nothing depends on it.
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
