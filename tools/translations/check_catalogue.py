#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT

"""check_catalogue.py LUPDATE CATALOGUE.ts TERMS.tsv FOLDER...

Fails, naming each entry, unless the catalogue has a finished text for exactly the texts that the
sources below the folders hold, keeps to the list of terms, and leaves nothing in English but names.
"""

import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree
from pathlib import Path


def updated_catalogue(lupdate, catalogue, folders):
    """What lupdate makes of the catalogue: new texts are unfinished then, and lost ones vanished."""
    with tempfile.TemporaryDirectory() as work:
        copy = Path(work) / catalogue.name
        shutil.copy(catalogue, copy)
        subprocess.run(
            [lupdate, "-silent", "-I", ".", "-locations", "none", *folders, "-ts", copy],
            check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        return ElementTree.parse(copy).getroot()


def read_terms(file):
    """Pairs of English and Japanese; a name stands for itself."""
    rows = (line.split("\t") for line in file.read_text(encoding="utf-8").splitlines())
    return {row[0]: row[1] for row in rows if len(row) == 2 and not row[0].startswith("#")}


def uses(text, term):
    return re.search(rf"(?<![A-Za-z]){re.escape(term)}(?![A-Za-z])", text, re.IGNORECASE)


def is_only_names(text, terms):
    for english, translated in terms.items():
        if english == translated:
            text = text.replace(english, "")
    return not re.search(r"[A-Za-z]", text.replace("%1", ""))


def faults(message, terms):
    source = message.findtext("source")
    translation = message.find("translation")
    state = translation.get("type")
    if state:
        yield state
        return
    text = translation.text or ""
    if not text:
        yield "empty"
    elif text == source and not is_only_names(source, terms):
        yield "still in English"
    for english, translated in terms.items():
        if uses(source, english) and translated not in text:
            yield f"'{english}' is '{translated}' here"


def main():
    lupdate, catalogue, terms_file, *folders = sys.argv[1:]
    terms = read_terms(Path(terms_file))
    found = 0
    for context in updated_catalogue(lupdate, Path(catalogue), folders).iter("context"):
        for message in context.iter("message"):
            for fault in faults(message, terms):
                found += 1
                source = message.findtext("source")
                print(f"{catalogue}: {context.findtext('name')}: '{source}': {fault}", file=sys.stderr)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
