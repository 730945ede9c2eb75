#include "words.h"

#include <string_view>

namespace kvr_python {

using kvrimage::byte_order;
using kvrimage::radix;
using kvrimage::word;

namespace {

[[noreturn]] void throw_overflow(py::handle value, std::uint32_t width) {
    const py::int_ one(1);
    const py::object limit = one.attr("__lshift__")(width);
    const py::object lowest = one.attr("__lshift__")(width - 1).attr("__neg__")();
    PyErr_SetObject(PyExc_OverflowError, py::str("value {} does not fit: words of {} bits hold {} to {}")
                                             .format(value, width, lowest, limit.attr("__sub__")(one))
                                             .ptr());
    throw py::error_already_set();
}

/// @param value an int that is too large for 64 bits
word wide_word_of(const py::int_& value, std::uint32_t width) {
    py::object bits = value;
    if (py::int_(0).attr("__gt__")(value).cast<bool>()) {
        // Below 0 and not below -2^(width - 1) is at least 2^(width - 1) after 2^width is added.
        bits = value.attr("__add__")(py::int_(1).attr("__lshift__")(width));
        if (bits.attr("__lt__")(py::int_(1).attr("__lshift__")(width - 1)).cast<bool>()) {
            throw_overflow(value, width);
        }
    }
    const std::string digits = py::reinterpret_steal<py::str>(PyNumber_ToBase(bits.ptr(), 16));
    const auto made = word::parse(std::string_view(digits).substr(2), radix::hex, width);
    if (!made.value) {
        throw_overflow(value, width);
    }
    return *made.value;
}

word word_of_bits(const std::string& digits, std::uint32_t width) {
    const auto made = word::parse(digits, radix::bin, width);
    if (!made.value || digits.size() != width) {
        throw py::value_error("a word of " + std::to_string(digits.size()) +
                              " bits: those of the memory have " + std::to_string(width));
    }
    return *made.value;
}

} // namespace

py::object object_of(const std::optional<word>& value) {
    if (!value) {
        return py::none();
    }
    if (const auto number = value->to_unsigned()) {
        return py::int_(*number);
    }
    if (value->has_dont_care()) {
        return py::str(*value->to_text(radix::bin));
    }
    constexpr int base = 16;
    return py::reinterpret_steal<py::object>(
        PyLong_FromString(value->to_text(radix::hex)->c_str(), nullptr, base));
}

word word_of(py::handle value, std::uint32_t width) {
    if (PyUnicode_Check(value.ptr()) != 0) {
        return word_of_bits(value.cast<std::string>(), width);
    }
    const auto index = py::reinterpret_steal<py::object>(PyNumber_Index(value.ptr()));
    if (!index) {
        throw py::error_already_set();
    }
    int is_beyond = 0;
    const long long number = PyLong_AsLongLongAndOverflow(index.ptr(), &is_beyond);
    if (is_beyond != 0) {
        return wide_word_of(py::reinterpret_borrow<py::int_>(index), width);
    }
    constexpr std::uint32_t number_bits = 63;
    if ((width <= number_bits && number < -(1LL << (width - 1))) ||
        (width < number_bits && number >= 1LL << width)) {
        throw_overflow(index, width);
    }
    return number < 0 ? word::of_signed(number, width) : word::of(static_cast<std::uint64_t>(number), width);
}

std::vector<word> words_of(const py::list& values, std::uint32_t width) {
    std::vector<word> words;
    words.reserve(values.size());
    for (const py::handle value : values) {
        words.push_back(word_of(value, width));
    }
    return words;
}

std::optional<word> optional_word_of(const py::object& value, std::uint32_t width) {
    return value.is_none() ? std::nullopt : std::optional(word_of(value, width));
}

byte_order order_of(const std::string& name) {
    if (name != "little" && name != "big") {
        throw py::value_error("endian is \"little\" or \"big\", not \"" + name + "\"");
    }
    return name == "little" ? byte_order::little : byte_order::big;
}

radix radix_called(const std::string& name) {
    const auto found = kvrimage::radix_of_name(name);
    if (!found) {
        throw py::value_error("a radix is bin, oct, dec, uns or hex, not \"" + name + "\"");
    }
    return *found;
}

} // namespace kvr_python
