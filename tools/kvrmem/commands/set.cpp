#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/edit/edit_command.h"
#include "tools/kvrmem/memory/word_text.h"
#include "tools/kvrmem/surroundings/counted.h"
#include "tools/kvrmem/surroundings/tool_error.h"

#include <fmt/format.h>

#include <set>
#include <string>
#include <vector>

namespace kvrmem {

namespace {

std::vector<word_edit> read_words(const std::vector<std::string>& operands, const memory_image& image) {
    std::vector<word_edit> edits;
    for (const std::string& operand : operands) {
        const assignment read = read_assignment(operand, image, "ADDRESS=VALUE");
        if (read.range.first != read.range.last) {
            throw tool_error(exit_code::wrong_usage,
                             fmt::format("{}: set takes single addresses; fill takes ranges", operand));
        }
        edits.push_back(
            {read.range.first, read.range.last, {word_of_person(read.values, image.width, operand)}});
    }
    return edits;
}

std::string summary_of_words(const std::vector<word_edit>& edits) {
    std::set<std::uint32_t> addresses;
    for (const word_edit& edit : edits) {
        addresses.insert(edit.first);
    }
    return counted(addresses.size(), "word") + " set";
}

exit_code set(const arguments& given) {
    edit_file(given, read_words, summary_of_words);
    return exit_code::fine;
}

} // namespace

const command set_command = {
    "set",
    "FILE ADDRESS=VALUE...",
    "Change single words of a file and nothing else in it.",
    "  $ kvrmem set boot.mif 0x10=0xFF\n"
    "  $ kvrmem set filter.mif 0=-5 1=17 2=-5\n"
    "  $ kvrmem set --width 16 boot.hex 0x1F=0xBEEF -o patched.hex\n",
    "Only the digits of these words change (in Intel HEX the checksum too): comments,\n"
    "order, spacing, letter case and line ends stay. A word in a range line of a MIF\n"
    "gets a line of its own; one that is never set gets a line before 'END;'. The\n"
    "file is replaced when all is done, unless --output names another one. A value\n"
    "that does not fit the width is refused. When an address is given twice, the\n"
    "last value counts.\n",
    2,
    any_number,
    edit_options,
    set};

} // namespace kvrmem
