#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/edit/edit_command.h"
#include "tools/kvrmem/numbers/word_radix.h"
#include "tools/kvrmem/surroundings/counted.h"
#include "tools/kvrmem/surroundings/tool_error.h"

#include <fmt/format.h>

#include <set>
#include <string>
#include <vector>

namespace kvrmem {

namespace {

using kvrimage::assignment;

assignment read_word(const edit_operand& operand, std::uint32_t width) {
    if (operand.addresses.first != operand.addresses.last) {
        usage_error(fmt::format("{}: set takes single addresses; fill takes ranges", operand.text));
    }
    return {operand.addresses, {word_of_user(operand.values, width, operand.text)}};
}

std::string summary_of_words(const std::vector<assignment>& assignments) {
    std::set<std::uint64_t> addresses;
    for (const assignment& each : assignments) {
        addresses.insert(each.addresses.first);
    }
    return counted(addresses.size(), "word") + " set";
}

exit_code set(const arguments& given) {
    edit_file(given, {"ADDRESS=VALUE", read_word, summary_of_words});
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
    "Only the digits of these words change, and checksums over them: comments, order,\n"
    "spacing, letter case and line ends stay. A word within a range gets a line of\n"
    "its own, and so does one that is not set. The file is replaced when all is done,\n"
    "unless --output names another one. A value that does not fit the width is\n"
    "refused. When an address is given twice, the last value counts. The word may be\n"
    "the very one for which the file is refused.\n",
    2,
    any_number,
    edit_options,
    set};

} // namespace kvrmem
