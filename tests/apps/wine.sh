# A Windows program under Wine. Its file is read back as it saves it, in the page of the
# system.
command -v wine >/dev/null || exit 77
export WINEPREFIX=$work/prefix WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml=" TMPDIR=$work
start() {
  timeout -k 5 120 wineboot -i >"$work/wineboot.log" 2>&1
  processes+=($(pgrep -f "^/usr/lib/wine/wineserver" -n || true))
  printf '\xef\xbb\xbf' >"$work/document.txt"
  run_application wine notepad "Z:${work//\//\\}\\document.txt"
  until_true "cible" has_focus document.txt
  sleep 1
}
keep() {
  save_document
  sed 's/\r$//; 1s/^\xef\xbb\xbf//' "$work/document.txt" >"$work/typed.txt"
}
