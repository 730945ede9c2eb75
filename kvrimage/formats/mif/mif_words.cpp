#include "kvrimage/formats/mif/mif_words.h"

#include "kvr/memory/mif/mif_line.h"
#include "kvr/memory/mif/mif_reader.h"
#include "kvr/numeric/digit_value.h"
#include "kvrimage/formats/mif/mif_numbers.h"
#include "kvrimage/formats/mif/mif_tokens.h"
#include "kvrimage/image/word_text.h"

#include <algorithm>

namespace kvrimage {

namespace {

/// Regular lines are read in parts that fit the processor cache.
constexpr std::size_t bytes_at_once = std::size_t{128} * 1024;

using address_fault = mif_addresses::fault;

address_fault fault_of(const mif_number& number, std::uint64_t depth) {
    if (!number.is_number) {
        return address_fault::no_number;
    }
    if (number.is_negative) {
        return address_fault::negative;
    }
    return number.value >= depth ? address_fault::beyond : address_fault::none;
}

} // namespace

mif_addresses addresses_of(const mif_statement& statement, std::string_view contents,
                           const mif_number_form& form) {
    mif_addresses result;
    const mif_number first = mif_number_of(statement.first.in(contents), form.addresses);
    result.first = result.last = first.value;
    result.what = fault_of(first, form.depth);
    if (!statement.is_range()) {
        const std::uint64_t more = statement.values.empty() ? 0 : statement.values.size() - 1;
        if (result.what == address_fault::none || result.what == address_fault::beyond) {
            result.last = first.value > ~more ? ~std::uint64_t{0} : first.value + more;
            result.what = result.last >= form.depth ? address_fault::beyond : address_fault::none;
        }
        return result;
    }
    const mif_number last = mif_number_of(statement.last.in(contents), form.addresses);
    const address_fault of_last = fault_of(last, form.depth);
    if (result.what == address_fault::none ||
        (result.what == address_fault::beyond && of_last != address_fault::none)) {
        result.what = of_last;
        result.at_last = true;
    }
    if (result.what == address_fault::none || result.what == address_fault::beyond) {
        result.last = last.value;
        if (result.first > result.last) {
            result.what = address_fault::goes_down;
        }
    }
    return result;
}

mif_words::mif_words(std::string_view contents, const mif_number_form& numbers)
    : text(contents),
      form(numbers),
      memory(nullptr),
      fast_lines(memory, longest_kvr_line),
      whole_lines_end(contents.rfind('\n') + 1) {
    memory.memory_initialize_value.clear();
    memory.address_radix = kvr_radix(form.addresses);
    memory.resize_words(static_cast<std::uint32_t>(form.depth));
}

void mif_words::set(const mif_statement& statement) {
    const mif_addresses addresses = addresses_of(statement, text, form);
    bad_statement = bad_statement || addresses.what != address_fault::none;
    if (addresses.what != address_fault::none &&
        (addresses.what != address_fault::beyond || addresses.first >= form.depth)) {
        return;
    }
    const auto first = static_cast<std::uint32_t>(addresses.first);
    const auto last = static_cast<std::uint32_t>(std::min(addresses.last, form.depth - 1));
    if (statement.is_range()) {
        bad_statement =
            bad_statement || first == last || statement.values.size() > addresses.last - addresses.first + 1;
        note_range(first, last);
    } else if (statement.values.size() == 1) {
        note_single(first);
        memory.data_words.set(first, statement.values.front().in(text));
        return;
    } else {
        note_list(first, last - first + std::uint64_t{1});
    }
    values.clear();
    std::ranges::transform(statement.values, std::back_inserter(values),
                           [this](const span& value) { return value.in(text); });
    memory.data_words.fill(first, last, values);
}

void mif_words::note_single(std::uint32_t address) {
    overlap = !memory.address_set.insert(address) || (has_lists && listed.contains(address)) || overlap;
}

void mif_words::note_list(std::uint32_t first, std::uint64_t count) {
    has_lists = true;
    for (std::uint64_t address = first; address < first + count; ++address) {
        const auto at = static_cast<std::uint32_t>(address);
        overlap = !listed.insert(at) || memory.address_set.contains(at) || overlap;
    }
}

void mif_words::note_range(std::uint32_t first, std::uint32_t last) {
    const kvr::word_run before = memory.data_words.run_at(first);
    overlap = overlap || !before.text.empty() || before.last < last;
}

std::size_t mif_words::set_lines(std::size_t offset) {
    std::size_t at = offset;
    while (at < whole_lines_end) {
        const std::size_t limit = std::min(at + bytes_at_once, whole_lines_end);
        const std::size_t end = limit == whole_lines_end ? limit : text.rfind('\n', limit - 1) + 1;
        if (end <= at) {
            break;
        }
        const kvr::fast_mif_lines::amount read = fast_lines.read(text.substr(at, end - at), false);
        const std::string_view lines = text.substr(at, read.bytes);
        if (has_lists || read.has_lists) {
            note_lists_of(lines);
        }
        at += read.bytes;
        if (at != end) {
            break;
        }
    }
    return at - offset;
}

/// Records the addresses that regular lines have set, if some lines are lists or follow lists.
void mif_words::note_lists_of(std::string_view lines) {
    const unsigned base = kvr::radix_base(kvr_radix(form.addresses));
    while (!lines.empty()) {
        const std::string_view line = lines.substr(0, lines.find('\n'));
        lines.remove_prefix(line.size() + 1);
        std::size_t at = line.find_first_not_of(" \t");
        std::uint64_t address = 0;
        for (; kvr::digit_value(line[at]) < base; ++at) {
            address = address * base + kvr::digit_value(line[at]);
        }
        const std::size_t count =
            kvr::count_tokens(line.substr(line.find(':', at), line.find(';') - line.find(':', at)));
        if (count > 1) {
            note_list(static_cast<std::uint32_t>(address), count);
        } else {
            overlap = overlap || listed.contains(static_cast<std::uint32_t>(address));
        }
    }
}

} // namespace kvrimage
