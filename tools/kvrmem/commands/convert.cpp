#include "kvrimage/files/file_name.h"
#include "kvrimage/formats/registry.h"
#include "tools/kvrmem/command_line/whole_command.h"
#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/files/format_choice.h"
#include "tools/kvrmem/files/lost_comments.h"
#include "tools/kvrmem/files/memory_input.h"
#include "tools/kvrmem/files/memory_output.h"
#include "tools/kvrmem/numbers/word_radix.h"
#include "tools/kvrmem/surroundings/counted.h"
#include "tools/kvrmem/surroundings/message.h"
#include "tools/kvrmem/surroundings/tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <vector>

namespace kvrmem {

namespace {

using kvrimage::format;
using kvrimage::memory_image;
using kvrimage::write_options;

/// The first format that can be written and is another one than that of the input.
const format& some_other_format(const format& of_input) {
    const auto all = kvrimage::formats();
    return **std::ranges::find_if(
        all, [&of_input](const format* each) { return each->write != nullptr && each != &of_input; });
}

const format& format_of_output(const arguments& given, const format& of_input) {
    if (given.to != nullptr || kvrimage::format_of_path(given.files[1]) != nullptr) {
        return format_for(given.to, given.files[1], "--to");
    }
    const std::vector<std::string> example = {fmt::format("--to {}", some_other_format(of_input).id)};
    const std::string line = command_with(given, example);
    usage_error(fmt::format("{}: the name does not tell the format; give --to (kvrmem formats lists them){}",
                            given.files[1], line.empty() ? "" : ", for example " + line));
}

write_options options_for_output(const arguments& given, const kvrimage::file_facts& facts) {
    write_options options;
    options.as = &format_of_output(given, *facts.as);
    options.address_radix = given.address_radix ? given.address_radix : facts.address_radix;
    options.data_radix = given.data_radix ? given.data_radix : facts.data_radix;
    options.runs = !given.no_runs;
    options.order = given.order;
    options.choices = given.write_choices;
    options.file_name = given.files[1];
    return options;
}

void require_words(const memory_input& input) {
    if (!input.image().bounds()) {
        throw tool_error(exit_code::bad_input,
                         input.name() + ": error: the file sets no word; --fill VALUE gives all of them one");
    }
}

/// "MIF in HEX"; "RIF" for a format without radixes; "Intel HEX, word addresses" where addresses may count
/// bytes.
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

/// "16 words of 8 bits". A format that does not state the depth holds the words that are set, "2 of 16 words
/// of 8 bits".
std::string written_words(const memory_image& image, const format& written) {
    const std::uint64_t count = written.states_depth ? image.depth() : image.count_set();
    const std::string part = count < image.depth() ? fmt::format("{} of ", count) : std::string();
    return fmt::format("{}{} of {}", part, counted(image.depth(), "word"), counted(image.width(), "bit"));
}

/// A few bytes can stand for billions of words, which a user who mistyped a number does not want on the disk.
/// @return "28.0 GiB, from the 65 bytes of in.mif" when the output would be huge, and out of proportion to
/// the input; else "".
std::string excessive_size(const memory_input& input, const write_options& options) {
    constexpr std::uint64_t gibibyte = std::uint64_t{1} << 30U;
    constexpr std::uint64_t most_growth = 100;
    constexpr std::uint64_t most_characters_beside_word = 96;
    const std::uint64_t longest_line = most_characters_beside_word + input.image().width();
    if (input.image().count_set() <= gibibyte / longest_line || options.as->written_size == nullptr) {
        return "";
    }
    const std::uint64_t size = options.as->written_size(input.image(), options);
    const std::size_t input_size = input.file.contents().size();
    if (size <= gibibyte || size / most_growth <= input_size) {
        return "";
    }
    return fmt::format("{:.1f} GiB, from the {} of {}",
                       static_cast<double>(size) / static_cast<double>(gibibyte), counted(input_size, "byte"),
                       input.name());
}

/// @throws tool_error (wrong usage) with all that --force gives up.
void require_harmless(const memory_input& input, const write_options& options, const std::string& target) {
    const std::string size = excessive_size(input, options);
    if (size.empty()) {
        require_no_lost_comments(target, "");
        return;
    }
    const std::string lost = lost_comments(target, "");
    usage_error(fmt::format("{}: would write {}{}; --force writes it", kvrimage::title_of_output(target),
                            size, lost.empty() ? "" : fmt::format(", and lose {}", lost)));
}

/// A file of bytes does not say how wide its words are: each byte is one where the user does not say it
/// either, which is hardly meant where the words go into a file of words.
void note_words_of_bytes(const arguments& given, const memory_input& input, const format& written) {
    const kvrimage::file_facts& facts = input.result.facts;
    if (given.width || facts.unit != kvrimage::address_unit::byte ||
        written.counts == kvrimage::address_unit::byte) {
        return;
    }
    std::vector<std::string> options = {"--width 32"};
    if (!facts.order) {
        options.emplace_back("--endian little");
    }
    const std::string line = command_with(given, options);
    tell(fmt::format("{}: note: each byte is a word; for wider ones give --width{}", input.name(),
                     line.empty() ? "" : ", as in " + line));
}

exit_code convert(const arguments& given) {
    memory_input input = read_memory(given, given.files[0]);
    memory_image& image = *input.result.image;
    if (given.fill) {
        image.fill_unset(word_of_user(*given.fill, image.width(), "--fill " + *given.fill));
    }
    const kvrimage::file_facts& facts = input.result.facts;
    const write_options options = options_for_output(given, facts);
    require_words(input);
    require_writable(given, input, options);
    const std::string& target = given.files[1];
    if (!given.force) {
        require_harmless(input, options, target);
    }
    write_image(target, image, options);
    note_width(input);
    note_words_of_bytes(given, input, *options.as);
    tell(fmt::format("{} ({}) -> {} ({}): {}", input.name(),
                     title_of_file(*facts.as, facts.data_radix, facts.unit.value_or(facts.as->counts)),
                     target, title_of_file(*options.as, options.data_radix, options.as->counts),
                     written_words(image, *options.as)));
    note_other_extension(target, *options.as);
    return exit_code::fine;
}

constexpr std::array convert_options = {
    option_id::from,         option_id::to,         option_id::width,
    option_id::depth,        option_id::unit,       option_id::order,
    option_id::base,         option_id::pad,        option_id::read_choice,
    option_id::write_choice, option_id::data_radix, option_id::address_radix,
    option_id::fill,         option_id::no_runs,    option_id::force_conversion};

} // namespace

const command convert_command = {
    "convert",
    "IN OUT",
    "Write a memory in another format or radix, every value exactly.",
    "  $ kvrmem convert sine.mif sine.hex\n"
    "  $ kvrmem convert --data-radix bin font.mif font_bin.mif\n"
    "  $ kvrmem convert --width 16 boot.hex boot.mif --fill 0\n"
    "  $ kvrmem convert --from mif --to rif - - < table.txt\n",
    "The names and the contents tell the formats, or --from and --to; kvrmem formats\n"
    "lists them. A file whose meaning is in doubt is refused, as kvrmem check shows it,\n"
    "and OUT stays as it was. Words that are not set stay out of OUT, unless --fill gives them a value.\n"
    "Comments are not carried over. Where OUT is a file with comments, which would\n"
    "be lost, or would have more than 1 GiB and more than 100 times the size of IN,\n"
    "nothing is written without --force.\n",
    2,
    2,
    convert_options,
    convert};

} // namespace kvrmem
