"""Documents that the guide does not show: at the limits, of version 1, and those that recordings become."""

import copy
import json
import re
from pathlib import Path

from check_keys import check_written, dates, dumps, nodes_of
from command import Outcomes, check, compare_with_reader, project, zentor
from reader import Document


def check_limits(guide, worked):
    limits = {row[0]: row[1] for row in guide.table("what", "limit")}
    groups = int(re.match(r"\d+", limits["groups inside each other"]).group())
    nesting = int(limits["objects and arrays inside each other, in any value"])
    largest = int(re.search(r"\d{5,}", next(row for row in limits.values() if "2^53" in row)).group())
    document, outcomes = dates(), Outcomes()
    for depth, code in ((groups, None), (groups + 1, 32)):
        nodes = []
        for i in range(depth):
            nodes = [{"objectType": "dataGroup", "matchName": f"g{i}", "displayName": "", "children": nodes}]
        outcomes.add(f"{depth} groups", dumps(document | {"dataOutline": nodes}), code)
    node = copy.deepcopy(nodes_of(json.loads(worked))["take"])
    for depth, code in ((nesting, None), (nesting + 1, 32)):
        value = 1
        for _ in range(depth - 2):  # the outline and the node
            value = [value]
        outcomes.add(f"{depth} arrays", dumps(document | {"dataOutline": [node | {"other": value}]}), code)
    count = b'"precisionLength":3'
    outcomes.add(f"count {largest}", dumps(document).replace(count, count[:-1] + str(largest).encode()))
    outcomes.add(f"count {largest} + 2", dumps(document).replace(count, count[:-1] + str(largest + 2).encode()), 44)
    outcomes.compare()


def as_version_1(worked):
    """The worked document as one of version 1."""
    document = json.loads(worked)
    del document["version"], document["dynamicSamplesPresentB"]
    document |= document.pop("dynamicDataInfo")
    for node in nodes_of(document).values():
        if "dataType" in node:
            kinds = {"number": "numberString", "string": "paddedString", "numberStringArray": "numberArray"}
            node["dataType"]["type"] = kinds.get(node["dataType"]["type"], node["dataType"]["type"])
    actor = nodes_of(document)["actor"]
    actor["dataType"]["paddedStringProperties"] = {"maxLen": 6, "eventMarkerB": False}
    actor["value"] = {"length": 4, "str": "Zoë  "}
    return document


def check_version_1(worked):
    """What the table of the versions says of version 1."""
    document, outcomes = as_version_1(worked), Outcomes()
    Path("version1.vkjson").write_bytes(dumps(document))
    compare_with_reader("version1.vkjson")
    cases = [
        ("any version", {"version": "x"} | document, None),
        ("any order", dict(reversed(document.items())), None),
        ("flag of version 2", document | {"dynamicSamplesPresentB": True}, 30),
        ("object of version 2", document | {"dynamicDataInfo": {}}, 30),
        ("the other time information", document | {"utcInfo": {"precisionLength": 0, "isGMT": True}}, 46),
    ]
    for key in ("useTimecodeB", "timecodeInfo", "dataOutline"):
        cases.append((f"without {key}", {name: value for name, value in document.items() if name != key}, 32))
    values = [("height", "+1.8", None), ("height", "tall", 44), ("actor", "Ann", 43)]
    values += [("actor", {"length": "6", "str": "Annika"}, None), ("actor", {"length": 7, "str": "Annika "}, 39)]
    kinds = [("height", "number", 44), ("height", "boolean", 44), ("position", "numberStringArray", 44)]
    for name, value, code in values + kinds:
        other = copy.deepcopy(document)
        if (name, value, code) in values:
            nodes_of(other)[name]["value"] = value
        else:
            nodes_of(other)[name]["dataType"]["type"] = value
        cases.append((f"{name}: {value}", other, code))
    for text, other, code in cases:
        outcomes.add(f"version 1, {text}", dumps(other), code)
    outcomes.compare()


def check_galloping(document, text):
    expected = [samples.start for samples in document.sets.values()], document.count_brackets(document.samples_at)
    check(document.gallop() == expected, f"galloping over {text}: {document.gallop()}, not {expected}")


def check_records_in_step(worked):
    """Galloping over a set of six records, where the second record of the next one stands in the same steps."""
    document = json.loads(worked)
    nodes = [copy.deepcopy(nodes_of(document)["temperature"]) for _ in range(2)]
    nodes[1]["matchName"] = "second"
    document |= {"dataDynamicSamples": [], "dataOutline": nodes}
    for node, identifier in zip(nodes, ("first", "secondset")):
        node |= {"sampleSetID": identifier, "sampleCount": 6}
        samples = [{"time": f"00:00:00:{i:02}", "value": "+21.50"} for i in range(6)]
        document["dataDynamicSamples"].append({"sampleSetID": identifier, "samples": samples})
    Path("steps.vkjson").write_bytes(dumps(document))
    read = compare_with_reader("steps.vkjson")
    first, second = read.sets["first"], read.sets["secondset"]
    check(second.record(1) == first.record(8), "records that are in step")
    check_galloping(read, "records in step")


def check_recordings(tables):
    for recording in ("walk.bvh", "lamp.bvh", "weather-stations.json", "greenhouse.csv"):
        name = recording.partition(".")[0] + ".vkjson"
        status, _, error = zentor("convert", str(project / "resources/recordings" / recording), "-o", name)
        check(status == 0, f"{recording}: {error}")
        data = Path(name).read_bytes()
        if recording == "greenhouse.csv":  # a node for each of some thousand cells
            Document(data)
        else:
            document = compare_with_reader(name)
        check_written(tables, json.loads(data), name)
        if recording.endswith(".bvh"):
            check(sum(samples.count for samples in document.sets.values()) > 10, f"{name} has no samples")
            check_galloping(document, name)
