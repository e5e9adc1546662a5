"""A reader of vkjson documents that knows no more than docs/vkjson.md tells: what the guide leaves out, it cannot read.

It believes that documents are valid."""

import re
from fractions import Fraction

BLANKS = b" \t\n\r"
ESCAPES = {b'"': b'"', b"\\": b"\\", b"/": b"/", b"b": b"\b", b"f": b"\f", b"n": b"\n", b"r": b"\r", b"t": b"\t"}
STATIC_TYPES = {2: ("number", "string", "boolean", "numberArray"), 1: ("numberString", "paddedString", "numberArray")}
MISSPELLED = {"hasExpectedFrequecyB": "hasExpectedFrequencyB", "occuring": "occurring"}


def decode(text):
    """The meaning of the bytes of a string."""

    def unit(match):
        return int(match.group(0)[2:6], 16)

    def replace(match):
        escape = match.group(0)
        if escape[1:2] != b"u":
            return ESCAPES[escape[1:2]]
        first = unit(match)
        if len(escape) == 12:
            return chr(0x10000 + (first - 0xD800) * 0x400 + int(escape[8:], 16) - 0xDC00).encode()
        return escape if 0xD800 <= first < 0xE000 else chr(first).encode()

    pair = rb"\\u[dD][89abAB][0-9a-fA-F]{2}\\u[dD][c-fC-F][0-9a-fA-F]{2}"
    return re.sub(pair + rb'|\\u[0-9a-fA-F]{4}|\\["\\/bfnrt]', replace, text).decode("utf-8", "replace")


class Json:
    """JSON values of a document, and where they end."""

    def __init__(self, data):
        self.data = data

    def blanks(self, at):
        while self.data[at : at + 1] and self.data[at] in BLANKS:
            at += 1
        return at

    def take(self, at, text):
        assert self.data.startswith(text, at), f"{text} expected at {at}: {self.data[at:at + 40]}"
        return self.blanks(at + len(text))

    def string(self, at):
        match = re.compile(rb'"((?:[^"\\]|\\.)*)"', re.DOTALL).match(self.data, at)
        assert match, f"string expected at {at}"
        return decode(match.group(1)), self.blanks(match.end())

    def value(self, at):
        first = self.data[at : at + 1]
        if first == b'"':
            return self.string(at)
        if first == b"{":
            found = {}
            for key, at in self.items(at, b"{", b"}"):
                value, self.end = self.value(at)
                found.setdefault(key, value)
            for wrong, right in MISSPELLED.items():
                if wrong in found:
                    found.setdefault(right, found.pop(wrong))
            return found, self.blanks(self.end)
        if first == b"[":
            found = []
            for _, at in self.items(at, b"[", b"]"):
                value, self.end = self.value(at)
                found.append(value)
            return found, self.blanks(self.end)
        for word, value in ((b"true", True), (b"false", False)):
            if self.data.startswith(word, at):
                return value, self.blanks(at + len(word))
        match = re.compile(rb"-?\d+(\.\d+)?([eE][-+]?\d+)?").match(self.data, at)
        assert match, f"value expected at {at}"
        return float(match.group()), self.blanks(match.end())

    def items(self, at, opening, closing):
        """Keys and offsets of the values of an object or array; each value's end is expected in `end`, which is left
        behind the closing bracket."""
        at = self.take(at, opening)
        while not self.data.startswith(closing, at):
            key = None
            if opening == b"{":
                key, at = self.string(at)
                at = self.take(at, b":")
            yield key, at
            at = self.end
            if not self.data.startswith(closing, at):
                at = self.take(at, b",")
        self.end = at + 1


def number(text):
    """Of a sample, without its quotes."""
    assert re.fullmatch(rb"[-+]?(\d+\.?\d*|\.\d+)([eE][-+]?\d+)?", text), text
    return float(text)


class TimeCodes:
    def __init__(self, info):
        rate = info["frameRate"]
        value, scale = Fraction(rate["value"]), Fraction(rate["scale"])
        self.nominal = int(value / scale + Fraction(1, 2))
        self.width = 12 if value // scale > 99 else 11
        self.seconds_of_frame = scale / value
        self.dropped = (4 if self.nominal == 60 else 2) if info["dropFrame"] else 0
        self.minute = 60 * self.nominal

    def number(self, text):
        hours, minutes, seconds, frames = (int(part) for part in (text[0:2], text[3:5], text[6:8], text[9:]))
        assert hours < 24 and minutes < 60 and seconds < 60 and frames < self.nominal, text
        return ((hours * 60 + minutes) * 60 + seconds) * self.nominal + frames

    def moment(self, text):
        """The frame since midnight."""
        number, m = self.number(text), self.minute
        return number - self.dropped * (9 * (number // (10 * m)) + number % (10 * m) // m)

    def label(self, frame):
        d, m = self.dropped, self.minute
        tens, rest = divmod(frame, 10 * m - 9 * d)
        number = frame + 9 * d * tens + (0 if rest < m else d + (rest - m) // (m - d) * d)
        seconds, frames = divmod(number, self.nominal)
        parts = (seconds // 3600, seconds // 60 % 60, seconds % 60)
        return ":".join(f"{part:02}" for part in parts) + f":{frames:0{self.width - 9}}"

    def seconds(self, text):
        return self.moment(text) * self.seconds_of_frame


class Dates:
    def __init__(self, info):
        precision = int(info["precisionLength"])
        self.width = 19 + (precision + 1 if precision else 0) + (1 if info["isGMT"] else 6)
        zone = "Z" if info["isGMT"] else r"[-+]\d\d:\d\d"
        decimals = rf"\.\d{{{precision}}}" if precision else ""
        self.form = re.compile(rf"(\d{{4}})-(\d\d)-(\d\d)T(\d\d):(\d\d):(\d\d)({decimals})({zone})")

    def moment(self, text):
        """Seconds since 1970."""
        match = self.form.fullmatch(text)
        assert match, text
        year, month, day, hours, minutes, seconds = (int(part) for part in match.groups()[:6])
        years = year - (month < 3)  # counted from March
        days = years * 365 + years // 4 - years // 100 + years // 400
        days += (153 * ((month + 9) % 12) + 2) // 5 + day - 719469
        zone = match.group(8)
        offset = 0 if zone == "Z" else (int(zone[1:3]) * 60 + int(zone[4:])) * (-60 if zone[0] == "-" else 60)
        whole = ((days * 24 + hours) * 60 + minutes) * 60 + seconds - offset
        return whole + Fraction("0" + match.group(7) if match.group(7) else 0)

    seconds = moment


class SampleSet:
    """The samples of one dynamic node, found by arithmetic."""

    def __init__(self, data, node, times):
        self.data, self.times = data, times
        self.count = int(node["sampleCount"])
        self.kind = node["dataType"]["type"]
        properties = next(value for key, value in node["dataType"].items() if key != "type")
        pattern = properties.get("pattern", {"isSigned": False})
        decimals = int(pattern.get("digitsDecimal", 0))
        self.number_width = 2 + pattern["isSigned"] + int(pattern.get("digitsInteger", 0)) + (decimals and decimals + 1)
        self.size_of_array = int(properties.get("arraySize", 0))
        self.length_digits = int(properties.get("maxDigitsInStrLength", 0))
        self.longest = int(properties.get("maxLen", 0))
        self.quoted = False
        self.start = None

    def place(self, start):
        self.start = start
        quote = start + 9 + self.times.width + 10 + len('{"length":')
        self.quoted = self.kind == "paddedString" and self.data[quote : quote + 1] == b'"'

    @property
    def value_width(self):
        if self.kind == "numberString":
            return self.number_width
        if self.kind == "paddedString":
            return 20 + self.length_digits + self.longest + (2 if self.quoted else 0)
        return (self.number_width + 1) * self.size_of_array + 1

    @property
    def record_width(self):
        return 20 + self.times.width + self.value_width

    @property
    def stride(self):
        return self.record_width + 1

    @property
    def size(self):
        return self.count * self.stride - 1 if self.count else 0

    def record(self, i):
        return self.start + i * self.stride

    def time(self, i):
        return self.data[self.record(i) + 9 : self.record(i) + 9 + self.times.width].decode()

    def value(self, i):
        at = self.record(i) + 9 + self.times.width + 10
        text = self.data[at : at + self.value_width]
        if self.kind == "numberString":
            return number(text[1:-1])
        if self.kind == "paddedString":
            digits = 10 + self.quoted
            length = int(text[digits : digits + self.length_digits])
            begin = 10 + self.length_digits + (2 if self.quoted else 0) + len(',"str":"')
            return decode(text[begin : begin + length])
        places = range(1, 1 + self.size_of_array * (self.number_width + 1), self.number_width + 1)
        return [number(text[place + 1 : place + self.number_width - 1]) for place in places]

    def samples(self):
        return [{"time": self.time(i), "value": self.value(i)} for i in range(self.count)] if self.start else []

    def latest(self, wanted):
        """The number of the latest sample at or before a moment; None when there is none."""
        low, high = 0, self.count
        while low < high:
            middle = low + (high - low) // 2
            if self.times.moment(self.time(middle)) > wanted:
                high = middle
            else:
                low = middle + 1
        return low - 1 if low else None


class Document:
    def __init__(self, data):
        self.data = data
        self.json = Json(data)
        self.top = {}
        self.samples_at = None
        at = self.json.blanks(0)
        for key, at in self.json.items(at, b"{", b"}"):
            if key == "dataDynamicSamples":
                self.samples_at = at
                self.json.end = self.json.blanks(self.count_brackets(at))
            else:
                self.top[key], self.json.end = self.json.value(at)
        assert self.json.blanks(self.json.end) == len(data)
        self.version = 2 if self.top.get("version") == "vkjson2.0.0" and next(iter(self.top)) == "version" else 1
        info = self.top.get("dynamicDataInfo", {}) if self.version == 2 else self.top
        self.times = None
        if "useTimecodeB" in info:
            self.times = TimeCodes(info["timecodeInfo"]) if info["useTimecodeB"] else Dates(info["utcInfo"])
        self.sets = {}
        for _, node in self.nodes():
            if node["objectType"] == "dataDynamic":
                self.sets[node["sampleSetID"]] = SampleSet(data, node, self.times)
        if self.samples_at is not None:
            self.place_sets()

    def count_brackets(self, at):
        depth = 0
        for bracket in re.compile(rb"[\[\]]").finditer(self.data, at):
            depth += 1 if bracket.group() == b"[" else -1
            if depth == 0:
                return bracket.end()
        raise AssertionError("the samples do not end")

    def place_sets(self):
        for _, at in self.json.items(self.samples_at, b"[", b"]"):
            found, at = self.set_head(at)
            samples = self.sets[found]
            samples.place(at)
            end = at + samples.size
            assert self.data[end : end + 2] == b"]}", f"set {found} does not end at {end}"
            self.json.end = self.json.blanks(end + 2)

    def set_head(self, at):
        """The identifier of a set, and where its first record is."""
        key, at = self.json.string(self.json.take(at, b"{"))
        found, at = self.json.string(self.json.take(at, b":"))
        samples, at = self.json.string(self.json.take(at, b","))
        assert (key, samples) == ("sampleSetID", "samples")
        at = self.json.take(at, b":")
        assert self.data[at : at + 1] == b"["
        return found, at + 1

    def gallop(self):
        """Where the sets begin, and the end of them all, without reading all records."""
        starts, at = [], self.json.take(self.samples_at, b"[")
        while True:
            _, start = self.set_head(at)
            starts.append(start)
            _, end = self.json.value(start)
            stride = end - start + 1
            closing = self.data.index(b'"', start + 9)

            def time(i):
                return self.data[start + i * stride + 9 : closing + i * stride]

            def follows(i, other):
                return self.data.startswith(b',{"time":"', start + i * stride - 1) and time(i) >= time(other)

            last, beyond = 0, 1
            while follows(beyond, last):
                last, beyond = beyond, beyond * 2
            while beyond - last > 1:
                middle = (last + beyond) // 2
                last, beyond = (middle, beyond) if follows(middle, last) else (last, middle)
            at = self.json.take(start + last * stride + stride - 1, b"]}")
            if self.data.startswith(b"]", at):
                return starts, at + 1
            at = self.json.take(at, b",")

    def nodes(self, children=None, path=""):
        """All nodes with their data paths."""
        for i, node in enumerate(self.top["dataOutline"] if children is None else children):
            yield f"{path}[{i}]", node
            if node["objectType"] == "dataGroup":
                yield from self.nodes(node["children"], f"{path}[{i}]")

    def static_value(self, node):
        value, kind = node["value"], node["dataType"]["type"]
        assert kind in STATIC_TYPES[self.version], kind
        if self.version == 2 or kind == "string":
            return value
        if kind == "numberArray":
            return [float(item) for item in value]
        if kind == "paddedString":
            return value["str"].encode()[: int(float(value["length"]))].decode("utf-8", "replace")
        return float(value)
