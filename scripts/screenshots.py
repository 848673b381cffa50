"""Takes the pictures of kiv's windows: screenshots.py PROGRAM EXAMPLE-SITE WORK-FOLDER PICTURE-FOLDER"""
import os
import shutil
import subprocess
import sys
import time

from driver import Kiv, is_shown, put_programs, wait, walk


def take(title, file):
    """The last window of this title, with its frame."""
    time.sleep(0.4)  # until it is painted
    found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", f"^{title}$"], capture_output=True,
                           text=True, check=True).stdout.split()
    subprocess.run(["import", "-frame", "-window", found[-1], "-strip", file], check=True)
    print(file)


def key(*keys):
    subprocess.run(["xdotool", "key", *keys], check=True)
    time.sleep(0.3)


def field(window, name):
    return wait(f"field {name!r}", lambda: next(
        (n for n in walk(window) if n.get_role_name() == "text" and n.get_name() == name and is_shown(n)), None))


def fill(window, texts):
    for name, text in texts.items():
        field(window, name).get_editable_text_iface().set_text_contents(text)


def side(kiv, entry):
    if entry == "Choose directory":
        kiv.press_button(kiv.main, entry)
    else:
        kiv.choose(entry)
    return wait(f"window of {entry!r}", lambda: next(iter(kiv.side_windows()), None))


def close(kiv):
    key("Escape")
    wait("no side window", lambda: not kiv.side_windows())


def main():
    program, example, work, folder = sys.argv[1:]
    drive = work + "/c"
    shutil.copytree(example, drive)
    os.makedirs(drive + "/temp")
    put_programs(drive)
    picture = lambda name: f"{folder}/{name}.png"
    kiv = Kiv(program, drive)
    take("kiv", picture("first"))
    key("ctrl+q")
    kiv.process.wait(timeout=20)
    kiv = Kiv(program, drive, drive + "/site")
    kiv.press_button(kiv.main, "group")
    time.sleep(1)
    kiv.settle()
    kiv.press_button(kiv.main, "do one")
    time.sleep(1)
    kiv.settle()
    key("ctrl+1")
    take("kiv", picture("main"))
    take_panes(kiv, picture)

    window = side(kiv, "Choose directory")
    take(window.get_name(), picture("directory"))
    close(kiv)
    window = side(kiv, "Rename files")
    fill(window, {"Find": "guestbook", "Replace with": "visitors"})
    take(window.get_name(), picture("rename"))
    close(kiv)
    for name in ("Boat Race (2).JPG", "Tide & Wind.txt"):
        open(f"{drive}/site/{name}", "w").close()
    window = side(kiv, "Fix names")
    take(window.get_name(), picture("look"))
    close(kiv)
    for entry, name in (("Change encoding", "encoding"), ("Write feeds", "feeds"), ("Adopt pages...", "adopt")):
        window = side(kiv, entry)
        kiv.settle()
        take(window.get_name(), picture(name))
        close(kiv)
    window = side(kiv, "Calculate dimensions")
    fill(window, {"Starting width": "1280", "Starting height": "960", "New width": "400"})
    kiv.press_button(window, "Calculate")
    time.sleep(0.5)
    take(window.get_name(), picture("dimensions"))
    close(kiv)
    window = side(kiv, "Convert to HTML")
    take(window.get_name(), picture("conversion"))
    close(kiv)
    window = side(kiv, "Help")
    kiv.press_button(window, "at's")
    time.sleep(0.5)
    take(window.get_name(), picture("help"))
    close(kiv)
    window = side(kiv, "New News")
    kiv.act(next(n for n in walk(window) if n.get_name() == "Harbour Museum"), "Toggle")
    fill_news(window)
    take(window.get_name(), picture("news"))
    close(kiv)

    key("alt+u")
    subprocess.run(["import", "-window", "root", "-trim", "+repage", "-strip", picture("menu")], check=True)
    key("Escape", "Escape")

    make_mistakes(drive + "/site/_html.txt")
    kiv.press_button(kiv.main, "do one")
    wait("a message box", kiv.box)
    take("kiv", picture("box"))
    kiv.settle()
    key("ctrl+f", "Return", "Down")
    take("kiv", picture("messages"))
    kiv.press_button(kiv.main, "Exit")
    kiv.process.wait(timeout=20)


def take_panes(kiv, picture):
    """A page is chosen, then the line of it that holds a text."""
    key("ctrl+f")
    fill(kiv.main, {"Filter": "tour"})
    key("Return")
    take("kiv", picture("pages"))
    key("F8", "ctrl+f")
    fill(kiv.main, {"Search": "canonical"})
    key("Return", "Down")
    take("kiv", picture("why"))
    key("ctrl+f")
    fill(kiv.main, {"Search": ""})
    key("ctrl+1")
    fill(kiv.main, {"Filter": ""})


def fill_news(window):
    names = [n.get_name() for n in walk(window) if n.get_role_name() == "text"]
    texts = ["pr102405", "Oct. 24, 2005", "The bell rings again", "The Pier Record", "Ada Quill",
             "Ninety years after the storm", "", ""]
    article = ("The bell of the old pilot boat rang on Monday for the first time since 1915.\n\n"
               "Two years of work went into it, all of it by hand.")
    for name, text in zip(names, texts):
        if text:
            fill(window, {name: text})
    for name in names:
        if "rticle" in name:
            fill(window, {name: article})


def make_mistakes(page_list):
    """Leaves out the closing bracket of three bangs."""
    lines = open(page_list, "rb").read().split(b"\r\n")
    mistakes = 0
    for i, line in enumerate(lines):
        if mistakes < 3 and b"!!flv[" in line.lower() and b"]" in line:
            lines[i] = line.replace(b"]", b"", 1)
            mistakes += 1
    open(page_list, "wb").write(b"\r\n".join(lines))


main()
