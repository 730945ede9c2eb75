#include "tests/kvrimage/formats/mif/mif_model.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace kvrimage_tests {

using namespace kvrimage;

namespace {

std::uint64_t number_of(std::string_view text, radix digits_radix) {
    constexpr int bases[] = {2, 8, 10, 10, 16};
    std::uint64_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number,
                    bases[static_cast<std::size_t>(digits_radix)]);
    return number;
}

} // namespace

void mif_model::setting(const mif_setting& found) {
    const std::string_view value = found.value.in(contents);
    switch (found.keyword) {
    case mif_keyword::width:
        width = static_cast<std::uint32_t>(number_of(value, radix::dec));
        break;
    case mif_keyword::depth:
        depth = number_of(value, radix::dec);
        break;
    case mif_keyword::address_radix:
        address_radix = radix_of_name(value).value();
        break;
    case mif_keyword::data_radix:
        data_radix = radix_of_name(value).value();
        break;
    }
}

void mif_model::statement(const mif_statement& found) {
    if (!found.sound) {
        return;
    }
    const std::uint64_t first = number_of(found.first.in(contents), address_radix);
    const std::uint64_t last = found.is_range() ? number_of(found.last.in(contents), address_radix)
                                                : first + found.values.size() - 1;
    for (std::uint64_t address = first; address <= last; ++address) {
        const span& value = found.values[(address - first) % found.values.size()];
        setters[address] = found.whole;
        words.erase(address);
        if (const auto parsed = word::parse(value.in(contents), data_radix, width).value) {
            words.insert_or_assign(address, *parsed);
        }
    }
    if (first == last) {
        sets_twice = !single_addresses.insert(first).second || sets_twice;
    }
}

void mif_model::end(const span& keyword, const span& /*semicolon*/) {
    end_keyword = keyword;
}

read_result mif_model::result() const {
    read_result read;
    read.image.emplace(width, depth);
    for (const auto& [address, value] : words) {
        read.image->set(address, value);
    }
    read.facts.address_radix = address_radix;
    read.facts.data_radix = data_radix;
    return read;
}

} // namespace kvrimage_tests
