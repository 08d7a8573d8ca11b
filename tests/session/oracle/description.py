"""Reads a description file into plain records, section by section."""

import xml.etree.ElementTree as ET
from xml.parsers import expat

PORT_KINDS = ("INPUT", "OUTPUT", "BIDIR", "BURIED")
PARAMETER_KINDS = ("INTEGER", "STRING")
TYPE_TEXTS = PARAMETER_KINDS + PORT_KINDS
SEVERITIES = {"CRITICAL_WARNING": "critical-warning", "WARNING": "warning", "ERROR": "error",
              "INFO": "info"}


def as_bytes(text):
    """One character for each byte of the text."""
    return text if text.isascii() else text.encode().decode("latin-1")


def read_tree(path):
    """The root element; every element has the attribute "line" of its "<"."""
    builder = ET.TreeBuilder()
    parser = expat.ParserCreate()
    parser.buffer_text = True

    def start(tag, attributes):
        element = builder.start(tag, {name: as_bytes(value) for name, value in attributes.items()})
        lines[element] = parser.CurrentLineNumber

    lines = {}
    parser.StartElementHandler = start
    parser.EndElementHandler = builder.end
    parser.CharacterDataHandler = lambda data: builder.data(as_bytes(data))
    with open(path, "rb") as file:
        parser.ParseFile(file)
    return builder.close(), lines


def text_in(element):
    """The element's own character data; white space alone counts only without sub-elements."""
    pieces = [element.text or ""] + [sub.tail or "" for sub in element]
    if len(element):
        pieces = [piece for piece in pieces if piece.strip(" \t\r\n")]
    return "".join(pieces)


def attributes_of(element):
    return sorted(element.attrib.items(), key=lambda pair: pair[0].lower())


def integer_of(text):
    """A number as strtol reads it, cut to 32 bits."""
    text = text.lstrip(" \t\n\v\f\r")
    end = 1 if text[:1] in ("+", "-") else 0
    start = end
    while end < len(text) and "0" <= text[end] <= "9":
        end += 1
    number = int(text[:end]) if end > start else 0
    number = max(-(2**63), min(2**63 - 1, number))
    return (number + 2**31) % 2**32 - 2**31


class Element:
    """A rule element: what its three texts are is settled by its origin."""

    __slots__ = ("text1", "text2", "text3", "origin", "line")

    def __init__(self, text1, text2, text3, origin, line):
        self.text1, self.text2, self.text3 = text1, text2, text3
        self.origin = origin
        self.line = line


class Object:
    def __init__(self, name, kind, line):
        self.name = name
        self.kind = kind
        self.line = line
        self.rules = []
        self.default_value = ""
        self.value_array = ""
        self.default_index = -1
        self.usage = "USED"
        self.width = ""
        self.width2d = ""
        self.connection = ""
        self.arguments = ""

    def is_port(self):
        return self.kind in PORT_KINDS

    def add_value(self, text):
        self.value_array = self.default_value = text


class Vector:
    def __init__(self, name):
        self.name = name
        self.condition = None  # (text, line)
        self.description = None
        self.stimulus = []  # Element


class Map:
    def __init__(self, name, line):
        self.name = name
        self.line = line
        self.objects = {}
        self.condition = None  # (text, line)


class Piece:
    """One piece of a conditional text. Its THEN and ELSE are texts or lists of pieces."""

    def __init__(self, line):
        self.line = line
        self.condition = ""
        self.then = ""
        self.otherwise = ""


class Description:
    def __init__(self, path):
        self.is_clean = True
        self.objects = {}
        self.rules = []  # (is required, text, line)
        self.messages = []  # (severity, Element)
        self.vectors = {}
        self.maps = {}
        self.texts = {}  # "INTRO" and "END" of the help text: lists of pieces
        root, self.lines = read_tree(path)
        if root.tag == "ROOT":
            for section in root:
                self.read_section(section)

    def post(self):
        self.is_clean = False

    def line(self, element):
        return self.lines[element]

    def read_section(self, section):
        readers = {"MACROS": self.read_macros, "HIDDEN_PARAMETERS": self.read_hidden,
                   "PORTS": self.read_ports, "PORT_RULES": self.read_ports,
                   "PARAMETERS": self.read_parameters, "PARAMETER_RULES": self.read_parameters,
                   "WAVE_DATA": self.read_vectors, "CUSTOM_VECTORS": self.read_vectors,
                   "HTML_TEXT": self.read_html, "RULES": self.read_rules,
                   "MESSAGES": self.read_messages, "MSGS": self.read_messages,
                   "WIZARD_DATA": self.read_maps, "FUNCTION_INFORMATION": lambda _: None}
        if section.tag in readers:
            readers[section.tag](section)
        else:
            self.post()

    def add_object(self, name, kind, element):
        found = self.objects.get(name)
        if found is None and kind is not None:
            found = self.objects[name] = Object(name, kind, self.line(element))
        elif found is None or kind not in (None, found.kind):
            self.post()
            return None
        return found

    # --- Parameters and ports -----------------------------------------------------------------

    def read_kind(self, element, kinds):
        kind = element.get("TYPE")
        if kind is None or kind in kinds:
            return kind
        self.post()
        return None

    def read_parameters(self, section):
        for element in section:
            if element.tag == "PARAMETER":
                kind = self.read_kind(element, PARAMETER_KINDS)
                name = element.get("NAME", "")
                found = self.add_object(name, kind, element) if name else self.post()
                if found:
                    self.read_parameter_fields(found, element)

    def read_ports(self, section):
        for element in section:
            if element.tag == "PORT":
                kind = self.read_kind(element, PORT_KINDS)
                name = element.get("NAME", "")
                found = self.add_object(name, kind, element) if name else self.post()
                if found:
                    self.read_port_fields(found, element)

    def read_parameter_fields(self, target, element):
        for name, value in attributes_of(element):
            if name == "VALUE":
                target.add_value(value)
            elif name == "DEFAULT_VALUE":
                target.default_value = value
            elif name == "DEFAULT_VALUE_INDEX":
                target.default_index = integer_of(value)
            elif name == "CNX_TYPE":
                if value in ("CONSTANT", "PRIVATE"):
                    target.connection = value
                else:
                    self.post()
            elif name not in ("NAME", "TYPE", "LPM_HINT"):
                self.post()
        self.read_object_rules(target, element)

    def read_port_fields(self, target, element):
        for name, value in attributes_of(element):
            if name == "USAGE":
                target.usage = value if value in ("UNUSED", "VARIABLE", "CONSTANT") else "USED"
            elif name == "WIDTH":
                target.width = value
            elif name == "WIDTH2D":
                target.width2d = value
            elif name == "DEFAULT_VALUE":
                target.default_value = value
            elif name == "CNX_TYPE":
                if value == "USED_PORT":
                    target.connection = value
                else:
                    self.post()
            elif name == "HIGH_PROBABILITY":
                if not 1 <= integer_of(value) <= 100:
                    self.post()
            elif name not in ("NAME", "TYPE", "IS_CLOCK_PORT", "ASYNC", "INITIAL_VEC_STATE",
                              "CLOCK_PERIOD"):
                self.post()
        self.read_object_rules(target, element)

    def read_hidden(self, section):
        for element in section:
            if element.tag != "PARAMETER":
                continue
            name = element.get("NAME", "")
            found = self.add_object(name, "hidden", element) if name else self.post()
            if not found:
                continue
            for attribute, value in attributes_of(element):
                if attribute == "VALUE":
                    found.add_value(value)
                elif attribute != "NAME":
                    self.post()
            was_clean = self.is_clean
            self.read_object_rules(found, element)
            self.is_clean = was_clean

    # --- Rule elements of objects --------------------------------------------------------------

    def read_object_rules(self, target, element):
        admitted = {"FORCE_VALUE": 2}
        if target.is_port():
            admitted = {"STATE": 2, "FORCE_VALUE": 2, "FORCE_RANGE": 1, "CONSTANT_RANGE": 3}
        elif target.kind in PARAMETER_KINDS:
            admitted = {"FORCE_VALUE": 2, "FORCE_RANGE": 1}
        for sub in element:
            if sub.tag in admitted:
                self.read_range(target, sub, admitted[sub.tag])
            elif sub.tag == "VALUE_RULE" and target.kind in PARAMETER_KINDS:
                self.read_value_rule(target, sub)
            else:
                self.post()

    def read_range(self, target, element, kind):
        """One FORCE_VALUE, STATE, FORCE_RANGE or CONSTANT_RANGE: after a WHEN_CMD the names whose
        meaning hangs on the kind have none."""
        first = second = third = ""
        for name, value in attributes_of(element):
            if name in ("V", "TO", "THEN") and not (kind == 1 and target.is_port()):
                first = value
            elif name == "MAX" and kind in (1, 3):
                first = value
            elif name in ("IF", "WHEN", "WHEN_CMD"):
                third = value
                kind = 0 if name == "WHEN_CMD" else kind
            elif name == "ELSE" and kind == 2:
                second = value
            elif name == "MIN" and kind in (1, 3):
                second = value
            else:
                self.post()
        for sub in element:
            value = text_in(sub)
            if sub.tag in ("V", "TO", "THEN") and kind != 1:
                first = value
            elif sub.tag == "MAX" and kind == 1:
                first = value
            elif sub.tag in ("IF", "WHEN", "WHEN_CMD"):
                third = value
                kind = 0 if sub.tag == "WHEN_CMD" else kind
            elif sub.tag == "ELSE" and kind == 2:
                second = value
            elif sub.tag == "MIN" and kind == 1:
                second = value
            else:
                self.post()
        if first:
            target.rules.append(Element(first, second, third, element.tag, self.line(element)))

    def read_value_rule(self, target, element):
        condition = text_in(element)
        parts = {"IF": "", "THEN": "", "ELSE": ""}
        for sub in element:
            if sub.tag in parts:
                parts[sub.tag] = text_in(sub)
            else:
                self.post()
        if parts["IF"] and parts["THEN"]:
            inner = f"( {parts['IF']}) and ( {parts['THEN']} )"
            condition = f"( {inner} ) || ( !( {parts['IF']} ) )"
            if parts["ELSE"]:
                condition = f"( {inner} ) || ( !( {parts['IF']} ) and ( {parts['ELSE']} ) )"
        if condition:
            target.rules.append(Element("", "", condition, "VALUE_RULE", self.line(element)))

    # --- Rules, messages, macros ---------------------------------------------------------------

    def read_rules(self, section):
        for element in section:
            if element.tag not in ("RULE", "CONDITION"):
                self.post()
                continue
            text = text_in(element)
            if text and element.get("ENABLED", "ON") == "ON":
                is_required = element.get("REQUIRED_RULE", "ON") == "ON"
                self.rules.append((is_required, text, self.line(element)))
            else:
                self.post()

    def read_messages(self, section):
        for element in section:
            if element.tag not in ("MESSAGE", "MSG") or element.get("TYPE") not in SEVERITIES:
                self.post()
                continue
            severity = SEVERITIES[element.get("TYPE")]
            then, condition, otherwise = text_in(element), "", ""
            if not then:
                then, condition, otherwise = self.read_message_parts(element)
            if then:
                rule = Element(then, otherwise, condition, "MESSAGE", self.line(element))
                self.messages.append((severity, rule))

    def read_message_parts(self, element):
        then = condition = otherwise = ""
        for sub in element:
            if sub.tag in ("THEN", "TEXT"):
                then = text_in(sub)
            elif sub.tag in ("IF", "WHEN"):
                condition = text_in(sub)
            elif sub.tag == "ELSE":
                otherwise = text_in(sub)
            else:
                self.post()
        return then, condition, otherwise

    def read_macros(self, section):
        for element in section:
            if element.tag != "MACRO":
                self.post()
                continue
            found = None
            if "NAME" in element.attrib:
                found = self.add_object(element.get("NAME"), "macro", element)
            definition = element.get("DEFINITION", "")
            if len(element):
                if element[0].tag == "DEFINITION":
                    definition = text_in(element[0])
                else:
                    self.post()
            if found and definition:
                found.add_value(definition)
                found.arguments = element.get("ARGUMENTS", "") or found.arguments

    # --- Waves ---------------------------------------------------------------------------------

    def read_vectors(self, section):
        for element in section:
            if element.tag not in ("WAVE", "CUSTOM_VECTOR"):
                continue
            name = element.get("NAME", "")
            if not name:
                self.post()
                continue
            vector = self.vectors.setdefault(name, Vector(name))
            for attribute, value in attributes_of(element):
                if attribute == "DISPLAY_TRUNCATION" and value in ("HIGH", "LOW"):
                    continue
                if attribute not in ("NAME", "MAX_TIME", "TIME_STEP", "INDEX"):
                    self.post()
            self.read_vector(vector, element)

    def read_vector(self, vector, element):
        pending, condition, line = [], "", 0

        def flush(alternatives=()):
            for position, (text, own_line) in enumerate(pending):
                other = alternatives[position] if position < len(alternatives) else ""
                vector.stimulus.append(Element(text, other, condition, "STIM",
                                               line if condition else own_line))
            pending.clear()

        for sub in element:
            if sub.tag in ("STIM", "VECTOR", "IF"):
                flush()
                condition = ""
            if sub.tag == "DESCRIPTION":
                vector.description = self.read_conditional_text(sub)
            elif sub.tag in ("STIM", "VECTOR"):
                pending.append((text_in(sub), self.line(sub)))
            elif sub.tag == "IF":
                condition, line = text_in(sub), self.line(sub)
            elif sub.tag == "THEN":
                pending += [(text, self.line(sub)) for text in self.read_commands(sub)]
            elif sub.tag == "ELSE":
                alternatives = self.read_commands(sub)
                if pending and len(alternatives) > len(pending):
                    self.post()
                flush(alternatives)
                condition = ""
            elif sub.tag == "WAVE_CONDITION":
                vector.condition = (text_in(sub), self.line(sub))
            elif sub.tag not in ("CAPTION", "DISPLAY"):
                self.post()
        flush()

    def read_commands(self, element):
        commands = []
        for sub in element:
            if sub.tag in ("STIM", "VECTOR"):
                commands.append(text_in(sub))
            else:
                self.post()
        return commands

    # --- Wizard maps ---------------------------------------------------------------------------

    def read_maps(self, section):
        generic = None
        for element in section:
            if element.tag == "WIZARD_MAP":
                self.read_map(element)
            elif element.tag in ("PARAMETER", "PORT"):
                generic = generic or Map("generic", self.line(element))
                self.read_map_object(generic, element)
        if generic:
            for each in self.maps.values():
                for name, source in generic.objects.items():
                    each.objects.setdefault(name, source)

    def read_map(self, element):
        name = element.get("NAME", "")
        if not name:
            self.post()
            return
        found = self.maps.setdefault(name, Map(name, self.line(element)))
        for attribute in element.attrib:
            if attribute not in ("NAME", "WIZARD_NAME", "MODULE_NAME", "MAP_CONSTANTS",
                                 "MAP_USED_PORTS"):
                self.post()
        for sub in element:
            if sub.tag in ("PARAMETER", "PORT"):
                self.read_map_object(found, sub)
            elif sub.tag == "WIZARD_CONDITION":
                text = text_in(sub) or sub.get("CONDITION", "")
                if text:
                    found.condition = (text, self.line(sub))
            else:
                self.post()

    def read_map_object(self, target, element):
        is_port = element.tag == "PORT"
        kind = self.read_kind(element, PORT_KINDS if is_port else PARAMETER_KINDS)
        name = element.get("NAME", "")
        if not name:
            self.post()
            return
        found = target.objects.get(name)
        if found is None:
            if kind is None:
                return
            found = target.objects[name] = Object(name, kind, self.line(element))
        if is_port:
            self.read_port_fields(found, element)
        else:
            self.read_parameter_fields(found, element)

    # --- Help texts ----------------------------------------------------------------------------

    def read_html(self, section):
        self.texts = {}
        for element in section:
            if element.tag in ("INTRO", "END"):
                self.texts[element.tag] = self.read_conditional_text(element)

    def read_conditional_text(self, element):
        """The pieces of a conditional text, None without sub-elements."""
        if not len(element):
            return None
        pieces, piece = [], None

        def close():
            nonlocal piece
            if piece:
                pieces.append(piece)
            piece = None

        for sub in element:
            text = text_in(sub)
            if sub.tag in ("T", "TEXT", "IF"):
                close()
            if len(sub):
                if sub.tag == "IF" or text:
                    self.post()
                    continue
                nested = self.read_conditional_text(sub)
                piece = piece or Piece(self.line(sub))
                if sub.tag in ("T", "TEXT", "THEN"):
                    piece.then = nested
                elif sub.tag == "ELSE":
                    piece.otherwise = nested
                continue
            if not text:
                continue
            if sub.tag in ("T", "TEXT", "IF", "THEN", "ELSE"):
                piece = piece or Piece(self.line(sub))
            if sub.tag in ("T", "TEXT"):
                piece.then = text
                close()
            elif sub.tag == "IF":
                piece.condition = text
            elif sub.tag == "THEN":
                piece.then = text
            elif sub.tag == "ELSE":
                piece.otherwise = text
                close()
        close()
        return pieces
