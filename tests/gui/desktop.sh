# Functions for scripts that work the real program from outside: a screen of its own, real keys and clicks.
# Sourced by tests/gui/* and scripts/screenshots. Wants $MAROVANE, the path of the program.

# Says where a script ended that did not come to its end, also within a function.
set -o errtrace
trap 'echo "$0: line $LINENO: failed: $BASH_COMMAND" >&2' ERR

# xdotool reads what it shall type in the encoding of the locale.
export LC_ALL=C.UTF-8

# Pixels of a screen and of a program for each of those in which the scripts count.
SCALE=${SCALE:-1}

# Tries a command again and again, for at most three minutes. A machine that stood still in between has not tried.
wait_until() {
  local left=180 before=$SECONDS
  until "$@" >/dev/null 2>&1; do
    left=$((left - (SECONDS - before < 20 ? SECONDS - before : 1))) before=$SECONDS
    if [ $left -lt 0 ]; then
      echo "waited in vain for: $*" >&2
      [ "$1" != has_rows ] || echo "there is: $(rows "$2")" >&2
      [ "$1" != has_keyboard ] || echo "it is in: $(xdotool getwindowfocus getwindowname 2>&1)" >&2
      return 1
    fi
  done
}

# start_screen WIDTHxHEIGHT: a screen without a window manager. No key repeats itself there, however long a busy
# machine takes between its press and its release. It lives on when its last program has gone: while it starts
# anew, it refuses the next one.
start_screen() {
  local width=$((${1%x*} * SCALE)) height=$((${1#*x} * SCALE))
  SCREEN_FILE=$WORK/display
  Xvfb -displayfd 3 -screen 0 "${width}x${height}x24" -nolisten tcp -r -noreset 3>"$SCREEN_FILE" 2>/dev/null &
  SCREEN_PID=$!
  wait_until test -s "$SCREEN_FILE"
  export DISPLAY=:$(cat "$SCREEN_FILE")
}

# A fresh learner's computer: "${AS_LEARNER[@]}" COMMAND runs a program there, with nothing of the caller's own.
AS_LEARNER=(env -u MAROVANE_HOME -u TMP -u XDG_DATA_HOME -u XDG_CONFIG_HOME -u XDG_STATE_HOME HOME="$WORK/home"
  XDG_RUNTIME_DIR="$WORK/run" LANG=C.UTF-8)
mkdir -p -m 0700 "$WORK/home" "$WORK/run"

# start_bus: the message bus of the learner's session, by which input methods and screen readers reach programs.
start_bus() {
  "${AS_LEARNER[@]}" dbus-daemon --session --nofork --print-address=3 3>"$WORK/bus" 2>/dev/null &
  BUS_PID=$!
  wait_until test -s "$WORK/bus"
  export DBUS_SESSION_BUS_ADDRESS=$(cat "$WORK/bus")
}

# start_program [EDITION]
start_program() {
  "${AS_LEARNER[@]}" QT_SCALE_FACTOR="$SCALE" "$MAROVANE" "$@" 2>"$WORK/log" &
  PROGRAM_PID=$!
  DATA=$WORK/home/.local/share/marovane/marovane
}

# What has ended by itself must not keep the rest from being stopped: a screen that is left over holds up the whole run.
stop_all() {
  for pid in "${PROGRAM_PID:-}" "${HELPER_PID:-}" "${BUS_PID:-}" "${SCREEN_PID:-}"; do
    [ -z "$pid" ] || kill "$pid" 2>/dev/null || true
  done
  wait 2>/dev/null || true
  rm -rf "$WORK"
}

# A window that goes away meanwhile can keep either waiting for ever.
import() { timeout 15 import "$@"; }
xdotool() { timeout 15 xdotool "$@"; }

# The X window of a form, by its title.
# A window of anybody's that goes during the search ends it with an error, and it is begun again.
window_of() {
  local found
  for _ in {1..5}; do
    ! found=$(xdotool search --onlyvisible --name "^$1\$" 2>/dev/null) || break
  done
  head -n 1 <<<"$found"
}
has_window() { [ -n "$(window_of "$1")" ]; }
has_no_window() { [ -z "$(window_of "$1")" ]; }

# click_in FORM X Y [BUTTON]: pixels within the window.
click_in() { xdotool mousemove --window "$(window_of "$1")" $(($2 * SCALE)) $(($3 * SCALE)) click "${4:-1}"; }

# takes_keyboard FORM X Y: a click there, for wait_until before keys are sent. A window that has just come up may take
# the keyboard once more, late.
takes_keyboard() {
  click_in "$1" "$2" "$3"
  has_keyboard "$1"
}

# has_keyboard FORM: without a window manager a window that has just come up gets the keys a little later.
has_keyboard() {
  local window
  window=$(window_of "$1")
  [ -n "$window" ] && [ "$(xdotool getwindowfocus)" = "$window" ]
}

# only COLOR: a picture, of which nothing but that color, or nearly that, is left, in pure green.
only() {
  convert png:- -fill black -opaque '#00FF00' -fuzz 4% -fill '#00FF00' -opaque "$1" -fill black +opaque '#00FF00' \
    "${@:2}"
}
has_any() { [ "$(only "$1" -format '%[fx:maxima.g > 0.5 ? 1 : 0]' info:)" = 1 ]; }
# has_color COLOR: some pixel of the screen has it, or nearly.
has_color() { import -window root png:- | has_any "$1"; }

# has_color_in FORM COLOR: the same within one window.
has_color_in() {
  local window
  window=$(window_of "$1")
  [ -n "$window" ] || return 1 # without one, import waits for a click
  import -window "$window" png:- | has_any "$2"
}

# is_extended FORM: the menu of the main window has slid out.
is_extended() { [ "$(xdotool getwindowgeometry "$(window_of "$1")" | sed -n 's/.*Geometry: [0-9]*x//p')" -gt $((100 * SCALE)) ]; }

# The screen stands still. A window fades in; it takes clicks in their places when it has stopped changing.
settled() {
  local before
  before=$(import -window root png:- | md5sum)
  [ "$before" = "$(import -window root png:- | md5sum)" ]
}

rows() { sqlite3 "$DATA/Marovane.mdb" "$1" 2>/dev/null; }
has_rows() { [ "$(rows "$1")" = "$2" ]; }

has_ended() { ! kill -0 "$PROGRAM_PID"; }
# No process has the program's home in its environment.
no_process_of_program() { ! grep -lsaz "^HOME=$WORK/home\$" /proc/[0-9]*/environ; }
