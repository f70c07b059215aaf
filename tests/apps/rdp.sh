# A remote desktop client, to a server that shares a second display; what arrives there is
# what an editor in a terminal has. The client sends key positions: the other side knows
# what the layout has, and Alt with keypad digits mean nothing to it.
for program in xfreerdp freerdp-shadow-cli xterm nano; do command -v "$program" >/dev/null || exit 77; done
everything=type_ascii
start() {
  local here_display=$DISPLAY
  unset DISPLAY
  rm "$work/display"
  KALVO_SCREEN=800x600 start_x_server "$layout"
  xterm -u8 -T remote -geometry 100x40+0+0 -fa "DejaVu Sans Mono" -fs 8 \
    -e nano --ignorercfiles --nonewlines "$work/typed.txt" &
  processes+=($!)
  until_true "éditeur" xdotool search --onlyvisible --name remote windowfocus
  freerdp-shadow-cli /port:"$((20000 + $$ % 20000))" /bind-address:127.0.0.1 /sec:tls -auth >"$work/server.log" 2>&1 &
  processes+=($!)
  export DISPLAY=$here_display
  sleep 2
  run_application xfreerdp /v:127.0.0.1:"$((20000 + $$ % 20000))" /cert:ignore /u:x /p:x /sec:tls
  until_true "cible" has_focus FreeRDP
  sleep 3
}
type_ascii() {
  printable_ascii | type_text
  for i in $(seq "$many"); do printf 'A-%04d <%s>\t%d\n' "$i" "$((i * 7919 % 100000))" "$((i % 90))"; done | type_text
}
keep() { printf '^o{ENTER}' | type_script; }
