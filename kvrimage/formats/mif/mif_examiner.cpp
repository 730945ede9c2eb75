#include "kvrimage/formats/mif/mif_examiner.h"

#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/mif/mif_header_parser.h"
#include "kvrimage/image/word_text.h"

#include <algorithm>
#include <utility>

namespace kvrimage {

namespace {

using reading = mif_radix_trial::reading;
using fault = mif_addresses::fault;

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
    const bool has_addresses =
        addresses.what == fault::none || (addresses.what == fault::beyond && addresses.first < form.depth);
    if (!found.sound) {
        if (has_addresses) {
            doubtful.push_back({addresses.first, std::min(addresses.last, form.depth - 1)});
        }
        return;
    }
    address_trial.take(found.first.in(text), read);
    if (found.is_range()) {
        address_trial.take(found.last.in(text), read);
    }
    take_addresses(found, addresses);
    if (width) {
        take_values(found, addresses);
    }
    if (has_addresses) {
        overlaps.take(found, addresses);
    }
}

void mif_examiner::take_addresses(const mif_statement& found, const mif_addresses& addresses) {
    const span& where = addresses.at_last ? found.last : found.first;
    const auto take = [this, &where](quoted_cause& cause) {
        if (cause.found.add(where, {}, all_repairs)) {
            cause.text = where.in(text).substr(0, named_text::longest + 1);
            return true;
        }
        return false;
    };
    switch (addresses.what) {
    case fault::none:
        take_range(found, addresses);
        break;
    case fault::no_number:
        take(no_number);
        break;
    case fault::negative:
        take(negative);
        break;
    case fault::goes_down:
        if (goes_down.add({found.first.offset, found.last.end() - found.first.offset}, {}, all_repairs)) {
            down_first = found.first.in(text);
            down_last = found.last.in(text);
        }
        break;
    case fault::beyond:
        if (take(beyond)) {
            beyond_address = addresses.at_last || addresses.first >= form.depth
                                 ? mif_number_of(beyond.text, form.addresses).value
                                 : addresses.last;
        }
        needed_depth = std::max({needed_depth, addresses.first, addresses.last});
        break;
    }
}

void mif_examiner::take_range(const mif_statement& found, const mif_addresses& addresses) {
    if (!found.is_range()) {
        return;
    }
    const span whole = found.open.length != 0 && found.close.length != 0
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

void mif_examiner::take_values(const mif_statement& found, const mif_addresses& addresses) {
    for (std::size_t i = 0; i < found.values.size(); ++i) {
        if (!take_value(found.values[i])) {
            doubt(found, addresses, i);
        }
    }
}

/// Value number @p value of a statement is none: so are the words that it sets.
void mif_examiner::doubt(const mif_statement& found, const mif_addresses& addresses, std::size_t value) {
    const bool has_addresses = addresses.what == fault::none || addresses.what == fault::beyond;
    if (!has_addresses || addresses.first >= form.depth) {
        return;
    }
    const std::uint64_t step = found.values.size();
    const std::uint64_t last = std::min(addresses.last, form.depth - 1);
    if (step == 1) {
        doubtful.push_back({addresses.first, last});
        return;
    }
    // A pattern over very many words is in doubt as a whole.
    constexpr std::uint64_t most_ranges = 4096;
    if ((last - addresses.first) / step > most_ranges) {
        doubtful.push_back({addresses.first, last});
        return;
    }
    for (std::uint64_t address = addresses.first + value; address <= last; address += step) {
        doubtful.push_back({address, address});
    }
}

bool mif_examiner::take_value(const span& where) {
    const std::string_view value = where.in(text);
    const auto read = [this](std::string_view number, radix tried) {
        const auto error = make_word(number, tried, *width, word);
        return !error                                      ? reading::fits
               : error->what == word_fault::kind::too_wide ? reading::too_large
                                                           : reading::no_number;
    };
    data_trial.take(value, read);
    values.has_negative = values.has_negative || value.starts_with('-');
    const auto error = make_word(value, form.data, *width, word);
    if (!error) {
        return true;
    }
    switch (error->what) {
    case word_fault::kind::empty:
        values.empty.add(where, {}, all_repairs);
        return false;
    case word_fault::kind::too_wide:
        if (form.data == radix::dec && !make_word(value, radix::uns, *width, word)) {
            if (values.as_unsigned.add(where, {}, all_repairs)) {
                values.unsigned_value = value;
            }
            return true;
        }
        if (values.too_wide.add(where, {}, all_repairs)) {
            values.wide_value = value;
            values.wide_bits = error->bits_needed;
        }
        values.most_bits = std::max(values.most_bits, error->bits_needed);
        return false;
    case word_fault::kind::invalid_digit:
    case word_fault::kind::dont_care:
        break;
    }
    if (values.bad_digit.add(where, {}, all_repairs)) {
        values.bad_value = value.substr(0, named_text::longest + 1);
        values.bad_character = value.substr(error->position, 1);
    }
    return false;
}

void mif_examiner::report(diagnostic_list& list) {
    report_addresses(list);
    report_values(list);
    overlaps.report(list);
    std::ranges::copy(overlaps.in_doubt(), std::back_inserter(doubtful));
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
        const std::string decimal = std::to_string(beyond_address);
        // The last value of a list has an address that is not written.
        const bool is_plain =
            beyond.text == decimal || mif_number_of(beyond.text, form.addresses).value != beyond_address;
        beyond.found.report(
            diagnose::beyond_depth(beyond.found.where(),
                                   is_plain ? decimal : beyond.text + " (decimal " + decimal + ")",
                                   form.depth, form.depth - 1, needed_depth + 1),
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
        diagnostic made =
            diagnose::unsigned_in_dec(values.as_unsigned.where(), values.unsigned_value, *width);
        if (!values.has_negative) {
            const span& value = header.value_of(mif_keyword::data_radix);
            made.fix = {{value.offset, value.length, "UNS"}};
            made.repair = std::string(value.in(text)) + " is now UNS";
        }
        list.add(std::move(made));
    }
}

} // namespace kvrimage
