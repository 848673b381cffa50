"""Every page of the example site, looked at as it is drawn."""

import unittest

from browser import BrowserTest


class EveryPage(BrowserTest):
    def test_no_script_error_and_every_image_drawn(self):
        pages = self.site.pages(".htm", ".html")
        self.assertGreater(len(pages), 60, "the site with its server copy and three sections")
        self.driver.get_log("browser")
        for page in pages:
            with self.subTest(page):
                self.driver.get(self.site.address(page))
                self.assertEqual(self.console_errors(), [])
                self.assertEqual(self.script(
                    "return [...document.images].filter(i => !i.complete || !i.naturalWidth)"
                    ".map(i => i.src)"), [])

    def test_what_a_page_says_is_heard(self):
        # The two checks above see what they look for.
        self.driver.get("data:text/html,<script>nosuch()</script><img src='file:///no.gif'>")
        self.assertTrue(any("nosuch" in error for error in self.console_errors()))
        self.assertEqual(self.script("return document.images[0].naturalWidth"), 0)


class Drawn(BrowserTest):
    """Blocks are drawn as they are meant."""

    def box(self, element):
        return self.script("const r = arguments[0].getBoundingClientRect();"
                           "return [r.left, r.top, r.right, r.bottom]", element)

    def style(self, element, name):
        return element.value_of_css_property(name)

    def test_table_cells_span_and_have_colours(self):
        self.open("visit.htm")
        table = self.element("table.zutable")
        self.assertEqual(self.style(table, "border-collapse"), "collapse")
        winter = self.element("table.zutable td[rowspan='2']")
        self.assertEqual(self.style(winter, "background-color"), "rgba(251, 238, 203, 1)")
        left, top, right, bottom = self.box(winter)
        rows = self.elements("table.zutable tr")
        self.assertAlmostEqual(top, self.box(rows[2])[1], delta=2)
        self.assertAlmostEqual(bottom, self.box(rows[3])[3], delta=2)
        note = self.element("table.zutable th.note")
        self.assertAlmostEqual(self.box(note)[2], self.box(table)[2], delta=2)

    def test_side_bars_float_on_their_side_with_their_width(self):
        for page, side, width in (("find-us.htm", "left", 150), ("index.htm", "right", 150),
                                  ("instruments.htm", "left", 200),
                                  ("ship-tables.htm", "right", 200), ("shop.htm", "left", 250),
                                  ("figureheads.htm", "right", 250)):
            self.open(page)
            bar = self.element("table[bgcolor='#ffeecc']")
            self.assertEqual(self.style(bar, "float"), side, page)
            left, _, right, _ = self.box(bar)
            self.assertAlmostEqual(right - left, width, delta=1, msg=page)
            self.assertEqual(self.style(bar, "background-color"), "rgba(255, 238, 204, 1)")

    def test_fraction_has_its_bar_between_numerator_and_denominator(self):
        self.open("instruments.htm")
        bars = self.elements("td[bgcolor='#000000']")
        self.assertGreater(len(bars), 3)
        for bar in bars:
            left, top, right, bottom = self.box(bar)
            self.assertLess(bottom - top, 4, "a bar is a thin line")
            above, below = self.script(
                "const [table, x] = arguments, spans = [...table.rows].map(row =>"
                " [...row.cells].find(c => { const r = c.getBoundingClientRect();"
                " return c.rowSpan === 1 && r.left <= x && x <= r.right; }));"
                "return [spans[0], spans[2]]",
                bar.find_element("xpath", "ancestor::table[1]"), (left + right) / 2)
            self.assertLessEqual(self.box(above)[3], top + 2)
            self.assertGreaterEqual(self.box(below)[1], bottom - 2)
            self.assertTrue(above.text.strip() and below.text.strip())

    def test_timeline_has_a_dark_column_of_years(self):
        self.open("timeline.htm")
        years = self.elements("main td[bgcolor='293163']:not(:has(table))")
        self.assertEqual([y.text for y in years][:2], ["1612", "1688"])
        self.assertEqual(self.style(years[0], "background-color"), "rgba(41, 49, 99, 1)")
        self.assertEqual(len({self.box(y)[0] for y in years}), 1, "one column")

    def test_play_has_speakers_beside_their_speeches(self):
        self.open("shanty.htm")
        rows = self.elements("main center table tr")
        self.assertEqual(rows[1].text.split(), "Cook Nineteen months on dry land, and the first "
                         "thing she does is leak.".split())
        speaker = rows[1].find_element("css selector", "td font")
        self.assertEqual(self.style(speaker, "color"), "rgba(170, 0, 0, 1)")
        self.assertEqual(rows[0].find_element("css selector", "td").get_attribute("colspan"), "2")

    def test_orange_words_of_an_included_table(self):
        self.open("find-us.htm")
        word = self.element(".dark table font")
        self.assertEqual(word.text, "22.40")
        self.assertEqual(self.style(word, "color"), "rgba(255, 228, 193, 1)")

    def test_a_page_in_a_frame_of_another(self):
        self.open("index.htm")
        self.driver.switch_to.frame(self.element("iframe.hoursframe"))
        self.assertIn("A ticket for the year: £6.00", self.element("body").text)
        self.element("a").click()
        self.driver.switch_to.default_content()
        self.wait_for_page("visit.htm")


if __name__ == "__main__":
    unittest.main()
