#!/usr/bin/env python3
"""Fails when ids.h and the resource scripts do not agree.

usage: check_ids.py ROOT
       check_ids.py --self-test

Every name of ids.h is used by a script, every name that a script uses is in
ids.h, no number stands in a script where a name belongs, and no two names of a
kind share one. Each picture that a script names exists and stands under its
number, each rendered one is named once, and app.rc includes every script.
"""
import collections
import pathlib
import re
import sys

DEFINE = re.compile(r"^#define\s+(\w+)\s+(\d+)\b", re.M)
# IDOK and IDCANCEL are the system's.
NAME = re.compile(r"\bID[A-Z]?_[A-Z_]+\b")
NUMBERED = [
    re.compile(r"^\s*\d+\s+(?:DIALOG|DIALOGEX|MENU|ICON|BITMAP)\b.*$", re.M),
    re.compile(r"^\s*MENUITEM\s+\"[^\"]*\",\s*\d+.*$", re.M),
    re.compile(r"^\s*(?:DEF)?PUSHBUTTON\s+\"[^\"]*\",\s*\d+.*$", re.M),
    re.compile(r"^\s*CONTROL\s+\"[^\"]*\",\s*\d+.*$", re.M),
]
PICTURE = re.compile(r"\b(?:ICON|BITMAP)\s+\"([^\"]+)\"")
# What each number has to show; the pictures of the states differ in nothing else.
ROLES = {
    102: "program.ico", 103: "sort-descending.ico", 104: "sort-ascending.ico",
    105: "state-recursive.ico", 106: "state-folder-only.ico",
    107: "state-child-selected.ico", 108: "state-has-files.ico", 110: "state-none.ico",
    113: "ticked.ico", 115: "button-convert.bmp", 116: "button-refresh.bmp",
    117: "button-reset.bmp", 118: "button-filter.bmp", 119: "button-help.bmp",
    121: "stars.bmp", 122: "stars-mask.bmp", 123: "button-list.bmp"}
SHOWN = re.compile(r"^(\w+)\s+(?:ICON|BITMAP)\s+\"rendered/([^\"]+)\"", re.M)
INCLUDE = re.compile(r'^#include\s+"([^"]+\.rc)"', re.M)


def without_comments(text):
    return re.sub(r"//.*", "", text)


def check_names(header, scripts):
    ids = DEFINE.findall(header)
    kinds = collections.defaultdict(list)
    for name, number in ids:
        kinds[name.split("_")[0], number].append(name)
    for (_, number), names in kinds.items():
        if len(names) > 1:
            yield f"{number} is {' and '.join(names)}"
    # A control and a dialog may share a number, a menu and a bitmap may not be
    # mixed up by it: the program's pictures, menus and dialogs are one series.
    series = collections.Counter(number for name, number in ids
                                 if name.split("_")[0] in ("IDD", "IDM", "IDB", "IDI"))
    for number, count in series.items():
        if count > 1:
            yield f"{number} is used for {count} resources"
    known = {name for name, _ in ids}
    used = set(NAME.findall("\n".join(scripts.values())))
    for name in sorted(known - used):
        yield f"{name}: no script uses it"
    for name in sorted(used - known):
        yield f"{name}: not in ids.h"


def check_scripts(scripts, pictures):
    for file, text in scripts.items():
        for pattern in NUMBERED:
            for line in pattern.findall(text):
                yield f"{file}: a number where a name belongs: {line.strip()}"
    named = collections.Counter(PICTURE.findall("\n".join(scripts.values())))
    for picture in sorted(named.keys() - pictures):
        yield f"{picture}: there is no such file"
    for picture in sorted(pictures - named.keys()):
        yield f"{picture}: no script names it"
    for picture, count in named.items():
        if count > 1:
            yield f"{picture}: named {count} times"
    included = set(INCLUDE.findall(scripts.get("app.rc", "")))
    for file in sorted(scripts.keys() - included - {"app.rc"}):
        yield f"{file}: app.rc does not include it"


def check_roles(header, scripts, roles):
    numbers = {name: int(number) for name, number in DEFINE.findall(header)}
    shown = {numbers.get(name): picture
             for name, picture in SHOWN.findall("\n".join(scripts.values()))}
    for number in sorted(roles.keys() | shown.keys() - {None}):
        if shown.get(number) != roles.get(number):
            yield f"{number} shows {shown.get(number)} instead of {roles.get(number)}"


def check(header, scripts, pictures, roles):
    header = without_comments(header)
    scripts = {file: without_comments(text) for file, text in scripts.items()}
    return [*check_names(header, scripts), *check_scripts(scripts, pictures),
            *check_roles(header, scripts, roles)]


def self_test():
    """Each fault must be found, and what is right must pass."""
    header = "#define IDD_A 1\n#define IDC_B 1\n#define IDB_C 3\n#define ID_D 9\n"
    script = ('IDD_A DIALOG\nCONTROL "", IDC_B, "X", 0\nIDB_C BITMAP "rendered/p"\n'
              'MENUITEM "m", ID_D\n')
    app = '#include "a.rc"\n'

    def faults(header=header, script=script, app=app, pictures=("p",), roles={3: "p"}):
        files = {f"rendered/{picture}" for picture in pictures}
        return len(check(header, {"a.rc": script, "app.rc": app}, files, roles))

    cases = [
        ("what is right", faults(), 0),
        ("an unused name", faults(header=header + "#define ID_E 10\n"), 1),
        ("a name used in a comment only", faults(header=header + "#define ID_E 10\n",
                                                 script=script + "// ID_E\n"), 1),
        ("an unknown name", faults(script=script + 'MENUITEM "n", ID_F\n'), 1),
        ("one number twice", faults(header=header.replace("ID_D 9", "ID_D 9\n#define ID_E 9"),
                                    script=script + 'MENUITEM "n", ID_E\n'), 1),
        ("one resource number twice", faults(header=header.replace("IDB_C 3", "IDB_C 1"), roles={1: "p"}), 1),
        ("a bare command", faults(script=script + 'MENUITEM "n", 7\n'), 1),
        ("a bare control", faults(script=script + 'PUSHBUTTON "n", 7, 0, 0, 1, 1\n'), 1),
        ("a bare picture", faults(script=script + '12 ICON "rendered/q"\n',
                                   pictures=("p", "q")), 1),
        ("a missing picture", faults(pictures=()), 1),
        ("a forgotten picture", faults(pictures=("p", "q")), 1),
        ("a script left out", faults(app=""), 1),
        ("a picture under another number", faults(roles={3: "q"}), 1),
        ("a number without a picture", faults(roles={3: "p", 4: "q"}), 1),
    ]
    wrong = [(name, count) for name, count, expected in cases if count != expected]
    for name, count in wrong:
        print(f"self-test: {name} gave {count} faults")
    return not wrong


def main():
    if sys.argv[1:] == ["--self-test"]:
        sys.exit(0 if self_test() else 1)
    folder = pathlib.Path(sys.argv[1]).resolve() / "src/resources"
    header = (folder / "ids.h").read_text(encoding="utf-8")
    scripts = {path.name: path.read_text(encoding="utf-8") for path in folder.glob("*.rc")}
    pictures = {f"rendered/{path.name}" for ending in ("ico", "bmp")
                for path in (folder / "rendered").glob(f"*.{ending}")}
    problems = check(header, scripts, pictures, ROLES)
    print("\n".join(problems))
    print(f"{len(DEFINE.findall(header))} ids, {len(scripts)} scripts, {len(problems)} faults")
    sys.exit(1 if problems or not scripts else 0)


if __name__ == "__main__":
    main()
