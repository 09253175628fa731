#!/usr/bin/python3
"""Changes a setting as a person with a screen reader would: by the names and roles of what is on the screen.

usage: drive_window.py PROGRAM ARGUMENT...

Starts the program, turns "Hide the Dock" on, gives the icons a size, saves each, and quits. Ends with 0 when the program did, with 77 where
Python knows no accessibility bus. Runs in a session of its own (DISPLAY, a session bus).
"""
import os
import subprocess
import sys

try:
    import gi
    gi.require_version("Atspi", "2.0")
    from gi.repository import Atspi, GLib
except (ImportError, ValueError) as why:
    print("skipped:", why)
    sys.exit(77)

SKIPPED = 77
UP, RETURN = 0xFF52, 0xFF0D  # key symbols
PATIENCE = 60  # seconds; only a failure takes so long


class Failure(Exception):
    pass


def children(item):
    """What is in an item of the tree, which may change or go while one looks."""
    try:
        return [child for child in (item.get_child_at_index(i) for i in range(item.get_child_count())) if child]
    except GLib.Error:
        return []


def walk(item):
    yield item
    for child in children(item):
        yield from walk(child)


def state(item, which):
    return item.get_state_set().contains(which)


def role(item):
    """A push button by its older name: newer libraries call it "button", newer toolkits tell what opens a menu."""
    name = item.get_role_name()
    return "push button" if name in ("button", "button menu", "push button menu") else name


def called(item, name):
    """Whether a screen reader would say that name: the item's own, or that of its label."""
    if item.get_name() == name:
        return True
    labels = (relation for relation in item.get_relation_set()
              if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY)
    return any(label.get_target(i).get_name() == name for label in labels for i in range(label.get_n_targets()))


class Screen:
    """What the accessibility bus tells of one process."""

    def __init__(self, process):
        self.process = process
        self.loop = GLib.MainLoop()
        self.news = False  # since one looked last
        self.said = None  # the name of what has the keyboard
        self.listener = Atspi.EventListener.new(self.hear)
        for kind in ("object", "window", "focus"):
            self.listener.register(kind)

    def hear(self, event):
        if event.type.startswith("object:state-changed:focused") and event.detail1:
            self.said = event.source.get_name()
        self.news = True
        self.loop.quit()

    def wait(self, what, look):
        """The first answer of `look` that is not None; it is asked again after each event."""
        expired = []
        timer = GLib.timeout_add_seconds(PATIENCE, lambda: expired.append(True) or self.loop.quit() or True)
        try:
            while True:
                self.news = False
                try:
                    found = look()
                except GLib.Error:
                    found = None  # it went while one looked
                if found is not None:
                    return found
                if expired:
                    raise Failure(f"{what}: not there\n{self.tree()}")
                if not self.news:  # to ask is to listen, too
                    self.loop.run()
        finally:
            GLib.source_remove(timer)

    def applications(self):
        return [item for item in children(Atspi.get_desktop(0)) if item.get_process_id() == self.process.pid]

    def items(self):
        for application in self.applications():
            yield from walk(application)

    def tree(self):
        return "\n".join(f"{role(item)} {item.get_name()!r}" for item in self.items())

    def find(self, wanted, name):
        def look():
            for item in self.items():
                if role(item) == wanted and called(item, name) and state(item, Atspi.StateType.SHOWING):
                    return item
            return None
        return self.wait(f"{wanted} {name!r}", look)

    def press(self, wanted, name):
        item = self.find(wanted, name)
        if item.get_n_actions() > 0:
            item.do_action(0)
        else:
            self.click(item)

    def click(self, item):
        """With the mouse, in the middle of it."""
        place = item.get_extents(Atspi.CoordType.SCREEN)
        Atspi.generate_mouse_event(place.x + place.width // 2, place.y + place.height // 2, "b1c")

    @staticmethod
    def type(key):
        Atspi.generate_keyboard_event(key, None, Atspi.KeySynthType.SYM)

    def wait_for_state(self, item, which, wanted):
        self.wait(f"{item.get_name()!r} with {which.value_nick} {wanted}",
                  lambda: True if state(item, which) == wanted else None)


def drive(screen):
    screen.find("frame", "Varnel")
    screen.press("page tab", "Hidden Settings")
    screen.click(screen.find("table cell", "Dock"))
    choices = screen.find("combo box", "Hide the Dock")
    save = screen.find("push button", "Save")
    if state(save, Atspi.StateType.ENABLED):
        raise Failure("Save is enabled before anything is changed")

    screen.press("combo box", "Hide the Dock")
    screen.click(screen.find("list item", "yes"))
    screen.wait_for_state(save, Atspi.StateType.ENABLED, True)
    if not choices.get_description().startswith("was: "):
        raise Failure(f"the list does not say what was there before: {choices.get_description()!r}")

    screen.press("push button", "Save")
    screen.wait_for_state(save, Atspi.StateType.ENABLED, False)

    size = screen.find("slider", "Icon size")
    screen.press("check box", "Icon size: use default value")
    screen.wait_for_state(size, Atspi.StateType.ENABLED, True)
    size.set_current_value(64)
    screen.wait_for_state(save, Atspi.StateType.ENABLED, True)
    screen.press("push button", "Save")
    screen.wait_for_state(save, Atspi.StateType.ENABLED, False)

    menu = screen.find("push button", "Application menu")
    screen.click(menu)
    # Keys that come before the menu is up go to the window.
    screen.wait_for_state(menu, Atspi.StateType.PRESSED, True)
    screen.type(UP)  # from the end
    screen.wait("the menu's last item", lambda: True if screen.said == "Quit Varnel" else None)
    screen.type(RETURN)


def environment():
    return dict(os.environ, QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", LC_ALL="C.UTF-8")


def main():
    Atspi.init()
    with subprocess.Popen(sys.argv[1:], env=environment()) as program:
        try:
            drive(Screen(program))
            status = program.wait(PATIENCE)
        except Failure as why:
            print("failed:", why)
            status = 1
        finally:
            if program.poll() is None:
                program.kill()
    return status


if __name__ == "__main__":
    sys.exit(main())
