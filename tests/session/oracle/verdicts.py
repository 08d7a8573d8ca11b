"""What a configuration is judged to be: verdicts, faults, and the whole answer about it."""

import expression as ex
from configuration import Configuration, View
from expression import Unknown, all_reasons, compare

ERROR_CLASS = "error"


def both(*truths):
    """The conjunction of truths that may be unknown."""
    if any(truth is False for truth in truths):
        return False
    unknown = [truth for truth in truths if type(truth) is Unknown]
    return all_reasons(*unknown) if unknown else True


def either(*truths):
    """The disjunction of truths that may be unknown."""
    if any(truth is True for truth in truths):
        return True
    unknown = [truth for truth in truths if type(truth) is Unknown]
    return all_reasons(*unknown) if unknown else False


def unless(condition, truth):
    """Whether the truth holds or the condition does not."""
    if condition is False or truth is True:
        return True
    if condition is True:
        return truth
    return condition if truth is False else all_reasons(condition, truth)


class Judge:
    """Collects the verdicts on a configuration."""

    def __init__(self, configuration):
        self.configuration = configuration
        self.model = configuration.model
        self.objects = configuration.objects
        self.verdicts = []
        self.faults = {}  # (text, id, offset) and the severity that it is told with
        self.judge_values()
        for name, each in self.objects.items():
            if each.kind in ("INTEGER", "STRING"):
                self.judge_parameter(name, each)
            elif each.is_port():
                self.judge_port(name, each)
            if each.kind != "macro":
                self.judge_forces(name, each)
        self.judge_function()
        self.judge_requests()
        for (text, fault_id, _), severity in self.faults.items():
            self.tell("fault", severity, text.subject, text.line, "undecided")

    # Telling.

    def tell(self, verdict_id, severity, subject, line, result="fails"):
        self.verdicts.append({"id": verdict_id, "severity": severity, "result": result,
                              "subject": subject, "line": line})

    def tell_fault(self, text, fault_id, offset, severity):
        if self.faults.get((text, fault_id, offset)) != "error":
            self.faults[text, fault_id, offset] = severity

    def spoiled(self, severity, *texts):
        """Tells what spoils the texts; true when anything does."""
        for text in texts:
            for where, fault in text.spoilers if text else ():
                self.tell_fault(where, fault.id, fault.offset, severity)
        return any(text and text.spoilers for text in texts)

    def decide(self, verdict_id, severity, subject, line, truth, texts=()):
        """Tells a verdict that fails or is undecided for more than what happens at run time."""
        is_spoiled = self.spoiled("warning" if severity != "error" else "error", *texts)
        if truth is False:
            self.tell(verdict_id, severity, subject, line)
        elif type(truth) is Unknown and not is_spoiled:
            if any(reason[0] != "port" for reason in truth.reasons):
                self.tell(verdict_id, severity, subject, line, "undecided")

    # Values.

    def judge_values(self):
        for text in self.configuration.texts_needed():
            for fault in text.notes:
                self.tell_fault(text, fault.id, fault.offset, "error")
        lost = {}
        for node in self.configuration.edges:
            value = self.configuration.value(node)
            self.tell_faults_of(value, "error")
            if type(value) is Unknown and ("cycle",) in value.reasons:
                lost[node[1]] = self.objects[node[1]].line
        for name, line in lost.items():
            self.tell("fault", "error", name, line, "undecided")

    def tell_faults_of(self, value, severity):
        if type(value) is Unknown:
            for reason in value.reasons:
                if reason[0] == "fault" and len(reason) == 4:
                    self.tell_fault(reason[2], reason[1], reason[3], severity)

    # Parameters.

    def judge_parameter(self, name, target):
        value = self.configuration.value(("value", name))
        if type(value) is Unknown and ("unset", name) in value.reasons:
            self.tell("needs-value", "error", name, target.line)
        if self.model.lists[name]:
            texts = self.model.items.get(name, ())
            self.decide("not-in-list", "error", name, target.line, self.in_list(name, value), texts)
        for rule in self.configuration.rules_of(name, "FORCE_RANGE"):
            self.judge_range("out-of-range", "error", name, rule, value)
        for rule in self.configuration.rules_of(name, "VALUE_RULE"):
            holds = self.configuration.judge(rule.condition)
            self.decide("value-rule", "error", name, rule.line, holds, [rule.condition])

    def in_list(self, name, value):
        if type(value) is Unknown:
            return value
        if name not in self.model.items:
            return value in self.model.lists[name]
        found = [compare("==", value, self.configuration.judge(item))
                 for item in self.model.items[name]]
        if True in found:
            return True
        unknown = [truth for truth in found if type(truth) is Unknown]
        return all_reasons(*unknown) if unknown else False

    def judge_range(self, verdict_id, severity, name, rule, value, applies=True):
        condition = both(applies, self.configuration.holds(rule.condition))
        if condition is False:
            return
        texts = [rule.condition, rule.first, rule.second]
        truth = unless(condition, self.in_range(rule, value))
        self.decide(verdict_id, severity, name, rule.line, truth, texts)

    def in_range(self, rule, value):
        truths = [compare("<=", value, self.configuration.judge(rule.first))]
        if rule.second:
            truths.append(compare(">=", value, self.configuration.judge(rule.second)))
        return both(*truths)

    # Ports.

    def judge_port(self, name, target):
        state = self.configuration.value(("state", name))
        tied = self.configuration.value(("constant", name))
        is_tied = self.configuration.is_tied(name)
        is_connected = state if type(state) is Unknown else state[0] in ("USED", "VARIABLE")
        if target.kind != "BURIED":
            self.judge_widths(name, target, either(is_connected, is_tied), tied)
        if type(state) is Unknown or state[0] == "CONSTANT":
            for rule in self.configuration.rules_of(name, "CONSTANT_RANGE"):
                self.judge_range("port-range", "error", name, rule, tied, is_tied)
        for rule in self.configuration.rules_of(name, "FORCE_RANGE"):
            self.judge_port_range(name, rule, is_connected, is_tied, tied)
        if is_connected is True:
            self.judge_connected(name)
        elif type(state) is not Unknown and target.kind == "INPUT":
            self.judge_unconnected(name, target, state)

    def judge_widths(self, name, target, is_used, tied):
        for text in self.model.widths[name] if is_used is not False else ():
            width = self.configuration.judge(text)
            truth = width
            if type(width) is not Unknown:
                truth = type(width) is int and width >= 1
            self.decide("port-width", "error", name, target.line, unless(is_used, truth), [text])
        width = self.width_of(name)
        if type(tied) is int and width is not None and 1 <= width < 128:
            if not -(2**(width - 1)) <= tied < 2**width:
                self.tell("port-range", "error", name, target.line)

    def width_of(self, name):
        """The WIDTH of a port as a whole number, None when it is none."""
        target = self.objects[name]
        if not target.width:
            return 1
        width = self.configuration.judge(self.model.widths[name][0])
        width = width if type(width) is Unknown else ex.snapped(width)
        return width if type(width) is int else None

    def judge_port_range(self, name, rule, is_connected, is_tied, tied):
        """A constant must lie in the range, and what is connected must have something to carry."""
        condition = self.configuration.holds(rule.condition)
        if condition is False or either(is_connected, is_tied) is False:
            return
        truths = []
        if rule.second and is_connected is not False:
            limits = compare(">=", self.configuration.judge(rule.first),
                             self.configuration.judge(rule.second))
            truths.append(unless(both(condition, is_connected), limits))
        if is_tied is not False:
            tied = Unknown(("port", name)) if tied is None else tied
            truths.append(unless(both(condition, is_tied), self.in_range(rule, tied)))
        self.decide("port-range", "warning", name, rule.line, both(*truths),
                    [rule.condition, rule.first, rule.second])

    def judge_connected(self, name):
        for rule in self.configuration.rules_of(name, "FORCE_VALUE"):
            if rule.second or self.configuration.holds(rule.condition) is True:
                self.tell("forced-but-connected", "warning", name, rule.line)
                return

    def judge_unconnected(self, name, target, state):
        is_forced = self.configuration.is_forced_port(name) is not False
        has_number = ":" in self.configuration.settings.get(name, "") and state[0] == "CONSTANT"
        if not (is_forced or has_number or state[1] is not None or target.default_value):
            self.tell("port-needs-value", "warning", name, target.line)

    # Forces that disagree.

    def judge_forces(self, name, target):
        groups = ["FORCE_VALUE", "STATE"] if target.is_port() else ["FORCE_VALUE"]
        for origin in groups:
            decides = None
            for rule in self.configuration.rules_of(name, origin):
                if not rule.condition:
                    break
                if self.configuration.judge(rule.condition) is True:
                    value = self.configuration.judge(rule.first)
                    if decides is None or type(decides) is Unknown:
                        decides = value
                    elif self.differ(decides, value):
                        self.tell("forces-disagree", "error", name, rule.line)
                        break
                if rule.second:
                    break

    @staticmethod
    def differ(one, other):
        if type(one) is Unknown or type(other) is Unknown:
            return False
        return type(one) is not type(other) or one != other

    # The function.

    def judge_function(self):
        for is_required, line, text in self.model.function_rules:
            self.decide("rule" if is_required else "advice", "error" if is_required else "advice",
                        "", line, self.configuration.judge(text), [text])
        for severity, element, text in self.model.messages:
            if severity == "error" and self.shown(element, text) is not None:
                self.tell("message-error", "error", "", element.line)
        told = [text for _, _, text in self.model.messages]
        told += list(self.model.waves.values()) + list(self.model.map_conditions.values())
        told += [text for entries in self.model.stimulus.values() for _, text in entries]
        for text in [*told, *self.model.pieces]:
            if text:
                self.spoiled("warning", text)
                self.tell_own_faults(text)

    def tell_own_faults(self, text):
        """What arises in the text itself or in a macro, not in the values that it names."""
        result = self.configuration.judge(text)
        for reason in result.reasons if type(result) is Unknown else ():
            if reason[0] == "fault" and len(reason) == 4:
                if reason[2] is text or reason[2].role == "macro":
                    self.tell_fault(reason[2], reason[1], reason[3], "warning")

    def shown(self, element, text):
        """The text of a message or the command of a stimulus entry, None when there is none."""
        holds = self.configuration.holds(text)
        if type(holds) is Unknown:
            return None
        return (element.text1 if holds else element.text2) or None

    # Requests.

    def judge_requests(self):
        for name, asked in self.configuration.settings.items():
            if not self.is_granted(name, asked):
                self.tell("overridden", "warning", name, self.objects[name].line)

    def is_granted(self, name, asked):
        if not self.objects[name].is_port():
            value = self.configuration.value(("value", name))
            return type(value) is Unknown or value == self.configuration.asked_value(name)[0]
        state = self.configuration.value(("state", name))
        word, _, number = asked.partition(":")
        if type(state) is Unknown:
            return True
        tied = self.configuration.value(("constant", name))
        return state[0] == word and (not number or type(tied) is Unknown or tied == int(number))


# --- The answer --------------------------------------------------------------------------------

def shown_value(value):
    return None if type(value) is Unknown or value is None else ex.text_of(value)


def reason_text(reason):
    if reason[0] == "port":
        return f"run-time {reason[1]}"
    return " ".join(reason[:2])


def faults_of(configuration):
    """The faults of all texts, with where they stand."""
    model = configuration.model
    used = [model.macros[name] for name in model.used_macros]
    found = set()
    for text in [*model.texts, *used]:
        for fault in text.faults + text.notes:
            found.add((text.line, fault.offset, fault.id))
    for text in model.texts:
        if text.spoilers:
            continue
        result = configuration.judge(text)
        for reason in result.reasons if type(result) is Unknown else ():
            if reason[0] == "fault" and len(reason) == 4:
                found.add((reason[2].line, reason[3], reason[1]))
    return [{"id": fault_id, "offset": offset, "line": line}
            for line, offset, fault_id in sorted(found)]


def parameter_answer(configuration, name, target):
    asked, source = configuration.asked_value(name)
    if configuration.is_forced(configuration.rules_of(name, "FORCE_VALUE")):
        source = "forced"
    return {"name": name, "type": target.kind, "asked": shown_value(asked),
            "value": shown_value(configuration.value(("value", name))), "source": source,
            "settable": True}


def port_answer(judge, name):
    configuration = judge.configuration
    asked, source = configuration.asked_state(name)
    state = configuration.value(("state", name))
    if configuration.is_forced(configuration.rules_of(name, "STATE")):
        source = "state"
    number = configuration.settings.get(name, "").partition(":")[2]
    width = judge.width_of(name)
    if width is not None and not -(2**63) <= width < 2**63:
        width = None
    return {"name": name, "asked": f"{asked}:{int(number)}" if number else asked,
            "state": None if type(state) is Unknown else state[0], "source": source, "width": width,
            "tied": shown_value(configuration.value(("constant", name))),
            "settable": configuration.is_settable(name)}


def truth_answer(truth):
    return None if type(truth) is Unknown else truth


def vector_answer(judge, name):
    configuration = judge.configuration
    stimulus = []
    for element, text in judge.model.stimulus[name]:
        holds = configuration.holds(text)
        command = element.text2 if holds is False else element.text1
        stimulus += [command] if command or holds is not False else []
    return {"name": name, "applies": truth_answer(configuration.holds(judge.model.waves[name])),
            "stimulus": stimulus}


def expression_answer(configuration, source):
    from configuration import Text
    model = configuration.model
    text = Text(source, 0)
    model.compile(text)
    used = model.macros_of(text)
    faults = text.faults + [fault for name in used for fault in model.macros[name].faults]
    if faults:
        value = Unknown(*(("fault", fault.id) for fault in faults))
    else:
        value = ex.Evaluator(View(configuration, None), text).answer(text.tree)
    kinds = {bool: "truth", int: "integer", float: "real", str: "text", Unknown: "unknown"}
    reasons = value.reasons if type(value) is Unknown else ()
    return {"kind": kinds[type(value)], "value": shown_value(value),
            "reasons": sorted({reason_text(reason) for reason in reasons})}


def answer(model, settings=(), map_name=None, expressions=()):
    """All that can be seen of a configuration, and how many cycles came to rest or did not."""
    configuration = Configuration(model, settings, map_name)
    judge = Judge(configuration)
    objects = configuration.objects.items()
    messages = [{"severity": severity, "text": judge.shown(element, text)}
                for severity, element, text in model.messages
                if judge.shown(element, text) is not None]
    return {
        "loaded": model.description.is_clean,
        "set": configuration.set_result,
        "parameters": [parameter_answer(configuration, name, each) for name, each in objects
                       if each.kind in ("INTEGER", "STRING")],
        "hidden": [{"name": name, "value": shown_value(configuration.value(("value", name)))}
                   for name, each in objects if each.kind == "hidden"],
        "ports": [port_answer(judge, name) for name, each in objects if each.is_port()],
        "verdicts": sorted(judge.verdicts, key=lambda each: (
            each["line"], each["id"], each["subject"], each["severity"], each["result"])),
        "messages": messages,
        "vectors": [vector_answer(judge, name) for name in model.description.vectors],
        "maps": [{"name": name, "applies": truth_answer(configuration.holds(
            model.map_conditions[name]))} for name in model.description.maps],
        "legal": all(each["severity"] != "error" for each in judge.verdicts),
        "granted": all(each["id"] != "overridden" for each in judge.verdicts),
        "settings": dict(configuration.settings),
        "map": configuration.map_name,
        "faults": faults_of(configuration),
        "cycles": configuration.cycle_counts,
        "expressions": [expression_answer(configuration, each) for each in expressions],
    }
