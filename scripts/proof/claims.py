"""The claims about each kernel of tests/proofs/kernels.cpp, byte by byte and digit by digit.

A claim takes the module and returns the conditions that must hold for all inputs.
"""

import z3

from llvm_ir import add_up, initial_byte, is_set

CLAIMS = {}


def claim(*names):
    """Registers the claim about these functions. It may take the name of the function as an argument."""

    def register(function):
        for name in names:
            CLAIMS[name] = function
        return function

    return register


def forms(*names):
    """Each name in its portable form and in its form for vector registers."""
    return [f"{name}_{form}" for name in names for form in ("portable", "sse2")]


# ---- Character classes ----


def byte_value(number):
    return z3.BitVecVal(number if isinstance(number, int) else ord(number), 8)


def is_between(byte, first, last):
    return z3.And(z3.UGE(byte, byte_value(first)), z3.ULE(byte, byte_value(last)))


def is_decimal(byte):
    return is_between(byte, "0", "9")


def is_lower_case_digit(byte):
    return is_between(byte, "a", "f")


def is_hex(byte):
    return z3.Or(is_decimal(byte), is_between(byte, "A", "F"), is_lower_case_digit(byte))


def is_blank(byte):
    return z3.Or(byte == byte_value(" "), is_between(byte, 9, 13))


def folded(byte):
    return z3.If(is_between(byte, "A", "Z"), byte + 32, byte)


def in_upper_case(byte):
    return z3.If(is_lower_case_digit(byte), byte - 32, byte)


def digit_value(byte):
    """The value of a hexadecimal digit in 8 bits; meaningless for another character."""
    letter = z3.If(is_lower_case_digit(byte), byte - byte_value("a"), byte - byte_value("A")) + 10
    return z3.If(is_decimal(byte), byte - byte_value("0"), letter)


def upper_case_digit(value):
    return z3.If(z3.ULT(value, 10), value + byte_value("0"), value - 10 + byte_value("A"))


def encoded_byte(digits, at):
    """The byte that two digits represent."""
    return digit_value(digits[2 * at]) << 4 | digit_value(digits[2 * at + 1])


# ---- Blocks ----


def block(name, size=8):
    """A number of the given size in bytes, and its bytes, the lowest first."""
    number = z3.BitVec(name, 8 * size)
    return number, bytes_of(number)


def bytes_of(number):
    return [z3.Extract(at + 7, at, number) for at in range(0, number.size(), 8)]


def text_of(name, size):
    return [initial_byte(name, place) for place in range(size)]


def number_of(bytes_first_lowest):
    return z3.Concat(*reversed(bytes_first_lowest))


def highest_bits(conditions):
    """The number in which the highest bit of each byte is set if its condition holds."""
    return number_of([z3.If(condition, byte_value(0x80), byte_value(0)) for condition in conditions])


def equals_sum(number, bytes_to_add):
    """States that a number is the sum of bytes, once for each order of additions that a kernel may use. One of them
    suffices."""
    terms = [z3.ZeroExt(number.size() - byte.size(), byte) for byte in bytes_to_add]
    pairs = [add_up(terms[at : at + 2]) for at in range(0, len(terms), 2)]
    halves = [add_up(pairs[:4][::-1]), *([add_up(pairs[4:][::-1])] if pairs[4:] else [])] if pairs else []
    zero = z3.BitVecVal(0, number.size())
    return [number == (add_up(order) if order else zero) for order in (terms, halves)]


def all_of(condition, bytes_of_text):
    return z3.And(*(condition(byte) for byte in bytes_of_text))


def any_of(condition, bytes_of_text):
    return z3.Or(*(condition(byte) for byte in bytes_of_text))


def number_after(name):
    """The number at the end of a name."""
    return int(name.rsplit("_", 1)[1])


# ---- kvr/numeric/character_block.h ----


@claim("load_eight")
def loads_the_first_lowest(module, name):
    run = module.run(name, ["text"])
    return [run.result == number_of(text_of("text", 8))]


@claim("store_eight")
def stores_the_lowest_first(module, name):
    eight, _ = block("eight")
    run = module.run(name, [eight, "text"])
    return [run.number("text", 8) == eight]


@claim("which_are_between")
def marks_what_is_between(module, name):
    eight, characters = block("eight")
    first, last = z3.BitVecs("first last", 8)
    run = module.run(name, [eight, first, last])
    inside = [z3.And(z3.UGE(each, first), z3.ULE(each, last)) for each in characters]
    are_ascii = z3.And(z3.ULT(first, 0x80), z3.ULT(last, 0x80))
    return [z3.Implies(are_ascii, run.result == highest_bits(inside))]


@claim("classes_of_eight")
def marks_digits_and_case(module, name):
    eight, characters = block("eight")
    run = module.run(name, [eight, "other", "lower_case"])
    return [
        run.number("other", 8) == highest_bits([z3.Not(is_hex(each)) for each in characters]),
        run.number("lower_case", 8) == highest_bits([is_lower_case_digit(each) for each in characters]),
    ]


@claim("are_decimal")
def finds_what_is_no_decimal_digit(module, name):
    eight, characters = block("eight")
    return [is_set(module.run(name, [eight]).result) == all_of(is_decimal, characters)]


@claim("in_upper_case")
def makes_digits_upper_case(module, name):
    eight, characters = block("eight")
    return [module.run(name, [eight]).result == number_of([in_upper_case(each) for each in characters])]


@claim("fold_eight")
def makes_letters_lower_case(module, name):
    eight, characters = block("eight")
    return [module.run(name, [eight]).result == number_of([folded(each) for each in characters])]


@claim("values_of_eight")
def gives_what_digits_are_worth(module, name):
    eight, characters = block("digits")
    values = [z3.If(each == 0, byte_value(0), digit_value(each)) for each in characters]
    digits_or_nothing = all_of(lambda each: z3.Or(each == 0, is_hex(each)), characters)
    return [z3.Implies(digits_or_nothing, module.run(name, [eight]).result == number_of(values))]


@claim("four_bytes")
def spells_four_bytes(module, name):
    eight, characters = block("digits")
    encoded = [z3.ZeroExt(8, encoded_byte(characters, at)) for at in range(4)]
    return [z3.Implies(all_of(is_hex, characters), module.run(name, [eight]).result == number_of(encoded))]


@claim("sum_of_four")
def adds_four(module, name):
    four = z3.BitVec("four", 64)
    parts = [z3.Extract(at + 15, at, four) for at in range(0, 64, 16)]
    total = add_up([z3.ZeroExt(16, part) for part in reversed(parts)])
    return [z3.Implies(z3.ULT(total, 1 << 16), module.run(name, [four]).result == total)]


@claim("reversed_bytes")
def reverses_bytes(module, name):
    eight, characters = block("eight")
    return [module.run(name, [eight]).result == z3.Concat(*characters)]


@claim("read_eight")
def reads_eight_digits(module, name):
    eight, characters = block("digits")
    run = module.run(name, [eight, "value"])
    encoded = z3.Concat(*(encoded_byte(characters, at) for at in range(4)))
    are_digits = all_of(is_hex, characters)
    return [
        is_set(run.result) == are_digits,
        z3.Implies(are_digits, run.number("value", 8) == z3.ZeroExt(32, encoded)),
    ]


@claim(*forms("classes_of_sixteen"))
def says_what_sixteen_are(module, name):
    text = text_of("text", 16)
    run = module.run(name, ["text", "other", "lower_case"])
    return [
        (run.number("other", 8) == 0) == all_of(is_hex, text),
        (run.number("lower_case", 8) == 0) == z3.Not(any_of(is_lower_case_digit, text)),
    ]


@claim(*forms("read_sixteen"))
def reads_sixteen_digits(module, name):
    text = text_of("text", 16)
    run = module.run(name, ["text", "value"])
    encoded = z3.Concat(*(encoded_byte(text, at) for at in range(8)))
    return [
        is_set(run.result) == all_of(is_hex, text),
        z3.Implies(all_of(is_hex, text), run.number("value", 8) == encoded),
    ]


@claim(*(f"{name}_{count}" for name in forms("sum_of_sixteen") for count in range(0, 17, 2)))
def adds_the_bytes_that_count(module, name):
    count = number_after(name)
    text = text_of("text", 16)[:count]
    run = module.run(name, ["text", "other", "sum"])
    are_digits = all_of(is_hex, text)
    return [
        (run.number("other", 8) == 0) == are_digits,
        [
            z3.Implies(are_digits, each)
            for each in equals_sum(run.number("sum", 4), [encoded_byte(text, at) for at in range(count // 2)])
        ],
    ]


# ---- kvr/numeric/digit_run.h and digit_blocks.h ----


@claim("bits_before_first")
def gives_the_bits_below_the_lowest(module, name):
    bits = z3.BitVec("bits", 64)
    result = module.run(name, [bits]).result
    one = [z3.Extract(at, at, bits) == 1 for at in range(64)]
    conditions = []
    for at in range(64):
        is_below = z3.Not(z3.Or(*one[: at + 1]))
        conditions.append((z3.Extract(at, at, result) == 1) == is_below)
    return [z3.And(*conditions)]


@claim(*(f"are_digits_{length}" for length in (1, 7, 8, 11, 16, 19, 24, 29)))
def finds_what_is_no_digit(module, name):
    text = text_of("text", number_after(name))
    run = module.run(name, ["text", "has_lower_case"])
    are_digits = all_of(is_hex, text)
    return [
        is_set(run.result) == are_digits,
        z3.Implies(are_digits, (run.number("has_lower_case", 1) != 0) == any_of(is_lower_case_digit, text)),
    ]


@claim("write_hex_limb", *forms("write_limb"))
def writes_a_limb(module, name):
    limb, characters = block("limb")
    run = module.run(name, ["place", limb])
    digits = []
    for each in reversed(characters):
        digits += [upper_case_digit(z3.LShR(each, 4)), upper_case_digit(each & 15)]
    return [run.number("place", 16) == number_of(digits)]


# ---- kvrimage/bytes/hex_block.h ----


@claim("sum_of_limb")
def adds_the_bytes_of_a_limb(module, name):
    limb, characters = block("limb")
    return [equals_sum(module.run(name, [limb]).result, characters)]


@claim(*forms("decode_double"))
def decodes_sixteen_bytes(module, name):
    digits = text_of("digits", 32)
    return decodes(module, name, digits, counted_from=0)


@claim(*(f"{name}_{summed}" for name in forms("decode_single") for summed in range(1, 9)))
def decodes_eight_bytes(module, name):
    digits = text_of("digits", 16)
    return decodes(module, name, digits, counted_from=8 - number_after(name))


def decodes(module, name, digits, counted_from):
    run = module.run(name, ["digits", "bytes", "are_digits", "sum"])
    encoded = [encoded_byte(digits, at) for at in range(len(digits) // 2)]
    are_digits = all_of(is_hex, digits)
    return [
        (run.number("are_digits", 1) != 0) == are_digits,
        z3.Implies(are_digits, run.number("bytes", len(encoded)) == number_of(encoded)),
        [z3.Implies(are_digits, each) for each in equals_sum(run.number("sum", 4), encoded[counted_from:])],
    ]


@claim(*forms("encode_block"))
def encodes_sixteen_bytes(module, name):
    content = text_of("bytes", 16)
    run = module.run(name, ["bytes", "digits", "sum"])
    digits = []
    for each in content:
        digits += [upper_case_digit(z3.LShR(each, 4)), upper_case_digit(each & 15)]
    return [run.number("digits", 32) == number_of(digits), equals_sum(run.number("sum", 4), content)]


# ---- kvrimage/formats/titxt/fast_titxt_bytes.h ----


@claim(*forms("parse_five_titxt_bytes"))
def takes_five_bytes(module, name):
    text = text_of("text", 15)
    run = module.run(name, ["text", "bytes"])
    groups = [text[at : at + 3] for at in range(0, 15, 3)]
    is_right = z3.And(*(z3.And(is_hex(high), is_hex(low), is_blank(blank)) for high, low, blank in groups))
    return [
        is_set(run.result) == is_right,
        z3.Implies(is_right, run.number("bytes", 5) == number_of([encoded_byte(group, 0) for group in groups])),
    ]


# ---- kvr/ram_rules/folded_key.h ----


@claim(*(f"folded_key_{size}" for size in (1, 7, 8, 9, 15, 16)))
def compares_in_any_case(module, name):
    size = number_after(name)
    left, right = text_of("left", size), text_of("right", size)
    run = module.run(name, ["left", "right"])
    equal = z3.And(*(folded(a) == folded(b) for a, b in zip(left, right)))
    return [is_set(run.result) == equal]
