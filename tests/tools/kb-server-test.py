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
        (self.pages / "a+b c.html").write_text('<html><HEAD lang="en"><title>é</title></HEAD></html>', "utf-8")
        (self.pages / "headless.html").write_text("<!DOCTYPE html><HTML><header>text</header>")
        (self.pages / "fragment.html").write_text("text <p>")
        (self.pages / "plain.txt").write_text("a <b")
        (self.pages / "a.png").write_text("image")
        (self.folder / "pages/b.png").write_text("image of all languages")
        base = f'<base href="{HOST}/help/enu/">'
        with self.server():
            self.assertEqual(self.get(ASK + "lang=enu&link=a+b%20c.html"),
                             f'<html><HEAD lang="en">{base}<title>é</title></HEAD></html>')
            self.assertEqual(self.get(ASK + "lang=enu&link=headless.html"),
                             f"<!DOCTYPE html><HTML><head>{base}</head><header>text</header>")
            self.assertEqual(self.get(ASK + "lang=enu&link=fragment.html"),
                             f"<html><head>{base}</head>text <p>")
            self.assertEqual(self.get(ASK + "lang=enu&link=plain.txt"), "a <b")
            self.assertEqual(self.get("/help/enu/a.png"), "image")
            self.assertEqual(self.get("/help/enu/../b.png"), "image of all languages")
        self.assertEqual(re.findall(r'"GET /(\w+)/.*" (\d+)', self.log), [("cgi", "200")] * 4 + [("help", "200")] * 2)

    def test_nothing_else_is_there(self):
        secret = self.folder / "secret"
        secret.write_text("secret")
        (self.pages / "page.html").write_text("<html>")
        (self.pages / "link").symlink_to(secret)
        paths = ["/", "/help/", "/help/enu/b.png", "/help/../secret", "/help/enu/%2e%2e/../../secret", "/help/enu/link",
                 f"/help/{secret}", ASK, ASK + "lang=deu&link=page.html", ASK + "lang=enu&link=",
                 ASK + "lang=..&link=secret", ASK + "lang=enu&link=../../secret", ASK + f"lang=enu&link={secret}",
                 ASK + "lang=enu&link=%00", ASK + "lang=enu&link=" + 300 * "a",
                 "/cgi/knowledgebase/?action=other&lang=enu&link=page.html"]
        with self.server():
            self.assertEqual([self.get(path) for path in paths], [404] * len(paths))

    def test_fails_on_request(self):
        (self.pages / "page.html").write_text("<html>")
        with self.server("--fail", "503"):
            self.assertEqual(self.get(ASK + "lang=enu&link=page.html"), 503)


# A suite in the background ignores Ctrl-C, and so would the server.
signal.signal(signal.SIGINT, signal.default_int_handler)
unittest.main()
