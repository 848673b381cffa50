"""What everyday tasks cost in keys and clicks: usability.py PROGRAM EXAMPLE-SITE WORK-FOLDER

Each task begins in the museum's group, with the keys on the main window, and is done from outside. A task that comes to
cost more fails; one that comes to cost less is to be written down anew.
"""
import os
import re
import shutil
import sys

from driver import Atspi, Kiv, fail, has_focus, put_programs, wait, walk


class Hand(Kiv):
    """Counts each key that is pressed and each click."""
    count = 0

    def keys(self, *names):
        self.count += len(names)
        super().keys(*names)

    def type(self, text):
        self.count += len(text)
        super().type(text)

    def click(self, name):
        self.count += 1
        self.press_button(self.main, name)

    def enter(self, name):
        """An entry of a menu: a click on the menu and one on the entry."""
        self.count += 2
        self.choose(name)


def log(hand):
    path = hand.drive + "/log"
    return open(path).read().splitlines() if os.path.exists(path) else []


def started(hand, end):
    """The program that was started last has this at the end of its line."""
    return wait(f"a start that ends in {end!r}, there is {log(hand)[-1:]}", lambda: log(hand) and log(hand)[-1].endswith(end))


def says(hand, words):
    return wait(f"the words {words!r}", lambda: any(words in label for label in hand.labels()))


def built(hand):
    """The slip that was planted brings up a box."""
    wait("the end of the build", lambda: hand.settle() is not None and any("files written" in label for label in hand.labels()))


def story(hand):
    return wait("a story", lambda: (lambda node: node and Atspi.Text.get_text(node.get_text_iface(), 0, -1))(
        hand.shown("Story", "text")))


def text_of(hand, name, role="text"):
    node = wait(name, lambda: hand.shown(name, role))
    return Atspi.Text.get_text(node.get_text_iface(), 0, -1)


def clipboard(hand):
    """What a paste into the filter brings."""
    Kiv.keys("ctrl+1", "ctrl+a", "ctrl+v")
    text = text_of(hand, "Filter")
    Kiv.keys("ctrl+a", "BackSpace")
    return text


def find_and_open(hand):
    hand.keys("ctrl+f")
    hand.type("figureh")
    hand.keys("Return", "Return")
    started(hand, "site/_html.txt")


def see_why(hand):
    hand.keys("ctrl+f")
    hand.type("figureh")
    hand.keys("Return", "F8", "Tab", "Tab", "Tab", *["Down"] * 3)
    if "Result, figureheads.htm:" not in story(hand):
        fail(f"the story is {story(hand)!r}")


def see_why_by_text(hand):
    hand.keys("ctrl+2", "ctrl+f")
    hand.type("canon")
    hand.keys("Return")
    if "Result, " not in story(hand):
        fail(f"the story is {story(hand)!r}")


def open_source_of_line(hand):
    hand.keys("ctrl+2", "ctrl+f")
    hand.type("canon")
    hand.keys("Return", "Return")
    started(hand, "site/_template.txt")


def build(hand):
    hand.keys("ctrl+b")
    built(hand)


def build_group(hand):
    hand.click("group")
    built(hand)


def check(hand):
    hand.keys("F7")
    says(hand, "Check: ")


def open_first_finding(hand):
    hand.keys("F7")
    says(hand, "Check: ")
    hand.keys("ctrl+f", "Return", "Return")
    started(hand, ".txt")


def read_finding_in_full(hand):
    hand.keys("F7")
    says(hand, "Check: ")
    hand.keys("ctrl+f", "Return")
    wait("the finding in full", lambda: text_of(hand, "Message"))


def copy_messages(hand):
    hand.keys("F7")
    says(hand, "Check: ")
    hand.click("Copy")
    wait("a finding in the clipboard", lambda: re.search("note|warning|error", clipboard(hand)))


def see_what_is_new(hand):
    hand.keys("ctrl+b")
    built(hand)
    hand.keys("ctrl+1")
    wait("what the build did", lambda: any(n.get_name() == "as it was" for n in walk(hand.shown("Pages", "tree"))))


def show_in_browser(hand):
    hand.keys("ctrl+f")
    hand.type("figureh")
    hand.keys("Return", "shift+F6")
    started(hand, "site/figureheads.htm")


def show_folder(hand):
    hand.keys("ctrl+f")
    hand.type("figureh")
    hand.keys("Return", "ctrl+d")
    started(hand, "/site")


def copy_address(hand):
    hand.keys("ctrl+f")
    hand.type("figureh")
    hand.keys("Return", "ctrl+c")
    says(hand, "Address copied")
    if not clipboard(hand).endswith("/site/figureheads.htm"):
        fail("the address is not in the clipboard")


def edit_template(hand):
    hand.click("template")
    started(hand, "_template.txt")


def edit_list_of_member(hand):
    hand.keys("ctrl+f")
    hand.type("lamp")
    hand.keys("Return", "Return")
    started(hand, "site/lighthouse/_html.txt")


def jump(hand):
    hand.enter("Lighthouse")
    wait("the lighthouse", lambda: hand.button(hand.main, "Do it!"))
    Kiv.choose(hand, "Harbour Museum")
    wait("the group", lambda: hand.button(hand.main, "do one"))


def go_by_typing(hand):
    hand.keys("ctrl+l")
    hand.type("lighthouse")
    hand.keys("Return")
    wait("the lighthouse", lambda: hand.button(hand.main, "Do it!"))
    Kiv.choose(hand, "Harbour Museum")
    wait("the group", lambda: hand.button(hand.main, "do one"))


def undo_a_rename(hand):
    folder = hand.drive + "/site"
    open(folder + "/My Page.txt", "w").close()
    Kiv.choose(hand, "Fix names")
    look = wait("the look", lambda: next(iter(hand.side_windows()), None))
    hand.press_button(look, "Rename")
    wait("the rename", lambda: os.path.exists(folder + "/my-page.txt"))
    wait("the look to close", lambda: not hand.side_windows())
    hand.raise_main()
    hand.enter("Undo renames")
    look = wait("the look", lambda: next(iter(hand.side_windows()), None))
    wait("the pair", lambda: any(n.get_name() == "My Page.txt" for n in walk(look)))
    wait("the focus", lambda: has_focus(look))
    hand.keys("Return")
    wait("the old name", lambda: os.path.exists(folder + "/My Page.txt"))
    wait("the look to close", lambda: not hand.side_windows())
    os.remove(folder + "/My Page.txt")


def read_again(hand):
    with open(hand.drive + "/site/_html.txt", "ab") as file:
        file.write(b"@FILE = fresh\r\n@TITLE = Fresh\r\n")
    hand.keys("F5")
    wait("the new page", lambda: any(n.get_name() == "fresh.htm" for n in walk(hand.shown("Pages", "tree"))))


def open_help(hand):
    hand.keys("F1")
    window = wait("the help", lambda: next(iter(hand.side_windows()), None))
    Kiv.press_button(hand, window, "close")
    wait("no help", lambda: not hand.side_windows())


def open_manual(hand):
    hand.keys("ctrl+F1")
    started(hand, "site/index.htm")


# What is to be done, how many keys and clicks it takes, and how.
TASKS = [
    ("find the page titled Figureheads and open its source", 10, find_and_open),
    ("open the source of a page of another folder of the group", 7, edit_list_of_member),
    ("see why the fourth line of a page looks so", 16, see_why),
    ("see why the line that holds a text looks so", 8, see_why_by_text),
    ("open the source of a line that holds a text", 9, open_source_of_line),
    ("build the folder", 1, build),
    ("build the group", 1, build_group),
    ("see what the build did with each page", 2, see_what_is_new),
    ("check the site", 1, check),
    ("fix the first finding of a check: open its line", 4, open_first_finding),
    ("read the first finding in full", 3, read_finding_in_full),
    ("copy all findings", 2, copy_messages),
    ("show a page in the browser", 10, show_in_browser),
    ("show the folder of a page", 10, show_folder),
    ("copy the address of a page", 10, copy_address),
    ("open the template", 1, edit_template),
    ("go to another folder of the list of jumps", 2, jump),
    ("go to a folder by typing its name of ten letters", 12, go_by_typing),
    ("undo a rename", 3, undo_a_rename),
    ("read the page list again", 1, read_again),
    ("open the quick reference", 1, open_help),
    ("open the manual", 1, open_manual),
]


def begin(hand):
    """As each task finds it: no filter, the list of pages in front, the keys on the main window."""
    hand.raise_main()
    for tab in "321":
        Kiv.keys("ctrl+" + tab, "ctrl+f", "ctrl+a", "BackSpace")


def main():
    program, example, work = sys.argv[1:]
    drive = work + "/c"
    shutil.copytree(example, drive)
    os.makedirs(drive + "/temp", exist_ok=True)
    put_programs(drive)
    with open(drive + "/site/_html.txt", "ab") as file:
        file.write(b"@FILE = slip\r\n@TITLE = A slip\r\nx !!flv[p\r\n")
    hand = Hand(program, drive, drive + "/site")
    hand.drive = drive
    hand.press_button(hand.main, "group")
    built(hand)
    wrong = []
    try:
        for what, most, do in TASKS:
            begin(hand)
            hand.count = 0
            do(hand)
            print(f"{hand.count:3} {what}")
            if hand.count != most:
                wrong.append(f"{what}: {hand.count}, not {most}")
    finally:
        hand.process.kill()
    if wrong:
        fail("; ".join(wrong))
    print("ALL WELL")


main()
