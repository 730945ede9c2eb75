#include "kvrimage/formats/source/c_writer.h"

#include "kvr/util/letter_case.h"
#include "kvrimage/formats/sink_buffer.h"
#include "kvrimage/formats/source/literal_lines.h"
#include "kvrimage/formats/source/reserved_words.h"
#include "kvrimage/formats/source/source_comments.h"
#include "kvrimage/formats/source/source_name.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

namespace kvrimage {

namespace {

constexpr std::size_t limb_digits = bits_per_limb / bits_per_hex_digit;

constexpr std::string_view c_limb_comment =
    "/* Each word is limbs of 64 bits, the least significant first. */";

// NAME also defines NAME_WIDTH; <stdint.h> has INT8_WIDTH and others.
constexpr naming c_naming = {
    .language = "C",
    .reserved = words_of_c,
    .taken =
        "int8 int16 int32 int64 uint8 uint16 uint32 uint64 int_fast8 int_fast16 int_fast32 int_fast64 "
        "uint_fast8 uint_fast16 uint_fast32 uint_fast64 int_least8 int_least16 int_least32 int_least64 "
        "uint_least8 uint_least16 uint_least32 uint_least64 intmax intptr ptrdiff sig_atomic size uintmax "
        "uintptr wchar wint",
    .library = names_of_c_library,
    .reserves_underscores = true,
};

bool is_c_source(std::string_view file_name) {
    constexpr std::string_view extension = ".c";
    return file_name.size() >= extension.size() &&
           kvr::equal_ignoring_case(file_name.substr(file_name.size() - extension.size()), extension);
}

std::uint32_t limbs_of(std::uint32_t width) {
    return (width + bits_per_limb - 1) / bits_per_limb;
}

/// Returns the bits of the smallest type for a word, or of a limb.
std::uint32_t type_bits_of(std::uint32_t width) {
    std::uint32_t bits = bits_per_byte;
    while (bits < std::min(width, bits_per_limb)) {
        bits *= 2;
    }
    return bits;
}

/// The text around the words.
struct c_frame {
    std::string before; ///< up to the "{" of the array
    std::string after;  ///< from the "}" of the array on
};

std::string c_constants(const memory_image& image, std::string_view prefix) {
    std::string text =
        fmt::format("#define {0}_WIDTH {1}\n#define {0}_DEPTH {2}\n", prefix, image.width(), image.depth());
    if (image.base() != 0) {
        text += fmt::format("#define {}_BASE 0x{:X}\n", prefix, image.base());
    }
    if (image.width() > bits_per_limb) {
        text += fmt::format("#define {}_LIMBS {}\n", prefix, limbs_of(image.width()));
    }
    return text;
}

c_frame c_frame_of(const memory_image& image, const write_options& options) {
    const std::string name = source_name(options, c_naming);
    const std::string prefix = kvr::to_upper_case(name);
    const bool is_source = is_c_source(options.file_name);
    const bool has_limbs = image.width() > bits_per_limb;
    std::string array = fmt::format("const uint{}_t {}[{}_DEPTH]", type_bits_of(image.width()), name, prefix);
    if (has_limbs) {
        array += fmt::format("[{}_LIMBS]", prefix);
    }
    c_frame frame;
    if (!is_source) {
        frame.before = fmt::format("#ifndef {0}_H\n#define {0}_H\n\n", prefix);
    }
    frame.before += fmt::format("#include <stdint.h>\n\n{}\n", c_constants(image, prefix));
    if (has_limbs) {
        frame.before += fmt::format("{}\n", c_limb_comment);
    }
    // In C++ a constant without "extern" has internal linkage.
    frame.before +=
        is_source ? fmt::format("extern {0};\n{0} = {{", array) : fmt::format("static {} = {{", array);
    frame.after = is_source ? ",\n};\n" : ",\n};\n\n#endif\n";
    return frame;
}

/// Appends 0x12, or limbs: { 0x..., 0x12 }.
void append_c_word(std::string& text, std::string_view digits, std::uint32_t width) {
    if (width <= bits_per_limb) {
        text += "0x";
        text += digits;
        return;
    }
    for (std::size_t end = digits.size(); end != 0;) {
        const std::size_t begin = end - std::min(end, limb_digits);
        text += end == digits.size() ? "{0x" : ", 0x";
        text += digits.substr(begin, end - begin);
        end = begin;
    }
    text += '}';
}

literal_lines c_lines(const memory_image& image) {
    std::string literal;
    append_c_word(literal, std::string(most_characters_of_word(radix::hex, image.width()), '0'),
                  image.width());
    return literal_lines(literal.size());
}

} // namespace

std::vector<diagnostic> can_write_c(const memory_image& /*image*/, const write_options& options) {
    std::vector<diagnostic> found;
    refuse_source_name(options, c_naming, found);
    return found;
}

void write_c(const memory_image& image, const write_options& options, text_sink& output) {
    const c_frame frame = c_frame_of(image, options);
    sink_buffer buffer(output);
    buffer.write(frame.before);
    const auto append = [&image](std::string& text, std::string_view digits) {
        append_c_word(text, digits, image.width());
    };
    write_literals(image, radix::hex, c_lines(image), buffer, append);
    buffer.write(frame.after);
    buffer.flush();
}

std::uint64_t written_c_size(const memory_image& image, const write_options& options) {
    const c_frame frame = c_frame_of(image, options);
    return frame.before.size() + c_lines(image).size(image.depth()) + frame.after.size();
}

void find_c_comments(std::string_view contents, const std::function<void(const span&)>& take) {
    find_source_comments(contents, {"//", "/*", "*/", "\"", c_limb_comment, true}, take);
}

} // namespace kvrimage
