# The knowledge base of the tests: the path, or the link that the help window asks for, says how it answers.
#
# Connects to the port of the test and writes one line of JSON with the ports of its proxies, one for each kind of
# certificate, and the authority that all but one of them come from. Then it writes a line for each request that waits
# for a turn, and reads the turns, each of which lets one request go; ends with the connection.

import base64
import collections
import http.server
import json
import pathlib
import socket
import sys
import threading
import urllib.parse

sys.path.insert(0, str(pathlib.Path(__file__).parents[2] / "tools" / "kb-server"))

import trustme  # noqa: E402
from loopback import HttpsServer, Tunnel, context_for, start  # noqa: E402

HOST = sys.argv[1]
test = socket.create_connection(("127.0.0.1", int(sys.argv[2]))).makefile("rw")
# 60 by 40 pixels.
RED = base64.b64decode("iVBORw0KGgoAAAANSUhEUgAAADwAAAAoAQMAAACYdQu8AAAAA1BMVEX/AAAZ4gk3AAAADUlEQVR42mNgGAX0AAABaAABSuz1"
                       "ewAAAABJRU5ErkJggg==")
ANSWERS = {
    "page": (200, f'<html><base href="https://{HOST}/images/">'.encode()
             + b'<img src="not-found"><img src="no-image.png"><img src="red.png">'),
    "not-found": (404, b"not found"),
    "redirect": (302, b"elsewhere"),
    "nul": (200, b"before\0after"),
    "no-image.png": (200, b"<html>this is no image</html>"),
}
turns: dict = collections.defaultdict(lambda: threading.Semaphore(0))


class Handler(http.server.BaseHTTPRequestHandler):
    def log_message(self, *_):
        pass

    def do_GET(self):
        # One that ends in /after-TURN, with .png behind it or not, waits for that turn.
        url = urllib.parse.urlsplit(self.path)
        way = urllib.parse.parse_qs(url.query).get("link", [url.path])[0].split("/")[-1]
        if way.startswith("after-"):
            print(way, file=test, flush=True)
            turns[way.removesuffix(".png")].acquire()
        status, body = ANSWERS.get(way, (200, RED if way.endswith(".png") else self.path.encode()))
        self.send_response(status)
        self.send_header("Location", f"https://{HOST}/elsewhere")
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)


authority = trustme.CA()
proxies = {}
for name, issuer in {"good": authority, "unknown": trustme.CA()}.items():
    server = HttpsServer(Handler, context_for(issuer, HOST))
    proxies[name] = start(Tunnel(HOST, start(server)))
print(json.dumps({"authority": authority.cert_pem.bytes().decode(), "proxies": proxies}), file=test, flush=True)
for line in test:
    turns["after-" + line.strip()].release()
