"""page_server.py FILE: a page with a text area on the loopback interface; what the text
area holds goes to FILE. Writes the port to the standard output."""

import http.server
import sys

PAGE = """<!doctype html><meta charset="utf-8"><title>cible</title>
<textarea autofocus spellcheck="false" autocomplete="off" style="width:95vw;height:90vh"></textarea>
<script>
const area = document.querySelector("textarea");
const send = () => fetch("/", {method: "POST", body: area.value});
let due = 0;
area.addEventListener("input", () => { clearTimeout(due); due = setTimeout(send, 300); });
area.addEventListener("keydown", event => {
  if (event.key !== "Tab") return;
  event.preventDefault();
  area.setRangeText("\\t", area.selectionStart, area.selectionEnd, "end");
});
area.focus();
send();
</script>""".encode()


class Handler(http.server.BaseHTTPRequestHandler):
    def answer(self, body):
        self.send_response(200)
        self.send_header("Content-Type", "text/html; charset=utf-8")
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def do_GET(self):
        self.answer(PAGE)

    def do_POST(self):
        text = self.rfile.read(int(self.headers["Content-Length"]))
        with open(sys.argv[1], "wb") as file:
            file.write(text)
        self.answer(b"")


server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
print(server.server_port, flush=True)
server.serve_forever()
