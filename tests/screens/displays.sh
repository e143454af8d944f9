# Screens that nobody sees: an X server in memory, and a Wayland desktop in one. Sourced by tests/screens/run.
# shellcheck shell=bash
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
: "${root:?names the folder of the project}" "${programs:?names the folder of the build}"
: "${quietly:?starts a program without what a person has set for their own}"

screen=()        # the environment of a program on the open screen
screenPids=()    # from the innermost outwards
screenDisplay=   # of the X server whose picture is the screen's
scratch=         # runtime folder and home

open_server()
{
    local number
    scratch=$(mktemp -d)
    mkfifo "$scratch/number"
    Xvfb -displayfd 3 -screen 0 3840x2160x24 -nolisten tcp 3>"$scratch/number" 2>"$1/xvfb.log" &
    screenPids=("$!")
    read -r number <"$scratch/number" || fail "Xvfb did not start; see $1/xvfb.log"
    screenDisplay=":$number"
}

# Full screen is something that a window manager gives.
open_x11()
{
    open_server "$1"
    DISPLAY=$screenDisplay openbox --sm-disable >"$1/openbox.log" 2>&1 &
    screenPids=("$!" "${screenPids[@]}")
    wait_for "the window manager" env DISPLAY="$screenDisplay" xdotool get_desktop
    screen=(QT_QPA_PLATFORM=xcb "DISPLAY=$screenDisplay" "XDG_RUNTIME_DIR=$scratch")
}

# Weston's own screen in memory has no keyboard, without which nobody signs in: this one has the server's. It is
# large, because Weston ends programs that it has told to fill a screen smaller than their windows may be.
open_wayland()
{
    local outputScale=1
    [[ $(basename "$1") == *screen-of-scale* ]] && outputScale=$2
    open_server "$1"
    chmod 700 "$scratch"
    env -u WAYLAND_DISPLAY DISPLAY="$screenDisplay" XDG_RUNTIME_DIR="$scratch" weston \
        --backend=x11-backend.so --use-pixman --scale="$outputScale" \
        --width=$((3840 / outputScale)) --height=$((2160 / outputScale)) \
        --socket=wayland-screens --no-config --idle-time=0 --log="$1/weston.log" >/dev/null 2>&1 &
    screenPids=("$!" "${screenPids[@]}")
    wait_for "weston" test -S "$scratch/wayland-screens"
    screen=(QT_QPA_PLATFORM=wayland WAYLAND_DISPLAY=wayland-screens "XDG_RUNTIME_DIR=$scratch")
    wait_for "weston's desktop" screen_has_colours 50
}

close_screen()
{
    local pid
    for pid in "${screenPids[@]}"; do
        kill "$pid" 2>/dev/null || continue
        wait "$pid" 2>/dev/null || true
    done
    screenPids=()
    [[ -z $scratch ]] || rm -rf "$scratch"
    scratch=
}

# WHAT, and a command that succeeds once it is there; ends the program when it is not after 30 s.
wait_for()
{
    local what=$1 end=$((SECONDS + 30))
    shift
    until "$@" >/dev/null 2>&1; do
        ((SECONDS < end)) || fail "$what did not come"
        sleep 0.1
    done
}

take_picture()
{
    DISPLAY=$screenDisplay import -silent -window root "$1"
}

screen_has_colours()
{
    take_picture "$scratch/colours.png"
    (($(identify -format %k "$scratch/colours.png") >= $1))
}

# How many dots of the screen have the colour of the client's buttons.
button_dots()
{
    take_picture "$scratch/now.png"
    convert "$scratch/now.png" -fill black +opaque '#3b8beb' -fill white -opaque '#3b8beb' \
        -format '%[fx:round(mean*w*h)]' info:
}

# Fails unless the client has lived until now, and goes when it is told to.
end_client()
{
    local ended=0 terminated=$((128 + 15))
    kill "$1" 2>/dev/null || true
    wait "$1" 2>/dev/null || ended=$?
    ((ended == terminated)) || { echo "The client ended with $ended"; return 1; }
}

# Starts the client at SCALE, signed out and in English, waits for its page, and keeps a picture of it.
client_appears()
{
    local folder=$1 scale=$2 client end=$((SECONDS + 60)) status=1
    mkdir -p "$scratch/config/TideLoft"
    printf '[General]\nlanguage=en\n' >"$scratch/config/TideLoft/TideLoft.conf"
    "${quietly[@]}" "${screen[@]}" ${scale:+QT_SCALE_FACTOR="$scale"} XDG_CONFIG_HOME="$scratch/config" \
        XDG_DATA_HOME="$scratch/data" "$programs/app/tideloft" >"$folder/client.log" 2>&1 &
    client=$!
    while ((SECONDS < end)) && kill -0 "$client" 2>/dev/null; do
        # The button to sign in is 276 x 40 px, and more at a larger scale.
        if (($(button_dots) > 5000)); then
            take_picture "$folder/screen.png" && status=0
            break
        fi
        sleep 0.3
    done
    end_client "$client" || status=1
    return "$status"
}
