"""The knowledge base of the tests: each path has its way of answering, well or badly.

Writes one line of JSON with the ports of its proxies, one for each kind of certificate, and the authority that all but
one of them come from; ends with its standard input.
"""

import http.server
import json
import pathlib
import re
import struct
import sys
import threading
import time
import urllib.parse
import zlib

sys.path.insert(0, str(pathlib.Path(__file__).parents[2] / "tools" / "kb-server"))

import trustme  # noqa: E402
from loopback import HttpsServer, Tunnel, context_for, start  # noqa: E402

HOST = sys.argv[1]


def png(width: int, height: int, color: bytes) -> bytes:
    def chunk(kind: bytes, data: bytes) -> bytes:
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    header = struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)
    rows = (b"\0" + color * width) * height
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b"")


RED = png(60, 40, b"\xff\0\0")

turns = threading.Condition()
taken: set = set()


def take(turn: str):
    with turns:
        taken.add(turn)
        turns.notify_all()


def wait_for(turn: str):
    with turns:
        turns.wait_for(lambda: turn in taken)


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def log_message(self, *_):
        pass

    def do_GET(self):
        """/<way>/<turn>/..., /images/<way>.<turn>.png, or the way that the help window asks for as its link."""
        url = urllib.parse.urlsplit(self.path)
        link = urllib.parse.parse_qs(url.query).get("link")
        way, self.turn, *_ = [*(link or re.split("[/.]", url.path.replace("/images/", "/")[1:])), "", ""]
        getattr(self, "answer_" + way.replace("-", "_"), self.answer_echo)()

    def reply(self, body: bytes, status: int = 200, headers: dict = {}, length: int = -1):
        self.send_response(status)
        for name, value in headers.items():
            self.send_header(name, value)
        self.send_header("Content-Length", str(len(body) if length < 0 else length))
        self.end_headers()
        self.wfile.write(body)

    def answer_echo(self):
        self.reply(self.path.encode())

    def answer_page(self):
        self.reply(f'<html><base href="https://{HOST}/images/"><img src="red.png"></html>'.encode())

    def answer_red(self):
        self.reply(RED)

    def answer_not_found(self):
        self.reply(b"not found", 404)

    def answer_redirect(self):
        self.reply(b"elsewhere", 302, {"Location": f"https://{HOST}/elsewhere"})

    def answer_nul(self):
        self.reply(b"before\0after")

    def answer_cut(self):
        self.reply(b"cut short", length=100)
        self.close_connection = True

    def answer_silence(self):
        self.rfile.read()  # until the client has gone

    def answer_no_image(self):
        self.reply(b"<html>this is no image</html>")

    def answer_after(self):
        """An image or the path, once the turn has been taken."""
        wait_for(self.turn)
        self.reply(RED if self.path.endswith(".png") else self.path.encode())

    def answer_take(self):
        take(self.turn)
        self.reply(b"")

    def answer_fails_first(self):
        """The first time not found, the second time an image once the turn `fails-first` has been taken."""
        with turns:
            first = self.path not in taken
            taken.add(self.path)
        if first:
            self.reply(b"", 404)
        else:
            wait_for("fails-first")
            self.reply(RED)


def main():
    authority = trustme.CA()
    proxies = {}
    for name, issuer in {"good": authority, "unknown": trustme.CA()}.items():
        server = HttpsServer(Handler, context_for(issuer, HOST))
        proxies[name] = start(Tunnel(HOST, start(server)))
    print(json.dumps({"authority": authority.cert_pem.bytes().decode(), "proxies": proxies}), flush=True)
    sys.stdin.read()


main()
