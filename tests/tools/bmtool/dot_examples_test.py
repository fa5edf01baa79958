#!/usr/bin/env python3
"""Draws each example with `bmtool dot` through Graphviz, with and without --noc, and checks that the SVG
is well-formed XML naming every block of the file: its label shows the instance name and its tooltip the
instance path."""
import json
import os
import subprocess
import sys
import xml.etree.ElementTree as ET

XLINK_TITLE = "{http://www.w3.org/1999/xlink}title"


def blocks(path):
    """The instance path and name of every block of the file, top first."""
    with open(path, encoding="utf-8") as f:
        top = json.load(f)["top_block"]
    found = []
    stack = [("/", top["module_name"], top)]
    while stack:
        where, name, block = stack.pop()
        found.append((where, name))
        for sub_name, sub in block.get("contents", {}).get("sub_blocks", {}).items():
            stack.append((where.rstrip("/") + "/" + sub_name, sub_name, sub))
    return found


def main(bmtool, out_dir, examples):
    os.makedirs(out_dir, exist_ok=True)
    failures = []
    for example in examples:
        expected = blocks(example)
        for extra in ([], ["--noc"]):
            svg = os.path.join(out_dir, os.path.basename(example) + "".join(extra) + ".svg")
            run = subprocess.run([bmtool, "dot", example, svg] + extra, capture_output=True, text=True)
            if run.returncode != 0:
                failures.append(f"{example} {extra}: bmtool dot failed: {run.stderr}")
                continue
            try:
                root = ET.parse(svg).getroot()
            except ET.ParseError as error:
                failures.append(f"{svg}: not XML: {error}")
                continue
            titles = {e.get(XLINK_TITLE) for e in root.iter() if e.get(XLINK_TITLE) is not None}
            texts = {e.text for e in root.iter("{http://www.w3.org/2000/svg}text")}
            for where, name in expected:
                if where not in titles or name not in texts:
                    failures.append(f"{svg}: block {where} ({name}) is not drawn")
    for failure in failures:
        print(failure, file=sys.stderr)
    print(f"{len(examples)} examples drawn, {len(failures)} failures")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], sys.argv[2], sys.argv[3:]))
