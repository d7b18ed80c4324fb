#!/usr/bin/env python3
"""Makes tests/engine/detector.tables: a small network of random weights, inputs, and what torch makes of them.

  reference.py FILE

The weights are rounded to int8 first, so that the outputs are those of the very numbers in the file.
"""

import pathlib
import sys
import tempfile

import numpy
import torch

import export
import model
import tables
import train

WORDS, LEMMAS, LETTERS, WIDTH, EMBEDDING, LAYERS = 30, 20, 16, 24, 8, 2
LENGTHS = (1, 2, 7, 30, 60)


def rounded(weights):
    for name, value in weights.items():
        if value.dim() == 2 and not name.endswith(("around", "distance")):
            rows = value.t() if name == "bits.weight" else value
            numbers, factors = export.quantised(rows)
            exact = torch.from_numpy(numbers.astype(numpy.float32) * factors[:, None])
            value.copy_(exact.t() if name == "bits.weight" else exact)


def random_inputs(count, random):
    rows = numpy.zeros(count, train.FIELDS)
    for name, limit in (("word", WORDS), ("lemma", LEMMAS), ("start", LETTERS), ("end", LETTERS), ("bits", 1 << 16),
                        ("shape", model.SHAPES), ("tag", model.TAGS)):
        rows[name] = random.randint(0, limit, count)
    return rows


def main(to):
    torch.manual_seed(1)
    random = numpy.random.RandomState(1)
    network = model.Detector(WORDS, LEMMAS, WIDTH, EMBEDDING, LAYERS, LETTERS)
    weights = {name: value + 0.3 * torch.randn(value.shape) for name, value in network.state_dict().items()}
    rounded(weights)
    network.load_state_dict(weights)
    inputs = [random_inputs(length, random) for length in LENGTHS]
    outputs = []
    with torch.no_grad():
        for rows in inputs:
            batch = {name: torch.from_numpy(rows[name].astype(numpy.int64))[:, None] for name in train.FIELDS.names}
            bits = (rows["bits"][:, None, None] >> train.BIT_NUMBERS) & 1
            batch["bits"] = torch.from_numpy(bits.astype(numpy.float32))
            outputs.append(network(batch)[:, 0].numpy())
    with tempfile.TemporaryDirectory() as folder:
        folder = pathlib.Path(folder)
        torch.save({"average": weights, "shape": (WIDTH, EMBEDDING, LAYERS)}, folder / "weights.pt")
        words = {"detector.words": b"a\nb", "detector.lemmas": b"a\nb"}
        tables.write(folder / "vocabulary", words)
        export.main(folder / "weights.pt", folder / "vocabulary", to)
    sections = tables.read(to)
    sections["reference.lengths"] = numpy.array(LENGTHS, "<u4")
    sections["reference.inputs"] = numpy.concatenate(inputs)
    sections["reference.outputs"] = numpy.concatenate(outputs).astype("<f4")
    tables.write(to, sections)


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(sys.argv[1])
