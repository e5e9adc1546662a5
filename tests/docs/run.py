#!/usr/bin/env -S python3 -B
"""Whether docs/vkjson.md is right: its examples and tables against the command, and against a reader that knows no more
than the guide. Arguments: the project's folder; the command, with what runs it before it."""

import json
import os
import sys
import tempfile

from check_documents import check_limits, check_records_in_step, check_recordings, check_version_1
from check_examples import (check_accepted, check_blocks, check_commands, check_errors, check_offsets,
                            check_order_of_faults, check_search, check_widths)
from check_keys import check_keys, check_types, check_written
from check_values import check_numbers, check_times
from command import failures, project
from guide import Guide


def main():
    guide = Guide(project / "docs/vkjson.md")
    named = check_blocks(guide)
    worked = named["worked.vkjson"][0]
    check_commands(guide)
    check_offsets(guide, worked)
    check_widths(guide, worked)
    check_search()
    check_accepted(guide, worked)
    check_errors(guide, worked, named)
    check_order_of_faults(worked)
    tables = check_keys(guide, worked)
    check_types(guide, worked)
    check_written(tables, json.loads(worked), "worked.vkjson")
    check_times(guide)
    check_numbers(guide)
    check_limits(guide, worked)
    check_version_1(worked)
    check_records_in_step(worked)
    check_recordings(tables)
    for failure in failures:
        print(f"failed: {failure}")
    return 1 if failures else 0


with tempfile.TemporaryDirectory() as folder:
    os.chdir(folder)
    status = main()
sys.exit(status)
