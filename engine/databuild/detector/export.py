#!/usr/bin/env python3
"""Makes detector.model of a training's weights.pt: int8 rows with one factor each, and the vocabulary.

  export.py WEIGHTS VOCABULARY MODEL

The factors and what is no matrix stay 32-bit floats. engine/detector/network.cpp reads the sections by these names.
"""

import sys

import numpy
import torch

import tables

VERSION = 1
TABLES = ("word", "lemma", "start", "end", "tag", "shape")


def quantised(matrix):
    """Rows as int8 and the factor of each row."""
    rows = matrix.float().numpy()
    factors = numpy.maximum(numpy.abs(rows).max(axis=1), 1e-8) / 127
    return numpy.rint(rows / factors[:, None]).astype(numpy.int8), factors.astype("<f4")


def add_matrix(sections, name, matrix):
    sections[f"detector.{name}"], sections[f"detector.{name}.scale"] = quantised(matrix)


def add_floats(sections, name, values):
    sections[f"detector.{name}"] = values.float().numpy().astype("<f4")


def add_block(sections, at, block):
    name = f"b{at}"
    add_floats(sections, f"{name}.norm", torch.stack((block["norm.weight"], block["norm.bias"])))
    if "gates.weight" in block:
        add_floats(sections, f"{name}.around", block["around"])
        add_matrix(sections, f"{name}.gates", block["gates.weight"])
        add_floats(sections, f"{name}.bias", block["gates.bias"])
    else:
        add_matrix(sections, f"{name}.qkv", block["qkv.weight"])
        add_matrix(sections, f"{name}.out", block["out.weight"])
        add_floats(sections, f"{name}.distance", block["distance"])


def main(weights, vocabulary, to):
    state = torch.load(weights)
    average = state["average"]
    width, embedding, layers = state["shape"]
    sections = dict(tables.read(vocabulary))
    sections["detector.shape.numbers"] = numpy.array([VERSION, width, embedding, layers + 1], "<u4")
    for name in TABLES:
        add_matrix(sections, name, average[f"{name}.weight"])
    add_matrix(sections, "bits", average["bits.weight"].t())
    add_floats(sections, "norm", torch.stack((average["norm.weight"], average["norm.bias"])))
    add_matrix(sections, "project", average["project.weight"])
    add_floats(sections, "project.bias", average["project.bias"])
    for at in range(layers + 1):
        prefix = f"blocks.{at}."
        add_block(sections, at, {name.removeprefix(prefix): value for name, value in average.items()
                                 if name.startswith(prefix)})
    add_floats(sections, "final", torch.stack((average["final.weight"], average["final.bias"])))
    add_matrix(sections, "heads", average["heads.weight"])
    add_floats(sections, "heads.bias", average["heads.bias"])
    tables.write(to, sections)


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    main(*sys.argv[1:])
