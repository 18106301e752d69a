"""Compiles one changed source and runs the test programs that could notice it, for `./dev mutate`.

A Tree is a copy of the project under build/mutate/base, built once. A Worker has a copy of its Source folder;
it compiles what a mutant changes into a folder of its own, with the commands of the Tree, and links that with
the objects of the Tree. So a mutant costs the sources that include the changed one and a link, never a build.
"""

import hashlib
import json
import os
import re
import shlex
import shutil
import signal
import subprocess
import time
from dataclasses import dataclass, field
from pathlib import Path

# Growth compiles the library once more; threads need a machine of their own to mean something.
NEVER_RUN = ("Tests/Robustness/Growth/", "Tests/Robustness/Threads/", "Tests/Examples/")
# These take half a minute each, and look at answers less closely.
SLOW = ("Tests/RealData/", "Tests/Robustness/Input/", "Tests/Robustness/Failing/kivifc")
COMPILE_LIMIT = 300
MEMORY_LIMIT = 4 << 20  # in KiB
FILE_LIMIT = 1 << 20  # in blocks of 512 or 1024 bytes
# Optimised as in the preset dev, but each source alone, as only one of them changes at a time.
OPTIONS = ["-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-g1 -O1", "-DKIV_BUILD_EXAMPLES=OFF",
           "-DKIV_WERROR=OFF", "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON",
           # Programs are not run when they are linked.
           "-DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST"]


class Broken(Exception):
    """The project as it is does not build, or its tests fail."""


@dataclass
class Program:
    """A test program or a shared library."""
    path: str  # relative to the build folder
    link: list
    objects: set
    libraries: set
    soname: str = ""
    seconds: float = 0.0
    folders: set = field(default_factory=set)  # those of the test sources it is made of, without "Tests/"

    @property
    def name(self):
        return self.path.rsplit("/", 1)[-1]


@dataclass
class Outcome:
    status: str  # killed, survived, does not compile, same code
    level: str = ""  # mirror, unit, whole: which programs noticed
    program: str = ""
    how: str = ""  # the first test that failed, "crash" or "time"
    compiled: int = 0
    seconds: float = 0.0


def fastest_linker():
    for name in ("mold", "lld", "gold"):
        if shutil.which(f"ld.{name}") or shutil.which(name):
            return [f"-DCMAKE_{kind}_LINKER_FLAGS=-fuse-ld={name}" for kind in ("EXE", "SHARED")]
    return []


def run_quietly(command, cwd, limit, environment=None, log=subprocess.DEVNULL):
    """Return code, or None when it took longer than the limit, in seconds; then all that it started is killed
    too."""
    with subprocess.Popen(command, cwd=cwd, env=environment, stdin=subprocess.DEVNULL, stdout=log,
                          stderr=subprocess.STDOUT, start_new_session=True) as process:
        try:
            return process.wait(timeout=limit)
        except subprocess.TimeoutExpired:
            return None
        finally:
            try:
                os.killpg(process.pid, signal.SIGKILL)
            except ProcessLookupError:
                pass


class Tree:
    """The project without a change: a copy, its build, and what is known of that."""

    def __init__(self, project, work, jobs, names=None, is_thorough=False):
        """`names`: the test programs to use; when none are named, all, the slow ones only if thorough."""
        self.project, self.work, self.jobs, self.names = Path(project), Path(work), jobs, names
        self.root = self.work / "base"
        self.build = self.root / "build" / "dev"
        self.left_out = NEVER_RUN if names or is_thorough else NEVER_RUN + SLOW
        self.digest = ""

    def prepare(self):
        self._copy()
        self._configure()
        self._load_programs()
        self._make()
        self._load_objects()

    def sources(self):
        return sorted(path for path in self.files if re.fullmatch(r"Source/.*\.(h|cpp)", path))

    # The copy.

    def _copy(self):
        """Only what differs is written, so that only that is built again."""
        listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard"], cwd=self.project,
                                check=True, capture_output=True, text=True).stdout.splitlines()
        self.files = sorted(path for path in listed if (self.project / path).is_file())
        known, digest = set(), hashlib.sha1()
        for path in self.files:
            content = (self.project / path).read_bytes()
            if not path.endswith((".md", ".txt")) or path.endswith("CMakeLists.txt") or "/Golden/" in path:
                digest.update(f"{path}\0{len(content)}\0".encode() + content)
            known.add(path)
            copy = self.root / path
            if not copy.is_file() or copy.read_bytes() != content:
                copy.parent.mkdir(parents=True, exist_ok=True)
                copy.write_bytes(content)
            shutil.copymode(self.project / path, copy)  # a script that a test runs is executable
        for folder in ("Source", "Tests", "Tools"):
            for path in (self.root / folder).rglob("*"):
                if path.is_file() and str(path.relative_to(self.root)) not in known:
                    path.unlink()
        self.digest = digest.hexdigest()

    # The build.

    def _configure(self):
        command = ["cmake", "-S", self.root, "-B", self.build, "-G", "Ninja", *OPTIONS, *fastest_linker()]
        done = subprocess.run(command, capture_output=True, text=True)
        if done.returncode:
            raise Broken(done.stdout + done.stderr)

    def _ninja(self, *arguments):
        done = subprocess.run(["ninja", *arguments], cwd=self.build, check=True, capture_output=True,
                              text=True)
        return done.stdout

    def _load_programs(self):
        self.programs, self.libraries = {}, {}
        for line in self._ninja("-t", "targets", "all").splitlines():
            path, _, rule = line.partition(": ")
            if "SHARED_LIBRARY_LINKER" in rule:
                self.libraries[path] = self._program(path)
            elif "EXECUTABLE_LINKER" not in rule or path.startswith(self.left_out):
                continue
            elif path.startswith("Tests/"):
                program = self._program(path)
                if any("libgtest_main" in word for word in program.link) and \
                        (not self.names or program.name in self.names):
                    self.programs[path] = program

    def _program(self, path):
        command = self._ninja("-t", "commands", "-s", path).strip().splitlines()[-1]
        link = self._without_archives(shlex.split(re.match(r"(?:: && )?(.*?)(?: && |$)", command)[1]))
        soname = next((word.split(",")[-1] for word in link if word.startswith("-Wl,-soname,")), "")
        return Program(path, link, {word for word in link if word.endswith(".o")},
                       {word for word in link if ".so" in word and word.startswith("Source/")}, soname)

    def _without_archives(self, link):
        """The objects of our own static libraries in place of these, so that one of them can be another."""
        words = []
        for word in link:
            is_ours = word.endswith(".a") and not word.startswith("/")
            words += self._objects_of(word) if is_ours else [word]
        return words

    def _objects_of(self, archive):
        command = self._ninja("-t", "commands", "-s", archive).strip().splitlines()[-1]
        return [word for word in shlex.split(command) if word.endswith(".o")]

    def _make(self):
        done = subprocess.run(["nice", "ninja", f"-j{self.jobs}", *self.programs], cwd=self.build)
        if done.returncode:
            raise Broken("the project does not build")

    def _load_objects(self):
        """Which objects a source goes into, and how they are compiled."""
        self.compile, self.source_of, self.users = {}, {}, {}
        for entry in json.loads((self.build / "compile_commands.json").read_text()):
            command = shlex.split(entry["command"])
            output = command[command.index("-o") + 1]
            while not re.search(r"(\+\+|g\+\+|clang)[^/]*$", command[0]):
                command.pop(0)  # ccache has nothing to gain from changed sources
            self.compile[output] = command
            self.source_of[output] = str(Path(entry["file"]).relative_to(self.root))
        output, real = "", {}
        for line in self._ninja("-t", "deps").splitlines():
            if not line.startswith(" "):
                output = line.partition(":")[0]
                continue
            name = line.strip()
            if name not in real:
                real[name] = os.path.realpath(self.build / name)
            if real[name].startswith(f"{self.root}/Source/") and output in self.compile:
                self.users.setdefault(os.path.relpath(real[name], self.root), set()).add(output)
        for program in self.programs.values():
            sources = (self.source_of[name] for name in program.objects)
            program.folders = {os.path.dirname(source)[len("Tests/"):] for source in sources
                               if source.startswith("Tests/") and not source.startswith("Tests/Support/")}

    def time_programs(self, worker):
        """Runs all test programs once without a change, if that was not done of the same files."""
        kept = self.work / "times.json"
        known = json.loads(kept.read_text()) if kept.is_file() else {}
        known = known if known.get("digest") == self.digest else {"digest": self.digest}
        for path, program in sorted(self.programs.items()):
            if path not in known:
                begin = time.monotonic()
                how = worker.run_program(program, self.build / path, False, 600)
                known[path] = round(time.monotonic() - begin, 1)
                if how:
                    raise Broken(f"{program.name} fails without any change: {how}")
                print(f"{program.name} takes {known[path]} s", flush=True)
                kept.write_text(json.dumps(known))
            program.seconds = known[path]

    # Which programs mirror a source.

    def mirrors(self, source):
        """The test programs of a source's folder, or of the next one above that has some; best first."""
        folder, stem = os.path.split(source[len("Source/"):])
        stem = stem.partition(".")[0]
        while True:
            found = [program for program in self.programs.values() if folder in program.folders]
            if found or not folder:
                break
            folder = os.path.dirname(folder)

        def names_it(program):
            tests = {os.path.basename(self.source_of[name]) for name in program.objects}
            return bool({f"{stem}Test.cpp", f"{re.sub('^IfcSchema|^Ifc', '', stem)}Test.cpp"} & tests)
        return sorted(found, key=lambda program: (not names_it(program), program.seconds))

    def levels(self, source):
        """(level, programs): mirror, then all that mirror some folder, then those that look at the whole."""
        first = self.mirrors(source)
        folders = {os.path.dirname(path)[len("Source/"):] for path in self.sources()}
        rest = [one for one in self.programs.values() if one not in first]
        rest.sort(key=lambda one: one.seconds)
        units = [one for one in rest if one.folders & folders]
        return [("mirror", first), ("unit", units), ("whole", [one for one in rest if one not in units])]


class Worker:
    """Tries mutants, one after the other; has a thread and a folder of its own."""

    def __init__(self, tree, number):
        self.tree = tree
        self.root = tree.work / f"worker-{number}"
        self.objects = self.root / "objects"
        self.tmp = self.root / "tmp"

    def prepare(self):
        shutil.rmtree(self.root, ignore_errors=True)
        shutil.copytree(self.tree.root / "Source", self.root / "Source")
        self._copy_links("include")
        self._copy_links("generated")

    def _copy_links(self, folder):
        """The public headers are links into the sources: here, into those of the worker."""
        for path in (self.tree.build / folder).rglob("*"):
            copy = self.root / "build" / "dev" / path.relative_to(self.tree.build)
            if path.is_symlink():
                copy.parent.mkdir(parents=True, exist_ok=True)
                copy.symlink_to(self._own(os.readlink(path)))
            elif path.is_file():
                copy.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(path, copy)

    def _own(self, text):
        base = str(self.tree.root)
        for folder in ("/Source", "/build/dev/include", "/build/dev/generated"):
            text = text.replace(base + folder, str(self.root) + folder)
        return text

    # One mutant.

    def try_mutant(self, mutant):
        begin = time.monotonic()
        path = self.root / mutant.file
        original = path.read_bytes()
        for folder in (self.objects, self.root / "linked", self.tmp):
            shutil.rmtree(folder, ignore_errors=True)
            folder.mkdir(parents=True)
        self.made, self.linked = set(), {}
        try:
            path.write_text(mutant.apply(original.decode()))
            outcome = self._outcome(mutant)
        finally:
            path.write_bytes(original)
        outcome.compiled = len(self.made)
        outcome.seconds = round(time.monotonic() - begin, 1)
        return outcome

    def _outcome(self, mutant):
        affected = self.tree.users.get(mutant.file, set())
        library = {name for name in affected if self.tree.source_of[name].startswith("Source/")}
        levels = self.tree.levels(mutant.file)
        # Where a header is changed, tests are first linked as they are: the linker takes inline functions
        # from the objects of the library, which come first. Only those of the mirror are compiled again, when
        # they have noticed nothing.
        steps = [(*levels[0], library), (*levels[0], affected)] + [(*level, library) for level in levels[1:]]
        asked = {}
        for level, programs, changed in steps:
            for program in programs:
                libraries = [one for path, one in self.tree.libraries.items()
                             if path in program.libraries and one.objects & library]
                needed = program.objects.union(*(one.objects for one in libraries)) & changed
                if not needed or asked.get(program.path) == needed:
                    continue
                asked[program.path] = needed
                if needed - self.made:
                    if not self._compile(needed):
                        return Outcome("does not compile")
                    if self._is_same(affected):
                        return Outcome("same code")
                how = self._ask(program, libraries)
                if how == "link":
                    return Outcome("does not compile")
                if how:
                    return Outcome("killed", level, program.name, how)
        # Where nothing was made, nothing that is tested is made of it.
        return Outcome("survived" if self.made else "does not compile")

    def _compile(self, objects):
        # Those of the library come first: they are quicker to compile than tests.
        for name in sorted(objects - self.made,
                           key=lambda one: (self.tree.source_of[one].startswith("Tests/"), one)):
            # The precompiled headers of tests are made for debuggers.
            words = [word for word in self.tree.compile[name] if word != "-g" or name.startswith("Tests/")]
            command = ["nice"] + [word if "cmake_pch" in word else self._own(word) for word in words]
            target = self.objects / name
            target.parent.mkdir(parents=True, exist_ok=True)
            command[command.index("-o") + 1] = str(target)
            if run_quietly(command + ["-w"], self.tree.build, COMPILE_LIMIT) != 0:
                return False
            self.made.add(name)
        return True

    def _is_same(self, affected):
        """Whether the compiler makes the same of the change as of what was there."""
        if self.made != affected:
            return False
        return all(self._code(self.objects / name) == self._code(self.tree.build / name) for name in affected)

    def _code(self, path):
        """The content of an object without what is for debuggers."""
        copy = self.tmp / "code.o"
        if run_quietly(["objcopy", "--strip-debug", str(path), str(copy)], self.tmp, COMPILE_LIMIT) != 0:
            return path
        return copy.read_bytes()

    def _link(self, program):
        """The program with the objects that were made, or null."""
        target = self.root / "linked" / (program.soname or program.name)
        objects = program.objects & self.made
        if self.linked.get(program.path) != objects:
            command = [str(self.objects / word) if word in self.made else word for word in program.link]
            command[command.index("-o") + 1] = str(target)
            if run_quietly(["nice"] + command + ["-Wl,--strip-debug"], self.tree.build, COMPILE_LIMIT) != 0:
                return None
            self.linked[program.path] = objects
        return target

    def _ask(self, program, libraries):
        if not all(self._link(library) for library in libraries):
            return "link"
        target = self.tree.build / program.path
        if program.objects & self.made:
            target = self._link(program)
            if not target:
                return "link"
        return self.run_program(program, target, bool(libraries), 10 + 6 * program.seconds)

    def run_program(self, program, target, has_libraries, limit):
        """What runs of the program show: the first test that fails, "crash" or "time"; nothing when all pass.
        Tests of times may fail because of others at work: one that does not fail alone is left out."""
        left_out = []
        while True:
            how = self._run(target, has_libraries, limit, "*-" + ":".join(left_out))
            if how in ("", "crash", "time") or how in left_out or len(left_out) == 3:
                return how
            if self._run(target, has_libraries, limit, how):
                return how
            left_out.append(how)

    def _run(self, target, has_libraries, limit, tests):
        self.tmp.mkdir(parents=True, exist_ok=True)
        # TMPDIR stays: the folders made there have names of their own, and kivifc breaks lines by lengths of
        # their paths.
        environment = dict(os.environ, TEST_TMPDIR=str(self.tmp))
        environment.pop("KIV_ACCEPT_GOLDEN", None)
        if has_libraries:
            environment["LD_LIBRARY_PATH"] = str(self.root / "linked")
        # Processor time is what a hang spends; the time on the clock depends on who else is at work.
        limits = f"ulimit -c 0; ulimit -v {MEMORY_LIMIT}; ulimit -f {FILE_LIMIT}; ulimit -t {int(limit)}; "
        command = ["nice", "sh", "-c", limits + 'exec "$0" "$@"', str(target), "--gtest_brief=1",
                   "--gtest_fail_fast", f"--gtest_filter={tests}"]
        log_path = self.root / "log"
        with open(log_path, "wb") as log:
            code = run_quietly(command, self.tmp, 4 * limit, environment, log)
        if code == 0:
            return ""
        if code is None or code in (-signal.SIGXCPU, -signal.SIGKILL):
            return "time"
        failed = re.search(r"\[  FAILED  \] ([\w./]+)", log_path.read_bytes().decode(errors="replace"))
        return failed[1] if failed else "crash"
