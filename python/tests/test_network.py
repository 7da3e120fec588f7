"""The Python API: loading and its refusals, solving, edits and spreads, each against what the
command line gives on the same file."""
import numpy as np
import pytest

import galeris
from conftest import run_tool, solved_by_command


def test_refused_files_carry_the_program_message(tmp_path):
    with pytest.raises(galeris.FileError, match="ERROR 53: That file doesn't exist."):
        galeris.open(tmp_path / "missing.sim")
    junk = tmp_path / "junk.sim"
    junk.write_text("these are not the airways you are looking for\n")
    with pytest.raises(galeris.FileError, match="Not a GALERIS File"):
        galeris.open(junk)


def test_solve_reports_status_and_self_check(mine):
    result = galeris.open(mine).solve()
    assert result.status == "clean" and result.sweeps >= 1
    assert result.continuity < 0.01 and result.messages == []


def test_airway_table_is_indexed_by_airway_number(mine):
    table = galeris.open(mine).airways()
    assert table.index.is_monotonic_increasing and table.index.name == "airway"
    assert (table.fan > 0).any() and table.quantity.dtype == np.float32


def test_edited_solve_equals_the_command_on_the_saved_file(mine, tmp_path):
    net = galeris.open(mine)
    table = net.airways()
    fan = int(table.index[table.fan > 0][0])
    net.stop_fan(fan)
    net.set_resistance(int(table.index[5]), 0.25)
    net.block(int(table.index[9]))
    expected, status = solved_by_command(net, tmp_path, "edited")
    result = net.solve()
    assert result.status == status
    net.save(tmp_path / "ours.sim")
    ours, theirs = galeris.open(tmp_path / "ours.sim").airways(), expected.airways()
    assert ours.quantity.equals(theirs.quantity) and ours.entry_key.equals(theirs.entry_key)
    # A second edit solves from this solution as the saved file would.
    net.set_resistance(int(table.index[7]), 0.1234567891)
    expected, status = solved_by_command(net, tmp_path, "again")
    net.solve()
    net.save(tmp_path / "ours.sim")
    assert galeris.open(tmp_path / "ours.sim").airways().quantity.equals(
        expected.airways().quantity)


def test_copy_keeps_a_store_of_its_own(mine):
    net = galeris.open(mine)
    other = net.copy()
    other.set_fixed_quantity(int(net.airways().index[3]), 12.5)
    other.solve()
    assert not net.airways().fixed_quantity.any()
    assert other.airways().quantity.iloc[3] == np.float32(12.5)
    with pytest.raises(ValueError, match="no airway numbered 99999"):
        other.set_resistance(99999, 1.0)


def test_spread_equals_the_smoke_command(mine):
    net = galeris.open(mine)
    source = int(net.airways().index[0])
    spread = net.spread({source: 100}, mode="fixed")
    done = run_tool("galeris-sim", "smoke", mine, "--source", "%d:100" % source, "--mode", "fixed")
    lines = [line.split("\t") for line in done.stdout.splitlines() if "\t" in line]
    assert lines
    for no, concentration, seconds in lines:
        row = spread.loc[int(no)]
        assert row.concentration == int(concentration)
        assert ("%.1f" % row.seconds if not np.isnan(row.seconds) else "never") == seconds


@pytest.mark.parametrize("edit, error, message", [
    (lambda n: n.set_resistance(1, -1.0), ValueError, "cannot be negative"),
    (lambda n: n.set_fan(1, 9999), ValueError, "not in the fan list"),
    (lambda n: n.set_fan(1, 1, -2), ValueError, "a fan count is from 1"),
    (lambda n: n.spread({1: 0}), ValueError, "above 0 and at most 20000"),
    (lambda n: n.spread({1: 100}, mode="sideways"), ValueError, "fixed"),
    (lambda n: n.solve(method="guess"), ValueError, "newton"),
    (lambda n: n.solve(answers="maybe"), ValueError, "yes"),
    (lambda n: n.save("/nonexistent/folder/x.sim"), galeris.FileError, "Error Save File"),
])
def test_bad_edits_are_refused_with_a_reason(mine, edit, error, message):
    with pytest.raises(error, match=message):
        edit(galeris.open(mine))


def test_cumulative_spread_keeps_the_network_sources_apart(mine):
    net = galeris.open(mine)
    first = int(net.airways().index[0])
    fixed = net.spread({first: 100}, mode="fixed")
    cumulative = net.spread({first: 100}, mode="cumulative")
    assert fixed.attrs["end"] == cumulative.attrs["end"] == "finished"
    assert fixed.loc[first, "seconds"] == 0 and (fixed.concentration > 0).sum() > 1
    assert net.copy().spread({}, mode="fixed").attrs["end"] == "no source"
