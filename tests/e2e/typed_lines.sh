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

# named_keys TEXT SCRIPT: named keys and shortcuts into SCRIPT; what a terminal reports of
# them comes behind the text there is in TEXT.
named_keys() {
  printf '{UP}{DOWN}{RIGHT}{LEFT}{HOME}{END}{INS}{DEL}{PGUP}{PGDN}{ESC}{TAB}{BS}+{TAB}^c%%x^{RIGHT}' >"$2"
  printf '{F1}{F2}{F3}{F4}{F5}{F6}{F7}{F8}{F9}{F10}{F11}{F12}' >>"$2"
  printf '\e[A\e[B\e[C\e[D\e[H\e[F\e[2~\e[3~\e[5~\e[6~\e\t\x7f\e[Z\x03\ex\e[1;5C' >>"$1"
  printf '\eOP\eOQ\eOR\eOS\e[15~\e[17~\e[18~\e[19~\e[20~\e[21~\e[23~\e[24~' >>"$1"
}
