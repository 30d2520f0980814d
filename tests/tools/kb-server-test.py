"""The knowledge base for developers, asked through its proxy as the help window would."""

import contextlib
import pathlib
import re
import signal
import ssl
import subprocess
import sys
import tempfile
import unittest
import urllib.error
import urllib.request

PROGRAM = pathlib.Path(__file__).resolve().parents[2] / "tools/kb-server/kb-server.py"
HOST = "https://kb.test.example"
ASK = "/cgi/knowledgebase/?action=findHelpFile&section=&unique=corvanta_utility_help&version=1.0&"


class KbServerTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.pages = self.folder / "pages/enu"
        self.pages.mkdir(parents=True)

    @contextlib.contextmanager
    def server(self, *options: str):
        command = [sys.executable, "-B", PROGRAM, "--address", HOST, "--pages", "pages", "--state", "state", *options]
        pipes = {"stdout": subprocess.PIPE, "stderr": subprocess.PIPE, "text": True}
        with subprocess.Popen(command, cwd=self.folder, **pipes) as run:
            try:
                self.take_the_way_of(next(line for line in run.stdout if "https_proxy=" in line))
                yield
            finally:
                run.send_signal(signal.SIGINT)
                _, self.log = run.communicate()
            self.assertEqual(run.returncode, 0)

    def take_the_way_of(self, command: str):
        proxy, authority = re.search(r"https_proxy=(\S+) .*/dev gallery --trust (\S+)$", command).groups()
        trust = ssl.create_default_context(cafile=self.folder / authority)
        self.client = urllib.request.build_opener(
            urllib.request.ProxyHandler({"https": proxy}), urllib.request.HTTPSHandler(context=trust))

    def get(self, path: str) -> str | int:
        try:
            return self.client.open(HOST + path).read().decode()
        except urllib.error.HTTPError as error:
            return error.code

    def test_pages_have_a_base_that_leads_to_their_images(self):
        base = f'<base href="{HOST}/help/enu/">'
        pages = [("a+b c.html", '<html><HEAD lang="en">', f'<html><HEAD lang="en">{base}'),
                 ("headless.html", "<!DOCTYPE html><HTML><header>", f"<!DOCTYPE html><HTML><head>{base}</head><header>"),
                 ("fragment.html", "text é <p>", f"<html><head>{base}</head>text é <p>"), ("plain.txt", "a <b", "a <b")]
        for name, content, _ in pages:
            (self.pages / name).write_text(content, "utf-8")
        (self.pages / "a.png").write_text("image")
        (self.folder / "pages/b.png").write_text("image of all languages")
        with self.server():
            for name, _, answer in pages:
                self.assertEqual(self.get(ASK + "lang=enu&link=" + name.replace(" ", "%20")), answer)
            self.assertEqual(self.get("/help/enu/a.png"), "image")
            self.assertEqual(self.get("/help/enu/../b.png"), "image of all languages")
        self.assertEqual(re.findall(r'"GET /(\w+)/.*" (\d+)', self.log), [("cgi", "200")] * 4 + [("help", "200")] * 2)

    def test_nothing_else_is_there(self):
        secret = self.folder / "secret"
        secret.write_text("secret")
        (self.pages / "page.html").write_text("<html>")
        (self.pages / "link").symlink_to(secret)
        asks = ["lang=deu&link=page.html", "lang=enu&link=", "lang=..&link=secret", "lang=enu&link=../../secret",
                f"lang=enu&link={secret}", "lang=enu&link=%00", "lang=enu&link=" + 300 * "a"]
        paths = ["/", "/help/", "/help/../secret", "/help/enu/%2e%2e/../../secret", "/help/enu/link", f"/help/{secret}",
                 "/cgi/knowledgebase/?action=other&lang=enu&link=page.html", *(ASK + ask for ask in asks)]
        with self.server():
            self.assertEqual([self.get(path) for path in paths], [404] * len(paths))
        with self.server("--fail", "503"):
            self.assertEqual(self.get(ASK + "lang=enu&link=page.html"), 503)


# A suite in the background ignores Ctrl-C, and so would the server.
signal.signal(signal.SIGINT, signal.default_int_handler)
unittest.main()
