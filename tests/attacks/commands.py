"""Every command of varnelctl, by what it does to a home; a new one has to be put in its place here."""

import homes
from attack import Failure

BACKUP = "quillet1.sqlite"
SESSION, ACCOUNT = ("--list", "session"), ("--list", "account")

# The words of one run each. {size} is another number each time, {app} a path that no home has yet.
READING = {
    "list": [["list"], ["list", "--json"], []],
    "show": [["show", "screenshot-prefix"]],
    "get": [["get", "screenshot-prefix"], ["get", "dock-size", "--json"],
            ["get", "com.apple.dock", "tilesize"], ["get", "com.apple.mail", "DisableReplyAnimations"]],
    "search": [["search", "Dock"]],
    "diff": [["diff", "{profile}"]],
    "export": [["export", "--json"]],
    "doctor": [["doctor"], ["doctor", "--json"]],
    "login-items list": [["login-items", "list"], ["login-items", "list", "--json", *SESSION],
                         ["login-items", "list", "--json", *ACCOUNT]],
    "backups list": [["backups", "list"], ["backups", "list", "--json"]],
    "backups show": [["backups", "show", BACKUP], ["backups", "show", BACKUP, "--json"]],
}
WRITING = {
    "set": [["set", "dock-size={size}", "quit-finder=yes"], ["set", "screenshot-prefix={size}", "--new-home"],
            ["set", "dock-size={size}", "--dry-run"], ["set", "library-folder=1"], ["set", "reply-animation={choice}"]],
    "reset": [["reset", "screenshot-prefix"], ["reset", "--all"]],
    "apply": [["apply", "{profile}"]],
    "login-items add": [["login-items", "add", "{app}", *SESSION], ["login-items", "add", "{app}", *ACCOUNT]],
    "login-items disable": [["login-items", "disable", homes.MAIL, *SESSION],
                            ["login-items", "disable", homes.CLOCK, *ACCOUNT]],
    "login-items enable": [["login-items", "enable", homes.MAIL, *SESSION],
                           ["login-items", "enable", homes.CLOCK, *SESSION],
                           ["login-items", "enable", "{app}", *SESSION],
                           ["login-items", "enable", homes.CLOCK, *ACCOUNT]],
    "login-items remove": [["login-items", "remove", homes.MAIL, *SESSION],
                           ["login-items", "remove", homes.CLOCK, *ACCOUNT]],
    "backups restore": [["backups", "restore", BACKUP, "--dry-run"], ["backups", "restore", BACKUP, "--keep"],
                        ["backups", "restore", BACKUP]],
    "backups delete": [["backups", "delete", "quillet2.sqlite"]],
}
# These are not about a home folder. What they start or end is that of HOME's owner, and tested elsewhere.
NO_HOME = {"system", "processes", "processes list", "processes reveal", "processes terminate", "end",
           "completion"}


def check(yard):
    """The help lists the commands that are known here, and no others."""
    help_text = yard.run("--help").out.decode()
    lines = help_text.partition("Commands:\n")[2].partition("\n\n")[0].splitlines()
    listed = {line[2:].partition("  ")[0] for line in lines}
    known = READING.keys() | WRITING.keys() | NO_HOME
    if listed != known:
        raise Failure(f"commands.py has to be told of: {sorted(listed ^ known)}")


class Words:
    """The words of runs, filled in so that each one finds something to do."""

    def __init__(self, yard):
        self.number = 0
        self.profiles = []
        for size in (61, 62):
            path = yard.caller / f"profile{size}.json"
            path.write_text(f'{{"schemaVersion": 1, "settings": {{"dock-size": {size}}}}}')
            self.profiles.append(str(path))

    def of(self, words):
        self.number += 1
        values = {"size": 20 + self.number % 80, "choice": self.number % 2,
                  "app": f"/Applications/New{self.number}.app", "profile": self.profiles[self.number % 2]}
        return [word.format(**values) for word in words]

    def all(self):
        """Every command about homes: those that only read first, then those that change."""
        for group in (READING, WRITING):
            for runs in group.values():
                for words in runs:
                    yield self.of(words)
