"""The memory that a program uses."""

import pathlib
import re
import threading
import time


class Memory(threading.Thread):
    """The peak memory of a process and its children together, sampled twice a second."""

    def __init__(self, process):
        super().__init__(daemon=True)
        self._root, self.most = process, 0

    def run(self):
        while self._root.poll() is None:
            self.most = max(self.most, sum(map(self._size, self._family())))
            time.sleep(0.5)

    def _family(self):
        parents = {}
        for stat in pathlib.Path("/proc").glob("[0-9]*/stat"):
            try:
                parents[int(stat.parent.name)] = int(stat.read_text().rpartition(")")[2].split()[1])
            except (OSError, IndexError):
                pass
        family = {self._root.pid}
        while more := {child for child, parent in parents.items() if parent in family} - family:
            family |= more
        return family

    @staticmethod
    def _size(process):
        try:
            text = pathlib.Path(f"/proc/{process}/smaps_rollup").read_text()
        except OSError:
            return 0
        found = re.search(r"^Pss: +(\d+) kB", text, re.MULTILINE)
        return int(found[1]) if found else 0
