"""Times and numbers: the guide's tables against its formulas, and both against the command."""

import random
import re
from decimal import Decimal
from fractions import Fraction
from pathlib import Path

from check_keys import dumps
from command import check, compare_with_reader, printed, zentor
from guide import codes
from reader import TimeCodes


def timed_document(info, time):
    """One sample, the number 1."""
    pattern = {"isSigned": False, "digitsDecimal": 0, "digitsInteger": 1}
    one = {"min": 1, "max": 1}
    properties = {"pattern": pattern, "range": {"occurring": one, "legal": one}}
    node = {"objectType": "dataDynamic", "matchName": "n", "displayName": "", "sampleSetID": "n"}
    node |= {"interpolation": "hold", "hasExpectedFrequencyB": False, "sampleCount": 1}
    node["dataType"] = {"type": "numberString", "numberStringProperties": properties}
    document = {"version": "vkjson2.0.0", "dynamicSamplesPresentB": True, "dynamicDataInfo": info}
    document["dataDynamicSamples"] = [{"sampleSetID": "n", "samples": [{"time": time, "value": "1"}]}]
    return dumps(document | {"dataOutline": [node]})


def check_moment(info, time, seconds, step):
    """The command reads the time at just this moment, and so does the guide's reader."""
    Path("timed.vkjson").write_bytes(timed_document(info, time))
    document = compare_with_reader("timed.vkjson")
    check(document.times.seconds(time) == seconds, f"{time}: {document.times.seconds(time)} seconds by the formula")
    check(document.times.width == len(time), f"{time}: width {document.times.width}")
    sample = [{"time": time, "value": 1}]
    for at, expected in ((seconds, sample), (seconds - step, 21)):
        found = printed("samples", "timed.vkjson", "[0]", "--at", f"{at.numerator}/{at.denominator}")
        check(found == expected, f"{time} at {at}: {found}")


def check_times(guide):
    labels = guide.table("frame rate", "drop frame", "label", "number", "frame")
    for rate, drop, label, number, frame, note in labels:
        value, scale = (int(part) for part in rate.split("/"))
        info = {"frameRate": {"value": value, "scale": scale}, "dropFrame": drop == "yes"}
        label, times = codes(label)[0], TimeCodes(info)
        check(times.number(label) == int(number), f"number of {label}: {times.number(label)}")
        is_left_out = note.startswith("is left out")
        shown = codes(note)[0] if is_left_out else label
        check(times.label(int(frame)) == shown and times.moment(shown) == int(frame), f"label of frame {frame}")
        step = Fraction(scale, value)
        check_moment({"useTimecodeB": True, "timecodeInfo": info}, label, int(frame) * step, step)
    check(len(labels) > 5, "labels are missing")
    for drop in (False, True):
        times = TimeCodes({"frameRate": {"value": 60000, "scale": 1001}, "dropFrame": drop})
        for frame in range(0, 60000, 7):
            check(times.moment(times.label(frame)) == frame, f"frame {frame} there and back")
    rows = guide.table("precisionLength", "isGMT", "width", "time string")
    for precision, is_gmt, width, time, seconds in rows:
        time = codes(time)[0]
        check(len(time) == int(width), f"width of {time}")
        info = {"useTimecodeB": False, "utcInfo": {"precisionLength": int(precision), "isGMT": is_gmt == "true"}}
        check_moment(info, time, Fraction(seconds), Fraction(1, 4))
    check(len(rows) > 3, "dates are missing")


def json_text(value):
    text = f"{value:.16g}"
    return text.rstrip("0").rstrip(".") if "." in text else text


def sample_text(value):
    if "e" not in json_text(value):
        return json_text(value)
    if abs(value) >= 1:
        return f"{Decimal(f'{value:.15e}'):f}"
    return f"{value:.17f}".rstrip("0").rstrip(".")


def padded(text, integers, decimals, is_signed):
    sign = "-" if text.startswith("-") else "+" if is_signed else ""
    whole, _, rest = text.lstrip("-").partition(".")
    fraction = "." + rest.ljust(decimals, "0") if decimals else ""
    return sign + whole.rjust(integers, "0") + fraction


def as_json(numbers):
    Path("numbers.json").write_text("[" + ",".join(numbers) + "]")
    check(zentor("convert", "numbers.json", "-o", "numbers.vkjson", "--force", "--no-validate")[0] == 0, "numbers.json")
    return re.findall(r'"value":([^,}]+)}', Path("numbers.vkjson").read_text())


def as_samples(numbers):
    """A capture with one channel. Its samples, between their quotes."""
    head = "HIERARCHY\nROOT r\n{\nOFFSET 0 0 0\nCHANNELS 1 Xposition\n}\nMOTION\n"
    Path("n.bvh").write_text(f"{head}Frames: {len(numbers)}\nFrame Time: 0.04\n" + "\n".join(numbers) + "\n")
    check(zentor("convert", "n.bvh", "-o", "n.vkjson", "--force")[0] == 0, "n.bvh")
    return re.findall(r'"value":\["([^"]*)"\]', Path("n.vkjson").read_text())


def check_numbers(guide):
    rows = guide.table("number", "as JSON", "in a sample, before padding")
    numbers = [row[0] for row in rows]
    for (number, text, sample, _), found in zip(rows, as_json(numbers)):
        text, sample = codes(text)[0], codes(sample)[0]
        check(text == found == json_text(float(number)), f"{number} as JSON: {found}, {json_text(float(number))}")
        # Alone, a number is as wide as its pattern.
        found = as_samples([number])
        check([sample] == found and sample == sample_text(float(number)), f"{number} in a sample: {found}")
    check(len(rows) > 7, "numbers are missing")
    chance = random.Random(1)
    values = [chance.uniform(-1, 1) * 10.0 ** chance.randint(-20, 22) for _ in range(300)]
    numbers = [repr(value) for value in values]
    for number, found in zip(numbers, as_json(numbers)):
        check(found == json_text(float(number)), f"{number} as JSON: {found}, by the guide {json_text(float(number))}")
    texts = [sample_text(value) for value in values]
    integers = max(len(text.lstrip("-").split(".")[0]) for text in texts)
    decimals = max(len(text.partition(".")[2]) for text in texts)
    for text, found in zip(texts, as_samples(numbers), strict=True):
        check(found == padded(text, integers, decimals, True), f"{text} in a sample: {found}")
    four_and_a_half = [padded("4.5", 3, 2, False), padded("4.5", 3, 2, True)]
    check(all(f'`"{text}"`' in "\n".join(guide.lines) for text in four_and_a_half), f"padding: {four_and_a_half}")
