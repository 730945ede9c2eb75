#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/memory/memory_input.h"
#include "tools/kvrmem/memory/memory_output.h"
#include "tools/kvrmem/memory/word_text.h"
#include "tools/kvrmem/surroundings/replacement_file.h"

#include <array>
#include <string>
#include <sys/stat.h>

namespace kvrmem {

namespace {

void require_absent(const std::string& path) {
    struct stat status {};
    if (path != "-" && stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode)) {
        throw tool_error(exit_code::wrong_usage, path + ": is there already; --force replaces it");
    }
}

exit_code create(const arguments& given) {
    const std::string& path = given.files[0];
    if (!given.width || !given.depth) {
        throw tool_error(exit_code::wrong_usage, "a new memory needs --width BITS and --depth WORDS");
    }
    if (!given.force) {
        require_absent(path);
    }
    const output_layout layout = {.format = format_for(given.to, path, "--to"),
                                  .address_radix = given.address_radix.value_or(RADIX_HEX),
                                  .data_radix = given.data_radix.value_or(RADIX_HEX),
                                  .with_runs = !given.no_runs};
    memory_image image;
    image.format = layout.format;
    image.width = *given.width;
    image.depth = *given.depth;
    const std::string fill = given.fill.value_or("0");
    image.words.resize(image.depth, word_of_person(fill, image.width, "--fill " + fill));
    require_writable(image, layout);
    replacement_file target(path);
    write_memory(image, layout, target.output());
    target.commit();
    tell_of_other_extension(path, layout.format);
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
