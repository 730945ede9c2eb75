#include "kvrimage/formats/coe/coe_reader.h"

#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/coe/coe_format.h"
#include "kvrimage/formats/coe/coe_parser.h"
#include "kvrimage/formats/foreign_content.h"
#include "kvrimage/formats/word_digits.h"
#include "kvrimage/formats/word_list.h"

#include <fmt/format.h>

#include <optional>
#include <utility>

namespace kvrimage {

namespace {

class coe_reading final : public coe_sink {
public:
    coe_reading(std::string_view contents, const read_options& given)
        : text(contents),
          options(given),
          list(given.most_diagnostics, given.wants_repairs) {}

    read_result read() {
        coe_parser(text, *this).parse();
        report();
        result.facts.data_radix = digits;
        if (words) {
            words->finish(list, result);
        }
        result.diagnostics = list.finish(text);
        result.facts.diagnostics_left_out = list.left_out();
        return std::move(result);
    }

    void take(const coe_piece& piece) override {
        switch (piece.what) {
        case coe_piece::kind::word:
            on_word(piece.where);
            break;
        case coe_piece::kind::comma:
            on_comma(piece.where);
            break;
        case coe_piece::kind::end:
            on_end();
            break;
        case coe_piece::kind::comment:
            result.facts.has_comments = true;
            break;
        case coe_piece::kind::radix_name:
            break;
        case coe_piece::kind::radix:
            on_radix(piece.where);
            break;
        case coe_piece::kind::vector:
            on_vector(piece.where);
            break;
        case coe_piece::kind::no_semicolon:
            on_no_semicolon(piece.where);
            break;
        case coe_piece::kind::stray:
            stray.add(piece.where);
            break;
        default: // coe_piece::kind::after_end
            after_end.add(piece.where);
            break;
        }
    }

private:
    void on_radix(const span& value) {
        if (has_radix) {
            list.add(diagnose::coe_radix_again(value));
            return;
        }
        has_radix = true;
        digits = coe_radix_of(value.in(text));
        if (!digits) {
            list.add(diagnose::coe_radix(value, value.in(text)));
        }
    }
    void on_vector(const span& name) {
        has_vector = true;
        if (digits) {
            words.emplace(text, options, *digits);
        } else if (!has_radix) {
            list.add(diagnose::coe_no_radix(name));
        }
    }
    void on_word(const span& where) {
        after_comma = false;
        if (!words) {
            return;
        }
        words->add_unchecked({address, address}, where, where);
        ++address;
        has_value = true;
    }
    void on_comma(const span& where) {
        if (after_comma || (words && !has_value)) {
            empty_values.add(where);
        }
        after_comma = true;
        last_comma = where;
    }
    void on_end() {
        if (after_comma) {
            diagnostic found = diagnose::coe_last_comma(last_comma);
            found.fix = {{last_comma.offset, last_comma.length, ""}};
            found.repair = "the last ',' is removed";
            list.add(std::move(found));
        }
    }
    void on_no_semicolon(const span& last) {
        diagnostic found = diagnose::coe_no_semicolon(last, last.in(text));
        found.fix = {{last.end(), 0, ";"}};
        found.repair = "a ';' is added";
        list.add(std::move(found));
    }

    void report() {
        if (!stray.empty()) {
            list.add(diagnose::coe_stray(stray, stray.front().in(text)));
        }
        if (!after_end.empty()) {
            list.add(diagnose::coe_after_end(after_end, after_end.front().in(text)));
        }
        if (!empty_values.empty()) {
            list.add(diagnose::coe_empty_value(empty_values));
        }
        if (!has_vector) {
            list.add(diagnose::coe_no_vector({}));
        }
    }

    std::string_view text;
    const read_options& options;
    diagnostic_list list;
    read_result result;
    std::optional<word_list> words;
    std::optional<radix> digits;
    std::uint64_t address = 0;
    span last_comma;
    bool has_radix = false;
    bool has_vector = false;
    bool has_value = false;
    bool after_comma = false;
    places stray;
    places after_end;
    places empty_values;
};

} // namespace

std::optional<radix> coe_radix_of(std::string_view value) noexcept {
    if (value == "2") {
        return radix::bin;
    }
    if (value == "10") {
        return radix::uns;
    }
    return value == "16" ? std::optional(radix::hex) : std::nullopt;
}

read_result read_coe(std::string_view contents, const read_options& options) {
    if (options.base.value_or(0) != 0) {
        return only_finding(coe_format, contents,
                            diagnose::no_addresses({}, "a COE file", fmt::format("{:X}", *options.base)));
    }
    return coe_reading(contents, options).read();
}

} // namespace kvrimage
