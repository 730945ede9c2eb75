#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/files/format_choice.h"
#include "tools/kvrmem/files/memory_output.h"
#include "tools/kvrmem/numbers/word_radix.h"
#include "tools/kvrmem/surroundings/tool_error.h"

#include <array>
#include <string>

namespace kvrmem {

namespace {

exit_code create(const arguments& given) {
    const std::string& path = given.files[0];
    if (!given.width || !given.depth) {
        usage_error("a new memory needs --width BITS and --depth WORDS");
    }
    if (!given.force && is_regular_file(path)) {
        usage_error(path + ": is there already; --force replaces it");
    }
    kvrimage::write_options options{&format_for(given.to, path, "--to"), given.address_radix,
                                    given.data_radix, !given.no_runs};
    options.file_name = path;
    const std::string fill = given.fill.value_or("0");
    kvrimage::memory_image image(*given.width, *given.depth);
    image.fill_unset(word_of_user(fill, *given.width, "--fill " + fill));
    require_writable(given, image, path, options);
    write_image(path, image, options);
    note_other_extension(path, *options.as);
    return exit_code::fine;
}

constexpr std::array new_options = {option_id::to,         option_id::width,         option_id::depth,
                                    option_id::data_radix, option_id::address_radix, option_id::fill,
                                    option_id::no_runs,    option_id::force};

} // namespace

const command new_command = {"new",
                             "OUT",
                             "Make a memory file in which every word has one value.",
                             "  $ kvrmem new --width 16 --depth 256 boot.mif\n"
                             "  $ kvrmem new --width 8 --depth 0x400 --fill 0xFF blank.hex\n",
                             "Every word is 0 unless --fill says otherwise. A file that is there already is\n"
                             "left alone unless --force is given.\n",
                             1,
                             1,
                             new_options,
                             create};

} // namespace kvrmem
