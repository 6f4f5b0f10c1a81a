"""The collection for Ansible, installed in a separate folder: its form, and its modules alone."""

import compileall
import os
import pathlib
import re
import subprocess
import sys

PROJECT = pathlib.Path(__file__).resolve().parents[2]
PYTHON = "/usr/bin/python3"  # the one that has Ansible
NAME = "qxcontrols.keyboards"
VALIDATE_MODULES = pathlib.Path(
    "/usr/lib/python3/dist-packages/ansible_test/_util/controller/sanity/validate-modules/validate.py"
)
YAMLLINT = "{extends: default, rules: {line-length: {max: 100}}}"


def fail(message):
    sys.exit(f"tests/fleet: {message}")


def require(condition, message):
    if not condition:
        fail(message)


class Collection:
    """Ansible with the collection, and nothing of the user's own."""

    def __init__(self, folder, forks):
        self.folder, self.forks = folder, forks
        self.environment = {
            **os.environ,
            "LC_ALL": "C.UTF-8",
            "ANSIBLE_HOME": str(folder / "ansible"),
            "ANSIBLE_CONFIG": str(folder / "ansible.cfg"),
            "ANSIBLE_COLLECTIONS_PATH": str(folder / "collections"),
            "XDG_DATA_HOME": str(folder / "data"),
            "XDG_CONFIG_HOME": str(folder / "data"),
        }
        (folder / "ansible.cfg").write_text(
            f"[defaults]\nnocolor = True\n"
            f"forks = {forks}\ncallbacks_enabled = {NAME}.report\n"
            f"local_tmp = {folder}/tmp\nremote_tmp = {folder}/tmp\nretry_files_enabled = False\n"
        )
        self.installed = self._install()

    def _install(self):
        self.call(
            "ansible-galaxy", "collection", "build", PROJECT / "ansible", "--output-path", "."
        )
        (archive,) = self.folder.glob("qxcontrols-keyboards-*.tar.gz")
        self.call("ansible-galaxy", "collection", "install", archive, "--offline")
        return self.folder / "collections/ansible_collections/qxcontrols/keyboards"

    def check_form(self):
        require(
            compileall.compile_dir(self.installed, quiet=1),
            "a file of the collection is not Python",
        )
        kinds = {
            "module": ("keyboard", "keyboard_facts"),
            "callback": ("report",),
            "role": ("till",),
        }
        for kind, names in kinds.items():
            for name in names:
                ran = self.call("ansible-doc", "-t", kind, f"{NAME}.{name}")
                require(len(ran.stdout) > 500, f"{name} is not documented")
        self._check_by_ansible()
        self.call("yamllint", "-s", "-d", YAMLLINT, PROJECT / "ansible")
        tills = self.installed / "playbooks/tills.yml"
        self.call("ansible-playbook", "-i", "till1,", "--syntax-check", tills, warns=True)
        tests = f"ansible_collections.{NAME}.tests.test_modules"
        path = self.folder / "collections"
        ran = self.call(PYTHON, "-m", "unittest", tests, warns=True, PYTHONPATH=str(path))
        print(ran.stderr.splitlines()[-3])

    def _check_by_ansible(self):
        """The engine's own checks of collections: those that need no more than Debian has."""
        tests = ["compile", "empty-init", "ignores", "no-assert", "no-get-exception"]
        tests += ["no-illegal-filenames", "no-main-display", "no-smart-quotes", "replace-urlopen"]
        tests += ["shebang", "symlinks", "use-argspec-type-path", "use-compat-six"]
        options = [word for test in tests for word in ("--test", test)]
        version = f"{sys.version_info.major}.{sys.version_info.minor}"
        run = ("ansible-test", "sanity", "--python", version, *options)
        self.call(*run, folder=self.installed, warns=True)
        accepted = (self.installed / "tests/sanity/ignore-2.14.txt").read_text()
        for module in ("plugins/modules/keyboard.py", "plugins/modules/keyboard_facts.py"):
            ran = subprocess.run(
                [PYTHON, VALIDATE_MODULES, "--format", "plain", "--arg-spec", "--collection"]
                + [self.installed.relative_to(self.folder / "collections"), module],
                cwd=self.installed,
                env={**self.environment, "PYTHONPATH": str(VALIDATE_MODULES.parent)},
                capture_output=True,
                text=True,
            )
            require(not ran.stderr, ran.stderr)
            for code, fault in re.findall(r"\bE([a-z0-9-]+) (.*)", ran.stdout):
                is_accepted = f"{module} validate-modules:{code} " in accepted
                require(is_accepted, f"{module}: {code}: {fault}")

    def call(self, *command, warns=False, folder=None, expected=(0,), **environment):
        ran = subprocess.run(
            [str(word) for word in command],
            cwd=folder or self.folder,
            env={**self.environment, **environment},
            stdin=subprocess.DEVNULL,
            capture_output=True,
            text=True,
        )
        if ran.returncode not in expected or (ran.stderr and not warns):
            said = f"{ran.stdout[-3000:]}\n{ran.stderr[-3000:]}"
            fail(f"{command[0]} {command[1]}: status {ran.returncode}\n{said}")
        return ran
