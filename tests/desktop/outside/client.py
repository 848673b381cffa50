"""Drives kiv from outside its process: client.py PROGRAM EXAMPLE-SITE WORK-FOLDER

Everything is found by role and spoken name in the accessibility tree, and pressed there. Programs that kiv
starts are scripts that note how they were called.
"""
import os
import re
import shutil
import sys
import time

from driver import Atspi, Kiv, controls, fail, is_on, is_shown, put_programs, wait, walk

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
    "Site": ["Check", "Why does a line look so?", "Preview", "Show page in browser", "Build on save", "Undo renames",
             "Make thumbnails", "Change encoding", "Write feeds", "Write XML site map",
             "Upload changed pages", "Recent folders", "Read again", "Begin a site", "Adopt pages...",
             "Choose an editor", "Manual"],
}
# What opens each side window, and the buttons that it has at the least.
WINDOWS = {
    "Choose directory": ("Choose directory", ["Choose", "l/c dir", "Add to Jump to", "Cancel"]),
    "Rename files": ("Rename files", ["Rename"]),
    "Fix names": ("Fix names", ["Rename", "Cancel"]),
    'add "_t.gif"': ('add "_t.gif"', ["Rename", "Cancel"]),
    "Undo renames": ("Undo renames", ["Undo", "Cancel"]),
    "Change encoding": ("Change encoding", ["Change", "Cancel"]),
    "Write feeds": ("Write feeds", ["Write", "Cancel"]),
    "Write XML site map": ("Write XML site map", ["Write", "Cancel"]),
    "Upload changed pages": ("Upload changed pages", ["Upload", "Cancel"]),
    "Adopt pages...": ("Adopt pages...", ["Adopt", "Browse...", "Cancel"]),
    "Calculate dimensions": ("Convert dimensions", []),
    "Help": ("KIV HELP", ["at's", "bangs", "Top Matter", "Misc...", "Manual", "close"]),
    "New News": ("News Item", ["Do It!", "Abort", "Clear", "Today", "Grab source", "Show Source String"]),
    "Convert to HTML": ("", ["Text in Clipboard. Do It!", "Exit"]),
    "News header": ("", ["Text in Clipboard. Do It!", "Exit"]),
    "Extract name fields": ("", ["Text in Clipboard. Do It!", "Exit"]),
    "Clean quotes etc.": ("", ["Text in Clipboard. Do It!", "Exit"]),
    'Make x=rs("x") from tab delim': ("", ["Text in Clipboard. Do It!", "Exit"]),
    "make into js write": ("", ["Text in Clipboard. Do It!", "Exit"]),
    "Tab to Pipe": ("", ["Text in Clipboard. Do It!", "Exit"]),
}
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
    wait(f"{pages} files written", lambda: f"{pages} files written" in kiv.labels())
    boxes = kiv.settle()
    if boxes:
        fail(f"a build of the example site has messages: {boxes}")
    print(f"built from outside: {pages} files written")


def check_menus(kiv):
    bar = wait("the menu bar", kiv.menu_bar)
    tops = [bar.get_child_at_index(i) for i in range(bar.get_child_count())]
    names = [top.get_name() for top in tops]
    if names != [*list(MENUS)[:-1], "Help", "Site"]:
        fail(f"menus {names}")
    for top in tops:
        if top.get_name() not in MENUS:
            continue
        entries = [n.get_name() for n in walk(top) if n.get_role_name() == "menu item" and n is not top]
        entries = [e for e in entries if e not in ("jumpitem", top.get_name()) and not e.startswith("C:\\")]
        entries = list(dict.fromkeys(entries))  # entries of a list have its caption until it fills them
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
        if name == "Browse..." or not is_on(kiv.button(window, name)):
            continue  # it opens the system's own window; there is nothing to undo
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
    for node, role in controls(window):
        if role in ("push button", "check box", "radio button", "text", "combo box", "list", "tree", "tree table"):
            if not node.get_name() and not node.get_description() and is_shown(node):
                fail(f"a {role} of {window.get_name()!r} has no name")


def close_side_windows(kiv):
    """By a button where there is one, else by Escape."""
    for window in kiv.side_windows():
        name = next((name for name in CLOSING[1:] if kiv.button(window, name)), None)
        if name:
            kiv.press_button(window, name)
        else:
            kiv.keys("Escape")
        wait(f"{window.get_name()!r} to close", lambda: not kiv.side_windows())


def check_help(kiv):
    window = open_window(kiv, "Help", "KIV HELP")
    box = wait("the help text", lambda: next((n for n, role in controls(window) if role == "text"), None))
    for button, line in (("at's", "@TODAY ... today's date"), ("Misc...", "++images/_banglist.txt")):
        kiv.press_button(window, button)
        wait(f"{line!r} in the help", lambda: line in Atspi.Text.get_text(box.get_text_iface(), 0, -1))
    close_side_windows(kiv)


def check_manual(kiv, drive, program):
    """The build's own manual, from the menu and from the quick reference."""
    manual = os.path.join(os.path.dirname(os.path.dirname(os.path.realpath(program))), "docs/manual/site/index.htm")
    line = f"xdg-open {manual}"
    kiv.choose("Manual")
    expect_logged(kiv, drive, line)
    kiv.press_button(open_window(kiv, "Help", "KIV HELP"), "Manual")
    wait("the manual opened twice", lambda: logged(drive).count(line) == 2)
    close_side_windows(kiv)
    print("the manual opened:", manual)


def check_panes(kiv, drive):
    """The three panes below the buttons by keys alone: a page, why its second line looks so, and a message."""
    notes = lambda line: logged(drive).count(line)
    folder = f"{drive}/site/lighthouse"
    kiv.raise_main()
    kiv.keys("ctrl+1")
    for name, role in (("Pages", "page tab list"), ("Filter", "text"), ("Pages", "tree")):
        wait(f"{role} {name!r}", lambda: kiv.shown(name, role))
    listed = [n.get_name() for n in walk(kiv.shown("Pages", "tree"))]
    if "The lamp" not in listed or "lamp.htm" not in listed:
        fail(f"the list of pages has {listed}")
    before = notes(f"pad {folder}/_html.txt")
    kiv.type("lamp")
    kiv.keys("Return", "Return")
    wait("the page list in the editor", lambda: notes(f"pad {folder}/_html.txt") == before + 1)
    kiv.keys("F8")
    story = wait("the story", lambda: kiv.shown("Story", "text"))
    kiv.keys("Tab", "Tab", "Tab", "Down")
    text = wait("the story of a line", lambda: Atspi.Text.get_text(story.get_text_iface(), 0, -1))
    if not text.startswith("Source, _template.txt:") or "Result, lamp.htm:2" not in text:
        fail(f"story {text!r}")
    before = notes(f"pad {folder}/_template.txt")
    kiv.keys("Return")
    wait("the source in the editor", lambda: notes(f"pad {folder}/_template.txt") == before + 1)
    kiv.keys("ctrl+3")
    for name, role in (("Filter", "text"), ("Copy", "push button"), ("Messages", "tree"), ("Message", "text")):
        wait(f"{role} {name!r}", lambda: kiv.shown(name, role))
    fail_if_nameless(kiv.main)
    kiv.keys("ctrl+1")
    print("the panes read by keys alone")


def check_other_entries(kiv, drive):
    for entry, line in (("Lanthorn", "lanthorn.exe "), ("l/c dir", "case *.* /l"),
                        ("Edit FTP list", f"pad {drive}/utils/ftplist.txt"),
                        ("Edit FTP bat file", f"pad {drive}/guestout2.bat"),
                        ("Edit Jump to list", f"pad {drive}/utils/kivjump.ini")):
        kiv.choose(entry)
        expect_logged(kiv, drive, line)
    for entry, status in (("Fix names", "Names fixed"), ('add "_t.gif"', "_t complete")):
        kiv.press_button(open_window(kiv, entry, entry), "Rename")  # what is renamed is seen before
        said = kiv.settle()
        wait(f"status {status!r}, for {said}", lambda: status in kiv.labels())
    for entry, status in (("Grab titles", "Grab titles done"), ("Grab & redirect", "Grab titles && redirect done"),
                          ("Grab all", "Grab titles done"), ("Grab all trimmed", "Grab titles done")):
        kiv.choose(entry)
        said = kiv.settle()
        wait(f"status {status!r}, for {said}", lambda: status in kiv.labels())
    kiv.choose("Toggle New Year")
    wait("the New Year indicator", lambda: "EOY ON!" in kiv.labels())
    kiv.choose("Toggle New Year")
    wait("the New Year indicator to go", lambda: "EOY ON!" not in kiv.labels())
    for entry in ("<p>...</p>", "picture sizer", "picture sizer (images)", "Reload Jump to list"):
        kiv.choose(entry)
        print(f"  {entry}: {kiv.settle()}")
    print("menu entries chosen")


def tab_to(node):
    """Brings the keys to a control by Tab alone."""
    for _ in range(60):
        if node.get_state_set().contains(Atspi.StateType.FOCUSED):
            return
        Kiv.keys("Tab")
        time.sleep(0.1)
    fail(f"{node.get_name()!r} is not reached by Tab")


def check_path(kiv, drive):
    """Goes to a folder and back by typing alone, from the path that Tab reaches."""
    path = wait("the path", lambda: next((n for n, role in controls(kiv.main) if role == "text" and
                                          n.get_name() == "Current directory:"), None))
    kiv.raise_main()
    tab_to(path)
    shown = lambda: Atspi.Text.get_text(path.get_text_iface(), 0, -1)
    for typed, folder in ((drive + "/site", "C:\\site\\"), ("C:\\site\\lighthouse", "C:\\site\\lighthouse\\")):
        Kiv.type(typed)
        Kiv.keys("Return")
        wait(folder, lambda: shown() == folder)
    wait("what was done", lambda: "Current directory changed" in kiv.labels())
    print("gone to a folder by typing")


def check_renames(kiv, folder):
    """Renames by keys alone: seen, done, and taken back."""
    open(folder + "/My Page.txt", "w").close()
    for entry, button, name in (("Fix names", "Rename", "my-page.txt"), ("Undo renames", "Undo", "My Page.txt")):
        window = open_window(kiv, entry, entry)
        wait("the pairs", lambda: any(n.get_name() == name for n in walk(window)))
        tab_to(kiv.button(window, button))
        Kiv.keys("Return")
        wait(f"{name!r} by {entry!r}", lambda: os.path.exists(f"{folder}/{name}"))
        wait("the window to close", lambda: not kiv.side_windows())
    os.remove(folder + "/My Page.txt")
    print("renamed and taken back")


def check_feeds(kiv, folder):
    """Answers a question by keys alone; the answer is there the next time."""
    address = "https://host.example/museum/"
    window = open_window(kiv, "Write feeds", "Write feeds")
    tab_to(next(n for n, role in controls(window) if role == "text" and n.get_name() == "Address of the site"))
    Kiv.type(address)
    Kiv.keys("Return")
    wait("the feed", lambda: os.path.exists(folder + "/rss.xml"))
    wait("the window to close", lambda: not kiv.side_windows())
    window = open_window(kiv, "Write XML site map", "")
    field = next(n for n, role in controls(window) if role == "text" and n.get_name() == "Address of the site")
    wait("the address", lambda: Atspi.Text.get_text(field.get_text_iface(), 0, -1) == address)
    close_side_windows(kiv)
    print("feeds written")


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
        check_manual(kiv, drive, program)
        for opener in WINDOWS:
            check_window(kiv, opener)
        check_help(kiv)
        check_panes(kiv, drive)
        check_path(kiv, drive)
        check_renames(kiv, drive + "/site/lighthouse")
        check_feeds(kiv, drive + "/site/lighthouse")
        check_group(kiv, drive + "/site")
        check_exit(kiv, drive)
    finally:
        if kiv.process.poll() is None:
            kiv.process.kill()
    print("ALL WELL")


main()
