"""The small changes that can be made to a C++ source, one at a time: what `./dev mutate` draws from.

    for mutant in mutants_of("Source/Base/Ascii.h", text):
        changed = mutant.apply(text)

A source is split into tokens; comments, texts, preprocessor lines, static_assert and template parameters are
never changed. Types are not known, so some of the changes do not compile; whoever runs them draws others
instead. The layout that clang-format gives is relied on where the language is ambiguous: a less-than sign has
spaces on both sides, an angle bracket has not.
"""

import hashlib
import re
from dataclasses import dataclass

TOKEN = re.compile(
    r"""(?P<comment>//[^\n]*|/\*.*?\*/)
      |(?P<directive>^[ \t]*\#(?:[^\n]*\\\n)*[^\n]*)
      |(?P<text>(?:u8|[uUL])?R"(?P<fence>[^()\\\s]*)\(.*?\)(?P=fence)"|(?:u8|[uUL])?"(?:\\.|[^"\\\n])*")
      |(?P<char>(?:u8|[uUL])?'(?:\\.|[^'\\\n])+')
      |(?P<number>\.?[0-9](?:'?[0-9a-zA-Z_.])*)
      |(?P<word>[A-Za-z_][A-Za-z_0-9]*)
      |(?P<sign><=>|<<=|>>=|\.\.\.|->\*|::|->|\+\+|--|<<|>>|<=|>=|==|!=|&&|\|\||[-+*/%&|^]=|[^\s])""",
    re.VERBOSE | re.DOTALL | re.MULTILINE)

CLOSING = {"(": ")", "[": "]", "{": "}"}
COMPARISONS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="}
ARITHMETIC = {"+": "-", "-": "+", "&": "|", "|": "&", "%": "/"}
STEPS = {"+=": "-=", "-=": "+=", "&=": "|=", "|=": "&=", "++": "--", "--": "++"}
DECLARING = {"const", "auto", "static", "constexpr", "using", "typedef", "struct", "class", "enum", "union",
             "extern", "static_assert", "friend", "thread_local", "template", "typename", "namespace", "goto"}
# Words before a parenthesis that is no list of arguments.
NO_CALL = {"if", "for", "while", "switch", "catch", "return", "sizeof", "decltype", "alignof", "noexcept",
           "static_assert", "alignas", "requires", "operator", "void", "constexpr"}
COMPILE_TIME = {"static_assert", "noexcept", "alignas", "decltype", "requires"}
SYMMETRIC = {"max", "min", "swap", "minmax", "isEqualIgnoringCase"}
# Where a report comes from is given by the rules, and the tests of the messages look at it.
REPORTING = re.compile(r"^(v\w*Report|AssertInfo)$")


@dataclass
class Token:
    kind: str
    text: str
    start: int
    end: int
    spaced: bool  # blanks on both sides


@dataclass(frozen=True)
class Mutant:
    """Of `file`, the bytes from `start` to `end` become `new`. `id` stays when the line moves within the
    file."""
    id: str
    file: str
    line: int
    function: str
    operator: str
    start: int
    end: int
    old: str
    new: str
    before: str  # the lines that it changes, in one
    after: str

    def apply(self, text):
        return text[:self.start] + self.new + text[self.end:]


@dataclass
class Brace:
    kind: str  # file, namespace, class, enum, block or list
    open: int
    function: str
    is_bool: bool


def tokens_of(text):
    found = []
    for match in TOKEN.finditer(text):
        kind = match.lastgroup if match.lastgroup != "fence" else "text"
        if kind in ("comment", "directive"):
            continue
        before = text[match.start() - 1:match.start()]
        spaced = (not before or before.isspace()) and text[match.end():match.end() + 1].isspace()
        found.append(Token(kind, match.group(), match.start(), match.end(), spaced))
    return found


class Source:
    """The tokens of a source with what must be known of them: pairs of brackets, kinds of braces, what is
    left alone."""

    def __init__(self, text):
        self.text = text
        self.tokens = tokens_of(text)
        self.match = {}
        self.braces = []  # those of kind "block", with the function that they belong to
        self.inside = [None] * len(self.tokens)  # the innermost Brace of a token
        self.left_alone = set()
        self._pair()
        self._leave_alone()
        self._classify()

    def at(self, index):
        return self.tokens[index].text if 0 <= index < len(self.tokens) else ""

    def span(self, first, last):
        """The text of the tokens from first to last, both included."""
        return self.text[self.tokens[first].start:self.tokens[last].end]

    def _pair(self):
        stack = []
        for index, token in enumerate(self.tokens):
            if token.kind != "sign":
                continue
            if token.text in CLOSING:
                stack.append(index)
            elif token.text in CLOSING.values() and stack and CLOSING[self.at(stack[-1])] == token.text:
                opened = stack.pop()
                self.match[opened], self.match[index] = index, opened

    def _leave_alone(self):
        for index, token in enumerate(self.tokens):
            following = self.at(index + 1)
            if token.text in COMPILE_TIME and following == "(":
                self.left_alone.update(range(index, self.match.get(index + 1, index) + 1))
            elif token.text == "template" and following == "<":
                self.left_alone.update(range(index, self._angle_end(index + 1) + 1))
            elif token.text in ("using", "typedef", "friend", "concept"):
                self.left_alone.update(range(index, self._next(index, ";") + 1))
            elif token.text == "[" and following == "[":
                self.left_alone.update(range(index, self.match.get(index, index) + 1))
            elif token.text == "<" and not token.spaced and self.tokens[index - 1].kind == "word":
                self.left_alone.update(range(index, self._angle_end(index) + 1))
            elif token.kind == "word" and REPORTING.match(token.text) and following in ("(", "{") and \
                    not self._is_declared(index):
                self.left_alone.update(range(index + 1, self.match.get(index + 1, index) + 1))

    def _is_declared(self, index):
        """Whether the name follows its type, so that no call begins here."""
        while self.at(index - 1) == "::":
            index -= 2
        return self.tokens[index - 1].kind == "word" and self.at(index - 1) not in ("return", "else", "do")

    def _next(self, index, text):
        while index < len(self.tokens) - 1 and self.at(index) != text:
            index += 1
        return index

    def _angle_end(self, index):
        depth = 0
        for at in range(index, len(self.tokens)):
            text = self.at(at)
            depth += {"<": 1, ">": -1, ">>": -2}.get(text, 0)
            if depth <= 0:
                return at
            if text in (";", "{"):
                return index
        return index

    def _classify(self):
        stack = [(Brace("file", -1, "", False), 0)]
        for index, token in enumerate(self.tokens):
            brace, begin = stack[-1]
            self.inside[index] = brace
            text = token.text if token.kind == "sign" else ""
            if text == "{":
                opened = self._brace_of(index, begin, brace)
                if opened.kind == "block":
                    self.braces.append(opened)
                stack.append((opened, index + 1))
            elif text in ("(", "["):
                stack.append((brace, index + 1))
            elif text in (")", "]", "}") and len(stack) > 1:
                stack.pop()
                if text == "}" and brace.kind != "list":
                    stack[-1] = (stack[-1][0], index + 1)
            elif text == ";" or (text == "," and brace.kind in ("list", "block")):
                stack[-1] = (brace, index + 1)
            elif text == ":" and self.at(begin) in ("case", "default", "public", "protected", "private"):
                stack[-1] = (brace, index + 1)

    def _brace_of(self, index, begin, parent):
        head = self.top_level(begin, index)
        words = [self.at(at) for at in head]
        last = words[-1] if words else ""
        if "namespace" in words:
            return Brace("namespace", index, "", False)
        if "enum" in words:
            return Brace("enum", index, "", False)
        if {"class", "struct", "union"} & set(words) and last != ")" and "=" not in words:
            return Brace("class", index, "", False)
        if not self._is_block(words, last, parent):
            return Brace("list", index, parent.function, parent.is_bool)
        if parent.kind in ("file", "namespace", "class"):
            name, is_bool = self._function_of(head)
            return Brace("block", index, name, is_bool)
        is_lambda = "]" in words
        return Brace("block", index, parent.function, "bool" in words if is_lambda else parent.is_bool)

    def top_level(self, begin, end):
        """The tokens of a range without what is in brackets, which stay themselves, and without what is left
        alone."""
        found, at = [], begin
        while at < end:
            if at not in self.left_alone:
                found.append(at)
            closing = self.match.get(at, at)
            if closing > at and closing < end:
                at = closing
                if at not in self.left_alone:
                    found.append(at)
            at += 1
        return found

    @staticmethod
    def _is_block(words, last, parent):
        if not words:
            return parent.kind == "block"
        if last in (")", "]", "else", "do", "try", "const", "noexcept", "override", "final", "mutable"):
            return True
        if last == "}":
            return ":" in words
        if "->" not in words or ")" not in words:
            return False
        return words[words.index("->") - 1] in (")", "const", "noexcept", "mutable")

    def _function_of(self, head):
        for place, index in enumerate(head):
            if self.at(index) == "(" and place > 0:
                name = self.at(head[place - 1])
                before = [self.at(at) for at in head[:place]]
                if "operator" in before:
                    name = "operator" + "".join(before[before.index("operator") + 1:])
                return name, "bool" in before or name == "operatorbool"
        return "", False


class Finder:
    """Collects the mutants of one source."""

    def __init__(self, file, text):
        self.file = file
        self.source = Source(text)
        self.found = []
        self.seen = {}

    def run(self):
        for index, token in enumerate(self.source.tokens):
            if index in self.source.left_alone:
                continue
            if token.kind == "number":
                self._constant(index)
            elif token.kind == "word":
                self._word(index)
            elif token.kind == "sign":
                self._sign(index)
        for brace in self.source.braces:
            for statements in self._statement_lists(brace):
                self._statements(statements)
        self.found.sort(key=lambda mutant: (mutant.start, mutant.operator, mutant.new))
        return self.found

    def add(self, operator, first, last, new):
        """The tokens from first to last become the text."""
        source = self.source
        start, end = source.tokens[first].start, source.tokens[last].end
        old = source.text[start:end]
        if old == new:
            return
        line_start = source.text.rfind("\n", 0, start) + 1
        line_end = source.text.find("\n", start)
        line = " ".join(source.text[line_start:line_end if line_end >= 0 else None].split())
        name = self.file.rsplit("/", 1)[-1]
        key = "\0".join((name, line, operator, " ".join(old.split()), " ".join(new.split())))
        self.seen[key] = self.seen.get(key, 0) + 1
        last_end = source.text.find("\n", end)
        after = source.text[line_start:start] + new + source.text[end:last_end if last_end >= 0 else None]
        before = source.text[line_start:last_end if last_end >= 0 else None]
        digest = hashlib.sha1(f"{key}\0{self.seen[key]}".encode()).hexdigest()[:10]
        function = source.inside[first].function if source.inside[first] else ""
        number = source.text.count("\n", 0, start) + 1
        self.found.append(Mutant(f"{operator}-{digest}", self.file, number, function, operator, start, end,
                                 old, new, " ".join(before.split()), " ".join(after.split())))

    # One token.

    def _constant(self, index):
        source, text = self.source, self.source.at(index)
        number = re.fullmatch(r"(0[xX][0-9a-fA-F']+|[0-9][0-9']*)([uUlLzZ]*)", text)
        # "= 0;" after the parameters of a function has no number in it.
        is_pure = source.at(index - 1) == "=" and source.at(index - 2) in (")", "const", "noexcept")
        if not number or is_pure:
            return
        value = int(number[1].replace("'", ""), 0 if number[1][:2] in ("0x", "0X") else 10)
        show = hex if number[1][:2] in ("0x", "0X") else str
        self.add("constant", index, index, show(value + 1) + number[2])
        if value > 0:
            self.add("constant", index, index, show(value - 1) + number[2])

    def _word(self, index):
        source, word = self.source, self.source.at(index)
        following = source.at(index + 1)
        if word in ("true", "false"):
            self.add("bool", index, index, "false" if word == "true" else "true")
        elif word in ("if", "while") and following == "(":
            self._condition(index + 1, source.match.get(index + 1), word)
        elif following in ("(", "{") and word not in NO_CALL and self._in_block(index):
            self._arguments(index + 1, word)

    def _sign(self, index):
        source, token = self.source, self.source.tokens[index]
        text, before = token.text, source.tokens[index - 1]
        is_value = before.kind in ("number", "char", "text") or before.text in (")", "]") or \
            (before.kind == "word" and before.text not in ("return", "case"))
        is_binary = token.spaced and is_value
        if before.text == "operator":
            return
        if text in COMPARISONS and is_binary:
            self.add("compare", index, index, COMPARISONS[text])
        elif text in ("&&", "||") and is_binary:
            self.add("logic", index, index, "||" if text == "&&" else "&&")
        elif text in ARITHMETIC and is_binary:
            self.add("arithmetic", index, index, ARITHMETIC[text])
        elif text in STEPS and self._in_block(index):
            self.add("arithmetic", index, index, STEPS[text])
        elif text == "!" and not token.spaced:
            self.add("negate", index, index, "")
        elif text == "?" and token.spaced:
            self._choice(index)
        elif text == "{" and source.inside[index].kind in ("block", "list") and self._in_block(index) \
                and before.kind != "word":
            self._arguments(index, "")

    def _in_block(self, index):
        return self.source.inside[index] is not None and self.source.inside[index].function != ""

    # Conditions.

    def _condition(self, opened, closed, word):
        if closed is None or closed == opened + 1:
            return
        source = self.source
        parts = source.top_level(opened + 1, closed)
        texts = [source.at(at) for at in parts]
        old = source.span(opened + 1, closed - 1)
        if ";" in texts:
            return
        if "=" in texts:
            # A declaration: its name is asked for in a condition of its own.
            name = texts[texts.index("=") - 1]
            if word == "if" and re.fullmatch(r"\w+", name):
                self.add("negate", opened + 1, closed - 1, f"{old}; !{name}")
                self.add("branch", opened + 1, closed - 1, f"{old}; false")
            return
        # Where the condition is one comparison or one "!", to turn that is a mutant already.
        if {"&&", "||", "?"} & set(texts) or not (old.startswith("!") or {"==", "!="} & set(texts)):
            self.add("negate", opened + 1, closed - 1, f"!({old})")
        if old not in ("true", "false"):
            self.add("branch", opened + 1, closed - 1, "false")
            if word == "if":
                self.add("branch", opened + 1, closed - 1, "true")

    def _choice(self, index):
        """The two answers of `condition ? one : other` change places."""
        source = self.source
        colon = self._at_level(index + 1, lambda text, depth: text == ":" and depth == 0)
        if colon is None:
            return
        end = self._at_level(colon + 1, lambda text, depth: text in (",", ";", ")", "}", "]", ":"))
        if end is None:
            return
        one, other = source.span(index + 1, colon - 1), source.span(colon + 1, end - 1)
        self.add("branch", index + 1, end - 1, f"{other} : {one}")

    def _at_level(self, index, is_it):
        """The first token of this level that is it; questions count as levels."""
        source, depth = self.source, 0
        while index < len(source.tokens):
            text = source.at(index) if source.tokens[index].kind == "sign" else ""
            if is_it(text, depth):
                return index
            if text in (")", "]", "}", ";"):
                return None
            depth += {"?": 1, ":": -1}.get(text, 0)
            index = source.match.get(index, index) + 1
        return None

    # Arguments.

    def _arguments(self, opened, word):
        source = self.source
        closed = source.match.get(opened)
        if closed is None or word in SYMMETRIC or source.at(opened - 1) == "]":
            return
        parts = self._split(opened + 1, closed)
        if not 2 <= len(parts) <= 6:
            return
        for (first, last), (next_first, next_last) in zip(parts, parts[1:]):
            one, other = source.span(first, last), source.span(next_first, next_last)
            between = source.text[source.tokens[last].end:source.tokens[next_first].start]
            if one != other:
                self.add("order", first, next_last, other + between + one)

    def _split(self, begin, end):
        """The ranges of tokens between commas; nothing where statements show that this is a block."""
        source, parts, first, at = self.source, [], begin, begin
        while at < end:
            if at in source.left_alone:
                at += 1
                continue
            text = source.at(at)
            if text == ";":
                return []
            if text == ",":
                if at > first:
                    parts.append((first, at - 1))
                first = at + 1
            at = source.match.get(at, at) + 1
        if end > first:
            parts.append((first, end - 1))
        return parts

    # Statements.

    def _statement_lists(self, brace):
        """The simple statements of a block, as (first, last) with the semicolon, those that follow each other
        together."""
        source = self.source
        end, at, lists, row = source.match.get(brace.open, brace.open), brace.open + 1, [], []
        while at < end:
            first = source.at(at)
            if first in ("if", "for", "while", "switch", "catch"):
                opened = at + 1 + (source.at(at + 1) == "constexpr")
                lists, row, at = self._ended(lists, row), [], source.match.get(opened, opened) + 1
                at = self._lone(at, end, lists)
            elif first in ("else", "do", "try"):
                lists, row = self._ended(lists, row), []
                at = self._lone(at + 1, end, lists) if source.at(at + 1) != "if" else at + 1
            elif first in ("case", "default"):
                lists, row = self._ended(lists, row), []
                while at < end and source.at(at) != ":":
                    at += 1
                at += 1
            elif first == "{":
                lists, row, at = self._ended(lists, row), [], source.match.get(at, at) + 1
            else:
                last = self._statement_end(at, end)
                row.append((at, last))
                at = last + 1
        return self._ended(lists, row)

    @staticmethod
    def _ended(lists, row):
        if row:
            lists.append(row)
        return lists

    def _lone(self, at, end, lists):
        """Steps over what a condition guards, when that is a simple statement."""
        if at >= end or self.source.at(at) in ("{", "if", "for", "while", "switch", "do", "try", ";"):
            return at
        last = self._statement_end(at, end)
        lists.append([(at, last)])
        return last + 1

    def _statement_end(self, at, end):
        while at < end and self.source.at(at) != ";":
            at = self.source.match.get(at, at) + 1
        return min(at, end - 1)

    def _statements(self, row):
        for first, last in row:
            if self.source.at(first) == "return":
                self._return(first, last)
            elif self._can_drop(first, last):
                self.add("drop", first, last, ";")
        for (first, last), (next_first, next_last) in zip(row, row[1:]):
            if self._is_expression(first, last) and self._is_expression(next_first, next_last) and \
                    self._may_depend(first, last, next_first, next_last):
                source = self.source
                one, other = source.span(first, last), source.span(next_first, next_last)
                between = source.text[source.tokens[last].end:source.tokens[next_first].start]
                self.add("order", first, next_last, other + between + one)

    def _may_depend(self, first, last, next_first, next_last):
        """Two calls may share anything; an assignment and its neighbour share what both name."""
        source = self.source
        texts = [{source.at(at) for at in source.top_level(begin, end)}
                 for begin, end in ((first, last), (next_first, next_last))]
        if not any("=" in text for text in texts):
            return True
        words = [{token.text for token in source.tokens[begin:end] if token.kind == "word"} - {"std", "move"}
                 for begin, end in ((first, last), (next_first, next_last))]
        return bool(words[0] & words[1])

    def _can_drop(self, first, last):
        if self.source.at(first) in ("break", "continue", "throw"):
            return True
        return self._is_expression(first, last)

    def _is_expression(self, first, last):
        source = self.source
        if source.at(last) != ";" or first == last or first in source.left_alone:
            return False
        if source.at(first) in DECLARING | {"return", "break", "continue", "throw"}:
            return False
        # "Type name" at its start is a declaration.
        at = first
        while at < last and (source.tokens[at].kind == "word" or source.at(at) in ("::", "&", "*") or
                             at in source.left_alone):
            at += 1
        if at - first < 2 or source.tokens[at - 1].kind != "word":
            return True
        return source.at(at - 2) in ("::",)

    def _return(self, first, last):
        source = self.source
        if source.at(last) != ";" or first in source.left_alone:
            return
        if last == first + 1:
            self.add("drop", first, last, ";")
            return
        value = source.span(first + 1, last - 1)
        if value in ("true", "false", "*this", "nullptr", "{}", "std::nullopt", "0"):
            return
        texts = {source.at(at) for at in source.top_level(first + 1, last)}
        if source.inside[first].is_bool or texts & {"==", "!=", "<=", ">=", "&&", "||"}:
            if texts & {"&&", "||"} or not (texts & {"==", "!="} or value.startswith("!")):
                self.add("return", first + 1, last - 1, f"!({value})")
            return
        self.add("return", first + 1, last - 1, "{}")


def mutants_of(file, text):
    return Finder(file, text).run()
