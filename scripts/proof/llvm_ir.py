"""Straight-line code of LLVM as terms of z3: the effect of a function on all inputs at once.

Reads the text of a module that clang has generated, as far as functions without loops require. A number is a bit
vector, a vector register is the list of its elements, a pointer is a name and a place, and memory is a byte for each
place.
"""

import re
from dataclasses import dataclass

import z3

POINTER_BITS = 64

TYPE = r'(?:(?:\[[^\]]*\]|<[^>]*>|%"[^"]*"|%[\w.:]+|\{[^}]*\}|i\d+|void)\**)'
ATTRIBUTES = {"noundef", "nocapture", "readonly", "writeonly", "zeroext", "signext", "nonnull", "immarg"}

BINARY = {
    "add": lambda a, b: a + b,
    "sub": lambda a, b: a - b,
    "mul": lambda a, b: product(a, b),
    "and": lambda a, b: a & b,
    "or": lambda a, b: a | b,
    "xor": lambda a, b: a ^ b,
    "shl": lambda a, b: a << b,
    "lshr": z3.LShR,
    "ashr": lambda a, b: a >> b,
    "udiv": z3.UDiv,
    "urem": z3.URem,
}

COMPARISONS = {
    "eq": lambda a, b: a == b,
    "ne": lambda a, b: a != b,
    "ult": z3.ULT,
    "ule": z3.ULE,
    "ugt": z3.UGT,
    "uge": z3.UGE,
    "slt": lambda a, b: a < b,
    "sle": lambda a, b: a <= b,
    "sgt": lambda a, b: a > b,
    "sge": lambda a, b: a >= b,
}


def add_up(terms):
    """The sum of terms, starting with the first. The order matters to a solver: it treats sums of the same order as
    one."""
    total = terms[0]
    for term in terms[1:]:
        total = total + term
    return total


def product(left, right):
    """The product with a number of few bits, as a sum of shifted numbers, which is much easier for a solver."""
    if not z3.is_bv_value(right):
        return left * right
    places = [at for at in range(right.size()) if right.as_long() >> at & 1]
    if not 0 < len(places) <= 8:
        return left * right
    return add_up([left << at for at in reversed(places)])


class NotSupported(Exception):
    """The code contains something that this reader does not support, so nothing is claimed about it."""


@dataclass(frozen=True)
class Pointer:
    """A place in a memory. The place is a number, or a bit vector if the memory is constant."""

    memory: str
    place: object


def bit(condition):
    return z3.If(condition, z3.BitVecVal(1, 1), z3.BitVecVal(0, 1))


def is_set(one_bit):
    return one_bit == 1


def split_operands(text):
    """The parts of a text between the commas outside of brackets."""
    parts, depth, begin = [], 0, 0
    for at, character in enumerate(text):
        depth += character in "([{<"
        depth -= character in ")]}>"
        if character == "," and depth == 0:
            parts.append(text[begin:at].strip())
            begin = at + 1
    parts.append(text[begin:].strip())
    return parts


def split_type(operand):
    """The type of an operand and the text after it, without attributes."""
    found = re.match(TYPE, operand)
    if not found:
        raise NotSupported(operand)
    rest = operand[found.end() :].split(" ")
    return found.group(), " ".join(word for word in rest if word not in ATTRIBUTES and word).strip()


def element_bits(kind):
    """The number of elements of a type (None for a single number) and their width in bits."""
    vector = re.fullmatch(r"<(\d+) x i(\d+)>", kind)
    if vector:
        return int(vector.group(1)), int(vector.group(2))
    number = re.fullmatch(r"i(\d+)", kind)
    if number:
        return None, int(number.group(1))
    raise NotSupported(kind)


def bits_of(value):
    """All bits of a value as one number, the first element lowest."""
    if isinstance(value, list):
        return z3.Concat(*reversed(value)) if len(value) > 1 else value[0]
    return value


def value_of_bits(bits, kind):
    count, width = element_bits(kind)
    if count is None:
        return bits
    return [z3.Extract(width * at + width - 1, width * at, bits) for at in range(count)]


def each(function, *values):
    """Applies the function to numbers, or element by element to vectors."""
    if isinstance(values[0], list):
        return [function(*elements) for elements in zip(*values)]
    return function(*values)


def sums_of_differences(left, right):
    """psadbw: the sum of the absolute differences of each eight bytes."""
    differences = [
        z3.ZeroExt(56, z3.If(z3.UGE(a, b), a - b, b - a))
        for a, b in zip(value_of_bits(bits_of(left), "<16 x i8>"), value_of_bits(bits_of(right), "<16 x i8>"))
    ]
    return [add_up(differences[:8]), add_up(differences[8:])]


def packed_unsigned(left, right):
    """packuswb: sixteen signed 16-bit numbers as bytes, clamped to the range of a byte."""
    return [
        z3.If(number < 0, z3.BitVecVal(0, 8), z3.If(number > 255, z3.BitVecVal(255, 8), z3.Extract(7, 0, number)))
        for number in left + right
    ]


def swapped_bytes(value):
    return z3.Concat(*(z3.Extract(at + 7, at, value) for at in range(0, value.size(), 8)))


def funnel_shift_left(high, low, count):
    both = z3.Concat(high, low)
    shift = z3.ZeroExt(high.size(), z3.URem(count, z3.BitVecVal(high.size(), high.size())))
    return z3.Extract(2 * high.size() - 1, high.size(), both << shift)


INTRINSICS = {
    "llvm.bswap.i64": swapped_bytes,
    "llvm.bswap.i32": swapped_bytes,
    "llvm.fshl.i64": funnel_shift_left,
    "llvm.fshl.i32": funnel_shift_left,
    "llvm.x86.sse2.psad.bw": sums_of_differences,
    "llvm.x86.sse2.packuswb.128": packed_unsigned,
}


class Module:
    """The functions and constants of a module."""

    def __init__(self, text):
        self.functions = {}
        for found in re.finditer(r"^define [^@]*@([\w.]+)\((.*?)\)[^{\n]*\{\n(.*?)^\}", text, re.M | re.S):
            name, parameters, body = found.groups()
            self.functions[name] = (parameters, body)
        self.constants = {}
        for found in re.finditer(r'^@([\w.]+) = .*?constant .*?c"((?:[^"])*)"', text, re.M):
            bytes_of = re.sub(r"\\([0-9A-F]{2})", lambda code: chr(int(code.group(1), 16)), found.group(2))
            self.constants[found.group(1)] = [ord(character) for character in bytes_of]

    def run(self, name, arguments):
        """Runs a function. The arguments are bit vectors, and names of memories for pointers."""
        parameters, body = self.functions[name]
        return Run(self, split_operands(parameters), arguments, body)


class Run:
    """A function that has run: its result and the memory that it has written."""

    def __init__(self, module, parameters, arguments, body):
        self.module = module
        self.values = {}
        self.bytes = {}
        self.result = None
        self.come_from = {}  # for each block, its predecessors with the condition under which each continues there
        for at, (parameter, argument) in enumerate(zip(parameters, arguments, strict=True)):
            kind, _ = split_type(parameter)
            self.values[f"%{at}"] = Pointer(argument, 0) if kind.endswith("*") else argument
        self._run_blocks(body, len(parameters))

    # ---- Memory ----

    def byte(self, memory, place):
        """The byte at a place: the stored value, or a free number."""
        if memory in self.module.constants:
            return self._constant_byte(self.module.constants[memory], place)
        if not isinstance(place, int):
            raise NotSupported(f"a place that depends on the input, in {memory}")
        key = (memory, place)
        if key not in self.bytes:
            self.bytes[key] = initial_byte(memory, place)
        return self.bytes[key]

    def number(self, memory, size):
        """The memory that the function has written, as a number, lowest byte first."""
        return bits_of([self.bytes[memory, place] for place in range(size)])

    @staticmethod
    def _constant_byte(content, place):
        if isinstance(place, int):
            return z3.BitVecVal(content[place], 8)
        value = z3.BitVecVal(content[0], 8)
        for at, byte in enumerate(content[1:], 1):
            value = z3.If(place == at, z3.BitVecVal(byte, 8), value)
        return value

    def _load(self, kind, pointer):
        count, width = element_bits(kind)
        size = max((count or 1) * width // 8, 1)
        bits = bits_of([self.byte(pointer.memory, pointer.place + at) for at in range(size)])
        return value_of_bits(bits if width >= 8 else z3.Extract(width - 1, 0, bits), kind)

    def _store(self, value, pointer, guard):
        bits = bits_of(value)
        if bits.size() < 8:
            bits = z3.ZeroExt(8 - bits.size(), bits)
        if pointer.memory in self.module.constants or not isinstance(pointer.place, int):
            raise NotSupported(f"a store to {pointer}")
        for at in range(bits.size() // 8):
            key = (pointer.memory, pointer.place + at)
            byte = z3.Extract(8 * at + 7, 8 * at, bits)
            if not z3.is_true(guard):
                byte = z3.If(guard, byte, self.byte(*key))
            self.bytes[key] = byte

    # ---- Operands ----

    def _operand(self, kind, text):
        if text in self.values:
            return self.values[text]
        if text.startswith("%"):
            raise NotSupported("a value from further on, which a loop has")
        if kind.endswith("*"):
            return self._constant_pointer(text)
        count, width = element_bits(kind)
        if count is None:
            return self._constant(text, width)
        if text == "zeroinitializer":
            return [z3.BitVecVal(0, width)] * count
        if text in ("undef", "poison"):
            return [z3.FreshConst(z3.BitVecSort(width)) for _ in range(count)]
        elements = split_operands(text[1:-1])
        return [self._constant(split_type(element)[1], width) for element in elements]

    @staticmethod
    def _constant(text, width):
        if text in ("undef", "poison"):
            return z3.FreshConst(z3.BitVecSort(width))
        return z3.BitVecVal({"true": 1, "false": 0}.get(text) if text in ("true", "false") else int(text), width)

    @staticmethod
    def _constant_pointer(text):
        found = re.search(r"@([\w.]+)", text)
        if not found:
            raise NotSupported(text)
        places = [int(number) for number in re.findall(r"i(?:64|32) (\d+)", text)]
        if any(places[:-1]):
            raise NotSupported(text)
        return Pointer(found.group(1), places[-1] if places else 0)

    def _typed(self, text):
        return self._operand(*split_type(text))

    # ---- Blocks and instructions ----

    def _run_blocks(self, body, first_label):
        """Runs all blocks in order, each with the condition under which it is reached."""
        parts = re.split(r"^(\d+):.*$\n", body, flags=re.M)
        labels = [str(first_label)] + parts[1::2]
        self.come_from.update((label, []) for label in labels)
        self.come_from[labels[0]] = [(None, z3.BoolVal(True))]
        done = set()
        for label, lines in zip(labels, parts[0::2]):
            done.add(label)
            self.guard = z3.simplify(z3.Or(*(condition for _, condition in self.come_from[label])))
            self.label = label
            for line in lines.splitlines():
                self._instruction(re.sub(r", (!|align ).*", "", line.strip()), done)

    def _instruction(self, line, done):
        if not line or line.startswith(";"):
            return
        assigned = re.match(r"(%\d+) = (.*)", line)
        if assigned:
            self.values[assigned.group(1)] = self._value(assigned.group(2))
        elif line.startswith("store "):
            value, pointer = split_operands(line[len("store ") :])
            self._store(self._typed(value), self._typed(pointer), self.guard)
        elif line.startswith("br "):
            self._branch(line, done)
        elif line.startswith("ret "):
            if self.result is not None:
                raise NotSupported("two ends of a function")
            self.result = None if line == "ret void" else self._typed(line[len("ret ") :])
        else:
            raise NotSupported(line)

    def _branch(self, line, done):
        targets = re.findall(r"label %(\d+)", line)
        if done & set(targets):
            raise NotSupported("a loop")
        if len(targets) == 1:
            conditions = [self.guard]
        else:
            chosen = is_set(self._operand("i1", re.match(r"br i1 ([^,]+),", line).group(1)))
            conditions = [z3.And(self.guard, chosen), z3.And(self.guard, z3.Not(chosen))]
        for target, condition in zip(targets, conditions):
            self.come_from[target].append((self.label, condition))

    def _value(self, text):
        word, rest = text.split(" ", 1)
        if word in BINARY:
            rest = re.sub(r"^(?:nuw |nsw |exact )*", "", rest)
            kind, left, right = self._two(rest)
            return each(BINARY[word], self._operand(kind, left), self._operand(kind, right))
        if word in ("tail", "notail"):
            return self._value(rest)
        method = getattr(self, f"_do_{word}", None)
        if method is None:
            raise NotSupported(text)
        return method(rest)

    @staticmethod
    def _two(text):
        first, right = split_operands(text)
        kind, left = split_type(first)
        return kind, left, right

    def _do_icmp(self, text):
        word, rest = text.split(" ", 1)
        kind, left, right = self._two(rest)
        compare = COMPARISONS[word]
        return each(lambda a, b: bit(compare(a, b)), self._operand(kind, left), self._operand(kind, right))

    def _do_select(self, text):
        condition, yes, no = (self._typed(part) for part in split_operands(text))
        if isinstance(condition, list):
            return each(lambda c, a, b: z3.If(is_set(c), a, b), condition, yes, no)
        return each(lambda a, b: z3.If(is_set(condition), a, b), yes, no)

    def _do_phi(self, text):
        kind, rest = split_type(text)
        value = None
        conditions = dict(self.come_from[self.label])
        for operand, label in re.findall(r"\[ ([^,]+), %(\d+) \]", rest):
            this = self._operand(kind, operand)
            value = this if value is None else z3.If(conditions[label], this, value)
        return value

    def _cast(self, text):
        operand, kind = text.split(" to ")
        return self._typed(operand), kind

    def _do_zext(self, text):
        value, kind = self._cast(text)
        width = element_bits(kind)[1]
        return each(lambda number: z3.ZeroExt(width - number.size(), number), value)

    def _do_sext(self, text):
        value, kind = self._cast(text)
        width = element_bits(kind)[1]
        return each(lambda number: z3.SignExt(width - number.size(), number), value)

    def _do_trunc(self, text):
        value, kind = self._cast(text)
        width = element_bits(kind)[1]
        return each(lambda number: z3.Extract(width - 1, 0, number), value)

    def _do_bitcast(self, text):
        value, kind = self._cast(text)
        return value if isinstance(value, Pointer) else value_of_bits(bits_of(value), kind)

    def _do_load(self, text):
        kind, pointer = split_operands(text)
        return self._load(kind, self._typed(pointer))

    def _do_getelementptr(self, text):
        kind, base, *indexes = split_operands(re.sub(r"^inbounds ", "", text))
        pointer = self._typed(base)
        numbers = [split_type(index) for index in indexes]
        if kind != "i8" and (kind.startswith("i") or any(value != "0" for _, value in numbers[:-1])):
            raise NotSupported(text)
        index_kind, value = numbers[-1]
        place = int(value) if value.lstrip("-").isdigit() else self._operand(index_kind, value)
        return Pointer(pointer.memory, place if pointer.place == 0 else pointer.place + place)

    def _do_extractelement(self, text):
        vector, index = split_operands(text)
        return self._typed(vector)[int(split_type(index)[1])]

    def _do_insertelement(self, text):
        vector, element, index = split_operands(text)
        elements = list(self._typed(vector))
        elements[int(split_type(index)[1])] = self._typed(element)
        return elements

    def _do_shufflevector(self, text):
        left, right, places = split_operands(text)
        both = self._typed(left) + self._typed(right)
        shuffled = []
        for element in split_operands(split_type(places)[1][1:-1]):
            place = split_type(element)[1]
            unknown = place in ("undef", "poison")
            shuffled.append(z3.FreshConst(both[0].sort()) if unknown else both[int(place)])
        return shuffled

    def _do_call(self, text):
        found = re.match(r".*?@([\w.]+)\((.*)\)", text)
        name, arguments = found.groups()
        if name not in INTRINSICS:
            raise NotSupported(name)
        return INTRINSICS[name](*(self._typed(argument) for argument in split_operands(arguments)))


def initial_byte(memory, place):
    """The free number that represents a byte before a function runs."""
    return z3.BitVec(f"{memory}[{place}]", 8)
