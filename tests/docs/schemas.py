#!/usr/bin/python3 -B
"""Whether docs/json.md is right: what the command prints for programs against its schemas. Arguments: the project's
folder; the command, with what runs it before it."""

import json
import re
import subprocess
import sys
import tempfile
from pathlib import Path

import jsonschema

project = Path(sys.argv[1]).resolve()
guide = (project / "docs/json.md").read_text(encoding="utf-8")
schemas = {heading: json.loads(block) for heading, block in
           re.findall(r"^## ([^\n]+)\n(?:(?!^## ).)*?^```json schema\n(.*?)^```$", guide, re.M | re.S)}
failures = []
shown = {heading: 0 for heading in schemas}


def check(heading, text):
    try:
        jsonschema.validate(json.loads(text), schemas[heading], cls=jsonschema.Draft202012Validator)
        shown[heading] += 1
    except (jsonschema.ValidationError, json.JSONDecodeError) as error:
        failures.append(f"{heading}: {text[:200]}: {str(error)[:300]}")


def run(*arguments):
    done = subprocess.run([*sys.argv[2:], *arguments, "--json"], capture_output=True, text=True, check=False)
    for line in done.stderr.splitlines():
        check("Failures", line)
    if not done.stdout:
        return
    for text in done.stdout.splitlines() if arguments[0] == "convert" else [done.stdout]:
        check(arguments[0], text)


with tempfile.TemporaryDirectory() as folder:
    recordings = sorted(str(path) for path in (project / "resources/recordings").iterdir() if path.suffix != ".nmea")
    noted = Path(folder) / "noted.csv"
    noted.write_text("a;b\n1;2\n3;4\n", encoding="utf-8")
    run("formats")
    run("plugins", "--load")
    run("convert", *recordings, str(noted), "-o", folder)
    run("convert", *recordings, "-o", folder)  # they are there already
    for recording in recordings:
        for command in ("info", "tree"):
            run(command, recording)
        for path in ("[0]", "[0][0]", "[0][1]", "[0][1][0]"):
            run("get", recording, path)
            run("samples", recording, path)
    broken = Path(folder) / "broken.json"
    broken.write_text("{", encoding="utf-8")
    run("info", str(broken))
    run("validate", *recordings, str(broken), "missing.csv")
failures += [f"nothing was printed for {heading}" for heading, count in shown.items() if count == 0]
print(f"compared: {shown}")
for failure in failures:
    print(f"failed: {failure}")
sys.exit(1 if failures else 0)
