#!/usr/bin/env python3
"""The time that NumPy and SciPy need for the work on one drop, beside that of the benchmarks, as a table for README.md.

Needs a release build of bellmark-virtual-fwd and of the benchmarks, python3-numpy and python3-scipy. Times are processor
times in milliseconds, the least of several runs. NumPy does the same steps on whole arrays; it does not judge the drop.
"""

import io
import json
import subprocess
import sys
import tempfile
import time
from pathlib import Path

try:
    import numpy as np
    from scipy.integrate import cumulative_trapezoid
except ImportError:
    sys.exit("Needs the packages python3-numpy and python3-scipy.")

PROGRAMS = Path(__file__).resolve().parent.parent / "build/release/bin"
STEP = 6.666667e-05  # seconds between two samples
COEFFICIENTS = [1000, 1.5, -0.25, 0.00001, -0.00049]  # pounds per volt to the first, second ... power
RUNS = 15


def least_time(work):
    times = []
    for _ in range(RUNS):
        begin = time.process_time()
        work()
        times.append(time.process_time() - begin)
    return min(times) * 1000


def read_drop(path):
    with open(path, encoding="cp1252") as file:
        for line in file:
            if line.startswith("Sample"):
                break
        return np.loadtxt(file, delimiter=",", usecols=2)


def write_drop(columns, formats):
    np.savetxt(io.StringIO(), columns, fmt=formats, newline="\r\n")


def moving_std_dev(values, window):
    sums = np.cumsum(np.insert(values, 0, 0.0))
    squares = np.cumsum(np.insert(values * values, 0, 0.0))
    total = sums[window:] - sums[:-window]
    variance = (squares[window:] - squares[:-window] - total * total / window) / (window - 1)
    return np.sqrt(np.maximum(variance, 0))


def analyse_load(volts):
    load = volts * np.polyval(COEFFICIENTS[::-1], volts)
    peak = int(np.argmax(load))
    zero = load[max(peak - 750, 0) : max(peak - 375, 1)]
    zeroed = load - zero.mean()
    return zeroed[peak], zero.max() - zero.min(), np.flatnonzero(zeroed[:peak] < 0.001 * zeroed[peak])[-1:]


def analyse_deflection(volts):
    g = 0.2 * volts + 0.001 * volts**2
    quiet = moving_std_dev(g, 25)
    moving_std_dev(g, 100)
    start = int(np.argmax(np.abs(g - g[:1000].mean()) > 0.1)) or 1000
    fulcrum = start - 1 - int(np.argmax(quiet[:start][::-1] < 0.02))
    baseline = g[max(fulcrum - 75, 0) : fulcrum + 1].mean()
    times = (np.arange(len(g)) - fulcrum) * STEP
    for _ in range(3):  # the integration, and one more after each fit of the drift
        velocity = cumulative_trapezoid((g - baseline) * 9806650.0, dx=STEP, initial=0)
        velocity -= velocity[fulcrum]
        deflection = -cumulative_trapezoid(velocity, dx=STEP, initial=0)
        deflection -= deflection[fulcrum]
        rest = slice(min(start + 3000, len(g) - 500), len(g))
        base = np.stack([times[rest], times[rest] ** 2], axis=1)
        drift = np.linalg.lstsq(base, deflection[rest], rcond=None)[0]
        baseline -= 2 * drift[1] / 9806650.0
    return deflection[start : start + 1500].max()


def benchmark(program, name):
    command = [PROGRAMS / program, f"--benchmark_filter=^{name}$", f"--benchmark_repetitions={RUNS}",
               "--benchmark_min_time=0.05", "--benchmark_format=json"]
    text = subprocess.run(command, check=True, capture_output=True, text=True).stdout
    return min(run["cpu_time"] for run in json.loads(text)["benchmarks"] if run["run_type"] == "iteration")


def main():
    with tempfile.TemporaryDirectory() as folder:
        sample = Path(folder) / "sample"
        subprocess.run([PROGRAMS / "bellmark-virtual-fwd", "--folder", sample, "--reference-trials", "1"], check=True,
                       capture_output=True)
        load_file = sample / "Review/LoadCell1-H1D1.txt"
        accel_file = sample / "Review/Reference1-H1D1.txt"
        load = read_drop(load_file)
        accel = read_drop(accel_file)
        numbers = np.arange(len(load))
        load_columns = np.column_stack([numbers, numbers * STEP, load, load, load])
        accel_columns = np.column_stack([numbers, numbers * STEP] + [accel] * 5)
        rows = [
            ("load cell: analysis", "load", "AnalyseLoadDrop", lambda: analyse_load(load)),
            ("load cell: text of the file", "load", "WriteDropFile",
             lambda: write_drop(load_columns, ["%d"] + ["%.4E"] * 2 + ["%.7E"] * 2)),
            ("load cell: reading the file", "load", "ReadSavedDrop", lambda: read_drop(load_file)),
            ("accelerometer: analysis", "accel", "AnalyseAccelDrop", lambda: analyse_deflection(accel)),
            ("accelerometer: text of the file", "accel", "WriteAccelDropFile",
             lambda: write_drop(accel_columns, ["%d"] + ["%.4E"] * 6)),
            ("accelerometer: reading the file", "accel", "ReadSavedAccelDrop", lambda: read_drop(accel_file)),
        ]
        print("| work on one drop | Bellmark | NumPy and SciPy |\n|---|---|---|")
        for title, instrument, name, work in rows:
            own = benchmark(f"bellmark_{instrument}_drop_bench", name)
            print(f"| {title} | {own:.3g} ms | {least_time(work):.3g} ms |", flush=True)


if __name__ == "__main__":
    main()
