"""The detector's network: embeddings, bidirectional gated recurrences, one attention, three heads.

A recurrence is a QRNN (Bradbury et al., 2016) whose gates read the token and its two neighbours: one product of
matrices for all tokens at once, then c[t] = f[t] c[t-1] + (1 - f[t]) u[t], one half of the channels from left to
right, the other from right to left, and a highway around it. Tensors are [time, sentence, channel].
"""

import torch
from torch import nn
import torch.nn.functional as F

CLASSES, MENDS = 16, 29
TAGS, SHAPES, BITS, LETTERS = 64, 4, 16, 4096
FARTHEST = 40  # distance between tokens that attention tells apart


class Scan(torch.autograd.Function):
    """c[t] = f[t] * c[before t] + i[t], from the left or from the right."""

    @staticmethod
    def forward(ctx, f, i, reverse):
        order = range(f.shape[0] - 1, -1, -1) if reverse else range(f.shape[0])
        c = torch.empty_like(i)
        last = None
        for t in order:
            if last is None:
                c[t] = i[t]
            else:
                torch.addcmul(i[t], f[t], c[last], out=c[t])
            last = t
        ctx.save_for_backward(f, c)
        ctx.reverse = reverse
        return c

    @staticmethod
    def backward(ctx, grad):
        f, c = ctx.saved_tensors
        g = grad.contiguous().clone()
        steps = f.shape[0]
        df = torch.zeros_like(f)
        if ctx.reverse:
            for t in range(1, steps):
                g[t].addcmul_(f[t - 1], g[t - 1])
            df[:-1] = g[:-1] * c[1:]
        else:
            for t in range(steps - 2, -1, -1):
                g[t].addcmul_(f[t + 1], g[t + 1])
            df[1:] = g[1:] * c[:-1]
        return df, g, None


class Recurrence(nn.Module):
    def __init__(self, width):
        super().__init__()
        self.norm = nn.LayerNorm(width)
        around = torch.zeros(3, width)
        around[1] = 1.0
        self.around = nn.Parameter(around)  # weights of the token before, itself, the one after
        self.gates = nn.Linear(width, 3 * width)
        with torch.no_grad():
            self.gates.weight.normal_(0, width ** -0.5)
            self.gates.bias.zero_()
            self.gates.bias[width:2 * width] = 0.5
            self.gates.bias[2 * width:] = -0.5

    def forward(self, x):
        y = self.norm(x)
        mixed = y * self.around[1]
        if x.shape[0] > 1:
            mixed = mixed + F.pad(y[:-1], (0, 0, 0, 0, 1, 0)) * self.around[0]
            mixed = mixed + F.pad(y[1:], (0, 0, 0, 0, 0, 1)) * self.around[2]
        u, f, r = self.gates(mixed).chunk(3, -1)
        f = torch.sigmoid(f)
        i = u - f * u
        half = x.shape[-1] // 2
        left = Scan.apply(f[..., :half].contiguous(), i[..., :half].contiguous(), False)
        right = Scan.apply(f[..., half:].contiguous(), i[..., half:].contiguous(), True)
        r = torch.sigmoid(r)
        return x + r * (torch.cat((left, right), -1) - x)


class Attention(nn.Module):
    def __init__(self, width, inner=128, heads=4):
        super().__init__()
        self.norm = nn.LayerNorm(width)
        self.qkv = nn.Linear(width, 3 * inner, bias=False)
        self.out = nn.Linear(inner, width, bias=False)
        nn.init.normal_(self.qkv.weight, std=width ** -0.5)
        nn.init.zeros_(self.out.weight)
        self.heads = heads
        self.inner = inner
        self.distance = nn.Parameter(torch.zeros(heads, 2 * FARTHEST + 1))

    def forward(self, x):
        steps, count, _ = x.shape
        size = self.inner // self.heads
        q, k, v = self.qkv(self.norm(x)).view(steps, count, 3, self.heads, size).permute(2, 1, 3, 0, 4)
        at = torch.arange(steps)
        distance = (at[None] - at[:, None]).clamp(-FARTHEST, FARTHEST) + FARTHEST
        weights = torch.matmul(q, k.transpose(-1, -2)) * size ** -0.5 + self.distance[:, distance]
        y = torch.matmul(weights.softmax(-1), v)
        return x + self.out(y.permute(2, 0, 1, 3).reshape(steps, count, self.inner))


class Detector(nn.Module):
    def __init__(self, words, lemmas, width=256, embedding=128, layers=3, letters=LETTERS):
        super().__init__()
        self.word = nn.Embedding(words, embedding, sparse=True)
        self.lemma = nn.Embedding(lemmas, embedding, sparse=True)
        self.start = nn.Embedding(letters, embedding, sparse=True)
        self.end = nn.Embedding(letters, embedding, sparse=True)
        self.tag = nn.Embedding(TAGS, embedding)
        self.shape = nn.Embedding(SHAPES, embedding)
        self.bits = nn.Linear(BITS, embedding, bias=False)
        for table in (self.word, self.lemma, self.start, self.end, self.tag, self.shape):
            nn.init.normal_(table.weight, std=0.3)
        self.norm = nn.LayerNorm(embedding)
        self.project = nn.Linear(embedding, width)
        nn.init.normal_(self.project.weight, std=embedding ** -0.5)
        blocks = [Recurrence(width) for _ in range(layers)]
        blocks.insert(layers - 1, Attention(width))
        self.blocks = nn.ModuleList(blocks)
        self.final = nn.LayerNorm(width)
        self.heads = nn.Linear(width, 1 + CLASSES + MENDS)
        nn.init.zeros_(self.heads.weight)
        nn.init.zeros_(self.heads.bias)
        with torch.no_grad():
            self.heads.bias[0] = -3.0
        self.sentence = nn.Parameter(torch.tensor([1.0, 1.0]))  # of the sentence's score: factor, offset

    def sparse_parameters(self):
        return [table.weight for table in (self.word, self.lemma, self.start, self.end)]

    def dense_parameters(self):
        sparse = {id(p) for p in self.sparse_parameters()}
        return [p for p in self.parameters() if id(p) not in sparse]

    def forward(self, batch):
        """Logits [time, sentence, 1 + CLASSES + MENDS]: wrong; of which class; which change mends it."""
        x = (self.word(batch["word"]) + self.lemma(batch["lemma"]) + self.start(batch["start"]) +
             self.end(batch["end"]) + self.tag(batch["tag"]) + self.shape(batch["shape"]) + self.bits(batch["bits"]))
        x = self.project(self.norm(x))
        for block in self.blocks:
            x = block(x)
        return self.heads(self.final(x))
