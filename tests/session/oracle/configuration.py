"""What a description and some settings come to: values, states, verdicts, messages, waves, maps.

Everything is worked out anew for each configuration, from the description alone."""

import re

import expression as ex
from description import PARAMETER_KINDS, PORT_KINDS
from expression import Fault, Unknown, all_reasons, claimed, compare, fault_value

WHOLE = re.compile(r"[+-]?[0-9]+")


class Text:
    """One text of the description: where it stands, whose it is, and how it is judged.

    "own" is the node of which its own name means what was asked for, "role" is condition, rule,
    value (of "owner"), absent (a default of "owner" that is not there), bound, width or state."""

    __slots__ = ("text", "line", "subject", "role", "owner", "own", "arguments", "tree", "faults",
                 "spoilers", "notes")

    def __init__(self, text, line, subject="", role="condition", owner=None, own=None,
                 arguments=()):
        self.text, self.line, self.subject = text, line, subject
        self.role, self.owner, self.own = role, owner, own
        self.arguments = arguments
        self.tree = None      # None for a literal text too
        self.faults = []      # its own
        self.spoilers = []    # its own, and those of the macros it uses: (text, fault)
        self.notes = []       # faults in spite of which it has a value


class Rule:
    """A rule element with its texts made ready to be judged."""

    def __init__(self, element, condition, first=None, second=None):
        self.origin = element.origin
        self.line = element.line
        self.condition, self.first, self.second = condition, first, second


def list_of(target):
    """The allowed values, none when VALUE is a default only."""
    if ";" not in target.value_array and target.default_index < 0:
        return []
    items = [item.strip(" \t\r\n") for item in target.value_array.split(";")]
    return [item for item in items if item]


def default_of(target):
    """The text of the default, and whether its index is outside the list."""
    items = list_of(target)
    if not items:
        is_wrong = target.default_index >= 0
        text = target.default_value
        return ("" if ";" in target.value_array and text == target.value_array else text), is_wrong
    if target.default_index >= 0:
        if target.default_index < len(items):
            return items[target.default_index], False
        return items[0], True
    is_item = target.default_value in items
    return (target.default_value if is_item else items[0]), False


def arguments_in(text):
    return tuple(name.strip(" \t\r\n") for name in text.split(",") if name.strip(" \t\r\n"))


def whole_in(text):
    """The whole number that a text is, None for any other text."""
    if not WHOLE.fullmatch(text):
        return None
    number = int(text)
    return number if ex.SMALLEST <= number <= ex.LARGEST else None


def state_of_word(word):
    """The state and the constant that the word of a STATE gives, None when it gives none."""
    if word in ex.STATES:
        return word, None
    number = whole_in(word)
    return None if number is None else ("CONSTANT", number)


# --- What the texts of a description are -------------------------------------------------------

class Model:
    """The compiled texts of a description."""

    def __init__(self, description):
        self.description = description
        self.objects = description.objects
        self.lists = {name: list_of(each) for name, each in self.objects.items()}
        self.texts = []
        self.macros = {}
        self.macro_uses = {}
        self.used_macros = set()
        self.prepare_macros()
        self.prepare_objects()
        self.prepare_function()
        for text in self.texts:
            self.used_macros |= self.macros_of(text)
        for text in [*self.texts, *self.macros.values()]:
            self.find_spoilers(text)

    # The scope of names.

    def kind_of(self, name):
        found = self.objects.get(name)
        if found is None:
            return None
        return "port" if found.is_port() else "macro" if found.kind == "macro" else "value"

    def arguments_of(self, macro):
        return self.macros[macro].arguments

    def in_list(self, name, word):
        return (name in self.objects and self.objects[name].kind == "STRING"
                and word in self.lists[name])

    # Compiling.

    def add(self, text, line, subject="", role="condition", owner=None, own=None):
        added = Text(text, line, subject, role, owner, own)
        self.texts.append(added)
        self.compile(added)
        return added

    def compile(self, text):
        if text.role == "absent":
            return
        if text.role == "state":
            if state_of_word(text.text) is None:
                text.faults.append(Fault("state-word", 0))
            return
        if text.role == "value" and text.owner.kind == "STRING":
            self.compile_text_value(text)
            return
        try:
            tree = ex.parse(text.text)
        except Fault as fault:
            if not self.is_untyped(text):
                text.faults.append(fault)
            return
        names = ex.Names(self, text.arguments)
        text.tree = names.resolve(tree)
        if self.is_untyped(text) and any(each.id == "unknown-name" for each in names.faults):
            text.tree = None
        else:
            text.faults += names.faults

    def is_untyped(self, text):
        return text.role == "value" and text.owner.kind == "hidden"

    def compile_text_value(self, text):
        """A STRING's value: the name of an object stands for its value, all else for itself."""
        if text.text in self.lists[text.owner.name] or self.kind_of(text.text) is None:
            return
        names = ex.Names(self)
        text.tree = names.resolve(("name", text.text, (0, 0)))
        text.faults += names.faults

    def prepare_macros(self):
        for name, each in self.objects.items():
            if each.kind == "macro":
                self.macros[name] = Text(each.default_value, each.line, name, "macro",
                                         arguments=arguments_in(each.arguments))
        for text in self.macros.values():
            self.compile(text)
        for name, text in self.macros.items():
            found = ex.names_in(text.tree, {}) if text.tree else {}
            self.macro_uses[name] = {used: at for (kind, used), at in found.items()
                                     if kind == "macro"}
        for name, text in self.macros.items():
            circle = [at for used, at in self.macro_uses[name].items()
                      if name in self.reached_from(used)]
            if circle:
                text.faults.append(Fault("macro-recursion", min(circle)))

    def reached_from(self, macro):
        """The macro and all that it uses, directly or through others."""
        reached, waiting = {macro}, [macro]
        while waiting:
            for used in self.macro_uses[waiting.pop()]:
                if used not in reached:
                    reached.add(used)
                    waiting.append(used)
        return reached

    def macros_of(self, text):
        found = ex.names_in(text.tree, {}) if text.tree else {}
        return {reached for (kind, name) in found if kind == "macro"
                for reached in self.reached_from(name)}

    def find_spoilers(self, text):
        used = self.macros_of(text) - {text.subject if text.role == "macro" else None}
        text.spoilers = [(text, fault) for fault in text.faults]
        text.spoilers += [(self.macros[name], fault) for name in sorted(used)
                          for fault in self.macros[name].faults]

    # The texts of objects.

    def prepare_objects(self):
        self.rules = {}       # of each object
        self.defaults = {}    # of each object: its text, None without
        self.items = {}       # of INTEGER parameters
        self.widths = {}
        self.map_rules = {}   # of (map, object)
        self.presets = {}
        for name, each in self.objects.items():
            if each.kind == "macro":
                continue
            self.rules[name] = [self.rule(each, element) for element in each.rules]
            self.defaults[name] = self.default_text(each, each)
            if each.kind == "INTEGER":
                self.items[name] = [self.add(item, each.line, name, "value", each)
                                    for item in self.lists[name]]
            if each.is_port():
                self.widths[name] = [self.add(width, each.line, name, "width")
                                     for width in (each.width, each.width2d) if width]
        for map_name, each in self.description.maps.items():
            for name, preset in each.objects.items():
                self.prepare_map_object(map_name, name, preset)

    def default_text(self, source, target):
        """The text of the default that "source" gives to "target", None without one."""
        text, is_wrong_index = default_of(source)
        has_none = not text and target.kind in ("INTEGER", *PORT_KINDS)
        if has_none and not is_wrong_index:
            return None
        own = None if target.is_port() else ("value", target.name)
        role = "absent" if has_none else "value"
        added = self.add(text, source.line, target.name, role, target, own)
        if is_wrong_index:
            added.notes.append(Fault("default-index", 0))
        return added

    def prepare_map_object(self, map_name, name, preset):
        target = self.objects.get(name)
        if target is None or target.kind == "macro" or target.is_port() != preset.is_port():
            return
        self.map_rules[map_name, name] = [self.rule(target, element) for element in preset.rules]
        if not preset.is_port() and default_of(preset)[0]:
            self.presets[map_name, name] = self.default_text(preset, target)

    def rule(self, target, element):
        name, line = target.name, element.line
        condition = None
        if element.origin == "VALUE_RULE":
            return Rule(element, self.add(element.text3, line, name, "rule"))
        own = None
        if element.origin == "STATE":
            own = "state", name
        elif element.origin == "FORCE_VALUE":
            own = ("constant" if target.is_port() else "value"), name
        if element.text3:
            condition = self.add(element.text3, line, name, "condition", own=own)
        if element.origin == "STATE":
            words = [word and self.add(word, line, name, "state")
                     for word in (element.text1, element.text2)]
            return Rule(element, condition, *words)
        is_bound = element.origin in ("FORCE_RANGE", "CONSTANT_RANGE")
        role = "bound" if is_bound else "value"
        texts = [text and self.add(text, line, name, role, target, own)
                 for text in (element.text1, element.text2)]
        return Rule(element, condition, texts[0], texts[1] or None)

    # The texts of the function.

    def prepare_function(self):
        description = self.description
        self.function_rules = [(is_required, line, self.add(text, line))
                               for is_required, text, line in description.rules]
        self.messages = [(severity, each, each.text3 and self.add(each.text3, each.line))
                         for severity, each in description.messages]
        self.waves = {}
        self.stimulus = {}
        self.map_conditions = {}
        self.pieces = []
        for name, vector in description.vectors.items():
            self.waves[name] = vector.condition and vector.condition[0] and self.add(
                *vector.condition)
            self.stimulus[name] = self.stimulus_of(vector)
            self.prepare_pieces(vector.description)
        for name, each in description.maps.items():
            self.map_conditions[name] = each.condition and self.add(*each.condition)
        for name in ("INTRO", "END"):
            self.prepare_pieces(description.texts.get(name))

    def stimulus_of(self, vector):
        return [(each, each.text3 and self.add(each.text3, each.line))
                for each in vector.stimulus]

    def prepare_pieces(self, pieces):
        for piece in pieces or ():
            if piece.condition:
                self.pieces.append(self.add(piece.condition, piece.line))
            for branch in (piece.then, piece.otherwise):
                if isinstance(branch, list):
                    self.prepare_pieces(branch)


# --- Values ------------------------------------------------------------------------------------

class View:
    """The values as one text sees them: of its own node it sees what was asked for."""

    def __init__(self, configuration, own):
        self.configuration = configuration
        self.own = own

    def value_of(self, name):
        if self.own == ("value", name):
            return self.configuration.asked_value(name)[0]
        return self.configuration.value(("value", name))

    def state_of(self, port):
        state = self.state(port)
        return state if type(state) is Unknown else state[0]

    def state(self, port):
        if self.own == ("state", port):
            return self.configuration.asked_state(port)[0], None
        return self.configuration.value(("state", port))

    def is_connected(self, port):
        state = self.state_of(port)
        return state if type(state) is Unknown else state in ("USED", "VARIABLE")

    def constant_of(self, port):
        state = self.state(port)
        if self.own in (("state", port), ("constant", port)) and type(state) is not Unknown:
            word, number = state
            if word == "CONSTANT":
                return self.configuration.asked_constant(port) if number is None else number
            return Unknown(("port", port))
        tied = self.configuration.value(("constant", port))
        return Unknown(("port", port)) if tied is None else tied

    def macro(self, name):
        text = self.configuration.model.macros[name]
        return text.arguments, text.tree, text


class Configuration:
    def __init__(self, model, settings=(), map_name=None):
        self.model = model
        self.objects = model.objects
        self.settings = {}
        self.map_name = None
        self.set_result = self.make_settings(settings, map_name)
        self.known = {}      # what a node came to
        self.judged = {}     # what a text came to
        self.running = {}    # what the members of a cycle have come to so far
        self.asking = set()
        self.cycle_counts = [0, 0]
        self.needed = None   # the texts that values need, while those are collected
        self.find_cycles()

    # Settings.

    def make_settings(self, settings, map_name):
        if map_name is not None:
            if map_name not in self.model.description.maps:
                return "unknown-map"
            self.map_name = map_name
        made = {}
        for name, value in settings:
            result = self.refusal(name, value)
            if result:
                return result
            made[name] = value
        self.settings = made
        return "done"

    def refusal(self, name, value):
        target = self.objects.get(name)
        if target is None or target.kind == "macro":
            return "unknown-name"
        if target.kind == "INTEGER":
            return None if whole_in(value) is not None else "not-a-number"
        if target.kind == "STRING":
            return None
        if not self.is_settable(name):
            return "not-a-setting"
        word, _, number = value.partition(":")
        if word not in ex.STATES or (":" in value and word != "CONSTANT"):
            return "not-a-state"
        if word == "CONSTANT" and target.kind == "OUTPUT":
            return "not-a-setting"
        return "not-a-number" if ":" in value and whole_in(number) is None else None

    def is_settable(self, name):
        target = self.objects[name]
        if target.is_port():
            return target.connection != "USED_PORT" and target.kind != "BURIED"
        return target.kind in PARAMETER_KINDS

    def texts_needed(self):
        """The texts that the values, states and constants hang on."""
        for node in self.edges:
            self.value(node)
        self.needed = set()
        for node in self.edges:
            self.work_out(node)
        needed, self.needed = self.needed, None
        return needed

    def rules_of(self, name, *origins):
        rules = self.model.rules[name] + self.model.map_rules.get((self.map_name, name), [])
        return [rule for rule in rules if rule.origin in origins]

    # Asked-for values.

    def asked_value(self, name):
        """The asked-for value of a parameter or hidden parameter, and where it comes from."""
        target = self.objects[name]
        if name in self.settings:
            value = self.settings[name]
            return (int(value) if target.kind == "INTEGER" else value), "given"
        text, source = self.asked_text(name)
        if name in self.asking:
            return Unknown(("cycle",)), source
        self.asking.add(name)
        value = Unknown(("unset", name)) if text is None else self.judge(text)
        self.asking.discard(name)
        return value, source

    def asked_text(self, name):
        if (self.map_name, name) in self.model.presets:
            return self.model.presets[self.map_name, name], "preset"
        return self.model.defaults[name], "default"

    def asked_state(self, port):
        """The asked-for state of a port and where it comes from."""
        if port in self.settings:
            return self.settings[port].partition(":")[0], "given"
        target = self.objects[port]
        if (self.map_name, port) in self.model.map_rules:
            return self.model.description.maps[self.map_name].objects[port].usage, "preset"
        return ("USED" if target.connection == "USED_PORT" else target.usage), "default"

    def asked_constant(self, port):
        """The constant that a port has when nothing forces one."""
        _, _, number = self.settings.get(port, "").partition(":")
        if number:
            return int(number)
        text = self.model.defaults[port]
        if text is None:
            return 0
        if ("constant", port) in self.asking:
            return Unknown(("cycle",))
        self.asking.add(("constant", port))
        value = self.judge(text)
        self.asking.discard(("constant", port))
        return value

    # Judging one text.

    def judge(self, text):
        """What a text comes to, in the way that its role asks for."""
        if self.needed is None and text in self.judged:
            return self.judged[text]
        if self.needed is not None:
            self.needed.add(text)
        result = self.judge_anew(text)
        if not self.running and not self.asking:
            self.judged[text] = result
        return result

    def judge_anew(self, text):
        if text.spoilers:
            return Unknown(*(("fault", fault.id, where, fault.offset)
                             for where, fault in text.spoilers))
        judge = ex.Evaluator(View(self, text.own), text)
        if text.role == "absent":
            return Unknown(("unset", text.subject))
        if text.role == "state":
            return state_of_word(text.text)
        if text.role == "condition":
            return judge.condition(text.tree)
        if text.role == "rule":
            return judge.rule(text.tree)
        if text.role == "value":
            return self.judge_value(judge, text)
        result = judge.result(text.tree)
        first = ex.first_of(text.tree)
        if text.role == "width":
            number = ex.number_in(result) if type(result) is str else ex.snapped(result)
            number = ex.fitting(number) if type(number) is int else number
            return result if number is None else claimed(number, text, first)
        if type(result) is not Unknown:
            result = claimed(ex.number_of(result, judge.world), text, first)
        return result

    def judge_value(self, judge, text):
        if text.tree is None:
            return unquoted(text.text) if text.owner.kind == "STRING" else text.text
        result = judge.result if text.owner.kind in ("INTEGER", *PORT_KINDS) else judge.answer
        value = result(text.tree)
        if type(value) is Unknown or text.owner.kind == "hidden":
            return value
        if text.owner.kind == "STRING":
            return ex.text_of(value)
        number = ex.number_of(value, judge.world)
        if type(number) is not Unknown:
            number = ex.whole_of(number)
        return claimed(number, text, ex.first_of(text.tree))

    def holds(self, condition):
        """Whether a condition holds; one that is not there always does."""
        return True if not condition else self.judge(condition)

    # Forces.

    def forced(self, rules, outcome, free):
        """What the first active rule gives, or "free" when there is none."""
        if not rules:
            return free()
        rule, rest = rules[0], rules[1:]

        def otherwise():
            return outcome(rule.second) if rule.second else self.forced(rest, outcome, free)

        holds = self.holds(rule.condition)
        if type(holds) is not Unknown:
            return outcome(rule.first) if holds else otherwise()
        one, other = outcome(rule.first), otherwise()
        if type(one) is not Unknown and type(one) is type(other) and one == other:
            return one
        return all_reasons(holds, *unknown_parts(one), *unknown_parts(other))

    def is_forced(self, rules):
        """Whether the walk over the rules ends at an active one."""
        return any(rule.second or self.holds(rule.condition) is True for rule in rules)

    def tied(self, port):
        """The constant at a port, None when there is none."""
        state = self.value(("state", port))
        if type(state) is Unknown:
            return state
        rules = self.rules_of(port, "FORCE_VALUE")
        if state[0] == "CONSTANT":
            return self.forced(rules, self.judge, lambda: self.unforced_constant(port, state))
        if self.is_open(port, state):
            return None
        untied = Unknown(("port", port))
        value = self.forced(rules, self.judge, lambda: untied)
        return None if same(value, untied) else value

    def is_tied(self, port):
        """Whether something ties a port."""
        state = self.value(("state", port))
        if type(state) is Unknown or state[0] == "CONSTANT":
            return state if type(state) is Unknown else True
        return not self.is_open(port, state) and self.is_forced_port(port)

    def is_forced_port(self, port):
        """Whether any FORCE_VALUE of a port is active."""
        return self.forced(self.rules_of(port, "FORCE_VALUE"), lambda _: True, lambda: False)

    def unforced_constant(self, port, state):
        """The constant of a port in the state CONSTANT that no FORCE_VALUE gives."""
        return self.asked_constant(port) if state[1] is None else state[1]

    def is_open(self, port, state):
        """Whether a port in this state has no constant, whatever the rules say."""
        return state[0] != "CONSTANT" and (
            state[0] != "UNUSED" or self.objects[port].kind != "INPUT")

    # Nodes: ("value", name), ("state", port), which is a state and perhaps its constant, and
    # ("constant", port), which is the constant at the port, None when there is none.

    def value(self, node):
        if node in self.running:
            return self.running[node]
        if node not in self.known:
            if node in self.cycles:
                self.run_cycle(self.cycles[node])
            else:
                self.known[node] = self.work_out(node)
        return self.known[node]

    def work_out(self, node):
        kind, name = node
        if kind == "value":
            return self.forced(self.rules_of(name, "FORCE_VALUE"), self.judge,
                               lambda: self.asked_value(name)[0])
        if kind == "state":
            return self.forced(self.rules_of(name, "STATE"), self.judge,
                               lambda: (self.asked_state(name)[0], None))
        return self.tied(name)

    def start_of(self, node):
        kind, name = node
        if kind == "value":
            return self.asked_value(name)[0]
        if kind == "state":
            return self.asked_state(name)[0], None
        state = self.value(("state", name))
        if type(state) is Unknown:
            return state
        return self.unforced_constant(name, state) if state[0] == "CONSTANT" else None

    def run_cycle(self, members):
        outer = self.running
        self.running = {node: Unknown(("cycle",)) for node in members}
        for node in members:
            self.running[node] = self.start_of(node)
        for _ in range(2 * len(members) + 2):
            changed = False
            for node in members:
                result = self.work_out(node)
                changed |= not same(result, self.running[node])
                self.running[node] = result
            if not changed:
                self.known.update(self.running)
                self.cycle_counts[0] += 1
                self.running = outer
                break
        else:
            self.cycle_counts[1] += 1
            self.running = outer
            for node in members:
                self.known[node] = self.lost(node)

    def lost(self, node):
        kind, name = node
        state = self.value(("state", name)) if kind == "constant" else None
        is_open = type(state) is tuple and self.is_open(name, state)
        return None if is_open else Unknown(("cycle",))

    # Which nodes hang on one another.

    def find_cycles(self):
        self.edges = {}
        for name, each in self.objects.items():
            if each.kind == "macro":
                continue
            if each.is_port():
                self.add_port_edges(name)
            else:
                texts = self.value_texts(name, "FORCE_VALUE") + self.default_texts(name)
                self.edges["value", name] = self.nodes_in(texts) - {("value", name)}
        self.cycles = {}
        for members in components(self.edges):
            if len(members) > 1:
                self.cycles.update({node: members for node in members})

    def value_texts(self, name, origin):
        return [text for rule in self.rules_of(name, origin)
                for text in (rule.condition, rule.first, rule.second) if isinstance(text, Text)]

    def default_texts(self, name):
        default = (self.model.defaults[name] if self.objects[name].is_port()
                   else self.asked_text(name)[0])
        return [default] if default else []

    def add_port_edges(self, port):
        own = {("state", port), ("constant", port)}
        named = self.nodes_in(self.value_texts(port, "STATE"))
        default = self.nodes_in(self.default_texts(port))
        self.edges["state", port] = (named - own) | (
            default if ("constant", port) in named else set())
        self.edges["constant", port] = (
            (self.nodes_in(self.value_texts(port, "FORCE_VALUE")) - own) | default
            | {("state", port)})

    def nodes_in(self, texts):
        """The nodes that the texts ask, directly or through macros."""
        nodes = set()
        for text in texts:
            place = place_of(text)
            if text.tree:
                ex.nodes_in(text.tree, place, nodes)
            for macro in self.model.macros_of(text):
                if self.model.macros[macro].tree:
                    ex.nodes_in(self.model.macros[macro].tree, "anything", nodes)
        return nodes


def place_of(text):
    """What a port that is the whole of a text is asked."""
    if text.role in ("condition", "rule"):
        return "condition"
    is_word = text.role == "value" and text.owner.kind in ("STRING", "hidden")
    return "condition" if is_word else "number"


def same(one, other):
    return type(one) is type(other) and one == other


def unknown_parts(*values):
    return [value for value in values if type(value) is Unknown]


def unquoted(text):
    is_quoted = len(text) >= 2 and text[0] == text[-1] == '"' and '"' not in text[1:-1]
    return text[1:-1] if is_quoted else text


def components(edges):
    """The sets of nodes that hang on one another, each in the order of "edges"."""
    reached = {}
    for node in edges:
        found, waiting = set(), list(edges[node])
        while waiting:
            each = waiting.pop()
            if each not in found:
                found.add(each)
                waiting += edges[each]
        reached[node] = found
    done, result = set(), []
    for node in edges:
        if node in done or node not in reached[node]:
            continue
        members = [other for other in edges
                   if other == node or (other in reached[node] and node in reached[other])]
        done.update(members)
        result.append(members)
    return result
