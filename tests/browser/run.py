"""Runs the modules of browser tests that are named; exits with 77 when the browser's packages are missing."""

import importlib.util
import os
import sys
import unittest

NEEDED = {
    "chromium": lambda: os.access("/usr/bin/chromium", os.X_OK),
    "chromium-driver": lambda: os.access("/usr/bin/chromedriver", os.X_OK),
    "python3-selenium": lambda: importlib.util.find_spec("selenium") is not None,
}


def main():
    missing = [name for name, is_there in NEEDED.items() if not is_there()]
    if missing:
        print("skipped: no browser to look at the pages with; install " + " ".join(missing))
        return 77
    sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
    suite = unittest.defaultTestLoader.loadTestsFromNames(sys.argv[1:])
    return 0 if unittest.TextTestRunner(verbosity=2).run(suite).wasSuccessful() else 1


if __name__ == "__main__":
    sys.exit(main())
