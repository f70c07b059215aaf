# Sourced by the tests that type everything there is.

# typed_lines TEXT SCRIPT: all characters of the code page into the file TEXT, in UTF-8, and
# the key script that types them into SCRIPT.
typed_lines() {
  cat >"$1" <<'TEXT'
 !"#$%&'()*+,-./0123456789:;<=>?@
ABCDEFGHIJKLMNOPQRSTUVWXYZ[\]^_`
abcdefghijklmnopqrstuvwxyz{|}~
ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖØÙÚÛÜÝÞß
àáâãäåæçèéêëìíîïðñòóôõöøùúûüýþÿ
ŠŒŽšœžŸ€‚ƒ„…†‡ˆ‰‹‘’“”•–—˜™›«»°²³µ¿×÷
TEXT
  sed 's/[+^%(){}~]/{&}/g' "$1" | sed 's/$/{ENTER}/' | tr -d '\n' | iconv -f UTF-8 -t WINDOWS-1252 >"$2"
}
