"""The knowledge base of a developer: answers what the help window asks from a tree of help pages, over HTTPS."""

import argparse
import http.server
import mimetypes
import os
import pathlib
import re
import shlex
import threading
import time
import urllib.parse

import trustme

from loopback import LOOPBACK, HttpsServer, Tunnel, context_for, start

ROOT = pathlib.Path(__file__).resolve().parents[2]
HEAD = re.compile(rb"<head(\s[^>]*)?>", re.IGNORECASE)
HTML = re.compile(rb"<html(\s[^>]*)?>", re.IGNORECASE)
TAG = re.compile(rb"<[a-z!][^<>]*>", re.IGNORECASE)


def configured_address() -> str:
    """What the library of the development build asks."""
    cache = ROOT / "build/dev/CMakeCache.txt"
    entries = cache.read_text() if cache.exists() else ""
    found = re.search(r"^VANTKIT_KNOWLEDGE_BASE_URL:\w+=(.+)$", entries, re.MULTILINE)
    return found[1] if found else "https://kb.corvanta.example"


def with_base(page: bytes, base: str) -> bytes:
    """The page with its place on the web in front of all that refers to an image; a plain text as it is."""
    tag = f'<base href="{base}">'.encode()
    if head := HEAD.search(page):
        return page[:head.end()] + tag + page[head.end():]
    if html := HTML.search(page):
        return page[:html.end()] + b"<head>" + tag + b"</head>" + page[html.end():]
    return b"<html><head>" + tag + b"</head>" + page if TAG.search(page) else page


def texts_in(query: str) -> dict:
    """The keys and values of a query. A plus sign is one: the help window writes a blank as %20."""
    pairs = (pair.partition("=") for pair in query.split("&"))
    return {key: urllib.parse.unquote(value) for key, _, value in pairs}


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"
    options: argparse.Namespace

    def do_GET(self):
        url = urllib.parse.urlsplit(self.path)
        if self.options.fail:
            self.answer(self.options.fail)
        elif url.path == "/cgi/knowledgebase/":
            self.answer_page(texts_in(url.query))
        elif url.path.startswith("/help/"):
            self.answer_file(urllib.parse.unquote(url.path.removeprefix("/help/")))
        else:
            self.answer(404)

    def answer_page(self, wanted: dict):
        lang = wanted.get("lang", "")
        page = self.content_of(lang, wanted.get("link", ""))
        if page is None or wanted.get("action") != "findHelpFile":
            self.answer(404)
        else:
            base = f"{self.options.address}/help/{urllib.parse.quote(lang)}/"
            self.answer(200, with_base(page, base), "text/html; charset=utf-8")

    def answer_file(self, name: str):
        content = self.content_of(name)
        if content is None:
            self.answer(404)
        else:
            self.answer(200, content, mimetypes.guess_type(name)[0] or "application/octet-stream")

    def content_of(self, *path: str) -> bytes | None:
        """A file of the tree. Neither dots nor links nor a path from the root lead out of it."""
        try:
            file = self.options.pages.joinpath(*path).resolve()
            return file.read_bytes() if file.is_relative_to(self.options.pages) else None
        except (OSError, ValueError):
            return None

    def answer(self, status: int, body: bytes = b"", kind: str = "text/plain"):
        self.send_response(status)  # which also writes the line of the request
        self.send_header("Content-Type", kind)
        self.send_header("Content-Length", str(len(body)))
        time.sleep(self.options.delay)
        self.end_headers()
        self.wfile.write(body)

    def log_error(self, *_):
        pass  # the line of the request tells the status


def folder(text: str) -> pathlib.Path:
    path = pathlib.Path(text).resolve()
    if not path.is_dir():
        raise argparse.ArgumentTypeError(f"there is no folder {text!r}")
    return path


def number_from(least: float, most: float, kind: type = int):
    def number(text: str):
        value = kind(text)
        if not least <= value <= most:
            raise argparse.ArgumentTypeError(f"{text} is not from {least} to {most}")
        return value

    return number


def read_options() -> argparse.Namespace:
    parser = argparse.ArgumentParser(prog="kb-server", description=__doc__)
    parser.add_argument("--pages", metavar="DIR", type=folder, default=str(ROOT / "examples/gallery/help"),
                        help="the pages, one folder for each language, with the images beside them; by default those "
                             "of the gallery")
    parser.add_argument("--address", metavar="URL", default=configured_address(),
                        help="the knowledge base to stand in for, by default %(default)s, which the library in "
                             "build/dev asks")
    parser.add_argument("--state", metavar="DIR", type=pathlib.Path, default=ROOT / "build/kb-server",
                        help="where the certificate of the authority goes, by default build/kb-server")
    parser.add_argument("--port", type=number_from(0, 65535), default=0,
                        help="the port of the proxy, by default a free one")
    parser.add_argument("--delay", metavar="SECONDS", type=number_from(0, 3600, float), default=0,
                        help="let every request wait; the help window waits for 10 seconds")
    parser.add_argument("--fail", metavar="STATUS", type=number_from(400, 599),
                        help="answer every request with this status; the help window falls back")
    return parser.parse_args()


def serve(options: argparse.Namespace) -> int:
    """Starts to serve, and returns the port of the proxy."""
    authority = trustme.CA()
    options.state.mkdir(parents=True, exist_ok=True)
    authority.cert_pem.write_to_path(str(options.state / "authority.pem"))
    Handler.options = options
    host = urllib.parse.urlsplit(options.address).hostname
    return start(Tunnel(host, start(HttpsServer(Handler, context_for(authority, host))), options.port))


def in_shell(path: pathlib.Path) -> str:
    return shlex.quote(os.path.join(".", os.path.relpath(path)))


def say_how_to_look(options: argparse.Namespace, port: int):
    gallery = f"{in_shell(ROOT / 'dev')} gallery --trust {in_shell(options.state / 'authority.pem')}"
    print(f"""The help pages in {in_shell(options.pages)} are at {options.address} for a gallery that is started with

    https_proxy=http://{LOOPBACK}:{port} {gallery}

Press F1 there. Each request is a line here. Ctrl-C ends the server.
""", flush=True)


def main():
    options = read_options()
    try:
        say_how_to_look(options, serve(options))
        threading.Event().wait()
    except OSError as error:
        raise SystemExit(f"kb-server: {error}")
    except KeyboardInterrupt:
        pass


main()
