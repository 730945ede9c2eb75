"""Random operations on memories and on plain lists and dictionaries of Python."""

import io
import pickle

import numpy as np
from hypothesis import given
from hypothesis import strategies as st

import kvr

widths = st.sampled_from([1, 3, 4, 8, 12, 16, 24, 32, 33, 64, 65, 128])


@st.composite
def models(draw, plain=False):
    """(width, base, words): None for one that is not set, str of bits for one that has don't-care bits."""
    width = draw(widths)
    word = st.integers(0, 2**width - 1)
    if not plain:
        word = word | st.none() | st.text("01X", min_size=width, max_size=width)
    words = draw(st.lists(word, min_size=1, max_size=80))
    return width, draw(st.sampled_from([0, 1, 0x1000, 2**64 - 80])), words


def memory_of(model):
    width, base, words = model
    m = kvr.Memory(width, len(words), base=base)
    m[base:] = [kvr.Word(word) if isinstance(word, str) else word for word in words]
    return m


def plain(words):
    """The words of a model as a memory gives them."""
    return [
        (kvr.Word(word) if "X" in word else int(word, 2)) if isinstance(word, str) else word for word in words
    ]


@given(models())
def test_words_are_those_of_a_list(model):
    m = memory_of(model)
    width, base, words = model
    assert list(m) == plain(words)
    assert [m[address] for address in m.addresses] == [m[-n] for n in range(len(words), 0, -1)] == plain(words)
    spread = [word for first, last, word in m.runs() for _ in range(first, last + 1)]
    assert spread == plain(words)
    assert m.is_set.tolist() == [word is not None for word in words]
    assert m.count_set() == sum(word is not None for word in words)
    assert pickle.loads(pickle.dumps(m)) == m == m.copy()


@given(models(), st.integers(-100, 100), st.integers(-100, 100))
def test_slices_are_those_of_a_list(model, start, stop):
    width, _, words = model
    m = memory_of((width, 0, words))
    expected = plain(words)[start:stop]
    if expected:
        assert list(m[start:stop]) == expected
        m[start:stop] = 1
        changed = plain(words)
        changed[start:stop] = [1] * len(expected)
        assert list(m) == changed


@given(models(plain=True), st.sampled_from(["little", "big"]))
def test_bytes_and_arrays_are_those_of_integers(model, endian):
    width, base, words = model
    m = memory_of(model)
    size = (width + 7) // 8
    raw = b"".join(word.to_bytes(size, endian) for word in words)
    assert m.to_bytes(endian=endian) == raw
    assert kvr.from_bytes(raw, width, endian=endian, base=base) == m
    assert m.to_numpy().tolist() == words
    assert kvr.from_bytes(raw, width, endian=endian).to_numpy().tolist() == words
    signed = [word - 2**width if word >> (width - 1) else word for word in words]
    assert m.to_numpy(signed=True).tolist() == signed
    assert kvr.from_numpy(m.to_numpy(signed=True), width=width, base=base) == m
    assert kvr.from_numpy(m.to_numpy(as_bytes=True, endian=endian), width=width, base=base, endian=endian) == m


@given(models())
def test_files_keep_all_words(model):
    m = memory_of((model[0], 0, model[2]))
    for each in kvr.formats():
        if each.can_read and each.can_write and each.states_width and each.holds_dont_care:
            assert kvr.parse(text_of(m, each.name), format=each.name) == m


def text_of(m, name):
    stream = io.BytesIO()
    m.write(stream, format=name, data_radix="bin")
    return stream.getvalue()


@given(models(), models())
def test_differences_are_those_of_two_dictionaries(left, right):
    a, b = memory_of((left[0], 0, left[2])), memory_of((right[0], 0, right[2]))
    one, other = dict(a.items()), dict(b.items())

    def value(word):
        return word.bits.lstrip("0") if isinstance(word, kvr.Word) else word

    expected = {n for n in one.keys() | other.keys() if value(one.get(n)) != value(other.get(n))}
    found = {n for each in a.diff(b) for n in range(each.first, each.last + 1)}
    assert found == expected


@given(st.integers(1, 8), st.integers(0, 56), st.lists(st.floats(-300, 300), min_size=1, max_size=20),
       st.sampled_from(["nearest", "even", "down"]))
def test_arrays_are_encoded_as_numbers_are(integer_bits, fraction_bits, values, rounding):
    fixed = kvr.Fixed(integer_bits, fraction_bits)
    words = fixed.encode(np.array(values), rounding=rounding, saturate=True)
    assert words.tolist() == [fixed.encode(value, rounding=rounding, saturate=True) for value in values]
    again = fixed.decode(words)
    assert again.tolist() == [fixed.decode(word) for word in words.tolist()]


@given(st.integers(1, 130), st.data())
def test_radixes_are_those_of_integers(width, data):
    word = data.draw(st.integers(0, 2**width - 1))
    signed = word - 2**width if word >> (width - 1) else word
    texts = {"bin": f"{word:0{width}b}", "oct": f"{word:0{(width + 2) // 3}o}", "uns": str(word), "dec": str(signed),
             "hex": f"{word:0{(width + 3) // 4}X}"}
    for source, text in texts.items():
        for target, expected in texts.items():
            assert kvr.convert_radix(text, source, target, width=width) == expected
