# Functions for scripts that work the program by keys and know of it what a screen reader is told over AT-SPI.
# Sourced by tests/gui/* after desktop.sh. Wants $HERE, the folder of the scripts.

accessible() { "${AS_LEARNER[@]}" timeout 150 /usr/bin/python3 "$HERE/accessible.py" "$@"; }
start_screen_reader() {
  # Before anybody has asked for its address, the bus of screen readers does not run.
  "${AS_LEARNER[@]}" dbus-send --session --dest=org.a11y.Bus --print-reply /org/a11y/bus org.a11y.Bus.GetAddress \
    >/dev/null
  "${AS_LEARNER[@]}" /usr/bin/python3 "$HERE/accessible.py" watch >"$WORK/told" 2>"$WORK/reader.log" &
  HELPER_PID=$!
  wait_until has_been_told watching
  export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
}
# has_been_told PATTERN: since the mark.
MARK=1
mark() { MARK=$(($(wc -l <"$WORK/told") + 1)); }
has_been_told() { tail -n "+$MARK" "$WORK/told" | grep -q "$1"; }

# Nothing more is told of what has been done.
quiet() {
  local before
  before=$(wc -l <"$WORK/told")
  settled && settled && [ "$before" = "$(wc -l <"$WORK/told")" ]
}

# Tab after Tab, until the button of a name has the focus. Each must be told. A focus that is told late can be mistaken
# for this Tab's, so look again once all is quiet.
tab_to() {
  local tabs=0
  wait_until quiet
  until is_at "$1"; do
    [ $((tabs += 1)) -lt 60 ] || { echo "no way to $1" >&2 && return 1; }
    mark
    xdotool key Tab
    wait_until has_been_told '^focus'
    ! is_at "$1" || wait_until quiet
  done
}
is_at() { grep '^focus' "$WORK/told" | tail -n 1 | grep -q "^focus | [a-z ]* | $1 |"; }
# opens ENTRY WINDOW
opens() {
  ENTRY=$1
  tab_to "$ENTRY"
  mark
  xdotool key Return
  wait_until has_been_told "^window | [a-z]* | $2 |"
  wait_until has_keyboard "$2"
}
# looked_through WINDOW: says what it has found wrong.
looked_through() { wait_until accessible check "$1" || accessible check "$1"; }
leaves() {
  looked_through "$1"
  mark
  xdotool key Escape
  is_back_from "$1"
}
# is_back_from WINDOW: at the entry that has opened it, and this has been told. A Tab before that would be taken for it.
is_back_from() {
  wait_until has_no_window "$1"
  wait_until has_keyboard Marovane
  wait_until has_been_told "^focus | push button | $ENTRY |"
}
# judge SENTENCE WORDS: Enter, and what is told of it.
judge() {
  wait_until has_keyboard Marovane
  xdotool key ctrl+a
  xdotool type --delay 15 "$1"
  mark
  xdotool key Return
  wait_until has_been_told '^window | alert | Marovane 訊息 | 正在'
  wait_until has_been_told "^description | text | 英文句子 | $2\$"
  wait_until has_been_told "^focus | text | 主視窗 | $2\$"
}
