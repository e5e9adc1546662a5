"""The command that the guide is held against, and what has been found wrong."""

import json
import re
import subprocess
import sys
from pathlib import Path

from reader import Document

project = Path(sys.argv[1]).resolve()
failures = []


def check(condition, text):
    if not condition:
        failures.append(text)


def zentor(*arguments):
    run = subprocess.run([*sys.argv[2:], *arguments], capture_output=True, check=False)
    return run.returncode, run.stdout.decode(), run.stderr.decode()


def printed(*arguments):
    """What the command prints for programs; its error code, when it fails."""
    _, out, error = zentor(*arguments, "--json")
    return json.loads(out) if out else int(re.search(r"error:? ?\D*(\d+)", error).group(1))


class Outcomes:
    """Documents and what validating them has to give, looked at in one run."""

    def __init__(self):
        self.expected = []

    def add(self, text, data, code=None, offset=None):
        """A valid document, unless there is a code; no offset: whichever."""
        name = f"{len(self.expected)}.vkjson"
        Path(name).write_bytes(data)
        self.expected.append((name, text, code, offset))

    def compare(self):
        results = printed("validate", *(name for name, _, _, _ in self.expected))
        check(len(results) == len(self.expected), "documents are missing in the results")
        for (name, text, code, offset), result in zip(self.expected, results):
            found = (result.get("code"), result.get("offset"))
            good = found[0] == code and offset in (None, found[1])
            check(good, f"{text}: expected {code} at {offset}, found {found} {result.get('message', '')}")
            Path(name).unlink()


def compare_with_reader(name):
    """Outline, values and samples as the command reads them, and as the guide's reader does."""
    document = Document(Path(name).read_bytes())
    tree = {}

    def walk(nodes):
        for node in nodes:
            tree[node["path"]] = node
            walk(node.get("children", []))

    walk(printed("tree", name))
    nodes = dict(document.nodes())
    check(list(nodes) == list(tree), f"{name}: nodes {list(tree)}, by the guide {list(nodes)}")
    for path, node in nodes.items():
        shown = tree[path]
        for key in ("matchName", "displayName"):
            check(node[key] == shown[key], f"{name} {path}: {key} {shown[key]}, by the guide {node[key]}")
        kind = shown["type"]
        check(node["objectType"] == "data" + kind.capitalize(), f"{name} {path}: {kind}, {node['objectType']}")
        if kind == "group":
            continue
        full = printed("get", name, path)
        if kind == "static":
            value = document.static_value(node)
            check(value == full["value"], f"{name} {path}: value {full['value']}, by the guide {value}")
        else:
            samples = document.sets[node["sampleSetID"]].samples()
            found = printed("samples", name, path)
            check(samples == (found if found != 38 else []), f"{name} {path}: samples {found}, by the guide {samples}")
            for key in ("interpolation", "hasExpectedFrequencyB", "sampleCount"):
                check(node[key] == full[key], f"{name} {path}: {key} {full[key]}, by the guide {node[key]}")
    return document
