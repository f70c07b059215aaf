# Sourced by the demo and the end-to-end tests: an X server of their own, a sample
# site, an editor, a simulated terminal. Expects $top (the tree) and $work (a folder
# that may be emptied).
bin=${KALVO_BIN:-$top/build/release/bin}
site=$work/site
# Where the simulated terminal hangs; whoever shows it to a reader names it first.
port_device=${port_device:-$work/line}
processes=()

end_session() {
  local process
  for process in "${processes[@]}"; do kill "$process" 2>/dev/null || true; done
  # An xterm that loses its server while it ends can wait for itself for good.
  for _ in $(seq 50); do [ -n "$(jobs -pr)" ] && sleep 0.1; done
  for process in $(jobs -pr); do kill -KILL "$process" 2>/dev/null || true; done
  wait 2>/dev/null || true
}
trap end_session EXIT

fail() {
  echo "$(basename "$0") : $*" >&2
  exit 1
}

# until_true WHAT COMMAND...: waits until a command succeeds, at most $patience seconds.
patience=${KALVO_PATIENCE:-20}
until_true() {
  local what=$1
  shift
  for _ in $(seq $((10 * patience))); do
    "$@" >/dev/null 2>&1 && return
    sleep 0.1
  done
  fail "délai dépassé : $what"
}

# start_x_server LAYOUT: uses the display there is, else starts one; $x_server is its process.
start_x_server() {
  unset WAYLAND_DISPLAY WAYLAND_SOCKET XDG_SESSION_TYPE
  [ -n "${DISPLAY:-}" ] && return
  Xvfb -displayfd 3 -screen 0 "${KALVO_SCREEN:-1024x768}x24" -nolisten tcp -noreset 3>"$work/display" 2>"$work/xvfb.log" &
  x_server=$!
  processes+=("$x_server")
  until_true "serveur X" grep -q . "$work/display"
  DISPLAY=:$(cat "$work/display")
  export DISPLAY
  setxkbmap "$1" 2>/dev/null || fail "disposition de clavier $1"
}

# start_desktop_session: a window manager and a notification area at the bottom right.
start_desktop_session() {
  openbox >"$work/openbox.log" 2>&1 &
  processes+=($!)
  until_true "gestionnaire de fenêtres" xprop -root _NET_SUPPORTING_WM_CHECK
  trayer --edge bottom --align right --widthtype request --height "${KALVO_TRAY:-32}" >"$work/trayer.log" 2>&1 &
  processes+=($!)
  until_true "zone de notification" xdotool search --class trayer
}

# icon_shown: the notification area holds an icon.
icon_shown() {
  local id
  for id in $(xdotool search --class trayer); do
    [ "$(xdotool getwindowgeometry --shell "$id" | sed -n 's/^WIDTH=//p')" -gt 20 ] && return
  done
  return 1
}

icon_gone() { ! icon_shown; }

# make_site TERMINAL: a site whose port 1 is $port_device and whose scenario is
# "Inventaire"; with a registry of its own.
make_site() {
  mkdir -p "$site"
  "$bin/sample-site" "$site"
  iconv -f UTF-8 -t WINDOWS-1252 >"$site/PortSerie.ini" <<INI
[Port_série]
Port=1
Vitesse= 115200
Bit de parité=N
Bit de donnée= 8
Bit d'arrêt= 1
Protocol=$1
Flux= 0
PortActif=1
[Ports]
COM1=$port_device
INI
  export XDG_CONFIG_HOME=$work/config
  mkdir -p "$XDG_CONFIG_HOME/kalvo-horizon"
  printf 'REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\Ketvan\\Lumo]\r\n"RacScenChx"="Inventaire"\r\n' \
    >"$XDG_CONFIG_HOME/kalvo-horizon/registre.reg"
}

# make_records COUNT CODE: $work/records.txt as a terminal holds it, and in
# $work/expected.txt what must arrive in the editor: code, tab, quantity, new line.
make_records() {
  local i
  for i in $(seq "$1"); do
    printf '%s-%03d;%d\n' "$2" "$i" $((i * 7 % 100))
  done | tee "$work/records.utf8" | iconv -f UTF-8 -t WINDOWS-1252 >"$work/records.txt"
  tr ';' '\t' <"$work/records.utf8" >"$work/expected.txt"
}

# open_editor: nano on $work/typed.txt, in an xterm that has the focus.
open_editor() {
  LC_ALL=C.UTF-8 xterm -u8 -T "KALVO $$" -geometry 72x53 -fa "DejaVu Sans Mono" -fs 8 \
    -e nano --ignorercfiles --nonewlines "$work/typed.txt" &
  processes+=($!)
  until_true "éditeur" xdotool search --name "KALVO $$"
  until_true "fenêtre de l'éditeur" xdotool windowfocus --sync \
    "$(xdotool search --name "KALVO $$" | tail -n 1)"
}

# open_reader: what is typed into this xterm goes to $work/typed.txt, line by line.
open_reader() {
  LC_ALL=C.UTF-8 xterm -u8 -T "KALVO $$" -geometry 80x30+0+0 -fa "DejaVu Sans Mono" -fs 8 \
    -e sh -c "cat >'$work/typed.txt'" &
  processes+=($!)
  until_true "fenêtre cible" xdotool search --name "KALVO $$"
  until_true "cible active" xdotool windowfocus --sync "$(xdotool search --name "KALVO $$" | tail -n 1)"
}

all_typed() { cmp -s "$work/expected.txt" "$work/typed.txt"; }

# start_terminal TYPE ARGUMENT...: a simulated terminal at the other end of the line.
start_terminal() {
  local type=$1
  shift
  "$bin/kalvo-terminal" "$type" --pty --link "$port_device" --wait-open --linger 60000 "$@" "$work/records.txt" \
    >"$work/terminal.log" 2>&1 &
  processes+=($!)
  until_true "terminal simulé" test -e "$port_device"
}

start_listening() {
  "$bin/kalvo-horizon" --app-dir "$site" listen 2>"$work/listen.log" &
  listener=$!
  processes+=("$listener")
  until_true "ouverture du port" grep -q "Ouvert" "$work/listen.log"
}

frame_processed() {
  grep -q "Trame traitée" "$work/listen.log"
}

# save_editor: the program types the editor's own commands, too.
save_editor() {
  printf '^o{ENTER}' | "$bin/kalvo-horizon" --app-dir "$site" type -
  until_true "ce qui est attendu ($work/expected.txt, $work/typed.txt)" cmp "$work/expected.txt" "$work/typed.txt"
}

# Windows of a desktop session, by a pattern of their titles.
titled() { xdotool search --onlyvisible --name "$1"; }
gone() { ! titled "$1"; }
# message: one of the program's own boxes, menus or questions; all of them have its name.
message() { titled '^KALVO Horizon$'; }
no_message() { ! message; }
# window TITLE: waits for a window and gives it the focus.
window() {
  until_true "fenêtre $1" titled "$1"
  xdotool windowactivate --sync "$(titled "$1" | tail -n 1)"
}
# keys KEY...: one after another, as fast as a quick hand.
keys() { xdotool key --delay 40 "$@"; }
# open_menu: the menu of the icon, with the pointer out of its way.
open_menu() {
  xdotool mousemove 1010 752 click 1
  until_true "menu" message
  xdotool mousemove 30 30
}

# start_desktop: the desktop program on the site; $program is its process.
start_desktop() {
  "$bin/kalvo-horizon" --app-dir "$site" 2>"$work/program.log" &
  program=$!
  processes+=("$program")
}
# end_cleanly PROCESS: SIGTERM ends it soon, and its exit code is 0.
end_cleanly() {
  kill -TERM "$1"
  until_true "fin propre" test ! -d "/proc/$1"
  wait "$1" || fail "code de retour $?"
}
end_desktop() { end_cleanly "$program"; }

# desktop_test LAYOUT: what every test of the desktop program begins with.
desktop_test() {
  unset DISPLAY
  export XDG_RUNTIME_DIR=$work
  start_x_server "$1"
  start_desktop_session
}
