"""Times commands against each other: warm cache, alternating pairs, medians of the ratios."""
import os
import resource
import statistics
import subprocess
import time


def seconds(command):
    start = time.perf_counter()
    # A pipe and not /dev/null, at whose sight grep stops at the first match.
    subprocess.run(command, shell=True, check=True, stdout=subprocess.PIPE)
    return time.perf_counter() - start


def ratio(command, against, before="true", pairs=5):
    """Median of command/against over pairs run one after the other; `before` runs untimed before each command."""
    ratios, times = [], []
    for _ in range(pairs):
        seconds(before)
        base = seconds(against)
        seconds(before)
        took = seconds(command)
        ratios.append(took / base)
        times.append(took)
    return statistics.median(ratios), statistics.median(times)


def peak_mib(command):
    """Peak resident memory of a command in MiB."""
    read, write = os.pipe()
    if os.fork() == 0:
        subprocess.run(command, shell=True, check=True, stdout=subprocess.DEVNULL)
        os.write(write, str(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss).encode())
        os._exit(0)
    os.wait()
    return int(os.read(read, 32)) / 1024


def table(rows, head):
    print("| " + " | ".join(head) + " |")
    print("|" + "---|" * len(head))
    for row in rows:
        print("| " + " | ".join(str(cell) for cell in row) + " |")
