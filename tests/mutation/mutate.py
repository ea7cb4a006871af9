#!/usr/bin/env python3
"""Changes the library in small ways, one at a time, and looks whether a test notices: ./dev mutate --help

The test executables are built once. A changed library is compiled beside them, without optimization, and put in the
place of the real one; only executables that contain the library's objects are linked again.
"""

import argparse
import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import resource
import shlex
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time

root = pathlib.Path(__file__).resolve().parents[2]
built = root / "build/mutation"
folders = ["foundation", "types", "tree", "expr", "tables", "handlers", "host"]

# The tests of the changed folder come first; these are the rest, the quick ones that see much in front.
public = ["tree_test", "tree_reentrancy_test", "types_test", "expr_test", "handlers_test", "host_test", "hostless_test",
          "tables_test", "foundation_test"]
internal = [folder + "_internal_test" for folder in folders] + ["memory_test"]
models = [f"orbel_model --seed {seed} --steps 400" for seed in range(1, 7)]

memory_limit = 3 << 30
output_limit = 64 << 20
levels = ["-O0", "-O2"]
standard_headers = ["algorithm", "array", "fstream", "functional", "iostream", "map", "memory", "optional", "sstream",
                    "string", "unordered_map", "vector"]


# What is changed


class Mutant:
    def __init__(self, path, line, before, after, start, end):
        self.path, self.line, self.before, self.after, self.start, self.end = path, line, before, after, start, end
        self.column = self.alike = 0

    folder = property(lambda self: self.path.split("/")[1])

    # Stays what it is when other lines of the source change.
    key = property(lambda self: f"{self}  ({self.column}, {self.alike})".replace(f":{self.line}:", ":", 1))

    def __str__(self):
        return f"{self.path}:{self.line}: {self.before}  ->  {self.after or '(nothing)'}"


def blank_out(text):
    """The text with comments, literals of text and directives as blanks, in which every offset stays."""
    pattern = re.compile(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\'(?!\d)|^[ \t]*#[^\n]*',
                         re.DOTALL | re.MULTILINE)
    return pattern.sub(lambda match: re.sub(r"[^\n]", " ", match[0]), text)


swaps = {
    " < ": [" <= ", " >= "],
    " <= ": [" < ", " > "],
    " > ": [" >= ", " <= "],
    " >= ": [" > ", " < "],
    " == ": [" != "],
    " != ": [" == "],
    " + ": [" - "],
    " - ": [" + "],
    " += ": [" -= "],
    " -= ": [" += "],
    " && ": [" || "],
    " || ": [" && "],
}
patterns = [
    (re.compile(r" (?:[<>]=?|[=!]=|[-+]=?|&&|\|\|) "), lambda found: swaps[found]),
    (re.compile(r"(?<![\w!])!(?=[\w(*])"), lambda found: [""]),
    (re.compile(r"\btrue\b"), lambda found: ["false"]),
    (re.compile(r"\bfalse\b"), lambda found: ["true"]),
    (re.compile(r"(?<![\w.'])\d+(?=[uUlLzZ]*\b)(?![.'\d])"), lambda found: [str(int(found) + 1)]),
]
# A call that stands alone in its line, and a value that is returned.
statement = re.compile(r"^[ \t]+((?:\*?[\w:]+(?:\.|->|::))*\w+(?:<[\w:]+>)?\(.*\);)$", re.MULTILINE)
returned = re.compile(r"\breturn ([^;{}]+);")
keywords = re.compile(r"(?:return|if|for|while|switch|static_assert|throw|delete|explicit|assert)\b")


def mutants_of(path):
    text = (root / path).read_text()
    code = blank_out(text)
    found = []

    def add(start, end, after):
        line_start = text.rfind("\n", 0, start) + 1
        line_end = text.find("\n", end)
        whole = text[line_start:line_end]
        changed = text[line_start:start] + after + text[end:line_end]
        found.append(Mutant(path, text.count("\n", 0, start) + 1, " ".join(whole.split()), " ".join(changed.split()),
                            start, end))
        found[-1].replacement = after
        found[-1].column = start - line_start

    for pattern, replacements in patterns:
        for match in pattern.finditer(code):
            line = code[code.rfind("\n", 0, match.start()) + 1:code.find("\n", match.end())]
            if "static_assert" in line or line.lstrip().startswith("template"):
                continue
            for after in replacements(match[0]):
                add(match.start(), match.end(), after)
    for match in returned.finditer(code):
        if match[1] not in ("true", "false", "nullptr", "*this"):
            add(match.start(1), match.end(1), "{}")
    if path.endswith(".cpp"):
        for match in statement.finditer(code):
            if not keywords.match(match[1]):
                add(match.start(1), match.end(1), ";")
    seen = {}
    for mutant in sorted(found, key=lambda mutant: mutant.start):
        key = mutant.key
        mutant.alike = seen.get(key, 0)
        seen[key] = mutant.alike + 1
    return found


def sources_to_change(names):
    listed = (root / "orbel/CMakeLists.txt").read_text()
    installed = set(re.search(r"set\(public_headers(.*?)\)", listed, re.DOTALL)[1].split())
    found = []
    for file in sorted((root / "orbel").rglob("*")):
        name = file.relative_to(root / "orbel").as_posix()
        # Inline code of installed headers is compiled into the tests themselves.
        if file.suffix not in (".cpp", ".h") or name in installed or name.endswith("Windows.cpp"):
            continue
        path = f"orbel/{name}"
        if not names or any(path == wanted or path.startswith(wanted.rstrip("/") + "/") for wanted in names):
            found.append(path)
    return found


def spread(mutants, count, seed):
    """A random choice in which small folders have more than their share, because they are small by design.

    A line that changes moves only its own changes to another place.
    """
    by_folder = {}
    for mutant in mutants:
        by_folder.setdefault(mutant.folder, []).append(mutant)
    placed = []
    for folder in sorted(by_folder):
        group = by_folder[folder]
        group.sort(key=lambda mutant: hashlib.sha256(f"{seed} {mutant.key}".encode()).digest())
        placed += [(place / len(group) ** 0.6, folder, place, mutant) for place, mutant in enumerate(group)]
    placed.sort(key=lambda entry: entry[:3])
    return [entry[3] for entry in placed][:count or None]


# How it is compiled and tested


def limited():
    resource.setrlimit(resource.RLIMIT_AS, (memory_limit, memory_limit))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    # A changed library may print without end.
    resource.setrlimit(resource.RLIMIT_FSIZE, (output_limit, output_limit))


def run(command, timeout, environment=None, folder=None):
    """The exit code and the output; None for the code when it took too long."""
    with tempfile.TemporaryFile() as output:
        process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.STDOUT,
                                   env=environment, cwd=folder, preexec_fn=limited, start_new_session=True)
        try:
            code = process.wait(timeout)
        except subprocess.TimeoutExpired:
            code = None
            os.killpg(process.pid, signal.SIGKILL)
            process.wait()
        output.seek(0)
        return code, output.read().decode(errors="replace")


class Library:
    """A copy of the library's sources with objects of its own."""

    def __init__(self, folder):
        self.folder = folder
        shutil.rmtree(folder, ignore_errors=True)
        shutil.copytree(root / "orbel", folder / "orbel")
        (folder / "lib").mkdir()
        (folder / "tmp").mkdir()
        (folder / "bin").mkdir()
        self.commands, self.objects, self.users = {}, {}, {}
        for entry in json.loads((built / "compile_commands.json").read_text()):
            if "orbel_objects.dir" not in entry.get("output", entry["command"]):
                continue
            source = pathlib.Path(entry["file"]).relative_to(root).as_posix()
            words = [word for word in shlex.split(entry["command"]) if not word.endswith("ccache")]
            original = words[words.index("-o") + 1]
            self.objects[source] = folder / "obj" / original
            words[words.index("-o") + 1] = str(self.objects[source])
            words = [word for word in words if word != "-Werror"]
            words = [word.replace(str(root) + "/orbel/", str(folder) + "/orbel/") for word in words]
            words = [f"-I{folder}" if word == f"-I{root}" else word for word in words]
            self.commands[source] = words + ["-w"]
        self.precompile(next(iter(self.commands.values())))
        self.links = {name: self.link_command(name) for name in public + internal}
        self.shared = self.link_command("OrbelLib")
        self.environment = dict(os.environ, LD_LIBRARY_PATH=str(folder / "lib"), TMPDIR=str(folder / "tmp"),
                                GTEST_BREAK_ON_FAILURE="0")
        self.linked = {}

    def precompile(self, words):
        """Half of the time goes into headers of the standard library, which no change concerns."""
        header = self.folder / "standard.h"
        header.write_text("".join(f"#include <{name}>\n" for name in standard_headers))
        words = [word for word in words[:words.index("-o")] if not word.startswith("-O")]
        for level in levels:
            output = self.folder / f"standard.h.gch/{level}"
            output.parent.mkdir(exist_ok=True)
            subprocess.run([*words, level, "-w", "-x", "c++-header", "-o", output, header], cwd=built, check=True)
        self.commands = {source: words[:1] + ["-include", str(header)] + words[1:]
                         for source, words in self.commands.items()}

    def link_command(self, target):
        command = subprocess.run(["ninja", "-C", built, "-t", "commands", target], capture_output=True, text=True,
                                 check=True).stdout.strip().splitlines()
        line = [line for line in command if " -o " in line and " -c " not in line][-1]
        words = shlex.split(line.split("&&")[1])
        words = [word for word in words if not word.endswith("ccache")]
        at = words.index("-o") + 1
        words[at] = str(self.folder / ("lib/libOrbelLib.so.2" if target == "OrbelLib" else "bin/" + target))
        words = [str(self.folder / "runner.o") if word.endswith("libgtest_main.a") else word for word in words]
        return [str(self.folder / "obj" / word) if word.startswith("orbel/CMakeFiles/") else word for word in words] + [
            "-fuse-ld=lld"] * bool(shutil.which("ld.lld"))

    def compile(self, source, level="-O0", output=None):
        words = [word for word in self.commands[source] if not word.startswith("-O")] + [level]
        if output:
            words[words.index("-o") + 1] = str(output)
        return subprocess.run(words, cwd=built, capture_output=True, stdin=subprocess.DEVNULL).returncode == 0

    def take_built_objects(self):
        for output in self.objects.values():
            output.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(built / output.relative_to(self.folder / "obj"), output)
        user = ""
        deps = subprocess.run(["ninja", "-C", built, "-t", "deps"], capture_output=True, text=True, check=True).stdout
        sources = {str(output.relative_to(self.folder / "obj")): source for source, output in self.objects.items()}
        for line in deps.splitlines():
            if line and not line.startswith(" "):
                user = sources.get(line.split(":")[0], "")
            elif user and "/orbel/" in line:
                self.users.setdefault("orbel/" + line.strip().rsplit("/orbel/", 1)[1], []).append(user)

    def link(self, target):
        words = self.shared if target == "OrbelLib" else self.links[target]
        return subprocess.run(words, cwd=built, capture_output=True, stdin=subprocess.DEVNULL).returncode == 0

    def link_all(self):
        subprocess.run(["c++", "-std=c++20", "-isystem", "/usr/src/googletest/googletest/include", "-c", "-o",
                        self.folder / "runner.o", root / "tests/support/ForkingMain.cpp"], check=True)
        for name in ["OrbelLib"] + public + internal:
            if not self.link(name):
                sys.exit(f"mutate: {name} cannot be linked")

    def executable(self, name):
        return built / "fuzz/model/orbel_model" if name == "orbel_model" else self.folder / "bin" / name


class Suite:
    """The tests of one executable, each in a fork of its own: the library keeps state for the whole process."""

    def __init__(self, name):
        self.name, self.left_out, self.slow, self.seconds = name, [], [], 0.0

    def measure(self, library):
        start = time.monotonic()
        code, output = run([library.executable(self.name), "--forks", "--all", "--gtest_brief=1"], 600,
                           library.environment)
        self.seconds = time.monotonic() - start
        self.left_out = re.findall(r"^failed: (\S+)$", output, re.MULTILINE)
        slow = re.findall(r"^slow: (\S+)$", output, re.MULTILINE)
        self.slow = [test for test in slow if test not in self.left_out]
        if code is None or code != 0 and not self.left_out:
            sys.exit(f"mutate: {self.name} does not run: {output[-2000:]}")

    def first_failure(self, library, slow):
        chosen = ["--only", *self.slow] if slow else self.left_out + self.slow
        code, output = run([library.executable(self.name), "--forks", "--gtest_brief=1", *chosen],
                           60 + 5 * self.seconds, library.environment)
        if code == 0:
            return None
        failed = re.search(r"^failed: (\S+)$", output, re.MULTILINE)
        return f"{self.name}.{failed[1]}" if failed else f"{self.name} ({'crash' if code else 'time'})"


class Tester:
    def __init__(self, library, suites):
        self.library, self.suites = library, suites

    def order(self, folder):
        first = [name for name in (folder + "_test", folder + "_internal_test") if name in self.suites]
        if folder == "host":
            first.append("hostless_test")
        return first + [name for name in public + models + internal if name not in first]

    def outcome(self, mutant):
        """What killed it, "survived", or None when it does not count."""
        copy = self.library.folder / mutant.path
        text = copy.read_text()
        affected = [mutant.path] if mutant.path in self.library.commands else self.library.users.get(mutant.path, [])
        if not affected:
            return None
        kept = {source: self.library.objects[source].read_bytes() for source in affected}
        copy.write_text(text[:mutant.start] + mutant.replacement + text[mutant.end:])
        try:
            if not all(self.library.compile(source) for source in affected):
                return None
            killer = self.killer(mutant)
            if not killer and self.is_same_when_optimized(mutant, text, affected):
                return None
            return killer or "survived"
        finally:
            copy.write_text(text)
            for source in affected:
                self.library.objects[source].write_bytes(kept[source])

    def killer(self, mutant):
        if not self.library.link("OrbelLib"):
            return None
        order = self.order(mutant.folder)
        for name in order:
            if name in models:
                program, *options = name.split()
                code, _ = run([self.library.executable(program), *options], 60, self.library.environment)
                if code != 0:
                    return name
                continue
            if name in internal and not self.library.link(name):
                return None
            if failure := self.suites[name].first_failure(self.library, slow=False):
                return failure
        for name in order:
            if name in self.suites and self.suites[name].slow:
                if failure := self.suites[name].first_failure(self.library, slow=True):
                    return failure
        return None

    def is_same_when_optimized(self, mutant, text, affected):
        copy = self.library.folder / mutant.path
        changed = copy.read_text()
        digests = []
        for content in (changed, text):
            copy.write_text(content)
            digest = hashlib.sha256()
            for source in affected:
                output = self.library.folder / "tmp/optimized.o"
                self.library.compile(source, "-O2", output)
                digest.update(output.read_bytes())
            digests.append(digest.digest())
        return digests[0] == digests[1]


def read_outcomes(file):
    """The last outcome of each change."""
    if not file.exists():
        return {}
    return {entry["change"]: entry["outcome"] for entry in map(json.loads, file.read_text().splitlines())}


def main():
    parser = argparse.ArgumentParser(prog="./dev mutate", description=__doc__.split("\n\n")[0])
    parser.add_argument("files", nargs="*", help="sources or folders below orbel/; all when there are none")
    parser.add_argument("--sample", type=int, default=100, help="how many changes to try; 0 for all (100)")
    parser.add_argument("--results", type=pathlib.Path, default=built / "results.jsonl",
                        help="where the outcomes are kept (build/mutation/results.jsonl)")
    parser.add_argument("--go-on", action="store_true", help="keep the outcomes there, and try what has none")
    parser.add_argument("--survivors", action="store_true", help="the same, and try again what no test noticed")
    parser.add_argument("--seed", type=int, default=1, help="which ones (1)")
    parser.add_argument("--jobs", type=int, default=os.cpu_count(), help="how many at once")
    parser.add_argument("--minutes", type=float, default=0, help="begin no further change after so long")
    parser.add_argument("--list", action="store_true", help="only print what would be changed")
    options = parser.parse_args()

    mutants = [mutant for path in sources_to_change(options.files) for mutant in mutants_of(path)]
    total = len(mutants)
    mutants = spread(mutants, options.sample, options.seed)
    if options.list:
        print(*mutants, sep="\n")
        return
    known = read_outcomes(options.results) if options.go_on or options.survivors else {}
    if options.survivors:
        known = {key: outcome for key, outcome in known.items() if outcome != "survived"}
    results = [(mutant, known[mutant.key]) for mutant in mutants if mutant.key in known]
    mutants = [mutant for mutant in mutants if mutant.key not in known]
    print(f"{len(mutants)} of {total} possible changes, seed {options.seed}"
          + (f", besides {len(results)} tried before" if results else ""), flush=True)

    libraries = [Library(built / f"library{number}") for number in range(options.jobs)]
    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        list(pool.map(Library.take_built_objects, libraries))
        list(pool.map(Library.link_all, libraries))
        suites = {name: Suite(name) for name in public + internal}
        list(pool.map(lambda suite: suite.measure(libraries[0]), suites.values()))
    for suite in suites.values():
        print(f"{suite.name}: {suite.seconds:.1f} s, {len(suite.slow)} slow tests come last"
              + "".join(f", without {test}" for test in suite.left_out), flush=True)

    end = time.monotonic() + 60 * options.minutes if options.minutes else None
    waiting, lock = iter(mutants), threading.Lock()
    kept = options.results.open("a" if options.go_on or options.survivors else "w")

    def work(library):
        tester = Tester(library, suites)
        while True:
            with lock:
                mutant = next(waiting, None)
            if mutant is None or end and time.monotonic() > end:
                return
            start = time.monotonic()
            outcome = tester.outcome(mutant)
            seconds = time.monotonic() - start
            with lock:
                results.append((mutant, outcome))
                print(json.dumps({"change": mutant.key, "outcome": outcome, "seconds": round(seconds, 1)}), file=kept,
                      flush=True)
                told = "does not count" if outcome is None else outcome
                print(f"{mutant}  {told if outcome in (None, 'survived') else 'killed by ' + told}", flush=True)

    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        for worker in [pool.submit(work, library) for library in libraries]:
            worker.result()

    print()
    print(f"{'folder':12}{'tried':>8}{'count':>8}{'killed':>8}{'survived':>10}{'killed':>10}")
    for folder in folders + ["all"]:
        outcomes = [outcome for mutant, outcome in results if folder in ("all", mutant.folder)]
        counted = [outcome for outcome in outcomes if outcome]
        survived = counted.count("survived")
        share = f"{100 * (len(counted) - survived) / len(counted):.1f} %" if counted else "-"
        print(f"{folder:12}{len(outcomes):8}{len(counted):8}{len(counted) - survived:8}{survived:10}{share:>10}")
    for mutant, outcome in results:
        if outcome == "survived":
            print(f"survived  {mutant}")


if __name__ == "__main__":
    main()
