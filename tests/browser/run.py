"""Runs the modules of browser tests that are named; exits with 77 when the browser's packages are missing."""

import importlib.util
import os
import sys
import unittest

NEEDED = {
    "chromium-headless-shell": lambda: os.access("/usr/lib/chromium/chromium-headless-shell", os.X_OK),
    "chromium-driver": lambda: os.access("/usr/bin/chromedriver", os.X_OK),
    "python3-selenium": lambda: importlib.util.find_spec("selenium") is not None,
}


def missing_packages():
    return [name for name, is_there in NEEDED.items() if not is_there()]


class NoBrowser(unittest.TestCase):
    """Stands for all tests where there is nothing to look at pages with."""

    def test_pages(self):
        self.skipTest("no browser to look at pages with; install " + " ".join(missing_packages()))


def main():
    loader = unittest.defaultTestLoader
    if missing_packages():
        unittest.TextTestRunner(verbosity=2).run(loader.loadTestsFromTestCase(NoBrowser))
        return 77
    sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
    suite = loader.loadTestsFromNames(sys.argv[1:])
    return 0 if unittest.TextTestRunner(verbosity=2).run(suite).wasSuccessful() else 1


if __name__ == "__main__":
    sys.exit(main())
