#!/usr/bin/python3
"""Works on every page of the window over the accessibility bus: saves, switches a login item, plays a backup back;
then closes it and has the applications ended that were changed.

usage: drive_pages.py PROGRAM ARGUMENT...

What is not there is left out: the home may have been prepared so that lists are empty. Ends with 0 when the
window could be used to its end, with 77 where Python knows no accessibility bus. Runs in a session of its own.
"""

import os
import pathlib
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "desktop"))
from drive_window import PATIENCE, Atspi, Failure, Screen, called, state  # noqa: E402


def there(screen, role, name):
    """What is to be seen at this moment, if anything."""
    names = ("push button", "button") if role == "push button" else (role,)
    return next((item for item in screen.items() if item.get_role_name() in names and called(item, name)
                 and state(item, Atspi.StateType.SHOWING)), None)


def use(screen, role, name):
    """With the mouse: what is clicked on in turn happens in turn, each before the next."""
    item = screen.find(role, name)
    screen.wait_for_state(item, Atspi.StateType.ENABLED, True)
    screen.click(item)


def settings(screen):
    use(screen, "page tab", "Hidden Settings")
    use(screen, "table cell", "Dock")
    screen.find("combo box", "Hide the Dock")
    screen.press("combo box", "Hide the Dock")
    use(screen, "list item", "yes")
    use(screen, "push button", "Save")


def login_items(screen):
    use(screen, "page tab", "Login Items")
    screen.find("table", "Login items")
    item = there(screen, "table cell", "Open Mail at login")
    if item:
        screen.click(item)
        use(screen, "push button", "Save")


def system(screen):
    use(screen, "page tab", "System Information")
    use(screen, "table cell", "Process")


def backups(screen):
    use(screen, "page tab", "Restore Backup")
    screen.find("table", "Backup files")
    item = there(screen, "table cell", "quillet1.sqlite")
    if item:
        screen.click(item)
        use(screen, "push button", "Restore")


def welcome(screen):
    use(screen, "page tab", "Welcome")
    screen.find("label", "Where to begin")


def close(screen):
    """The question comes where something was saved."""
    subprocess.run(["xdotool", "key", "--clearmodifiers", "alt+F4"], check=True)
    ended = screen.wait("the end, or the question what to end", lambda: True if screen.process.poll() is not None
                        else there(screen, "push button", "Close Applications"))
    if ended is not True:
        screen.click(ended)


def main():
    environment = dict(os.environ, QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
    Atspi.init()
    with subprocess.Popen(sys.argv[1:], env=environment) as program:
        try:
            screen = Screen(program)
            screen.find("frame", "Varnel")
            for step in (settings, login_items, system, backups, welcome, close):
                step(screen)
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
