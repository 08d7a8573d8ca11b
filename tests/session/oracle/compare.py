#!/usr/bin/env python3
"""Asks the engine and the oracle the same questions and prints where their answers differ, each
difference with the smallest question that shows it.

compare.py DRIVER [--expressions N] [--descriptions N] [--seed S] [--show N]

The exit status is 1 when they differ, or when the questions left out something that they should
have shown."""

import argparse
import collections
import json
import pathlib
import random
import subprocess
import sys
import tempfile
import time

sys.dont_write_bytecode = True

import generate
from configuration import Model
from description import Description, as_bytes
from expression import tokens_of
from verdicts import answer

# Of this many expressions each description is asked.
EXPRESSIONS_AT_ONCE = 100

# What every run that is long enough must have met.
FAULTS = ("expression-syntax", "unknown-name", "macro-arguments", "macro-recursion", "ill-typed",
          "division-by-zero", "domain", "too-large", "default-index", "state-word")
VERDICTS = ("not-in-list", "out-of-range", "value-rule", "needs-value", "rule", "advice",
            "message-error", "overridden", "port-width", "forces-disagree", "port-range",
            "port-needs-value", "forced-but-connected", "fault")
EXPECTED = (
    [f"fault {each}" for each in FAULTS] + [f"verdict {each}" for each in VERDICTS]
    + [f"source {each}" for each in ("given", "preset", "default", "forced", "state")]
    + [f"verdict {each} undecided" for each in ("rule", "value-rule", "out-of-range", "advice")]
    + [f"applies {each}" for each in (True, False, None)]
    + [f"legal {each}" for each in (True, False)] + [f"granted {each}" for each in (True, False)]
    + [f"set {each}" for each in ("done", "unknown-name", "not-a-setting", "not-a-number",
                                  "not-a-state", "unknown-map")]
    + ["cycle that comes to rest", "cycle without rest", "unknown value", "tied port", "message"])
EXPECTED_OF_EXPRESSIONS = (
    [f"expression {each}" for each in ("truth", "integer", "real", "text", "unknown")]
    + [f"reason {each}" for each in ("run-time", "unset", "too-deep", *FAULTS[:-2])])


class Driver:
    """The engine, asked a line and answering a line."""

    def __init__(self, program):
        self.process = subprocess.Popen([program], stdin=subprocess.PIPE, stdout=subprocess.PIPE)

    def ask(self, question):
        self.process.stdin.write(json.dumps(question).encode() + b"\n")
        self.process.stdin.flush()
        line = self.process.stdout.readline()
        if not line:
            sys.exit(f"the driver ended, status {self.process.wait()}, at {json.dumps(question)}")
        return json.loads(line)


class Question:
    """A description with settings, a map and expressions."""

    def __init__(self, tree, settings=(), map_name=None, expressions=()):
        self.tree = tree
        self.settings = list(settings)
        self.map_name = map_name
        self.expressions = list(expressions)

    def changed(self, **parts):
        now = {"tree": self.tree, "settings": self.settings, "map_name": self.map_name,
               "expressions": self.expressions}
        return Question(**{**now, **parts})


# --- Differences -------------------------------------------------------------------------------

def same_number(one, other):
    try:
        return float(one) == float(other)
    except ValueError:
        return False


def is_real(text):
    return isinstance(text, str) and any(mark in text for mark in ".e") and text[-1:].isdigit()


def same_value(one, other):
    if one == other and type(one) is type(other):
        return True
    return (is_real(one) or is_real(other)) and isinstance(one, str) and isinstance(
        other, str) and same_number(one, other)


def as_rows(rows):
    return sorted(json.dumps(row, sort_keys=True) for row in rows)


def differences(engine, oracle):
    """(what differs, the engine's, the oracle's) for every part of the answers that differs. What
    differs is told without names, so that the same difference is counted together."""
    if "error" in engine:
        return [("error", engine["error"], None)]
    found = []
    for key in sorted(set(engine) | set(oracle)):
        one, other = engine.get(key), oracle.get(key)
        if key in ("verdicts", "faults"):
            found += row_differences(key, as_rows(one), as_rows(other))
        elif key in ("parameters", "hidden", "ports", "vectors", "maps", "expressions"):
            found += field_differences(key, one, other)
        elif not same_value(one, other):
            found.append((key, one, other))
    return found


def row_differences(key, one, other):
    one, other = collections.Counter(one), collections.Counter(other)
    found = []
    for rows, side in ((one - other, "engine"), (other - one, "oracle")):
        for row in rows:
            what = json.loads(row)
            kind = f"{key}: {side} alone: {what['id']} {what.get('severity', '')} " \
                   f"{what.get('result', '')}"
            found.append((kind, row if side == "engine" else None,
                          row if side == "oracle" else None))
    return found


def field_differences(key, one, other):
    if [row.get("name") for row in one] != [row.get("name") for row in other]:
        return [(f"{key}: names", one, other)]
    found = []
    for left, right in zip(one, other):
        for field in sorted(set(left) | set(right)):
            if not same_value(left.get(field), right.get(field)):
                found.append((f"{key}: {field}", left, right))
    return found


# --- Comparing ---------------------------------------------------------------------------------

class Comparison:
    def __init__(self, program, folder, most_shown):
        self.driver = Driver(program)
        self.path = pathlib.Path(folder) / "x_info.xml"
        self.most_shown = most_shown
        self.counts = collections.Counter()
        self.kinds = collections.Counter()

    def differences_of(self, question):
        self.path.write_text(generate.written(question.tree), encoding="utf-8")
        engine = self.driver.ask({"file": str(self.path), "map": question.map_name,
                                  "settings": question.settings,
                                  "expressions": question.expressions})
        settings = [(as_bytes(name), as_bytes(value)) for name, value in question.settings]
        oracle = answer(Model(Description(self.path)), settings, question.map_name,
                        [as_bytes(each) for each in question.expressions])
        return differences(engine, as_told(oracle)), oracle

    def compare(self, question):
        found, oracle = self.differences_of(question)
        self.count(oracle)
        for kind in dict.fromkeys(kind for kind, _, _ in found):
            self.kinds[kind] += 1
            if self.kinds[kind] == 1 and len(self.kinds) <= self.most_shown:
                self.show(kind, question)

    def count(self, oracle):
        counts = self.counts
        for verdict in oracle["verdicts"]:
            counts[f"verdict {verdict['id']}"] += 1
            counts[f"verdict {verdict['id']} {verdict['result']}"] += 1
        for fault in oracle["faults"]:
            counts[f"fault {fault['id']}"] += 1
        for each in oracle["expressions"]:
            counts[f"expression {each['kind']}"] += 1
            for reason in each["reasons"]:
                kind, _, what = reason.partition(" ")
                counts[f"reason {what if kind == 'fault' else kind}"] += 1
        for row in oracle["parameters"] + oracle["ports"]:
            counts[f"source {row['source']}"] += 1
        for row in oracle["vectors"] + oracle["maps"]:
            counts[f"applies {row['applies']}"] += 1
        counts["unknown value"] += sum(row["value"] is None
                                       for row in oracle["parameters"] + oracle["hidden"])
        counts["tied port"] += sum(row["tied"] is not None for row in oracle["ports"])
        counts["message"] += len(oracle["messages"])
        counts["cycle that comes to rest"] += oracle["cycles"][0]
        counts["cycle without rest"] += oracle["cycles"][1]
        for key in ("legal", "granted", "set"):
            counts[f"{key} {oracle[key]}"] += 1

    # Showing the smallest question with the same difference.

    def show(self, kind, question):
        question = self.shrunk(kind, question)
        found, _ = self.differences_of(question)
        print(f"=== {kind}")
        print(generate.written(question.tree).partition("\n")[2].rstrip())
        if question.settings or question.map_name:
            print("settings:", question.settings, "map:", question.map_name)
        for each in question.expressions:
            print("expression:", each)
        for what, engine, oracle in found:
            print(f"  {what}\n    engine: {short(engine)}\n    oracle: {short(oracle)}")
        sys.stdout.flush()

    def still_differs(self, kind, question):
        try:
            found, _ = self.differences_of(question)
        except (ValueError, KeyError):
            return False
        return any(what == kind for what, _, _ in found)

    def shrunk(self, kind, question):
        tries = 0
        is_smaller = True
        while is_smaller and tries < 5000:
            is_smaller = False
            for smaller in smaller_questions(question):
                tries += 1
                if self.still_differs(kind, smaller):
                    question, is_smaller = smaller, True
                    break
                if tries >= 5000:
                    break
        return question


def as_told(oracle):
    """The oracle's answer as the driver tells it: UTF-8, no pairs."""
    def told(value):
        if isinstance(value, str):
            return value if value.isascii() else value.encode("latin-1").decode("utf-8", "replace")
        if isinstance(value, list):
            return [told(each) for each in value]
        if isinstance(value, dict):
            return {told(name): told(each) for name, each in value.items() if name != "cycles"}
        return value
    return told(oracle)


def short(value):
    text = json.dumps(value, ensure_ascii=False) if not isinstance(value, str) else value
    return text if len(text) <= 400 else text[:400] + " ..."


def smaller_questions(question):
    if len(question.expressions) > 1:
        yield from (question.changed(expressions=[each]) for each in question.expressions)
    if question.expressions:
        yield question.changed(expressions=[])
    if question.settings:
        yield question.changed(settings=[])
    for at in range(len(question.settings)):
        yield question.changed(settings=question.settings[:at] + question.settings[at + 1:])
    if question.map_name is not None:
        yield question.changed(map_name=None)
    yield from (question.changed(tree=tree) for tree in smaller_trees(question.tree))
    if len(question.expressions) == 1:
        yield from (question.changed(expressions=[text])
                    for text in smaller_texts(question.expressions[0]))


def smaller_trees(node):
    """The node without one of the nodes, attributes or tokens in it, large ones first."""
    tag, attributes, body = node
    if isinstance(body, list):
        for at in range(len(body)):
            yield [tag, attributes, body[:at] + body[at + 1:]]
    for name in attributes:
        if name not in ("NAME", "TYPE"):
            yield [tag, {other: value for other, value in attributes.items() if other != name}, body]
    if isinstance(body, list):
        for at, sub in enumerate(body):
            for smaller in smaller_trees(sub):
                yield [tag, attributes, [*body[:at], smaller, *body[at + 1:]]]
    elif tag != "STIM":
        yield from ([tag, attributes, text] for text in smaller_texts(body) if text)
    for name, value in attributes.items():
        if name not in ("NAME", "TYPE", "ARGUMENTS", "USAGE"):
            yield from ([tag, {**attributes, name: text}, body] for text in smaller_texts(value))


def smaller_texts(text):
    """The text without some of its tokens, or with a name or number in place of some."""
    starts = [token[2] for token in tokens_of(text)]
    if len(starts) > 400:
        starts = starts[::40] + starts[-1:]
    for length in range(len(starts) - 1, 0, -1):
        for at in range(len(starts) - length):
            begin, end = starts[at], starts[at + length]
            yield (text[:begin] + text[end:]).strip()


# --- Running -----------------------------------------------------------------------------------

def run(comparison, seed, expressions, descriptions):
    begin = time.monotonic()
    for number in range((expressions + EXPRESSIONS_AT_ONCE - 1) // EXPRESSIONS_AT_ONCE):
        source = random.Random(f"{seed} expressions {number}")
        made = generate.Descriptions(source)
        # Most of the expressions are wild ones, whatever the description.
        made.expressions.is_wild = source.random() < 0.8
        made.expressions.fault_rate = 0.01
        settings, map_name = made.settings()
        count = min(EXPRESSIONS_AT_ONCE, expressions - number * EXPRESSIONS_AT_ONCE)
        comparison.compare(Question(made.tree, settings, map_name,
                                    [made.expressions.any() for _ in range(count)]))
    for number in range(descriptions):
        made = generate.Descriptions(random.Random(f"{seed} descriptions {number}"))
        settings, map_name = made.settings()
        comparison.compare(Question(made.tree, settings, map_name))
    return time.monotonic() - begin


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("driver")
    parser.add_argument("--expressions", type=int, default=100_000)
    parser.add_argument("--descriptions", type=int, default=20_000)
    parser.add_argument("--seed", default="1")
    parser.add_argument("--show", type=int, default=30, help="most differences to show")
    given = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        comparison = Comparison(given.driver, folder, given.show)
        seconds = run(comparison, given.seed, given.expressions, given.descriptions)
    print(f"compared {given.expressions} expressions and {given.descriptions} descriptions "
          f"in {seconds:.0f} s, seed {given.seed}")
    for kind, count in sorted(comparison.counts.items()):
        print(f"{count:9} {kind}")
    missing = [kind for kind in EXPECTED * (given.descriptions >= 5000)
               + EXPECTED_OF_EXPRESSIONS * (given.expressions >= 20_000)
               if not comparison.counts[kind]]
    for kind in missing:
        print(f"never met: {kind}")
    for kind, count in comparison.kinds.most_common():
        print(f"DIFFERENT {count:7} {kind}")
    return 1 if missing or comparison.kinds else 0


if __name__ == "__main__":
    sys.exit(main())
