# A spreadsheet: text into cells, read back as it saves them.
command -v soffice >/dev/null || exit 77
everything=type_records
patience=900 # it takes 120 characters a second
start() {
  printf 'x\n' >"$work/start.csv"
  soffice "-env:UserInstallation=file://$work/office" --headless --convert-to ods --outdir "$work" \
    "$work/start.csv" >"$work/convert.log" 2>&1
  run_application soffice "-env:UserInstallation=file://$work/office" --norestore --nologo --calc "$work/start.ods"
  until_true "cible" has_focus start.ods
  sleep 5
}
type_records() {
  records "$many" A | type_text
  stopped_for 0.3 &
  local stopper=$!
  records "$((many / 10))" B | type_text
  wait "$stopper"
}
saved() { [ "$work/start.ods" -nt "$work/mark" ]; }
keep() {
  touch "$work/mark"
  printf '^s' | type_script
  until_true "fichier" saved
  sleep 2
  soffice "-env:UserInstallation=file://$work/reader" --headless \
    --convert-to 'csv:Text - txt - csv (StarCalc):9,34,76' --outdir "$work/read" "$work/start.ods" >>"$work/convert.log" 2>&1
  cp "$work/read/start.csv" "$work/typed.txt"
}
