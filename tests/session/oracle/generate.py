"""Random expressions and descriptions, the same for the same seed.

A description is a tree of nodes [tag, attributes, body], its body a text or a list of nodes."""

from xml.sax.saxutils import escape, quoteattr

COMPARISONS = ("==", "!=", "<", "<=", ">", ">=", "lt", "lte", "gt", "gte", "LT", "Gte")
JUNCTIONS = ("and", "or", "&&", "||", "AND", "Or")
SUMS = ("+", "-", "*", "+", "-", "*", "/", "%", "mod", "div", "quot", "MOD", "^")
FUNCTIONS = ("ceil", "floor", "abs", "min", "max", "log", "log2")
WORDS = ("AUTO", "FAST", "SMALL", "ON", "OFF", "UNUSED", "USED", "8", "16", "TRUE", "x y")
STATES = ("USED", "UNUSED", "VARIABLE", "CONSTANT")
LARGE = (2**31, 2**53 + 1, 2**63 - 1, 2**63, 2**64, 2**100, 2**126, 2**127 - 1, 2**127, 10**39)
REALS = ("0.5", "2.0", "3.25", "0.1", "0.3", "7.999999999999999", "1000000.5", "123456789012345.5",
         "16.0", "0.0")
# Texts that are refused, and some that only look as if.
ODD = ("=", "/=", "<>", "&", "|", "#", "**", "'x'", "xor", "?:", "0x10", "1.", ".5", "5x", '"open',
       "<", "1 2", ")", "(", "()", "f(", ",", "$a", "!", "not", "- -", "\\", "@", ";")


class Expressions:
    """Random texts over the names of a description. "names" holds the lists numbers, texts, ports
    and macros, the last of (name, number of arguments, whether a condition)."""

    def __init__(self, random, names, fault_rate=0.01, is_wild=True):
        self.random = random
        self.names = names
        self.fault_rate = fault_rate
        self.is_wild = is_wild  # numbers, texts, truths and ports also stand where others belong

    def condition(self, names=None, depth=3):
        return self.with_faults(self.truth(names or self.names, depth))

    def value(self, names=None, depth=3):
        return self.with_faults(self.number(names or self.names, depth))

    def any(self, names=None):
        if self.random.random() < 0.03:
            return self.with_faults(self.deep())
        return self.random.choice((self.condition, self.value, self.value))(
            names, self.random.randint(0, 5))

    def deep(self):
        """A text of about as many open operators as are allowed."""
        levels = self.random.randint(250, 260)
        opened = [self.random.choice(("(", "(", "-", "!", "1 + (", "2 * (", "1 ^ ("))
                  for _ in range(levels)]
        opened = opened if self.random.random() < 0.5 else [self.random.choice(("(", "abs("))] * levels
        closed = sum(each.count("(") for each in opened)
        return "".join(opened) + "1" + ")" * closed

    def with_faults(self, text):
        if self.random.random() >= self.fault_rate:
            return text
        at = self.random.randint(0, len(text))
        change = self.random.randint(0, 3)
        if change == 0:
            return text[:at] + " " + self.random.choice(ODD) + " " + text[at:]
        if change == 1:
            return text[:at] + text[at + 1:] or " "
        if change == 2:
            return f"{text} + NOBODY"
        return f"{text} == log({self.random.choice(('', '1, 2', 'NOBODY, 1, NOBODY'))})"

    def space(self):
        return self.random.choice((" ", " ", " ", " ", "  ", "\t"))

    def joined(self, left, operator, right):
        space = self.space()
        is_word = operator.isalpha()
        if not is_word and self.random.random() < 0.3:
            space = ""
        text = f"{left}{space}{operator}{space}{right}"
        return f"( {text} )" if self.random.random() < 0.6 else text

    def truth(self, names, depth):
        chance = self.random.random()
        if depth <= 0 or chance < 0.05:
            return self.truth_leaf(names)
        if chance < 0.35:
            return self.joined(self.truth(names, depth - 1), self.random.choice(JUNCTIONS),
                               self.truth(names, depth - 1))
        if chance < 0.45:
            return f"{self.random.choice(('!', 'not ', '! '))}( {self.truth(names, depth - 1)} )"
        if chance < 0.60 and names["texts"]:
            return self.text_comparison(names)
        if chance < 0.70 and names["ports"]:
            return self.port_comparison(names)
        if chance < 0.73:
            return self.branches(names, depth)
        if chance < 0.76 and self.is_wild:
            return self.number(names, depth - 1)
        return self.joined(self.number(names, depth - 1), self.random.choice(COMPARISONS),
                           self.number(names, depth - 1))

    def branches(self, names, depth):
        condition = self.truth(names, depth - 1)
        text = f"( ( {condition}) and ( {self.truth(names, depth - 1)} ) ) || "
        if self.random.random() < 0.5:
            return text + f"( !( {condition} ) )"
        return text + f"( !( {condition} ) and ( {self.truth(names, depth - 1)} ) )"

    def truth_leaf(self, names):
        choices = ["TRUE", "FALSE", "1", "0", "ON", "OFF"] + names["ports"] * 2
        choices += self.calls(names, True)
        return self.random.choice(choices)

    def text_comparison(self, names):
        word = self.random.choice(WORDS)
        if self.random.random() < (0.7 if self.is_wild else 0.95) or not word.isalpha():
            word = f'"{word}"'
        other = self.random.choice(names["texts"] + (names["numbers"] if self.is_wild else []))
        sides = [other, word] if self.random.random() < 0.8 else [word, other]
        operator = self.random.choice(("==", "!=", "==", "!=", "gt") if self.random.random() < 0.05
                                      else ("==", "!="))
        return self.joined(sides[0], operator, sides[1])

    def port_comparison(self, names):
        port = self.random.choice(names["ports"])
        if self.random.random() < 0.5:
            word = self.random.choice(STATES)
            word = f'"{word}"' if self.random.random() < 0.6 else word
            port = f"({port})" if self.random.random() < 0.2 else port
            sides = [port, word] if self.random.random() < 0.8 else [word, port]
            return self.joined(sides[0], self.random.choice(("==", "!=")), sides[1])
        return self.joined(port, self.random.choice(COMPARISONS), self.number(names, 1))

    def calls(self, names, is_condition):
        """A call of one of the macros, when there are any."""
        fitting = [macro for macro in names["macros"] if macro[2] == is_condition]
        return [self.call(names, self.random.choice(fitting))] if fitting else []

    def call(self, names, macro):
        name, count, _ = macro
        if not count:
            return name if self.random.random() < 0.8 else f"{name}()"
        if self.random.random() < 0.01:
            count += 1
        if self.random.random() < 0.8:
            names = {**names, "macros": []}
        given = [self.argument(names) for _ in range(count)]
        return f"{name}({', '.join(given)})"

    def argument(self, names):
        if names["ports"] and self.random.random() < (0.15 if self.is_wild else 0.03):
            return self.random.choice(names["ports"])
        if self.is_wild and self.random.random() < 0.05:
            return self.truth(names, 1)
        return self.number(names, 1)

    def number(self, names, depth):
        chance = self.random.random()
        if depth <= 0 or chance < 0.25:
            return self.number_leaf(names) if self.is_wild else self.calm_leaf(names)
        if chance < 0.33:
            return self.function(names, depth)
        if chance < 0.40:
            sign = self.random.choice(("-", "-", "+", "- -", "-+"))
            return f"{sign}{self.number(names, depth - 1)}"
        if chance < 0.41 and self.is_wild:
            return self.truth(names, depth - 1)
        operator = self.random.choice(SUMS if self.is_wild or chance > 0.9 else "+-*")
        right = self.number(names, 0 if operator == "^" else depth - 1)
        left = self.number(names, depth - 1)
        if operator == "^":
            right = self.random.choice((right, str(self.random.randint(0, 9)), "-1", "0.5", "130"))
            left = f"( {left} )"
        return self.joined(left, operator, right)

    def function(self, names, depth):
        name = self.random.choice(FUNCTIONS if self.is_wild else ("min", "max", "abs", "floor"))
        count = 1 if name not in ("min", "max") else self.random.choice((2, 2, 2, 3))
        given = [self.number(names, depth - 1) for _ in range(count)]
        return f"{name}{self.random.choice(('', ' '))}({', '.join(given)})"

    def calm_leaf(self, names):
        chance = self.random.random()
        if chance < 0.5 and names["numbers"]:
            return self.random.choice(names["numbers"])
        if chance < 0.52 and names["ports"]:
            return self.random.choice(names["ports"])
        if chance < 0.65 and names["macros"]:
            return self.random.choice(self.calls(names, False) or ["3"])
        if chance < 0.653:
            return self.random.choice(REALS)
        return str(self.random.randint(0, 20))

    def number_leaf(self, names):
        chance = self.random.random()
        if chance < 0.45 and names["numbers"]:
            return self.random.choice(names["numbers"])
        if chance < 0.52:
            return self.random.choice(REALS)
        if chance < 0.56:
            return str(self.random.choice(LARGE) + self.random.randint(-2, 2))
        if chance < 0.60 and names["ports"]:
            return self.random.choice(names["ports"])
        if chance < 0.62 and names["texts"]:
            return self.random.choice(names["texts"])
        if chance < 0.64:
            return self.random.choice(('"8"', '"-3"', '"08"', '"2.5"', '"abc"', '""', '"-0"'))
        if chance < 0.75 and names["macros"]:
            return self.random.choice(self.calls(names, False) or ["3"])
        return str(self.random.randint(0, 20))


# --- Descriptions ------------------------------------------------------------------------------

class Descriptions:
    """Makes one random description and settings for it."""

    def __init__(self, random):
        self.random = random
        self.is_free = random.random() < 0.2  # every text may name everything, so that there are cycles
        self.fault_rate = 0.01 if random.random() < 0.5 else 0.0
        self.is_wild = random.random() < 0.3
        self.all = {"numbers": [], "texts": [], "ports": [], "macros": []}
        self.macros = {}
        self.kinds = {}
        self.items_of = {}
        self.fixed_ports = set()
        self.outputs = set()
        self.expressions = Expressions(random, self.all, self.fault_rate, self.is_wild)
        self.tree = self.make()

    def often(self, chance):
        return self.random.random() < chance

    def few(self, most):
        return range(self.random.randint(0, most))

    def make(self):
        names = self.names()
        for name, kind in names:
            self.enter(name, kind)
        everything, self.all_names = self.all, self.all
        known = {"numbers": [], "texts": [], "ports": [], "macros": []}
        sections = {"INTEGER": [], "STRING": [], "hidden": [], "port": [], "macro": []}
        for name, kind in names:
            visible = everything if self.is_free else {key: list(each)
                                                       for key, each in known.items()}
            sections[kind].append(self.object_node(name, kind, visible))
            self.enter_into(known, name, kind)
        parameters = sections["INTEGER"] + sections["STRING"]
        self.random.shuffle(parameters)
        parts = [["PARAMETERS", {}, parameters], ["PORTS", {}, sections["port"]],
                 ["HIDDEN_PARAMETERS", {}, sections["hidden"]], ["MACROS", {}, sections["macro"]],
                 ["RULES", {}, [self.rule() for _ in self.few(3 if self.is_wild else 1)]],
                 [self.random.choice(("MESSAGES", "MSGS")), {},
                  [self.message() for _ in self.few(3)]],
                 ["WAVE_DATA", {}, [self.wave(f"w{number}") for number in self.few(2)]],
                 ["HTML_TEXT", {}, [["INTRO", {}, self.pieces(2)]] if self.often(0.3) else []]]
        self.random.shuffle(parts)
        parts = [part for part in parts if part[2]]
        parts += self.further_rules(parameters, sections["port"])
        self.maps = [f"m{number}" for number in self.few(2)]
        if self.maps:
            parts.append(["WIZARD_DATA", {}, self.map_nodes()])
        return ["ROOT", {}, parts]

    def names(self):
        names = [(f"A{number}", "INTEGER") for number in range(self.random.randint(1, 4))]
        names += [(f"S{number}", "STRING") for number in self.few(3)]
        names += [(f"H{number}", "hidden") for number in self.few(3)]
        names += [(f"p{number}", "port") for number in self.few(4)]
        names += [(f"M{number}", "macro") for number in self.few(4)]
        if self.often(0.05):
            names.append((self.random.choice(("Größe", "_x$1", "a0", "UNUSED", "AUTO", "TRUE")),
                          "INTEGER"))
        if self.often(0.03):
            names.append((self.random.choice(("min", "log", "AUTO", "CONSTANT")), "macro"))
        self.random.shuffle(names)
        return names

    def enter(self, name, kind):
        self.kinds[name] = kind
        self.enter_into(self.all, name, kind)

    def enter_into(self, known, name, kind):
        if kind in ("INTEGER", "hidden"):
            known["numbers"].append(name)
        elif kind == "STRING":
            known["texts"].append(name)
        elif kind == "port":
            known["ports"].append(name)
        else:
            if name not in self.macros:
                self.macros[name] = (name, self.random.choice((0, 0, 1, 2)), self.often(0.5))
            known["macros"].append(self.macros[name])

    def object_node(self, name, kind, visible):
        if kind == "macro":
            return self.macro_node(name, visible)
        if kind == "port":
            return self.port_node(name, visible)
        attributes = {"NAME": name} if kind == "hidden" else {"NAME": name, "TYPE": kind}
        self.add_default(attributes, kind, visible)
        own = dict(visible)
        own["texts" if kind == "STRING" else "numbers"] = (
            visible["texts" if kind == "STRING" else "numbers"] + [name])
        body = [self.force(kind, own, visible, attributes) for _ in range(self.count_of_forces())]
        if kind != "hidden":
            body += self.judging_rules(name, kind)
        return ["PARAMETER", attributes, body]

    def count_of_forces(self):
        return self.random.choice((0, 0, 0, 1, 1, 2, 3))

    def add_default(self, attributes, kind, visible):
        if kind == "hidden" and not self.is_wild:
            attributes["VALUE"] = self.random.choice((str(self.random.randint(0, 20)),
                                                      self.expressions.value(visible, 1)))
            return
        if kind == "hidden":
            attributes["VALUE"] = self.random.choice((
                str(self.random.randint(0, 20)), "ASYNCHRONOUS", "ON", "2.5", '"text"', "TRUE",
                self.expressions.value(visible, 2), self.expressions.value(visible, 2), "A B", ""))
            return
        chance = self.random.random()
        items = self.items(kind)
        self.items_of[attributes["NAME"]] = items if chance < 0.35 else []
        if chance < 0.35:
            attributes["VALUE"] = ";".join(items)
            if self.often(0.7):
                attributes["DEFAULT_VALUE_INDEX"] = str(self.random.choice(
                    (0, 0, 1, len(items) - 1, len(items)) if self.often(0.1)
                    else range(len(items))))
        elif chance < 0.60:
            attributes["VALUE"] = self.plain(kind)
        elif chance < 0.92:
            attributes["DEFAULT_VALUE"] = (self.expressions.value(visible, 1)
                                           if kind == "INTEGER" and self.often(0.1)
                                           else self.plain(kind))

    def items(self, kind):
        if kind == "INTEGER":
            return [str(self.random.randint(0, 20)) for _ in range(self.random.randint(1, 5))]
        return self.random.sample(WORDS, self.random.randint(1, 5))

    def plain(self, kind):
        if kind == "STRING":
            return self.random.choice(WORDS)
        if self.often(0.05):
            return str(self.random.choice(LARGE[:-2]))
        return str(self.random.randint(-3, 40))

    def condition_attribute(self, own):
        return {self.random.choice(("IF", "WHEN", "IF", "IF", "WHEN_CMD")):
                self.expressions.condition(own, self.random.randint(0, 2))}

    def force(self, kind, own, visible, declared):
        attributes = {self.random.choice(("V", "TO", "THEN")): self.forced_value(kind, own, declared)}
        if self.often(0.85):
            attributes.update(self.condition_attribute(own))
        if self.often(0.2):
            attributes["ELSE"] = self.forced_value(kind, own, declared)
        return self.element("FORCE_VALUE", attributes)

    def element(self, tag, attributes):
        """The texts of a FORCE_VALUE or STATE as attributes or as sub-elements."""
        if self.often(0.7):
            return [tag, attributes, []]
        order = sorted(attributes.items(), key=lambda pair: pair[0] == "WHEN_CMD")
        return [tag, {}, [[name, {}, text] for name, text in order]]

    def forced_value(self, kind, own, declared):
        if kind == "STRING":
            choices = declared.get("VALUE", "AUTO").split(";") * 5 + list(WORDS)
            choices += ['"AUTO"'] + own["texts"] + own["numbers"][:1] + own["ports"][:1]
            return self.random.choice(choices)
        if self.items_of.get(declared.get("NAME")) and self.often(0.8):
            return self.random.choice(self.items_of[declared["NAME"]])
        if kind == "INTEGER" and self.often(0.4):
            return str(self.random.randint(0, 20))
        if kind == "hidden" and self.is_wild and self.often(0.2):
            return self.random.choice(("SYNCHRONOUS", '"a"', "A B", "TRUE", "ON"))
        return self.expressions.value(own, 2)

    def judging_rules(self, name, kind):
        rules = []
        for chance in (0.35, 0.1):
            # Of a STRING that is no number a range is of the wrong type.
            if self.often(chance if kind == "INTEGER" else chance / 20):
                rules.append(self.range_node("FORCE_RANGE"))
        if self.often(0.3 if self.is_wild else 0.12):
            rules.append(self.value_rule())
        return rules

    def range_node(self, tag):
        attributes = {"MAX": self.bound(20, 60 if self.is_wild else 300)}
        if self.often(0.8):
            attributes["MIN"] = self.bound(-9 if self.is_wild else -100, 1)
        if self.often(0.5):
            attributes.update(self.condition_attribute(self.all))
        return [tag, attributes, []]

    def bound(self, low, high):
        if self.often(0.6 if self.is_wild else 0.8):
            return str(self.random.randint(low, high))
        return self.expressions.value(self.all, 1)

    def value_rule(self):
        if self.often(0.4):
            return ["VALUE_RULE", {}, self.expressions.condition(self.all, 2)]
        parts = [["IF", {}, self.expressions.condition(self.all, 2)],
                 ["THEN", {}, self.expressions.condition(self.all, 1)]]
        if self.often(0.5):
            parts.append(["ELSE", {}, self.expressions.condition(self.all, 1)])
        return ["VALUE_RULE", {}, parts]

    def port_node(self, name, visible):
        kind = self.random.choice(("INPUT", "INPUT", "INPUT", "OUTPUT", "BIDIR", "BURIED"))
        attributes = {"NAME": name, "TYPE": kind}
        if self.often(0.7):
            attributes["USAGE"] = self.random.choice(STATES)
        if self.often(0.15):
            attributes["CNX_TYPE"] = "USED_PORT"
        if kind == "BURIED" or "CNX_TYPE" in attributes:
            self.fixed_ports.add(name)
        if kind == "OUTPUT":
            self.outputs.add(name)
        if self.often(0.4):
            fewest = 0 if self.is_wild else 1
            attributes["WIDTH"] = (str(self.random.randint(fewest, 9)) if self.often(0.7)
                                   else self.expressions.value(self.all, 1))
        if self.often(0.05):
            attributes["WIDTH2D"] = self.bound(0, 4)
        if self.often(0.4):
            attributes["DEFAULT_VALUE"] = (str(self.random.randint(-3, 9)) if self.often(0.7)
                                           else self.expressions.value(visible, 1))
        own = {**visible, "ports": visible["ports"] + [name]}
        body = [self.state(own if self.often(0.3) else visible)
                for _ in range(self.random.choice((0, 0, 1, 1, 2)))]
        body += [self.force("INTEGER", visible, visible, {})
                 for _ in range(self.random.choice((0, 0, 0, 1, 2)))]
        body += [self.range_node(tag) for tag in ("CONSTANT_RANGE", "FORCE_RANGE")
                 if self.often(0.2)]
        return ["PORT", attributes, body]

    def state(self, own):
        attributes = {"V": self.state_word()}
        if self.often(0.9):
            attributes.update(self.condition_attribute(own))
        if self.often(0.3):
            attributes["ELSE"] = self.state_word()
        return self.element("STATE", attributes)

    def state_word(self):
        chance = self.random.random()
        if chance < self.fault_rate * 2:
            return "SOMETIMES"
        return str(self.random.randint(0, 3)) if chance > 0.93 else self.random.choice(STATES)

    def macro_node(self, name, visible):
        _, count, is_condition = self.macros[name]
        arguments = [f"x{number}" for number in range(count)]
        visible = {key: list(each) for key, each in visible.items()}
        if not self.is_free or self.often(0.9):
            visible["macros"] = [each for each in visible["macros"] if each[0] != name]
            if self.is_free:
                visible["macros"] = []
        visible["numbers"] = arguments * 3 + visible["numbers"]
        make = self.expressions.condition if is_condition else self.expressions.value
        definition = make(visible, 2)
        attributes = {"NAME": name}
        if arguments:
            attributes["ARGUMENTS"] = ", ".join(arguments)
        if self.often(0.5):
            return ["MACRO", {**attributes, "DEFINITION": definition}, []]
        return ["MACRO", attributes, [["DEFINITION", {}, definition]]]

    def rule(self):
        attributes = {"REQUIRED_RULE": "OFF"} if self.often(0.3) else {}
        return [self.random.choice(("RULE", "CONDITION")), attributes,
                self.expressions.condition(self.all, 3)]

    def message(self):
        severity = self.random.choice(("ERROR", "WARNING", "INFO", "CRITICAL_WARNING")
                                      + ("ERROR",) * 2 * self.is_wild)
        tag = self.random.choice(("MESSAGE", "MSG"))
        if self.often(0.1):
            return [tag, {"TYPE": severity}, "always"]
        parts = [[self.random.choice(("IF", "WHEN")), {}, self.expressions.condition(self.all, 2)],
                 [self.random.choice(("THEN", "TEXT")), {}, "then"]]
        if self.often(0.3):
            parts.append(["ELSE", {}, "else"])
        return [tag, {"TYPE": severity}, parts]

    def wave(self, name):
        body = []
        if self.often(0.5):
            body.append(["WAVE_CONDITION", {}, self.expressions.condition(self.all, 2)])
        if self.often(0.3):
            body.append(["DESCRIPTION", {}, self.pieces(1)])
        for number in self.few(4):
            body += self.group(number)
        return [self.random.choice(("WAVE", "CUSTOM_VECTOR")), {"NAME": name}, body]

    def group(self, number):
        if self.often(0.4):
            return [["STIM", {}, f"force a {number} 0"]]
        parts = [["IF", {}, self.expressions.condition(self.all, 2)],
                 ["THEN", {}, self.commands(f"then{number}", 1, 2)]]
        if self.often(0.5):
            parts.append(["ELSE", {}, self.commands(f"else{number}", 1, len(parts[1][2]))])
        return parts

    def commands(self, word, fewest, most):
        return [["STIM", {}, f"force {word} {number} 0"]
                for number in range(self.random.randint(fewest, most))]

    def pieces(self, depth):
        pieces = []
        for _ in range(self.random.randint(1, 3)):
            if self.often(0.4):
                pieces.append(["T", {}, "text"])
                continue
            pieces.append(["IF", {}, self.expressions.condition(self.all, 2)])
            is_nested = depth > 0 and self.often(0.3)
            pieces.append(["THEN", {}, self.pieces(depth - 1) if is_nested else "then"])
            if self.often(0.5):
                pieces.append(["ELSE", {}, "else"])
        return pieces

    def further_rules(self, parameters, ports):
        """Rules of declared objects in sections of their own."""
        sections = []
        for tag, nodes in (("PARAMETER_RULES", parameters), ("PORT_RULES", ports)):
            if nodes and self.often(0.3):
                node = self.random.choice(nodes)
                body, node[2] = node[2], []
                sections.append([tag, {}, [[node[0], {"NAME": node[1]["NAME"]}, body]]])
        return sections

    def map_nodes(self):
        nodes = []
        for name in self.maps:
            body = [self.map_object() for _ in range(self.random.randint(1, 4))]
            if self.often(0.6):
                body.append(["WIZARD_CONDITION", {}, self.expressions.condition(self.all, 2)])
            nodes.append(["WIZARD_MAP", {"NAME": name}, body])
        if self.often(0.4):
            nodes.insert(self.random.randint(0, len(nodes)), self.map_object())
        return nodes

    def map_object(self):
        settable = [(name, kind) for name, kind in self.kinds.items()
                    if kind in ("INTEGER", "STRING", "port")]
        name, kind = self.random.choice(settable)
        if kind == "port":
            attributes = {"NAME": name, "TYPE": "INPUT"}
            if self.often(0.8):
                attributes["USAGE"] = self.random.choice(STATES)
            return ["PORT", attributes, [self.state(self.limited())] if self.often(0.1) else []]
        attributes = {"NAME": name, "TYPE": kind}
        if self.often(0.8):
            attributes["VALUE"] = self.plain(kind)
        body = [self.range_node("FORCE_RANGE")] if self.often(0.2) else []
        if self.often(0.15):
            body.append(self.force(kind, self.limited(), self.limited(), attributes))
        return ["PARAMETER", attributes, body]

    def limited(self):
        """What the texts of a map may name: nothing that could make a cycle, unless all may."""
        if self.is_free:
            return self.all
        return {"numbers": [], "texts": [], "ports": [], "macros": []}

    def settings(self):
        """Random settings, a few of them wrong, and the map to select."""
        made = []
        for name, kind in self.kinds.items():
            if self.often(0.4):
                made += self.setting(name, kind)
        if self.often(0.01):
            made.append(("NOBODY", "1"))
        map_name = self.random.choice(self.maps) if self.maps and self.often(0.4) else None
        return made, "nowhere" if self.often(0.003) else map_name

    def setting(self, name, kind):
        items = self.items_of.get(name)
        if items and self.often(0.8):
            return [(name, self.random.choice(items))]
        if name in self.fixed_ports and self.often(0.98):
            return []
        if kind == "INTEGER":
            wrong = self.random.choice(("", "x", "1.5", "0x1", " 1", "1 ", "--1", str(2**127)))
            return [(name, wrong if self.often(0.003) else self.random.choice(
                (self.plain(kind), str(self.random.randint(0, 20)), "+5", "007")))]
        if kind == "STRING":
            return [(name, self.random.choice((*WORDS, "A0", '"x"', "")))]
        if kind == "port":
            words = STATES + ("CONSTANT:3", "CONSTANT:-1", "CONSTANT:+07")
            if name in self.outputs and self.often(0.98):
                words = STATES[:-1]
            word = self.random.choice(words)
            return [(name, word if self.often(0.99) else self.random.choice(
                ("used", "CONSTANT:", "CONSTANT:x", "USED:1", "")))]
        return [(name, "1")] if self.often(0.01) else []


# --- Writing -----------------------------------------------------------------------------------

def written(tree):
    """The XML of a tree. Rule elements stand on a line each, with all that belongs to them."""
    lines = ['<?xml version="1.0" encoding="UTF-8"?>\n']
    write(tree, 0, lines)
    return "".join(lines) + "\n"


def write(node, depth, lines):
    tag, attributes, body = node
    text = "".join(f" {name}={quoteattr(value)}" for name, value in attributes.items())
    if not body:
        lines.append(f"<{tag}{text}/>")
        return
    lines.append(f"<{tag}{text}>")
    if isinstance(body, str):
        lines.append(escape(body))
    else:
        write_all(node, depth, lines)
    lines.append(f"</{tag}>")


def write_all(node, depth, lines):
    is_one_line = depth >= 3 or node[0] in ("INTRO", "END", "DESCRIPTION", "MESSAGE", "MSG",
                                            "MACRO", "VALUE_RULE")
    if node[0] == "WIZARD_MAP":
        is_one_line = False
    for sub in node[2]:
        if not is_one_line and sub[0] not in ("THEN", "ELSE"):
            lines.append("\n" + "  " * (depth + 1))
        write(sub, depth + 1, lines)
