"""Scenario studies: fan outages, fires, a resistance sweep and Monte Carlo over one network.

A study is a pure function of (network file bytes, scenario) to a row. Scenarios go to Dask in
batches; each worker loads the network once and solves its batches in memory, every scenario
on a fresh copy of the network as loaded, so that a row is what `galeris-sim solve` (or
`smoke`) gives on the network file with that one edit. The same seed gives the same table on
any scheduler.
"""
import hashlib
import math
import os
import tempfile

import numpy as np
import pandas as pd

import galeris

FIRE_CONCENTRATION = 100.0  # as the source tool places it
BATCHES_PER_WORKER = 4


class StudyError(Exception):
    """Bad input or a cluster that cannot run the study; the message says which."""


# The networks this process has loaded, by digest of the file: each worker loads once.
_loaded = {}


def _network(blob, home):
    key = (hashlib.sha1(blob).hexdigest(), home)
    if key not in _loaded:
        with tempfile.NamedTemporaryFile(suffix=".sim") as scratch:
            scratch.write(blob)
            scratch.flush()
            _loaded[key] = {"net": galeris.open(scratch.name, home)}
    return _loaded[key]


def _fresh(entry):
    """The network as loaded, in the one scratch store of this process's scenarios."""
    entry["scratch"] = entry["net"].copy(into=entry.get("scratch"))
    return entry["scratch"]


def _solved_base(entry, method):
    """The network as loaded, solved once, with its flows in airway-number order."""
    if method not in entry:
        net = entry["net"].copy()
        report = net.solve(method)
        entry[method] = (net, report, _ordered_flows(net))
    return entry[method]


def _ordered_flows(net):
    nos, quantity, keys = net.flows()
    order = np.argsort(nos, kind="stable")
    return nos[order], quantity[order].astype(float), keys[order]


def as_file_keeps_it(value):
    """A flow as a network file keeps it (seven significant digits), so that a row reads as
    the network the command line saves."""
    return float(np.float32("%.7g" % value))


def _solve_row(net, report, base, watch):
    """status, sweeps, total airflow, reversals against the base, the lowest watched flow as a
    share of its base, and each watched airway's flow (negative when it runs against the base).
    Flows are taken as the saved network keeps them."""
    base_nos, base_q, base_keys = base
    nos, q, keys = _ordered_flows(net)
    same = len(nos) == len(base_nos) and np.array_equal(nos, base_nos)
    if not same:  # the solve removed airways: line the rest up with the base
        where = np.searchsorted(base_nos, nos)
        base_q, base_keys = base_q[where], base_keys[where]
    reversed_ = keys != base_keys
    signed = np.where(reversed_, -q, q)
    row = {"status": report.status, "sweeps": report.sweeps,
           "total_airflow": sum(as_file_keeps_it(v) for v in q[keys == galeris.SURFACE_KEY]),
           "reversed": int(np.count_nonzero(reversed_))}
    shares, flows = [], {}
    for no in watch:
        k = np.searchsorted(nos, no)
        found = k < len(nos) and nos[k] == no
        flow = as_file_keeps_it(signed[k]) if found else float("nan")
        flows["flow_%d" % no] = flow
        if not math.isnan(flow) and base_q[k] != 0:
            shares.append(flow / as_file_keeps_it(base_q[k]))
    row["lowest_share"] = min(shares) if shares else float("nan")
    row.update(flows)
    return row


def _outage(entry, scenario, method, watch):
    base = _solved_base(entry, method)
    no, closed = scenario
    if no == 0:
        return {"fan_airway": 0, **_solve_row(base[0], base[1], base[2], watch)}
    net = _fresh(entry)
    net.stop_fan(no)
    if closed:
        net.block(no)
    return {"fan_airway": no, **_solve_row(net, net.solve(method), base[2], watch)}


def _sweep(entry, scenario, method, watch):
    no, resistance = scenario
    net = _fresh(entry)
    net.set_resistance(no, resistance)
    row = _solve_row(net, net.solve(method), _solved_base(entry, method)[2], watch)
    return {"resistance": float(np.float32(resistance)), **row}


def montecarlo_factors(seed, sample, sigma, count):
    """The factors of one sample, one per airway in airway-number order: log-normal with
    median 1. They depend on the seed and the sample's number only."""
    return np.random.default_rng([seed, sample]).lognormal(0.0, sigma, count)


def _montecarlo(entry, scenario, method, watch):
    seed, sample, sigma = scenario
    net = _fresh(entry)
    net.scale_resistances(montecarlo_factors(seed, sample, sigma, len(net)))
    row = _solve_row(net, net.solve(method), _solved_base(entry, method)[2], watch)
    return {"sample": sample, **row}


def _fire(entry, scenario, method, watch):
    net = _solved_base(entry, method)[0].copy(into=entry.get("scratch"))
    entry["scratch"] = net
    spread = net.spread({scenario: FIRE_CONCENTRATION}, mode="fixed")
    row = {"source_airway": scenario, "end": spread.attrs["end"]}
    for no in watch:
        reached = no in spread.index and not math.isnan(spread.at[no, "seconds"])
        row["concentration_%d" % no] = int(spread.at[no, "concentration"]) if reached else None
        row["arrival_%d" % no] = float(spread.at[no, "seconds"]) if reached else None
    return row


_KINDS = {"outage": _outage, "sweep": _sweep, "montecarlo": _montecarlo, "fire": _fire}


def run_batch(blob, home, kind, method, watch, scenarios):
    """One task: the rows of a batch of scenarios."""
    entry = _network(blob, home)
    return [_KINDS[kind](entry, s, method, watch) for s in scenarios]


# The client side.

def _read(path):
    try:
        with open(path, "rb") as f:
            return f.read()
    except OSError as e:
        raise StudyError("cannot read %s: %s" % (path, e.strerror)) from None


def _open(path, home):
    try:
        return galeris.open(path, home)
    except galeris.FileError as e:
        raise StudyError("%s: %s" % (path, e)) from None


def _check_airways(net, nos, what):
    known = set(net.airways().index)
    for no in nos:
        if no not in known:
            raise StudyError("%s: no airway numbered %d" % (what, no))


def _batches(items, workers):
    size = max(1, math.ceil(len(items) / max(1, workers * BATCHES_PER_WORKER)))
    return [items[k:k + size] for k in range(0, len(items), size)]


def _no_module(error):
    folder = os.path.dirname(os.path.dirname(os.path.abspath(galeris.__file__)))
    return StudyError(
        "the Dask workers cannot import the galeris module (%s): start each dask-worker "
        "with PYTHONPATH=%s, or install the package on the workers" % (error, folder))


def _check_workers(client):
    try:
        client.run(exec, "import galeris._engine")
    except Exception as e:  # noqa: BLE001 - any failure there means the same fix
        raise _no_module(e) from None


def _results(futures):
    rows = []
    for f in futures:
        try:
            rows += f.result()
        except ImportError as e:  # a worker that joined after the check
            raise _no_module(e) from None
    return rows


# A worker solves many times over: it keeps the memory each solve frees, in one arena, for the
# next, where Dask's workers would hand it back to the system after every task.
KEEP_MEMORY = {"MALLOC_ARENA_MAX": 1, "MALLOC_TRIM_THRESHOLD_": 512 << 20,
               "MALLOC_MMAP_THRESHOLD_": 256 << 20}


def _local_cluster(workers):
    import logging

    import dask
    from distributed import Client, LocalCluster
    environ = {**dask.config.get("distributed.nanny.pre-spawn-environ", {}), **KEEP_MEMORY}
    with dask.config.set({"distributed.nanny.pre-spawn-environ": environ}):
        cluster = LocalCluster(n_workers=workers, threads_per_worker=1, processes=True,
                               host="127.0.0.1", dashboard_address="127.0.0.1:0",
                               silence_logs=logging.ERROR)
    return Client(cluster), cluster


def _progress(done, total, stream):
    if stream is None:
        return
    width = 30
    filled = width * done // max(1, total)
    stream.write("\r[%s%s] %d/%d" % ("#" * filled, "." * (width - filled), done, total))
    if done == total:
        stream.write("\n")
    stream.flush()


def run(kind, blob, scenarios, method="hardy-cross", watch=(), home=None, workers=None,
        client=None, progress=None):
    """The rows of all scenarios, in scenario order. workers=0 runs them in this process;
    otherwise on client, or on a local cluster of `workers` processes (one per core)."""
    home = galeris.program_folder(home)
    watch = tuple(int(no) for no in watch)
    if workers == 0 and client is None:
        rows = []
        for k, batch in enumerate(_batches(scenarios, 1)):
            rows += run_batch(blob, home, kind, method, watch, batch)
            _progress(k + 1, len(_batches(scenarios, 1)), progress)
        return rows
    cluster = None
    if client is None:
        client, cluster = _local_cluster(workers or os.cpu_count() or 1)
    try:
        from distributed import as_completed
        _check_workers(client)
        count = max(1, len(client.scheduler_info()["workers"]))
        shared = client.scatter(blob, broadcast=True)
        batches = _batches(scenarios, count)
        futures = [client.submit(run_batch, shared, home, kind, method, watch, b, pure=False)
                   for b in batches]
        for done, _ in enumerate(as_completed(futures), 1):
            _progress(done, len(futures), progress)
        return _results(futures)
    finally:
        if cluster is not None:
            client.close()
            cluster.close()


def _frame(rows, index):
    return pd.DataFrame(rows).set_index(index)


def outage(path, watch=(), closed=False, **options):
    """A base row (fan_airway 0), then one row per fan airway with its fan stopped; closed
    blocks the stopped airway as a non-return damper would."""
    net = _open(path, options.get("home"))
    _check_airways(net, watch, "--watch")
    table = net.airways()
    fans = [int(no) for no in table.index[table.fan > 0]]
    scenarios = [(0, closed)] + [(no, closed) for no in fans]
    return _frame(run("outage", _read(path), scenarios, watch=watch, **options), "fan_airway")


def fire(path, watch=(), sources=None, **options):
    """One row per source airway (every airway carrying flow when none are given), spread at
    100 in fixed mode: concentration and arrival seconds at each watched airway, empty when
    never reached."""
    net = _open(path, options.get("home"))
    _check_airways(net, watch, "--watch")
    if sources is None:
        solved = net.copy()
        solved.solve(options.get("method", "hardy-cross"))
        table = solved.airways()
        sources = [int(no) for no in table.index[table.quantity > 0]]
    else:
        _check_airways(net, sources, "--sources")
    return _frame(run("fire", _read(path), [int(s) for s in sources], watch=watch, **options),
                  "source_airway")


def sweep(path, airway, start, stop, count, watch=(), **options):
    """The airway's resistance fixed at count values from start to stop."""
    if count < 1 or not (start >= 0 and stop >= 0):
        raise StudyError("the sweep range %g:%g:%d is empty" % (start, stop, count))
    net = _open(path, options.get("home"))
    _check_airways(net, [airway], "--airway")
    _check_airways(net, watch, "--watch")
    values = np.linspace(start, stop, count) if count > 1 else np.array([start])
    scenarios = [(int(airway), float(r)) for r in values]
    return _frame(run("sweep", _read(path), scenarios, watch=watch, **options), "resistance")


def montecarlo(path, sigma=0.1, samples=100, seed=1, watch=(), **options):
    """samples solves, every resistance times a log-normal factor of median 1."""
    if samples < 1 or not sigma >= 0:
        raise StudyError("montecarlo needs at least one sample and a sigma of 0 or more")
    net = _open(path, options.get("home"))
    _check_airways(net, watch, "--watch")
    scenarios = [(int(seed), k, float(sigma)) for k in range(1, samples + 1)]
    return _frame(run("montecarlo", _read(path), scenarios, watch=watch, **options), "sample")

