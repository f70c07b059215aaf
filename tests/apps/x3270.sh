# A terminal emulator, with a host of ours. Its code page, 37, has the characters of
# ISO 8859-1.
for program in x3270 python3; do command -v "$program" >/dev/null || exit 77; done
missing='€‚ƒ„…†‡ˆ‰Š‹ŒŽ‘’“”•–—˜™š›œžŸ­'
everything=type_screens
start() {
  python3 "$here/tn3270_host.py" "$work/typed.txt" >"$work/port" 2>"$work/server.log" &
  processes+=($!)
  until_true "hôte" grep -q . "$work/port"
  run_application x3270 -model 3279-2 -codepage cp037 "127.0.0.1:$(cat "$work/port")"
  until_true "session" test -e "$work/typed.txt"
  until_true "cible" has_focus x3270
  sleep 2
}
# Each line is a screen of its own. It loses Enter right behind text, so it is never
# stopped.
type_screens() {
  printable_ascii | type_text
  upper_half | type_text
  printf 'Ac\tde\n' >>"$work/expected.txt"
  printf '{TAB}df{LEFT}e{HOME}bc{HOME}A{ENTER}' | type_script
  records "$((many / 10))" A | type_text
}
keep() { :; }
