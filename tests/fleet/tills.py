"""Hosts with a simulated keyboard each, some of them broken, and playbooks for them."""

import hashlib
import json
import pathlib
import re
import shutil
import subprocess
import time

from collection import PROJECT, PYTHON, fail, require
from memory import Memory

WAYS = ("damaged", "driver", "variable", "interrupted", "hanging")
DELAY_OF_DRIVER = 3  # seconds until one that hangs is given up
FILES = ("till.json", "tills.yml", "role.yml", "report.yml")


class Tills:
    def __init__(self, collection, hosts, qxconf, wild_driver):
        self.collection, self.folder = collection, collection.folder
        self.environment, self.call = collection.environment, collection.call
        self.qxconf, self.wild_driver = qxconf, wild_driver
        self.hosts = {}
        broken = max(len(WAYS), hosts // 10)
        every = hosts // broken
        for i in range(hosts):
            is_broken = i % every == every - 1 and i // every < broken
            name = f"till{i + 1:04}"
            self.hosts[name] = {
                "way": WAYS[i // every % len(WAYS)] if is_broken else None,
                "till": f"{i + 1:04}",
                "output_delay": 7 + i % 200,
                "till_home": str(self.folder / "homes" / name),
                "till_keyboard": str(self.folder / "keyboards" / f"{name}.qxk"),
            }

        for name in FILES:
            shutil.copy(pathlib.Path(__file__).parent / name, self.folder)
        (self.folder / "keyboards").mkdir()
        for host in self.hosts.values():
            self.conf("--keyboard", host["till_keyboard"], "--model", "full", "identify")
        shutil.copytree(self.folder / "keyboards", self.folder / "for-batch")
        for host in self.hosts.values():
            self._break(host)
        self.write_inventory()

    def _break(self, host):
        keyboard = pathlib.Path(host["till_keyboard"])
        if host["way"] == "damaged":
            shutil.copy(keyboard, f"{keyboard}.whole")
            keyboard.write_bytes(keyboard.read_bytes()[:-1000])
        elif host["way"] == "driver":
            host["till_driver"] = "/nowhere/libdriver.so"
        elif host["way"] == "variable":
            host["output_delay"] += 256
        elif host["way"] in ("interrupted", "hanging"):
            host["till_driver"] = str(self.wild_driver)
            is_cut = host["way"] == "interrupted"
            misbehaviour = "QXCFG_ImageSave half" if is_cut else "QXCFG_ImageLoad hang"
            pathlib.Path(f"{keyboard}.wild").write_text(misbehaviour)
        if host["way"] == "hanging":
            host["till_timeout"] = DELAY_OF_DRIVER

    def mend(self, host):
        keyboard = pathlib.Path(host["till_keyboard"])
        if host["way"] == "damaged":
            shutil.copy(f"{keyboard}.whole", keyboard)
        elif host["way"] == "driver":
            del host["till_driver"]
        elif host["way"] == "variable":
            host["output_delay"] -= 256
        host.pop("till_timeout", None)
        pathlib.Path(f"{keyboard}.wild").unlink(missing_ok=True)

    def write_inventory(self):
        inventory = {
            "all": {
                "hosts": self.hosts,
                "vars": {
                    "ansible_connection": "local",
                    "ansible_python_interpreter": PYTHON,
                    "till_executable": str(self.qxconf),
                    "till_layouts": str(PROJECT / "layouts"),
                },
            }
        }
        (self.folder / "hosts.json").write_text(json.dumps(inventory))

    def play(self, name, playbook, *options):
        """Runs a playbook; the results by host, from the report, and the output."""
        start, log = time.monotonic(), self.folder / f"{name}.log"
        report = self.folder / f"{name}.report.json"
        with open(log, "w") as output:
            process = subprocess.Popen(
                ["ansible-playbook", "-i", "hosts.json", playbook, *options],
                cwd=self.folder,
                env={**self.environment, "QXCONTROLS_REPORT": str(report)},
                stdin=subprocess.DEVNULL,
                stdout=output,
                stderr=subprocess.STDOUT,
            )
            memory = Memory(process)
            memory.start()
            process.wait()
            memory.join()
        seconds = time.monotonic() - start
        text = log.read_text()
        results = {k["host"]: k for k in json.loads(report.read_text())["keyboards"]}
        recap = dict(
            re.findall(r"^(\S+) +: ok=\d+ +(changed=\d+ +unreachable=0 +failed=\d+)", text, re.M)
        )
        for host, result in results.items():
            counted = [int(n) for n in re.findall(r"=(\d+)", recap.get(host, ""))]
            is_failed = result["result"] == "failed"
            is_changed = result["result"] == "changed"
            require(
                counted == [is_changed, 0, is_failed],
                f"{name}: {host}: the report has {result['result']}, the recap {recap.get(host)}",
            )
        counts = {
            w: sum(r["result"] == w for r in results.values())
            for w in ("changed", "unchanged", "failed")
        }
        print(
            f"{name}: {len(results)} hosts: "
            + ", ".join(f"{count} {word}" for word, count in counts.items())
            + f"; {seconds:.1f} s, {memory.most / 1024:.0f} MB",
            flush=True,
        )
        return results, text

    def expect_whole(self, name, results, word):
        for host, facts in self.hosts.items():
            if facts["way"] is None:
                self.expect(name, results, host, word)

    def expect(self, name, results, host, word, code=None, state=None, text="", **facts):
        result = results.get(host) or fail(f"{name}: {host} is not in the report")
        error = result["error"] or {"code": None, "message": ""}
        seen = (result["result"], error["code"], result["keyboard_state"])
        wanted = (word, code, state or result["keyboard_state"])
        require(
            seen == wanted and text in error["message"] and facts.items() <= error.items(),
            f"{name}: {host}: {result}, not {wanted}, {text}, {facts}",
        )

    def of(self, way):
        return [name for name, host in self.hosts.items() if host["way"] == way]

    def expect_broken(self, name, results, interrupted):
        unopened = ("failed", "keyboard-not-opened", "unchanged")
        for host in self.of("damaged"):
            facts = {"cause": "opening-failed", "function": "QXCFG_Init"}
            self.expect(name, results, host, *unopened, **facts)
        for host in self.of("driver"):
            facts = {"cause": "driver-unusable", "file": "/nowhere/libdriver.so"}
            self.expect(name, results, host, *unopened, **facts)
        for host in self.of("variable"):
            unfit = ("failed", "document-invalid", "unchanged")
            self.expect(name, results, host, *unfit, place="/commonKeyboard/outputDelay")
        for host in self.of("hanging"):
            text = f"did not end within {DELAY_OF_DRIVER} s"
            self.expect(name, results, host, "failed", "timeout", "unchanged", text)
        for host in self.of("interrupted"):
            self.expect(name, results, host, *interrupted)

    def keyboards(self):
        files = sorted((self.folder / "keyboards").glob("*.qxk"))
        return {file.stem: hashlib.sha256(file.read_bytes()).hexdigest() for file in files}

    def holds(self, host):
        """Whether the keyboard holds the document, by a command that Ansible has no part in."""
        ran = subprocess.run(
            [self.qxconf, "--layouts", PROJECT / "layouts", "--keyboard", host["till_keyboard"]]
            + ["diff", f"--set=till={host['till']}", f"--set=output_delay={host['output_delay']}"]
            + [self.folder / "till.json"],
            env=self.environment,
            capture_output=True,
        )
        return ran.returncode == 0

    def conf(self, *arguments):
        self.call(self.qxconf, "--quiet", *arguments)
