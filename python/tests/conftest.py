"""Shared set-up of the Python tests: the build's bin folder, a generated mine with fans and
boosters solved once, and the command-line tools run as a user would."""
import os
import subprocess

import pytest

BIN = os.environ.get("GALERIS_BIN", os.path.join(os.path.dirname(__file__), "..", "..",
                                                  "build", "bin"))


def run_tool(*args, check=True):
    """Runs a program of the bin folder; its completed process."""
    done = subprocess.run([os.path.join(BIN, args[0]), *map(str, args[1:])],
                          capture_output=True, text=True)
    if check:
        assert done.returncode in (0, 2), done.stderr
    return done


@pytest.fixture(scope="session")
def home():
    return BIN


@pytest.fixture(scope="session")
def mine(tmp_path_factory):
    """A generated mine of 200 airways, solved once and saved: its flows stand in the file."""
    folder = tmp_path_factory.mktemp("mine")
    raw, solved = folder / "raw.sim", folder / "mine.sim"
    run_tool("galeris-sim", "generate", 200, "-o", raw)
    run_tool("galeris-sim", "solve", raw, "-o", solved)
    return str(solved)


def solved_by_command(net, tmp_path, name):
    """Saves net, solves the file with galeris-sim and opens what it wrote."""
    import galeris
    edited, out = tmp_path / (name + ".sim"), tmp_path / (name + "-solved.sim")
    net.save(edited)
    done = run_tool("galeris-sim", "solve", edited, "-o", out)
    return galeris.open(out), done.stdout.split("status ")[1].split()[0]
