"""Plants faults and tells which test catches each; see scripts/mutate.sh.

Every worker has a copy of the project with builds of its own. A fault that gives the same
machine code is passed over, as is one that does not compile. The tests run from the cheapest
to the dearest, first as developers build them, then, where nothing failed, under the address and
undefined-behaviour sanitizers. A test that takes much too long has caught the fault.
"""

import argparse
import hashlib
import json
import os
import pathlib
import re
import resource
import shutil
import subprocess
import sys
import threading
import time

sys.path.insert(0, str(pathlib.Path(__file__).parent))
from faults import draw_order, faults_of

ROOT = pathlib.Path(__file__).resolve().parents[2]
WORK = ROOT / "build" / "mutation"
EQUIVALENTS = pathlib.Path(__file__).with_name("equivalents.txt")
# They say that something changed, or are not about what the code answers.
NO_JUDGES = re.compile(r"^(same_bytes|exports|api_pages|man_page|package)$")
NOT_BUILT_HERE = re.compile(r"mingw_runtime|dll_main")
FLAGS = {"dev": "-O2", "sanitize": "-O1"}


def run(command, **options):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          errors="replace", **options)


class Flavour:
    """One build of one worker's copy, and its tests from the cheapest to the dearest."""

    def __init__(self, tree, preset, only):
        self.folder = tree / "build" / preset
        configured = run(["cmake", "--preset", preset, "-DZELVAN_WERROR=OFF",
                          "-DZELVAN_BUILD_EXAMPLES=OFF", "-DZELVAN_INSTALL=OFF",
                          f"-DCMAKE_CXX_FLAGS_RELWITHDEBINFO={FLAGS[preset]}",
                          f"-DCMAKE_C_FLAGS_RELWITHDEBINFO={FLAGS[preset]}"], cwd=tree)
        if configured.returncode or self.build("all", 2):
            raise SystemExit(f"{preset} does not build:\n{configured.stdout}{self.said}")
        self.sound = self.machine_code()
        shown = run(["ctest", "--show-only=json-v1"], cwd=self.folder).stdout
        self.tests = []
        for test in json.loads(shown)["tests"]:
            if NO_JUDGES.match(test["name"]) or (only and not re.search(only, test["name"])):
                continue
            properties = {p["name"]: p["value"] for p in test["properties"]}
            test["folder"] = properties["WORKING_DIRECTORY"]
            test["environment"] = dict(e.split("=", 1) for e in properties.get("ENVIRONMENT", []))
            program = pathlib.Path(test["command"][0])
            test["target"] = program.name if program.parent == self.folder else "all"
            test["seconds"] = 60.0
            begin = time.time()
            fault = self.judge(test)
            if fault:
                raise SystemExit(f"{test['name']} fails on the sound library: {fault}")
            test["seconds"] = time.time() - begin
            self.tests.append(test)
        self.tests.sort(key=lambda test: test["seconds"])

    def build(self, target, jobs=1):
        built = run(["ninja", "-C", str(self.folder), f"-j{jobs}", target])
        self.said = built.stdout
        return built.returncode

    def machine_code(self):
        """A hash of the library's objects."""
        digest = hashlib.sha256()
        for file in sorted((self.folder / "src" / "CMakeFiles" / "zelvan_core.dir").rglob("*.o")):
            digest.update(file.read_bytes())
        return digest.hexdigest()

    def judge(self, test):
        """What a test says against the library, or nothing."""
        def limit():
            if "sanitize" not in str(self.folder):
                resource.setrlimit(resource.RLIMIT_AS, (6 << 30, 6 << 30))
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        environment = {**os.environ, "GTEST_FAIL_FAST": "1", "GTEST_COLOR": "no",
                       "ASAN_OPTIONS": "hard_rss_limit_mb=4000", **test["environment"]}
        process = subprocess.Popen(test["command"], cwd=test["folder"], env=environment, text=True,
                                   errors="replace", stdout=subprocess.PIPE,
                                   stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL,
                                   preexec_fn=limit, start_new_session=True)
        try:
            said, _ = process.communicate(timeout=20 + 5 * test["seconds"])
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, 9)
            process.wait()
            return "takes too long"
        if process.returncode == 0:
            return ""
        running = re.findall(r"^\[ RUN      \] (\S+)", said, re.M)
        failed = re.search(r"^\[  FAILED  \] ([^\s,]+)", said, re.M)
        name = failed[1] if failed else running[-1] if running else "ends with a failure"
        kind = re.search(r"ERROR: (\w+Sanitizer: [\w-]+)|(runtime error)", said)
        return name + (f" ({kind[1] or kind[2]})" if kind else "")

    def first_objection(self):
        for test in self.tests:
            if self.build(test["target"]):
                return "does not compile", test["name"]
            if fault := self.judge(test):
                return test["name"], fault
        return None


class Worker(threading.Thread):
    def __init__(self, number, run_):
        super().__init__()
        self.tree = WORK / f"worker{number}"
        self.run_ = run_
        self.flavours = {}
        self.failure = None

    def flavour(self, preset):
        if preset not in self.flavours:
            self.flavours[preset] = Flavour(self.tree, preset, self.run_.options.tests)
        return self.flavours[preset]

    def run(self):
        try:
            self.copy_project()
            self.flavour("dev")
            while (task := self.run_.next_task()) is not None:
                while (fault := self.run_.next_fault(task)) is not None:
                    if self.try_fault(fault):
                        break
        except BaseException as e:  # told by the main thread
            self.failure = e

    def copy_project(self):
        """Files that changed, so that what is built stays good."""
        self.tree.mkdir(parents=True, exist_ok=True)
        listed = subprocess.check_output(["git", "ls-files", "-z"], cwd=ROOT, text=True)
        for name in filter(None, listed.split("\0")):
            source, copy = ROOT / name, self.tree / name
            if not source.exists():
                continue
            if copy.exists() and copy.read_bytes() == source.read_bytes():
                continue
            copy.parent.mkdir(parents=True, exist_ok=True)
            shutil.copyfile(source, copy)
            shutil.copymode(source, copy)

    def try_fault(self, fault):
        """@return whether it counts: it compiles and changes the machine code"""
        begin = time.time()
        path = self.tree / fault.file
        sound = path.read_text()
        lines = sound.split("\n")
        lines[fault.line] = fault.after
        path.write_text("\n".join(lines))
        try:
            dev = self.flavours["dev"]
            if dev.build("zelvan_core") or dev.machine_code() == dev.sound:
                return False
            reason = self.run_.equivalents.get(self.run_.identity(fault))
            if reason:
                self.run_.report(fault, "equivalent", reason, time.time() - begin)
                return True
            objection = dev.first_objection()
            if objection is None and self.run_.options.sanitize:
                path.write_text(sound)  # the first build wants the sound library
                sanitized = self.flavour("sanitize")
                path.write_text("\n".join(lines))
                objection = sanitized.first_objection()
            if objection and objection[0] == "does not compile":
                return False
            self.run_.report(fault, *(objection or ("survived", "")), time.time() - begin)
            return True
        finally:
            path.write_text(sound)


class Run:
    def __init__(self, options):
        self.options = options
        self.lock = threading.Lock()
        self.begin = time.time()
        self.results = []
        self.equivalents = read_equivalents()
        self.queues, self.tasks = self.plan()

    def plan(self):
        """As many faults for a folder as its lines ask for, three at least."""
        files = subprocess.check_output(["git", "ls-files", "src"], cwd=ROOT, text=True).split()
        files = [f for f in files if f.endswith((".cpp", ".h")) and not NOT_BUILT_HERE.search(f)]
        wanted = self.options.folders or sorted({f.split("/")[1] for f in files})
        sizes, queues = {}, {}
        for folder in wanted:
            inside = [f for f in files if f.startswith(f"src/{folder}/")]
            sizes[folder] = sum((ROOT / f).read_text().count("\n") for f in inside)
            faults = [x for f in inside for x in faults_of(ROOT, f, self.options.seed)]
            queues[folder] = draw_order(faults, self.options.seed)
        total = sum(sizes.values())
        tasks = []  # the folders mixed, so that a run that is cut short says something too
        for folder, size in sizes.items():
            count = max(3, round(self.options.faults * size / total))
            tasks += [((k + 0.5) / count, folder) for k in range(count)]
        return queues, [folder for _, folder in sorted(tasks)]

    def next_task(self):
        with self.lock:
            return self.tasks.pop(0) if self.tasks else None

    def next_fault(self, folder):
        with self.lock:
            return next(self.queues[folder], None)

    @staticmethod
    def identity(fault):
        return (fault.file, fault.before.strip(), fault.after.strip())

    def report(self, fault, catcher, detail, seconds):
        with self.lock:
            self.results.append((fault, catcher, detail, seconds))
            print(f"{len(self.results):4} {fault.file}:{fault.line + 1} {fault.pattern}: "
                  f"{fault.describe()}: {catcher} {detail} {seconds:.0f} s", flush=True)

    def write_table(self):
        path = WORK / "table.md"
        rows = sorted(self.results, key=lambda r: (r[0].file, r[0].line))
        with path.open("w") as out:
            out.write("| where | pattern | fault | caught by | s |\n|---|---|---|---|---:|\n")
            for fault, catcher, detail, seconds in rows:
                text = fault.describe().replace("|", "\\|")
                out.write(f"| {fault.file}:{fault.line + 1} | {fault.pattern} | {text} | "
                          f"{catcher} {detail} | {seconds:.0f} |\n")
            out.write("\n" + self.summary())
        return path

    def summary(self):
        counts = {}
        for fault, catcher, _, _ in self.results:
            folder = fault.file.split("/")[1]
            kind = catcher if catcher in ("survived", "equivalent") else "caught"
            for name in (folder, "all"):
                counts.setdefault(name, {"caught": 0, "survived": 0, "equivalent": 0})[kind] += 1
        text = "| folder | faults | caught | survived | equivalent | share |\n|---|---:|---:|---:|---:|---:|\n"
        for name in sorted(counts, key=lambda n: (n == "all", n)):
            c = counts[name]
            judged = c["caught"] + c["survived"]
            text += (f"| {name} | {sum(c.values())} | {c['caught']} | {c['survived']} | "
                     f"{c['equivalent']} | {100 * c['caught'] / max(1, judged):.1f} % |\n")
        return text + f"\nseed {self.options.seed}, {(time.time() - self.begin) / 60:.0f} min\n"


def read_equivalents():
    """File, line before, line after, reason: four lines each, blank lines between."""
    blocks = re.split(r"\n\s*\n", EQUIVALENTS.read_text()) if EQUIVALENTS.exists() else []
    entries = {}
    for block in blocks:
        lines = [l.strip() for l in block.split("\n") if l.strip() and not l.startswith("#")]
        if len(lines) >= 4:
            entries[(lines[0], lines[1], lines[2])] = " ".join(lines[3:])
    return entries


def main():
    parser = argparse.ArgumentParser(description="Plants faults in src/ and runs the suite.")
    parser.add_argument("folders", nargs="*", help="folders of src/, all when none is named")
    parser.add_argument("--faults", type=int, default=90)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--workers", type=int, default=2)
    parser.add_argument("--tests", help="only tests whose name matches")
    parser.add_argument("--no-sanitize", dest="sanitize", action="store_false")
    options = parser.parse_args()
    run_ = Run(options)
    workers = [Worker(n, run_) for n in range(options.workers)]
    for worker in workers:
        worker.start()
    for worker in workers:
        worker.join()
    path = run_.write_table()
    print(run_.summary() + f"table: {path.relative_to(ROOT)}")
    for worker in workers:
        if worker.failure:
            raise worker.failure


main()
