#!/usr/bin/env python3
"""Trains the detector's network and goes on where it stopped. See docs/engine.md, "The detector".

  train.py --databuild PROGRAM --tables FILE --folder FOLDER [--tokens N] TEXT[:WEIGHT]...

Texts (plain or .xz, one sentence a line) are unpacked into FOLDER once. FOLDER then holds the vocabulary, the
checkpoint (written every ten minutes and at the end), the learning curve and the log. Needs torch 1.13 and one thread.
"""

import argparse
import lzma
import os
import pathlib
import shutil
import subprocess
import time

import numpy
import torch
import torch.nn.functional as F

import model
import tables

PARTS = 40           # of a pass over the texts
BATCH_TOKENS = 2048
WARM_UP = 300        # steps
AVERAGE = 0.998      # of the averaged weights, which are what is measured and shipped
FIELDS = numpy.dtype([("word", "<u2"), ("lemma", "<u2"), ("start", "<u2"), ("end", "<u2"), ("bits", "<u2"),
                      ("shape", "u1"), ("tag", "u1"), ("wrong", "u1"), ("class", "u1"), ("mend", "u1"),
                      ("kind", "u1")])
BIT_NUMBERS = numpy.arange(16)


def unpack(texts, folder):
    unpacked = []
    for text in texts:
        path, _, weight = text.partition(":")
        plain = folder / pathlib.Path(path).name.removesuffix(".xz")
        if not plain.exists():
            opened = lzma.open if path.endswith(".xz") else open
            with opened(path, "rb") as source, open(f"{plain}.part", "wb") as to:
                shutil.copyfileobj(source, to)
            os.replace(f"{plain}.part", plain)
        unpacked.append(f"{plain}:{weight or 1}")
    return unpacked


class Examples:
    """The sentences of one part."""

    def __init__(self, path):
        sections = tables.read(path)
        self.tokens = numpy.frombuffer(sections["examples.tokens"], FIELDS)
        ends = numpy.frombuffer(sections["examples.ends"], "<u4").astype(numpy.int64)
        self.starts = numpy.concatenate(([0], ends[:-1]))
        self.lengths = ends - self.starts

    def batches(self, seed):
        """Numbers of sentences of one length each, in an order that hangs on the seed alone."""
        random = numpy.random.RandomState(seed)
        batches = []
        for length in numpy.unique(self.lengths):
            numbers = random.permutation(numpy.where(self.lengths == length)[0])
            size = max(1, BATCH_TOKENS // int(length))
            batches += [numbers[i:i + size] for i in range(0, len(numbers), size)]
        return [batches[i] for i in random.permutation(len(batches))]

    def batch(self, numbers):
        steps = int(self.lengths[numbers[0]])
        rows = self.tokens[self.starts[numbers][None] + numpy.arange(steps)[:, None]]
        made = {name: torch.from_numpy(rows[name].astype(numpy.int64)) for name in FIELDS.names}
        made["bits"] = torch.from_numpy(((rows["bits"][..., None] >> BIT_NUMBERS) & 1).astype(numpy.float32))
        return made


def sentence_score(wrong):
    return torch.logsumexp(wrong, 0)


def loss_of(network, batch):
    out = network(batch)
    wrong, classes, mends = out[..., 0], out[..., 1:1 + model.CLASSES], out[..., 1 + model.CLASSES:]
    target = batch["wrong"].float()
    loss = F.binary_cross_entropy_with_logits(wrong, target, reduction="sum")
    factor, offset = network.sentence
    whole = sentence_score(wrong) * factor + offset
    loss = loss + F.binary_cross_entropy_with_logits(whole, target.amax(0), reduction="sum")
    faulty = batch["wrong"] > 0
    loss = loss + 0.3 * F.cross_entropy(classes[faulty], batch["class"][faulty], reduction="sum")
    loss = loss + 0.3 * F.cross_entropy(mends[faulty], batch["mend"][faulty], reduction="sum")
    return loss / target.numel()


def measure(network, examples):
    """Recall of wrong sentences at 1, 2, 3, 5 % alarms on the part held back."""
    right, wrong = [], []
    with torch.no_grad():
        for numbers in examples.batches(0):
            batch = examples.batch(numbers)
            scores = sentence_score(network(batch)[..., 0])
            faulty = batch["wrong"].amax(0) > 0
            right += scores[~faulty].tolist()
            wrong += scores[faulty].tolist()
    right = numpy.sort(right)[::-1]
    return [float((numpy.array(wrong) > right[int(len(right) * rate)]).mean()) for rate in (.01, .02, .03, .05)]


class Training:
    def __init__(self, options):
        self.options = options
        self.folder = options.folder
        self.texts = unpack(options.texts, self.folder)
        self.vocabulary = self.folder / "vocabulary.tables"
        if not self.vocabulary.exists():
            self.databuild("detector-vocabulary", options.tables, self.vocabulary, *self.texts)
        sections = tables.read(self.vocabulary)
        rows = [sections[name].count(b"\n") + 1 for name in ("detector.words", "detector.lemmas")]
        torch.manual_seed(1)
        self.network = model.Detector(rows[0] + 4, rows[1] + 1, options.width, options.embedding, options.layers)
        self.average = {name: value.clone() for name, value in self.network.state_dict().items()}
        self.sparse = torch.optim.SparseAdam(self.network.sparse_parameters(), lr=options.rate, betas=(.9, .99))
        self.dense = torch.optim.Adam(self.network.dense_parameters(), lr=options.rate, betas=(.9, .99))
        self.step = self.tokens = self.part = self.done = 0  # `done` batches of the part
        self.warm = 0                                        # steps since the optimisers were fresh
        self.seconds = 0.0                                   # of earlier runs
        self.load()
        self.begun = time.monotonic()

    def databuild(self, *arguments):
        subprocess.run([self.options.databuild, *map(str, arguments)], check=True)

    def load(self):
        checkpoint, start = self.folder / "checkpoint.pt", self.options.start
        if checkpoint.exists():
            state = torch.load(checkpoint)
            self.network.load_state_dict(state["network"])
            self.average = state["average"]
            self.sparse.load_state_dict(state["sparse"])
            self.dense.load_state_dict(state["dense"])
            self.step, self.tokens, self.part, self.done, self.warm, self.seconds = state["place"]
        elif start is not None:
            state = torch.load(start)
            self.average = {name: value.float() for name, value in state["average"].items()}
            self.network.load_state_dict(self.average)
            self.step, self.tokens, self.part = state["step"], state["tokens"], state["part"]

    def all_seconds(self):
        return self.seconds + time.monotonic() - self.begun

    def save(self):
        state = {"network": self.network.state_dict(), "average": self.average, "sparse": self.sparse.state_dict(),
                 "dense": self.dense.state_dict(),
                 "place": (self.step, self.tokens, self.part, self.done, self.warm, self.all_seconds())}
        torch.save(state, self.folder / "checkpoint.part")
        os.replace(self.folder / "checkpoint.part", self.folder / "checkpoint.pt")
        small = {"average": {name: value.half() for name, value in self.average.items()},
                 "shape": (self.options.width, self.options.embedding, self.options.layers),
                 "step": self.step, "tokens": self.tokens, "part": self.part + 1}
        torch.save(small, self.folder / "weights.part")
        os.replace(self.folder / "weights.part", self.folder / "weights.pt")

    def examples(self, part):
        path = self.folder / ("held_back.tables" if part < 0 else "examples.tables")
        if part >= 0 or not path.exists():
            self.databuild("detector-examples", self.options.tables, self.vocabulary, part, PARTS, path, *self.texts)
        return Examples(path)

    def learn(self, batch):
        tokens = batch["wrong"].numel()
        left = max(0, 1 - self.tokens / self.options.tokens)
        decay = min(1.0, max(0.02, left / self.options.decay)) if self.options.decay > 0 else 1.0
        for optimiser in (self.sparse, self.dense):
            for group in optimiser.param_groups:
                group["lr"] = self.options.rate * decay * min(1.0, (self.warm + 1) / WARM_UP)
        self.sparse.zero_grad()
        self.dense.zero_grad()
        loss = loss_of(self.network, batch)
        loss.backward()
        torch.nn.utils.clip_grad_norm_(self.network.dense_parameters(), 1.0)
        self.sparse.step()
        self.dense.step()
        self.step += 1
        self.warm += 1
        self.tokens += tokens
        if self.step % 10 == 0:
            keep = min(AVERAGE, (1 + self.step) / (10 + self.step)) ** 10
            for name, value in self.network.state_dict().items():
                self.average[name].mul_(keep).add_(value, alpha=1 - keep)
        return float(loss.detach()) * tokens, tokens

    def report(self, held_back):
        own = {name: value.clone() for name, value in self.network.state_dict().items()}
        self.network.load_state_dict(self.average)
        recall = measure(self.network, held_back)
        self.network.load_state_dict(own)
        with open(self.folder / "curve.tsv", "a") as file:
            print(self.tokens, round(self.all_seconds()), *(f"{share:.4f}" for share in recall), sep="\t", file=file)

    def run(self):
        held_back = self.examples(-1)
        last_saved = time.monotonic()
        while self.tokens < self.options.tokens:
            examples = self.examples(self.part)
            batches = examples.batches(self.part)
            total = count = 0
            before = time.monotonic()
            for numbers in batches[self.done:]:
                loss, tokens = self.learn(examples.batch(numbers))
                total += loss
                count += tokens
                self.done += 1
                now = time.monotonic()
                if self.step % 100 == 0:
                    print(f"step {self.step} tokens {self.tokens / 1e6:.2f} M loss {total / count:.4f} "
                          f"{count / (now - before):.0f} tokens/s", flush=True)
                    total = count = 0
                    before = now
                if now - last_saved > 600:
                    self.save()
                    self.report(held_back)
                    last_saved = before = time.monotonic()
                if self.tokens >= self.options.tokens:
                    break
            else:
                self.part += 1
                self.done = 0
        self.save()
        self.report(held_back)


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", 1)[0])
    parser.add_argument("--databuild", required=True, help="the program databuild")
    parser.add_argument("--tables", required=True, help="tolvex.tables with lexicon, tagger and n-grams")
    parser.add_argument("--folder", required=True, type=pathlib.Path, help="where the training lives")
    parser.add_argument("--start", help="weights.pt of an earlier training, where there is no checkpoint")
    parser.add_argument("--tokens", type=float, default=200e6, help="ends after so many")
    parser.add_argument("--decay", type=float, default=0, help="last share of the tokens, in which the rate falls")
    parser.add_argument("--rate", type=float, default=2e-3)
    parser.add_argument("--width", type=int, default=256)
    parser.add_argument("--embedding", type=int, default=128)
    parser.add_argument("--layers", type=int, default=3)
    parser.add_argument("texts", nargs="+", metavar="TEXT[:WEIGHT]")
    options = parser.parse_args()
    torch.set_num_threads(1)
    options.folder.mkdir(parents=True, exist_ok=True)
    Training(options).run()


if __name__ == "__main__":
    main()
