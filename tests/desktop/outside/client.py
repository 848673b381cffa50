"""Drives kiv from outside its process: client.py PROGRAM EXAMPLE-SITE WORK-FOLDER

Everything is found by role and spoken name in the accessibility tree, and pressed there. Programs that kiv
starts are scripts that note how they were called.
"""
import os
import re
import shutil
import sys
import time

from driver import Atspi, Kiv, fail, is_shown, put_programs, wait, walk

MENUS = {
    "File": ["Lanthorn", "l/c dir", "Rename files", "Fix names", 'add "_t.gif"', "Calculate dimensions",
             "Open all html.txt", "Open all templates", "Edit FTP list", "Edit FTP bat file", "Quit"],
    "Jump to": ["Harbour Museum", "Lighthouse", "Lifeboat", "News", "Scratch", "Edit Jump to list",
                "Reload Jump to list"],
    "Utils": ["Convert to HTML", "News header", "Extract name fields", "Clean quotes etc.",
              'Make x=rs("x") from tab delim', "make into js write", "<p>...</p>", "Tab to Pipe",
              "picture sizer", "picture sizer (images)", "Toggle New Year", "Assemble Site Map",
              "Create single html", "New News"],
    "Grab": ["Grab titles", "Grab & redirect", "Grab all", "Grab all trimmed"],
    "Site": ["Check", "Why does a line look so?"],
}
# What opens each side window, and the buttons that it has at the least.
WINDOWS = {
    "Choose directory": ("Choose directory", ["Choose", "l/c dir", "Cancel"]),
    "Rename files": ("Rename files", ["Rename"]),
    "Calculate dimensions": ("Convert dimensions", []),
    "Why does a line look so?": ("Why a line looks so", ["Read again"]),
    "Help": ("KIV HELP", ["at's", "bangs", "Top Matter", "Misc...", "close"]),
    "New News": ("News Item", ["Do It!", "Abort", "Clear", "Today", "Grab source", "Show Source String"]),
    "Convert to HTML": ("", ["Text in Clipboard. Do It!", "Exit"]),
    "News header": ("", ["Text in Clipboard. Do It!", "Exit"]),
    "Extract name fields": ("", ["Text in Clipboard. Do It!", "Exit"]),
    "Clean quotes etc.": ("", ["Text in Clipboard. Do It!", "Exit"]),
    'Make x=rs("x") from tab delim': ("", ["Text in Clipboard. Do It!", "Exit"]),
    "make into js write": ("", ["Text in Clipboard. Do It!", "Exit"]),
    "Tab to Pipe": ("", ["Text in Clipboard. Do It!", "Exit"]),
}
ESCAPE, ENTER, TAB, DOWN = 0xFF1B, 0xFF0D, 0xFF09, 0xFF54  # their key symbols
CLOSING = ("Choose", "Cancel", "Done", "close", "Abort", "Exit")


def logged(drive):
    return open(drive + "/log").read().splitlines() if os.path.exists(drive + "/log") else []


def expect_logged(kiv, drive, line):
    end = time.monotonic() + 20
    while line not in logged(drive):
        if time.monotonic() > end:
            fail(f"no start of {line!r}; messages: {kiv.settle()}; starts: {logged(drive)}")
        time.sleep(0.05)


def check_build(kiv, folder):
    pages = len(re.findall(rb"^@FILE", open(folder + "/_html.txt", "rb").read(), re.M | re.I))
    kiv.press_button(kiv.main, "Do it!")
    wait(f"{pages} files written, there is {kiv.labels()}", lambda: f"{pages} files written" in kiv.labels())
    boxes = kiv.settle()
    if boxes:
        fail(f"a build of the example site has messages: {boxes}")
    print(f"built from outside: {pages} files written")


def check_menus(kiv):
    bar = wait("the menu bar", lambda: next((n for n in walk(kiv.main) if n.get_role_name() == "menu bar"), None))
    tops = [bar.get_child_at_index(i) for i in range(bar.get_child_count())]
    names = [top.get_name() for top in tops]
    if names != [*list(MENUS)[:-1], "Help", "Site"]:
        fail(f"menus {names}")
    for top in tops:
        if top.get_name() not in MENUS:
            continue
        entries = [n.get_name() for n in walk(top) if n.get_role_name() == "menu item" and n is not top]
        entries = [e for e in entries if e not in ("jumpitem", top.get_name())]
        if entries != MENUS[top.get_name()]:
            fail(f"entries of {top.get_name()}: {entries}")
    print("menus walked:", ", ".join(names))


def check_main_buttons(kiv, drive):
    folder = f"{drive}/site/lighthouse"
    for button, line in (("template", f"pad {folder}/_template.txt"), ("content", f"pad {folder}/_html.txt"),
                         ("Dir window", f"xdg-open {folder}"),
                         ("Upload", f"ftp95pro.exe -m {drive}/guestout2.bat")):
        kiv.press_button(kiv.main, button)
        expect_logged(kiv, drive, line)
    kiv.press_button(kiv.main, "Store dir")
    wait("the word of Store dir", lambda: "Directory Saved as Default" in kiv.labels())
    print("buttons of the main window pressed")


def open_window(kiv, opener, title):
    if opener == "Choose directory":
        kiv.press_button(kiv.main, opener)
    else:
        kiv.choose(opener)
    return wait(f"the window of {opener!r}",
                lambda: next((w for w in kiv.side_windows() if title in ("", w.get_name())), None))


def check_window(kiv, opener):
    """Presses every button of a window, which is opened again when one has closed it."""
    title, least = WINDOWS[opener]
    window = open_window(kiv, opener, title)
    names = [b.get_name() for b in kiv.buttons(window)]
    if set(least) - set(names) or "" in names:
        fail(f"buttons of {opener!r}: {names}")
    fail_if_nameless(window)
    for name in names:
        if not kiv.side_windows():
            window = open_window(kiv, opener, title)
        kiv.press_button(window, name)
        time.sleep(0.15)  # a pressed button acts when it comes up again
        said = kiv.settle()
        if name in CLOSING:
            wait(f"{opener!r} to close by {name!r}", lambda: not kiv.side_windows())
        if kiv.process.poll() is not None:
            fail(f"the program ended at {name!r} of {opener!r}")
        print(f"  {opener}: {name}" + (f" -> {said}" if said else ""))
    close_side_windows(kiv)


def fail_if_nameless(window):
    for node in walk(window):
        if node.get_role_name() in ("push button", "check box", "radio button", "text", "combo box", "list", "tree",
                                    "tree table"):
            if is_shown(node) and not node.get_name() and not node.get_description():
                fail(f"a {node.get_role_name()} of {window.get_name()!r} has no name")


def close_side_windows(kiv):
    """By a button where there is one, else by Escape."""
    for window in kiv.side_windows():
        name = next((name for name in CLOSING[1:] if kiv.button(window, name)), None)
        if name:
            kiv.press_button(window, name)
        else:
            Atspi.generate_keyboard_event(ESCAPE, None, Atspi.KeySynthType.SYM)
        wait(f"{window.get_name()!r} to close", lambda: not kiv.side_windows())


def check_help(kiv):
    window = open_window(kiv, "Help", "KIV HELP")
    box = wait("the help text", lambda: next((n for n in walk(window) if n.get_role_name() == "text"), None))
    for button, line in (("at's", "@TODAY ... today's date"), ("Misc...", "++images/_banglist.txt")):
        kiv.press_button(window, button)
        wait(f"{line!r} in the help", lambda: line in Atspi.Text.get_text(box.get_text_iface(), 0, -1))
    close_side_windows(kiv)


def press_keys(*symbols):
    for symbol in symbols:
        Atspi.generate_keyboard_event(symbol, None, Atspi.KeySynthType.SYM)
        time.sleep(0.1)


def check_story(kiv, drive):
    """A line's story by keys alone: from the page, by Tab, to the second line, and its source."""
    window = open_window(kiv, "Why does a line look so?", "Why a line looks so")
    story = wait("the story", lambda: next((n for n in walk(window) if n.get_name() == "Story"), None))
    press_keys(TAB, TAB, TAB, DOWN)
    text = wait("the story of a line", lambda: Atspi.Text.get_text(story.get_text_iface(), 0, -1))
    if not text.startswith("Source, _template.txt:") or "Result, index.htm:2" not in text:
        fail(f"story {text!r}")
    notes = logged(drive).count(f"pad {drive}/site/lighthouse/_template.txt")
    press_keys(ENTER)
    wait("the source in the editor",
         lambda: logged(drive).count(f"pad {drive}/site/lighthouse/_template.txt") == notes + 1)
    close_side_windows(kiv)
    print("a line's story read, and its source opened")


def check_other_entries(kiv, drive):
    for entry, line in (("Lanthorn", "lanthorn.exe "), ("l/c dir", "case *.* /l"),
                        ("Edit FTP list", f"pad {drive}/utils/ftplist.txt"),
                        ("Edit FTP bat file", f"pad {drive}/guestout2.bat"),
                        ("Edit Jump to list", f"pad {drive}/utils/kivjump.ini")):
        kiv.choose(entry)
        expect_logged(kiv, drive, line)
    for entry, status in (("Fix names", "Names fixed"), ('add "_t.gif"', "_t complete"),
                          ("Grab titles", "Grab titles done"), ("Grab & redirect", "Grab titles && redirect done"),
                          ("Grab all", "Grab titles done"), ("Grab all trimmed", "Grab titles done")):
        kiv.choose(entry)
        said = kiv.settle()
        wait(f"status {status!r}, there is {kiv.labels()} {said}", lambda: status in kiv.labels())
    kiv.choose("Toggle New Year")
    wait("the New Year indicator", lambda: "EOY ON!" in kiv.labels())
    kiv.choose("Toggle New Year")
    wait("the New Year indicator to go", lambda: "EOY ON!" not in kiv.labels())
    for entry in ("<p>...</p>", "picture sizer", "picture sizer (images)", "Create single html",
                  "Reload Jump to list"):
        kiv.choose(entry)
        print(f"  {entry}: {kiv.settle()}")
    print("menu entries chosen")


def check_group(kiv, folder):
    kiv.choose("Harbour Museum")
    wait("the group's buttons", lambda: kiv.button(kiv.main, "do one") and kiv.button(kiv.main, "group"))
    if kiv.button(kiv.main, "Do it!"):
        fail('"Do it!" is shown in a group')
    for button in ("do one", "group"):
        kiv.press_button(kiv.main, button)
        time.sleep(0.15)
        print(f"  {button}: {kiv.settle()} {kiv.labels()[1:3]}")
    if not os.path.exists(folder + "/index.htm"):
        fail("the group was not built")
    kiv.choose("Assemble Site Map")
    kiv.settle()
    if not os.path.exists(folder + "/_sitemap-master.txt"):
        fail("no site map was assembled")


def check_exit(kiv, drive):
    kiv.press_button(kiv.main, "Exit")
    if kiv.process.wait(timeout=20) != 0:
        fail(f"exit code {kiv.process.returncode}")
    saved = open(drive + "/utils/kiv.ini", "rb").read()
    if saved != b"C:\\site\\\r\n":
        fail(f"Exit saved {saved!r}")
    print("Exit ended the program and saved the directory")


def main():
    program, example, work = sys.argv[1:]
    drive = work + "/c"
    shutil.copytree(example, drive)
    os.makedirs(drive + "/temp", exist_ok=True)
    put_programs(drive)
    with open(drive + "/utils/ftplist.txt", "a") as file:
        file.write("c:\\site\\lighthouse\\|send\r\n")
    kiv = Kiv(program, drive, drive + "/site/lighthouse")
    try:
        check_build(kiv, drive + "/site/lighthouse")
        check_menus(kiv)
        check_main_buttons(kiv, drive)
        check_other_entries(kiv, drive)
        for opener in WINDOWS:
            check_window(kiv, opener)
        check_help(kiv)
        check_story(kiv, drive)
        check_group(kiv, drive + "/site")
        check_exit(kiv, drive)
    finally:
        if kiv.process.poll() is None:
            kiv.process.kill()
    print("ALL WELL")


main()
