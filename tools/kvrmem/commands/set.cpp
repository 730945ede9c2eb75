#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/edit/edit_command.h"
#include "tools/kvrmem/platform/counted.h"

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace kvrmem {

namespace {

std::string summary_of_words(const std::vector<kvrimage::address_range>& ranges) {
    std::set<std::uint64_t> addresses;
    for (const kvrimage::address_range& range : ranges) {
        for (std::uint64_t offset = 0; offset <= range.last - range.first; ++offset) {
            addresses.insert(range.first + offset);
        }
    }
    return counted(addresses.size(), "word") + " set";
}

exit_code set(const arguments& given) {
    edit_file(given, {"ADDRESS=VALUE", false, summary_of_words});
    return exit_code::success;
}

} // namespace

const command set_command = {
    "set",
    "FILE ADDRESS=VALUE...",
    "Change single words of a file and nothing else in it.",
    "  $ kvrmem set boot.mif 0x10=0xFF\n"
    "  $ kvrmem set filter.mif 0=-5 1=17 2=-5\n"
    "  $ kvrmem set --width 16 boot.hex 0x1F=0xBEEF -o patched.hex\n"
    "  $ kvrmem set boot.mif '0x40=\"v1.2.3\\n\"' '3[7:4]=0xA' '3[0]=1'\n"
    "  $ kvrmem set filter.mif 0=fixed:1.15:0.5 --from-file more.txt\n",
    "Only the digits of these words change, and checksums over them: comments, order,\n"
    "spacing, letter case and line ends are unchanged. A word within a range gets its own\n"
    "line, and so does one that is not set. The file is replaced at the end, unless\n"
    "--output names another one. A value that does not fit the width is refused. If an\n"
    "address is given twice, the last value is used. A word that makes the file invalid\n"
    "can be replaced, too.\n"
    "\n"
    "A text in quotes sets a word for each of its bytes, from ADDRESS on; \\n \\r \\t \\0\n"
    "\\\\ \\\" and \\xNN are escapes. ADDRESS[HIGH:LOW]=VALUE and ADDRESS[BIT]=VALUE set\n"
    "bits of a word and keep the others. fixed:I.F:NUMBER is a fraction, rounded as\n"
    "--round states. --from-file FILE has one assignment per line and comments after\n"
    "\"#\"; these are made before those of the command line, in order.\n",
    1,
    any_number,
    edit_options,
    set};

} // namespace kvrmem
