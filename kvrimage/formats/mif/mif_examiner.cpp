#include "kvrimage/formats/mif/mif_examiner.h"

#include "kvr/util/letter_case.h"
#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/diagnostics/utf8_character.h"
#include "kvrimage/formats/mif/mif_header_parser.h"
#include "kvrimage/formats/mif/mif_numbers.h"
#include "kvrimage/image/word_text.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <string>
#include <utility>

namespace kvrimage {

namespace {

using reading = mif_radix_trial::reading;
using address_fault = mif_addresses::fault;

/// To an address the two decimal radixes are one.
reading read_address(std::string_view text, radix tried, std::uint64_t depth) {
    const mif_number number = mif_number_of(text, tried);
    if (tried == radix::dec || !number.is_number) {
        return reading::no_number;
    }
    return number.is_negative || number.value >= depth ? reading::too_large : reading::fits;
}

radix address_radix_of(radix stated) {
    return stated == radix::dec ? radix::uns : stated;
}

} // namespace

mif_examiner::mif_examiner(std::string_view contents, const mif_header& settings,
                           const mif_number_form& numbers, std::optional<std::uint32_t> bits,
                           bool wants_repairs)
    : text(contents),
      header(settings),
      form(numbers),
      width(bits),
      all_repairs(wants_repairs),
      address_trial(address_radix_of(numbers.addresses)),
      data_trial(numbers.data),
      overlaps(contents, numbers, wants_repairs) {
    overlaps.compare_at(bits.value_or(0));
}

void mif_examiner::content(const span& keyword) {
    content_at = keyword;
}

void mif_examiner::statement(const mif_statement& found) {
    const mif_addresses addresses = addresses_of(found, text, form);
    const auto read = [this](std::string_view number, radix tried) {
        return read_address(number, tried, form.depth);
    };
    const bool has_addresses = addresses.what == address_fault::none ||
                               (addresses.what == address_fault::beyond && addresses.first < form.depth);
    if (!found.sound) {
        if (has_addresses) {
            doubtful.push_back({addresses.first, std::min(addresses.last, form.depth - 1)});
        }
        return;
    }
    for (const span& number : {found.first, found.last}) {
        if (number.length != 0 && !prefixed_number_of(number.in(text))) {
            address_trial.take(number.in(text), read);
        }
    }
    examine_addresses(found, addresses);
    const bool are_words = !width || examine_values(found, addresses);
    if (has_addresses && are_words) {
        overlaps.take(found, addresses);
    }
}

void mif_examiner::examine_addresses(const mif_statement& found, const mif_addresses& addresses) {
    const span& where = addresses.at_last ? found.last : found.first;
    const auto take = [this, &where](quoted_cause& cause) {
        if (cause.found.add(where, {}, all_repairs)) {
            cause.text = where.in(text).substr(0, named_text::longest + 1);
            return true;
        }
        return false;
    };
    switch (addresses.what) {
    case address_fault::none:
        examine_range(found, addresses);
        break;
    case address_fault::no_number:
        if (!examine_prefixed(where, address_radix_of(form.addresses))) {
            take(no_number);
        }
        break;
    case address_fault::negative:
        take(negative);
        break;
    case address_fault::goes_down:
        if (goes_down.add({found.first.offset, found.last.end() - found.first.offset}, {}, all_repairs)) {
            down_first = found.first.in(text);
            down_last = found.last.in(text);
        }
        break;
    default: // address_fault::beyond
        if (take(beyond)) {
            beyond_address = addresses.at_last || addresses.first >= form.depth
                                 ? mif_number_of(beyond.text, form.addresses).value
                                 : addresses.last;
        }
        needed_depth = std::max({needed_depth, addresses.first, addresses.last});
        break;
    }
}

void mif_examiner::examine_range(const mif_statement& found, const mif_addresses& addresses) {
    if (!found.is_range()) {
        return;
    }
    const span whole = found.open.length != 0 // and so has the other bracket, the statement being sound
                           ? span{found.open.offset, found.close.end() - found.open.offset}
                           : span{found.first.offset, found.last.end() - found.first.offset};
    if (addresses.first == addresses.last &&
        range_of_one.add(whole, text_edit{whole.offset, whole.length, std::string(found.first.in(text))},
                         all_repairs)) {
        one_first = found.first.in(text);
        one_last = found.last.in(text);
    }
    const std::uint64_t count = addresses.last - addresses.first + 1;
    if (found.values.size() > count) {
        const span& first_surplus = found.values[count];
        if (surplus.add({first_surplus.offset, found.values.back().end() - first_surplus.offset}, {},
                        all_repairs)) {
            surplus_values = found.values.size();
            surplus_addresses = count;
            surplus_first = found.first.in(text);
            surplus_last = found.last.in(text);
            surplus_value = first_surplus.in(text);
        }
    }
}

bool mif_examiner::examine_values(const mif_statement& found, const mif_addresses& addresses) {
    bool are_words = true;
    for (std::size_t i = 0; i < found.values.size(); ++i) {
        const std::uint64_t maybes = maybe_prefixed.found.where().count();
        const bool is_word = examine_value(found.values[i]);
        are_words = are_words && is_word;
        if (!is_word) {
            doubt(found, addresses, i, doubtful);
        } else if (maybe_prefixed.found.where().count() != maybes) {
            doubt(found, addresses, i, doubtful_if_prefixed);
        }
    }
    return are_words;
}

/// Value number @p value of a statement is none: so are the words that it sets.
void mif_examiner::doubt(const mif_statement& found, const mif_addresses& addresses, std::size_t value,
                         std::vector<address_range>& in) const {
    const bool has_addresses =
        addresses.what == address_fault::none || addresses.what == address_fault::beyond;
    if (!has_addresses || addresses.first >= form.depth) {
        return;
    }
    const std::uint64_t step = found.values.size();
    const std::uint64_t last = std::min(addresses.last, form.depth - 1);
    // A pattern over very many words is in doubt as a whole.
    constexpr std::uint64_t most_ranges = 4096;
    if (step == 1 || (last - addresses.first) / step > most_ranges) {
        in.push_back({addresses.first, last});
        return;
    }
    for (std::uint64_t address = addresses.first + value; address <= last; address += step) {
        in.push_back({address, address});
    }
}

/// True for a number with a prefix; the repair is certain where the prefix agrees with @p stated.
bool mif_examiner::examine_prefixed(const span& number, radix stated) {
    const auto found = prefixed_number_of(number.in(text));
    if (!found) {
        return false;
    }
    const bool agrees = found->base == stated || (found->base == radix::uns && stated == radix::dec);
    const auto repair =
        agrees ? std::optional(text_edit{number.offset, number.length, std::string(found->digits)})
               : std::nullopt;
    if (prefixed.found.add(number, repair, all_repairs)) {
        prefixed.text = number.in(text).substr(0, named_text::longest + 1);
        prefixed_advice = agrees ? "write " + named_text(found->digits).text()
                                 : "write it as a number in " + std::string(title_of(stated));
    }
    return true;
}

bool mif_examiner::examine_value(const span& where) {
    const std::string_view value = where.in(text);
    bool is_unsigned = false;
    const auto error = make_word_of_any_sign(value, form.data, *width, word, is_unsigned);
    const bool may_have_prefix = error || (form.data == radix::hex && looks_prefixed(value));
    ++value_count;
    if (may_have_prefix && examine_prefixed(where, form.data)) {
        if (!error && maybe_prefixed.found.add(where, {}, all_repairs)) {
            maybe_prefixed.text = value.substr(0, named_text::longest + 1);
        }
        return !error;
    }
    data_trial.take(value, [this](std::string_view number, radix tried) {
        const auto fault_there = make_word(number, tried, *width, word);
        return !fault_there                                      ? reading::fits
               : fault_there->what == word_fault::kind::too_wide ? reading::too_large
                                                                 : reading::no_number;
    });
    values.has_negative = values.has_negative || value.starts_with('-');
    if (is_unsigned) {
        note_unsigned(where);
    }
    if (error) {
        note_bad_value(where, *error);
    }
    return !error;
}

/// A value that is too large for the signed number that it should be.
void mif_examiner::note_unsigned(const span& where) {
    const std::string_view value = where.in(text);
    values.signed_bits =
        std::max(values.signed_bits, make_word(value, radix::dec, *width, word)->bits_needed);
    if (values.as_unsigned.add(where, {}, all_repairs)) {
        values.unsigned_value = value;
    }
}

void mif_examiner::note_bad_value(const span& where, const word_fault& error) {
    const std::string_view value = where.in(text);
    switch (error.what) {
    case word_fault::kind::empty:
        values.empty.add(where, {}, all_repairs);
        break;
    case word_fault::kind::too_wide:
        if (values.too_wide.add(where, {}, all_repairs)) {
            values.wide_value = value;
            values.wide_bits = error.bits_needed;
        }
        values.most_bits = std::max(values.most_bits, error.bits_needed);
        break;
    case word_fault::kind::invalid_digit:
    default: // word_fault::kind::dont_care
        if (values.bad_digit.add(where, {}, all_repairs)) {
            values.bad_value = value.substr(0, named_text::longest + 1);
            values.bad_character = first_character(value.substr(error.position)).bytes;
        }
        break;
    }
}

void mif_examiner::report(diagnostic_list& list) {
    report_prefixes(list);
    report_addresses(list);
    report_values(list);
    overlaps.report(list);
    std::ranges::copy(overlaps.in_doubt(), std::back_inserter(doubtful));
}

/// Where one number cannot be meant otherwise, or all values look so, "0x" is a prefix everywhere.
void mif_examiner::report_prefixes(diagnostic_list& list) {
    const places& all = prefixed.found.where();
    const places& maybe = maybe_prefixed.found.where();
    if (all.count() != maybe.count() || (!maybe.empty() && maybe.count() == value_count)) {
        std::ranges::copy(doubtful_if_prefixed, std::back_inserter(doubtful));
        prefixed.found.report(diagnose::number_prefix(all, prefixed.text, prefixed_advice),
                              "prefixes removed", list);
    } else if (!maybe.empty()) {
        list.add(diagnose::prefix_or_dont_care(maybe, maybe_prefixed.text, maybe_prefixed.text.substr(2),
                                               kvr::to_upper_case(maybe_prefixed.text)));
    }
}

/// True when the numbers are of another radix, which is the cause of all that seems wrong with them.
bool mif_examiner::report_mismatch(mif_keyword keyword, const mif_radix_trial& trial,
                                   std::string_view numbers, diagnostic_list& list) {
    const std::optional<radix> meant = trial.other();
    if (!meant) {
        return false;
    }
    const span value = header.has(keyword) ? header.value_of(keyword) : span{};
    const span where = value.length != 0 ? value : content_at;
    diagnostic made = diagnose::radix_mismatch(where.length != 0 ? places(where) : places(), name_of(keyword),
                                               title_of(header.radix_of(keyword)), numbers, title_of(*meant),
                                               trial.example());
    if (value.length != 0) {
        made.fix = {{value.offset, value.length, std::string(title_of(*meant))}};
        made.repair = std::string(value.in(text)) + " is now " + std::string(title_of(*meant));
    }
    list.add(std::move(made));
    return true;
}

void mif_examiner::report_addresses(diagnostic_list& list) {
    if (report_mismatch(mif_keyword::address_radix, address_trial, "addresses", list)) {
        return;
    }
    if (!no_number.found.empty()) {
        no_number.found.report(
            diagnose::address_digit(no_number.found.where(), no_number.text, title_of(form.addresses)), "",
            list);
    }
    if (!negative.found.empty()) {
        negative.found.report(diagnose::negative_address(negative.found.where(), negative.text), "", list);
    }
    if (!beyond.found.empty()) {
        const std::string decimal = std::to_string(beyond_address - form.base);
        // The last value of a list has an address that is not written.
        const bool is_plain = form.base != 0 || beyond.text == decimal ||
                              mif_number_of(beyond.text, form.addresses).value != beyond_address;
        const std::string address = is_plain ? decimal : beyond.text + " (decimal " + decimal + ")";
        const std::uint64_t depth = form.depth - form.base;
        const places where = beyond.found.where();
        beyond.found.report(form.depth == deepest_mif
                                ? diagnose::address_outside(where, address, depth - 1)
                                : diagnose::beyond_depth(where, address, depth, depth - 1,
                                                         form.has_given_depth ? "--depth" : "DEPTH",
                                                         needed_depth + 1 - form.base),
                            "", list);
    }
    if (!goes_down.empty()) {
        goes_down.report(diagnose::range_order(goes_down.where(), down_first, down_last), "", list);
    }
    if (!range_of_one.empty()) {
        range_of_one.report(diagnose::range_of_one(range_of_one.where(), one_first, one_last),
                            "brackets removed", list);
    }
    if (!surplus.empty()) {
        surplus.report(diagnose::surplus_values(surplus.where(), surplus_values, surplus_addresses,
                                                surplus_first, surplus_last, surplus_value),
                       "", list);
    }
}

void mif_examiner::report_values(diagnostic_list& list) {
    if (!width || report_mismatch(mif_keyword::data_radix, data_trial, "values", list)) {
        return;
    }
    if (!values.bad_digit.empty()) {
        values.bad_digit.report(diagnose::bad_digit(values.bad_digit.where(), values.bad_character,
                                                    values.bad_value, title_of(form.data)),
                                "", list);
    }
    if (!values.empty.empty()) {
        values.empty.report(diagnose::empty_value(values.empty.where(), "-"), "", list);
    }
    if (!values.too_wide.empty()) {
        values.too_wide.report(diagnose::too_wide(values.too_wide.where(), values.wide_value,
                                                  values.wide_bits, *width, "WIDTH", values.most_bits),
                               "", list);
    }
    if (!values.as_unsigned.empty()) {
        report_unsigned(list);
    }
}

void mif_examiner::report_unsigned(diagnostic_list& list) {
    const std::string advice = values.has_negative
                                   ? "a signed one needs WIDTH=" + std::to_string(values.signed_bits)
                                   : "write DATA_RADIX=UNS;";
    diagnostic made =
        diagnose::unsigned_in_dec(values.as_unsigned.where(), values.unsigned_value, *width, advice);
    if (!values.has_negative) {
        const span& value = header.value_of(mif_keyword::data_radix);
        made.fix = {{value.offset, value.length, "UNS"}};
        made.repair = std::string(value.in(text)) + " is now UNS";
    }
    list.add(std::move(made));
}

} // namespace kvrimage
