"""The studies: rows checked against galeris-sim on the edited file, the same table from a
two-worker cluster as from one process, and the command's refusals of bad input."""
import os
import subprocess
import sys

import numpy as np
import pandas as pd
import pytest

import galeris
from galeris import study
from conftest import BIN, run_tool, solved_by_command

SERIAL = dict(workers=0)


def watched(mine, count=3):
    table = galeris.open(mine).airways()
    return [int(no) for no in table.index[table.quantity > 0][:count]]


def assert_row_matches(row, net, base, watch, status):
    """A study row against the network the command solved: same flows, same reversals."""
    table, base_table = net.airways(), base.airways()
    reversed_ = table.entry_key != base_table.entry_key
    assert row.status == status
    assert row.reversed == int(reversed_.sum())
    assert row.total_airflow == sum(float(q) for q in
                                    table.quantity[table.entry_key == galeris.SURFACE_KEY])
    for no in watch:
        sign = -1.0 if reversed_[no] else 1.0
        assert row["flow_%d" % no] == sign * float(table.quantity[no])


@pytest.fixture(scope="module")
def base(mine):
    net = galeris.open(mine)
    net.solve()
    return net


def test_outage_rows_equal_the_command(mine, base, tmp_path):
    watch = watched(mine)
    table = study.outage(mine, watch, closed=True, **SERIAL)
    assert table.index[0] == 0 and len(table) > 1
    fan = int(table.index[1])
    net = galeris.open(mine)
    net.stop_fan(fan)
    net.block(fan)
    solved, status = solved_by_command(net, tmp_path, "outage")
    assert_row_matches(table.loc[fan], solved, base, watch, status)
    assert table.loc[0, "reversed"] == 0 and table.loc[0, "lowest_share"] == 1.0


def test_sweep_and_montecarlo_rows_equal_the_command(mine, base, tmp_path):
    watch = watched(mine)
    airway = watch[1]
    sweep = study.sweep(mine, airway, 0.5, 2.0, 3, watch, **SERIAL)
    net = galeris.open(mine)
    net.set_resistance(airway, 2.0)
    solved, status = solved_by_command(net, tmp_path, "sweep")
    assert_row_matches(sweep.iloc[2], solved, base, watch, status)

    carlo = study.montecarlo(mine, 0.1, 2, 7, watch, **SERIAL)
    net = galeris.open(mine)
    net.scale_resistances(study.montecarlo_factors(7, 2, 0.1, len(net)))
    solved, status = solved_by_command(net, tmp_path, "carlo")
    assert_row_matches(carlo.loc[2], solved, base, watch, status)


def test_fire_rows_equal_the_smoke_command(mine):
    watch = watched(mine, 40)[-4:]
    sources = watched(mine, 2)
    table = study.fire(mine, watch, sources=sources, **SERIAL)
    done = run_tool("galeris-sim", "smoke", mine, "--source", "%d:100" % sources[1],
                    "--mode", "fixed")
    reached = {int(f[0]): (int(f[1]), f[2]) for f in
               (line.split("\t") for line in done.stdout.splitlines() if "\t" in line)}
    row = table.loc[sources[1]]
    for no in watch:
        if no in reached and reached[no][1] != "never":
            assert row["concentration_%d" % no] == reached[no][0]
            assert "%.1f" % row["arrival_%d" % no] == reached[no][1]
        else:
            assert pd.isna(row["arrival_%d" % no])


def test_two_local_workers_give_the_serial_table(mine):
    watch = watched(mine)
    serial = study.montecarlo(mine, 0.2, 6, 3, watch, **SERIAL)
    spread = study.montecarlo(mine, 0.2, 6, 3, watch, workers=2)
    pd.testing.assert_frame_equal(serial, spread, check_exact=True)
    assert not np.isnan(serial.filter(like="flow_").to_numpy()).any()


def galeris_study(*args):
    return subprocess.run([sys.executable, os.path.join(BIN, "galeris-study"), *map(str, args)],
                          capture_output=True, text=True)


@pytest.mark.parametrize("case, message", [
    ("missing", "ERROR 53"),
    ("junk", "Not a GALERIS File"),
    ("watch", "--watch: no airway numbered 99999"),
    ("sweep", "the sweep range 1:2:0 is empty"),
])
def test_bad_input_exits_3_and_writes_nothing(mine, tmp_path, case, message):
    junk = tmp_path / "junk.sim"
    junk.write_text("not a network\n")
    out = tmp_path / "out.csv"
    args = {"missing": ["outage", tmp_path / "none.sim"],
            "junk": ["outage", junk],
            "watch": ["outage", mine, "--watch", "99999"],
            "sweep": ["sweep", mine, "--airway", "1", "--resistance", "1:2:0"]}[case]
    done = galeris_study(*args, "-o", out, "--workers", "0")
    assert done.returncode == 3 and message in done.stderr
    assert os.listdir(tmp_path) == ["junk.sim"]


def test_command_writes_csv_and_chart(mine, tmp_path):
    out, chart = tmp_path / "sweep.csv", tmp_path / "sweep.png"
    args = ["sweep", mine, "--airway", watched(mine)[0], "--resistance", "0.1:1:4"]
    done = galeris_study(*args, "--workers", "1", "-o", out, "--plot", chart)
    assert done.returncode == 0, done.stderr
    assert chart.read_bytes()[:4] == b"\x89PNG" and "] 4/4" in done.stderr
    serial = galeris_study(*args, "--workers", "0")
    assert serial.stdout == out.read_text() and len(pd.read_csv(out)) == 4


def test_the_seed_alone_decides_a_montecarlo_table(mine):
    first = study.montecarlo(mine, 0.1, 2, 5, **SERIAL)
    assert first.equals(study.montecarlo(mine, 0.1, 2, 5, **SERIAL))
    assert not first.equals(study.montecarlo(mine, 0.1, 2, 6, **SERIAL))
    factors = study.montecarlo_factors(5, 1, 0.1, 1000)
    assert 0.98 < np.median(factors) < 1.02


@pytest.mark.parametrize("kind", ["outage", "sweep", "montecarlo", "fire"])
def test_every_study_has_a_chart(tmp_path, kind):
    from galeris import study_chart
    table = pd.DataFrame({"total_airflow": [50.0, 40.0], "flow_3": [7.5, -1.0],
                          "arrival_3": [12.0, None]}, index=[0, 4])
    study_chart.draw(kind, table, tmp_path / "chart.png")
    assert (tmp_path / "chart.png").read_bytes()[:4] == b"\x89PNG"
