#include "tools/kvrmem/command_line/whole_command.h"
#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/files/format_choice.h"
#include "tools/kvrmem/files/memory_input.h"
#include "tools/kvrmem/files/memory_output.h"
#include "tools/kvrmem/files/written_memory.h"
#include "tools/kvrmem/operations/apply.h"
#include "tools/kvrmem/surroundings/message.h"
#include "tools/kvrmem/surroundings/tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace kvrmem {

namespace {

void require_words(const memory_input& input, bool was_changed) {
    if (!input.image().bounds() && was_changed) {
        throw tool_error(exit_code::bad_input,
                         input.name() + ": error: no word is left; --fill VALUE gives all of them one");
    }
    if (!input.image().bounds()) {
        throw tool_error(exit_code::bad_input,
                         input.name() + ": error: the file sets no word; --fill VALUE gives all of them one");
    }
}

/// A file of bytes does not say how wide its words are: each byte is one where the user does not say it
/// either, which is hardly meant where the words go into a file of words.
void note_words_of_bytes(const arguments& given, const memory_input& input, const kvrimage::format& written) {
    const kvrimage::file_facts& facts = input.result.facts;
    constexpr std::uint32_t bits_of_byte = 8;
    if (given.width || facts.unit != kvrimage::address_unit::byte || input.image().width() != bits_of_byte ||
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
    kvrimage::memory_image& image = *input.result.image;
    const std::vector<std::string> done = apply(given.operations, image, input.name());
    const std::string& target = given.files[1];
    const kvrimage::write_options options = write_options_for(given, target, input.result.facts);
    const bool was_changed = change_words(given.operations);
    require_words(input, was_changed);
    if (was_changed) { // no line of the file is at fault then
        require_writable(given, image, target, options);
    } else {
        require_writable(given, input, options);
    }
    if (!given.force) {
        require_harmless(image, {input.name(), input.file.contents().size()}, options, target);
    }
    write_image(target, image, options);
    note_width(input);
    note_words_of_bytes(given, input, *options.as);
    if (was_changed) {
        std::ranges::for_each(done, tell);
    }
    tell(fmt::format("{} ({}) -> {} ({}): {}", input.name(), title_of_read(input), target,
                     title_of_written(options), written_words(image, *options.as)));
    note_other_extension(target, *options.as);
    return exit_code::fine;
}

constexpr std::array convert_options = {option_id::from,        option_id::to,
                                        option_id::width,       option_id::depth_in_order,
                                        option_id::unit,        option_id::order,
                                        option_id::base,        option_id::pad_in_order,
                                        option_id::read_choice, option_id::write_choice,
                                        option_id::data_radix,  option_id::address_radix,
                                        option_id::only,        option_id::except,
                                        option_id::move_to,     option_id::fill_rest,
                                        option_id::mask,        option_id::reverse_bits,
                                        option_id::swap_bytes,  option_id::invert,
                                        option_id::reshape,     option_id::bit_order,
                                        option_id::protect,     option_id::strip_protection,
                                        option_id::no_runs,     option_id::force_conversion};

} // namespace

const command convert_command = {
    "convert",
    "IN OUT",
    "Write a memory in another format or radix, every value exactly.",
    "  $ kvrmem convert sine.mif sine.hex\n"
    "  $ kvrmem convert --data-radix bin font.mif font_bin.mif\n"
    "  $ kvrmem convert --width 16 boot.hex boot.mif --fill 0\n"
    "  $ kvrmem convert --only 0x100..0x1FF --move-to 0 boot.mif part.mif\n"
    "  $ kvrmem convert --fill 0 --reshape 32 --ecc hamming bytes.mif words.hex\n"
    "  $ kvrmem convert --from mif --to rif - - < table.txt\n",
    "The names and the contents tell the formats, or --from and --to; kvrmem formats\n"
    "lists them. A file whose meaning is in doubt is refused, as kvrmem check shows it,\n"
    "and OUT stays as it was. Words that are not set stay out of OUT, unless --fill gives them a value.\n"
    "\n"
    "--only, --except, --move-to, --fill, --mask, --reverse-bits, --swap-bytes, --invert,\n"
    "--reshape, --ecc and --ecc-strip are done in the order in which they are given, and\n"
    "each is reported. A --depth that comes after one of them (after --fill alone it is\n"
    "not meant so) is done in its turn too: it grows or cuts the memory, but cuts off no\n"
    "word that is set. A --depth before all of them is that of IN. --order and --pad\n"
    "belong to the --reshape before them; a --pad without one is for the bytes of IN.\n"
    "\n"
    "The schemes of --ecc are hamming, hsiao-39-32 and hsiao-72-64 (each also with -inverted,\n"
    "the first Hsiao code also as -v1), even-parity and odd-parity (each also with -8 for a\n"
    "check bit after each byte, and -8-top for all on top), and masks:FILE, a file with the\n"
    "masks of the check bits, one hexadecimal number a line, and perhaps a line invert HEX.\n"
    "\n"
    "Comments are not carried over. Where OUT is a file with comments, which would\n"
    "be lost, or would have more than 1 GiB and more than 100 times the size of IN,\n"
    "nothing is written without --force.\n",
    2,
    2,
    convert_options,
    convert};

} // namespace kvrmem
