#!/usr/bin/python3
"""Changes a login item as a person with a screen reader would, in one start of the program.

usage: drive_login_items.py switch|remove|restore NAME PROGRAM ARGUMENT...

Ticks or unticks the item of that name and saves, takes it out and saves, or plays the backup file of that name back;
then closes the window. Ends with 0 when the program did, with 77 where Python knows no accessibility bus. Runs in a
session of its own (DISPLAY, a session bus).
"""

import os
import subprocess
import sys

from drive_window import PATIENCE, Atspi, Failure, Screen


def save(screen):
    button = screen.find("push button", "Save")
    screen.wait_for_state(button, Atspi.StateType.ENABLED, True)
    screen.click(button)
    screen.wait_for_state(button, Atspi.StateType.ENABLED, False)


def switch(screen, name):
    screen.press("page tab", "Login Items")
    screen.find("combo box", "the Mac account")
    screen.click(screen.find("table cell", f"Open {name} at login"))
    save(screen)


def remove(screen, name):
    screen.press("page tab", "Login Items")
    screen.click(screen.find("table cell", name))
    button = screen.find("push button", "Remove")
    screen.wait_for_state(button, Atspi.StateType.ENABLED, True)
    screen.click(button)
    save(screen)


def restore(screen, name):
    screen.press("page tab", "Restore Backup")
    screen.click(screen.find("table cell", name))
    button = screen.find("push button", "Restore")
    screen.wait_for_state(button, Atspi.StateType.ENABLED, True)
    screen.click(button)
    screen.wait("the end of the list", lambda: True if not any(item.get_name() == name for item in screen.items())
                else None)


STEPS = {"switch": switch, "remove": remove, "restore": restore}


def main():
    step, name, *command = sys.argv[1:]
    environment = dict(os.environ, QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", LC_ALL="C.UTF-8")
    Atspi.init()
    with subprocess.Popen(command, env=environment) as program:
        try:
            screen = Screen(program)
            screen.find("frame", "Varnel")
            STEPS[step](screen, name)
            subprocess.run(["xdotool", "key", "--clearmodifiers", "alt+F4"], check=True)
            status = program.wait(PATIENCE)
        except (Failure, subprocess.TimeoutExpired) as why:
            print("failed:", why)
            status = 1
        finally:
            if program.poll() is None:
                program.kill()
    return status


if __name__ == "__main__":
    sys.exit(main())
