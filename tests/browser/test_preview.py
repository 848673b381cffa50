"""`kiv-cli preview` in a browser: pages that reload, the bar, and the way to the source."""

import os
import pathlib
import time
import unittest

from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.keys import Keys

from browser import BrowserTest
from preview_site import PAGE_LIST, STYLE, TEMPLATE, PreviewSite

AT_ONCE = 1.0  # seconds in which a save is to be seen
TIME_FOR_NEWS = 0.5  # seconds after a build in which a page would load again that should not


class PreviewTest(BrowserTest):
    @classmethod
    def setUpClass(cls):
        from browser import chromium
        cls.driver = chromium()

    def setUp(self):
        self.site = PreviewSite()
        self.addCleanup(self.site.close)
        self.driver.set_window_size(1000, 700)

    def open(self, page):
        self.driver.get(self.site.address + page)
        self.driver.get_log("browser")
        # Whatever changes before it listens it is told when it does.
        self.script("window.isOld = true")

    def is_new(self):
        return self.script("return !window.isOld && document.readyState === 'complete'")

    def seconds_until(self, what, condition):
        begin = time.monotonic()
        self.wait_for(what, condition)
        return time.monotonic() - begin

    def text(self, css):
        return self.script("const e = document.querySelector(arguments[0]);"
                           "return e ? e.textContent : null", css)

    def drawn(self, css):
        """The text of what is drawn over the page; None when it is not there."""
        return self.script(
            "const host = document.querySelector('kiv-preview');"
            "const e = host && host.shadowRoot.querySelector(arguments[0]);"
            "return e ? e.textContent : null", css)

    def assert_edited(self, place):
        """The editor was started, at this "file:line"."""
        edited = []
        self.wait_for("no editor was started", lambda: edited.append(self.site.edited()) or edited[-1])
        name, line = place.split(":")
        self.assertEqual(edited[-1], [str(self.site.root / name), line])


class Reload(PreviewTest):
    def test_a_saved_page_list_shows_within_a_second_where_the_page_was(self):
        self.open("index.htm")
        self.script("window.scrollTo(0, 2500)")
        self.site.save("_html.txt", PAGE_LIST.replace("The end.", "The very end."))
        took = self.seconds_until(
            "the page never changed", lambda: self.text("#end") == "The very end.")
        self.assertLess(took, AT_ONCE)
        self.wait_for("the page lost its place",
                      lambda: self.is_new() and self.script("return scrollY") == 2500)
        self.assertEqual(self.console_errors(), [])

    def test_what_scrolls_within_the_page_keeps_its_place(self):
        boxes = "".join(f'<div {name} style="height:50px;overflow:auto"><p style="height:900px">x</p></div>'
                        for name in ('id="box"', 'class="bare"'))
        page_list = PAGE_LIST.replace("@FILE = other", boxes + "\n@FILE = other")
        self.site.save("_html.txt", page_list)
        self.wait_for("never built", lambda: "bare" in (self.site.root / "index.htm").read_text())
        self.open("index.htm")
        self.script("document.querySelector('#box').scrollTop = 300;"
                    "document.querySelector('.bare').scrollTop = 200")
        self.site.save("_html.txt", page_list.replace("The end.", "Another end."))
        self.wait_for("the page never changed", lambda: self.text("#end") == "Another end.")
        self.wait_for("a box lost its place", lambda: self.is_new() and self.script(
            "return [document.querySelector('#box').scrollTop,"
            " document.querySelector('.bare').scrollTop]") == [300, 200])

    def test_a_page_whose_policy_lets_no_script_run(self):
        self.site.save("_template.txt", TEMPLATE.replace("<title>", """\
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; style-src 'none'; script-src 'none'"><title>"""))
        self.wait_for("never built", lambda: "Policy" in (self.site.root / "index.htm").read_text())
        self.open("index.htm")
        self.site.save("_html.txt", PAGE_LIST.replace("The end.", "<zufoo>"))
        self.wait_for("no bar", lambda: self.drawn(".bar"))
        self.assertEqual(self.script(
            "return getComputedStyle(document.querySelector('kiv-preview').shadowRoot"
            ".querySelector('.bar')).position"), "fixed")
        self.site.save("_html.txt", PAGE_LIST.replace("The end.", "Reloaded."))
        self.wait_for("the page never changed", lambda: self.text("#end") == "Reloaded.")

    def test_a_page_that_is_cut_off(self):
        self.site.save("cut.htm", '<p id="first">One.<a href="x')
        self.open("cut.htm")
        self.site.save("cut.htm", '<p id="first">Two.<a href="x')
        self.wait_for("the page never changed", lambda: self.text("#first") == "Two.")

    def test_a_list_of_a_folder_follows_it(self):
        (self.site.root / "sub").mkdir()
        self.site.save("sub/a.txt", "a")
        self.open("sub/")
        self.site.save("sub/b.txt", "b")
        self.wait_for("the list never changed", lambda: "b.txt" in self.text("ul"))

    def test_a_page_that_did_not_change_is_left_alone(self):
        self.open("other.htm")
        self.site.save("_html.txt", PAGE_LIST.replace("The end.", "The very end."))
        self.wait_for("never built", lambda: "very" in (self.site.root / "index.htm").read_text())
        time.sleep(TIME_FOR_NEWS)
        self.assertTrue(self.script("return window.isOld"))

    def test_one_save_is_one_reload(self):
        self.open("index.htm")
        self.script("sessionStorage.setItem('loads', '0')")
        self.driver.execute_cdp_cmd("Page.addScriptToEvaluateOnNewDocument", {
            "source": "if (sessionStorage.loads) sessionStorage.loads = +sessionStorage.loads + 1"})
        for text in ("One.", "Two."):
            self.site.save("_html.txt", PAGE_LIST.replace("The end.", text))
            self.wait_for("the page never changed", lambda: self.text("#end") == text)
            time.sleep(TIME_FOR_NEWS)
        self.assertEqual(self.script("return sessionStorage.loads"), "2")

    def test_a_saved_style_sheet(self):
        self.open("index.htm")
        self.script("window.scrollTo(0, 1500)")
        self.site.save("main.css", STYLE + "h1{color:rgb(1, 2, 3)}\n")
        took = self.seconds_until("the style never changed", lambda: self.script(
            "return document.readyState === 'complete' &&"
            " getComputedStyle(document.querySelector('h1')).color") == "rgb(1, 2, 3)")
        self.assertLess(took, AT_ONCE)
        self.wait_for("the page lost its place", lambda: self.script("return scrollY") == 1500)

    def test_a_page_that_comes_to_be(self):
        self.open("late.htm")
        self.assertIn("Nothing is called", self.text("h1"))
        self.site.save("_html.txt", PAGE_LIST + "@FILE = late\n@TITLE = Late\n<p id=late>Here.\n")
        self.wait_for("the page never came", lambda: (self.text("#late") or "").strip() == "Here.")

    def test_a_page_whose_name_is_not_ascii(self):
        page_list = PAGE_LIST.replace("@FILE = other", "@FILE = caf\u00e9 & 100%")
        self.site.save("_html.txt", page_list)
        self.wait_for("never built", lambda: (self.site.root / "caf\u00e9 & 100%.htm").exists())
        self.open("caf%C3%A9%20&%20100%25.htm")
        self.site.save("_html.txt", page_list.replace("Another page.", "Accents."))
        self.wait_for("the page never changed", lambda: self.text("#first") == "Accents.")
        self.assertEqual(self.console_errors(), [])

    def test_a_page_whose_name_is_no_utf_8(self):
        path = os.path.join(os.fsencode(self.site.root), b"caf\xe9.htm")
        pathlib.Path(os.fsdecode(path)).write_text("<p id=first>One.")
        self.open("caf%E9.htm")
        pathlib.Path(os.fsdecode(path)).write_text("<p id=first>Two, longer.")
        self.wait_for("the page never changed", lambda: self.text("#first") == "Two, longer.")
        self.assertEqual(self.console_errors(), [])

    def test_the_program_started_anew(self):
        self.open("index.htm")
        port = self.site.port
        self.site.stop()
        self.site.save("_html.txt", PAGE_LIST.replace("The end.", "Tomorrow."))
        self.site.start(port)
        self.wait_for("the page never found it", lambda: self.text("#end") == "Tomorrow.")


    def test_a_page_with_a_base_elsewhere(self):
        self.site.save("_template.txt", TEMPLATE.replace(
            "<html><head>", '<html><head><base href="http://a.example/">'))
        self.wait_for("never built", lambda: "a.example" in (self.site.root / "index.htm").read_text())
        self.open("index.htm")
        self.site.save("_html.txt", PAGE_LIST.replace("The end.", "Elsewhere."))
        self.wait_for("the page never changed", lambda: self.text("#end") == "Elsewhere.")

    def test_a_page_that_is_only_linked(self):
        self.site.save("_template.txt", TEMPLATE.replace(
            "</head>", '<link rel="next index" href="other.htm"><link rel="prefetch" href="other.htm"></head>'))
        self.wait_for("never built", lambda: "prefetch" in (self.site.root / "index.htm").read_text())
        self.open("index.htm")
        self.site.save("_html.txt", PAGE_LIST.replace("Another page.", "Only this one."))
        self.wait_for("never built", lambda: "Only this" in (self.site.root / "other.htm").read_text())
        time.sleep(TIME_FOR_NEWS)
        self.assertTrue(self.script("return window.isOld"))

    def test_a_page_of_many_frames(self):
        frames = "".join(f'<iframe src="other.htm?{i}"></iframe>' for i in range(9))
        self.site.save("frames.htm", f"<html><head></head><body>{frames}</body></html>")
        self.open("frames.htm")
        for text in ("All nine.", "Once more."):
            self.site.save("_html.txt", PAGE_LIST.replace("Another page.", text))
            self.wait_for("a frame never changed", lambda: self.frame_texts() == [text] * 9)
            self.assertTrue(self.script("return window.isOld"))
        self.assertEqual(self.console_errors(), [])

    def frame_texts(self):
        return self.script("return [...Array(frames.length).keys()].map(i => {"
                           "const e = frames[i].document.querySelector('#first');"
                           "return e && e.textContent})")

    def test_two_windows_show_the_same(self):
        self.open("index.htm")
        first = self.driver.current_window_handle
        self.driver.switch_to.new_window("window")
        self.open("index.htm")
        second = self.driver.current_window_handle
        self.site.save("_html.txt", PAGE_LIST.replace("The end.", "For both."))
        for window in (first, second):
            self.driver.switch_to.window(window)
            self.wait_for("a window never changed", lambda: self.text("#end") == "For both.")
        self.driver.close()
        self.driver.switch_to.window(first)


class Bar(PreviewTest):
    def test_a_broken_save_and_a_mended_one(self):
        self.open("index.htm")
        self.site.save("_html.txt", PAGE_LIST.replace("</zutable>", "{{never\n</zutable>"))
        self.wait_for("no bar", lambda: self.drawn(".bar.failed"))
        self.assertIn("The build ended in an error.", self.drawn(".bar.failed"))
        self.assertIn("_html.txt:", self.drawn(".bar"))
        self.site.save("_html.txt", PAGE_LIST)
        self.wait_for("the bar stayed", lambda: self.drawn(".bar") is None)

    def test_a_warning_and_its_place(self):
        self.open("other.htm")
        self.site.save("_html.txt", PAGE_LIST.replace("Another page.", "<zufoo>"))
        self.wait_for("no bar", lambda: self.drawn(".bar"))
        self.assertEqual(self.drawn(".bar .words"),
                         "One warning. _html.txt:14: <zufoo> is unknown!")
        self.script("document.querySelector('kiv-preview').shadowRoot"
                    ".querySelector('.words button').click()")
        self.assert_edited("_html.txt:14")
        self.script("document.querySelector('kiv-preview').shadowRoot"
                    ".querySelector('.close').click()")
        self.assertIsNone(self.drawn(".bar"))

    def test_a_page_renamed(self):
        self.open("other.htm")
        self.site.save("_html.txt", PAGE_LIST.replace("@FILE = other", "@FILE = another"))
        self.wait_for("no bar", lambda: self.drawn(".bar"))
        self.assertEqual(self.drawn(".bar .words"),
                         "The last build wrote no page of this name; what you see is older. "
                         "New since then: /another.htm. ")
        self.script("document.querySelector('kiv-preview').shadowRoot"
                    ".querySelector('.words a').click()")
        self.wait_for_page("another.htm")

    def wait_for_page(self, page):
        self.wait_for(f"never came to {page}",
                      lambda: self.driver.current_url == self.site.address + page)


class Source(PreviewTest):
    def point_with_alt(self, css, *keys):
        """Holds Alt, and what else is named, over an element; lets go at the end of the test."""
        chain = ActionChains(self.driver).move_to_element(self.element(css)).key_down(Keys.ALT)
        for key in keys:
            chain.key_down(key)
        chain.perform()
        self.addCleanup(ActionChains(self.driver).key_up(Keys.SHIFT).key_up(Keys.ALT).perform)

    def click(self):
        ActionChains(self.driver).click().perform()

    def assert_place(self, css, place):
        self.point_with_alt(css)
        self.wait_for("nothing is framed", lambda: self.drawn(".name"))
        self.assertEqual(self.drawn(".name"), place)
        self.click()
        self.assert_edited(place)
        ActionChains(self.driver).key_up(Keys.ALT).perform()
        self.assertIsNone(self.drawn(".frame"))

    def test_each_element_opens_its_own_line(self):
        self.open("index.htm")
        for css, place in (("td", "_html.txt:7"), ("tr:last-child td", "_html.txt:8"),
                           ("h1", "_template.txt:4"), ("#macro", "_html.txt:1"),
                           ("#first", "_html.txt:4")):
            with self.subTest(css):
                self.assert_place(css, place)
        self.assertEqual(self.console_errors(), [])

    def test_the_source_of_a_page_whose_name_is_not_ascii(self):
        self.site.save("_html.txt", PAGE_LIST.replace("@FILE = other", "@FILE = caf\u00e9"))
        self.wait_for("never built", lambda: (self.site.root / "caf\u00e9.htm").exists())
        self.open("caf%C3%A9.htm")
        self.assert_place("#first", "_html.txt:14")

    def test_a_link_is_not_followed(self):
        self.site.save("_html.txt", PAGE_LIST.replace("The end.", '<a id="link" href="other.htm">x</a>'))
        self.wait_for("never built", lambda: "other.htm" in (self.site.root / "index.htm").read_text())
        self.open("index.htm")
        self.assert_place("#link", "_html.txt:11")
        self.assertTrue(self.driver.current_url.endswith("index.htm"))

    def test_places_are_those_of_the_last_save(self):
        self.open("index.htm")
        self.assert_place("#macro", "_html.txt:1")
        self.site.save("_html.txt", ";; a remark\n" + PAGE_LIST.replace("The end.", "Moved."))
        self.wait_for("the page never changed", lambda: self.text("#end") == "Moved.")
        self.assert_place("#first", "_html.txt:5")

    def test_the_story_beside_the_page(self):
        self.open("index.htm")
        self.point_with_alt("#macro", Keys.SHIFT)
        self.click()
        self.wait_for("no story", lambda: self.drawn(".story"))
        story = self.drawn(".story")
        self.assertIn("index.htm:", story)
        self.assertIn("_html.txt:4", story)
        self.assertIn('macro 1 of _html.txt:1, filled with "Ann"', story)
        self.assertIsNone(self.site.edited())
        self.assertEqual(self.script(
            "return document.querySelector('kiv-preview').shadowRoot.querySelector('mark').textContent"
            " !== null"), True)

    def test_a_script_page_is_text_and_its_lines_open(self):
        self.open("guest.asp")
        self.assertIn("The preview runs none", self.text(".note"))
        self.assertEqual(self.text("pre span"), '<% Response.Write("<p>") %>')
        self.assert_place("pre span", "guest.asp:1")


if __name__ == "__main__":
    unittest.main()
