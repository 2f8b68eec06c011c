#!/usr/bin/env python3
"""Every shipped language translates every text of today's sources.

Usage: check-translations.py LUPDATE SOURCE_DIR [LUPDATE_ARGS...]

lupdate reads the sources afresh into a scratch file, so a text added to
the screens without `make translations` fails here too. For each
translations/veltra_<language>.ts: every source text has a finished,
non-empty translation that keeps each placeholder (%1, %2 ...) as often as
the source has it; and the language is carried by the desktop entry (Name,
GenericName, Comment, Keywords) and the metainfo (summary, description,
languages). One line per fault; exit status 1 when there is any.
"""
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ET
from collections import Counter
from pathlib import Path

PLACEHOLDER = re.compile(r"%L?(\d+|n)")


def messages(ts_path):
    """(context, source) -> translation element, for the live messages."""
    found = {}
    for context in ET.parse(ts_path).getroot().iter("context"):
        name = context.findtext("name")
        for message in context.iter("message"):
            translation = message.find("translation")
            if translation is not None and translation.get("type") in ("vanished", "obsolete"):
                continue
            found[(name, message.findtext("source"))] = translation
    return found


def main():
    lupdate, source_dir, *lupdate_args = sys.argv[1:]
    root = Path(source_dir)
    with tempfile.TemporaryDirectory() as scratch:
        fresh = Path(scratch) / "sources.ts"
        subprocess.run([lupdate, "-silent", *lupdate_args, "-ts", str(fresh)], cwd=root, check=True)
        sources = list(messages(fresh))
    faults = []
    if not sources:
        faults.append("lupdate found no source texts")
    desktop = (root / "data/veltra.desktop.in").read_text(encoding="utf-8")
    metainfo = ET.parse(root / "data/veltra.metainfo.xml.in").getroot()
    xml_lang = "{http://www.w3.org/XML/1998/namespace}lang"
    declared = {lang.text for lang in metainfo.iter("lang")}
    shipped = sorted((root / "translations").glob("veltra_*.ts"))
    if not shipped:
        faults.append("no translations/veltra_*.ts")
    for ts in shipped:
        language = ts.stem[len("veltra_"):]
        translated = messages(ts)
        for context, source in sources:
            where = f"{ts.name}: {context}: {source!r}"
            translation = translated.get((context, source))
            if translation is None:
                faults.append(f"{where}: missing (make translations, then translate it)")
            elif translation.get("type") == "unfinished" or not (translation.text or "").strip():
                faults.append(f"{where}: not translated")
            elif Counter(PLACEHOLDER.findall(source)) != Counter(PLACEHOLDER.findall(translation.text)):
                faults.append(f"{where}: placeholders differ in {translation.text!r}")
        for key in ("Name", "GenericName", "Comment", "Keywords"):
            if not re.search(rf"^{key}\[{re.escape(language)}\]=\S", desktop, re.MULTILINE):
                faults.append(f"data/veltra.desktop.in: no {key}[{language}]")
        for tag in ("summary", "description"):
            if not any(e.get(xml_lang) == language for e in metainfo.iter() if e.tag == tag or
                       (tag == "description" and e.tag == "p")):
                faults.append(f"data/veltra.metainfo.xml.in: no {tag} in {language}")
        if language not in declared:
            faults.append(f"data/veltra.metainfo.xml.in: <languages> lacks {language}")
    for fault in faults:
        print(fault)
    print(f"{len(shipped)} languages, {len(sources)} source texts, {len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
