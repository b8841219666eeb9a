#!/usr/bin/env python3
"""Fails when the help page is broken: check_help_page.py ROOT | --self-test

Tags are closed in order, each picture exists, has a size and a text for those who
don't see it, each file beside the page is used, links lead to a place of the page,
nothing is fetched from elsewhere, and every setting that the program keeps is named.
"""
import html.parser
import pathlib
import re
import sys

VOID = {"meta", "img", "br", "hr", "link", "input"}
FORBIDDEN = {"script", "link", "iframe", "object", "embed", "base", "form"}
ELSEWHERE = re.compile(r"(?:[a-z]+:)?//|\burl\(|@import", re.I)
SETTING = re.compile(r'L"(zKR-[A-Za-z-]+)"')
SETTINGS = {
    "zKR-FileSelector-X", "zKR-FileSelector-NotMax", "zKR-FileSelector-Devider",
    "zKR-FileSelector-Cols", "zKR-FileSelector-ColWidths", "zKR-FileSelector-Exclusion",
    "zKR-FileSelector-List-Cols", "zKR-FileSelector-List-ColWidths", "DecoderCache64",
    "UnitsFreq"}
# The page gives them as one prefix with several endings.
SHORTENED = {"zKR-FileSelector-Y", "zKR-FileSelector-W", "zKR-FileSelector-H"}


class Page(html.parser.HTMLParser):
    def __init__(self, text):
        super().__init__(convert_charrefs=True)
        self.problems, self.open, self.seen = [], [], []
        self.ids, self.links, self.pictures = [], [], []
        self.feed(text)
        self.close()
        self.problems += [f"<{tag}> is never closed" for tag in self.open]

    def handle_starttag(self, tag, attrs):
        given = dict(attrs)
        self.seen.append(tag)
        if tag in FORBIDDEN:
            self.problems.append(f"<{tag}> has no place in this page")
        if tag not in VOID:
            self.open.append(tag)
        if "id" in given:
            self.ids.append(given["id"])
        if tag == "a":
            self.links.append(given.get("href", ""))
        if tag == "img":
            self.picture(given)
        if tag == "html" and not given.get("lang"):
            self.problems.append("the page has no language")

    def picture(self, given):
        self.pictures.append(given.get("src", ""))
        for name in ("alt", "width", "height"):
            if name not in given:
                self.problems.append(f"{given.get('src')}: no {name}")

    def handle_endtag(self, tag):
        if not self.open or self.open[-1] != tag:
            self.problems.append(f"</{tag}> closes <{self.open[-1] if self.open else ''}>")
        # One fault is told once.
        if tag in self.open:
            while self.open.pop() != tag:
                pass


def check(text, files, settings):
    page = Page(text)
    yield from page.problems
    for needed in ("title", "h1", "meta"):
        if needed not in page.seen:
            yield f"there is no <{needed}>"
    if ELSEWHERE.search(text):
        yield f"something from elsewhere: {ELSEWHERE.search(text).group()}"
    for name in sorted({i for i in page.ids if page.ids.count(i) > 1}):
        yield f"#{name} is there more than once"
    for link in page.links:
        if not link.startswith("#") or link[1:] not in page.ids:
            yield f"the link {link} leads nowhere"
    for picture in sorted(set(page.pictures) - files):
        yield f"{picture}: there is no such picture"
    for picture in sorted(files - set(page.pictures)):
        yield f"{picture}: the page does not show it"
    for setting in sorted(settings):
        if f"<code>{setting}</code>" not in text:
            yield f"{setting} is not told"


def settings_of(root):
    """The names of settings in the sources, so that a new one is told as well."""
    names = set()
    for path in (root / "src").rglob("*"):
        if path.suffix in (".h", ".cpp"):
            names.update(SETTING.findall(path.read_text(encoding="utf-8")))
    return SETTINGS | (names - SHORTENED)


def self_test():
    right = ('<!DOCTYPE html><html lang="en"><head><meta charset="utf-8"><title>t</title></head>'
             '<body><h1 id="a">x</h1><p><a href="#a">y</a>'
             '<img src="p.png" alt="" width="1" height="1"><code>S</code></p></body></html>')
    cases = [
        ("the right page", right, 0),
        ("tags out of order", right.replace("</p></body>", "</body></p>"), 2),
        ("an unclosed tag", right.replace("</p></body>", "</p><p></body>"), 1),
        ("a missing picture", right.replace("p.png", "q.png"), 2),
        ("a picture without text", right.replace(' alt=""', ""), 1),
        ("a dead link", right.replace('"#a"', '"#b"'), 1),
        ("a link to elsewhere", right.replace('"#a"', '"https://example.org/"'), 2),
        ("a style sheet from elsewhere", right.replace("<title>", "<style>@import 'x'</style><title>"),
         1),
        ("a script", right.replace("<h1", "<script></script><h1"), 1),
        ("one id twice", right.replace("<p>", '<p id="a">'), 1),
        ("an untold setting", right.replace("<code>S", "<code>T"), 1),
        ("no language", right.replace(' lang="en"', ""), 1),
    ]
    wrong = [(name, found) for name, text, count in cases
             if len(found := list(check(text, {"p.png"}, {"S"}))) != count]
    for name, found in wrong:
        print(f"self-test: {name} was judged wrongly: {found}")
    return not wrong


def main():
    if sys.argv[1:] == ["--self-test"]:
        sys.exit(0 if self_test() else 1)
    root = pathlib.Path(sys.argv[1]).resolve()
    folder = root / "help/zKR"
    files = {path.name for path in folder.iterdir()} - {"FileSelector.htm"}
    text = (folder / "FileSelector.htm").read_text(encoding="utf-8")
    problems = list(check(text, files, settings_of(root)))
    print("\n".join(problems))
    print(f"{len(files)} pictures, {len(problems)} faults")
    sys.exit(1 if problems or not files else 0)


if __name__ == "__main__":
    main()
