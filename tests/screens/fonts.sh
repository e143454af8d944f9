# Sets of fonts, each as if nothing else were installed. Sourced by tests/screens/run.
# shellcheck shell=bash
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
: "${results:?names the folder of the results}"

readonly fontPackages="$results/packages"

# Unpacks the fonts that are listed and not installed. Asks for no rights: nothing of the system changes.
fetch_fonts()
{
    local package
    mkdir -p "$fontPackages"
    while read -r package; do
        [[ -d $fontPackages/$package ]] && continue
        (
            cd "$fontPackages"
            apt-get -q download "$package" >/dev/null 2>&1 ||
                fail "$package cannot be fetched; 'apt-get update' as root may help"
            dpkg-deb --extract "$package"_*.deb "$package.new"
            mv "$package.new" "$package"
        ) || exit
    done < <(listed_packages screen-fonts)
}

# The files of a package of fonts, unpacked or installed.
font_files()
{
    local folder="$fontPackages/fonts-$1"
    if [[ -d $folder ]]; then
        find "$folder" -name '*.otf' -o -name '*.ttf'
    else
        dpkg-query --listfiles "fonts-$1" | grep -e '\.otf$' -e '\.ttf$'
    fi
}

# Writes FOLDER/fonts.conf, for which the fonts of the named packages are all that there is.
write_font_settings()
{
    local folder=$1 package file
    shift
    rm -rf "$folder"
    mkdir -p "$folder/fonts"
    for package in "$@"; do
        while read -r file; do
            ln -s "$file" "$folder/fonts/"
        done < <(font_files "$package")
        [[ -n $(font_files "$package") ]] || fail "fonts-$package has no fonts"
    done
    cat >"$folder/fonts.conf" <<END
<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "fonts.dtd">
<fontconfig>
  <dir>$folder/fonts</dir>
  <cachedir>$folder/cache</cachedir>
  <include ignore_missing="yes">/etc/fonts/conf.d</include>
</fontconfig>
END
}
