#!/usr/bin/python3
"""A web server for one test, on the loopback alone: prints its port and serves
until it is ended. What it answers is said by the address:

  /says/TEXT/...   the text (percent-encoded; any bytes)
  /size/N/...      N bytes, their number told in advance
  /stream/N/...    N bytes, their number not told
  /drip/...        a byte now and then, without end
  /silent/...      nothing, ever
  /cut/...         less than was told in advance
  /status/N/...    a text with this status
  /hops/N/...      sent on N times, then "2.2"
  /to/ADDRESS      sent on to the address (percent-encoded)

Usage: web_server.py [CERTIFICATE KEY]
"""
import http.server
import ssl
import sys
import threading
import urllib.parse


class Answer(http.server.BaseHTTPRequestHandler):
    def log_message(self, *_):
        pass

    def start(self, status, *headers):
        self.send_response(status)
        for name, value in headers:
            self.send_header(name, value)
        self.end_headers()

    def say(self, content, status=200):
        self.start(status, ("Content-Length", str(len(content))))
        self.wfile.write(content)

    def send_on(self, address):
        self.start(302, ("Location", address), ("Content-Length", "0"))

    def do_GET(self):
        parts = self.path.split("/")
        what, detail = parts[1], parts[2] if len(parts) > 2 else ""
        rest = "/".join(parts[3:])
        if what == "says":
            self.say(urllib.parse.unquote_to_bytes(detail))
        elif what == "size":
            self.say(b"1" * int(detail))
        elif what == "stream":
            self.start(200)
            self.wfile.write(b"1" * int(detail))
        elif what == "drip":
            self.start(200)
            while True:
                self.wfile.write(b"2")
                threading.Event().wait(0.05)
        elif what == "silent":
            threading.Event().wait(60)
        elif what == "cut":
            self.start(200, ("Content-Length", "10"))
            self.wfile.write(b"2.2")
        elif what == "status":
            self.say(b"2.2", int(detail))
        elif what == "hops":
            left = int(detail)
            self.say(b"2.2") if left == 0 else self.send_on(f"/hops/{left - 1}/{rest}")
        elif what == "loop":
            self.send_on(self.path)
        elif what == "to":
            self.send_on(urllib.parse.unquote(detail))
        else:
            self.say(b"no such page", 404)


class Server(http.server.ThreadingHTTPServer):
    daemon_threads = True

    def handle_error(self, *_):
        pass  # clients that hang up are what is tested


server = Server(("127.0.0.1", 0), Answer)
if len(sys.argv) > 1:
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(sys.argv[1], sys.argv[2])
    server.socket = context.wrap_socket(server.socket, server_side=True, do_handshake_on_connect=False)
print(server.server_address[1], flush=True)
server.serve_forever()
