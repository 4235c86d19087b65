#!/usr/bin/env python3
"""Checks that every string id the code uses is in the string table.

Usage: check_text_ids.py REPO_ROOT [--also FILE...]

A use is any IDS_ name (string ids by definition) and any id written out as the argument
of LoadText(...), a name from res/resource.h or a number; ids held in variables are checked
where their IDS_ names appear. Each must name an entry of res/texts.def. The
tests are not read: they look up missing ids on purpose. Exits 1 when a use has no entry
or when no use was found at all.
"""

import os
import re
import sys

# Ids the code may load although the table has no text for them: the status bar's idle
# text shows empty when the table lacks it.
OPTIONAL = {"IDS_IDLE_MESSAGE"}
SKIPPED_DIRS = {"build", "tests", ".git"}
DEFINITION_FILES = {os.path.join("res", "resource.h"), os.path.join("res", "texts.def")}


def main(argv):
    root = argv[1]
    extra = argv[argv.index("--also") + 1:] if "--also" in argv else []
    with open(os.path.join(root, "res", "resource.h")) as f:
        ids = {name: int(value) for name, value in
               re.findall(r"^#define\s+(\w+)\s+(\d+)\s*$", f.read(), re.M)}
    with open(os.path.join(root, "res", "texts.def")) as f:
        table = {ids[name] for name in
                 re.findall(r"^CRYPTELLE_TEXT\((\w+),", f.read(), re.M)}

    files = list(extra)
    for folder, dirs, names in os.walk(root):
        dirs[:] = sorted(d for d in dirs if not (folder == root and d in SKIPPED_DIRS))
        for name in sorted(names):
            path = os.path.join(folder, name)
            if name.endswith((".cpp", ".h")) and os.path.relpath(path, root) not in DEFINITION_FILES:
                files.append(path)

    uses, problems = 0, []
    for path in files:
        with open(path, encoding="utf-8") as f:
            source = f.read()
        found = set(re.findall(r"\bIDS_\w+", source))
        found |= set(re.findall(r"\bLoadText\(\s*([A-Z][A-Z0-9_]*|\d+)\s*\)", source))
        for use in sorted(found):
            uses += 1
            if use in OPTIONAL:
                continue
            number = int(use) if use.isdigit() else ids.get(use)
            if number is None:
                problems.append(f"{path}: {use} is not a resource id")
            elif number not in table:
                problems.append(f"{path}: {use} ({number}) has no string-table entry")
    for problem in problems:
        print(problem)
    print(f"checked {uses} string id uses in {len(files)} files against {len(table)} entries")
    if uses == 0:
        print("no string id use found: the check looked at nothing")
        return 1
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
