# A Qt editor. Qt saves a no-break space as a blank.
command -v featherpad >/dev/null || exit 77
missing=$'\u00a0'
start() {
  mkdir -p "$XDG_CONFIG_HOME/featherpad"
  printf '[text]\nappendEmptyLine=false\n' >"$XDG_CONFIG_HOME/featherpad/fp.conf"
  : >"$work/document.txt"
  run_application featherpad --standalone "$work/document.txt"
  until_true "cible" has_focus document.txt
  sleep 1
}
saved() { [ "$(wc -c <"$work/document.txt")" -gt 3 ]; }
keep() {
  printf '^s' | type_script
  until_true "fichier" saved
  sleep 1
  cp "$work/document.txt" "$work/typed.txt"
}
