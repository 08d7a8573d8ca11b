"""The rule language, taken literally: own lexer, recursive descent, evaluation by walking the tree.

Texts are str objects of one character for each byte (latin-1), so that offsets count bytes.
Values are bool (a truth), int, float (a real), str (a text), Port (a port, passed as itself) and
Unknown with the reasons why."""

import math
import sys

# Each of the 256 levels that a text may nest costs a handful of calls.
sys.setrecursionlimit(50000)
sys.set_int_max_str_digits(0)

MOST_BYTES = 64 * 1024
MOST_OPEN = 256
MOST_STEPS = 1_000_000
LARGEST = 2**127 - 1
SMALLEST = -(2**127)
STATES = ("UNUSED", "USED", "VARIABLE", "CONSTANT")
FUNCTIONS = {"ceil": (1, 1), "floor": (1, 1), "abs": (1, 1), "log": (1, 1), "log2": (1, 1),
             "min": (1, None), "max": (1, None)}
WORDS = {"and": "and", "or": "or", "not": "not", "lt": "<", "lte": "<=", "gt": ">", "gte": ">=",
         "mod": "mod", "div": "div", "quot": "div"}
SIGNS = {"||": "or", "&&": "and", "==": "==", "!=": "!=", "<": "<", "<=": "<=", ">": ">",
         ">=": ">=", "+": "+", "-": "-", "*": "*", "/": "/", "%": "%", "^": "^", "!": "not",
         "(": "(", ")": ")", ",": ","}
REFUSED = ("**", "/=", "<>", "=", "&", "|", "#", "'", "?", ":")
COMPARISONS = ("==", "!=", "<", "<=", ">", ">=")


class Fault(Exception):
    """Why a text is no expression, or none that can be judged."""

    def __init__(self, fault_id, offset):
        super().__init__(fault_id, offset)
        self.id = fault_id
        self.offset = offset


class Unknown:
    """What cannot be told. A reason is ("port", name), ("unset", name), ("cycle",) or
    ("fault", id, text, offset); one that no text has claimed yet is ("fault", id)."""

    __slots__ = ("reasons",)

    def __init__(self, *reasons):
        self.reasons = frozenset(reasons)

    def __eq__(self, other):
        return isinstance(other, Unknown) and other.reasons == self.reasons

    def __hash__(self):
        return hash(self.reasons)

    def __repr__(self):
        return f"Unknown({sorted(self.reasons)})"


class Port:
    __slots__ = ("name",)

    def __init__(self, name):
        self.name = name

    def __eq__(self, other):
        return isinstance(other, Port) and other.name == self.name

    def __hash__(self):
        return hash(("port", self.name))


def fault_value(fault_id):
    return Unknown(("fault", fault_id))


def all_reasons(*values):
    unknown = Unknown()
    unknown.reasons = frozenset().union(
        *(value.reasons for value in values if type(value) is Unknown))
    return unknown


# --- Tokens -------------------------------------------------------------------------------------

def is_digit(char):
    return "0" <= char <= "9"


def starts_name(char):
    return char == "_" or "a" <= char <= "z" or "A" <= char <= "Z" or char > "\x7f"


def continues_name(char):
    return starts_name(char) or is_digit(char) or char == "$"


def read_number(text, at):
    end = at
    while end < len(text) and is_digit(text[end]):
        end += 1
    if end - at == 1 and text[at] == "0" and end < len(text) and text[end] in "xX":
        return ("refused", text[at:end + 1], at), end + 1
    if end + 1 < len(text) and text[end] == "." and is_digit(text[end + 1]):
        end += 1
        while end < len(text) and is_digit(text[end]):
            end += 1
        return ("real", text[at:end], at), end
    return ("int", text[at:end], at), end


def read_name(text, at):
    end = at
    while end < len(text) and continues_name(text[end]):
        end += 1
    name = text[at:end]
    word = name.lower() if name.isascii() else name
    if word in WORDS:
        return ("op", WORDS[word], at), end
    return ("name", name, at), end


def read_token(text, at):
    char = text[at]
    if is_digit(char):
        return read_number(text, at)
    if starts_name(char):
        return read_name(text, at)
    if char == '"':
        end = text.find('"', at + 1)
        if end < 0:
            return ("refused", text[at:], at), len(text)
        return ("text", text[at + 1:end], at), end + 1
    two = text[at:at + 2]
    if two in SIGNS:
        return ("op", SIGNS[two], at), at + 2
    if two in REFUSED:
        return ("refused", two, at), at + 2
    if char in SIGNS:
        return ("op", SIGNS[char], at), at + 1
    return ("refused", char, at), at + 1


def tokens_of(text):
    tokens = []
    at = 0
    while at < len(text):
        if text[at] in " \t\r\n":
            at += 1
            continue
        token, at = read_token(text, at)
        tokens.append(token)
    tokens.append(("end", "", len(text)))
    return tokens


# --- Trees --------------------------------------------------------------------------------------
# A node is a tuple: its kind, what it holds, and last the offset that a fault in it is told with and
# that of its first byte, parentheses included.

class Parser:
    def __init__(self, text):
        if len(text) > MOST_BYTES:
            raise Fault("text-too-long", MOST_BYTES)
        self.tokens = tokens_of(text)
        self.at = 0
        self.open = 0

    def parse(self):
        tree = self.expression()
        if self.tokens[self.at][0] != "end":
            self.refuse()
        return tree

    def refuse(self):
        raise Fault("expression-syntax", self.tokens[self.at][2])

    def operator(self, *operators):
        """Takes the next token when it is one of the operators."""
        kind, what, offset = self.tokens[self.at]
        if kind != "op" or what not in operators:
            return None
        self.at += 1
        return what, offset

    def opened(self, offset):
        self.open += 1
        if self.open > MOST_OPEN:
            raise Fault("too-deep", offset)

    def chain(self, operand, *operators):
        left = operand()
        while taken := self.operator(*operators):
            self.opened(taken[1])
            left = (taken[0], left, operand(), (taken[1], first_of(left)))
            self.open -= 1
        return left

    def expression(self):
        return self.chain(self.conjunction, "or")

    def conjunction(self):
        return self.chain(self.comparison, "and")

    def comparison(self):
        left = self.sum()
        if taken := self.operator(*COMPARISONS):
            self.opened(taken[1])
            left = (taken[0], left, self.sum(), (taken[1], first_of(left)))
            self.open -= 1
            if self.tokens[self.at][0] == "op" and self.tokens[self.at][1] in COMPARISONS:
                self.refuse()
        return left

    def sum(self):
        return self.chain(self.product, "+", "-")

    def product(self):
        return self.chain(self.signed, "*", "/", "%", "mod", "div")

    def prefixes(self, *operators):
        taken = []
        while sign := self.operator(*operators):
            self.opened(sign[1])
            taken.append(sign)
        return taken

    def wrap(self, signs, tree):
        for what, offset in reversed(signs):
            tree = ({"+": "plus", "-": "minus", "not": "not"}[what], tree, (offset, offset))
        self.open -= len(signs)
        return tree

    def signed(self):
        signs = self.prefixes("+", "-")
        return self.wrap(signs, self.power())

    def power(self):
        base = self.negated()
        if taken := self.operator("^"):
            self.opened(taken[1])
            signs = self.prefixes("+", "-")
            base = ("^", base, self.wrap(signs, self.negated()), (taken[1], first_of(base)))
            self.open -= 1
            if self.tokens[self.at][:2] == ("op", "^"):
                self.refuse()
        return base

    def negated(self):
        signs = self.prefixes("not")
        return self.wrap(signs, self.primary())

    def primary(self):
        kind, what, offset = self.tokens[self.at]
        if kind in ("int", "real", "text"):
            self.at += 1
            return kind, what, (offset, offset)
        if kind == "name":
            self.at += 1
            if self.operator("("):
                return "call", what, self.arguments(offset), (offset, offset)
            return kind, what, (offset, offset)
        if self.operator("("):
            self.opened(offset)
            tree = self.expression()
            self.close()
            return (*tree[:-1], (tree[-1][0], offset))
        return self.refuse()

    def arguments(self, offset):
        self.opened(offset)
        given = []
        if not self.operator(")"):
            given.append(self.expression())
            while self.operator(","):
                given.append(self.expression())
            self.close()
        else:
            self.open -= 1
        return given

    def close(self):
        if not self.operator(")"):
            self.refuse()
        self.open -= 1


def first_of(node):
    return node[-1][1]


def parse(text):
    return Parser(text).parse()


# --- Names --------------------------------------------------------------------------------------
# A scope tells what names are: kind_of(name) is "value", "port", "macro" or None, arguments_of(name)
# the argument names of a macro, in_list(name, word) whether a STRING parameter's list holds a word.

class Names:
    """Replaces the names of a tree by what they stand for: the nodes "argument", "object", "port",
    "truth", "text", "macro" (with its arguments), "function" and "refused". What is wrong is
    collected."""

    def __init__(self, scope, arguments=()):
        self.scope = scope
        self.arguments = arguments
        self.faults = []

    def fault(self, fault_id, place):
        self.faults.append(Fault(fault_id, place[0]))
        return "truth", False, place

    def resolve(self, node):
        kind = node[0]
        if kind in ("int", "real", "text"):
            return node
        if kind == "name":
            return self.name(node)
        if kind == "call":
            return self.call(node)
        if kind in ("==", "!="):
            return self.comparison(node)
        if len(node) == 3:
            return kind, self.resolve(node[1]), node[2]
        return kind, self.resolve(node[1]), self.resolve(node[2]), node[3]

    def known(self, name):
        return (name in self.arguments or self.scope.kind_of(name) is not None
                or name in ("TRUE", "FALSE", "ON", "OFF"))

    def name(self, node):
        _, name, place = node
        if name in self.arguments:
            return "argument", name, place
        kind = self.scope.kind_of(name)
        if kind == "macro":
            return self.macro(name, [], place)
        if kind is not None:
            return ("port" if kind == "port" else "object"), name, place
        if name in ("TRUE", "FALSE"):
            return "truth", name == "TRUE", place
        if name in ("ON", "OFF"):
            return "text", name, place
        return self.fault("unknown-name", place)

    def call(self, node):
        _, name, given, place = node
        given = [self.resolve(each) for each in given]
        if name not in self.arguments and self.scope.kind_of(name) == "macro":
            return self.macro(name, given, place)
        if name in self.arguments:
            return self.refused("macro-arguments", name, given, place)
        if name not in FUNCTIONS:
            is_known = self.scope.kind_of(name) is not None
            return self.refused("macro-arguments" if is_known else "unknown-name", name, given, place)
        fewest, most = FUNCTIONS[name]
        if len(given) < fewest or (most is not None and len(given) > most):
            return self.refused("macro-arguments", name, given, place)
        return "function", name, given, place

    def refused(self, fault_id, name, given, place):
        """A call that is none; what is given to it is named all the same."""
        self.fault(fault_id, place)
        return "refused", name, given, place

    def macro(self, name, given, place):
        if len(given) != len(self.scope.arguments_of(name)):
            return self.refused("macro-arguments", name, given, place)
        return "macro", name, given, place

    def comparison(self, node):
        kind, left, right, place = node
        return (kind, self.beside(left, right) or self.resolve(left),
                self.beside(right, left) or self.resolve(right), place)

    def beside(self, node, other):
        """The text that a bare word beside a STRING parameter or a port is."""
        if node[0] != "name" or self.known(node[1]) or other[0] != "name":
            return None
        if other[1] in self.arguments or self.scope.kind_of(other[1]) == "port":
            is_word = node[1] in STATES
        else:
            is_word = self.scope.in_list(other[1], node[1])
        return ("text", node[1], node[2]) if is_word else None


def names_in(node, found):
    """Collects (kind, name) of the objects, ports and macros that a resolved tree names, each with
    the offset where it stands first."""
    kind = node[0]
    if kind in ("object", "port"):
        found.setdefault((kind, node[1]), node[2][0])
    elif kind in ("macro", "function", "refused"):
        if kind == "macro":
            found.setdefault((kind, node[1]), node[3][0])
        for each in node[2]:
            names_in(each, found)
    elif kind not in ("int", "real", "text", "truth", "argument"):
        for each in node[1:-1]:
            names_in(each, found)
    return found


def nodes_in(node, place, found):
    """Collects what a resolved tree asks: the value of an object, of a port its state as a
    condition, its constant as a number, both where it is passed on."""
    kind = node[0]
    if kind == "object":
        found.add(("value", node[1]))
    elif kind == "port":
        found |= {("state", node[1])} if place != "number" else set()
        found |= {("constant", node[1])} if place != "condition" else set()
    elif kind in ("macro", "function", "refused"):
        for each in node[2]:
            nodes_in(each, "number" if kind == "function" else "anything", found)
    elif kind in ("==", "!="):
        for side, other in ((node[1], node[2]), (node[2], node[1])):
            is_state = other[0] == "text" and other[1] in STATES
            nodes_in(side, "condition" if is_state else "number", found)
    elif kind not in ("int", "real", "text", "truth", "argument"):
        for each in node[1:-1]:
            nodes_in(each, "condition" if kind in ("and", "or", "not") else "number", found)


def same_tree(left, right):
    """Whether two trees are the same but for where they stand."""
    if isinstance(left, tuple):
        return (isinstance(right, tuple) and len(left) == len(right)
                and all(same_tree(a, b) for a, b in zip(left[:-1], right[:-1])))
    if isinstance(left, list):
        return (isinstance(right, list) and len(left) == len(right)
                and all(same_tree(a, b) for a, b in zip(left, right)))
    return left == right


def branches_of(tree):
    """(A, B, C) of a tree "(A and B) || (!A and C)", with C None for "(A and B) || !A"."""
    if tree[0] != "or" or tree[1][0] != "and":
        return None
    condition, then = tree[1][1], tree[1][2]
    otherwise = None
    negated = tree[2]
    if negated[0] == "and":
        negated, otherwise = negated[1], negated[2]
    if negated[0] != "not" or not same_tree(negated[1], condition):
        return None
    return condition, then, otherwise


# --- Values -------------------------------------------------------------------------------------

def is_number(value):
    return type(value) is int or type(value) is float


def snapped(value):
    """A real that all but is a whole number is that number."""
    if type(value) is not float:
        return value
    whole = round(value)
    near = abs(value - whole) <= math.ldexp(max(1.0, abs(float(whole))), -48)
    return whole if near else value


def whole_of(value):
    """A number as a whole one, where only such a one will do."""
    value = snapped(value)
    if type(value) is float:
        return fault_value("ill-typed")
    return fitting(value)


def fitting(value):
    return value if SMALLEST <= value <= LARGEST else fault_value("too-large")


def finite(value):
    if math.isnan(value):
        return fault_value("domain")
    # There is no negative zero.
    return fault_value("too-large") if math.isinf(value) else value + 0.0


def number_in(text):
    """The number that a canonical decimal text is, None for any other text."""
    digits = text[1:] if text.startswith("-") else text
    if not digits or not digits.isascii() or not digits.isdigit():
        return None
    if digits[0] == "0" and text != "0":
        return None
    return fitting(int(text))


def text_of(value):
    """What a value is as a text."""
    if type(value) is bool:
        return "true" if value else "false"
    if type(value) is float:
        text = repr(value)
        return text[:-2] if text.endswith(".0") else text
    return str(value)


def truth_of(value, world):
    """A value where a condition is asked for: True, False or Unknown."""
    if type(value) is bool or type(value) is Unknown:
        return value
    if type(value) is Port:
        return world.is_connected(value.name)
    if type(value) is str:
        if value in ("ON", "TRUE"):
            return True
        if value in ("OFF", "FALSE", ""):
            return False
        return fault_value("ill-typed")
    return snapped(value) != 0


def number_of(value, world):
    """A value where a number is asked for: int, float or Unknown."""
    if type(value) is Port:
        return world.constant_of(value.name)
    if type(value) is bool:
        return fault_value("ill-typed")
    if type(value) is str:
        number = number_in(value)
        return fault_value("ill-typed") if number is None else number
    return value


def compare_numbers(operator, left, right):
    left, right = snapped(left), snapped(right)
    if operator == "==":
        return left == right
    if operator == "!=":
        return left != right
    if operator == "<":
        return left < right
    if operator == "<=":
        return left <= right
    return left > right if operator == ">" else left >= right


def compare_equal(operator, left, right):
    if operator not in ("==", "!="):
        return fault_value("ill-typed")
    return (left == right) == (operator == "==")


def compare(operator, left, right):
    """A comparison of two values, neither of which is a port."""
    if type(left) is Unknown or type(right) is Unknown:
        return all_reasons(left, right)
    if type(left) is bool or type(right) is bool:
        return compare_truths(operator, left, right)
    if type(left) is str and type(right) is str:
        return compare_equal(operator, left, right)
    if type(left) is str or type(right) is str:
        return compare_number_with_text(operator, left, right)
    return compare_numbers(operator, left, right)


def compare_truths(operator, left, right):
    truths = {"ON": True, "TRUE": True, "OFF": False, "FALSE": False}
    sides = [side if type(side) is bool else truths.get(side) if type(side) is str else None
             for side in (left, right)]
    if None in sides:
        return fault_value("ill-typed")
    return compare_equal(operator, *sides)


def compare_number_with_text(operator, left, right):
    numbers = [number_in(side) if type(side) is str else side for side in (left, right)]
    if None in numbers:
        return compare_equal(operator, 0, 1)
    if any(type(number) is Unknown for number in numbers):
        return all_reasons(*numbers)
    return compare_numbers(operator, *numbers)


def raised(base, exponent):
    if type(base) is int and type(exponent) is int:
        if exponent < 0:
            return fault_value("domain")
        if abs(base) > 1 and exponent > 127:
            return fault_value("too-large")
        return fitting(base**exponent)
    if base == 0 and exponent < 0:
        return fault_value("division-by-zero")
    try:
        return finite(math.pow(base, exponent))
    except ValueError:
        return fault_value("domain")
    except OverflowError:
        return fault_value("too-large")


def truncated(left, right):
    quotient = abs(left) // abs(right)
    return quotient if (left < 0) == (right < 0) else -quotient


def divided(operator, left, right):
    if operator == "/" and (type(left) is float or type(right) is float):
        if right == 0:
            return fault_value("division-by-zero")
        return finite(float(left) / float(right))
    left, right = whole_of(left), whole_of(right)
    if type(left) is Unknown or type(right) is Unknown:
        return all_reasons(left, right)
    if right == 0:
        return fault_value("division-by-zero")
    if operator in ("/", "div"):
        return fitting(truncated(left, right))
    if operator == "mod":
        return left % right
    return left - right * truncated(left, right)


def calculate(operator, left, right):
    if type(left) is Unknown or type(right) is Unknown:
        return all_reasons(left, right)
    if operator == "^":
        return raised(left, right)
    if operator in ("/", "%", "mod", "div"):
        return divided(operator, left, right)
    if type(left) is float or type(right) is float:
        left, right = float(left), float(right)
    result = left + right if operator == "+" else left - right if operator == "-" else left * right
    return finite(result) if type(result) is float else fitting(result)


def signed(kind, value):
    if kind == "plus":
        return value
    return fitting(-value) if type(value) is int else finite(-value)


def rounded(name, value):
    value = snapped(value)
    if type(value) is float:
        value = math.ceil(value) if name == "ceil" else math.floor(value)
    return fitting(value)


def call_function(name, values):
    if any(type(value) is Unknown for value in values):
        return all_reasons(*values)
    if name in ("ceil", "floor"):
        return rounded(name, values[0])
    if name == "abs":
        return fitting(abs(values[0])) if type(values[0]) is int else abs(values[0])
    if name in ("log", "log2"):
        if values[0] <= 0:
            return fault_value("domain")
        return (math.log if name == "log" else math.log2)(float(values[0]))
    best = values[0]
    for value in values[1:]:
        if compare_numbers("<" if name == "min" else ">", value, best):
            best = value
    return best


# --- Evaluation ---------------------------------------------------------------------------------
# A world knows values: value_of(name), state_of(port), is_connected(port), constant_of(port), and
# macro(name), which gives the argument names, the tree and the text of a macro.

class StepsSpent(Exception):
    pass


def claimed(value, text, offset):
    """The value, with the faults that no text has claimed yet put at this place."""
    if type(value) is not Unknown:
        return value
    return Unknown(*((*reason, text, offset) if len(reason) == 2 and reason[0] == "fault"
                     else reason for reason in value.reasons))


class Evaluator:
    """Judges one text. Of a tree only "text" tells whose it is."""

    def __init__(self, world, text):
        self.world = world
        self.text = text
        self.steps = 0

    def value(self, node, frame=None):
        self.steps += 1
        if self.steps > MOST_STEPS:
            raise StepsSpent
        kind = node[0]
        if kind in ("text", "truth"):
            return node[1]
        if kind == "argument":
            return frame[node[1]]
        if kind == "object":
            return self.world.value_of(node[1])
        if kind == "port":
            return Port(node[1])
        if kind == "macro":
            return self.macro(node, frame)
        return claimed(self.calculated(kind, node, frame), self.text, node[-1][0])

    def calculated(self, kind, node, frame):
        if kind == "int":
            return fitting(int(node[1]))
        if kind == "real":
            return finite(float(node[1]))
        if kind == "function":
            return self.applied(lambda *values: call_function(node[1], values), node[2], frame)
        if kind in ("and", "or"):
            return self.joined(node, frame)
        if kind == "not":
            truth = truth_of(self.value(node[1], frame), self.world)
            return truth if type(truth) is Unknown else not truth
        if kind in COMPARISONS:
            return self.compared(node, frame)
        if kind in ("plus", "minus"):
            return self.applied(lambda value: signed(kind, value), node[1:2], frame)
        return self.applied(lambda *values: calculate(kind, *values), node[1:3], frame)

    def truth(self, node, frame=None):
        return claimed(truth_of(self.value(node, frame), self.world), self.text, first_of(node))

    def applied(self, function, nodes, frame):
        """The function of the numbers that the nodes are."""
        values = [self.value(node, frame) for node in nodes]
        values = [self.world.constant_of(value.name) if type(value) is Port else value
                  for value in values]
        if not any(type(value) is Unknown for value in values):
            values = [number_of(value, self.world) for value in values]
        if any(type(value) is Unknown for value in values):
            return all_reasons(*values)
        return function(*values)

    def joined(self, node, frame):
        left, right = (truth_of(self.value(side, frame), self.world) for side in node[1:3])
        decisive = node[0] == "or"
        if left is decisive or right is decisive:
            return decisive
        if type(left) is Unknown or type(right) is Unknown:
            return all_reasons(left, right)
        return not decisive

    def compared(self, node, frame):
        operator, left_node, right_node, _ = node
        left, right = self.value(left_node, frame), self.value(right_node, frame)
        if operator in ("==", "!="):
            for side, other, other_node in ((left, right, right_node), (right, left, left_node)):
                if type(side) is Port and other_node[0] == "text" and other in STATES:
                    return compare(operator, self.world.state_of(side.name), other)
        if type(left) is Port:
            left = self.world.constant_of(left.name)
        if type(right) is Port:
            right = self.world.constant_of(right.name)
        return compare(operator, left, right)

    def macro(self, node, frame):
        _, name, given, _ = node
        values = [self.value(each, frame) for each in given]
        arguments, tree, text = self.world.macro(name)
        caller, self.text = self.text, text
        result = self.value(tree, dict(zip(arguments, values)))
        self.text = caller
        return result

    def whole(self, judge, tree):
        try:
            return judge(tree)
        except StepsSpent:
            return fault_value("too-many-steps")

    def condition(self, tree):
        """A whole text as a condition."""
        return claimed(self.whole(self.truth, tree), self.text, first_of(tree))

    def rule(self, tree):
        """The condition of a value rule, in which an undecided IF does no harm when both of its
        branches agree."""
        parts = branches_of(tree)
        if parts is None:
            return self.condition(tree)
        condition, then, otherwise = (part and self.condition(part) for part in parts)
        if otherwise is None:
            otherwise = True
        if type(condition) is not Unknown:
            return then if condition else otherwise
        if type(then) is not Unknown and then == otherwise:
            return then
        return all_reasons(condition, then, otherwise)

    def result(self, tree):
        """A whole text as a value; a port is its number."""
        value = self.whole(self.value, tree)
        if type(value) is Port:
            value = number_of(value, self.world)
        return claimed(value, self.text, first_of(tree))

    def answer(self, tree):
        """A whole text as a value; a port is whether it is connected."""
        value = self.whole(self.value, tree)
        if type(value) is Port:
            value = self.world.is_connected(value.name)
        return claimed(value, self.text, first_of(tree))
