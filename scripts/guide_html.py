"""Makes the guide's HTML: guide_html.py FOLDER TARGET. See make-guide."""
import html
import re
import shutil
import sys
from html.parser import HTMLParser
from pathlib import Path

import markdown

STYLE = Path(__file__).resolve().parent / "guide.css"
TEMPLATE = """<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>{title}</title>
<link rel="stylesheet" href="guide.css">
</head>
<body>
<nav aria-label="Pages">
<a class="home" href="index.html">Halvoran</a>
<ul>
{entries}
</ul>
</nav>
<main>
{body}
<footer>{neighbours}</footer>
</main>
</body>
</html>
"""


def pages_in_order(folder):
    """Names and titles of all pages: the index, then those that it lists."""
    names = ["index"] + re.findall(r"^\| \[[^\]]*\]\(([\w-]+)\.md\)", (folder / "index.md").read_text(), re.M)
    return [(name, re.search(r"^# (.*)$", (folder / f"{name}.md").read_text(), re.M).group(1)) for name in names]


def navigation(pages, present):
    mark = {True: ' aria-current="page"', False: ""}
    return "\n".join(f'<li><a href="{name}.html"{mark[name == present]}>{html.escape(title)}</a></li>'
                     for name, title in pages[1:])


def neighbours(pages, present):
    place = [name for name, _ in pages].index(present)
    links = []
    if place > 0:
        name, title = pages[place - 1]
        links.append(f'<a rel="prev" href="{name}.html">&larr; {html.escape(title)}</a>')
    if place + 1 < len(pages):
        name, title = pages[place + 1]
        links.append(f'<a rel="next" href="{name}.html">{html.escape(title)} &rarr;</a>')
    return "\n".join(links)


def body_of(page):
    body = markdown.markdown(page.read_text(), extensions=["tables", "toc", "sane_lists", "md_in_html"])
    body = re.sub(r'href="([\w-]+)\.md(#[^"]*)?"', lambda link: f'href="{link[1]}.html{link[2] or ""}"', body)
    # A wide table is pushed sideways within itself.
    return body.replace("<table>", '<div class="table"><table>').replace("</table>", "</table></div>")


class Targets(HTMLParser):
    """What a page links to and loads, and the places in it that can be linked to."""

    def __init__(self, text):
        super().__init__()
        self.links, self.places = [], set()
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        attributes = dict(attributes)
        self.links += [attributes[name] for name in ("href", "src") if name in attributes]
        self.places.add(attributes.get("id"))


def broken_links(target):
    found = {page.name: Targets(page.read_text()) for page in target.glob("*.html")}
    for name, page in sorted(found.items()):
        for link in page.links:
            path, _, place = link.partition("#")
            if ":" in path or not (target / (path or name)).is_file():
                yield f"{name}: {link} is not there"
            elif place and place not in found[path or name].places:
                yield f"{name}: {link} leads to no place of that page"


def make(folder, target):
    shutil.rmtree(target, ignore_errors=True)
    (target / "pictures").mkdir(parents=True)
    pages = pages_in_order(folder)
    for name, title in pages:
        text = TEMPLATE.format(title=html.escape(title), entries=navigation(pages, name), body=body_of(folder / f"{name}.md"),
                               neighbours=neighbours(pages, name))
        (target / f"{name}.html").write_text(text)
    for picture in (folder / "pictures").glob("*.png"):
        shutil.copy(picture, target / "pictures")
    shutil.copy(STYLE, target / "guide.css")
    return pages


def main():
    folder, target = map(Path, sys.argv[1:])
    pages = make(folder, target)
    problems = list(broken_links(target))
    print("\n".join(problems) or f"{len(pages)} pages are in {target}; begin with index.html.")
    return 1 if problems else 0


sys.exit(main())
