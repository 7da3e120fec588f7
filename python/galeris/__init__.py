"""Galeris from Python: open a network file, edit it by airway number, solve, spread smoke.

    net = galeris.open("mine.sim")
    print(net.solve().status, net.airways().quantity.sum())

Every call is one engine call; tables are pandas DataFrames indexed by airway number, in SI
units. The solve and the spread let other Python threads run meanwhile.
"""
import os

import numpy as np
import pandas as pd

from . import _engine

FileError = _engine.FileError
SURFACE_KEY = _engine.SURFACE_KEY
NEVER_REACHED = _engine.NEVER_REACHED

__all__ = ["open", "Network", "FileError", "SolveResult"]


def program_folder(home=None):
    """The folder of Defaults.dat, Conversion.dat and fansdata.dat: home, else GALERIS_HOME,
    else the bin folder beside this package in a build folder."""
    if home:
        return str(home)
    if os.environ.get("GALERIS_HOME"):
        return os.environ["GALERIS_HOME"]
    return os.path.normpath(os.path.join(os.path.dirname(__file__), "..", "..", "bin"))


def _answer(answers):
    if answers not in ("no", "yes"):
        raise ValueError('answers is "no" or "yes"')
    return answers == "yes"


class SolveResult:
    """What one solve left: status ("clean", "warnings" or "failed"), sweeps, meshes, the
    self-check figures (continuity in m3/s, loop in Pa; None when no solution stands), the
    error list and the messages a desktop user would have seen."""

    def __init__(self, report):
        self.__dict__.update(report)

    def __repr__(self):
        return "SolveResult(status=%r, sweeps=%d, continuity=%r, loop=%r)" % (
            self.status, self.sweeps, self.continuity, self.loop)


class Network:
    """One open network with a store of its own."""

    def __init__(self, session):
        self._session = session

    def __len__(self):
        return len(self._session)

    def copy(self, into=None):
        """A copy with a store of its own; into, a Network no longer needed, lends its store,
        which is much quicker for a large network than a new one."""
        if into is None:
            return Network(self._session.copy())
        self._session.copy_to(into._session)
        return into

    def save(self, path):
        self._session.save(os.fspath(path))

    def solve(self, method="hardy-cross", answers="no"):
        if method not in ("hardy-cross", "newton"):
            raise ValueError('method is "hardy-cross" or "newton"')
        return SolveResult(self._session.solve(method == "newton", _answer(answers)))

    def airways(self):
        columns = self._session.airways()
        index = pd.Index(columns.pop("no"), name="airway")
        frame = pd.DataFrame(columns, index=index)
        for flag in ("fixed_quantity", "fixed_resistance", "fixed_direction", "blocked"):
            frame[flag] = frame[flag].astype(bool)
        return frame

    def flows(self):
        """(airway numbers, quantities, entry keys) in store order: the quick look at a
        solution that the studies use."""
        return self._session.flows()

    def spread(self, sources, mode="fixed", answers="no"):
        """Concentration and arrival seconds (NaN when never reached) of every airway, from
        sources {airway number: concentration}; the network's own sources spread too."""
        if mode not in ("fixed", "cumulative"):
            raise ValueError('mode is "fixed" or "cumulative"')
        nos = [int(no) for no in sources]
        values = [float(sources[no]) for no in sources]
        report = self._session.spread(nos, values, mode == "fixed", _answer(answers))
        seconds = report["seconds"].astype(float)
        seconds[report["seconds"] == NEVER_REACHED] = np.nan
        frame = pd.DataFrame({"concentration": report["concentration"], "seconds": seconds},
                             index=pd.Index(report["no"], name="airway"))
        frame.attrs.update(end=report["end"], sources=report["sources"],
                           messages=report["messages"])
        return frame

    # Edits, by airway number.
    def set_resistance(self, no, resistance):
        """A resistance (Ns2/m8) fixed by hand."""
        self._session.set_resistance(int(no), float(resistance))

    def scale_resistances(self, factors):
        """Every resistance the solve would use times its factor (one per airway, in airway
        number order), fixed by hand; blocked airways stay blocked."""
        self._session.scale_resistances(np.asarray(factors, dtype=float).tolist())

    def set_fan(self, no, fan, count=None):
        """Fan number fan (0: no fan, the airway left open) and the count of fans."""
        self._session.set_fan(int(no), int(fan), 0 if count is None else int(count))

    def stop_fan(self, no):
        self.set_fan(no, 0)

    def set_fixed_quantity(self, no, quantity):
        self._session.set_fixed_quantity(int(no), float(quantity))

    def clear_fixed_quantity(self, no):
        self._session.clear_fixed_quantity(int(no))

    def block(self, no, blocked=True):
        """A bulkhead in the airway (or its removal)."""
        self._session.block(int(no), bool(blocked))


def open(path, home=None):  # noqa: A001 - the package's own word for it
    """Loads a network file; FileError carries the program's message when it refuses it."""
    path = os.fspath(path)
    return Network(_engine.Session.open(path, program_folder(home)))
