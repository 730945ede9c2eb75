#include "kvrimage/image/fixed_point.h"
#include "kvrimage/image/word.h"
#include "parts.h"
#include "words.h"

#include <cstdint>
#include <optional>
#include <pybind11/stl.h>
#include <string>

namespace kvr_python {

using kvrimage::word;

namespace {

kvrimage::rounding rounding_called(const std::string& name) {
    using kvrimage::rounding;
    if (name == "nearest") {
        return rounding::nearest;
    }
    if (name == "even") {
        return rounding::even;
    }
    if (name == "down") {
        return rounding::down;
    }
    throw py::value_error("rounding is \"nearest\", \"even\" or \"down\", not \"" + name + "\"");
}

/// The word of a decimal text; None when it is out of range.
py::object encode_fixed(const std::string& text, std::uint32_t integer_bits, std::uint32_t fraction_bits,
                        const std::string& rounding, bool saturate) {
    const auto made =
        kvrimage::parse_fixed_point(text, {integer_bits, fraction_bits}, rounding_called(rounding), saturate);
    if (made.fault == kvrimage::fixed_point_fault::syntax) {
        throw py::value_error("\"" + text + "\" is not a valid decimal number");
    }
    return object_of(made.value);
}

[[noreturn]] void throw_fault(const kvrimage::word_fault& fault, const std::string& text,
                              std::uint32_t width) {
    using kind = kvrimage::word_fault::kind;
    switch (fault.what) {
    case kind::too_wide:
        PyErr_SetString(PyExc_OverflowError,
                        ("value " + text + " needs " + std::to_string(fault.bits_needed) +
                         " bits: the limit is " + std::to_string(width))
                            .c_str());
        throw py::error_already_set();
    case kind::empty:
        throw py::value_error("there is no digit in \"" + text + "\"");
    case kind::dont_care:
        throw py::value_error("a decimal number has no don't-care digits: \"" + text + "\"");
    case kind::invalid_digit:
        break;
    }
    throw py::value_error("character " + std::to_string(fault.position + 1) + " of \"" + text +
                          "\" is not a digit of the radix");
}

std::string convert_radix(const std::string& text, const std::string& source, const std::string& target,
                          std::uint32_t width) {
    const auto made = word::parse(text, radix_called(source), width);
    if (made.fault) {
        throw_fault(*made.fault, text, width);
    }
    const auto converted = made.value->to_text(radix_called(target));
    if (!converted) {
        throw py::value_error("the don't-care bits of \"" + text + "\" cannot be shown in " + target);
    }
    return *converted;
}

/// The digits "0", "1", "X" of all bits of the word that @p text writes.
std::string bits_of_text(const std::string& text, const std::string& radix, std::uint32_t width) {
    return convert_radix(text, radix, "bin", width);
}

} // namespace

void add_values(py::module_& module) {
    module.def("encode_fixed", encode_fixed);
    module.def("convert_radix", convert_radix);
    module.def("bits_of_text", bits_of_text);
}

} // namespace kvr_python
