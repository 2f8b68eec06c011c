#!/usr/bin/python3
"""The sound gate's head on the pretrained backbone, trained and judged one
left-out source at a time.

    /usr/bin/python3 tools/classifier/head.py embed                 # the backbone over every corpus window (cached)
    /usr/bin/python3 tools/classifier/head.py runs [--recipe R]     # one head per left-out source
    /usr/bin/python3 tools/classifier/head.py final [--recipe R]    # the model to ship, calibrated
    /usr/bin/python3 tools/classifier/head.py report [--recipe R ...]   # the tables of docs/classifier.md

The backbone (backbone.py) is frozen: every corpus window (corpus.py) goes
through it once, and its 1,024-value embedding and 521 AudioSet logits are
kept (DATA/cache/NAME.yamnet.npz), and so are those of a quarter of the
windows stretched as the classifier scores a sound's start
(NAME.stretched.yamnet.npz). A head is a small network on those: one
logit per gate category. Training one costs seconds, so every source can be
left out in turn: "runs" keeps, for every window of the left-out source, the
logits of the head that never heard that source (DATA/heads/RECIPE/GROUP.npz).
Only sources whose terms allow it are trained on (corpus.LICENCES); the
others are only ever scored.

"final" trains the head on every trainable source, fits the calibration on
the left-out logits of all sources (sigmoid(a * logit + b) per category,
then b lowered until the other kinds keep within their budgets, as the
recipe says; RECIPES), folds it into the head's last layer, and writes the
weight file and its manifest. "report" prints, per source and kind of
sound, how often the gate opens with all four categories on, and with one
category on at a time (whole windows, and stretched ones): each source's
left-out logits under a calibration fitted on the other sources' left-out
logits only, beside the previous model's figures (previous-model.json).
"""
import argparse
import hashlib
import json
import os
import time

import numpy as np
import torch
from torch import nn

import backbone
import corpus
import features

HERE = os.path.dirname(os.path.abspath(__file__))
MODEL_DIR = os.path.normpath(os.path.join(HERE, "..", "..", "src", "classify", "model"))
CATEGORIES = ["guitar", "violin", "piano", "voice"]
# The gate's labels of each category, as in the app.
ACCEPTED = {"guitar": ["guitar", "electric_guitar", "bass_guitar", "acoustic_guitar", "steel_guitar_slide_guitar",
                       "guitar_tapping", "guitar_strum"],
            "violin": ["violin_fiddle"], "piano": ["piano", "electric_piano"],
            "voice": ["singing", "humming", "whistling"]}
KINDS = CATEGORIES + ["speech", "noise", "other", "tone"]
# What the table's "own minus false" counts as false openings.
FALSE_KINDS = ["speech", "noise", "other"]
# Left out together with their kin: the synthesised and diphone voices are
# one origin of speech, the two small sets of everyday noise another. The
# synthetic noises, hums and whistles are never left out; of the pure tones,
# which every head learns from, the held part is what "tones" leaves out.
LOSO_GROUPS = {name: [name] for name in corpus.SOURCE_NAMES if name not in ("festival", "espeak", "water",
                                                                               "everyday", "synthetic")}
LOSO_GROUPS.update({"festival+espeak": ["festival", "espeak"], "water+everyday": ["water", "everyday"]})
HELD_ONLY = {"tones"}
# Per category, the share of left-out windows of each kind that may open
# it: speech and everyday noise 5 %, other instruments 20 %, a pure tone
# 1 %, and (where a recipe budgets them) each of the other three
# categories 10 %, so that a gate set to
# follow only a piano does not follow the guitar beside it. Stricter budgets (a quarter of these) keep
# the gate within 5 % for speech and noise with all four categories on, but
# close it for most of what it should hear (docs/classifier.md has both).
BUDGETS = {"speech": 0.05, "noise": 0.05, "other": 0.2, "tone": 0.01}
CATEGORY_BUDGET = 0.1
# Sources that came after the model this file shipped before: the
# "shipped" recipe trains without them, as that model was trained.
LATER_SOURCES = ["weresax", "meatbass", "drums", "headroom", "arabic", "tones", "maestro", "rhodes"]
# Rendered, not recorded: only the recipes that ask for them learn from the
# General MIDI renderings, or are calibrated on them.
RENDERED_SOURCES = ["soundfonts"]
# Real singers and a real violin found after the rendered notes: only the
# recipes that ask for them learn from them, so the others stay as they were.
SINGERS_AND_VIOLIN = ["solfege", "vocadito", "iowa"]
SEED = 26
# Of every source's windows, the share also scored stretched, and the
# fewest frames of a new sound that the classifier stretches.
STRETCHED_SHARE, SHORTEST_SOUNDING = 0.25, 12


class Recipe:
    """How a head is made: its input (the embedding, or the embedding with
    YAMNet's 521 AudioSet logits), its hidden widths, its loss (one
    sigmoid per category, or one softmax over the four categories and
    "none of them", whose logit differences to "none" are linear in the
    input and ship as the four logits), the sources it may learn from, and
    whether its calibration budgets the other categories' openings, and how
    much speech it lets through."""

    def __init__(self, scores=False, hidden=(), softmax=False, later_sources=True, category_budgets=True,
                 floored=True, stretched=True, rendered=False, singers=False, speech_budget=BUDGETS["speech"]):
        self.head_input, self.hidden, self.softmax = int(scores), tuple(hidden), softmax
        self.later_sources, self.category_budgets, self.floored = later_sources, category_budgets, floored
        self.stretched, self.rendered, self.singers = stretched, rendered, singers
        self.budgets = {**BUDGETS, "speech": speech_budget}

    def uses(self, source):
        """Whether the head learns from this source (or group of sources)
        and its calibration is fitted on it."""
        if source in RENDERED_SOURCES:
            return self.rendered
        if source in SINGERS_AND_VIOLIN:
            return self.singers
        return self.later_sources or source not in LATER_SOURCES


RECIPES = {
    "shipped": Recipe(later_sources=False, category_budgets=False, floored=False, stretched=False),
    "linear": Recipe(),
    "linear+scores": Recipe(scores=True),
    "softmax": Recipe(softmax=True),
    "softmax+scores": Recipe(scores=True, softmax=True),
    "mlp+scores": Recipe(scores=True, hidden=(128,)),
    "linear+rendered": Recipe(rendered=True),
    "shipped+rendered": Recipe(later_sources=False, category_budgets=False, floored=False, stretched=False,
                               rendered=True),
    "shipped+singers": Recipe(later_sources=False, category_budgets=False, floored=False, stretched=False,
                              singers=True),
    "shipped+singers+floored": Recipe(later_sources=False, category_budgets=False, stretched=False, singers=True),
    # The head in the file: the shipped recipe with the rendered notes, the
    # real singers and violin, the acceptance floor, and speech held to 4 %
    # so that all four categories together open for it no more than before.
    "shipped+rendered+singers+floored": Recipe(later_sources=False, category_budgets=False, stretched=False,
                                               rendered=True, singers=True, speech_budget=0.04),
    # The same, also learning from windows stretched as the classifier
    # scores a sound's start.
    "shipped+rendered+singers+floored+stretched": Recipe(later_sources=False, category_budgets=False,
                                                         rendered=True, singers=True, speech_budget=0.04),
    "linear+singers": Recipe(singers=True),
    "linear+rendered+singers": Recipe(rendered=True, singers=True),
}
EPOCHS, BATCH, LEARNING_RATE, WEIGHT_DECAY, DROPOUT = 6, 256, 1e-3, 1e-2, 0.3
RIDGE, NEWTON_STEPS = 1e-3, 50  # the ridge keeps the fit finite when one side separates perfectly

# Small matrices: a second thread costs more in hand-overs than it saves.
torch.set_num_threads(1)


def stretched_windows(x, seed):
    """The windows the classifier scores while a sound starts: only the
    frames since the sound's start, `sounding` of them (the shortest the
    classifier scores up to nearly a whole window), each repeated in turn
    over the window's length. A corpus window's onset is not marked, so its
    first frames stand for the new sound; a STRETCHED_SHARE of each source's
    windows, picked at random, with their indices."""
    rng = np.random.default_rng(seed)
    index = np.sort(rng.choice(len(x), int(len(x) * STRETCHED_SHARE), replace=False))
    sounding = rng.integers(SHORTEST_SOUNDING, features.PATCH_FRAMES, size=len(index))
    rows = np.arange(features.PATCH_FRAMES)
    return index, np.stack([x[i][rows * k // features.PATCH_FRAMES] for i, k in zip(index, sounding)])


def embed(data, name, net, stretched=False):
    """The backbone's embeddings and logits for one source's windows, or for
    its stretched windows (with the indices of the windows they come from)."""
    path = os.path.join(data, "cache", name + (".stretched" if stretched else "") + ".yamnet.npz")
    if not os.path.exists(path):
        x = np.load(os.path.join(data, "cache", name + ".npz"))["x"]
        index = np.arange(len(x))
        if stretched:
            index, x = stretched_windows(x, SEED + corpus.SEED_SLOTS[name])
        embeddings, logits = [], []
        with torch.no_grad():
            for i in range(0, len(x), 128):
                e, z = net(torch.from_numpy(x[i:i + 128].astype(np.float32)))
                embeddings.append(e.numpy().astype(np.float16))
                logits.append(z.numpy())
        np.savez(path, e=np.concatenate(embeddings), z=np.concatenate(logits), index=index)
    return dict(np.load(path))


def load(data, names):
    """Every window of these sources and its stretched copies, each marked
    with its source and whether it is stretched."""
    parts = []
    for name in names:
        stored = np.load(os.path.join(data, "cache", name + ".npz"))
        for stretched in (False, True):
            part = embed(data, name, None, stretched)
            index = part.pop("index", np.arange(len(part["e"])))
            part.update({"kinds": stored["kinds"][index], "groups": stored["groups"][index],
                         "held": stored["held"][index], "stretched": np.full(len(index), stretched),
                         "sources": np.array([name] * len(index))})
            parts.append(part)
    return {key: np.concatenate([p[key] for p in parts]) for key in parts[0]}


def inputs(part, head_input):
    x = part["e"].astype(np.float32)
    return np.concatenate([x, part["z"].astype(np.float32)], axis=1) if head_input else x


class Head(nn.Module):
    """Standardised inputs, hidden layers with ReLU, one logit per category
    (and, for a softmax, one for "none of them")."""

    def __init__(self, mean, std, recipe):
        super().__init__()
        self.register_buffer("mean", torch.tensor(mean))
        self.register_buffer("std", torch.tensor(std))
        self.softmax = recipe.softmax
        widths = (len(mean),) + recipe.hidden
        layers = []
        for a, b in zip(widths, widths[1:]):
            layers += [nn.Linear(a, b), nn.ReLU(), nn.Dropout(DROPOUT)]
        outputs = len(CATEGORIES) + int(recipe.softmax)
        self.body = nn.Sequential(nn.Dropout(DROPOUT / 3), *layers, nn.Linear(widths[-1], outputs))

    def forward(self, x):
        return self.body((x - self.mean) / self.std)

    def category_logits(self, x):
        """The four logits the weight file ships: for a softmax, each
        category's logit less that of "none of them", the log-odds of the
        category against nothing the gate follows."""
        z = self(x)
        return z[:, :len(CATEGORIES)] - z[:, len(CATEGORIES):] if self.softmax else z

    def dense_layers(self, calibration=None):
        """The layers as the weight file holds them: the standardisation
        folded into the first, the softmax's "none" subtracted from the last
        and the calibration folded into it."""
        linears = [m for m in self.body if isinstance(m, nn.Linear)]
        out = []
        for i, layer in enumerate(linears):
            weight, bias = layer.weight.detach().double().numpy(), layer.bias.detach().double().numpy()
            if i == 0:
                inverse = 1.0 / self.std.double().numpy()
                bias = bias - weight @ (self.mean.double().numpy() * inverse)
                weight = weight * inverse[None, :]
            if i == len(linears) - 1:
                if self.softmax:
                    weight, bias = weight[:-1] - weight[-1:], bias[:-1] - bias[-1]
                if calibration:
                    a = np.array([calibration[c]["scale"] for c in CATEGORIES])
                    b = np.array([calibration[c]["offset"] for c in CATEGORIES])
                    weight, bias = weight * a[:, None], bias * a + b
            out.append((weight, bias))
        return out


def window_weights(kinds, sources):
    """Per window, a loss weight that makes every kind of window weigh the
    same, and within a kind every source: the head then learns what the
    guitars of five collections share rather than what the largest one
    sounds like."""
    _names, cell, cell_counts = np.unique(np.char.add(np.char.add(sources.astype(str), "/"), kinds.astype(str)),
                                          return_inverse=True, return_counts=True)
    kind_names, kind = np.unique(kinds, return_inverse=True)
    sources_per_kind = np.array([len(np.unique(cell[kind == k])) for k in range(len(kind_names))])
    weight = len(kinds) / (len(kind_names) * sources_per_kind[kind] * cell_counts[cell])
    return torch.from_numpy(weight.astype(np.float32))


def fit(part, recipe):
    """AdamW with a one-cycle schedule, binary cross-entropy per category
    (or cross-entropy over the softmax), windows weighted by
    window_weights."""
    torch.manual_seed(SEED)
    x = torch.from_numpy(inputs(part, recipe.head_input))
    kinds = part["kinds"]
    weight = window_weights(kinds, part["sources"])
    if recipe.softmax:
        y = torch.from_numpy(np.select([kinds == c for c in CATEGORIES], range(len(CATEGORIES)), len(CATEGORIES)))
    else:
        y = torch.from_numpy(np.stack([kinds == c for c in CATEGORIES], axis=1).astype(np.float32))
    head = Head(x.mean(dim=0).numpy(), x.std(dim=0).numpy() + 1e-4, recipe)
    optimiser = torch.optim.AdamW(head.parameters(), lr=LEARNING_RATE, weight_decay=WEIGHT_DECAY)
    batches = len(x) // BATCH
    schedule = torch.optim.lr_scheduler.OneCycleLR(optimiser, LEARNING_RATE, total_steps=EPOCHS * batches)
    generator = torch.Generator().manual_seed(SEED)
    head.train()
    for _epoch in range(EPOCHS):
        order = torch.randperm(len(x), generator=generator)
        for b in range(batches):
            index = order[b * BATCH:(b + 1) * BATCH]
            if recipe.softmax:
                loss = nn.functional.cross_entropy(head(x[index]), y[index], reduction="none")
            else:
                loss = nn.functional.binary_cross_entropy_with_logits(head(x[index]), y[index],
                                                                      reduction="none").mean(dim=1)
            loss = (loss * weight[index]).mean()
            optimiser.zero_grad()
            loss.backward()
            optimiser.step()
            schedule.step()
    return head.eval()


def logits_of(head, part, recipe):
    with torch.no_grad():
        return head.category_logits(torch.from_numpy(inputs(part, recipe.head_input))).numpy()


def fit_sigmoid(m, y):
    """Logistic regression of y on m: (a, b) of sigmoid(a * m + b), the
    category's windows weighing as much in all as everything else's, so
    that 0.5 is where the evidence for and against is even."""
    x = np.stack([m, np.ones_like(m)], axis=1).astype(np.float64)
    weight = np.where(y > 0, 0.5 / max(1.0, y.sum()), 0.5 / max(1.0, (1 - y).sum())) * len(y)

    def loss(w):
        z = x @ w
        return float(weight @ (np.logaddexp(0.0, z) - y * z) + 0.5 * RIDGE * w @ w)

    w = np.array([1.0, 0.0])
    for _ in range(NEWTON_STEPS):
        p = 1.0 / (1.0 + np.exp(-(x @ w)))
        gradient = x.T @ (weight * (p - y)) + RIDGE * w
        hessian = (x * (weight * p * (1 - p))[:, None]).T @ x + RIDGE * np.eye(2)
        step = np.linalg.solve(hessian, gradient)
        # Damped: a full Newton step can swing ever wider when the two
        # sides' logits lie far apart.
        for _halving in range(30):
            if loss(w - step) <= loss(w):
                break
            step = step / 2
        w -= step
    return float(w[0]), float(w[1])


def lowest_offset(values, sources_of, floor):
    """The smallest b at which values + b > 0 for at least `floor` of the
    windows, on the mean over sources (each source weighing the same, as
    the tables count)."""
    groups = [values[sources_of == n] for n in np.unique(sources_of)]

    def accepted(b):
        return np.mean([np.mean(g + b > 0) for g in groups])

    low, high = -float(np.max(values)) - 1.0, -float(np.min(values)) + 1.0
    for _ in range(40):
        middle = (low + high) / 2
        low, high = (low, middle) if accepted(middle) >= floor else (middle, high)
    return high


def fit_calibration(logits, kinds, sources_of, usable, budgets, category_budgets, floors=None):
    """Per category, sigmoid(a * logit + b), then b lowered until each
    negative kind keeps within its budget (`budgets`, by kind; with
    category_budgets, each of the other categories too), but, given
    floors, never so far that the category accepts fewer of its own
    windows than its floor: on the mean
    over the sources fitted, what the model it replaces accepted of each
    (floors, by source and category). usable
    (windows x categories) leaves out of the fit a category's windows whose
    head never heard that category at all (its only trainable source was the
    one left out): the shipped head always has, so their logits would only
    flatten the sigmoid."""
    result = {}
    for k, category in enumerate(CATEGORIES):
        m, positives = logits[:, k], usable[:, k] & (kinds == category)
        a, b = fit_sigmoid(m[usable[:, k]], positives[usable[:, k]].astype(np.float64)) if positives.any() else (0, 0)
        if a <= 0:
            # Nothing to fit (no usable windows of the category), or logits
            # that do not separate it at all: keep the head's own scale and
            # let the budgets alone place the offset.
            a, b = 1.0, 0.0
        allowed = dict(budgets)
        if category_budgets:
            allowed.update({other: CATEGORY_BUDGET for other in CATEGORIES if other != category})
        for kind, budget in allowed.items():
            negatives = kinds == kind
            if negatives.any():
                b = min(b, -float(np.quantile(a * m[negatives], 1.0 - budget)))
        if floors and positives.any():
            floor = np.mean([floors.get((source, category), 0.0) for source in np.unique(sources_of[positives])])
            b = max(b, lowest_offset(a * m[positives], sources_of[positives], floor))
        result[category] = {"scale": a, "offset": b}
    return result


def gate_openings(logits, calibration):
    """(windows x categories) booleans: which categories open at 0.5."""
    return np.stack([calibration[c]["scale"] * logits[:, k] + calibration[c]["offset"] > 0
                     for k, c in enumerate(CATEGORIES)], axis=1)


def table(kinds, opened, sources_of):
    """(source, kind, windows, share): accepted as its own category (the
    four categories) or opening any category (the other kinds)."""
    rows = []
    for source in dict.fromkeys(sources_of):
        for kind in KINDS:
            mine = (sources_of == source) & (kinds == kind)
            if mine.any():
                share = opened[mine, CATEGORIES.index(kind)].mean() if kind in CATEGORIES \
                    else opened[mine].any(axis=1).mean()
                rows.append((source, kind, int(mine.sum()), float(share)))
    return rows


def pooled(rows):
    """Per kind, the mean over sources (each source weighs the same)."""
    out = {}
    for _source, kind, _count, share in rows:
        out.setdefault(kind, []).append(share)
    return {kind: float(np.mean(v)) for kind, v in out.items()}


def one_category_rows(kinds, opened, sources_of):
    """(category, source, kind, windows, share): with only that category
    on, the share of the kind's windows that open it."""
    rows = []
    for k, category in enumerate(CATEGORIES):
        for source in dict.fromkeys(sources_of):
            for kind in KINDS:
                mine = (sources_of == source) & (kinds == kind)
                if mine.any():
                    rows.append((category, source, kind, int(mine.sum()), float(opened[mine, k].mean())))
    return rows


def one_category_means(rows):
    """Per category switched on alone, per kind, the mean over sources."""
    out = {}
    for category, _source, kind, _count, share in rows:
        out.setdefault(category, {}).setdefault(kind, []).append(share)
    return {c: {kind: float(np.mean(v)) for kind, v in kinds.items()} for c, kinds in out.items()}


# The one-category table's targets: a category accepts at least 90 % of its
# own windows, and opens for at most these shares of each other kind.
OWN_TARGET = 0.9
FALSE_TARGETS = {"speech": 0.05, "noise": 0.05, "other": 0.2, "tone": 0.0}


def shortfall(means):
    """How far a one-category table falls short of its targets, as one
    number: the largest miss, in any category's row, of its own acceptance
    or of any opening by another category (at most CATEGORY_BUDGET) or
    kind (FALSE_TARGETS). 0 meets every target; lower is better."""
    misses = [0.0]
    for category, row in means.items():
        misses.append(OWN_TARGET - row.get(category, 0.0))
        for kind, share in row.items():
            if kind != category:
                misses.append(share - (CATEGORY_BUDGET if kind in CATEGORIES else FALSE_TARGETS[kind]))
    return max(misses)


def folder(args):
    return os.path.join(args.data, "heads", args.recipe)


def embed_all(args):
    # The backbone's convolutions are large enough to share out.
    torch.set_num_threads(os.cpu_count() or 1)
    net = backbone.torch_model(backbone.load(args.data))
    for name in corpus.SOURCE_NAMES:
        started = time.time()
        if os.path.exists(os.path.join(args.data, "cache", name + ".npz")):
            count = len(embed(args.data, name, net)["e"]) + len(embed(args.data, name, net, stretched=True)["e"])
            print(f"{name}: {count} windows in {time.time() - started:.0f}s", flush=True)


def subset(part, mask):
    """The windows of `mask`; what a run heard stays as it was."""
    return {key: value if key == "heard" else value[mask] for key, value in part.items()}


def left_out_mask(everything, group):
    left = np.isin(everything["sources"], LOSO_GROUPS[group])
    return left & everything["held"] if group in HELD_ONLY else left


def runs(args):
    recipe = RECIPES[args.recipe]
    os.makedirs(folder(args), exist_ok=True)
    everything = load(args.data, corpus.SOURCE_NAMES)
    allowed = [s for s in corpus.TRAINED if recipe.uses(s)]
    for group in args.left_out:
        started = time.time()
        left = left_out_mask(everything, group)
        trained = np.isin(everything["sources"], allowed) & ~left & (recipe.stretched | ~everything["stretched"])
        held = subset(everything, left)
        head = fit(subset(everything, trained), recipe)
        heard = [category in everything["kinds"][trained] for category in CATEGORIES]
        np.savez(os.path.join(folder(args), group + ".npz"), logits=logits_of(head, held, recipe),
                 kinds=held["kinds"], sources=held["sources"], stretched=held["stretched"], heard=np.array(heard))
        print(f"{args.recipe}: left out {group} in {time.time() - started:.0f}s", flush=True)


def left_out_logits(args, recipe):
    parts = {}
    for group in LOSO_GROUPS:
        path = os.path.join(args.data, "heads", recipe, group + ".npz")
        if os.path.exists(path):
            parts[group] = dict(np.load(path))
    return parts


def calibration_from(parts, recipe, leaving=None, floors=None):
    """The calibration fitted on the left-out logits of every run but
    `leaving`'s (a recipe that never learns from some sources or from
    stretched windows is calibrated without them too, as that model was)."""
    kept = RECIPES[recipe]
    parts = [subset(p, kept.stretched | ~p["stretched"]) for g, p in parts.items()
             if g != leaving and kept.uses(g)]
    usable = [~(np.stack([p["kinds"] == c for c in CATEGORIES], axis=1) & ~p["heard"][None, :]) for p in parts]
    return fit_calibration(np.concatenate([p["logits"] for p in parts]), np.concatenate([p["kinds"] for p in parts]),
                           np.concatenate([p["sources"] for p in parts]), np.concatenate(usable),
                           kept.budgets, kept.category_budgets, floors)


def acceptance_floors(args):
    """Per source and category, the share of the category's left-out
    windows that the model this file shipped before accepts (the "shipped"
    recipe's table): a new head may open less often for what it should not
    hear, but never for less of what it should."""
    if args.data not in _FLOORS:
        if not left_out_logits(args, "shipped"):
            raise SystemExit("head.py: run the shipped recipe's runs first (head.py runs --recipe shipped)")
        _FLOORS[args.data] = {(source, kind): share for source, kind, _n, share in left_out_rows(args, "shipped")
                              if kind in CATEGORIES}
    return _FLOORS[args.data]


_FLOORS = {}


# Per data folder and recipe, each left-out group's calibration: the
# report's tables all need them, and each takes seconds to fit.
_CALIBRATIONS = {}


def left_out_openings(args, recipe, stretched):
    """Per left-out group: its windows' kinds, sources and gate openings
    under a calibration fitted on the other groups' left-out logits only;
    its whole windows, or its stretched ones."""
    parts = left_out_logits(args, recipe)
    if (args.data, recipe) not in _CALIBRATIONS:
        floors = acceptance_floors(args) if RECIPES[recipe].floored else None
        _CALIBRATIONS[(args.data, recipe)] = {group: calibration_from(parts, recipe, leaving=group, floors=floors)
                                              for group in parts}
    for group, part in parts.items():
        calibration = _CALIBRATIONS[(args.data, recipe)][group]
        mine = subset(part, part["stretched"] == stretched)
        yield mine["kinds"], gate_openings(mine["logits"], calibration), mine["sources"]


def left_out_rows(args, recipe, stretched=False):
    return [row for kinds, opened, sources_of in left_out_openings(args, recipe, stretched)
            for row in table(kinds, opened, sources_of)]


def left_out_one_category(args, recipe, stretched=False):
    return [row for kinds, opened, sources_of in left_out_openings(args, recipe, stretched)
            for row in one_category_rows(kinds, opened, sources_of)]


def report(args):
    previous = json.load(open(os.path.join(HERE, "previous-model.json")))
    columns = {recipe: left_out_rows(args, recipe) for recipe in args.recipes}
    index = {(s, k): share for s, k, _n, share in previous["rows"]}
    first = columns[args.recipes[0]]
    print("All four categories on: for the four, the share accepted as their own category; for the rest, the share"
          " that opens any.\n")
    print("| source | kind | windows | " + " | ".join(args.recipes) + " | previous model |")
    print("|---|---|---|" + "---|" * (len(args.recipes) + 1))
    for i, (source, kind, count, _share) in enumerate(first):
        shares = " | ".join(f"{columns[r][i][3] * 100:.1f}" for r in args.recipes)
        old = index.get((source, kind))
        print(f"| {source} | {kind} | {count} | {shares} | {'' if old is None else f'{old * 100:.1f}'} |")
    print()
    print("| head | " + " | ".join(KINDS) + " | own minus false |")
    print("|---|" + "---|" * (len(KINDS) + 1))
    for name, rows in list(columns.items()) + [("previous model", [r for r in previous["rows"]
                                                                     if r[0] in set(s for s, *_ in first)])]:
        mean = pooled(rows)
        score = np.mean([mean.get(c, 0) for c in CATEGORIES]) - np.mean([mean.get(k, 0) for k in FALSE_KINDS])
        print(f"| {name} | " + " | ".join(f"{mean[k] * 100:.1f}" if k in mean else "" for k in KINDS)
              + f" | {score * 100:.1f} |")
    for stretched in (False, True):
        print("\nOne category on at a time: the share of each kind's " + ("stretched windows (a sound's start)"
              if stretched else "windows") + " that open it (mean over sources).\n")
        print("| head | category on | " + " | ".join(KINDS) + " |")
        print("|---|---|" + "---|" * len(KINDS))
        for recipe in args.recipes:
            means = one_category_means(left_out_one_category(args, recipe, stretched))
            for category in CATEGORIES:
                print(f"| {recipe} | {category} | "
                      + " | ".join(f"{means[category][k] * 100:.1f}" if k in means[category] else "" for k in KINDS)
                      + " |")
            print(f"| {recipe} | largest miss | {shortfall(means) * 100:.1f} |" + " |" * (len(KINDS) - 1))


def final(args):
    recipe = RECIPES[args.recipe]
    floors = acceptance_floors(args) if recipe.floored else None
    calibration = calibration_from(left_out_logits(args, args.recipe), args.recipe, floors=floors)
    started = time.time()
    trained_on = [s for s in corpus.TRAINED if recipe.uses(s)]
    everything = load(args.data, trained_on)
    head = fit(subset(everything, recipe.stretched | ~everything["stretched"]), recipe)
    labels = backbone.class_labels(args.data)
    categories = [[labels.index(label) for label in ACCEPTED[c]] for c in CATEGORIES]
    front_end = [features.SAMPLE_RATE, features.WINDOW_LENGTH, features.HOP_LENGTH, features.FFT_LENGTH,
                 features.MEL_BANDS, features.PATCH_FRAMES, features.PATCH_HOP_FRAMES, features.MEL_MIN_HZ,
                 features.MEL_MAX_HZ, features.LOG_OFFSET]
    path = os.path.join(args.out, "sounds.bin")
    backbone.write_model(path, front_end, labels, backbone.load(args.data), categories, 1, recipe.head_input,
                         head.dense_layers(calibration))
    rows = left_out_rows(args, args.recipe)
    manifest = {
        "file": "sounds.bin", "sha256": hashlib.sha256(open(path, "rb").read()).hexdigest(),
        "labels": len(labels), "accepted_labels": ACCEPTED,
        "backbone": {"network": "YAMNet (MobileNet v1, AudioSet, 521 classes)", "licence": "Apache-2.0",
                     "source": backbone.SOURCE, "checked_against": backbone.CHECK,
                     "class_map": backbone.CLASS_MAP},
        "head": {"recipe": args.recipe, "input": ["embedding", "embedding and AudioSet logits"][recipe.head_input],
                 "hidden": list(recipe.hidden), "context_windows": 1, "epochs": EPOCHS, "batch": BATCH,
                 "learning_rate": LEARNING_RATE, "weight_decay": WEIGHT_DECAY, "dropout": DROPOUT, "seed": SEED,
                 "optimiser": "AdamW, one-cycle",
                 "loss": ("cross-entropy over a softmax of the four categories and none of them, shipped as "
                          "each category's logit less none's" if recipe.softmax else
                          "binary cross-entropy per category") + ", every kind of window weighing the same, "
                                                                 "and within a kind every source",
                 "trained_on": trained_on, "seconds": round(time.time() - started), "torch": torch.__version__},
        "corpus": {"git_sources": corpus.GIT_SOURCES, "npm_sources": corpus.NPM_SOURCES,
                   "licences": {n: l for n, (l, _t) in corpus.LICENCES.items()},
                   "command": "/usr/bin/python3 tools/classifier/corpus.py && "
                              "/usr/bin/python3 tools/classifier/head.py embed && "
                              # A floored recipe's floors are the shipped recipe's left-out table.
                              + ("/usr/bin/python3 tools/classifier/head.py runs --recipe shipped && "
                                 if recipe.floored else "")
                              + f"/usr/bin/python3 tools/classifier/head.py runs --recipe {args.recipe} && "
                              f"/usr/bin/python3 tools/classifier/head.py final --recipe {args.recipe}"},
        "calibration": {"fitted_on": "left-out logits of every source (head.py runs)", "budgets": recipe.budgets,
                        "other_categories_budget": CATEGORY_BUDGET if recipe.category_budgets else None,
                        "per_category": calibration},
        "left_out": {k: round(v * 100, 1) for k, v in pooled(rows).items()},
        "left_out_one_category": {c: {k: round(v * 100, 1) for k, v in kinds.items()}
                                  for c, kinds in one_category_means(left_out_one_category(args, args.recipe)).items()},
    }
    with open(os.path.join(args.out, "sounds.json"), "w") as f:
        json.dump(manifest, f, indent=2)
        f.write("\n")
    print("wrote", path, flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("step", choices=["embed", "runs", "final", "report"])
    parser.add_argument("--data", default=corpus.DEFAULT_DATA)
    parser.add_argument("--recipe", default="linear", choices=list(RECIPES))
    parser.add_argument("--recipes", nargs="*", default=list(RECIPES), help="report: the recipes to compare")
    parser.add_argument("--left-out", nargs="*", default=list(LOSO_GROUPS))
    parser.add_argument("--out", default=MODEL_DIR)
    args = parser.parse_args()
    {"embed": embed_all, "runs": runs, "final": final, "report": report}[args.step](args)


if __name__ == "__main__":
    main()
