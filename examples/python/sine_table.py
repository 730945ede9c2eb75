"""A sine table for a synthesizer: NumPy computes the samples; the results are a MIF and a picture.

Usage: sine_table.py MIF SVG
"""

import sys
from pathlib import Path

import numpy as np

import kvr


def main(mif: str, svg: str) -> None:
    # %% One period of 256 samples, with the largest amplitude of 16 bits with 15 fraction bits
    phase = 2 * np.pi * np.arange(256) / 256
    samples = np.sin(phase) * (1 - 2**-15)

    # %% Words
    q15 = kvr.Fixed(1, 15)
    table = kvr.from_numpy(q15.encode(samples), width=q15.width)
    table.write(mif, data_radix="dec")

    # %% The values in hardware and their error
    error = np.abs(q15.decode(kvr.read(mif).to_numpy()) - samples)
    assert error.max() <= 2**-16, "half of the last place"
    print(f"{len(table)} words of {table.width} bits, from {table.to_numpy(signed=True).min()}")

    # %% In a notebook, the last line displays the picture
    picture = table.plot(signed=True, name=mif)
    Path(svg).write_text(picture, encoding="utf-8")


if __name__ == "__main__":
    main(*sys.argv[1:])
