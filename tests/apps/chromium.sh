# A text area of a web page, which sends what it holds to a server on the loopback
# interface.
patience=1200 # it takes all keys at once, and shows 50 to 250 characters a second
for program in chromium python3; do command -v "$program" >/dev/null || exit 77; done
start() {
  python3 "$here/page_server.py" "$work/typed.txt" >"$work/port" 2>"$work/server.log" &
  processes+=($!)
  until_true "serveur de la page" grep -q . "$work/port"
  local port
  port=$(cat "$work/port")
  run_application chromium --no-sandbox --no-first-run --user-data-dir="$work/chromium" \
    --disable-background-networking --disable-component-update --disable-sync --disable-gpu \
    --no-default-browser-check --proxy-server=127.0.0.1:9 --proxy-bypass-list=127.0.0.1 \
    --disable-features=Translate,SpareRendererForSitePerProcess --window-size=800,600 "http://127.0.0.1:$port/"
  until_true "page" test -e "$work/typed.txt"
  until_true "cible" has_focus cible
  sleep 1
}
keep() { :; }
