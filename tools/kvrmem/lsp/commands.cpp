#include "kvrimage/diagnostics/utf8_character.h"
#include "kvrimage/formats/edit.h"
#include "kvrimage/image/memory_image.h"
#include "tools/kvrmem/files/broken_file.h"
#include "tools/kvrmem/lsp/features.h"
#include "tools/kvrmem/numbers/human_number.h"
#include "tools/kvrmem/numbers/word_radix.h"
#include "tools/kvrmem/platform/tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kvrmem::lsp {

namespace {

using kvrimage::address_range;
using kvrimage::assignment;
using kvrimage::memory_image;
using kvrimage::text_edit;
using kvrimage::word;

/// Maximum number of lines that a range is split into.
constexpr std::uint64_t most_lines_of_range = 4096;
/// Maximum number of word texts to create.
constexpr std::uint64_t most_single_words = 65536;

[[noreturn]] void fail(const std::string& why) {
    throw request_error(error_code::request_failed, why);
}

const std::string& text_argument(const json& arguments, std::size_t index, const char* what) {
    if (index >= arguments.size() || !arguments[index].is_string()) {
        throw request_error(error_code::invalid_params,
                            fmt::format("argument {}: expected {}", index + 1, what));
    }
    return arguments[index].get_ref<const std::string&>();
}

const memory_image& image_of(document& of) {
    const std::optional<memory_image>& image = of.result().image;
    if (!image) {
        fail("the words of the file are not known; see its diagnostics");
    }
    return *image;
}

/// Parses "0x10..0x1F" and checks that it is in the memory.
address_range addresses_argument(document& of, const json& arguments) {
    const auto range =
        read_address_range(text_argument(arguments, 1, "an address, or a range as in 0x10..0x1F"));
    if (!range || range->last > image_of(of).last_address()) {
        fail(fmt::format("{} is not an address of the memory", arguments[1].get_ref<const std::string&>()));
    }
    return *range;
}

std::vector<text_edit> edits_or_failure(kvrimage::edit_result result) {
    if (!result.diagnostics.empty()) {
        fail(result.diagnostics.front().message);
    }
    return std::move(result.edits);
}

kvrimage::edit_result edit_text(document& of, std::string_view text,
                                const std::vector<assignment>& assignments) {
    if (of.result().facts.as->edit == nullptr) {
        fail(fmt::format("words of {} files cannot be set in place", of.result().facts.as->title));
    }
    return kvrimage::edit(text, assignments, of.reading());
}

std::vector<text_edit> set_words(document& of, const json& arguments) {
    const address_range addresses = addresses_argument(of, arguments);
    const std::string& value = text_argument(arguments, 2, "a word, as in 0x1F");
    if (!may_set(of, addresses)) {
        fail(fmt::format("the range has more than {} words", most_single_words));
    }
    try {
        const word chosen = word_of_user(value, image_of(of).width(), "kvrmem.set");
        return edits_or_failure(edit_text(of, of.text(), {{addresses, {chosen}}}));
    } catch (const tool_error& error) {
        fail(error.message());
    }
}

/// Returns @p value with all bits inverted.
word inverted(const word& value) {
    std::string digits;
    for (std::uint32_t index = value.width(); index-- > 0;) {
        const char bit = value.bit(index);
        digits += bit == '0' ? '1' : (bit == '1' ? '0' : bit);
    }
    return word::parse(digits, kvrimage::radix::bin, value.width()).value.value();
}

std::vector<text_edit> invert_words(document& of, const json& arguments) {
    const address_range addresses = addresses_argument(of, arguments);
    std::vector<assignment> assignments;
    for (const kvrimage::run& each : image_of(of).runs(addresses)) {
        if (each.value && may_set(of, each.addresses) && assignments.size() < most_single_words) {
            assignments.push_back({each.addresses, {inverted(*each.value)}});
        } else if (each.value) {
            fail(fmt::format("the range has more than {} words", most_single_words));
        }
    }
    return edits_or_failure(edit_text(of, of.text(), assignments));
}

/// Returns the edit of the text between the common start and the common end.
std::vector<text_edit> edits_between(std::string_view before, std::string_view after) {
    const auto common = static_cast<std::size_t>(std::ranges::mismatch(before, after).in1 - before.begin());
    std::size_t tail = 0;
    while (tail < std::min(before.size(), after.size()) - common &&
           before[before.size() - 1 - tail] == after[after.size() - 1 - tail]) {
        ++tail;
    }
    // Multi-byte characters stay complete.
    const auto is_within = [](std::string_view text, std::size_t at) {
        return at < text.size() && kvrimage::is_continuation(text[at]);
    };
    std::size_t begin = common;
    while (begin > 0 && (is_within(before, begin) || is_within(after, begin))) {
        --begin;
    }
    while (tail > 0 && is_within(before, before.size() - tail)) {
        --tail;
    }
    if (before == after) {
        return {};
    }
    return {
        {begin, before.size() - tail - begin, std::string(after.substr(begin, after.size() - tail - begin))}};
}

std::vector<text_edit> make_all_repairs(document& of, const json& /*arguments*/) {
    kvrimage::check_options options = of.settings().check;
    options.read.keep_going = false;
    if (of.result().facts.as == nullptr) {
        fail("the contents fit no format");
    }
    const kvrimage::repaired made = kvrimage::repair(of.text(), options);
    if (!of.is_broken() && !made.left.image) {
        fail("the repairs would leave errors: " + first_broken(made.left)->message);
    }
    return edits_between(of.text(), made.contents);
}

/// Returns the text with the line ends of the document.
std::string with_line_ends_of(const document& of, std::string text) {
    const std::size_t first = of.text().find('\n');
    if (first == std::string::npos || first == 0 || of.text()[first - 1] != '\r') {
        return text;
    }
    std::string made;
    for (const char each : text) {
        made += each == '\n' ? "\r\n" : std::string(1, each);
    }
    return made;
}

std::vector<text_edit> change_radix(document& of, const json& arguments) {
    const memory_image& image = image_of(of);
    const kvrimage::file_facts& facts = of.result().facts;
    if (of.is_broken()) {
        fail("a file with errors would lose words");
    }
    if (!facts.data_radix || of.has_base()) {
        fail("the file does not state its radix, or is read from a base");
    }
    kvrimage::write_options options;
    options.as = facts.as;
    options.file_name = file_name_of(of.uri());
    options.address_radix = facts.address_radix;
    options.data_radix = kvrimage::radix_of_name(text_argument(arguments, 1, "a radix, as in bin"));
    if (!options.data_radix) {
        fail("a radix is bin, oct, dec, uns or hex");
    }
    if (options.as->write == nullptr) {
        fail(fmt::format("{} files cannot be written", options.as->title));
    }
    const auto obstacles = kvrimage::can_write(image, options);
    if (!obstacles.empty()) {
        fail(obstacles.front().message);
    }
    return edits_between(of.text(), with_line_ends_of(of, kvrimage::to_text(image, options)));
}

/// Returns one assignment for each word set in @p addresses.
std::vector<assignment> single_assignments(const memory_image& image, const address_range& addresses) {
    std::vector<assignment> assignments;
    for (std::uint64_t address = addresses.first; address <= addresses.last; ++address) {
        if (const auto value = image[address]) {
            assignments.push_back({{address, address}, {*value}});
        }
    }
    return assignments;
}

/// First sets words that differ from their neighbors, so that each gets its own line, then restores the
/// original words.
std::vector<text_edit> split_range(document& of, const json& arguments) {
    const address_range addresses = addresses_argument(of, arguments);
    if (addresses.last - addresses.first >= most_lines_of_range) {
        fail(fmt::format("the range has more than {} words", most_lines_of_range));
    }
    const memory_image& image = image_of(of);
    const std::vector<assignment> original = single_assignments(image, addresses);
    std::vector<assignment> alternating = original;
    for (assignment& each : alternating) {
        each.words = {word::of(each.addresses.first % 2, image.width())};
    }
    std::string text =
        kvrimage::with_edits(of.text(), edits_or_failure(edit_text(of, of.text(), alternating)));
    const std::vector<text_edit> back = edits_or_failure(edit_text(of, text, original));
    text = kvrimage::with_edits(std::move(text), back);
    return edits_between(of.text(), text);
}

struct named_command {
    std::string_view name;
    std::vector<text_edit> (*edits)(document& of, const json& arguments);
};
constexpr std::array<named_command, 5> command_table = {{
    {"kvrmem.set", set_words},
    {"kvrmem.invert", invert_words},
    {"kvrmem.fixAll", make_all_repairs},
    {"kvrmem.changeRadix", change_radix},
    {"kvrmem.splitRange", split_range},
}};

} // namespace

bool may_set(document& of, const address_range& addresses) {
    return of.result().facts.as->holds_ranges || addresses.last - addresses.first < most_single_words;
}

std::vector<std::string> command_names() {
    std::vector<std::string> names;
    names.reserve(command_table.size());
    for (const named_command& each : command_table) {
        names.emplace_back(each.name);
    }
    return names;
}

std::vector<text_edit> edits_of_command(document& of, const std::string& name, const json& arguments) {
    const auto found = std::ranges::find(command_table, name, &named_command::name);
    if (found == command_table.end()) {
        throw request_error(error_code::invalid_params, fmt::format("there is no command '{}'", name));
    }
    return found->edits(of, arguments);
}

} // namespace kvrmem::lsp
