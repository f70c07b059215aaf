# Sourced. wake_ups PROCESS SECONDS: how often it wakes up, all its threads together.
switches() { awk '/^voluntary_ctxt_switches/ {n += $2} END {print n}' /proc/"$1"/task/*/status; }
wake_ups() {
  local before
  before=$(switches "$1")
  sleep "$2"
  echo $(($(switches "$1") - before))
}
