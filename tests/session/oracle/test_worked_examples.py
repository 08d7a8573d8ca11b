#!/usr/bin/env python3
"""The oracle against worked examples: expressions over the descriptions in examples/, and what
some settings of those descriptions come to. test_worked_examples.py [EXAMPLES]"""

import functools
import pathlib
import sys
import unittest

from configuration import Model
from description import Description
from verdicts import answer

EXAMPLES = pathlib.Path(__file__).resolve().parents[3] / "examples"

INTEGER, REAL, TRUTH = "integer", "real", "truth"
UNKNOWN = "unknown"

# (description, text, kind, value or reason)
EXPRESSIONS = (
    ("fifo", "DEPTH * DATA_WIDTH gt 4096", TRUTH, "false"),
    ("fifo", "CLOG2(DEPTH + 1)", INTEGER, "5"),
    ("fifo", "CLOG2(536870912)", INTEGER, "29"),
    ("fifo", "STORAGE_BITS gt 2048", TRUTH, "false"),
    ("fifo", "CROSSES(DEPTH - 4, ALMOST_FULL_LEVEL)", TRUTH, "true"),
    ("fifo", 'RESET_STYLE == "NONE"', TRUTH, "false"),
    ("fifo", "1 + 2 * 3 ^ 2", INTEGER, "19"),
    ("fifo", "2 ^ 3 ^ 2", UNKNOWN, "fault expression-syntax"),
    ("fifo", "-2 ^ 2", INTEGER, "-4"),
    ("fifo", "-7 / 2", INTEGER, "-3"),
    ("fifo", "-7 % 2", INTEGER, "-1"),
    ("fifo", "-7 mod 2", INTEGER, "1"),
    ("fifo", "7 quot 2 * 2", INTEGER, "6"),
    ("fifo", "7 / 2.0", REAL, "3.5"),
    ("fifo", "ceil(7 / 2)", INTEGER, "3"),
    ("fifo", "1 / 0", UNKNOWN, "fault division-by-zero"),
    ("fifo", "DEPTH gt 1 || 1 / 0", TRUTH, "true"),
    ("fifo", "DEPTH lt 1 and 1 / 0 == 1", TRUTH, "false"),
    ("fifo", "0 lt DEPTH lt 32", UNKNOWN, "fault expression-syntax"),
    ("fifo", "!DEPTH == 16", UNKNOWN, "fault ill-typed"),
    ("fifo", "!( DEPTH == 16 )", TRUTH, "false"),
    ("fifo", "DEPTH Gte 16 AND 1", TRUTH, "true"),
    ("fifo", "DEPTH>=16", TRUTH, "true"),
    ("fifo", "STORAGE == AUTO", TRUTH, "true"),
    ("fifo", 'DEPTH == "16"', TRUTH, "true"),
    ("fifo", "STORAGE gt 3", UNKNOWN, "fault ill-typed"),
    ("fifo", "used_words", TRUTH, "false"),
    ("fifo", "reset", TRUTH, "true"),
    ("counter", "load", TRUTH, "false"),
    ("counter", "count == LAST_COUNT", UNKNOWN, "run-time count"),
    ("counter", "WRAPS", TRUTH, "false"),
    ("counter", "offset == 0", TRUTH, "true"),
    ("counter", "ALL_ONES(WIDTH)", INTEGER, "255"),
    ("counter", "ALL_ONES()", UNKNOWN, "fault macro-arguments"),
    ("fifo", "2 ^ 64", INTEGER, "18446744073709551616"),
    ("fifo", "2 ^ 127", UNKNOWN, "fault too-large"),
    ("ram", "( 2 ^ ( DATA_WIDTH / 8 ) ) - 1", INTEGER, "3"),
    ("ram", "output_enable == 1", TRUTH, "true"),
    ("ram", 'dq == "UNUSED"', TRUTH, "true"),
    ("ram", "WIDHT gt 1", UNKNOWN, "fault unknown-name"),
    ("ram", "( DATA_WIDTH gt 1", UNKNOWN, "fault expression-syntax"),
)

OVERRIDE = ("overridden", "warning", "fails")
RANGE = ("out-of-range", "error", "fails")
RULE = ("value-rule", "error", "fails")


@functools.cache
def model_of(name):
    return Model(Description(EXAMPLES / f"{name}_info.xml"))


def configured(name, *settings):
    pairs = [tuple(setting.split("=", 1)) for setting in settings]
    return answer(model_of(name), pairs)


def by_name(rows):
    return {row["name"]: row for row in rows}


def told(result, *severities):
    """The verdicts of these severities, without their lines."""
    return sorted((verdict["id"], verdict["severity"], verdict["result"], verdict["subject"])
                  for verdict in result["verdicts"]
                  if verdict["severity"] in (severities or ("error",)))


class Expressions(unittest.TestCase):
    def test_rows(self):
        for name, text, kind, what in EXPRESSIONS:
            with self.subTest(text=text):
                result = answer(model_of(name), expressions=[text])["expressions"][0]
                self.assertEqual(result["kind"], kind)
                if kind == UNKNOWN:
                    self.assertEqual((result["value"], result["reasons"]), (None, [what]))
                else:
                    self.assertEqual((result["value"], result["reasons"]), (what, []))

    def test_an_argument_is_a_value_and_no_text(self):
        from expression import Evaluator, Names, parse

        class Squares:
            definition = Names(None, ("n",)).resolve(parse("n * n"))

            def kind_of(self, name):
                return {"SQ": "macro", "WIDTH": "value"}.get(name)

            def arguments_of(self, _):
                return ("n",)

            def value_of(self, _):
                return 8

            def macro(self, _):
                return ("n",), self.definition, None

        world = Squares()
        tree = Names(world).resolve(parse("SQ(WIDTH + 1)"))
        self.assertEqual(Evaluator(world, None).value(tree), 81)

    def test_a_missing_parenthesis_is_told_at_the_end(self):
        from expression import Fault, parse
        with self.assertRaises(Fault) as caught:
            parse("( DATA_WIDTH gt 1")
        self.assertEqual(caught.exception.offset + 1, 18)

    def test_logarithms_of_powers_of_two_are_exact(self):
        texts, exact = [], []
        for power in range(1, 44):
            for step in (-1, 0, 1):
                number = 2**power + step
                texts.append(f"CLOG2({number})")
                exact.append(str((number - 1).bit_length()))
        results = answer(model_of("fifo"), expressions=texts)["expressions"]
        self.assertEqual([result["value"] for result in results], exact)


class Configurations(unittest.TestCase):
    def test_fifo_as_it_stands(self):
        result = configured("fifo")
        self.assertTrue(result["legal"] and result["granted"])
        self.assertEqual(by_name(result["hidden"])["LEVEL_WIDTH"]["value"], "5")
        checking = by_name(result["parameters"])["UNDERFLOW_CHECKING"]
        self.assertEqual((checking["value"], checking["source"]), ("OFF", "forced"))
        used_words = by_name(result["ports"])["used_words"]
        self.assertEqual((used_words["state"], used_words["width"]), ("UNUSED", 5))
        self.assertEqual([each["applies"] for each in result["vectors"]], [True] * 3)
        self.assertEqual({each["name"]: each["applies"] for each in result["maps"]},
                         {"simple_fifo": True, "stream_buffer": False})
        self.assertEqual(result["verdicts"], [])
        self.assertEqual(result["faults"], [])

    def test_a_deep_fifo_is_made_of_blocks(self):
        result = configured("fifo", "DEPTH=1024")
        self.assertTrue(result["legal"] and result["granted"])
        storage = by_name(result["parameters"])["STORAGE"]
        self.assertEqual((storage["value"], storage["source"]), ("BLOCK", "forced"))
        self.assertEqual(by_name(result["hidden"])["LEVEL_WIDTH"]["value"], "11")
        self.assertIs(by_name(result["maps"])["simple_fifo"]["applies"], False)

    def test_registers_are_not_that_deep(self):
        result = configured("fifo", "DEPTH=128", "STORAGE=REGISTERS")
        self.assertFalse(result["legal"])
        self.assertEqual(told(result), [(*RANGE, "DEPTH")])
        second_range = [rule.line for rule in model_of("fifo").rules["DEPTH"]][1]
        self.assertEqual(result["verdicts"][0]["line"], second_range)

    def test_wide_words_need_blocks(self):
        self.assertEqual(told(configured("fifo", "DATA_WIDTH=200")), [(*RULE, "STORAGE")])
        result = configured("fifo", "DATA_WIDTH=200", "DEPTH=32")
        self.assertTrue(result["legal"] and result["granted"])
        self.assertEqual(by_name(result["parameters"])["STORAGE"]["value"], "BLOCK")

    def test_levels_that_meet_break_three_rules(self):
        result = configured("fifo", "ALMOST_FULL_LEVEL=4")
        self.assertEqual(told(result), [("message-error", "error", "fails", ""),
                                        ("rule", "error", "fails", ""),
                                        (*RULE, "ALMOST_FULL_LEVEL")])
        self.assertEqual(len({verdict["line"] for verdict in result["verdicts"]}), 3)

    def test_a_shallow_fifo_has_no_room_for_the_level(self):
        self.assertEqual(told(configured("fifo", "DEPTH=8")), [(*RANGE, "ALMOST_FULL_LEVEL")])
        self.assertFalse(configured("fifo", "DEPTH=12")["legal"])
        self.assertTrue(configured("fifo", "DEPTH=13")["legal"])
        self.assertTrue(configured("fifo", "DEPTH=131072")["legal"])
        self.assertFalse(configured("fifo", "DEPTH=131073")["legal"])

    def test_a_large_shared_memory_has_no_register(self):
        result = configured("ram", "BUS_STYLE=SHARED", "ADDRESS_WIDTH=13")
        self.assertEqual(told(result), [(*RULE, "OUTPUT_REGISTER")])
        values = {name: (row["value"], row["source"])
                  for name, row in by_name(result["parameters"]).items()}
        self.assertEqual(values["BLOCK_TYPE"], ("LARGE", "forced"))
        self.assertEqual(values["OUTPUT_REGISTER"], ("OFF", "forced"))
        for mended in ("DATA_WIDTH=8", "ADDRESS_WIDTH=12", "BUS_STYLE=SEPARATE"):
            settings = {"BUS_STYLE": "SHARED", "ADDRESS_WIDTH": "13"}
            settings.update([mended.split("=")])
            result = configured("ram", *(f"{name}={value}" for name, value in settings.items()))
            self.assertTrue(result["legal"], mended)

    def test_odd_words_have_no_byte_enables(self):
        result = configured("ram", "DATA_WIDTH=18", "BYTE_ENABLES=ON")
        self.assertTrue(result["legal"])
        self.assertFalse(result["granted"])
        self.assertEqual(told(result, "warning"), [(*OVERRIDE, "BYTE_ENABLES")])

    def test_a_modulus_forces_the_step(self):
        result = configured("counter", "MODULUS=10", "STEP=3")
        self.assertFalse(result["granted"])
        self.assertEqual(by_name(result["parameters"])["STEP"]["value"], "1")
        self.assertEqual(by_name(result["hidden"])["LAST_COUNT"]["value"], "9")
        self.assertIs(by_name(result["maps"])["clock_divider"]["applies"], True)
        self.assertEqual([each for each in result["messages"] if each["severity"] == "error"], [])

    def test_a_modulus_of_one(self):
        self.assertEqual(told(configured("counter", "MODULUS=1"), "error", "advice"),
                         [("advice", "advice", "fails", ""), ("rule", "error", "fails", "")])

    def test_a_loadable_counter(self):
        result = configured("counter", "DIRECTION=PORT", "load=USED", "WIDTH=4")
        self.assertTrue(result["legal"] and result["granted"])
        ports = by_name(result["ports"])
        self.assertEqual((ports["up_down"]["state"], ports["data"]["state"]), ("USED", "USED"))
        self.assertEqual(ports["data"]["width"], 4)
        self.assertEqual(told(result, "warning"), [])
        self.assertIs(by_name(result["vectors"])["load_and_turn"]["applies"], True)

    def test_the_largest_modulus(self):
        largest = 2**64
        result = configured("counter", "WIDTH=64", f"MODULUS={largest}")
        self.assertTrue(result["legal"] and result["granted"])
        result = configured("counter", "WIDTH=64", f"MODULUS={largest + 1}")
        self.assertEqual(told(result), [(*RANGE, "MODULUS")])


if __name__ == "__main__":
    if len(sys.argv) > 1:
        EXAMPLES = pathlib.Path(sys.argv.pop(1))
    unittest.main()
