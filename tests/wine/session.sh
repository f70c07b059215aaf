# Sourced by the tests under Wine: a Wine of their own with an X server of its own, in
# a temporary folder that is gone at the end. Expects the programs of both systems:
# build/windows and $KALVO_BIN. Without them, or without Wine, the test is skipped
# (exit code 77); where KALVO_REQUIRE_WINDOWS is set it fails instead.
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
windows=$top/build/windows
work=$(mktemp -d)
unset DISPLAY
source "$top/scripts/session.sh"
patience=60

export LC_ALL=C.UTF-8 # Wine takes file names to be in the encoding of the locale
export WINEPREFIX=$work/prefix WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
export TMPDIR=$work # Wine's server leaves a folder behind

stop_wine() {
  [ -d "$WINEPREFIX" ] || return 0
  timeout 20 wineserver -k >/dev/null 2>&1 || true
  timeout 20 wineserver -w >/dev/null 2>&1 || true
}

# Nothing survives: a server left behind would keep whoever waits for its output.
end_wine_session() {
  local code=$?
  stop_wine
  end_session
  rm -rf "$work"
  exit "$code"
}
trap end_wine_session EXIT
trap 'exit 1' INT TERM

unavailable() {
  echo "$1"
  [ -z "${KALVO_REQUIRE_WINDOWS:-}" ] || exit 1
  exit 77
}
command -v wine >/dev/null || unavailable "Wine is not installed (scripts/install-dependencies --windows)"
[ -f "$windows/bin/kalvo-horizon.com" ] || unavailable "no Windows build (scripts/build-windows)"

# win SECONDS PROGRAM ARGUMENT...: runs a Windows program, for a limited time.
win() {
  local seconds=$1
  shift
  timeout -k 5 "$seconds" wine "$@"
}

# windows_path PATH: a path of this system as Windows programs write it.
windows_path() { printf 'Z:%s' "${1//\//\\}"; }

# start_wine LAYOUT: an X server with that keyboard layout, and a fresh prefix on it.
start_wine() {
  start_x_server "$1"
  # Its first start fails now and then on a busy machine.
  local _
  for _ in 1 2 3; do
    WINEDEBUG=fixme-all timeout -k 5 120 wineboot -i >"$work/wineboot.log" 2>&1 && return
    cat "$work/wineboot.log"
    stop_wine
    rm -rf "$WINEPREFIX"
  done
  fail "Wine ne démarre pas"
}

# kalvo ARGUMENT...: the Windows program on the sample site.
kalvo() { win 60 "$windows/bin/kalvo-horizon.com" --app-dir "$(windows_path "$site")" "$@"; }

# open_edit_target: an edit control that has the focus; its content is $work/typed.txt.
open_edit_target() {
  win 300 "$windows/tests/bin/edit_target.exe" "$(windows_path "$work/typed.txt")" >/dev/null 2>&1 &
  processes+=($!)
  until_true "fenêtre de saisie" test -e "$work/typed.txt"
}

# typed: what the edit control holds, with the line ends of this system.
typed() { tr -d '\r' <"$work/typed.txt"; }

# wait_for_text: until that is $work/expected.txt; keys are still on their way when the
# one who typed them has ended.
wait_for_text() {
  local _
  for _ in $(seq $((10 * patience))); do
    cmp -s "$work/expected.txt" <(typed) && return
    sleep 0.1
  done
  diff "$work/expected.txt" <(typed) || fail "ce qui est arrivé diffère"
}
