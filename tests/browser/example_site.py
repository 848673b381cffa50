"""The example site, built into a folder of its own by the kiv-cli that KIV_CLI names."""

import os
import pathlib
import shutil
import subprocess
import tempfile


class ExampleSite:
    """Builds the site as ./run does. A message of the build, or a fatal error, is a failure."""

    def __init__(self):
        self._folder = tempfile.TemporaryDirectory(prefix="kiv-browser-")
        self.drive = pathlib.Path(self._folder.name) / "c"
        shutil.copytree(os.environ["KIV_EXAMPLE"], self.drive)
        run = subprocess.run(
            [os.environ["KIV_CLI"], "--drive-c", str(self.drive), "group", r"C:\site"],
            capture_output=True, text=True)
        if run.returncode != 0 or run.stderr:
            self.close()
            raise AssertionError(f"the example site does not build: {run.stdout}{run.stderr}")
        self.root = self.drive / "site"

    def close(self):
        self._folder.cleanup()

    def address(self, page):
        """The file:// address of a page, "lighthouse/lamp.htm"."""
        return (self.root / page).as_uri()

    def pages(self, *endings):
        """Every page with one of the endings, as a sorted list of names below the site."""
        return sorted(
            path.relative_to(self.root).as_posix()
            for path in self.root.rglob("*") if path.suffix in endings)
