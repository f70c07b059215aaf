# Sourced by the tests of the commands: a site of their own under $work/site, and checks
# that count what is not as expected.
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
bin=${KALVO_BIN:-$top/build/release/bin}
work=$(mktemp -d)
trap 'chmod -R u+w "$work"; rm -rf "$work"' EXIT
unset DISPLAY WAYLAND_DISPLAY
export XDG_CONFIG_HOME=$work/config XDG_DATA_HOME=$work/data
failures=0

kalvo() { timeout 60 "$bin/kalvo-horizon" --app-dir "$work/site" "$@" 2>"$work/stderr"; }

report() {
  echo "FAIL $*"
  failures=$((failures + 1))
}

# expect NAME EXPECTED ACTUAL
expect() {
  [ "$2" = "$3" ] || report "$1: expected $(printf %q "$2"), actual $(printf %q "$3")"
}

# expect_exit NAME CODE COMMAND...: on failure something is said; a crash is no code.
expect_exit() {
  local name=$1 code=$2 actual=0
  shift 2
  "$@" >"$work/stdout" </dev/null || actual=$?
  [ "$actual" = "$code" ] || report "$name: code $actual, not $code: $(head -c 300 "$work/stderr")"
  [ "$code" = 0 ] || [ -s "$work/stderr" ] || report "$name: nothing said"
}

# choose NAME [VALUES]: the active scenario, and more registry values.
choose() {
  mkdir -p "$XDG_CONFIG_HOME/kalvo-horizon"
  printf 'REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\Ketvan\\Lumo]\r\n"RacScenChx"="%s"\r\n%b' \
    "$1" "${2:-}" >"$XDG_CONFIG_HOME/kalvo-horizon/registre.reg"
}

# end_checks: the test's own result.
end_checks() {
  [ "$failures" -eq 0 ] && echo "all as expected"
  exit $((failures > 0))
}
