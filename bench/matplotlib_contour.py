#!/usr/bin/python3
"""What a Python user would do to draw the same contour: matplotlib's contour or contourf of the
array, 32 levels (16 of each sign, linear from 10 % to 100 % of the largest magnitude), saved as a
PNG of the same size. Used only as the yardstick of bench/compare-plot."""
import sys

import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt  # noqa: E402
import numpy as np  # noqa: E402


def main():
    if len(sys.argv) != 7:
        sys.exit("usage: matplotlib_contour.py ARRAY.f32 COLS ROWS lines|filled OUT.png PIXELS")
    path, cols, rows, mode, out, pixels = sys.argv[1:]
    cols, rows, pixels = int(cols), int(rows), int(pixels)
    data = np.fromfile(path, dtype="<f4").reshape(rows, cols)
    top = float(np.abs(data).max())
    positive = np.linspace(0.1 * top, top, 16)
    levels = np.concatenate([-positive[::-1], positive])
    fig = plt.figure(figsize=(pixels / 100, pixels / 100), dpi=100)
    ax = fig.add_axes([0.08, 0.08, 0.9, 0.9])
    # Index 0 is 0 ppm on both axes; shown as NMR shows it, high ppm at the left and at the bottom.
    x = np.linspace(0, 10, cols)
    y = np.linspace(0, 10, rows)
    if mode == "filled":
        ax.contourf(x, y, data, levels=levels, extend="both", cmap="bwr")
    else:
        ax.contour(x, y, data, levels=levels, linewidths=0.5)
    ax.invert_xaxis()
    ax.invert_yaxis()
    fig.savefig(out, dpi=100)


if __name__ == "__main__":
    main()
