#include "tools/kvrmem/files/written_memory.h"

#include "kvrimage/files/file_name.h"
#include "kvrimage/formats/registry.h"
#include "tools/kvrmem/command_line/unknown_format.h"
#include "tools/kvrmem/command_line/whole_command.h"
#include "tools/kvrmem/files/format_choice.h"
#include "tools/kvrmem/files/lost_comments.h"
#include "tools/kvrmem/platform/counted.h"
#include "tools/kvrmem/platform/message.h"
#include "tools/kvrmem/platform/tool_error.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace kvrmem {

namespace {

using kvrimage::format;
using kvrimage::memory_image;
using kvrimage::write_options;

/// Returns "MIF in HEX"; "RIF" for a format without radixes; "Intel HEX, word addresses" if addresses may
/// count bytes.
std::string title_of_file(const format& as, const std::optional<kvrimage::radix>& radix,
                          kvrimage::address_unit unit) {
    std::string title(as.title);
    if (as.states_radix) {
        title += fmt::format(" in {}", kvrimage::title_of(radix.value_or(kvrimage::radix::hex)));
    }
    if (as.counts != kvrimage::address_unit::word) {
        title += unit == kvrimage::address_unit::byte ? ", byte addresses" : ", word addresses";
    }
    return title;
}

/// Detects output of unexpected size: a few bytes can represent billions of words, for example after a
/// mistyped number.
/// @return "28.0 GiB, from the 65 bytes of in.mif", or "28.0 GiB" without an input, if the output is huge and
/// out of proportion to the input; else ""
std::string excessive_size(const memory_image& image, const output_source& source,
                           const write_options& options) {
    constexpr std::uint64_t gibibyte = std::uint64_t{1} << 30U;
    constexpr std::uint64_t most_growth = 100;
    constexpr std::uint64_t most_characters_beside_word = 96;
    const std::uint64_t longest_line = most_characters_beside_word + image.width();
    if (image.count_set() <= gibibyte / longest_line || options.as->written_size == nullptr) {
        return "";
    }
    const std::uint64_t size = options.as->written_size(image, options);
    if (size <= gibibyte || size / most_growth <= source.file_size) {
        return "";
    }
    const std::string in_gibibytes =
        fmt::format("{:.1f} GiB", static_cast<double>(size) / static_cast<double>(gibibyte));
    return source.name.empty() ? in_gibibytes
                               : fmt::format("{}, from the {} of {}", in_gibibytes,
                                             counted(source.file_size, "byte"), source.name);
}

/// Returns the first writable format other than that of the input.
const format& some_other_format(const format& of_input) {
    const auto all = kvrimage::formats();
    return **std::ranges::find_if(
        all, [&of_input](const format* each) { return each->write != nullptr && each != &of_input; });
}

const format& format_of_output(const arguments& given, const std::string& target, const format& of_input) {
    if (given.to != nullptr || kvrimage::format_of_path(target) != nullptr) {
        return format_for(given.to, target, "--to");
    }
    const format* const meant = format_meant_by_extension(target);
    const bool is_writable = meant != nullptr && meant->write != nullptr;
    const format& proposed = is_writable ? *meant : some_other_format(of_input);
    const std::vector<std::string> example = {fmt::format("--to {}", proposed.id)};
    const std::string line = command_with(given, example);
    usage_error(fmt::format(
        "{}: the name does not determine the format; give --to (kvrmem formats lists them){}{}", target,
        line.empty()  ? ""
        : is_writable ? fmt::format(", for {}: ", proposed.title)
                      : ", for example ",
        line));
}

/// Returns the radix for writing words or addresses, one of @p possible unless that is empty.
/// @param wanted value of option @p option; @param usual the default
std::optional<kvrimage::radix> radix_of_output(std::string_view option, const format& as,
                                               std::span<const kvrimage::radix> possible,
                                               const std::optional<kvrimage::radix>& wanted,
                                               const std::optional<kvrimage::radix>& usual) {
    const auto is_possible = [possible](kvrimage::radix each) {
        return possible.empty() || std::ranges::find(possible, each) != possible.end();
    };
    if (wanted && !is_possible(*wanted)) {
        std::vector<std::string_view> titles;
        for (const kvrimage::radix each : possible) {
            titles.push_back(kvrimage::title_of(each));
        }
        usage_error(fmt::format("--{} {}: {} is written in {}{}", option, kvrimage::title_of(*wanted),
                                as.title, titles.size() == 1 ? "" : "one of ", fmt::join(titles, ", ")));
    }
    const std::optional<kvrimage::radix> chosen = wanted ? wanted : usual;
    if (!chosen || is_possible(*chosen)) {
        return chosen;
    }
    // Decimal numbers stay decimal.
    return *chosen == kvrimage::radix::dec && is_possible(kvrimage::radix::uns) ? kvrimage::radix::uns
                                                                                : possible.front();
}

} // namespace

write_options write_options_for(const arguments& given, const std::string& target,
                                const kvrimage::file_facts& like) {
    write_options options;
    options.as = &format_of_output(given, target, *like.as);
    const format& as = *options.as;
    options.address_radix =
        radix_of_output("address-radix", as, as.address_radixes, given.address_radix, like.address_radix);
    options.data_radix =
        radix_of_output("data-radix", as, as.data_radixes, given.data_radix, like.data_radix);
    options.runs = !given.no_runs;
    options.order = given.order;
    options.choices = given.write_choices;
    options.file_name = target;
    return options;
}

std::string title_of_read(const memory_input& input) {
    const kvrimage::file_facts& facts = input.result.facts;
    return title_of_file(*facts.as, facts.data_radix, facts.unit.value_or(facts.as->counts));
}

std::string title_of_written(const write_options& options) {
    return title_of_file(*options.as, options.data_radix, options.as->counts);
}

void keep_start_address(const arguments& given, const kvrimage::file_facts& facts, write_options& options) {
    const std::uint64_t base = given.base.value_or(0);
    const bool is_kept =
        facts.start_address && !move_addresses(given.operations) && *facts.start_address >= base &&
        *facts.start_address - base <= options.as->largest_start && options.as->largest_start != 0;
    if (is_kept) {
        options.start_address = *facts.start_address - base;
    }
}

std::string lost_start_address(const kvrimage::file_facts& facts, const write_options& options) {
    return facts.start_address && !options.start_address
               ? fmt::format("; start address {:X} is omitted", *facts.start_address)
               : "";
}

void note_lost_start(const memory_input& input) {
    if (const auto& start = input.result.facts.start_address) {
        print_message(fmt::format("{}: note: start address {:X} is omitted", input.name(), *start));
    }
}

std::string written_words(const memory_image& image, const format& written) {
    const std::uint64_t count = written.states_depth ? image.depth() : image.count_set();
    const std::string part = count < image.depth() ? fmt::format("{} of ", count) : std::string();
    return fmt::format("{}{} of {}", part, counted(image.depth(), "word"), counted(image.width(), "bit"));
}

void require_harmless(const memory_image& image, const output_source& source, const write_options& options,
                      const std::string& target) {
    const std::string size = excessive_size(image, source, options);
    if (size.empty()) {
        require_no_lost_comments(target, "");
        return;
    }
    const std::string lost = lost_comments(target, "");
    usage_error(fmt::format("{}: would write {}{}; use --force to write it",
                            kvrimage::title_of_output(target), size,
                            lost.empty() ? "" : fmt::format(", and lose {}", lost)));
}

} // namespace kvrmem
