#include "kvrimage/formats/source/python_writer.h"

#include "kvrimage/diagnostics/counted.h"
#include "kvrimage/formats/sink_buffer.h"
#include "kvrimage/formats/source/literal_lines.h"
#include "kvrimage/formats/source/reserved_words.h"
#include "kvrimage/formats/source/source_comments.h"
#include "kvrimage/formats/source/source_name.h"

#include <fmt/format.h>

namespace kvrimage {

namespace {

constexpr naming python_naming = {
    .language = "Python",
    .reserved = words_of_python,
    .taken = "WIDTH DEPTH BASE",
};

/// A module is a namespace of its own, so the file name identifies the memory.
constexpr std::string_view python_array = "WORDS";
constexpr std::string_view python_prefix = "0x";
constexpr std::string_view python_end = ",\n)\n";

std::string python_head(const memory_image& image, const write_options& options) {
    std::string text = fmt::format("\"\"\"Memory of {} of {}.\"\"\"\n\nWIDTH = {}\nDEPTH = {}\n",
                                   counted(image.depth(), "word"), counted(image.width(), "bit"),
                                   image.width(), image.depth());
    if (image.base() != 0) {
        text += fmt::format("BASE = 0x{:X}\n", image.base());
    }
    return text + fmt::format("\n{} = (", source_name(options, python_naming, python_array));
}

literal_lines python_lines(const memory_image& image) {
    return literal_lines(python_prefix.size() + most_characters_of_word(radix::hex, image.width()));
}

} // namespace

std::vector<diagnostic> can_write_python(const memory_image& /*image*/, const write_options& options) {
    std::vector<diagnostic> found;
    refuse_source_name(options, python_naming, found);
    return found;
}

void write_python(const memory_image& image, const write_options& options, text_sink& output) {
    sink_buffer buffer(output);
    buffer.write(python_head(image, options));
    const auto append = [](std::string& text, std::string_view digits) {
        text += python_prefix;
        text += digits;
    };
    write_literals(image, radix::hex, python_lines(image), buffer, append);
    buffer.write(python_end);
    buffer.flush();
}

std::uint64_t written_python_size(const memory_image& image, const write_options& options) {
    return python_head(image, options).size() + python_lines(image).size(image.depth()) + python_end.size();
}

void find_python_comments(std::string_view contents, const std::function<void(const span&)>& take) {
    find_source_comments(contents, {"#", "", "", "\"'", ""}, take);
}

} // namespace kvrimage
