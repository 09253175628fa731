#!/usr/bin/env python3
"""Completes command lines in a real shell on a terminal of its own.

complete.py SHELL SCRIPT reads lines from standard input. For each it presses the completion key at the
line's end, and prints a JSON object: line -> {"candidates": [...], "line": what then stands there}. A
candidate is told by what it adds: without quoting, without SETTING= before it, a file by its last name.
"""

import contextlib
import json
import os
import pathlib
import pty
import re
import shlex
import subprocess
import sys
import tempfile

BASH = r"""
PS1='ready> '
source "$SCRIPT"
eval "wrapped$(declare -f _varnelctl)"
_varnelctl() {
    wrapped_varnelctl
    printf 'CANDIDATE %s\n' "${COMPREPLY[@]}" >>"$REPORT"
}
report() {
    printf 'LINE %s\n' "${READLINE_LINE//$'\n'/$'\1'}" >>"$REPORT"
    READLINE_LINE='' READLINE_POINT=0
}
bind -x '"\ez": report'
bind -x '"\eq": exit'
bind 'set bell-style none'
"""

# The editor of the line does all of it by itself before it reads the first key.
ZSH = r"""
fpath=(${SCRIPT:h} $fpath)
autoload -Uz compinit
compinit -u -D
unsetopt auto_menu auto_list
compadd() {
    local -a candidates_of_this_call
    if [[ " ${@[1,(i)--]} " != *' '-(O|A|D)' '* ]]; then
        builtin compadd -O candidates_of_this_call "$@"
        (( $#candidates_of_this_call )) && print -rl -- "CANDIDATE "${^candidates_of_this_call} >>$REPORT
    fi
    builtin compadd "$@"
}
zle-line-init() {
    local typed feed=$'\n' mark=$'\1'
    for typed in "${(@f)TYPED}"; do
        BUFFER=$typed
        CURSOR=$#BUFFER
        zle complete-word
        print -r -- "LINE ${BUFFER//$feed/$mark}" >>$REPORT
    done
    exit
}
zle -N zle-line-init
"""


def on_terminal(command, environment, keys):
    """Runs a command on a terminal to its end; types when it says that it is ready."""
    child, terminal = pty.fork()
    if child == 0:
        os.execvpe(command[0], command, environment)
    shown = b""
    while True:
        try:
            shown += os.read(terminal, 4096)
        except OSError:
            break
        if keys and b"ready> " in shown:
            os.write(terminal, keys.pop(0))
            shown = b""
    os.waitpid(child, 0)


def normal(shell, candidate):
    if shell != "fish":
        with contextlib.suppress(ValueError):  # A name may hold a lone quotation mark.
            candidate = " ".join(shlex.split(candidate))
    candidate = re.sub(r"^[^=]+=(?=.)", "", candidate).rstrip("=")
    return pathlib.PurePath(candidate).name if candidate.startswith("/") else candidate


def in_fish(script, lines):
    found = {}
    for line in lines:
        out = subprocess.run(["fish", "--no-config", "-c", "source $argv[1]; complete -C $argv[2]", script, line],
                             check=True, capture_output=True, text=True)
        if out.stderr:
            sys.exit(out.stderr)
        found[line] = {"candidates": [each.split("\t")[0] for each in out.stdout.splitlines()]}
    return found


def in_editor(shell, script, lines, folder):
    report = folder / "report"
    report.touch()
    environment = dict(os.environ, SCRIPT=script, REPORT=str(report), TYPED="\n".join(lines), TERM="xterm",
                       ZDOTDIR=str(folder), HISTFILE="")
    if shell == "bash":
        (folder / "rc").write_text(BASH)
        # One line after the other: the shell says that it is ready for the next.
        keys = [line.encode() + b"\t\x1bz\n" for line in lines] + [b"\x1bq"]
        on_terminal(["bash", "--noprofile", "--rcfile", str(folder / "rc"), "-i"], environment, keys)
    else:
        (folder / ".zshrc").write_text(ZSH)
        on_terminal(["zsh", "-d", "-i"], environment, [])
    found, candidates, waiting = {}, [], list(lines)
    for said in report.read_text().splitlines():
        what, _, text = said.partition(" ")
        if what == "CANDIDATE":
            candidates.append(text)
        elif what == "LINE":  # Or what follows a line feed in a candidate.
            found[waiting.pop(0)] = {"candidates": candidates, "line": text.replace("\1", "\n")}
            candidates = []
    return found


def main():
    shell, script = sys.argv[1:3]
    lines = sys.stdin.read().splitlines()
    with tempfile.TemporaryDirectory() as folder:
        found = in_fish(script, lines) if shell == "fish" else \
            in_editor(shell, script, lines, pathlib.Path(folder))
    for told in found.values():
        told["candidates"] = sorted({normal(shell, each) for each in told["candidates"] if each})
    print(json.dumps(found))


main()
