# Sourced by tests that count what is not as expected instead of ending there. Expects $work;
# what a command says on standard error is in $work/stderr.
failures=0

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

# end_checks: the test's own result.
end_checks() {
  [ "$failures" -eq 0 ] && echo "all as expected"
  exit $((failures > 0))
}
