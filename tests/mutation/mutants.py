"""Finds the places of C++ source text that can be changed by one operator, and the changes.

The text is cut into tokens, not parsed. Which `<`, `*` or `&&` is an operator follows from the blanks that clang-format sets
around binary operators. A wrong guess gives a mutant that does not compile, which is counted apart.
"""

import bisect
import dataclasses
import re

TOKEN = re.compile(
    r"""
      (?P<skip>//[^\n]*|/\*.*?\*/|\s+)
    | (?P<directive>(?m:^)[ \t]*\#(?:\\\n|[^\n])*)
    | (?P<string>(?:u8|[uUL])?R"(?P<mark>[^()\s\\]{0,16})\(.*?\)(?P=mark)"
                |(?:u8|[uUL])?"(?:\\.|[^"\\\n])*"|(?:u8|[uUL])?'(?:\\.|[^'\\\n])+')
    | (?P<number>\.?\d(?:[eEpP][+-]|'?[\w.])*)
    | (?P<name>[A-Za-z_]\w*)
    | (?P<op>->\*|<<=|>>=|<=>|\.\.\.|::|->|\+\+|--|&&|\|\||[<>=!+\-*/%&|^]=|<<|>>|.)
    """,
    re.VERBOSE | re.DOTALL)

RELATIONS = {"<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"], "==": ["!="], "!=": ["=="]}
ARITHMETIC = {"+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"], "%": ["/"]}
COMPOUND = {"+=": ["-="], "-=": ["+="], "*=": ["/="], "/=": ["*="], "|=": ["&="], "&=": ["|="]}
LOGIC = {"&&": ["||"], "||": ["&&"], "|": ["&"], "&": ["|"]}
ASSIGNMENTS = {"=", "+=", "-=", "*=", "/=", "%=", "|=", "&=", "^=", "<<=", ">>="}
NO_EXPRESSION = set("""return break goto using typedef namespace const constexpr static auto template class struct enum union if for
    while do switch case default delete else public private protected extern friend inline virtual explicit operator try catch
    co_return static_assert""".split())


@dataclasses.dataclass(frozen=True)
class Mutant:
    """One change of one file: text[start:end] becomes `new`."""
    file: str
    line: int
    kind: str
    start: int
    end: int
    old: str
    new: str

    def apply(self, text):
        return text[:self.start] + self.new + text[self.end:]

    def change(self):
        short = lambda s: " ".join(s.split()) if len(s) < 90 else " ".join(s.split())[:87] + "..."
        return f"{short(self.old) or '(nothing)'} => {short(self.new) or '(nothing)'}"


@dataclasses.dataclass(frozen=True)
class Token:
    kind: str
    text: str
    start: int
    end: int


def tokens_of(text):
    tokens = []
    for match in TOKEN.finditer(text):
        if match.lastgroup != "skip":
            kind = match.lastgroup if match.lastgroup != "mark" else "string"
            tokens.append(Token(kind, match.group(), match.start(), match.end()))
    return tokens


def find_mutants(file, text):
    """Every mutant of a file, in the order of the text."""
    return sorted(_Finder(file, text).find(), key=lambda m: (m.start, m.end, m.new))


class _Finder:
    def __init__(self, file, text):
        self.file = file
        self.text = text
        self.tokens = tokens_of(text)
        self.line_starts = [m.end() for m in re.finditer("\n", text)]
        self.partner = self._partners()

    def _partners(self):
        partner, open_ = {}, []
        for i, token in enumerate(self.tokens):
            if token.kind != "op":
                continue
            if token.text in "([{":
                open_.append(i)
            elif token.text in ")]}" and open_:
                partner[i] = open_.pop()
                partner[partner[i]] = i
        return partner

    def _make(self, kind, start, end, new):
        line = bisect.bisect_right(self.line_starts, start) + 1
        return Mutant(self.file, line, kind, start, end, self.text[start:end], new)

    def _token(self, kind, i, new):
        return self._make(kind, self.tokens[i].start, self.tokens[i].end, new)

    def _at(self, i):
        return self.tokens[i].text if 0 <= i < len(self.tokens) else ""

    def _ends_value(self, i):
        return i >= 0 and (self.tokens[i].kind in ("name", "number", "string") or self._at(i) in (")", "]"))

    def _is_spaced(self, i):
        token = self.tokens[i]
        before, after = self.text[token.start - 1:token.start], self.text[token.end:token.end + 1]
        return before.isspace() and after.isspace() and self._ends_value(i - 1) and self._at(i - 1) != "operator"

    def find(self):
        for i, token in enumerate(self.tokens):
            if token.kind == "number":
                yield from self._constant(i)
            elif token.kind == "name":
                yield from self._word(i)
            elif token.kind == "op":
                yield from self._operator(i)
            if self._starts_statement(i):
                yield from self._statement(i)

    def _operator(self, i):
        op = self._at(i)
        if self._is_spaced(i):
            for kind, table in (("relational", RELATIONS), ("arithmetic", ARITHMETIC), ("arithmetic", COMPOUND),
                                ("logic", LOGIC)):
                for new in table.get(op, []):
                    yield self._token(kind, i, new)
            if op == "?":  # turns the last comparison of the condition round
                yield self._make("condition", self.tokens[i].start, self.tokens[i].end, "== 0 ?")
        elif op in ("!", "-") and not self._ends_value(i - 1) or op in ("!", "-") and self._at(i - 1) == "return":
            yield self._token("negation", i, "")

    def _constant(self, i):
        literal = self._at(i)
        digits = literal.replace("'", "").rstrip("uUlLfF" if not literal.startswith("0x") else "uUlL")
        if not literal.startswith("0x") and re.search(r"[.eE]", digits):
            yield self._token("constant", i, "0.01" if float(digits) == 0.0 else f"({literal} * 1.01)")
            return
        try:
            value = int(digits, 0)
        except ValueError:
            return
        yield self._token("constant", i, str(value + 1))
        if value > 0:
            yield self._token("constant", i, str(value - 1))

    def _word(self, i):
        word = self._at(i)
        if word in ("true", "false"):
            yield self._token("constant", i, "false" if word == "true" else "true")
        if self._at(i - 1) == "::" and self._at(i - 2) == "std":
            if word in ("min", "max"):
                yield self._token("arithmetic", i, "max" if word == "min" else "min")
            if word == "abs" and self._at(i + 1) == "(":
                yield self._make("arithmetic", self.tokens[i - 2].start, self.tokens[i].end, "")
        if word == "if" and self._at(i + 1) == "(" and i + 1 in self.partner:
            first, last = i + 2, self.partner[i + 1] - 1
            inside = {self._at(k) for k in range(first, last + 1)}
            if inside & {";", "="}:
                return
            for value in ("true", "false"):
                yield self._make("condition", self.tokens[first].start, self.tokens[last].end, value)

    def _starts_statement(self, i):
        before = self._at(i - 1)
        if before in (";", "{", "}", "else"):
            return True
        if before != ")" or i - 1 not in self.partner:
            return False
        return self._at(self.partner[i - 1] - 1) in ("if", "for", "while", "switch")

    def _statement(self, i):
        """Deletion of a call, an assignment, a throw or a jump."""
        first = self.tokens[i]
        if first.text in ("throw", "continue"):
            end = i + 1
        else:
            end = self._expression_end(i)
            if end is None:
                return
        while end < len(self.tokens) and self._at(end) != ";":
            if self._at(end) in (")", "]", "}"):
                return
            end = self.partner.get(end, end) + 1 if self._at(end) in ("(", "[", "{") else end + 1
        if end >= len(self.tokens) or self._at(end - 1) in ("default", "delete"):
            return
        yield self._make("deletion", first.start, self.tokens[end - 1].end, "")

    def _expression_end(self, i):
        """The token at which what begins at i shows to be a call, an assignment or an increment; None for anything else."""
        if self._at(i) in ("++", "--", "*"):
            return i + 1
        if self.tokens[i].kind != "name" or self._at(i) in NO_EXPRESSION:
            return None
        called = False
        i += 1
        while i < len(self.tokens):
            op = self._at(i)
            if op in (".", "->", "::"):
                i, called = i + 2, False
            elif op in ("(", "[") and i in self.partner:
                i, called = self.partner[i] + 1, op == "("
            else:
                break
        op = self._at(i)
        return i if op in ASSIGNMENTS or op in ("++", "--", "<<") or (called and op == ";") else None
