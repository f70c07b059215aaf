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
keep() {
  save_document
  cp "$work/document.txt" "$work/typed.txt"
}
