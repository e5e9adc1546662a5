"""What stands in the guide: its examples and its tables."""

import re

DECLARED = re.compile(r"(?:`([\w.]+)`, )?(?:(valid)|error (\d+) at byte (\d+)):$")
CODE = re.compile(r"`([^`]*)`")


class Guide:
    def __init__(self, path):
        self.lines = path.read_text(encoding="utf-8").splitlines()

    def blocks(self, language):
        """The lines of the fenced blocks of a language, each with the last line of text before it."""
        before, block, wanted = "", None, False
        for line in self.lines:
            if line.startswith("```"):
                if block is not None:
                    if wanted:
                        yield before, block
                    block = None
                else:
                    block, wanted = [], line[3:] == language
            elif block is not None:
                block.append(line)
            elif line:
                before = line

    def documents(self):
        """Name, bytes and outcome of each document: None for a valid one, or code and offset."""
        for before, lines in self.blocks("vkjson"):
            declared = DECLARED.search(before)
            assert declared, f"no outcome before a document: {before}"
            name, valid, code, offset = declared.groups()
            data = "".join(line.lstrip(" ") for line in lines).encode()
            yield name, data, None if valid else (int(code), int(offset))

    def commands(self):
        """The arguments of each command that is shown, and what it prints."""
        for _, lines in self.blocks("console"):
            shown = None
            for line in lines:
                if line.startswith("$ zentor "):
                    if shown:
                        yield shown
                    shown = (re.findall(r"'[^']*'|\S+", line[len("$ zentor ") :]), [])
                else:
                    shown[1].append(line)
            yield shown

    def tables(self, *header):
        """The rows of each table whose columns begin with those named, as lists of cells."""
        table, wanted = None, False
        for line in self.lines + [""]:
            cells = cells_of(line) if line.startswith("|") else None
            if cells is None:
                if table is not None:
                    yield table
                table = None
            elif table is not None:
                table.append(cells)
            elif set(line) <= set("|-"):
                if wanted:
                    table = []
            else:
                wanted = [cell.strip("`") for cell in cells[: len(header)]] == list(header)

    def table(self, *header):
        tables = list(self.tables(*header))
        assert len(tables) == 1, f"{len(tables)} tables of {header}"
        return tables[0]


def codes(cell):
    return CODE.findall(cell)


def cells_of(row):
    return [cell.strip() for cell in re.split(r"(?<=\s)\|(?=\s)", row[1:-1])]


def changes(cell):
    """The replacements that a cell shows, as pairs: `old` → `new`, or `old` → nothing."""
    return re.findall(r"`([^`]*)` → (?:`([^`]*)`|nothing)", cell)
