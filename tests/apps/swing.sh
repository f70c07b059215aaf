# A Swing text area.
for program in java javac; do command -v "$program" >/dev/null || exit 77; done
start() {
  javac -d "$work/classes" "$here/Area.java"
  run_application java -cp "$work/classes" Area "$work/typed.txt"
  until_true "cible" has_focus cible
  sleep 1
}
keep() { :; }
