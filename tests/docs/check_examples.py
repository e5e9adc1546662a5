"""Documents, commands, offsets, changes and errors that the guide shows, and the reader's searches."""

import json
import re
from pathlib import Path

from command import Outcomes, check, compare_with_reader, printed, zentor
from guide import changes, codes
from reader import Document


def check_blocks(guide):
    """Every document of the guide, by its outcome and by its values. Returns those with a name."""
    named, outcomes = {}, Outcomes()
    for name, data, fault in guide.documents():
        outcomes.add(f"block {name}", data, *(fault or ()))
        named[name] = (data, fault)
        Path(name).write_bytes(data)
        if fault is None:
            compare_with_reader(name)
    outcomes.compare()
    check({"worked.vkjson", "still.vkjson", "old.vkjson", "bare.vkjson"} == set(named), "the guide has other documents")
    return named


def check_commands(guide):
    shown = list(guide.commands())
    check(len(shown) > 2, "commands are missing")
    for arguments, lines in shown:
        out = zentor(*(argument.strip("'") for argument in arguments))[1]
        check(json.loads(out) == json.loads("".join(lines)), f"zentor {' '.join(arguments)}: {out}")


def check_offsets(guide, worked):
    rows = guide.table("offset", "bytes from there on")
    for offset, text, _ in rows:
        expected = codes(text)[0].encode()
        check(worked[int(offset) :].startswith(expected), f"offset {offset}: {expected.decode()}")
    check(len(rows) > 10, "offsets are missing")


def check_widths(guide, worked):
    document = Document(worked)
    rows = guide.table("set", "value", "record", "stride", "start", "size")
    check([codes(row[0])[0] for row in rows] == list(document.sets), "the table of widths has other sets")
    for name, value, *numbers in rows:
        samples = document.sets[codes(name)[0]]
        terms, sum_of_terms = value.split(" = ")
        check(re.fullmatch(r"[\d+() ×]+", terms) and eval(terms.replace("×", "*")) == int(sum_of_terms), value)
        computed = [samples.value_width, samples.record_width, samples.stride, samples.start, samples.size]
        check([int(sum_of_terms), *map(int, numbers)] == computed, f"widths of {name}: {computed}")


def check_search():
    """Every moment around the samples, against the command."""
    document = Document(Path("worked.vkjson").read_bytes())
    for path, node in document.nodes():
        if node["objectType"] != "dataDynamic":
            continue
        samples = document.sets[node["sampleSetID"]]
        for frame in range(1796, 1803):
            index = samples.latest(frame)
            expected = 21 if index is None else [{"time": samples.time(index), "value": samples.value(index)}]
            found = printed("samples", "worked.vkjson", path, "--at", document.times.label(frame))
            check(found == expected, f"{path} at frame {frame}: {found}, by the guide {expected}")


def changed(worked, pairs):
    for old, new in pairs:
        check(worked.count(old.encode()) >= 1, f"not in the worked document: {old}")
        worked = worked.replace(old.encode(), new.encode(), 1)
    return worked


def check_accepted(guide, worked):
    rows = guide.table("change", "why")
    outcomes = Outcomes()
    for cell, _ in rows:
        pairs = changes(cell)
        check(pairs, f"no change: {cell}")
        data = changed(worked, pairs)
        check(data != worked, f"nothing changes: {cell}")
        outcomes.add(cell, data)
        Path("accepted.vkjson").write_bytes(data)
        compare_with_reader("accepted.vkjson")
    outcomes.compare()
    check(len(rows) > 15, "accepted forms are missing")


def check_errors(guide, worked, named):
    rows = guide.table("code", "for what", "for instance", "offset")
    outcomes = Outcomes()
    for code, _, instance, offset in rows:
        shown = codes(instance)
        if changes(instance):
            outcomes.add(f"error {code}: {instance}", changed(worked, changes(instance)), int(code), int(offset))
        elif not shown:
            check((instance, offset) == ("an empty file", "none"), instance)
            outcomes.add(instance, b"", int(code))
        elif shown[0] in named:
            check(named[shown[0]][1] == (int(code), int(offset)), f"error {code}: {instance}")
        else:
            found = printed(*shown[0].split())
            check((found, offset) == (int(code), "none"), f"{shown[0]}: {found}")
    outcomes.compare()
    check(len(rows) > 20, "errors are missing")
    # What is wrong with samples alone is found when they are read.
    for code, _, instance, _ in rows:
        if code in ("36", "39"):
            ends_elsewhere = changes(instance) == [('"sampleCount":3', '"sampleCount":2')]
            Path("opened.vkjson").write_bytes(changed(worked, changes(instance)))
            check((zentor("info", "opened.vkjson")[0] == 0) != ends_elsewhere, f"opening: {instance}")


def check_order_of_faults(worked):
    """Of several faults, the one that comes first in the order of the guide. No change moves what follows it."""
    faults = [
        ('"-03.25"', '"-03,25"'),  # a sample
        ('2,"dataType":{"type":"paddedString"', '1,"dataType":{"type":"paddedString"'),  # the end of a set
        ('k","sampleSetID":"note"', 'k","sampleSetID":"heat"'),  # two nodes of one set
        ('"hold"', '"holt"'),  # a node
        ('"isSigned":false', '"isSignet":false'),  # a node before it
        ('"eventMarkerB":true}', '"eventMarkerB":trux}'),  # the syntax of the outline
        ('"scale":1001', '"scale":1000'),  # a key before the outline
    ]
    found, outcomes = [], Outcomes()
    for number, fault in enumerate(faults):
        Path("fault.vkjson").write_bytes(changed(worked, [fault]))
        alone = printed("validate", "fault.vkjson")[0]
        found.append((alone["code"], alone["offset"]))
        outcomes.add(f"the faults up to {fault[1]}", changed(worked, faults[: number + 1]), *found[-1])
    check(len(set(found)) == len(faults), f"faults that look alike: {found}")
    without = worked[: worked.index(b',"dataOutline"')] + b"}"
    outcomes.add("sets without an outline", without, 32, len(without) - 1)
    outcomes.compare()
