"""kiv as it is seen and driven from another process, through the accessibility tree."""
import os
import subprocess
import sys
import time
import warnings

warnings.simplefilter("ignore")
import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib

Atspi.set_timeout(1000, 5000)


def fail(words):
    sys.exit("FAILED: " + words)


def wait(what, found, seconds=20):
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        try:
            got = found()
        except GLib.Error:  # a widget went away while it was looked at
            got = None
        if got:
            return got
        time.sleep(0.05)
    fail("never came: " + what)


def walk(node):
    yield node
    for i in range(node.get_child_count()):
        child = node.get_child_at_index(i)
        if child is not None:
            yield from walk(child)


# Each question to a part is a message to the program and back. These have no parts, or many that are no controls.
WHOLE = ("menu bar", "tree", "tree table", "list", "label", "push button", "check box", "radio button", "separator",
         "scroll bar", "progress bar", "page tab")


def controls(node):
    """Each part of a window with its role, but for the entries of menus and lists."""
    role = node.get_role_name()
    yield node, role
    if role in WHOLE:
        return
    for i in range(node.get_child_count()):
        child = node.get_child_at_index(i)
        if child is not None:
            yield from controls(child)


def is_shown(node):
    return node.get_state_set().contains(Atspi.StateType.SHOWING)


def has_focus(window):
    """What is typed goes there; a new window is on the screen before that."""
    return any(node.get_state_set().contains(Atspi.StateType.FOCUSED) for node in walk(window))


def is_on(node):
    return node.get_state_set().contains(Atspi.StateType.ENABLED)


# Key symbols, and the key codes of what is held meanwhile, which are the same on every X server.
KEYS = {"Escape": 0xFF1B, "Return": 0xFF0D, "Tab": 0xFF09, "Down": 0xFF54, "Up": 0xFF52, "Home": 0xFF50, "End": 0xFF57,
        "BackSpace": 0xFF08, **{f"F{i}": 0xFFBD + i for i in range(1, 13)}}
HELD = {"ctrl": 37, "shift": 50, "alt": 64}


class Kiv:
    def __init__(self, program, drive, *folder):
        environment = dict(os.environ, KIV_DRIVE_C=drive, PATH=drive + "/bin:" + os.environ["PATH"])
        self.process = subprocess.Popen([program, *folder], env=environment)
        self.application = wait("the program", self.find_application)
        self.main = wait("its window", lambda: self.window("kiv", "frame"))
        self.an_entry = wait("menu", lambda: self.menu_item("Lanthorn"))  # which is off while a command runs

    @staticmethod
    def find_application():
        desktop = Atspi.get_desktop(0)
        for i in range(desktop.get_child_count()):
            child = desktop.get_child_at_index(i)
            if child is not None and child.get_name() == "kiv":
                return child
        return None

    def windows(self):
        children = [self.application.get_child_at_index(i) for i in range(self.application.get_child_count())]
        return [child for child in children if child is not None and is_shown(child)]

    def window(self, name, *roles):
        return next((w for w in self.windows() if w.get_name() == name and (not roles or w.get_role_name() in roles)),
                    None)

    def box(self):
        """A message box: one button, OK."""
        for window in self.windows():
            if window.get_role_name() in ("alert", "dialog") and window.get_name().startswith("kiv"):
                if [b.get_name() for b in self.buttons(window)] == ["OK"]:
                    return window
        return None

    def side_windows(self):
        return [w for w in self.windows() if not w.get_name().startswith("kiv")]

    @staticmethod
    def buttons(window):
        return [n for n, role in controls(window) if role == "push button" and is_shown(n)]

    @staticmethod
    def button(window, name):
        return next((n for n, role in controls(window) if role == "push button" and n.get_name() == name and is_shown(n)),
                    None)

    def labels(self):
        return [n.get_name() for n, role in controls(self.main) if role == "label"]

    def menu_bar(self):
        return next((n for n, role in controls(self.main) if role == "menu bar"), None)

    def menu_item(self, name):
        bar = self.menu_bar()
        return bar and next((n for n in walk(bar) if n.get_role_name() == "menu item" and n.get_name() == name), None)

    def act(self, node, action):
        interface = node.get_action_iface()
        names = [Atspi.Action.get_action_name(interface, i) for i in range(Atspi.Action.get_n_actions(interface))]
        if action not in names:
            fail(f"{node.get_name()!r} cannot be told to {action}: {names}")
        try:
            interface.do_action(names.index(action))
        except GLib.Error:
            pass  # a message box is open, so no answer comes before it is closed

    @staticmethod
    def keys(*names):
        """Presses keys one after the other: "Return", "ctrl+b"."""
        for name in names:
            *held, key = name.split("+")
            for code in held:
                Atspi.generate_keyboard_event(HELD[code], None, Atspi.KeySynthType.PRESS)
            Atspi.generate_keyboard_event(KEYS.get(key) or ord(key), None, Atspi.KeySynthType.SYM)
            for code in held:
                Atspi.generate_keyboard_event(HELD[code], None, Atspi.KeySynthType.RELEASE)
            time.sleep(0.03)

    @staticmethod
    def type(text):
        for letter in text:
            Atspi.generate_keyboard_event(ord(letter), None, Atspi.KeySynthType.SYM)
            time.sleep(0.01)

    def raise_main(self):
        """Gives the main window the keys."""
        self.main.get_component_iface().grab_focus()
        time.sleep(0.1)

    def shown(self, name, *roles):
        """What can be seen in the main window under a name."""
        return next((n for n, role in controls(self.main) if (not roles or role in roles) and n.get_name() == name and
                     is_shown(n)), None)

    def press_button(self, window, name):
        self.act(wait(f"button {name!r}", lambda: self.button(window, name)), "Press")

    def choose(self, name):
        self.act(wait(f"menu entry {name!r}", lambda: self.menu_item(name)), "Press")

    def is_at_rest(self):
        return self.box() is None and is_on(self.an_entry)

    def settle(self):
        """Closes the message boxes that come up until the program is at rest; gives their texts."""
        texts = []
        quiet = 0
        while quiet < 4:
            time.sleep(0.05)
            try:
                box = self.box()
                if box is None:
                    quiet = quiet + 1 if self.is_at_rest() else 0
                    continue
                texts += [n.get_name() for n, role in controls(box) if role == "label" and n.get_name()]
                self.press_button(box, "OK")
                time.sleep(0.2)  # the button acts when it comes up again; the next box may follow at once
            except GLib.Error:
                pass
            quiet = 0
        return texts


def put_programs(drive):
    """Every outside program is one script that notes its name and arguments."""
    os.makedirs(drive + "/bin")
    script = drive + "/bin/note"
    with open(script, "w") as file:
        file.write(f'#!/bin/sh\necho "$(basename "$0") $*" >>{drive}/log\n')
    os.chmod(script, 0o755)
    for place in ("utils/pad", "utils/lanthorn.exe", "utils/dosutils/case", "progs/WS_FTP Pro/ftp95pro.exe",
                  "bin/xdg-open"):
        os.makedirs(os.path.dirname(f"{drive}/{place}"), exist_ok=True)
        os.symlink(script, f"{drive}/{place}")
    with open(drive + "/utils/kiv_editpad.txt", "w") as file:
        file.write("C:\\utils\\pad\r\n")
