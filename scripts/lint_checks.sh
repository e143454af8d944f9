# The checks of scripts/lint: check_NAME says what it found in the tree, where it is started, and fails.
# shellcheck shell=bash
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
: "${root:?names the folder of the project}" "${tree:?names the tree}" "${database:?is for compile commands}"

# clang 14 knows coroutines, but not by the names that the headers of g++ 12 and Boost ask for.
readonly asForGcc=(-D__cpp_impl_coroutine=201902L -DBOOST_ASIO_HAS_CO_AWAIT -DBOOST_ASIO_HAS_STD_COROUTINE)

# What is in the tree or about to be, each name followed by NUL; nothing that is built.
files()
{
    git ls-files -z --cached --others --exclude-standard -- "$@"
}

shell_scripts()
{
    { files '*.sh'; git grep -z -l --untracked -E '^#!(/usr)?/bin/(env )?(ba)?sh( |$)'; } | sort -z -u
}

python_scripts()
{
    { files '*.py'; git grep -z -l --untracked -E '^#!(/usr)?/bin/(env )?python3( |$)'; } | sort -z -u
}

# The compile commands, and what sources include that a build makes: the output of moc. No target is built for
# it: the one for all of moc's output would compile the libraries first.
make_database()
{
    [[ $tree == "$root" ]] || return 0
    [[ ! -d $database ]] || find "$database" -name '*.moc_parameters' -delete # of tests that are gone, too
    cmake --preset dev -B "$database" -DCMAKE_CXX_COMPILER_LAUNCHER= -DCMAKE_CXX_FLAGS="${asForGcc[*]}" \
        -DTIDELOFT_PCH=OFF --log-level=WARNING >/dev/null || return
    find "$database" -name AutogenInfo.json -print0 \
        | xargs -0 -P "$(nproc)" -I INFO cmake -E cmake_autogen INFO Debug || return
    find "$database" -name '*.moc_parameters' -print0 \
        | xargs -0 -P "$(nproc)" -I FILE "$(qtpaths6 --query QT_INSTALL_LIBEXECS)/moc" @FILE
}

# Runs COMMAND FILE for each of the files, one a processor, but not for those in which it has found nothing and that
# have not changed since. What passed is kept as NAME. SETTINGS is the name of files that the command goes by, or ''.
on_each_changed()
{
    local name=$1 settings=$2
    /usr/bin/python3 -B "$root/scripts/lint_changed.py" "$database/units" "$database/clean/$name" "$settings" "${@:3}"
}

check_clang_format()
{
    files '*.cpp' '*.h' | xargs -0 clang-format-14 --dry-run -Werror
}

# Names in the file "sources" what a checker looks at that takes most of its time for headers: the units of a unity
# build, and sources that are in none, each followed by NUL. Their compile commands are in the folder "units".
find_units()
{
    make_database || return
    files '*.cpp' | /usr/bin/python3 -B "$root/scripts/lint_units.py" \
        "$tree" "$database" "$database/units" .clang-tidy >"$database/sources"
}

# Its findings are errors because .clang-tidy says so. Two checks look at nothing that is included, so they get each
# source that has something for them.
check_clang_tidy()
{
    local status=0 names='^ *(using [A-Za-z_:]+::[A-Za-z_]+;|namespace [A-Za-z_]+ = )'
    local look=(clang-tidy-14 --quiet -p "$database/units" --extra-arg=-Wno-unknown-warning-option)
    find_units || return
    on_each_changed clang-tidy .clang-tidy "${look[@]}" <"$database/sources" || status=1
    { git grep -z -l --untracked -E "$names" -- '*.cpp' || true; } \
        | on_each_changed clang-tidy-names .clang-tidy "${look[@]}" \
            --checks='-*,misc-unused-using-decls,misc-unused-alias-decls' || status=1
    return "$status"
}

# A constant of a test is made once, and none is made of another source's: there is no order to get wrong. A name may
# shadow one of another source of its unit.
check_clazy()
{
    local status=0 tests='(^|/units/)tests/' look=(clazy-standalone -p "$database/units" --extra-arg=-Werror
        --extra-arg=-Wno-unknown-warning-option --extra-arg=-Wno-shadow
        --header-filter='/(app|net|crypto|local_files|ui|service|tests|bench)/[^.]+\.(h|cpp)$')
    find_units || return
    { grep -z -v -E "$tests" "$database/sources" || true; } \
        | on_each_changed clazy '' "${look[@]}" --checks=level1 || status=1
    { grep -z -E "$tests" "$database/sources" || true; } \
        | on_each_changed clazy '' "${look[@]}" --checks=level1,no-non-pod-global-static || status=1
    return "$status"
}

# The toolkit's headers are not read: what has to be known of them is in the library "qt" and in cppcheck.cfg.
check_cppcheck()
{
    files '*.cpp' | xargs -0 cppcheck -I. -j "$(nproc)" --quiet --error-exitcode=1 --std=c++20 \
        --enable=warning,performance,portability --library=qt --library=scripts/lint.d/cppcheck.cfg \
        --suppressions-list=scripts/lint.d/cppcheck.txt --template='{file}:{line}: {severity}: {message} [{id}]'
}

check_shellcheck()
{
    shell_scripts | xargs -0 shellcheck -x
}

# Texts in Swedish are in files of their own (*.sv.*), or their words are in the list. What the fuzzers keep is
# bytes, and a licence is as it was given.
check_codespell()
{
    files ':!*.sv.*' ':!LICENSES' ':!tests/fuzz/corpus' | xargs -0 codespell --ignore-words=scripts/lint.d/words.txt
}

check_reuse()
{
    reuse lint
}

check_lengths()
{
    /usr/bin/python3 -B "$root/scripts/lengths.py" scripts/lint.d/long_headers.txt
}

check_python()
{
    python_scripts | xargs -0 pyflakes3
}

# What is installed, and the packages that it comes in. In another tree there is nothing to make packages of.
check_packaging()
{
    if [[ $tree == "$root" ]]; then
        packaging/check
    else
        packaging/check --papers
    fi
}

check_self_test()
{
    self_test
}
