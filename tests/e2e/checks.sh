# Sourced by the tests of the commands: a site of their own under $work/site.
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
bin=${KALVO_BIN:-$top/build/release/bin}
work=$(mktemp -d)
trap 'chmod -R u+w "$work"; rm -rf "$work"' EXIT
unset DISPLAY WAYLAND_DISPLAY
export XDG_CONFIG_HOME=$work/config XDG_DATA_HOME=$work/data
source "$top/tests/e2e/expectations.sh"

kalvo() { timeout 60 "$bin/kalvo-horizon" --app-dir "$work/site" "$@" 2>"$work/stderr"; }

# choose NAME [VALUES]: the active scenario, and more registry values, of the user.
choose() {
  mkdir -p "$XDG_CONFIG_HOME/kalvo-horizon"
  printf 'REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\Ketvan\\Lumo]\r\n"RacScenChx"="%s"\r\n%b' \
    "$1" "${2:-}" >"$XDG_CONFIG_HOME/kalvo-horizon/registre.reg"
}
