#!/usr/bin/env python3
"""Mutation fuzzing of project files through `kelaz project show`.

Each case damages a copy of a real project file (1 to 4 mutations: bit flips, random bytes,
runs of bytes overwritten or copied from elsewhere, a character changed inside a text, the file
cut short or lengthened), lets `kelaz project show` open it and sorts the outcome:

  refused             exit status 2 with the program's message
  accepted unchanged  exit status 0, and both what kelaz prints and what SQLite reads from the
                      damaged file equal the original's
  damaged accepted    exit status 0, but the contents differ from the original's
  crash               killed by a signal, a sanitizer report, or any other exit status
  hang                no answer within the time limit
  input modified      the damaged file is not byte for byte what was handed to kelaz

Every case is drawn from its own seed (seed, case number), so a case is replayed alone with
--only. The exit status is 1 when any case crashed, hung, modified its input or was accepted
damaged.

    scripts/fuzz-projects.py build/ci/app/kelaz --cases 2000 --seed 1
    scripts/fuzz-projects.py build/ci/app/kelaz --project office.kelaz --keep out/fuzz
"""

import argparse
import concurrent.futures
import os
import random
import re
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import time

SESSION = "SPEC\n电气\nFLOOR\n3\nATT\n吸顶灯\nPLACE\n3F+500\n1000,1000\n\n"

SANITIZER_REPORT = re.compile(rb"ERROR: (Address|Leak|Memory|Thread)Sanitizer|runtime error:")


def contents(path):
    """Every table and the table definitions as SQLite reads them, rows sorted; None when the
    file cannot be read to the end."""
    try:
        db = sqlite3.connect("file:%s?mode=ro&immutable=1" % path, uri=True)
    except sqlite3.Error:
        return None
    try:
        db.text_factory = bytes
        out = [("user_version", db.execute("PRAGMA user_version").fetchone())]
        schema = db.execute("SELECT type, name, tbl_name, sql FROM sqlite_schema").fetchall()
        out.append(("schema", sorted(schema, key=repr)))
        for (name,) in db.execute("SELECT name FROM sqlite_schema WHERE type = 'table'"):
            quoted = '"%s"' % name.decode("utf-8", "replace").replace('"', '""')
            rows = db.execute("SELECT * FROM %s" % quoted).fetchall()
            out.append((name, sorted(rows, key=repr)))
        return sorted(out, key=repr)
    except sqlite3.Error:
        return None
    finally:
        db.close()


def text_offsets(data):
    """Offsets inside runs of printable ASCII or multi-byte UTF-8 (names, line types, sizes):
    where a changed byte is a changed value that the file's structure does not betray."""
    offsets = []
    for m in re.finditer(rb"(?:[\x20-\x7e]|[\xc0-\xf4][\x80-\xbf]+){4,}", data):
        offsets.extend(range(m.start(), m.end()))
    return offsets


def mutate(data, rng, texts):
    data = bytearray(data)
    done = []
    for _ in range(rng.randint(1, 4)):
        kind = rng.choices(
            ["bit", "byte", "text", "run", "copy", "cut", "grow"], [3, 3, 4, 2, 2, 0.3, 0.3]
        )[0]
        size = len(data)
        if size == 0:
            break
        at = rng.randrange(size)
        if kind == "bit":
            data[at] ^= 1 << rng.randrange(8)
        elif kind == "byte":
            data[at] = rng.randrange(256)
        elif kind == "text" and texts:
            at = rng.choice(texts)
            if at >= size:
                continue
            # Mostly another printable character, as damage that garbles a word would.
            data[at] = rng.randrange(0x20, 0x7F) if rng.random() < 0.7 else rng.randrange(256)
        elif kind == "run":
            length = rng.randint(2, 32)
            fill = rng.choice([None, 0x00, 0xFF])
            for k in range(at, min(size, at + length)):
                data[k] = rng.randrange(256) if fill is None else fill
        elif kind == "copy":
            length = rng.randint(1, 512)
            source = rng.randrange(size)
            chunk = data[source : source + length]
            data[at : at + len(chunk)] = chunk
            del data[size:]
        elif kind == "cut":
            del data[at:]
        elif kind == "grow":
            at = len(data)
            data.extend(rng.randbytes(rng.randint(1, 4096)))
        done.append("%s@%d" % (kind, at))
    return bytes(data), done


def show(kelaz, path, timeout):
    try:
        run = subprocess.run(
            [kelaz, "project", "show", path], capture_output=True, timeout=timeout
        )
    except subprocess.TimeoutExpired:
        return None
    return run


def run_case(args, base, case, workdir):
    rng = random.Random("%d/%d" % (args.seed, case))
    mutant, how = mutate(base["bytes"], rng, base["texts"])
    path = os.path.join(workdir, "project.kelaz")
    for extra in (path + "-journal", path + "-wal", path + "-shm"):
        if os.path.exists(extra):
            os.remove(extra)
    with open(path, "wb") as f:
        f.write(mutant)
    run = show(args.kelaz, path, args.timeout)
    with open(path, "rb") as f:
        modified = f.read() != mutant
    if run is None:
        outcome, detail = "hang", ""
    elif run.returncode < 0 or SANITIZER_REPORT.search(run.stderr):
        outcome, detail = "crash", run.stderr[-2000:].decode("utf-8", "replace")
    elif run.returncode == 2 and run.stderr.startswith(b"kelaz: "):
        outcome, detail = "refused", run.stderr.decode("utf-8", "replace")
    elif run.returncode == 0:
        printed = run.stdout.replace(path.encode(), b"<project>")
        read = contents(path)
        if printed == base["printed"] and read == base["contents"]:
            outcome, detail = "accepted unchanged", ""
        else:
            outcome = "damaged accepted"
            detail = "printed %s, SQLite reads %s" % (
                "the same" if printed == base["printed"] else "otherwise",
                "the same" if read == base["contents"] else "otherwise",
            )
    else:
        outcome = "crash"
        detail = "exit status %d: %s" % (
            run.returncode,
            run.stderr[-2000:].decode("utf-8", "replace"),
        )
    return case, outcome, modified, how, detail, mutant


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("kelaz", help="the built kelaz program")
    parser.add_argument(
        "--project", help="project file to damage (default: a new one, edited by a short session)"
    )
    parser.add_argument("--cases", type=int, default=2000)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--timeout", type=float, default=10.0, help="seconds per case")
    parser.add_argument("--only", type=int, help="run this case alone (keeps its file with --keep)")
    parser.add_argument("--keep", help="directory for the damaged files of bad cases")
    args = parser.parse_args()
    args.kelaz = os.path.abspath(args.kelaz)

    work = tempfile.mkdtemp(prefix="kelaz-fuzz-")
    try:
        original = os.path.join(work, "project.kelaz")
        if args.project:
            shutil.copyfile(args.project, original)
        else:
            # The default project, then a short session that changes the current speciality and
            # floor and leaves an elevation in the history: rows the program wrote itself.
            session = os.path.join(work, "session.kls")
            with open(session, "w", encoding="utf-8") as f:
                f.write(SESSION)
            for step in (["project", "init", original], ["run", session, "--project", original]):
                made = subprocess.run([args.kelaz] + step, capture_output=True)
                if made.returncode != 0:
                    sys.exit("kelaz %s failed: %s" % (step[0], made.stderr.decode()))
        # The first show also upgrades a project of an earlier schema: fuzz what it leaves.
        first = show(args.kelaz, original, 60)
        if first is None or first.returncode != 0:
            sys.exit("the original project is refused: %s" % (first and first.stderr.decode()))
        with open(original, "rb") as f:
            data = f.read()
        base = {
            "bytes": data,
            "texts": text_offsets(data),
            "printed": first.stdout.replace(original.encode(), b"<project>"),
            "contents": contents(original),
        }
        if base["contents"] is None:
            sys.exit("SQLite cannot read the original project")

        cases = [args.only] if args.only is not None else list(range(args.cases))
        jobs = max(1, args.jobs)
        dirs = [os.path.join(work, "w%d" % i) for i in range(jobs)]
        for d in dirs:
            os.mkdir(d)

        def worker(index):
            return [run_case(args, base, c, dirs[index]) for c in cases[index::jobs]]

        started = time.monotonic()
        with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
            results = [r for part in pool.map(worker, range(jobs)) for r in part]
        elapsed = time.monotonic() - started
    finally:
        shutil.rmtree(work, ignore_errors=True)

    results.sort()
    order = ["refused", "accepted unchanged", "damaged accepted", "crash", "hang"]
    counts = {name: 0 for name in order}
    modified = 0
    bad = []
    for case, outcome, was_modified, how, detail, mutant in results:
        counts[outcome] += 1
        modified += was_modified
        if outcome in ("damaged accepted", "crash", "hang") or was_modified or args.only is not None:
            bad.append((case, outcome, was_modified, how, detail, mutant))

    print("kelaz project show on %d damaged projects (seed %d, %d bytes, %.1f s)"
          % (len(results), args.seed, len(base["bytes"]), elapsed))
    print("  refused             %6d" % counts["refused"])
    print("  accepted unchanged  %6d" % counts["accepted unchanged"])
    print("  damaged accepted    %6d" % counts["damaged accepted"])
    print("  crashes             %6d" % counts["crash"])
    print("  hangs               %6d" % counts["hang"])
    print("  inputs modified     %6d" % modified)
    for case, outcome, was_modified, how, detail, mutant in bad[:20]:
        print("case %d: %s%s; %s" % (case, outcome, ", input modified" if was_modified else "",
                                     " ".join(how)))
        if detail:
            print("    " + detail.strip().replace("\n", "\n    "))
        if args.keep:
            os.makedirs(args.keep, exist_ok=True)
            with open(os.path.join(args.keep, "case-%d.kelaz" % case), "wb") as f:
                f.write(mutant)
    failed = counts["damaged accepted"] + counts["crash"] + counts["hang"] + modified
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
