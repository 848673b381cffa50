"""What bang macros leave in a page works: popups, mail links, swapped images, opening sections."""

import unittest

from browser import BrowserTest

ALL_BARS = ("resizable=yes,scrollbars=yes,status=yes,toolbar=yes,location=yes,directories=yes,"
            "menubar=yes,")
USUAL = "resizable=yes,scrollbars=yes,status=yes,"

NOTE_CALLS = """
window.calls = [];
const open = window.open;
window.open = function () { calls.push([...arguments]); return open.apply(this, arguments); };
"""


class Popups(BrowserTest):
    """The page, the link's words, the window's name and features, and the address it comes to."""

    def popup(self, page, words, name, features, width, height, address):
        """Follows a link of a page; the window opened is left open for the caller to look at."""
        self.open(page)
        self.script(NOTE_CALLS)
        page_window = self.driver.current_window_handle
        window = self.window_opened_by(self.link(words).click)
        window.__enter__()
        self.addCleanup(window.__exit__, None, None, None)
        self.wait_for(f"the window never came to {address}",
                      lambda: self.driver.current_url == address)
        self.assertEqual(self.script("return window.name"), name)
        popup_window = self.driver.current_window_handle
        self.driver.switch_to.window(page_window)
        self.assertEqual(self.script("return calls"),
                         [["", name, f"{features}width={width},height={height}"]])
        self.assertEqual(self.console_errors(), [])
        self.driver.switch_to.window(popup_window)

    def size(self):
        return self.script("return [window.innerWidth, window.innerHeight]")

    def has_bars(self):
        return self.script("return [locationbar.visible, menubar.visible, toolbar.visible]")

    def assert_small_window(self, width, height):
        self.assertEqual(self.has_bars(), [False, False, False])
        self.wait_for(f"the window never was {width} by {height}",
                      lambda: self.size() == [width, height])

    def assert_window_with_bars(self):
        # A window with all its bars is the browser's own, whose size is the user's business.
        self.assertEqual(self.has_bars(), [True, True, True])

    def assert_shows(self, text):
        self.wait_for(f"the window never showed: {text}",
                      lambda: text in self.script("return document.body.innerText"))

    def test_named_window_of_a_size(self):
        self.popup("index.htm", "tide card", "tides", USUAL, 460, 560,
                   self.site.address("tides.htm"))
        self.assert_small_window(460, 560)
        self.assert_shows("Quillhaven bar, first week of August")

    def test_empty_fifth_field_is_the_usual_window(self):
        self.popup("visit.htm", "hours sheet as plain text", "opening", USUAL, 480, 360,
                   self.site.address("opening.txt"))
        self.assert_small_window(480, 360)
        self.assert_shows("1 April to 31 October")

    def test_features_of_ones_own(self):
        self.popup("find-us.htm", "Open the map in a window of its own", "map",
                   "resizable=yes,scrollbars=no,", 460, 460, self.site.address("map.htm"))
        self.assert_small_window(460, 460)
        self.assert_shows("The Custom House is the red building")
        self.assertTrue(self.script("return document.images[0].naturalWidth > 0"))

    def test_features_that_end_in_a_comma_get_no_second(self):
        self.popup("find-us.htm", "in a small one", "smallmap", "scrollbars=yes,", 420, 340,
                   self.site.address("map.htm"))
        self.assert_small_window(420, 340)

    def test_full_is_a_window_with_all_bars(self):
        self.popup("find-us.htm", "in a large one with all its bars", "bigmap", ALL_BARS, 700, 600,
                   self.site.address("map.htm"))
        self.assert_window_with_bars()
        self.assert_shows("The Custom House is the red building")

    def test_sixth_field_makes_the_usual_window_again(self):
        self.popup("shanty.htm", "version to print", "shantyprint", USUAL, 640, 600,
                   self.site.address("shanty-print.htm"))
        self.assert_small_window(640, 600)
        self.assert_shows("Song of the shanty evening.")

    def test_picture_popup_out_of_a_numbered_macro(self):
        self.open("album.htm")
        link = self.element("a[href='images/clock.jpg']")
        with self.window_opened_by(link.click):
            self.wait_for("the picture never came", lambda: self.driver.current_url
                          == self.site.address("images/clock.jpg"))
            self.assert_small_window(280, 360)
            self.assertEqual(
                self.script("return [document.images[0].naturalWidth,"
                            " document.images[0].naturalHeight]"), [240, 320])

    def test_page_name_alone_counts_windows(self):
        # The outside address in the box above is the page's first such popup.
        self.popup("visit.htm", "page on steps, lifts and chairs", "popwin2", ALL_BARS, 800, 600,
                   self.site.address("access.htm"))
        self.assert_window_with_bars()
        self.assert_shows("There is a lift to all floors but the roof.")

    def test_page_name_with_exclamation_mark_is_its_own_words(self):
        self.popup("access.htm", "map.htm", "popwin1", ALL_BARS, 800, 600,
                   self.site.address("map.htm"))
        self.assert_shows("The Custom House is the red building")

    def test_outside_addresses(self):
        self.popup("find-us.htm", "trains", "popwin1", ALL_BARS, 800, 600,
                   "http://www.example.com/trains/")

    def test_outside_address_as_words_loses_scheme_and_slash(self):
        self.popup("find-us.htm", "example.com", "popwin2", ALL_BARS, 800, 600,
                   "http://www.example.com/")

    def test_asp_page(self):
        self.open("privacy.htm")
        # Served from disk a browser takes an .asp page for a download, so the window is not gone to.
        self.script("document.querySelector('a[target=popwin1]')"
                    ".addEventListener('click', e => e.preventDefault())")
        with self.window_opened_by(self.link("guest book").click):
            self.assertEqual(self.script("return window.name"), "popwin1")
        self.assertEqual(self.link("guest book").get_attribute("href"),
                         self.site.address("asp/guestbook.asp"))

    def test_second_click_uses_the_same_window(self):
        self.open("index.htm")
        link = self.link("tide card")
        opener = self.driver.current_window_handle
        with self.window_opened_by(link.click):
            self.wait_for_page("tides.htm")
            popup = self.driver.current_window_handle
            self.driver.switch_to.window(opener)
            handles = set(self.driver.window_handles)
            link.click()
            self.assertEqual(set(self.driver.window_handles), handles)
            self.driver.switch_to.window(popup)
            self.wait_for_page("tides.htm")

    def test_close_of_the_print_and_close_bar(self):
        self.open("find-us.htm")
        before = len(self.driver.window_handles)
        with self.window_opened_by(self.link("in a small one").click):
            self.wait_for_page("map.htm")
            self.link("CLOSE").click()
            self.wait_for("the window stays", lambda: len(self.driver.window_handles) == before)


class Sections(BrowserTest):
    """Sections that a link opens and closes."""

    IDS = ["ondine", "admiral", "hen"]

    def shown(self):
        return [i for i in self.IDS if self.element("#" + i).is_displayed()]

    def toggle(self, section):
        self.element(f"a.showhide[onclick*=\"'{section}'\"]").click()

    def test_all_are_closed_at_first(self):
        self.open("figureheads.htm")
        self.assertEqual(self.shown(), [])
        self.assertEqual([a.text for a in self.elements("a.showhide")],
                         ["The girl of the Ondine", "The Admiral", "The black hen"])

    def test_each_opens_and_closes(self):
        self.open("figureheads.htm")
        for section in self.IDS:
            self.toggle(section)
            self.assertEqual(self.shown(), [section])
            self.toggle(section)
            self.assertEqual(self.shown(), [])
        self.assertEqual(self.console_errors(), [])

    def test_one_that_opens_closes_the_other(self):
        self.open("figureheads.htm")
        for section in ["hen", "ondine", "admiral"]:
            self.toggle(section)
            self.assertEqual(self.shown(), [section])
        self.assertIn("He lost his nose", self.element("#admiral").text)
        self.assertTrue(self.element("table[align=right]").is_displayed(), "the rest stays")


class SwappedImages(BrowserTest):
    """Images that change while they are pointed at."""

    def assert_swaps(self, page, name, first, second, target):
        self.open(page)
        image = self.element(f"img[name='{name}']")
        for point, file in ((self.point_away, first), (lambda: self.point_at(image), second),
                            (self.point_away, first)):
            point()
            self.wait_for(f"{file} never came", lambda: image.get_attribute("src")
                          == self.site.address(file))
            self.wait_for(f"{file} does not load", lambda: self.script(
                "return arguments[0].complete && arguments[0].naturalWidth > 0", image))
        image.click()
        self.wait_for_page(target)

    def test_out_of_a_variable(self):
        self.assert_swaps("index.htm", "imagedoor", "images/door1.gif", "images/door2.gif",
                          "visit.htm")

    def test_in_running_text(self):
        self.assert_swaps("collections.htm", "imagebell", "images/bell1.gif", "images/bell2.gif",
                          "figureheads.htm")


class MailLinks(BrowserTest):
    """The address stands nowhere in the page and is built when the pointer comes."""

    def assert_mail(self, page, words, address):
        self.open(page)
        source = (self.site.root / page).read_text("cp1252")
        self.assertNotIn(address.partition("@")[0] + "@", source)
        link = self.link(words)
        self.assertEqual(link.get_dom_attribute("href"), "*")
        self.point_at(link)
        self.wait_for("the address was never built", lambda: link.get_dom_attribute("href") != "*")
        self.assertEqual(link.get_dom_attribute("href"), "mailto:" + address)

    def test_open_form(self):
        self.assert_mail("visit.htm", "front desk", "desk@harbourmuseum.example.com")

    def test_closed_form_shows_the_address(self):
        address = "i.larch@schools.harbourmuseum.example.com"
        self.assert_mail("visit.htm", address, address)

    def test_in_the_frame(self):
        address = "desk@harbourmuseum.example.com"
        self.assert_mail("timeline.htm", address, address)


if __name__ == "__main__":
    unittest.main()
