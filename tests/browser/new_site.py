"""A site as init begins it, with a section and news, built by the kiv-cli that KIV_CLI names."""

import os
import pathlib
import subprocess
import tempfile


class NewSite:
    """A message of a command, or a fatal error, is a failure."""

    def __init__(self):
        self._folder = tempfile.TemporaryDirectory(prefix="kiv-browser-")
        self._drive = pathlib.Path(self._folder.name) / "c"
        self._drive.mkdir()
        self.root = self._drive / "site"
        self._run("init", r"C:\site", "--news", "--section", "shop")
        article = self._drive / "article.txt"
        article.write_text("They came.\n\nAll day.\n")
        self._run("news", "--site", "1", "--name", "pr030504", "--title", "Boats at sea",
                  "--text", str(article))
        self._run("group", r"C:\site")

    def _run(self, *arguments):
        run = subprocess.run([os.environ["KIV_CLI"], "--drive-c", str(self._drive), *arguments],
                             capture_output=True, text=True)
        if run.returncode != 0 or run.stderr:
            self.close()
            raise AssertionError(f"{arguments}: {run.stdout}{run.stderr}")

    def close(self):
        self._folder.cleanup()

    def address(self, page):
        """The file:// address of a page, "shop/more.htm"."""
        return (self.root / page).as_uri()

    def pages(self):
        """Every page, as a sorted list of names below the site."""
        return sorted(path.relative_to(self.root).as_posix() for path in self.root.rglob("*.htm"))
