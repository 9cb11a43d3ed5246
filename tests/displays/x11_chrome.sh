#!/usr/bin/env bash
# Drives the application's own window chrome on a real X server (Xvfb) with xdotool:
#   drag by the title bar -> the window moves by the drag distance
#   double-click the title -> maximized to the available area, again -> restored
#   drag the cursor to within 3 px of the screen edge -> refused, and logged
#   minimize -> the window lands in the first mini-mode slot (bottom left, 160 x 30)
# Geometry comes from xwininfo; the buttons' places from the application's log.
# Usage: x11_chrome.sh <linkdeck executable>
set -u
app=$1
work=$(mktemp -d)
xvfb_pid=
app_pid=
cleanup() {
    [ -n "$app_pid" ] && kill "$app_pid" 2>/dev/null && wait "$app_pid" 2>/dev/null
    [ -n "$xvfb_pid" ] && kill "$xvfb_pid" 2>/dev/null && wait "$xvfb_pid" 2>/dev/null
    rm -rf "$work"
}
trap cleanup EXIT
fail() {
    echo "FAIL: $*"
    echo "--- application log ---"
    grep -v "^QStandardPaths" "$work/app.log" | tail -40
    exit 1
}

# A free display number: Xvfb refuses one that is taken and then exits.
for display in $(seq 90 140); do
    [ -e "/tmp/.X11-unix/X$display" ] || [ -e "/tmp/.X$display-lock" ] && continue
    Xvfb ":$display" -screen 0 1024x768x24 -nolisten tcp >"$work/xvfb.log" 2>&1 &
    xvfb_pid=$!
    for _ in $(seq 50); do
        [ -e "/tmp/.X11-unix/X$display" ] && break
        sleep 0.1
    done
    kill -0 "$xvfb_pid" 2>/dev/null && break
    xvfb_pid=
done
[ -n "$xvfb_pid" ] || fail "no Xvfb display could be started"
export DISPLAY=":$display"

QT_QPA_PLATFORM=xcb LINKDECK_SETTINGS="$work/settings.ini" XDG_CONFIG_HOME="$work/xdg" \
    QT_LOGGING_RULES="*.debug=true;qt.*.debug=false" \
    "$app" --no-splash >"$work/app.out" 2>"$work/app.log" &
app_pid=$!

window=$(xdotool search --sync --onlyvisible --name '^LinkDeck$' 2>/dev/null | head -1)
[ -n "$window" ] || fail "no LinkDeck window"
for _ in $(seq 50); do
    grep -q "XFramePlugin: title buttons" "$work/app.log" && break
    sleep 0.1
done

geometry() { # x y width height of the window
    xwininfo -id "$window" | awk '/Absolute upper-left X/{x=$NF} /Absolute upper-left Y/{y=$NF}
        /^ *Width/{w=$NF} /^ *Height/{h=$NF} END{print x, y, w, h}'
}
settle() { sleep 0.4; }
expect() { # what, expected geometry
    local now
    now=$(geometry)
    [ "$now" = "$2" ] || fail "$1: geometry '$now', expected '$2'"
    echo "ok: $1 ($now)"
}
drag() { # from x y to x y, in screen coordinates
    xdotool mousemove "$1" "$2" mousedown 1
    sleep 0.1
    xdotool mousemove "$(( ($1 + $3) / 2 ))" "$(( ($2 + $4) / 2 ))"
    sleep 0.1
    xdotool mousemove "$3" "$4"
    sleep 0.1
    xdotool mouseup 1
    settle
}

read -r x y w h < <(geometry)
echo "start: $x $y $w $h"
# A point of the title bar away from its icon and buttons.
grab_x=$(( x + w / 2 ))
grab_y=$(( y + 10 ))

drag "$grab_x" "$grab_y" $(( grab_x + 60 )) $(( grab_y + 40 ))
expect "drag by (60, 40)" "$(( x + 60 )) $(( y + 40 )) $w $h"
x=$(( x + 60 )); y=$(( y + 40 )); grab_x=$(( grab_x + 60 )); grab_y=$(( grab_y + 40 ))

# One jump, so that no allowed step comes before the refused one.
xdotool mousemove "$grab_x" "$grab_y" mousedown 1
sleep 0.1
xdotool mousemove 1 "$grab_y"
sleep 0.1
xdotool mouseup 1
settle
expect "drag to 1 px from the left edge refused" "$x $y $w $h"
grep -q "mouseMoveEvent : Move out of available area!!" "$work/app.log" ||
    fail "the refused drag was not logged"

xdotool mousemove "$grab_x" "$grab_y" click --repeat 2 --delay 80 1
settle
expect "double-click maximizes to the available area" "0 0 1024 768"
xdotool mousemove 512 10 click --repeat 2 --delay 80 1
settle
expect "second double-click restores" "$x $y $w $h"

read -r min_x min_y < <(sed -n 's/.*title buttons minimize=\([0-9-]*\),\([0-9-]*\) .*/\1 \2/p' \
    "$work/app.log" | tail -1)
[ -n "${min_x:-}" ] || fail "the application did not log its title buttons"
xdotool mousemove $(( x + min_x )) $(( y + min_y )) click 1
settle
# Row 0 runs from 30 px above the available area's bottom edge (767) to 1 px above it.
expect "minimize lands in the first slot" "0 $(( 767 - 30 )) 160 30"
echo "PASS"
