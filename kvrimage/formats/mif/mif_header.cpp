#include "kvrimage/formats/mif/mif_header.h"

#include "kvr/memory/io/line_source.h"
#include "kvr/memory/mif/mif_reader.h"
#include "kvr/numeric/digit_value.h"
#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/mif/mif_cause.h"
#include "kvrimage/formats/mif/mif_header_parser.h"
#include "kvrimage/image/word_text.h"

#include <algorithm>
#include <string>

namespace kvrimage {

namespace {

bool is_size(mif_keyword keyword) {
    return keyword == mif_keyword::width || keyword == mif_keyword::depth;
}

std::uint64_t most_of(mif_keyword keyword) {
    return keyword == mif_keyword::width ? widest_word : deepest_mif;
}

/// "write 4096" for "4K", "4,096", "16 bits" and the like; "" where that is not clear.
std::string number_hint(std::string_view value) {
    std::string digits;
    std::size_t end = 0;
    while (end < value.size() &&
           (kvr::is_decimal_digit(value[end]) || value[end] == ',' || value[end] == '_')) {
        if (kvr::is_decimal_digit(value[end])) {
            digits.push_back(value[end]);
        }
        ++end;
    }
    const std::string_view unit = value.substr(end);
    constexpr std::size_t most_digits = 9;
    if (digits.empty() || digits.size() > most_digits) {
        return "write a decimal number";
    }
    std::uint64_t number = std::stoull(digits);
    if (kvr::equal_ignoring_case(unit, "K")) {
        number <<= 10U;
    } else if (kvr::equal_ignoring_case(unit, "M")) {
        number <<= 20U;
    } else if (!unit.empty() && !unit.starts_with(' ')) {
        return "write a decimal number";
    }
    return "write " + std::to_string(number);
}

/// What the library makes of the header of a file.
void read_with_kvr(std::string_view header, kvr::mif_memory& memory) {
    const std::string file = std::string(header) + "\nCONTENT BEGIN\nEND;\n";
    kvr::fill_radix_names(memory);
    memory.memory_initialize_value.clear();
    kvr::line_source lines(file, kvr::mif_reader::source_limit);
    static_cast<void>(kvr::mif_reader(memory).read(lines));
}

} // namespace

void mif_header::take(const mif_setting& found, diagnostic_list& list) {
    stated& one = at(found.keyword);
    if (one.is_stated) {
        if (found.value.length != 0) {
            report_repetition(found, list);
        }
        return;
    }
    one.is_stated = true;
    one.first = found;
    if (found.value.length == 0) {
        return; // which the parser has found
    }
    if (is_size(found.keyword)) {
        read_number(one, found, list);
    } else {
        read_radix(one, found, list);
    }
}

void mif_header::read_number(stated& one, const mif_setting& found, diagnostic_list& list) const {
    const std::string_view value = found.value.in(text);
    const mif_number number = mif_number_of(value, radix::uns);
    if (!number.is_number || value.starts_with('-')) {
        list.add(diagnose::header_number(found.value, name_of(found.keyword), value, number_hint(value)));
    } else if (number.value == 0 || number.value > most_of(found.keyword)) {
        list.add(diagnose::header_range(found.value, name_of(found.keyword), value, most_of(found.keyword)));
    } else {
        one.number = number.value;
    }
}

void mif_header::read_radix(stated& one, const mif_setting& found, diagnostic_list& list) const {
    const std::string_view value = found.value.in(text);
    one.meaning = mif_radix_of(value);
    if (!one.meaning) {
        const std::string_view nearest = nearest_radix_name(value);
        list.add(diagnose::unknown_radix(found.value, name_of(found.keyword), value,
                                         nearest.empty() ? "write one of them"
                                                         : "did you mean " + std::string(nearest) + "?"));
        return;
    }
    const std::optional<radix> library = kvr_radix_of(value); // each name has one of the library's in it
    if (*library != *one.meaning) {
        diagnostic made = diagnose::radix_spelling(found.value, name_of(found.keyword), value,
                                                   title_of(*library), title_of(*one.meaning));
        made.fix = {{found.value.offset, found.value.length, std::string(title_of(*one.meaning))}};
        made.repair = std::string(value) + " is now " + std::string(title_of(*one.meaning));
        list.add(std::move(made));
    }
}

/// Says whether @p found, a setting that was there before, says the same.
void mif_header::report_repetition(const mif_setting& found, diagnostic_list& list) const {
    const stated& one = at(found.keyword);
    const std::string_view value = found.value.in(text);
    const mif_number number = mif_number_of(value, radix::uns);
    const bool is_same = is_size(found.keyword)
                             ? one.number && number.is_number && *one.number == number.value
                             : one.meaning && mif_radix_of(value) == one.meaning;
    if (!is_same) {
        list.add(diagnose::contradicting_header(found.value, name_of(found.keyword), value,
                                                one.first.value.in(text)));
        return;
    }
    list.add(diagnose::repeated_header(found.value, name_of(found.keyword)));
}

void mif_header::compare_with_kvr(std::uint64_t content, diagnostic_list& list) const {
    kvr::mif_memory memory(nullptr);
    read_with_kvr(text.substr(0, content), memory);
    const auto same_number = [this](mif_keyword keyword, std::uint64_t library) {
        return !at(keyword).number || *at(keyword).number == library;
    };
    const auto same_radix = [this, &memory](mif_keyword keyword, KVR_MEMORY_RADIXES library) {
        return memory.word_size == 0 || memory.number_of_words == 0 || !at(keyword).meaning ||
               kvr_radix(*at(keyword).meaning) == library;
    };
    const std::array<bool, mif_keyword_count> same = {
        same_number(mif_keyword::width, memory.word_size),
        same_number(mif_keyword::depth, memory.number_of_words),
        same_radix(mif_keyword::address_radix, memory.address_radix),
        same_radix(mif_keyword::data_radix, memory.memory_radix)};
    if (std::ranges::count(same, true) == std::ssize(same) && !memory.error_occurred) {
        return;
    }
    mif_cause shared;
    std::string_view name;
    for (const stated& one : settings) {
        if (one.is_stated && has_line_end(one.first)) {
            list.add(split_setting_of(one.first));
        } else if (one.is_stated && follows_on_line(one.first) &&
                   shared.add(one.first.whole, text_edit{one.first.whole.offset, 0, "\n"}, true)) {
            name = name_of(one.first.keyword);
        }
    }
    if (!shared.empty()) {
        shared.report(diagnose::shared_line(shared.where(), name), "line break put between two settings",
                      list);
    }
}

bool mif_header::has_line_end(const mif_setting& one) const {
    return one.whole.in(text).find('\n') != std::string_view::npos;
}

diagnostic mif_header::split_setting_of(const mif_setting& one) const {
    const std::string instead = std::string(one.name.in(text)) + "=" + std::string(one.value.in(text)) + ";";
    diagnostic made = diagnose::split_setting(one.name, name_of(one.keyword), instead);
    if (one.whole.in(text).find_first_of("%-") == std::string_view::npos) { // no comment in it
        made.fix = {{one.whole.offset, one.whole.length, instead}};
        made.repair = "setting put into one line";
    }
    return made;
}

/// True when another setting precedes it on its line.
bool mif_header::follows_on_line(const mif_setting& one) const {
    const std::uint64_t line = text.substr(0, one.whole.offset).rfind('\n') + 1;
    return std::ranges::any_of(settings, [&one, line](const stated& other) {
        return other.is_stated && other.first.whole.end() > line &&
               other.first.whole.end() <= one.whole.offset;
    });
}

} // namespace kvrimage
