# SPDX-FileCopyrightText: 2026 The VELM authors
# SPDX-License-Identifier: MIT
"""The shape of C++ sources: functions with their lines and nesting, classes with their methods.

A parse by tokens, not a compiler: comments, literals and preprocessor lines are blanked, and a
brace is what the words before it say. Templates and macros beyond those of this code may mislead
it.
"""

import re
from dataclasses import dataclass, field

PASSED_OVER = re.compile(
    r'R"(?P<mark>\w*)\(.*?\)(?P=mark)"'
    r'|"(?:\\.|[^"\\\n])*"'
    r"|\b\d[\w.']*"
    r"|'(?:\\.|[^'\\\n])+'"
    r"|(?P<comment>//[^\n]*|/\*.*?\*/)"
    r"|(?P<directive>^[ \t]*#(?:\\\n|[^\n])*)",
    re.DOTALL | re.MULTILINE,
)
TOKEN = re.compile(r"operator\s*(?:\(\)|\[\]|[^\w\s(]+)|\w+|::|->|\S")
CONDITIONS = {"if", "for", "while", "switch", "catch"}
CLASS_WORDS = {"class", "struct", "union"}
ACCESS_WORDS = {"public", "protected", "private", "signals", "Q_SIGNALS"}
OPENING = {"(": ")", "[": "]", "{": "}"}


@dataclass
class Function:
    """A definition: its lines from the first word to the closing brace, and how many conditions
    and loops its innermost statement stands in."""

    name: str
    owner: str
    lines: int
    nesting: int


@dataclass
class Method:
    """A declaration in a class. Only a public one that begins something new is promised to
    callers: no constructor, no destructor, no operator, no override, nothing defaulted."""

    name: str
    promised: bool
    documented: bool


@dataclass
class Class:
    """A class, struct or union with its body; closed are those whose members begin private."""

    name: str
    documented: bool
    closed: bool
    methods: list = field(default_factory=list)


@dataclass
class Source:
    """What one file defines."""

    functions: list = field(default_factory=list)
    classes: list = field(default_factory=list)


@dataclass
class Token:
    text: str
    line: int


def read(text):
    """The Source that the C++ text defines."""
    return Parser(text).source


def blanked(text):
    """(code, lines): the text without what is passed over, its line breaks kept, and the numbers
    of the lines that a documenting comment ends on."""
    documented = set()

    def blank(match):
        comment = match["comment"] or ""
        if comment.startswith(("///", "/**")):
            documented.add(text.count("\n", 0, match.end()) + 1)
        literal = "" if comment or match["directive"] else "0"
        return literal + "\n" * match[0].count("\n")

    return PASSED_OVER.sub(blank, text), documented


def tokens(code):
    found = []
    line, end = 1, 0
    for match in TOKEN.finditer(code):
        line += code.count("\n", end, match.start())
        end = match.start()
        found.append(Token(match[0], line))
    return found


def outermost(head):
    """The places in the head of a declaration that stand in no brackets, angle ones included."""
    places = []
    depth = 0
    for place, token in enumerate(head):
        closing = token.text in (")", "]", ">")
        depth -= closing
        if depth == 0:
            places.append(place)
        named = place > 0 and re.match(r"\w", head[place - 1].text)
        depth += token.text in ("(", "[") or (token.text == "<" and bool(named))
    return places


def in_brackets(head):
    """Whether the head ends within brackets that it has opened."""
    words = [token.text for token in head]
    return sum(map(words.count, "([")) > sum(map(words.count, ")]"))


class Parser:
    def __init__(self, text):
        self.source = Source()
        code, self.documented_lines = blanked(text)
        self.tokens = tokens(code)
        self.at = 0
        while self.at < len(self.tokens):
            self.scope(None)
            self.at += 1

    def text(self, at=None):
        at = self.at if at is None else at
        return self.tokens[at].text if at < len(self.tokens) else "}"

    def documented(self, token):
        return token.line - 1 in self.documented_lines

    # Declarations

    def scope(self, owner):
        """A file, a namespace or, with its Class as owner, a class, up to its closing brace."""
        public = owner is None or not owner.closed
        head = []
        while self.at < len(self.tokens) and self.text() != "}":
            token = self.tokens[self.at]
            if owner and not head and token.text in ACCESS_WORDS:
                public = token.text not in ("private", "protected")
                self.skip_to(":")
            elif not head and re.match(r"Q_[A-Z_]+$", token.text):
                self.macro()
            elif token.text == ";":
                self.declaration(head, owner, public)
                head = []
            elif token.text == "{":
                if self.braces(head, owner, public):
                    head = []
            else:
                head.append(token)
            self.at += 1

    def skip_to(self, text):
        while self.text() not in (text, "}"):
            self.at += 1

    def macro(self):
        if self.text(self.at + 1) == "(":
            self.at += 1
            self.brackets(0)
            self.at -= 1

    def braces(self, head, owner, public):
        """Takes what the braces after the head enclose. Whether it ends a declaration."""
        places = outermost(head)
        words = [head[place].text for place in places]
        if "namespace" in words or words == ["extern", "0"]:
            self.at += 1
            self.scope(None)
            return True
        if "enum" not in words and "(" not in words and CLASS_WORDS & set(words):
            self.class_body(head, words)
            return False
        if self.begins_body(head, words):
            self.function(head, places, owner, public)
            return True
        self.brackets(0)
        self.at -= 1
        head.append(self.tokens[self.at])
        return False

    @staticmethod
    def begins_body(head, words):
        """Whether the brace after the head is a function's, not one of a value: an argument's, or
        a member's in the list before a constructor's body."""
        if in_brackets(head) or "(" not in words or "=" in words:
            return False
        return ":" not in words or re.match(r"\w|>", head[-1].text) is None

    def class_body(self, head, words):
        base = words.index(":") if ":" in words else len(words)
        names = [word for word in words[:base] if re.match(r"\w", word) and word != "final"]
        found = Class(names[-1], self.documented(head[0]), closed="class" in words)
        self.source.classes.append(found)
        self.at += 1
        self.scope(found)

    def declaration(self, head, owner, public):
        places = outermost(head)
        words = [head[place].text for place in places]
        if not owner or "(" not in words or {"friend", "using", "typedef"} & set(words):
            return
        opening = words.index("(")
        points = head[places[opening] + 1].text == "*"
        if "=" not in words[:opening] and not points:
            self.method(head, words, owner, public)

    def method(self, head, words, owner, public):
        name = words[words.index("(") - 1]
        own = name == owner.name or name.startswith("operator") or "operator" in words
        inherited = {"override", "final", "default", "delete"} & set(words)
        promised = public and not own and not inherited
        owner.methods.append(Method(name, promised, self.documented(head[0])))

    def function(self, head, places, owner, public):
        words = [head[place].text for place in places]
        opening = words.index("(")
        qualified = opening > 2 and words[opening - 2] == "::"
        if owner:
            self.method(head, words, owner, public)
        nesting = self.statement(0)
        self.at -= 1
        self.source.functions.append(
            Function(
                name=words[opening - 1],
                owner=owner.name if owner else words[opening - 3] if qualified else "",
                lines=self.tokens[self.at].line - head[0].line + 1,
                nesting=nesting,
            )
        )

    # Statements: each takes its own tokens and gives the deepest nesting in it.

    def statement(self, depth):
        word = self.text()
        if word == "{":
            return self.brackets(depth)
        if word in CONDITIONS:
            return self.condition(depth)
        if word in ("do", "try", "else"):
            return self.branch(depth)
        if word in ("case", "default"):
            self.skip_to(":")
            self.at += 1
            return depth
        return self.expression(depth)

    def condition(self, depth):
        self.at += 1
        while self.text() != "(":
            self.at += 1
        inner = self.brackets(depth)
        if self.text() == ";":  # the end of do ... while (...);
            self.at += 1
            return inner
        return max(inner, self.statement(depth + 1), depth + 1)

    def branch(self, depth):
        self.at += 1
        if self.text() == "if":
            return self.statement(depth)
        return max(self.statement(depth + 1), depth + 1)

    def expression(self, depth):
        """Up to and with the semicolon, or up to the bracket that it stands in."""
        deepest = depth
        while self.text() not in OPENING.values():
            if self.text() in OPENING:
                deepest = max(deepest, self.brackets(depth))
                continue
            self.at += 1
            if self.text(self.at - 1) == ";":
                break
        return deepest

    def brackets(self, depth):
        """A bracket and what it holds, which may be the body of a lambda."""
        closing = OPENING[self.text()]
        self.at += 1
        deepest = depth
        while self.at < len(self.tokens) and self.text() != closing:
            if self.text() in OPENING.values():
                raise ValueError(f"line {self.tokens[self.at].line}: brackets do not match")
            deepest = max(deepest, self.statement(depth))
        self.at += 1
        return deepest
