# What scripts/lint finds in a tree that is clean, and in the same tree with faults planted for each check.
# shellcheck shell=bash
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
: "${root:?names the folder of the project}"

# For each check its faults, planted by plant_NAME in the folder it is started in, and words that have to be said:
# a line for each fault.
declare -rA faultWords=(
    [clang-format]='sum.cpp.*clang-format-violations'
    [lengths]=$'sum.cpp: 3[0-9][0-9] lines\nscripts/tell: many has 46 lines'
    [python]=$'count.py:.*undefined name\nscripts/tell:.*undefined name'
    [shellcheck]='SC2086'
    [codespell]='t[e]h ==> the'
    [reuse]='bare.cpp'
    [packaging]=$'Unknown key.*Misspelt\nComment has no \\[sv\\]\n"Encrypted"\n'\
$'48.png.*differ\ncomponent-name-missing\nunknown macro: .Xx'
    [cppcheck]='\[arrayIndexOutOfBounds\]'
    [clazy]='Wclazy-range-loop'
    [clang-tidy]=$'readability-function-size\nclang-analyzer-core.NullDereference\nmisc-unused-alias-decls\n'\
$'alone.cpp.*modernize-use-nullptr'
)

append()
{
    cat >>"$1"
}

plant_clang_format() { append net/sum.cpp <<<'int  other( );'; }
# shellcheck disable=SC2016  # what is planted is not put in here
plant_shellcheck() { append scripts/say <<<'rm $1'; }
plant_codespell() { append README.md <<<"And t""eh end."; }
plant_reuse() { append net/bare.cpp <<<'int bare();'; }
plant_cppcheck() { append net/sum.cpp <<<$'int beyond()\n{\n    int three[3] = {1, 2, 3};\n    return three[3];\n}'; }

plant_lengths()
{
    yes '// And on it goes.' | head -n 299 | append net/sum.cpp
    { echo 'def many():'; yes '    print(2)' | head -n 46; } | append scripts/tell
}

plant_python()
{
    append scripts/count.py <<<'print(uncounted)'
    append scripts/tell <<<'print(untold)'
}

plant_packaging()
{
    sed -i 's/^\[Service\]$/&\nMisspelt=yes/' packaging/systemd/tideloftd.service.in
    sed -i -e '/^Comment\[sv\]=/d' -e 's/^Terminal=.*/Terminal=Encrypted/' packaging/desktop/*.desktop
    cp packaging/icons/32.png packaging/icons/48.png
    sed -i '/<name>/d' packaging/desktop/*.metainfo.xml
    append packaging/man/tideloft.1 <<<'.Xx nothing'
}

plant_clazy()
{
    append net/sum.cpp <<'END'
QStringList names();
qsizetype lengths()
{
    qsizetype all = 0;
    for (const QString name : names())
        all += name.size();
    return all;
}
END
}

plant_clang_tidy()
{
    { echo 'int many(int count)'; echo '{'; yes '    count += 2;' | head -n 45; echo '    return count;'; echo '}'; } \
        | append net/sum.cpp
    append net/sum.cpp <<<$'int nothing(const int *value)\n{\n    return value == nullptr ? *value : 0;\n}'
    append net/sum.cpp <<<$'namespace numbers = std;'
    append net/alone.cpp <<<'const int *none = 0;'
}

# The first lines of a file: whose it is. COMMENT begins a line of comment.
notice()
{
    printf '%s SPDX-%s: 2026 The TideLoft developers\n%s SPDX-%s: MIT\n' "$1" FileCopyrightText "$1" License-Identifier
}

plain_settings()
{
    mkdir -p scripts LICENSES net build
    cp "$root"/.clang-{format,tidy} "$root"/.gitignore .
    cp "$root/LICENSES/MIT.txt" LICENSES
    cp -R "$root/scripts/lint.d" scripts
    sed -i '/^[^#]/d' scripts/lint.d/long_headers.txt
}

plain_sources()
{
    { notice //; printf '#include <QStringList>\n\nint sum(int left, int right)\n{\n    return left + right;\n}\n'; } \
        >net/sum.cpp
    { notice //; echo 'int alone();'; } >net/alone.cpp
    { notice '#'; echo 'print(1)'; } >scripts/count.py
    { echo '#!/usr/bin/env bash'; notice '#'; printf 'echo "%s"\n' "\$1"; } >scripts/say
    { printf '# A tree\n\n<!--\n'; notice ' '; echo '-->'; } >README.md
    { echo '#!/usr/bin/python3'; notice '#'; echo 'print(1)'; } >scripts/tell
    chmod +x scripts/say scripts/tell
}

# The project's own, as far as it is looked at without a build.
plain_packaging()
{
    cp -R "$root/packaging" .
    cp "$root/scripts/packages.sh" scripts
}

# How its sources are compiled, one of them in a unit, in the folder's own database.
plain_database()
{
    local headers unity=build/CMakeFiles/net.dir/Unity/unity_0_cxx.cxx source command entries=()
    headers=$(qtpaths6 --query QT_INSTALL_HEADERS)
    mkdir -p "${unity%/*}"
    printf '#include "%s"\n' "$PWD/net/sum.cpp" >"$unity"
    for source in net/alone.cpp "$unity"; do
        command="g++ -std=c++20 -fPIC -Wall -Werror -DQT_CORE_LIB -isystem $headers -isystem $headers/QtCore -c $source"
        entries+=("$(printf '{"directory": "%s", "file": "%s", "command": "%s"}' "$PWD" "$source" "$command")")
    done
    printf '[%s,\n%s]\n' "${entries[@]}" >build/compile_commands.json
}

# Whether WORDS have what each line of PATTERNS asks for; says for which they have not.
says_all()
{
    local words=$1 patterns=$2 pattern status=0
    while read -r pattern; do
        grep -q -e "$pattern" <<<"$words" || { printf 'nothing like: %s\n' "$pattern"; status=1; }
    done <<<"$patterns"
    return "$status"
}

# Whether the check NAME lets the plain tree pass, and says the right words of the one with the fault.
finds_its_fault()
{
    local name=$1 folder words
    folder=$(mktemp -d)
    (
        export tree=$folder database=$folder/build
        cd "$folder" || exit 1
        git init -q
        plain_settings
        plain_sources
        plain_database
        [[ $name != packaging ]] || plain_packaging
        words=$(run_check "$name" 2>&1) || { printf 'finds something in a clean tree:\n%s\n' "$words"; exit 1; }
        "plant_${name//-/_}"
        if words=$(run_check "$name" 2>&1); then
            echo "lets the planted fault pass"
        elif ! says_all "$words" "${faultWords[$name]}"; then
            printf 'is all that is said of the planted faults:\n%s\n' "$words"
        else
            exit 0
        fi
        exit 1
    )
    local ended=$?
    rm -rf "$folder"
    return "$ended"
}

# Of every check that finds faults, or of one.
self_test()
{
    local name words status=0
    for name in "${@:-${!faultWords[@]}}"; do
        if words=$(set +e; finds_its_fault "$name"); then
            printf '%-14s%s\n' "$name" "finds what is planted"
        else
            printf '%-14s%s\n' "$name" "$words"
            status=1
        fi
    done
    return "$status"
}
