# A GTK 3 editor.
command -v mousepad >/dev/null || exit 77
start() {
  : >"$work/typed.txt"
  run_application mousepad --disable-server "$work/typed.txt"
  until_true "cible" has_focus typed.txt
  sleep 1
}
keep() { printf '^s' | type_script; }
