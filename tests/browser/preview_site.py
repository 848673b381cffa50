"""A small site of a test's own, shown by `kiv-cli preview`."""

import os
import pathlib
import signal
import subprocess
import tempfile

TEMPLATE = """<!DOCTYPE html>
<html><head><meta charset="windows-1252"><title>@TITLE</title>
<link rel="stylesheet" href="main.css"></head><body>
<h1>The harbour: @TITLE</h1>
<!--BODY HERE-->
</body></html>
"""
PAGE_LIST = """!!1 = <em id="macro">Captain !1</em>
@FILE = index
@TITLE = Start
<p id="first">Welcome, says !!1[Ann].</p>
<zutable>
h:Ship\tYear
Curlew\t1904
Petrel\t1911
</zutable>
<p id="space"></p>
<p id="end">The end.</p>
@FILE = other
@TITLE = Other
<p id="first">Another page.</p>
"""
STYLE = "#space{height:4000px}\n"
EDITOR = """#!/bin/sh
printf '%s\\n' "$@" >>"$(dirname "$0")/edited.tmp" && mv "$(dirname "$0")/edited.tmp" "$(dirname "$0")/edited.txt"
"""


class PreviewSite:
    def __init__(self):
        self._folder = tempfile.TemporaryDirectory(prefix="kiv-preview-")
        self.drive = pathlib.Path(self._folder.name) / "c"
        self.root = self.drive / "site"
        self.root.mkdir(parents=True)
        (self.drive / "utils").mkdir()
        self.save("_template.txt", TEMPLATE)
        self.save("_html.txt", PAGE_LIST)
        self.save("main.css", STYLE)
        self.save("guest.asp", '<% Response.Write("<p>") %>\n')
        editor = self.drive / "editor"
        editor.write_text(EDITOR)
        editor.chmod(0o755)
        (self.drive / "utils" / "kiv_editpad.txt").write_text("c:\\editor %f %l\r\n")
        self._program = None
        self.address = ""
        self.start()

    def start(self, port=0):
        """Starts the program; its first line is the address."""
        self._errors = open(pathlib.Path(self._folder.name) / "errors.txt", "w")
        self._program = subprocess.Popen(
            [os.environ["KIV_CLI"], "--drive-c", str(self.drive), "preview", r"C:\site",
             "--port", str(port)],
            stdout=subprocess.PIPE, stderr=self._errors, text=True)
        self.address = self._program.stdout.readline().strip()
        self._program.stdout.readline()  # the first build is told

    @property
    def port(self):
        return int(self.address.split(":")[2].split("/")[0])

    def stop(self):
        self._program.send_signal(signal.SIGINT)
        self._program.stdout.read()
        code = self._program.wait(timeout=10)
        self._program.stdout.close()
        self._errors.close()
        return code

    def close(self):
        if self._program.poll() is None:
            self.stop()
        self._folder.cleanup()

    def save(self, name, text):
        """As an editor does: whole, beside the file, then in its place."""
        draft = self.root / (name + ".draft")
        draft.write_bytes(text.replace("\r\n", "\n").replace("\n", "\r\n").encode("cp1252"))
        draft.replace(self.root / name)

    def edited(self):
        """The file and the line that the editor was given since the last call; None: it was not started."""
        path = self.drive / "edited.txt"
        if not path.exists():
            return None
        text = path.read_text()
        path.unlink()
        return text.splitlines()
