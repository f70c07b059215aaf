# Sourced by the tests of a Wayland session without a screen, as an ordinary user: sway, or
# the compositor among the $programs a script names. Expects $top (the tree) and the script's
# $arguments. Exit code 77: a program is missing.
bin=${KALVO_BIN:-$top/build/release/bin}
for program in ${programs:-sway foot}; do command -v "$program" >/dev/null || exit 77; done
if [ "$(id -u)" -eq 0 ]; then
  # Compositors refuse to run as root.
  exec setpriv --reuid=nobody --regid=nogroup --clear-groups env KALVO_BIN="$bin" "$0" "${arguments[@]}"
fi

work=$(mktemp -d)
export HOME=$work XDG_RUNTIME_DIR=$work/run XDG_CONFIG_HOME=$work/config XDG_DATA_HOME=$work/data
mkdir -m 0700 "$XDG_RUNTIME_DIR"
unset DISPLAY WAYLAND_DISPLAY WAYLAND_SOCKET DBUS_SESSION_BUS_ADDRESS
export LC_ALL=C.UTF-8
source "$top/scripts/session.sh"

# start_bus NAME: a bus of our own; its address goes into the variable NAME.
start_bus() {
  dbus-daemon --config-file="$top/tests/wayland/bus.conf" --nofork --print-address=3 3>"$work/bus" 2>"$work/bus.log" &
  processes+=($!)
  until_true "bus" grep -q . "$work/bus"
  export "$1=$(cat "$work/bus")"
  rm "$work/bus"
}

# start_sway LAYOUT: the user's keyboard has that layout. With a bus there is a notification area.
start_sway() {
  printf 'xwayland enable\ninput type:keyboard xkb_layout %s\nbar {\ntray_output *\n}\n' "$1" >"$work/sway.conf"
  WLR_BACKENDS=headless WLR_LIBINPUT_NO_DEVICES=1 WLR_RENDERER=pixman \
    sway -c "$work/sway.conf" >"$work/sway.log" 2>&1 &
  processes+=($!)
  until_true "compositeur" compgen -G "$XDG_RUNTIME_DIR/wayland-*.lock"
  WAYLAND_DISPLAY=$(basename "$XDG_RUNTIME_DIR"/wayland-*.lock .lock)
  SWAYSOCK=$(echo "$XDG_RUNTIME_DIR"/sway-ipc.*.sock)
  export WAYLAND_DISPLAY SWAYSOCK XDG_SESSION_TYPE=wayland
}

# A window is there; as the only one it has the focus.
window_shown() { swaymsg -t get_tree | grep -qE '"(app_id|class)": "'; }

# open_target KIND: what is typed into it goes to $work/typed.txt. $target is its process.
open_target() {
  : >"$work/typed.txt"
  case "$1" in
  foot) foot --config=/dev/null sh -c "stty raw -echo; exec cat >>'$work/typed.txt'" 2>"$work/target.log" & ;;
  qt) QT_QPA_PLATFORM=wayland "$bin/../tests/bin/typing_target" "$work/typed.txt" 2>"$work/target.log" & ;;
  gtk) GDK_BACKEND=wayland /usr/bin/python3 "$top/tests/wayland/gtk_target.py" "$work/typed.txt" 2>"$work/target.log" & ;;
  xterm)  # through Xwayland, which the compositor starts for it
    swaymsg exec "xterm -u8 -fa 'DejaVu Sans Mono' -e sh -c 'cat >>$work/typed.txt'" >"$work/target.log"
    ;;
  esac
  target=$!
  processes+=("$target")
  until_true "cible $1" window_shown
  sleep 1
}

type_script() { "$bin/kalvo-horizon" --app-dir "$work/site" --keyboard wayland type "$@"; }
