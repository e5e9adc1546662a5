"""The tables of keys and types, against documents with one key less or with another value."""

import copy
import json

from command import Outcomes, check
from guide import codes

KINDS = {
    "groups": ["dataGroup"],
    "static": ["dataStatic"],
    "dynamic": ["dataDynamic"],
    "static, dynamic": ["dataStatic", "dataDynamic"],
}
WRONG = {"string": [1], "number": ["x"], "boolean": ["x"], "object": [[]], "array": [{}], "count": ["x"]}


def dumps(document):
    return json.dumps(document, ensure_ascii=False, separators=(",", ":")).encode()


def complete(worked):
    """The worked document with the static nodes that it has not, and with a time of a video."""
    document = json.loads(worked)
    check(dumps(document) == worked, "the worked document is not as it would be written")
    group, _, array, _ = document["dataOutline"]
    static = copy.deepcopy(array["dataType"])
    static["type"] = "numberArray"
    head = {"objectType": "dataStatic", "matchName": "offset", "displayName": ""}
    group["children"].append(head | {"dataType": static, "value": [1, 2]})
    group["children"].append(head | {"matchName": "valid", "dataType": {"type": "boolean"}, "value": True})
    document["dynamicDataInfo"]["videoSyncTimeList"].append({"fileName": "a", "timeString": "00:00:00:00"})
    return document


def dates():
    info = {"useTimecodeB": False, "utcInfo": {"precisionLength": 3, "isGMT": True}}
    return {"version": "vkjson2.0.0", "dynamicSamplesPresentB": True, "dynamicDataInfo": info, "dataOutline": []}


def nodes_of(document):
    """By match name."""
    found, waiting = {}, list(document["dataOutline"])
    while waiting:
        node = waiting.pop()
        found[node["matchName"]] = node
        waiting += node.get("children", [])
    return found


def properties(document, name):
    return next(value for key, value in nodes_of(document)[name]["dataType"].items() if key != "type")


# By the first two keys of a table: where there is an object of its kind.
OBJECTS = {
    ("version", "dynamicSamplesPresentB"): [lambda document: document],
    ("useTimecodeB", "timecodeInfo"): [lambda document: document["dynamicDataInfo"]],
    ("fileName", "frameNumber"): [
        lambda document: document["dynamicDataInfo"]["videoSyncTimeList"][0],
        lambda document: document["dynamicDataInfo"]["videoSyncTimeList"][1],
    ],
    ("objectType", "matchName"): [
        lambda document: nodes_of(document)["take"],
        lambda document: nodes_of(document)["offset"],
        lambda document: nodes_of(document)["temperature"],
    ],
    ("pattern", "pattern.isSigned"): [lambda document: properties(document, "height")],
    ("pattern", "arrayRanges"): [lambda document: properties(document, "offset")],
    ("maxDigitsInStrLength", "maxLen"): [lambda document: properties(document, "actor")],
}


def holder(container, path):
    for step in path[:-1]:
        container = container[step]
    return container


def try_key(outcomes, document, find, path, kind, needed):
    """A key left out, and with values of other types."""
    is_top = find(document) is document

    def mutated(change):
        result = copy.deepcopy(document)
        change(holder(find(result), path))
        return dumps(result)

    def put(value):
        def change(container):
            container[path[-1]] = value

        return change

    name = ".".join(path)
    without = mutated(lambda container: container.pop(path[-1]))
    # What a document without the version is taken for, what comes too early, what has to come first.
    special = {"version": 30, "dynamicSamplesPresentB": 31, "useTimecodeB": 44}
    if "dataDynamicSamples" in document:
        special["dynamicDataInfo"] = 31
    if needed == "no":
        outcomes.add(f"without {name}", without)
    elif needed.startswith("instead"):
        outcomes.add(f"without {name}", without, 44)
    else:
        check(needed == "yes" or needed.startswith("if") or needed in KINDS, f"{name}: {needed}")
        outcomes.add(f"without {name}", without, special.get(name, 32 if is_top else 28))
    for value in WRONG.get(kind, []):
        outcomes.add(f"{name} of another type", mutated(put(value)), 32 if is_top and kind == "string" else 43)
    if kind == "number":  # which need not be whole; a frame rate has to be one that drops frames
        outcomes.add(f"{name}: 1.5", mutated(put(1.5)), 41 if "frameRate" in path else None)
    if kind == "count":
        for value in (1.5, -1, 2**53 + 2):
            outcomes.add(f"{name}: {value}", mutated(put(value)), 44)
    check(kind in WRONG or kind == "by type", f"type of {name}: {kind}")


def check_keys(guide, worked):
    """Returns the keys of each table, in its order, with how they are needed."""
    outcomes, tables = Outcomes(), {}
    documents = [complete(worked), dates()]
    for document in documents:
        outcomes.add("the document that is changed", dumps(document))
    for table in guide.tables("key", "type", "needed", "meaning"):
        rows = [(codes(keys), kind, needed) for keys, kind, needed, _ in table]
        flat = [key for keys, _, _ in rows for key in keys]
        finders = OBJECTS[tuple(flat[:2])]
        tables[tuple(flat[:2])] = {key: needed for keys, _, needed in rows for key in keys}
        for keys, kind, needed in rows:
            for key in keys:
                path, tried = key.split("."), 0
                for document in documents:
                    for find in finders:
                        try:
                            holder(find(document), path)[path[-1]]
                        except (KeyError, IndexError):
                            continue
                        try_key(outcomes, document, find, path, kind, needed)
                        tried += 1
                check(tried > 0, f"no document has {key}")
    check(set(tables) == set(OBJECTS), f"tables of keys: {list(tables)}")
    outcomes.compare()
    return tables


def check_types(guide, worked):
    """Every type, by its node, properties and value; the wrong kind of node or value is refused."""
    outcomes, document = Outcomes(), complete(worked)
    samples = {"number in quotes": "heat", "array of numbers in quotes": "hand"}
    samples |= {"object with a length and a text": "note"}
    found = {
        (node["objectType"], node["dataType"]["type"]): name
        for name, node in nodes_of(document).items()
        if "dataType" in node
    }
    rows = guide.table("type", "node", "properties")
    for kind, node, held, value in rows:
        kind = codes(kind)[0]
        name = found.pop(("data" + node.capitalize(), kind))
        changed_node = copy.deepcopy(document)
        data_type = nodes_of(changed_node)[name]["dataType"]
        if held == "none":
            check(list(data_type) == ["type"], f"properties of {kind}")
        else:
            del data_type[codes(held)[0]]
            outcomes.add(f"{kind} without properties", dumps(changed_node), 28)
        changed_node = copy.deepcopy(document)
        nodes_of(changed_node)[name]["objectType"] = "dataDynamic" if node == "static" else "dataStatic"
        other = nodes_of(changed_node)[name]
        other |= {"value": 1, "sampleSetID": "other", "interpolation": "hold"}
        other |= {"hasExpectedFrequencyB": False, "sampleCount": 0}
        del other["dataType"][codes(held)[0] if held != "none" else "type"]
        other["dataType"] = {"type": kind} | other["dataType"]
        outcomes.add(f"{kind} of the other kind of node", dumps(changed_node), 44)
        if node == "static":
            for wrong in ({}, "x" if value != "string" else 1):
                changed_node = copy.deepcopy(document)
                nodes_of(changed_node)[name]["value"] = wrong
                outcomes.add(f"{kind}: {wrong}", dumps(changed_node), 43)
        else:
            check(samples[value] == nodes_of(document)[name]["sampleSetID"], f"samples of {kind}")
    check(not found, f"types that the guide does not list: {found}")
    outcomes.compare()


def check_written(tables, document, name):
    """Whether a document of the writer has its keys as the tables have them: all that are needed, and in that order."""

    def check_order(container, keys):
        known = [key for key in keys if key in container]
        needed = [key for key in keys if keys[key] == "yes"]
        good = list(container) == known and set(needed) <= set(container)
        check(good, f"{name}: {list(container)}, by the guide {list(keys)}")

    def below(keys, prefix=""):
        """Those of one level."""
        rest = {key[len(prefix) :]: needed for key, needed in keys.items() if key.startswith(prefix)}
        return {key: needed for key, needed in rest.items() if "." not in key}

    top, info_keys, entry_keys, node_keys = (tables[key] for key in list(OBJECTS)[:4])
    number_keys, array_keys, text_keys = (tables[key] for key in list(OBJECTS)[4:])
    check_order(document, top)
    info = document.get("dynamicDataInfo")
    if info:
        check_order(info, below(info_keys))
        for key in ("timecodeInfo", "utcInfo"):
            if key in info:
                check_order(info[key], below(info_keys, key + "."))
        if "timecodeInfo" in info:
            check_order(info["timecodeInfo"]["frameRate"], below(info_keys, "timecodeInfo.frameRate."))
        for entry in info.get("videoSyncTimeList", []):
            check_order(entry, entry_keys)
    for node in nodes_of(document).values():
        kind = node["objectType"]
        keys = {key: "yes" if kind in KINDS.get(needed, []) else needed for key, needed in node_keys.items()}
        check_order(node, keys)
        for key, held in node.get("dataType", {}).items():
            if key == "paddedStringProperties":
                check_order(held, text_keys)
            elif key != "type":
                is_array = key == "numberArrayProperties"
                check_order(held, below(array_keys if is_array else number_keys))
                check_order(held["pattern"], below(number_keys, "pattern."))
                for each in held["arrayRanges"]["ranges"] if is_array else [held["range"]]:
                    check_order(each, below(number_keys, "range."))
                    check_order(each["legal"], below(number_keys, "range.legal."))
                    check_order(each["occurring"], below(number_keys, "range.occurring."))
