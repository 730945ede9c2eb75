#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/files/format_choice.h"
#include "tools/kvrmem/files/memory_output.h"
#include "tools/kvrmem/files/output_files.h"
#include "tools/kvrmem/files/written_memory.h"
#include "tools/kvrmem/generate/generator.h"
#include "tools/kvrmem/numbers/word_radix.h"
#include "tools/kvrmem/platform/message.h"
#include "tools/kvrmem/platform/tool_error.h"

#include <fmt/format.h>

#include <array>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kvrmem {

namespace {

/// Returns the memory described by @p given, with all words set.
generated_memory memory_for(const arguments& given) {
    std::optional<generated_memory> made = generate(given);
    if (!made) {
        if (!given.width || !given.depth) {
            usage_error("a new memory needs --width BITS and --depth WORDS");
        }
        made.emplace(generated_memory{"", kvrimage::memory_image(*given.width, *given.depth)});
    } else if (given.depth) {
        made->image.resize(*given.depth);
    }
    const std::string fill = given.fill.value_or("0");
    const std::uint32_t width = made->image.width();
    made->image.fill_unset(word_of_user(fill, width, "--fill " + fill));
    return *std::move(made);
}

kvrimage::write_options options_for(const arguments& given, const std::string& path) {
    kvrimage::write_options options{&format_for(given.to, path, "--to"), given.address_radix,
                                    given.data_radix, !given.no_runs};
    options.order = given.order;
    options.choices = given.write_choices;
    options.file_name = path;
    return options;
}

void require_new(const arguments& given, const std::string& path) {
    if (!given.force && is_regular_file(path)) {
        usage_error(path + ": already exists; use --force to replace it");
    }
}

/// A file to write: its name, contents and options.
struct new_file {
    const std::string& path;
    const kvrimage::memory_image& image;
    kvrimage::write_options options;
};

/// Writes all of @p files, or none if one cannot be written.
void write_files(const arguments& given, const std::vector<new_file>& files, const std::string& source) {
    output_files written;
    for (const new_file& file : files) {
        require_writable(given, file.image, file.path, file.options);
        if (!given.force) {
            require_harmless(file.image, {}, file.options, file.path);
        }
    }
    for (const new_file& file : files) {
        written.add(file.path, file.image, file.options);
    }
    written.commit();
    for (const new_file& file : files) {
        if (!source.empty()) {
            print_message(fmt::format("{} -> {} ({}): {}", source, file.path, title_of_written(file.options),
                                      written_words(file.image, *file.options.as)));
        }
        note_other_extension(file.path, *file.options.as);
    }
}

exit_code create(const arguments& given) {
    const std::string& path = given.files[0];
    const kvrimage::write_options options = options_for(given, path);
    require_new(given, path);
    const std::optional<std::string>& palette = given.generator.palette_file;
    if (palette) {
        if (name_one_file(*palette, path)) {
            usage_error(fmt::format("--palette-out {}: this is also OUT", path));
        }
        require_new(given, *palette);
    }
    const generated_memory made = memory_for(given);
    std::vector<new_file> files = {{path, made.image, options}};
    if (made.palette) {
        files.push_back({*palette, *made.palette, options_for(given, *palette)});
    }
    write_files(given, files, made.source);
    if (!made.note.empty()) {
        print_message(made.note);
    }
    return exit_code::success;
}

constexpr std::array new_options = {
    option_id::to,           option_id::width,          option_id::depth,         option_id::order,
    option_id::write_choice, option_id::data_radix,     option_id::address_radix, option_id::fill,
    option_id::expression,   option_id::ramp_start,     option_id::ramp_step,     option_id::random,
    option_id::seed,         option_id::text,           option_id::text_file,     option_id::picture_file,
    option_id::pixel,        option_id::palette_colors, option_id::palette_file,  option_id::dither,
    option_id::sound_file,   option_id::channel,        option_id::rounding,      option_id::saturate,
    option_id::is_signed,    option_id::no_runs,        option_id::force};

} // namespace

const command new_command = {
    "new",
    "OUT",
    "Make a memory file of one value, a formula, random words, a text or a picture.",
    "  $ kvrmem new --width 16 --depth 256 boot.mif\n"
    "  $ kvrmem new --width 8 --depth 0x400 --fill 0xFF blank.hex\n"
    "  $ kvrmem new -w 16 -d 256 --expr '32767 * sin(2*pi*a/n)' sine.mif\n"
    "  $ kvrmem new -w 32 -d 64 --random --seed 7 noise.hex\n"
    "  $ kvrmem new --text 'Hello' hello.mif\n"
    "  $ kvrmem new --image logo.png --pixel rgb565 logo.mif\n"
    "  $ kvrmem new --wav beep.wav --channel 1 beep.mif\n",
    "Every word is 0, unless --fill or one of --expr, --ramp, --random, --text,\n"
    "--text-file, --image and --wav sets it. These make up to 16777216 words; a text,\n"
    "picture or sound determines the width and the number of words. If --depth is larger,\n"
    "--fill sets the rest. An existing file is replaced only with --force.\n"
    "\n"
    "FORMULA is an expression of Lua: a is the address, n the number of words, w the bits\n"
    "of a word. It has + - * / // % ^, & | ~ << >>, comparisons, and, or, not, pi, and\n"
    "the functions abs acos asin atan cbrt ceil cos cosh exp floor fmod log log2 log10\n"
    "max min round sin sinh sqrt tan tanh trunc. If any value is negative, words are\n"
    "two's complement numbers, and all values must fit them.\n",
    1,
    1,
    new_options,
    create};

} // namespace kvrmem
