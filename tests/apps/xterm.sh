# An editor in a terminal.
for program in xterm nano; do command -v "$program" >/dev/null || exit 77; done
start() {
  run_application xterm -u8 -T cible -geometry 90x40 -fa "DejaVu Sans Mono" -fs 8 \
    -e nano --ignorercfiles --nonewlines "$work/typed.txt"
  until_true "cible" has_focus cible
}
keep() { printf '^o{ENTER}' | type_script; }
