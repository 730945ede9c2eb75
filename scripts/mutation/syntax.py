"""Finds possible changes in a source. Walks the syntax tree of libclang, so that each mutant changes a real operator,
constant, condition or statement."""

from __future__ import annotations

import re
from collections.abc import Iterator

from clang.cindex import Cursor, CursorKind, Index, Token, TokenKind, TranslationUnit

from mutant import Mutant, Part, make_mutant

Change = tuple[int, int, bytes]  # from, to, replacement

REPLACEMENTS: dict[bytes, tuple[bytes, ...]] = {
    b"<": (b"<=", b">="),
    b"<=": (b"<", b">"),
    b">": (b">=", b"<="),
    b">=": (b">", b"<"),
    b"==": (b"!=",),
    b"!=": (b"==",),
    b"&&": (b"||",),
    b"||": (b"&&",),
    b"+": (b"-",),
    b"-": (b"+",),
    b"*": (b"/",),
    b"/": (b"*",),
    b"%": (b"*",),
    b"<<": (b">>",),
    b">>": (b"<<",),
    b"&": (b"|",),
    b"|": (b"&",),
    b"^": (b"&",),
    b"++": (b"--",),
    b"--": (b"++",),
}
REPLACEMENTS |= {
    operator + b"=": tuple(other + b"=" for other in REPLACEMENTS[operator])
    for operator in (b"+", b"-", b"*", b"/", b"%", b"<<", b">>", b"&", b"|", b"^")
}
COMPARISON = re.compile(rb"==|!=|<=?|>=?")

BINARY_KINDS = {CursorKind.BINARY_OPERATOR, CursorKind.COMPOUND_ASSIGNMENT_OPERATOR, CursorKind.CALL_EXPR}
CONDITION_KINDS = {CursorKind.IF_STMT, CursorKind.WHILE_STMT, CursorKind.FOR_STMT}
JUMP_KINDS = {CursorKind.BREAK_STMT, CursorKind.CONTINUE_STMT}
BODY_KINDS = CONDITION_KINDS | {
    CursorKind.COMPOUND_STMT,
    CursorKind.CXX_FOR_RANGE_STMT,
    CursorKind.CASE_STMT,
    CursorKind.DEFAULT_STMT,
}
FUNCTION_KINDS = {
    CursorKind.FUNCTION_DECL,
    CursorKind.FUNCTION_TEMPLATE,
    CursorKind.CXX_METHOD,
    CursorKind.CONSTRUCTOR,
    CursorKind.DESTRUCTOR,
    CursorKind.CONVERSION_FUNCTION,
}
WITH_BODY_KINDS = FUNCTION_KINDS | {CursorKind.LAMBDA_EXPR}
WITH_INITIALIZER_KINDS = {CursorKind.CONSTRUCTOR, CursorKind.FIELD_DECL}
CHOSEN_KINDS = {
    CursorKind.BINARY_OPERATOR,
    CursorKind.CONDITIONAL_OPERATOR,
    CursorKind.INTEGER_LITERAL,
    CursorKind.CXX_BOOL_LITERAL_EXPR,
}
SKIPPED_KINDS = {CursorKind.STATIC_ASSERT, CursorKind.MACRO_INSTANTIATION, CursorKind.MACRO_DEFINITION}
OPENING, CLOSING = "([{", ")]}"

NO_KIND = CursorKind.UNEXPOSED_EXPR


def kind_of(cursor: Cursor) -> CursorKind:
    """The kind of a cursor. libclang has kinds that its Python module does not know."""
    try:
        return cursor.kind
    except ValueError:
        return NO_KIND


NUMBER = re.compile(rb"(0[xX][0-9a-fA-F']+|0[bB][01']+|[0-9']+)([uUlLzZ]*)")


def next_number(text: bytes) -> bytes | None:
    """The constant plus one, in the same notation."""
    match = NUMBER.fullmatch(text)
    if match is None:
        return None
    digits = match[1].replace(b"'", b"")
    if digits[:2].lower() == b"0x":
        number = b"0x%X" % (int(digits, 16) + 1)
    elif digits[:2].lower() == b"0b":
        number = b"0b" + format(int(digits[2:], 2) + 1, "b").encode()
    else:
        number = b"%d" % (int(digits) + 1)
    return number + match[2]


class SourceChanges:
    """The changes of one source."""

    def __init__(self, path: str, arguments: list[str]) -> None:
        unit = Index.create().parse(
            path, arguments, options=TranslationUnit.PARSE_DETAILED_PROCESSING_RECORD
        )
        errors = [str(each) for each in unit.diagnostics if each.severity >= 3]
        if errors:
            raise RuntimeError("\n".join(errors))
        with open(path, "rb") as file:
            self.source = file.read()
        self.path = path
        self.cursor = unit.cursor
        self.tokens: list[Token] = [
            token for token in unit.cursor.get_tokens() if token.kind != TokenKind.COMMENT
        ]
        self.places = {token.extent.start.offset: index for index, token in enumerate(self.tokens)}
        self.macros = self._macro_ranges()
        self.declared: set[int] = set()
        self.functions: list[tuple[int, int, str]] = []
        self.parts: list[Part] = []
        self._survey(self.cursor)

    def all(self) -> list[Change]:
        """Every change once, in the order of the source."""
        found = set(self._changes_below(self.cursor))
        brackets = self._template_brackets({begin for begin, _, _ in found})
        return sorted(
            (begin, end, text)
            for begin, end, text in found
            if not any(first <= begin < last for first, last in brackets)
        )

    def _children(self, cursor: Cursor) -> list[Cursor]:
        children = [each for each in cursor.get_children() if kind_of(each) not in SKIPPED_KINDS]
        return [each for each in children if self._is_here(each)] if cursor == self.cursor else children

    def _is_here(self, cursor: Cursor) -> bool:
        return cursor.location.file is not None and cursor.location.file.name == self.path

    def _range(self, cursor: Cursor) -> tuple[int, int]:
        return cursor.extent.start.offset, cursor.extent.end.offset

    def _text(self, cursor: Cursor) -> bytes:
        begin, end = self._range(cursor)
        return self.source[begin:end]

    def _macro_ranges(self) -> list[tuple[int, int]]:
        return [
            self._range(each)
            for each in self.cursor.get_children()
            if kind_of(each) == CursorKind.MACRO_INSTANTIATION and self._is_here(each)
        ]

    def _survey(self, cursor: Cursor) -> None:
        """Records variable declarations and the ranges of functions and parts, outer ones first."""
        if kind_of(cursor) in WITH_BODY_KINDS:
            self.parts.extend(self._body(cursor))
        if kind_of(cursor) in WITH_INITIALIZER_KINDS:
            self.parts.extend(self._initializers(cursor, self._is_constant(cursor)))
        if kind_of(cursor) == CursorKind.VAR_DECL:
            self.declared.add(cursor.extent.start.offset)
        elif kind_of(cursor) in FUNCTION_KINDS:
            self.functions.append((*self._range(cursor), cursor.spelling))
        for child in self._children(cursor):
            self._survey(child)

    def _is_constant(self, cursor: Cursor) -> bool:
        """A lambda is constexpr without a declaration, and a member may belong to a constexpr object."""
        may_be_constant = kind_of(cursor) in (CursorKind.LAMBDA_EXPR, CursorKind.FIELD_DECL)
        return may_be_constant or b"constexpr" in self._text(cursor).partition(b"{")[0]

    def _body(self, function: Cursor) -> Iterator[Part]:
        """The body of a function. A function that only the compiler evaluates has no part."""
        children = self._children(function)
        if not children or kind_of(children[-1]) != CursorKind.COMPOUND_STMT:
            return
        begin, end = self._range(children[-1])
        head = self.source[function.extent.start.offset : begin]
        if b"consteval" not in head and self.source.startswith(b"{", begin):
            yield Part(begin, end, self._is_constant(function), is_expression=False)

    def _initializers(self, cursor: Cursor, is_constant: bool) -> Iterator[Part]:
        """The outermost expressions that can be operands of `?:`."""
        for child in self._children(cursor):
            if kind_of(child) in CHOSEN_KINDS:
                yield Part(*self._range(child), is_constant, is_expression=True)
            elif kind_of(child) not in (CursorKind.COMPOUND_STMT, CursorKind.LAMBDA_EXPR):
                yield from self._initializers(child, is_constant)

    def part_at(self, begin: int, end: int) -> Part | None:
        return next((part for part in self.parts if part.begin <= begin and end <= part.end), None)

    def function_at(self, place: int) -> str:
        names = [name for begin, end, name in self.functions if begin <= place < end]
        return names[-1] if names else ""

    def _changes_below(self, cursor: Cursor) -> Iterator[Change]:
        for change in self._changes_at(cursor):
            if not any(begin <= change[0] < end for begin, end in self.macros):
                yield change
        for child in self._children(cursor):
            yield from self._changes_below(child)

    def _changes_at(self, cursor: Cursor) -> Iterator[Change]:
        kind = kind_of(cursor)
        if kind in BINARY_KINDS:
            yield from self._binary(cursor)
        elif kind == CursorKind.UNARY_OPERATOR:
            yield from self._step(cursor)
        elif kind == CursorKind.INTEGER_LITERAL:
            yield from self._number(cursor)
        elif kind == CursorKind.CXX_BOOL_LITERAL_EXPR:
            begin, end = self._range(cursor)
            yield begin, end, b"false" if self.source[begin:end] == b"true" else b"true"
        elif kind == CursorKind.CONDITIONAL_OPERATOR:
            yield from self._inverted(*self._range(self._children(cursor)[0]))
        elif kind == CursorKind.DO_STMT:
            yield from self._inverted(*self._range(self._children(cursor)[-1]))
        elif kind in CONDITION_KINDS:
            yield from self._condition(cursor)
        elif kind == CursorKind.RETURN_STMT:
            yield from self._return(cursor)
        if kind in BODY_KINDS:
            yield from self._removed_statements(cursor)

    def _binary(self, cursor: Cursor) -> Iterator[Change]:
        operands = self._children(cursor)
        if len(operands) < 2:
            return
        begin = operands[0].extent.end.offset
        end = operands[-1].extent.start.offset
        gap = self.source[begin:end]
        operator = gap.strip()
        if operator in REPLACEMENTS:
            begin += gap.index(operator)
            for other in REPLACEMENTS[operator]:
                yield begin, begin + len(operator), other

    def _step(self, cursor: Cursor) -> Iterator[Change]:
        begin, end = self._range(cursor)
        for operator in (b"++", b"--"):
            if self.source.startswith(operator, begin, end):
                yield begin, begin + 2, REPLACEMENTS[operator][0]
            elif self.source.endswith(operator, begin, end):
                yield end - 2, end, REPLACEMENTS[operator][0]

    def _number(self, cursor: Cursor) -> Iterator[Change]:
        begin, end = self._range(cursor)
        number = next_number(self.source[begin:end])
        if number is not None:
            yield begin, end, number

    def _inverted(self, begin: int, end: int) -> Iterator[Change]:
        """Inverts a condition. A single comparison is skipped: changing its operator already inverts it."""
        condition = self.source[begin:end]
        is_one_comparison = len(COMPARISON.findall(condition)) == 1 and not re.search(rb"&&|\|\||\?", condition)
        if not is_one_comparison:
            yield begin, end, b"!(" + condition + b")"

    def _condition(self, cursor: Cursor) -> Iterator[Change]:
        part = self._condition_tokens(cursor)
        if part and not any(token.extent.start.offset in self.declared for token in part):
            yield from self._inverted(part[0].extent.start.offset, part[-1].extent.end.offset)

    def _condition_tokens(self, cursor: Cursor) -> list[Token]:
        """The tokens of the condition: b in `for (a; b; c)` and in `if (a; b)`, otherwise all tokens."""
        opening = self.places[cursor.extent.start.offset] + 1
        if self.tokens[opening].spelling != "(":
            return []
        parts: list[list[Token]] = [[]]
        depth = 1
        for token in self.tokens[opening + 1 :]:
            depth += (token.spelling in OPENING) - (token.spelling in CLOSING)
            if depth == 0:
                break
            if depth == 1 and token.spelling == ";":
                parts.append([])
            else:
                parts[-1].append(token)
        return parts[1] if kind_of(cursor) == CursorKind.FOR_STMT else parts[-1]

    def _return(self, cursor: Cursor) -> Iterator[Change]:
        """Replaces the returned value with a value-initialized one."""
        begin, end = self._range(cursor)
        neutral = b"return {}"
        if self.source[begin:end] not in (neutral, b"return", b"return 0", b"return false", b"return true"):
            yield begin, end, neutral

    def _removed_statements(self, cursor: Cursor) -> Iterator[Change]:
        children = self._children(cursor)
        for child in children[-1:] if kind_of(cursor) == CursorKind.FOR_STMT else children:
            begin, end = self._range(child)
            kind = kind_of(child)
            is_statement = kind.is_expression() or kind in JUMP_KINDS or self._text(child) == b"return"
            if is_statement and self.source[end : end + 1] == b";":
                yield begin, end, b""

    def _template_brackets(self, operators: set[int]) -> list[tuple[int, int]]:
        """The ranges from each `<` that is not an operator to the closing `>`."""
        found: list[tuple[int, int]] = []
        opened: list[int] = []
        for token in self.tokens:
            begin, end = self._range(token)
            if begin in operators:
                continue
            if token.spelling == "<":
                opened.append(begin)
            elif token.spelling in (">", ">>"):
                for _ in token.spelling[: len(opened)]:
                    found.append((opened.pop(), end))
        return found


def mutants_of(root: str, file: str, arguments: list[str]) -> list[Mutant]:
    changes = SourceChanges(f"{root}/{file}", arguments)
    return [
        make_mutant(file, changes.source, changes.function_at(change[0]), *change, changes.part_at(*change[:2]))
        for change in changes.all()
    ]
