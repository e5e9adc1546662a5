"""Tables in dialects of all kinds, converted as recordings: their times and cells come back exactly. Arguments:
what runs the command."""
import csv
import datetime
import json
import pathlib
import random
import subprocess
import sys

command = sys.argv[1:]
is_windows = command[-1].endswith(".exe")
EPOCH = datetime.datetime(1970, 1, 1)


def nanoseconds(time):
    """Of a time string of a document."""
    whole, _, decimals = time.rstrip("Z").partition(".")
    seconds = (datetime.datetime.strptime(whole, "%Y-%m-%dT%H:%M:%S") - EPOCH) // datetime.timedelta(seconds=1)
    return seconds * 10**9 + int((decimals + "000000000")[:9])


def columns(document):
    """The samples of each column, by its index: times in nanoseconds, and numbers or texts."""
    sets = {each["sampleSetID"]: each["samples"] for each in document["dataDynamicSamples"]}
    found = {}
    for node in document["dataOutline"]:
        if not node["matchName"].startswith("column"):
            continue
        samples = []
        for sample in sets.get(node["sampleSetID"], []):
            value = sample["value"]
            if isinstance(value, dict):  # padded to the longest, by its escaped length
                longest = node["dataType"]["paddedStringProperties"]["maxLen"]
                value = value["str"][: len(value["str"]) - (longest - int(value["length"]))]
            else:
                value = float(value)
            samples.append((nanoseconds(sample["time"]), value))
        found[int(node["matchName"][6:])] = samples
    return found


def clock(time, decimals):
    """Seconds of a minute with decimals, of nanoseconds."""
    return f"{time // 10**9 % 60:02}" + (f".{time % 10**9:09}"[: decimals + 1] if decimals else "")


def date(time):
    return EPOCH + datetime.timedelta(seconds=time // 10**9)


def iso(time, decimals):
    return date(time).strftime("%Y-%m-%dT%H:%M:") + clock(time, decimals)


# How a time is written, with so many decimals of a second, and what the column is called.
FORMS = {
    "seconds": ("time", lambda t, d: f"{t // 10**9}" + (f".{t % 10**9:09}"[: d + 1] if d else "")),
    "milliseconds": ("timestamp", lambda t, d: f"{t // 10**6}" + (f".{t % 10**6:06}"[: d - 2] if d > 3 else "")),
    "nanoseconds": ("time_ns", lambda t, d: f"{t}"),
    "iso": ("anything", iso),
    "zone": ("when", lambda t, d: iso(t + 7200 * 10**9, d).replace("T", " ") + "+02:00"),
    "days": ("Datum", lambda t, d: date(t).strftime("%d.%m.%Y %H:%M:") + clock(t, d)),
    "evening": ("Date", lambda t, d: date(t).strftime("%b %d, %Y %I:%M:") + clock(t, d) + date(t).strftime(" %p")),
}
LETTERS = "abcXYZ äöß€ \"'[]{}\\/;,|#-:\n"


def table(rng, path):
    """Writes a table; gives the samples of its columns, by index."""
    delimiter = rng.choice(",;\t|")
    comma = delimiter != "," and rng.random() < 0.5
    form = rng.choice(list(FORMS))
    encoding = rng.choice(["utf-8", "utf-8-sig", "utf-16", "utf-16-be", "cp1252"])
    name, write = FORMS[form]
    decimals = rng.randint(0, 9)
    step = 10 ** (9 - decimals)
    kinds = [rng.choice(["number", "number", "integer", "text"]) for _ in range(rng.randint(1, 6))] + ["number"]
    at = rng.randint(0, 1)  # the place of the times
    wanted = {k + (k >= at): [] for k in range(len(kinds))}
    rows = []
    time = rng.randint(10**18, 4 * 10**18) // step * step
    for _ in range(rng.randint(20, 60)):
        time += rng.randint(1, 10**10) // step * step
        # Without decimals that a form does not have.
        shown = time // 10**6 * 10**6 if form == "milliseconds" and decimals <= 3 else time
        row = []
        for kind in kinds:
            cell = ""
            if kind == "text" and rng.random() < 0.8:
                cell = "x" + "".join(rng.choice(LETTERS) for _ in range(rng.randint(0, 12))) + "y"
            elif kind == "integer" and rng.random() < 0.8:
                cell = str(rng.randint(-(10**6), 10**6))
            elif kind == "number" and rng.random() < 0.9:
                cell = rng.choice([f"{rng.uniform(-999, 999):.{rng.choice([1, 2, 4, 17])}f}", f"{rng.gauss(0, 1):.9e}"])
            index = len(row) + (len(row) >= at)
            if cell:
                wanted[index].append((shown, cell if kind == "text" else float(cell)))
            row.append(cell.replace(".", ",") if comma and kind == "number" else cell)
        row.insert(at, write(time, decimals))
        if comma and form in ("seconds", "milliseconds"):
            row[at] = row[at].replace(".", ",")
        rows.append(row)
    names = [f"{kind} {k}" for k, kind in enumerate(kinds)]
    names.insert(at, name)
    with open(path, "w", encoding=encoding, newline="") as file:
        if rng.random() < 0.3:
            file.write("Recorder 7\r\n")
        writer = csv.writer(file, delimiter=delimiter, lineterminator=rng.choice(["\n", "\r\n"]),
                            quoting=rng.choice([csv.QUOTE_MINIMAL, csv.QUOTE_ALL]))
        writer.writerow(names)
        writer.writerows(rows)
    return wanted


def main():
    seed = random.randrange(10**9)
    rng = random.Random(seed)
    paths = [pathlib.Path(f"random{k}.csv") for k in range(25 if is_windows else 200)]
    wanted = [table(rng, path) for path in paths]
    pathlib.Path("out").mkdir()
    run = subprocess.run([*command, "convert", *map(str, paths), "--as", "series", "--faithful", "--keep-going", "-o",
                          "out"], capture_output=True, text=True, encoding="utf-8", errors="replace")
    failures = 0
    for path, samples in zip(paths, wanted):
        document = pathlib.Path("out") / (path.stem + ".vkjson")
        got = columns(json.loads(document.read_text(encoding="utf-8"))) if document.exists() else None
        if got != samples:
            failures += 1
            print(f"seed {seed}, {path}: {got} instead of {samples}"[:2000])
            print(path.read_bytes()[:600])
    if failures:
        print(run.stderr[:3000])
    return failures != 0


sys.exit(main())
