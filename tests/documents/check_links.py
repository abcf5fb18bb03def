#!/usr/bin/env python3
"""Fails, and says where, when a document links to a file or heading that does not exist, or has a picture
without a text that describes it: check_links.py PROJECT"""
import pathlib
import re
import sys

LINK = re.compile(r"(!?)\[([^\]]*)\]\(([^)\s]+)\)")


def anchor(heading):
    """The anchor that sites for repositories make of a heading."""
    return re.sub(r"[^\w\- ]", "", heading.strip().lower()).replace(" ", "-")


def text_of(document):
    """The document without its indented code examples."""
    lines = document.read_text(encoding="utf-8").splitlines()
    return "\n".join(line for line in lines if not line.startswith("    "))


def anchors_of(document):
    return {anchor(line.lstrip("#")) for line in text_of(document).splitlines() if line.startswith("#")}


def faults_of(document):
    for picture, words, target in LINK.findall(text_of(document)):
        if re.match(r"[a-z]+:", target):
            continue
        if picture and not words:
            yield f"{target} has no describing text"
        name, _, heading = target.partition("#")
        aim = document.parent / name if name else document
        if not aim.exists():
            yield f"{target} does not exist"
        elif heading and heading not in anchors_of(aim):
            yield f"{target} is no heading"


def main(project):
    root = pathlib.Path(project)
    documents = [*root.glob("*.md"), *root.glob("docs/*.md")]
    faults = [f"{document.relative_to(root)}: {fault}" for document in documents for fault in faults_of(document)]
    print("\n".join(faults) or f"{len(documents)} documents")
    return 1 if faults or len(documents) < 5 else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
