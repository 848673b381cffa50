"""Every link and image of every page of the example site leads to a file of the site."""

import pathlib
import tempfile
import unittest

from example_site import ExampleSite
from links import missing_targets, targets


class EveryLink(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.site = ExampleSite()
        cls.addClassCleanup(cls.site.close)
        cls.pages = cls.site.pages(".htm", ".html", ".asp")

    def test_leads_to_a_file(self):
        for page in self.pages:
            with self.subTest(page):
                self.assertEqual(missing_targets(self.site.root / page), [])

    def test_every_static_page_is_reached_from_the_start(self):
        reached, waiting = set(), [self.site.root.resolve() / "index.htm"]
        while waiting:
            page = waiting.pop()
            if page not in reached and page.suffix in (".htm", ".html"):
                reached.add(page)
                waiting += [target for _, target, _ in targets(page) if target.is_file()]
        here = {page.relative_to(self.site.root.resolve()).as_posix() for page in reached}
        static = {page for page in self.pages if not page.startswith("asp/")}
        self.assertEqual(static - here, set())


class Checker(unittest.TestCase):
    """What is missing is found."""

    def missing(self, page):
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            (folder / "sub").mkdir()
            (folder / "news").mkdir()
            (folder / "news" / "index.htm").write_text("")
            (folder / "there.htm").write_text('<p id="here"><a name="old">')
            (folder / "sub" / "page.htm").write_text(page)
            return missing_targets(folder / "sub" / "page.htm")

    def test_what_is_there_is_not_missing(self):
        self.assertEqual(self.missing(
            '<a href="../there.htm"><a href="page.htm?x=1"><a href="../there.htm#here">'
            '<a href="../there.htm#old"><a href="#me"><p id="me"><a href="*"><a href="">'
            '<a href="../news"><a href="javascript:void(0)"><a href="mailto:a@b.c"><a href="http://a.example/x">'),
            [])

    def test_files(self):
        for page, address in (
                ('<a href="no.htm">', "no.htm"), ('<img src="no.gif">', "no.gif"),
                ('<td background=no.gif>', "no.gif"), ('<a href="There.htm">', "There.htm"),
                ('<option value="no.htm">', "no.htm"), ('<form action="no.asp">', "no.asp"),
                ('<a href="../sub">', "../sub"),
                ("<a onMouseOver=\"document.x.src='no.gif'\">", "no.gif"),
                ('<meta http-equiv="Refresh" content="2; URL=no.htm">', "no.htm")):
            self.assertEqual(self.missing(page), [address])

    def test_names_in_a_page(self):
        self.assertEqual(self.missing('<a href="../there.htm#no"><a href="#no">'),
                         ["../there.htm#no", "#no"])

    def test_base(self):
        self.assertEqual(self.missing('<base href="../"><a href="there.htm"><a href="page.htm">'),
                         ["page.htm"])


if __name__ == "__main__":
    unittest.main()
