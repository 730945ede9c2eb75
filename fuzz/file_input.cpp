#include "fuzz/file_input.h"

#include "kvrimage/formats/registry.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace kvr_fuzz {

namespace {

using kvrimage::address_unit;
using kvrimage::byte_order;

struct options_of_user {
    kvrimage::read_options read = {}; ///< all but format and choices
    bool has_choices = false;         ///< given on the first line of the text
};

const std::array<options_of_user, 16>& said_by_user() {
    static const std::array<options_of_user, 16> all = {{
        {},
        {.read = {.width = 8}},
        {.read = {.width = 16}},
        {.read = {.width = 12}},
        {.read = {.depth = 16}},
        {.read = {.width = 32, .depth = 256}},
        {.read = {.width = 1, .depth = 1}},
        {.read = {.width = 1U << 20U, .depth = 0xFFFFFFFF}},
        {.read = {.width = 16, .order = byte_order::little}},
        {.read = {.width = 32, .order = byte_order::big, .base = 0x100}},
        {.read = {.width = 8, .base = 0}},
        {.read = {.width = 24, .depth = 64, .order = byte_order::little, .pad = 0xFF}},
        {.read = {.width = 16, .unit = address_unit::byte, .order = byte_order::little}},
        {.read = {.width = 300, .depth = 4096, .order = byte_order::big, .base = 1, .pad = 0}},
        {.has_choices = true},
        {.read = {.width = 16, .order = byte_order::big}, .has_choices = true},
    }};
    return all;
}

/// The readable format that @p number selects: "0" is the first one of the registry, "1" the second.
const kvrimage::format& format_number(unsigned number) {
    static const std::vector<const kvrimage::format*> readable = [] {
        std::vector<const kvrimage::format*> found;
        std::ranges::copy_if(kvrimage::formats(), std::back_inserter(found),
                             [](const kvrimage::format* each) { return each->read != nullptr; });
        return found;
    }();
    constexpr unsigned all_bytes = 256;
    return *readable[(number + all_bytes - '0') % all_bytes % readable.size()];
}

/// "name=value" and "name", separated by blanks.
std::vector<kvrimage::choice> choices_in(const std::string& line) {
    std::vector<kvrimage::choice> choices;
    std::istringstream words(line);
    for (std::string each; words >> each;) {
        const std::size_t equals = std::min(each.find('='), each.size());
        choices.push_back({each.substr(0, equals), each.substr(std::min(equals + 1, each.size()))});
    }
    return choices;
}

} // namespace

kvrimage::read_options choose_read_options(input_bytes& settings) {
    const kvrimage::format& as = format_number(settings.number());
    const options_of_user& said = settings.choose(said_by_user());
    kvrimage::read_options options = said.read;
    options.as = &as;
    if (said.has_choices) {
        options.choices = choices_in(settings.line());
    }
    return options;
}

} // namespace kvr_fuzz
