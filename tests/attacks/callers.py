"""Callers who work on a home with rights of their own, because they can't become its owner."""

import os
import shutil
import stat

import attack
from planting import Planting

CAP_SETGID, CAP_SETUID = 6, 7
TAKEN = {"change users": [CAP_SETUID], "change groups": [CAP_SETGID], "change either": [CAP_SETUID, CAP_SETGID]}


def rootless(yard, what, **more):
    """Root that can't change what is named."""
    return Planting(yard, yard.private / what, preexec_fn=lambda: attack.drop_from_bounding_set(*TAKEN[what]),
                    **more)


def member(yard, programs, **more):
    """Somebody in the home's group, which may do there what the owner may. `programs` is a yard in which
    programs run; where the build is, others may have no way."""
    caller, group = yard.user(), yard.user()
    private = yard.folder(f"of {caller}")

    def finish(home):
        for path in attack.walk(home):
            os.chown(path, -1, group, follow_symlinks=False)
            mode = os.lstat(path).st_mode
            if stat.S_ISDIR(mode):
                os.chmod(path, 0o2770)
            elif stat.S_ISREG(mode):
                os.chmod(path, 0o660)
    if programs.build != programs.root:
        (programs.root / "bin").mkdir()
        shutil.copy(yard.program("varnelctl"), programs.root / "bin/varnelctl")
        programs.build = yard.build = programs.root
    plants = Planting(yard, private, finish=finish, caller=caller, user=caller, group=caller,
                      extra_groups=[caller, group],
                      environment={"HOME": str(private), "XDG_RUNTIME_DIR": str(private)}, **more)
    for path in (private, *plants.words.profiles):
        os.chown(path, caller, caller)
    private.chmod(0o700)
    yard.caller.chmod(0o711)
    return plants
