#!/usr/bin/env python3
"""Mutation fuzz of what kelaz reads from files: drawings, projects and scripts.

    scripts/fuzz-inputs.py KELAZ [--cases N] [--seconds S] [--seed K] [--jobs J] [--kinds ...]

Each case takes a valid file, damages it (flipped, set, inserted, deleted, repeated or cut
bytes; for scripts also whole lines), hands it to the program as a user would (`dump` and
`export` for a drawing, `project show` for a project, `run` for a script) and checks:

  crash     the program died of a signal or a sanitizer report (any status but 0, 1 and 2)
  hang      it did not finish within the time limit
  modified  the damaged input was changed by reading it
  accepted  a damaged drawing or project was read (status 0) with contents other than the
            original's: damage that went unnoticed

It stops after N cases or S seconds, whichever comes first, prints the counts, keeps every
failing case under the work folder, and exits 1 when any count above is not 0.
"""

import argparse
import concurrent.futures
import hashlib
import os
import random
import shutil
import signal
import subprocess
import sys
import tempfile
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
TIMEOUT = 20  # seconds for one run of the program
ALLOWED = (0, 1, 2)
# Sanitizer reports must not look like a refusal (status 1).
ENV = dict(os.environ,
           ASAN_OPTIONS="exitcode=99:detect_leaks=1",
           UBSAN_OPTIONS="exitcode=98:print_stacktrace=1:halt_on_error=1",
           LC_ALL="C.UTF-8")


def digest(path):
    with open(path, "rb") as f:
        return hashlib.sha256(f.read()).hexdigest()


def run(args, cwd):
    """Status (or 'hang') and output of one run of the program."""
    try:
        done = subprocess.run(args, cwd=cwd, env=ENV, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                              timeout=TIMEOUT)
    except subprocess.TimeoutExpired:
        return "hang", b""
    return done.returncode, done.stdout


def mutate_bytes(data, rng):
    data = bytearray(data)
    for _ in range(rng.randint(1, 4)):
        kind = rng.choice(["flip", "set", "insert", "delete", "repeat", "cut"])
        if not data:
            data += bytes([rng.randrange(256)])
            continue
        at = rng.randrange(len(data))
        if kind == "flip":
            data[at] ^= 1 << rng.randrange(8)
        elif kind == "set":
            data[at] = rng.choice([0, 0xFF, 0x7F, 0x80, rng.randrange(256)])
        elif kind == "insert":
            data[at:at] = bytes(rng.randrange(256) for _ in range(rng.randint(1, 16)))
        elif kind == "delete":
            del data[at:at + rng.randint(1, 32)]
        elif kind == "repeat":
            chunk = data[at:at + rng.randint(1, 64)]
            data[at:at] = chunk
        else:
            del data[at:]
    return bytes(data)


SCRIPT_WORDS = ["ARC", "PLINE", "ERASE", "U", "UNDO", "M", "B", "W", "C", "A", "L", "RECTLAYOUT",
                "ARCLAYOUT", "SECTORLAYOUT", "PLACE", "ATT", "SYS", "FLOOR", "SPEC", "LEVEL",
                "CONNECTED", "DUMP", "HELP", "QUIT", "^C", "ESC", "", "0", "-1", "1e400",
                "99999999999999999999999999999999,1", "nan,1", "@", "@1,1", "drag 1,1",
                "'PickHeight", "ok", "cancel", "set 232 3F+500", "click 204", "yes", "no",
                "3F+500", "x,y", "1,2,3,4", "\t", "#", "\"", "吸顶灯", "\\"]


def mutate_script(text, rng):
    lines = text.split("\n")
    for _ in range(rng.randint(1, 6)):
        kind = rng.choice(["insert", "delete", "swap", "repeat", "replace", "bytes"])
        at = rng.randrange(len(lines) + 1)
        if kind == "insert":
            lines.insert(at, rng.choice(SCRIPT_WORDS))
        elif kind == "delete" and lines:
            del lines[min(at, len(lines) - 1)]
        elif kind == "swap" and len(lines) > 1:
            i, j = rng.randrange(len(lines)), rng.randrange(len(lines))
            lines[i], lines[j] = lines[j], lines[i]
        elif kind == "repeat" and lines:
            lines.insert(at, lines[min(at, len(lines) - 1)])
        elif kind == "replace" and lines:
            lines[min(at, len(lines) - 1)] = rng.choice(SCRIPT_WORDS)
        else:
            return mutate_bytes("\n".join(lines).encode("utf-8"), rng)
    return "\n".join(lines).encode("utf-8")


class Fuzz:
    def __init__(self, kelaz, work):
        self.kelaz = kelaz
        self.work = work
        self.seeds = {"drawing": [], "project": [], "script": []}
        self.expected = {}

    def prepare(self):
        """The valid inputs every case starts from, and what reading them gives."""
        base = os.path.join(self.work, "base")
        os.makedirs(base)
        sample = os.path.join(base, "plant.kdw")
        subprocess.run([self.kelaz, "sample", sample], env=ENV, check=True,
                       stdout=subprocess.DEVNULL)
        drafted = os.path.join(base, "drafted.kdw")
        subprocess.run([self.kelaz, "run", os.path.join(ROOT, "examples", "drafting.kls"),
                        "--drawing", sample, "--save", drafted], env=ENV, check=True,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        project = os.path.join(base, "office.kelaz")
        subprocess.run([self.kelaz, "project", "init", project], env=ENV, check=True,
                       stdout=subprocess.DEVNULL)
        for path in (sample, drafted):
            self.seeds["drawing"].append(path)
            self.expected[path] = self.read_back(path, ["dump"])
        self.seeds["project"].append(project)
        self.expected[project] = self.read_back(project, ["project", "show"])
        golden = os.path.join(ROOT, "tests", "app", "golden")
        for name in sorted(os.listdir(golden)):
            if name.endswith(".kls"):
                self.seeds["script"].append(os.path.join(golden, name))
        self.seeds["script"].append(os.path.join(ROOT, "examples", "drafting.kls"))
        return sample

    def read_back(self, path, command):
        """What reading the intact file gives, under the name a case gives its mutant."""
        folder = tempfile.mkdtemp(dir=self.work)
        name = "mutant" + os.path.splitext(path)[1]
        shutil.copy(path, os.path.join(folder, name))
        status, out = run([self.kelaz] + command + [name], folder)
        shutil.rmtree(folder)
        if status != 0:
            raise SystemExit("kelaz %s does not read the intact %s" % (" ".join(command), path))
        return out

    def case(self, number, kind, seed, sample):
        rng = random.Random(seed)
        source = rng.choice(self.seeds[kind])
        folder = os.path.join(self.work, "case-%05d" % number)
        os.makedirs(folder)
        with open(source, "rb") as f:
            original = f.read()
        if kind == "script":
            mutant = mutate_script(original.decode("utf-8"), rng)
            target = os.path.join(folder, "mutant.kls")
        else:
            mutant = mutate_bytes(original, rng)
            target = os.path.join(folder, "mutant" + os.path.splitext(source)[1])
        with open(target, "wb") as f:
            f.write(mutant)
        before = digest(target)
        findings = []
        name = os.path.basename(target)
        if kind == "drawing":
            runs = [[self.kelaz, "dump", name], [self.kelaz, "export", name, "-o", "out.svg"]]
        elif kind == "project":
            runs = [[self.kelaz, "project", "show", name]]
        else:
            shutil.copy(sample, os.path.join(folder, "plant.kdw"))
            runs = [[self.kelaz, "run", name, "--drawing", "plant.kdw", "--save", "out.kdw",
                     "--svg", "out.svg"]]
        for i, args in enumerate(runs):
            status, out = run(args, folder)
            if status == "hang":
                findings.append("hang")
            elif status not in ALLOWED:
                findings.append("crash")
            elif (i == 0 and kind != "script" and status == 0 and mutant != original
                  and out != self.expected[source]):
                findings.append("accepted")
            if findings:
                with open(os.path.join(folder, "output-%d.txt" % i), "wb") as f:
                    f.write(out)
                break
        if digest(target) != before:
            findings.append("modified")
        if not findings:
            shutil.rmtree(folder)
        return kind, findings, folder


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("kelaz")
    parser.add_argument("--cases", type=int, default=3000)
    parser.add_argument("--seconds", type=float, default=600)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=os.cpu_count() or 2)
    parser.add_argument("--kinds", nargs="+", default=["drawing", "project", "script"],
                        choices=["drawing", "project", "script"])
    parser.add_argument("--work", default=None, help="where to keep failing cases")
    opt = parser.parse_args()

    kelaz = os.path.abspath(opt.kelaz)
    work = opt.work or tempfile.mkdtemp(prefix="kelaz-fuzz-")
    os.makedirs(work, exist_ok=True)
    fuzz = Fuzz(kelaz, work)
    sample = fuzz.prepare()
    rng = random.Random(opt.seed)
    deadline = time.monotonic() + opt.seconds
    counts = {k: {"cases": 0, "crash": 0, "hang": 0, "modified": 0, "accepted": 0}
              for k in opt.kinds}
    failures = []
    with concurrent.futures.ThreadPoolExecutor(max_workers=opt.jobs) as pool:
        pending = set()
        number = 0
        while number < opt.cases or pending:
            while number < opt.cases and len(pending) < opt.jobs * 2 and \
                    time.monotonic() < deadline:
                kind = opt.kinds[number % len(opt.kinds)]
                pending.add(pool.submit(fuzz.case, number, kind, rng.getrandbits(64), sample))
                number += 1
            if not pending:
                break
            done, pending = concurrent.futures.wait(
                pending, return_when=concurrent.futures.FIRST_COMPLETED)
            for future in done:
                kind, findings, folder = future.result()
                counts[kind]["cases"] += 1
                for finding in findings:
                    counts[kind][finding] += 1
                if findings:
                    failures.append((kind, findings, folder))
            if time.monotonic() >= deadline:
                opt.cases = number  # no new cases; the running ones finish
    total = 0
    for kind, c in counts.items():
        print("%-8s %5d cases: %d crashes, %d hangs, %d modified inputs, %d damaged accepted"
              % (kind, c["cases"], c["crash"], c["hang"], c["modified"], c["accepted"]))
        total += c["crash"] + c["hang"] + c["modified"] + c["accepted"]
    for kind, findings, folder in failures[:20]:
        print("  %s %s: %s" % (kind, "+".join(findings), folder))
    if total == 0 and opt.work is None:
        shutil.rmtree(work)
    else:
        print("cases kept in %s" % work)
    return 1 if total else 0


if __name__ == "__main__":
    signal.signal(signal.SIGINT, signal.SIG_DFL)
    sys.exit(main())
