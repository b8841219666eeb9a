#!/usr/bin/env python3
"""Fails on an include that points the wrong way between the rooms.

usage: include_direction.py ROOT
       include_direction.py --self-test

Below src/ the first part of an include path names its room. Each room may
include itself and the rooms listed for it; the companions know only each other
and the sdk. <windows.h> is for files that end in _win32 and for the headers
named below, so that the rest builds without Windows.
"""
import pathlib
import re
import sys
import tempfile

ALLOWED = {
    "foundation": {"foundation"},
    "decoders": {"decoders", "foundation", "sdk"},
    "selection": {"selection", "decoders", "foundation", "sdk"},
    "toolkit": {"toolkit", "foundation", "resources"},
    "mainwindow": {"mainwindow", "selection", "decoders", "toolkit", "foundation", "resources"},
    "dialogs": {"dialogs", "mainwindow", "selection", "decoders", "toolkit", "foundation",
                "resources"},
    "companions": {"companions", "sdk"},
}
# The form names a dialog only where it opens it.
EXCEPTIONS = {("src/mainwindow/main_form_dialogs_win32.cpp", "dialogs")}
# Headers in which Win32 types stand by value.
WINDOWS_HEADERS = {f"src/foundation/{name}.h"
                   for name in ("dir_enum", "file", "folders", "handle", "settings")}
WINDOWS_ROOMS = {"toolkit", "mainwindow", "dialogs"}
INCLUDE = re.compile(r'^\s*#\s*include\s+([<"])([^>"]+)[>"]')


def room_of(relative):
    parts = relative.parts
    return parts[1] if parts[0] == "src" and len(parts) > 2 else parts[0]


def check_file(root, path):
    relative = path.relative_to(root)
    room = room_of(relative)
    name = relative.as_posix()
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        match = INCLUDE.match(line)
        if not match:
            continue
        bracket, target = match.groups()
        where = f"{name}:{number}"
        if bracket == "<":
            if (target.lower() == "windows.h" and name.startswith("src/")
                    and room not in WINDOWS_ROOMS and "_win32" not in path.stem
                    and name not in WINDOWS_HEADERS):
                yield f"{where}: <windows.h> in a file that must build without Windows"
            continue
        if "/" not in target:
            yield f'{where}: "{target}" is not named from the include root'
            continue
        other = target.split("/")[0]
        if other not in ALLOWED.get(room, set()) and (name, other) not in EXCEPTIONS:
            yield f"{where}: {room} must not include {other} ({target})"


def check_tree(root):
    files = [f for folder in ("src", "companions") for ending in ("*.h", "*.cpp")
             for f in sorted((root / folder).rglob(ending))]
    return len(files), [problem for f in files for problem in check_file(root, f)]


def self_test():
    """Each wrong line must be found, and the right ones must pass."""
    cases = {
        "src/foundation/a.h": ('#include "decoders/x.h"', 1),
        "src/foundation/b.cpp": ("#include <windows.h>", 1),
        "src/foundation/b_win32.cpp": ("#include <windows.h>", 0),
        "src/decoders/c.cpp": ('#include "selection/x.h"', 1),
        "src/selection/d.cpp": ('#include "decoders/x.h"\n#include "foundation/y.h"', 0),
        "src/selection/e.h": ('#include "gather.h"', 1),
        "src/toolkit/f.cpp": ('#include "selection/x.h"', 1),
        "src/mainwindow/g.cpp": ('#include "dialogs/x.h"', 1),
        "src/mainwindow/main_form_dialogs_win32.cpp": ('#include "dialogs/x.h"', 0),
        "companions/h.cpp": ('#include "foundation/string.h"', 1),
    }
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        for name, (text, _) in cases.items():
            (root / name).parent.mkdir(parents=True, exist_ok=True)
            (root / name).write_text(text, encoding="utf-8")
        wrong = [name for name, (_, expected) in cases.items()
                 if len(list(check_file(root, root / name))) != expected]
    for name in wrong:
        print(f"self-test: {name} was judged wrongly")
    return not wrong


def main():
    if sys.argv[1:] == ["--self-test"]:
        sys.exit(0 if self_test() else 1)
    count, problems = check_tree(pathlib.Path(sys.argv[1]).resolve())
    print("\n".join(problems))
    print(f"{count} files read, {len(problems)} includes point the wrong way")
    sys.exit(1 if problems or count == 0 else 0)


if __name__ == "__main__":
    main()
