"""The manual in a browser, as it is installed: pages read from files, without a server."""

import os
import pathlib
import unittest

from browser import BrowserTest, chromium
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys

SCHEMES = {"light": "rgb(255, 255, 255)", "dark": "rgb(27, 29, 31)"}
PHONE = {"width": 390, "height": 844, "deviceScaleFactor": 2, "mobile": True}


class ManualTest(BrowserTest):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(os.environ["KIV_MANUAL"])
        cls.driver = chromium()

    def open(self, page):
        self.driver.get((self.folder / page).as_uri())
        self.driver.get_log("browser")

    def page_names(self):
        return sorted(path.name for path in self.folder.glob("*.htm"))


class OnAPhone(ManualTest):
    """A screen of 390 pixels: what is wider than that scrolls in a frame of its own, not the page."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.driver.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", PHONE)
        cls.addClassCleanup(cls.driver.execute_cdp_cmd, "Emulation.clearDeviceMetricsOverride", {})

    def width(self):
        return self.script("return document.documentElement.scrollWidth")

    def test_no_page_is_wider_than_the_screen(self):
        pages = self.page_names()
        self.assertGreater(len(pages), 25)
        for page in pages:
            with self.subTest(page):
                self.open(page)
                self.assertEqual(self.script("return window.innerWidth"), 390)
                self.assertEqual(self.width(), 390)

    def test_a_page_that_is_too_wide_is_seen(self):
        self.open("index.htm")
        self.script("document.querySelector('h1').style.width = '500px'")
        self.assertGreater(self.width(), 390)

    def test_a_page_begins_with_its_text_and_the_menu_is_below(self):
        self.open("directives.htm")
        heading, menu = self.element("h1"), self.element("nav")
        self.assertLess(heading.location["y"], 150)
        self.assertGreater(menu.location["y"], heading.location["y"])
        self.link("All pages").click()
        self.assertTrue(self.script(
            "return arguments[0].getBoundingClientRect().top < innerHeight", menu))

    def test_the_search_fits(self):
        self.open("directives.htm")
        self.element("#search input").send_keys("zutable")
        self.wait_for("no result", lambda: self.elements("#search li a"))
        self.assertEqual(self.width(), 390)


class Colours(ManualTest):
    """Whatever a page shows can be read, in light and in dark."""

    # The background is that of the nearest element around the text that has one.
    CONTRASTS = """
        function light(colour) {
          const parts = colour.match(/[0-9.]+/g).slice(0, 3).map(function (part) {
            const share = part / 255;
            return share <= .03928 ? share / 12.92 : Math.pow((share + .055) / 1.055, 2.4);
          });
          return .2126 * parts[0] + .7152 * parts[1] + .0722 * parts[2];
        }
        function behind(element) {
          while (element && /^rgba\\(.*, 0\\)$/.test(getComputedStyle(element).backgroundColor))
            element = element.parentElement;
          return element ? getComputedStyle(element).backgroundColor : "rgb(255, 255, 255)";
        }
        return Array.from(document.querySelectorAll("body *"), function (element) {
          if (!Array.from(element.childNodes).some(n => n.nodeType === 3 && n.data.trim()))
            return 21;
          const both = [light(getComputedStyle(element).color), light(behind(element))].sort((a, b) => b - a);
          return (both[0] + .05) / (both[1] + .05);
        });"""

    def prefer(self, scheme):
        self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {
            "features": [{"name": "prefers-color-scheme", "value": scheme}]})

    def tearDown(self):
        self.prefer("")

    def test_every_text_stands_out(self):
        for scheme, paper in SCHEMES.items():
            self.prefer(scheme)
            for page in ("index.htm", "messages.htm", "check.htm", "tutorial.htm", "words.htm"):
                with self.subTest(page, scheme=scheme):
                    self.open(page)
                    self.assertEqual(self.element("body").value_of_css_property("background-color")
                                     .replace("rgba", "rgb").replace(", 1)", ")"), paper)
                    self.assertGreater(min(self.script(self.CONTRASTS)), 4.5)

    def test_a_text_that_does_not_is_seen(self):
        self.open("index.htm")
        self.script("document.querySelector('h1').style.color = '#999'")
        self.assertLess(min(self.script(self.CONTRASTS)), 4.5)


class Listings(ManualTest):
    def test_none_is_higher_than_a_screen(self):
        for page in ("tutorial.htm", "recipes.htm"):
            self.open(page)
            heights = self.script("return Array.from(document.querySelectorAll('pre'), p => p.offsetHeight)")
            self.assertGreater(len(heights), 5)
            self.assertLess(max(heights), 600, page)

    def test_a_style_sheet_is_folded(self):
        self.open("tutorial.htm")
        folded = self.elements("details pre[data-name$='style.css']")
        self.assertTrue(folded)
        self.assertFalse(any(pre.is_displayed() for pre in folded))
        self.script("arguments[0].closest('details').open = true", folded[0])
        self.assertTrue(folded[0].is_displayed())


class Search(ManualTest):
    """The search finds sections by their words."""

    def setUp(self):
        self.open("index.htm")
        self.field = self.element("#search input")

    def results(self):
        return [link.text for link in self.elements("#search li a")]

    def search(self, words):
        self.field.clear()
        self.field.send_keys(words)
        self.wait_for(f"nothing said of {words}", lambda: self.elements("#search li"))

    def test_nothing_is_loaded_before_it_is_needed(self):
        self.assertEqual(self.script("return document.scripts.length"), 1)
        self.search("colspan")
        self.assertEqual(self.script("return document.scripts.length"), 2)
        self.assertEqual(self.console_errors(), [])

    def test_a_section_is_found_by_its_heading_first(self):
        self.search("killrecord")
        self.assertEqual(self.results()[0], "Server-script lines: KILLRECORD")

    def test_hyphens_part_no_words(self):
        for words in ("utf8", "utf-8", "UTF 8"):
            self.search(words)
            self.assertTrue(self.elements("#search li a")[0].get_attribute("href").partition("#")[0]
                            .endswith("/utf-8.htm"), words)
        self.search("utf8")
        self.assertEqual(self.element("#search li mark").text, "UTF-8")

    def test_titles_rank_before_headings_and_these_before_text(self):
        self.search("template")
        self.assertEqual(self.results()[0], "The template")
        ranks = []
        for result in self.results():
            _, of_section, heading = result.lower().rpartition(": ")
            ranks.append(2 if "template" not in heading else 1 if of_section else 0)
        self.assertEqual(ranks, sorted(ranks))
        self.assertEqual(set(ranks), {0, 1, 2})

    def test_an_excerpt_begins_and_ends_at_whole_words(self):
        self.search("template")
        texts = self.script("return kivSections.map(s => s[4])")
        words = {word for text in texts for word in text.split()}
        cut = 0
        for excerpt in self.elements("#search .excerpt"):
            shown = excerpt.text.strip("\u2026").split()
            cut += len(shown) < len(excerpt.text.split())
            self.assertTrue(set(shown[:1] + shown[-1:]) <= words, excerpt.text)
        self.assertGreater(cut, 10)

    def test_all_words_must_occur(self):
        self.search("side bars")
        self.assertIn("Equations, timelines, side bars, quizzes, plays: Side bars", self.results()[:2])
        self.search("side nosuchword")
        self.assertEqual(self.element("#search").text, "Nothing found.")

    def test_marks_of_the_format_are_words_too(self):
        for words, page in (("@redirect2", "modes.htm"), ("!!pop[", "bangs.htm"), ("@@eoy", "page-list.htm")):
            self.search(words)
            pages = [a.get_attribute("href").rsplit("/")[-1].partition("#")[0]
                     for a in self.elements("#search li a")]
            self.assertIn(page, pages[:5], words)

    def test_cells_of_a_table_are_parted(self):
        self.search("@prevtitle")
        self.assertIn(" | ", " ".join(excerpt.text for excerpt in self.elements("#search .excerpt")))

    def test_the_excerpt_shows_the_word(self):
        self.search("KEYWORDS meta")
        marked = {mark.text.lower() for mark in self.elements("#search li:first-child mark")}
        self.assertLessEqual(marked, {"keywords", "meta"})
        self.assertTrue(marked)

    def test_results_are_few_and_the_rest_is_counted(self):
        self.search("the")
        self.assertEqual(len(self.results()), 20)
        self.assertRegex(self.element("#search .note").text, r"^and \d+ more: add a word$")

    def test_enter_goes_to_the_first_and_escape_clears(self):
        self.search("killrecord")
        self.field.send_keys(Keys.ESCAPE)
        self.assertEqual(self.results(), [])
        self.field.send_keys("killrecord", Keys.ENTER)
        goal = (self.folder / "scripts.htm").as_uri() + "#killrecord"
        self.wait_for(f"never came to {goal}", lambda: self.driver.current_url == goal)

    def test_every_result_leads_somewhere(self):
        self.search("kiv")
        places = self.script("return kivSections.map(s => [s[0], s[2]])")
        self.assertGreater(len(places), 150)
        ids = {}
        for page, place in places:
            if page not in ids:
                ids[page] = (self.folder / (page + ".htm")).read_text("cp1252")
            if place:
                self.assertIn(f'id="{place}"', ids[page], page)


class Menu(ManualTest):
    def test_menu_and_search_stay_while_the_text_scrolls(self):
        self.open("check.htm")
        self.script("window.scrollTo(0, 5000)")
        for css in ("#search", "nav"):
            top = self.script("return arguments[0].getBoundingClientRect().top",
                              self.driver.find_element(By.CSS_SELECTOR, css))
            self.assertLess(abs(top), 70, css)


if __name__ == "__main__":
    unittest.main()
