"""Checks an assembly for parts that interfere or come too close, and prints a short report.

usage: clearance_report.py MODEL GAP

The arrays of the result go into numpy as they are; start from here for statistics of your own.
"""

import sys

import ktsovu


def main(path, gap):
    result = ktsovu.clearance(path, gap=gap)
    findings = [pair for pair in result.pairs() if pair.isFinding]
    for pair in findings:
        place = ", ".join(f"{x:.6g}" for x in pair.onFirst)
        print(f"{pair.kind:10} {pair.length:12.6g}  {pair.first} - {pair.second}  at ({place})")
    print(f"{len(findings)} findings in {result.pairsChecked} pairs")
    try:
        import numpy
    except ImportError:
        return
    lengths = numpy.asarray(result.lengths())
    if lengths.size:
        print(f"lengths from {lengths.min():.6g} to {lengths.max():.6g}")


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit("usage: clearance_report.py MODEL GAP")
    try:
        main(sys.argv[1], float(sys.argv[2]))
    except ktsovu.CorvixError as error:
        sys.exit(f"clearance_report.py: {error}")
