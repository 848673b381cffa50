"""Going from page to page: drop-down list, redirects, menus."""

import unittest

from selenium.webdriver.support.ui import Select

from browser import BrowserTest


class DropDown(BrowserTest):
    def list(self):
        # Between table row and cell the form element stays empty, so the list is not inside it.
        return Select(self.element(".jump select"))

    def test_the_page_one_is_on_is_chosen(self):
        for page, title in (("index.htm", "Harbour Museum of Quillhaven"),
                            ("shop.htm", "Shop & tea room"),
                            ("colophon.htm", 'How these pages are "made"')):
            self.open(page)
            self.assertEqual([o.text for o in self.list().all_selected_options], [title])

    def test_every_page_of_the_list_is_offered(self):
        self.open("index.htm")
        offered = [o.get_attribute("value") for o in self.list().options]
        self.assertEqual(len(offered), 31)
        self.assertEqual(offered[:3], ["index.htm", "visit.htm", "find-us.htm"])
        self.assertIn("tides.htm", offered, "a page that is not listed elsewhere is offered, too")

    def test_choosing_goes_there_in_the_same_window(self):
        self.open("index.htm")
        handles = self.driver.window_handles
        self.list().select_by_visible_text("Photo album")
        self.wait_for_page("album.htm")
        self.list().select_by_value("guide.html")
        self.wait_for_page("guide.html")
        self.assertEqual(self.driver.window_handles, handles)


class ChosenOption(BrowserTest):
    """A list of options in an included file: the merge marks the page one is on."""

    def test_marks_the_current_page_and_goes_to_another(self):
        self.open("figureheads.htm")
        chooser = Select(self.element(".chooser select"))
        self.assertEqual(chooser.first_selected_option.get_attribute("value"), "figureheads.htm")
        chooser.select_by_value("instruments.htm")
        self.wait_for_page("instruments.htm")
        chooser = Select(self.element(".chooser select"))
        self.assertEqual(chooser.first_selected_option.text, "Clocks and instruments")


class Menus(BrowserTest):
    """References draw the menu entry of the current page otherwise."""

    def here(self):
        return [e.text for e in self.elements("nav .here")]

    def test_current_page_is_marked_and_no_link(self):
        for page, words in (("visit.htm", "Visit"), ("quiz.htm", "School quiz"),
                            ("guide.html", "Tours"), ("timeline.htm", "Harbour story"),
                            ("lighthouse/lamp.htm", "The lamp")):
            self.open(page)
            self.assertEqual(self.here(), [words], page)
            self.assertEqual(self.elements("nav .here a"), [], page)

    def test_another_page_of_a_group_is_marked_and_a_link(self):
        for page, words, target in (("instruments.htm", "Collections", "collections.htm"),
                                    ("logbook.htm", "Harbour story", "timeline.htm")):
            self.open(page)
            self.assertEqual([e.text for e in self.elements("nav .ingroup")], [words])
            self.element("nav .ingroup a").click()
            self.wait_for_page(target)

    def test_previous_and_next_run_through_the_list(self):
        self.open("index.htm")
        for page in ("visit.htm", "find-us.htm", "collections.htm"):
            self.element(".steps .next").click()
            self.wait_for_page(page)
        self.element(".steps .prev").click()
        self.wait_for_page("find-us.htm")


class Redirects(BrowserTest):
    def test_by_script_at_once(self):
        self.open("school.htm")
        self.wait_for_page("quiz.htm")

    def test_by_refresh_after_two_seconds(self):
        self.open("directions.htm")
        self.assertIn("Directions has moved.", self.element("body").text)
        self.wait_for_page("find-us.htm")


if __name__ == "__main__":
    unittest.main()
