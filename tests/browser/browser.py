"""A Chromium without windows, and a test case that looks at the example site with it."""

import atexit
import contextlib
import functools
import unittest

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.by import By
from selenium.webdriver.support.ui import WebDriverWait

from example_site import ExampleSite

PATIENCE = 10  # seconds until something that has to happen counts as never happening

# It draws pages and no tabs and bars around them, which takes chromium itself two thirds of the time. The script of that
# name in /usr/bin would end without it. It makes itself a profile, and shows no page when it is given the folder for one.
BROWSER = "/usr/lib/chromium/chromium-headless-shell"

SWITCHES = (
    "--no-sandbox",  # containers run tests as root
    "--disable-gpu",
    "--disable-dev-shm-usage",
    "--no-first-run",
    "--disable-popup-blocking",
    "--screen-info={1600x1200}",  # room enough for every popup to have the size it asks for
    "--window-size=1050,1100",
    "--host-resolver-rules=MAP * ~NOTFOUND, EXCLUDE 127.0.0.1",  # nothing outside is ever asked
)


@functools.cache
def chromium():
    """The one browser of a run."""
    options = webdriver.ChromeOptions()
    options.binary_location = BROWSER
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    for switch in SWITCHES:
        options.add_argument(switch)
    driver = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)
    atexit.register(driver.quit)
    return driver


@functools.cache
def example_site():
    """The one built site of a run; tests look at it and change nothing."""
    site = ExampleSite()
    atexit.register(site.close)
    return site


class BrowserTest(unittest.TestCase):
    """Looks at pages of the example site."""

    @classmethod
    def setUpClass(cls):
        cls.site = example_site()
        cls.driver = chromium()

    def open(self, page):
        self.driver.get(self.site.address(page))
        self.driver.get_log("browser")  # what earlier pages said is not this page's

    def element(self, css):
        return self.driver.find_element(By.CSS_SELECTOR, css)

    def elements(self, css):
        return self.driver.find_elements(By.CSS_SELECTOR, css)

    def link(self, words):
        return self.driver.find_element(By.LINK_TEXT, words)

    def script(self, text, *arguments):
        return self.driver.execute_script(text, *arguments)

    def point_at(self, element):
        self.script("arguments[0].scrollIntoView({block: 'center'})", element)
        ActionChains(self.driver).move_to_element(element).perform()

    def point_away(self):
        self.point_at(self.element("h1"))

    def wait_for(self, what, condition):
        return WebDriverWait(self.driver, PATIENCE, 0.02).until(lambda _: condition(), what)

    def wait_for_page(self, page):
        address = self.site.address(page)
        self.wait_for(
            f"never came to {page}",
            lambda: self.driver.current_url == address
            and self.script("return document.readyState") == "complete")

    def console_errors(self):
        """What the page said that is an error, but for outside addresses, which no test may ask."""
        return [
            entry["message"] for entry in self.driver.get_log("browser")
            if entry["level"] == "SEVERE" and not entry["message"].startswith(("http:", "https:"))]

    @contextlib.contextmanager
    def window_opened_by(self, act):
        """Does `act`, goes to the one window that it opens, and closes that at the end."""
        opener = self.driver.current_window_handle
        before = set(self.driver.window_handles)
        act()
        self.wait_for("no window opened", lambda: len(self.driver.window_handles) > len(before))
        opened = set(self.driver.window_handles) - before
        self.assertEqual(len(opened), 1)
        self.driver.switch_to.window(opened.pop())
        try:
            yield
        finally:
            if len(self.driver.window_handles) > len(before):
                self.driver.close()
            self.driver.switch_to.window(opener)
