#include "kvrimage/formats/coe/coe_writer.h"

#include "kvrimage/formats/plain_words.h"
#include "kvrimage/formats/shown_words.h"
#include "kvrimage/formats/sink_buffer.h"
#include "kvrimage/formats/word_digits.h"

#include <fmt/format.h>

namespace kvrimage {

namespace {

radix radix_in_coe(const write_options& options) {
    switch (base_of(options.data_radix.value_or(radix::hex))) {
    case 2:
        return radix::bin;
    case 10:
        return radix::uns;
    default:
        return radix::hex;
    }
}

std::string coe_header(radix digits) {
    return fmt::format("memory_initialization_radix={};\nmemory_initialization_vector=\n", base_of(digits));
}

} // namespace

std::vector<diagnostic> can_write_coe(const memory_image& image, const write_options& /*options*/) {
    std::vector<diagnostic> found;
    refuse_base(image, "COE", found);
    return found;
}

void write_coe(const memory_image& image, const write_options& options, text_sink& output) {
    const radix digits = radix_in_coe(options);
    sink_buffer buffer(output);
    buffer.write(coe_header(digits));
    bool is_first = true;
    for_each_shown_word(image, digits, [&](std::uint64_t /*address*/, std::string_view word) {
        buffer.write(is_first ? "" : ",\n");
        buffer.write(word);
        is_first = false;
    });
    buffer.write(";\n");
    buffer.flush();
}

std::uint64_t written_coe_size(const memory_image& image, const write_options& options) {
    const radix digits = radix_in_coe(options);
    return coe_header(digits).size() + count_shown_characters(image, digits) + image.count_set() * 2;
}

} // namespace kvrimage
