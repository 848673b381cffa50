"""A new site is looked at on a desktop and on a phone, by day and by night."""

import contextlib
import re
import unittest

from browser import BrowserTest, chromium
from new_site import NewSite

WIDTHS = (1280, 390)
READABLE = 4.5  # the contrast that text needs


def brightness(colour):
    """How bright "rgb(35, 40, 45)" is to an eye, from 0 to 1."""
    def linear(part):
        part = int(part) / 255
        return part / 12.92 if part <= 0.04045 else ((part + 0.055) / 1.055) ** 2.4
    red, green, blue = (linear(part) for part in re.findall(r"\d+", colour)[:3])
    return 0.2126 * red + 0.7152 * green + 0.0722 * blue


def contrast(one, other):
    dark, bright = sorted((brightness(one), brightness(other)))
    return (bright + 0.05) / (dark + 0.05)


class NewSitePages(BrowserTest):
    @classmethod
    def setUpClass(cls):
        cls.site = NewSite()
        cls.driver = chromium()

    @classmethod
    def tearDownClass(cls):
        cls.site.close()

    @contextlib.contextmanager
    def seen(self, width=1280, scheme="light"):
        """As on a screen so wide, for somebody who likes it light or dark."""
        self.driver.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {
            "width": width, "height": 800, "deviceScaleFactor": 1,
            "mobile": width < 500})  # whose scroll bar takes no room
        self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {
            "features": [{"name": "prefers-color-scheme", "value": scheme}]})
        try:
            yield
        finally:
            self.driver.execute_cdp_cmd("Emulation.clearDeviceMetricsOverride", {})
            self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {"features": []})

    def colour(self, css, name="color"):
        return self.element(css).value_of_css_property(name)

    def test_every_page_fits_the_screen(self):
        self.assertEqual(self.site.pages(), [
            "index.htm", "news/index.htm", "news/pr030504.htm", "picture.htm", "shop/index.htm",
            "shop/more.htm", "sitemap.htm", "table.htm"])
        for width in WIDTHS:
            for page in self.site.pages():
                with self.subTest(page, width=width), self.seen(width):
                    self.open(page)
                    self.assertEqual(self.script("return innerWidth"), width)
                    self.assertLessEqual(
                        self.script("return document.documentElement.scrollWidth"), width)
                    self.assertEqual(self.console_errors(), [])

    def test_the_picture_is_drawn_as_wide_as_there_is_room(self):
        for width, drawn in ((1280, 696), (390, 350)):  # 46rem and the screen, less the padding
            with self.subTest(width=width), self.seen(width):
                self.open("picture.htm")
                picture = self.element("figure img")
                self.assertGreater(self.script("return arguments[0].naturalWidth", picture), 0)
                self.assertEqual(picture.size, {"width": drawn, "height": drawn // 2})

    def test_text_can_be_read_by_day_and_by_night(self):
        papers = []
        for scheme in ("light", "dark"):
            with self.seen(scheme=scheme):
                self.open("table.htm")
                paper = self.colour("body", "background-color")
                papers.append(brightness(paper))
                for css in ("main p", "nav a", ".steps a", "footer p", "h1"):
                    self.assertGreater(contrast(self.colour(css), paper), READABLE,
                                       (scheme, css))
                card = self.colour("table", "background-color")
                self.assertGreater(contrast(self.colour("td"), card), READABLE, scheme)
        self.assertGreater(papers[0], 0.8)
        self.assertLess(papers[1], 0.1)

    def test_the_menu_shows_where_one_is(self):
        for page, words in (("index.htm", "Welcome"), ("table.htm", "A table"),
                            ("shop/more.htm", "More")):
            with self.subTest(page):
                self.open(page)
                marked = [link.text for link in self.elements("nav a")
                          if brightness(link.value_of_css_property("color"))
                          == brightness(self.colour("body"))]
                self.assertEqual(marked, [words])

    def test_the_neighbours_lead_through_the_site_and_back(self):
        self.open("index.htm")
        self.assertEqual(self.elements("a[rel=prev]"), [])
        for page in ("table.htm", "picture.htm", "sitemap.htm"):
            self.element("a[rel=next]").click()
            self.wait_for_page(page)
        self.assertEqual(self.elements("a[rel=next]"), [])
        for page in ("picture.htm", "table.htm", "index.htm"):
            self.element("a[rel=prev]").click()
            self.wait_for_page(page)

    def test_sections_and_news_are_found(self):
        self.open("sitemap.htm")
        self.link("More").click()
        self.wait_for_page("shop/more.htm")
        self.link("Home").click()
        self.wait_for_page("index.htm")
        self.link("News").click()
        self.wait_for_page("news/index.htm")
        self.link("Boats at sea").click()
        self.wait_for_page("news/pr030504.htm")
        self.assertEqual([p.text for p in self.elements("main p")][1:], ["They came.", "All day."])


if __name__ == "__main__":
    unittest.main()
