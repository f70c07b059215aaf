# Sourced by the tests of the commands of each system. Expects kalvo, native_path (a path as
# its programs write it) and expectations.sh; nothing is at $site yet.

# dry_runs: what needs no display and is the same everywhere.
dry_runs() {
  expect_exit "fresh folder" 0 kalvo compile --all
  expect "its content" "Applications.ini Corres.ini PortSerie.ini Scen.mdb Scenarios TouFic.ini Touche.ini" \
    "$(cd "$site" && LC_ALL=C ls | xargs)"
  rm "$site/Scen.mdb"
  "$bin/sample-site" "$site"
  expect_exit "compile by name" 0 kalvo compile inventaire
  printf 'ABC\r1.5\r\nDEF\r2\r\n' >"$work/frame"
  expect "script" 'ABC{TAB}1.5{ENTER}DEF{TAB}2{ENTER}' \
    "$(kalvo script --scenario Inventaire "$(native_path "$work/frame")")"
  expect "script from standard input" 'x{TAB}1{ENTER}' \
    "$(printf 'x\r1\r\n' | kalvo script --scenario INVENTAIRE -)"
  expect_exit "a name that leads out of the folder" 1 \
    kalvo script --scenario ../PortSerie "$(native_path "$work/frame")"
  printf 'aB' >"$work/keys"
  down=$'down vk=0041 sc=001E\nup vk=0041 sc=001E'
  expect "events" "$down"$'\ndown vk=0010 sc=002A; down vk=0142 sc=0030\nup vk=0010 sc=002A; up vk=0142 sc=0030' \
    "$(kalvo events "$(native_path "$work/keys")")"
  expect_exit "unknown command" 2 kalvo ecouter
  expect_exit "unknown layout" 1 kalvo events --layout klingon "$(native_path "$work/keys")"
  expect_exit "unknown scenario" 1 kalvo compile "Été"
  grep -q "Scénario inconnu : Été" "$work/stderr" || report "its name: $(cat "$work/stderr")"
}
