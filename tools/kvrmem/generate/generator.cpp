#include "tools/kvrmem/generate/generator.h"

#include "kvrimage/files/file_name.h"
#include "kvrimage/files/input_file.h"
#include "kvrimage/generate/numbers.h"
#include "kvrimage/generate/patterns.h"
#include "kvrimage/generate/picture_words.h"
#include "kvrimage/generate/sound_words.h"
#include "kvrimage/image/rounding.h"
#include "tools/kvrmem/generate/expression.h"
#include "tools/kvrmem/generate/picture_file.h"
#include "tools/kvrmem/numbers/word_radix.h"
#include "tools/kvrmem/platform/counted.h"
#include "tools/kvrmem/platform/progress.h"
#include "tools/kvrmem/platform/tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace kvrmem {

namespace {

using kvrimage::memory_image;

constexpr std::uint64_t most_words = std::uint64_t{1} << 24U;
constexpr std::uint64_t most_bits = std::uint64_t{1} << 30U;

void require_affordable(std::string_view name, std::uint64_t words, std::uint64_t width) {
    if (words > most_words) {
        usage_error(fmt::format("{}: {} are too many; words are made one by one, up to {}", name,
                                counted(words, "word"), most_words));
    }
    if (words * width > most_bits) {
        usage_error(fmt::format("{}: {} of {} bits are too many; up to {} bits are made", name,
                                counted(words, "word"), width, most_bits));
    }
}

/// For generators that make as many words as requested.
void require_sizes(const arguments& given, std::string_view name) {
    if (!given.width || !given.depth) {
        usage_error(fmt::format("{} needs --width BITS and --depth WORDS", name));
    }
    require_affordable(name, *given.depth, *given.width);
}

/// For sources with @p words words.
void require_room(const arguments& given, const std::string& source, std::uint64_t words,
                  std::uint32_t width) {
    if (given.depth && *given.depth < words) {
        usage_error(fmt::format("--depth {}: {} makes {}", *given.depth, source, counted(words, "word")));
    }
    require_affordable(source, words, width);
}

/// Reports a fault in the contents of a file.
[[noreturn]] void refuse_file(const std::string& name, const std::exception& fault) {
    throw tool_error(exit_code::bad_input, fmt::format("{}: {}", name, fault.what()));
}

kvrimage::input_file file_of(const std::string& path) {
    return kvrimage::input_file(path, show_reading, [](std::string_view /*bytes*/) { return true; });
}

generated_memory make_expression(const arguments& given) {
    const std::string name = "--expr " + *given.generator.expression;
    require_sizes(given, "--expr");
    std::uint64_t address = 0;
    std::vector<kvrimage::generated_number> numbers;
    try {
        expression formula(*given.generator.expression, *given.depth, *given.width);
        numbers.reserve(*given.depth);
        for (; address < *given.depth; ++address) {
            numbers.push_back(formula.value_at(address));
        }
        return {name, kvrimage::number_words(numbers, *given.width,
                                             {given.round.value_or(kvrimage::rounding::nearest),
                                              given.saturate, given.is_signed})};
    } catch (const expression_error& error) {
        usage_error(fmt::format("{}: {}{}", name, error.what(),
                                numbers.empty() ? "" : fmt::format(" (at address 0x{:X})", address)));
    } catch (const std::overflow_error& error) {
        usage_error(fmt::format("{}: {}; use --saturate for the nearest value", name, error.what()));
    } catch (const std::domain_error& error) {
        usage_error(fmt::format("{}: {}", name, error.what()));
    }
}

generated_memory make_ramp(const arguments& given) {
    const std::string& start = *given.generator.ramp_start;
    const std::string step = given.generator.ramp_step.value_or("1");
    require_sizes(given, "--ramp");
    const std::string name = fmt::format("--ramp {}", start);
    const kvrimage::word first = word_of_user(start, *given.width, name);
    const kvrimage::word increment = word_of_user(step, *given.width, fmt::format("--step {}", step));
    if (first.has_dont_care() || increment.has_dont_care()) {
        usage_error(fmt::format("{}: a ramp has no don't-care bits", name));
    }
    return {name, kvrimage::ramp(first, increment, *given.depth)};
}

generated_memory make_random(const arguments& given) {
    require_sizes(given, "--random");
    const std::uint64_t seed = given.generator.seed.value_or(0);
    return {fmt::format("--random --seed {}", seed),
            kvrimage::random_words(*given.width, *given.depth, seed)};
}

memory_image image_of_text(const arguments& given, const std::string& source, std::string_view text) {
    constexpr std::uint32_t bits_of_byte = 8;
    const std::uint32_t width = given.width.value_or(bits_of_byte);
    require_room(given, source, text.size(), width);
    return kvrimage::text_words(text, width);
}

generated_memory make_text(const arguments& given) {
    const std::string name = "--text";
    try {
        return {name, image_of_text(given, name, *given.generator.text)};
    } catch (const std::logic_error& error) {
        usage_error(fmt::format("{}: {}", name, error.what()));
    } catch (const std::overflow_error& error) {
        usage_error(fmt::format("{}: {}", name, error.what()));
    }
}

generated_memory make_text_of_file(const arguments& given) {
    const kvrimage::input_file file = file_of(*given.generator.text_file);
    try {
        return {file.name(), image_of_text(given, file.name(), file.contents())};
    } catch (const std::logic_error& error) {
        refuse_file(file.name(), error);
    } catch (const std::overflow_error& error) {
        refuse_file(file.name(), error);
    }
}

read_picture read_picture_file(const kvrimage::input_file& file) {
    try {
        return picture_of(file.contents());
    } catch (const std::invalid_argument& error) {
        refuse_file(file.name(), error);
    }
}

/// Returns the bits of a word of the picture.
std::uint32_t bits_of_picture(const generator_options& options) {
    return options.palette_colors ? kvrimage::bits_of_indexes(*options.palette_colors)
                                  : kvrimage::bits_of(*options.pixel);
}

generated_memory make_picture(const arguments& given) {
    const generator_options& options = given.generator;
    if (!options.pixel) {
        usage_error("--image needs --pixel FORMAT: rgb332, rgb444, rgb565, rgb888, gray8, gray4 or mono");
    }
    if (options.palette_colors.has_value() != options.palette_file.has_value()) {
        usage_error("--palette N and --palette-out FILE require each other");
    }
    const std::uint32_t bits = bits_of_picture(options);
    if (given.width.value_or(bits) < bits) {
        usage_error(fmt::format("--width {}: the pixels need {}", *given.width, counted(bits, "bit")));
    }
    const kvrimage::input_file file = file_of(*options.picture_file);
    const read_picture read = read_picture_file(file);
    const std::size_t count = read.pixels.pixels.size();
    const std::string source =
        fmt::format("{} ({} x {} pixels)", file.name(), read.pixels.columns, count / read.pixels.columns);
    require_room(given, source, count, given.width.value_or(bits));
    const kvrimage::picture_rules rules{*options.pixel, options.dither, given.width};
    const std::string note =
        read.has_transparency ? file.name() + ": note: transparent pixels are mixed with black" : "";
    if (!options.palette_colors) {
        return {source, kvrimage::picture_words(read.pixels, rules), std::nullopt, note};
    }
    kvrimage::indexed_words made =
        kvrimage::indexed_picture_words(read.pixels, *options.palette_colors, rules);
    return {source, std::move(made.indexes), std::move(made.palette), note};
}

/// Returns the word width for @p sound from the file @p name.
std::uint32_t width_of_sound(const arguments& given, const kvrimage::wave_file& sound,
                             const std::string& name) {
    if (sound.has_fractions && !given.width) {
        usage_error(fmt::format("{}: samples are fractions; give the word width with --width", name));
    }
    const std::uint32_t width = given.width.value_or(sound.sample_bits);
    if (width > kvrimage::widest_sample_word) {
        usage_error(fmt::format("--width {}: samples make words of up to {} bits", width,
                                kvrimage::widest_sample_word));
    }
    return width;
}

/// Returns the selected channel of @p sound from the file @p name.
std::uint32_t channel_of_sound(const arguments& given, const kvrimage::wave_file& sound,
                               const std::string& name) {
    if (sound.channels > 1 && !given.generator.channel) {
        usage_error(fmt::format("{}: there are {} channels; give --channel 1 to {}", name, sound.channels,
                                sound.channels));
    }
    const std::uint32_t channel = given.generator.channel.value_or(1);
    if (channel > sound.channels) {
        usage_error(
            fmt::format("--channel {}: {} has {}", channel, name, counted(sound.channels, "channel")));
    }
    return channel;
}

generated_memory make_sound(const arguments& given) {
    const generator_options& options = given.generator;
    const kvrimage::input_file file = file_of(*options.sound_file);
    try {
        const kvrimage::wave_file sound = kvrimage::read_wave(file.contents());
        const std::uint32_t channel = channel_of_sound(given, sound, file.name());
        const std::uint32_t width = width_of_sound(given, sound, file.name());
        const std::string source =
            fmt::format("{} ({} a second)", file.name(), counted(sound.rate, "sample"));
        require_room(given, source, sound.frames, width);
        return {source,
                kvrimage::sound_words(sound, channel, width,
                                      given.round.value_or(kvrimage::rounding::nearest), given.saturate)};
    } catch (const std::overflow_error& error) {
        throw tool_error(exit_code::bad_input, fmt::format("{}: {}; use --saturate for the nearest value",
                                                           file.name(), error.what()));
    } catch (const std::logic_error& error) {
        refuse_file(file.name(), error);
    }
}

/// A generator and the option that selects it.
struct word_generator {
    option_id option;
    const char* name;
    generated_memory (*make)(const arguments& given);
};

constexpr std::array<word_generator, 7> word_generators = {{
    {option_id::expression, "--expr", make_expression},
    {option_id::ramp_start, "--ramp", make_ramp},
    {option_id::random, "--random", make_random},
    {option_id::text, "--text", make_text},
    {option_id::text_file, "--text-file", make_text_of_file},
    {option_id::picture_file, "--image", make_picture},
    {option_id::sound_file, "--wav", make_sound},
}};

} // namespace

std::optional<generated_memory> generate(const arguments& given) {
    const word_generator* chosen = nullptr;
    for (const word_generator& each : word_generators) {
        if (std::ranges::find(given.options, each.option) == given.options.end()) {
            continue;
        }
        if (chosen != nullptr) {
            usage_error(
                fmt::format("{} and {} exclude each other: each makes the words", chosen->name, each.name));
        }
        chosen = &each;
    }
    return chosen != nullptr ? std::optional(chosen->make(given)) : std::nullopt;
}

} // namespace kvrmem
