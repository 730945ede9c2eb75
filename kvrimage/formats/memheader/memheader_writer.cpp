#include "kvrimage/formats/memheader/memheader_writer.h"

#include "kvrimage/formats/plain_words.h"
#include "kvrimage/formats/shown_words.h"
#include "kvrimage/formats/sink_buffer.h"

#include <fmt/format.h>

namespace kvrimage {

namespace {

radix radix_in_memheader(const write_options& options) {
    return options.data_radix == radix::bin ? radix::bin : radix::hex;
}

bool needs_addresses(const memory_image& image, const write_options& options) {
    return radix_in_memheader(options) == radix::hex && image.count_set() != image.depth();
}

std::string header_of(const memory_image& image, const write_options& options) {
    const bool is_binary = radix_in_memheader(options) == radix::bin;
    std::string_view layout = is_binary ? "Bin" : "Hex";
    if (needs_addresses(image, options)) {
        layout = "AddrHex";
    }
    return fmt::format("#Format={}\n#Depth={}\n#Width={}\n#AddrRadix=3\n#DataRadix={}\n#Data\n", layout,
                       image.depth(), image.width(), is_binary ? 0 : 3);
}

std::size_t digits_of_addresses(const memory_image& image) {
    return fmt::formatted_size("{:X}", image.last_address());
}

} // namespace

std::vector<diagnostic> can_write_memheader(const memory_image& image, const write_options& options) {
    std::vector<diagnostic> found;
    refuse_base(image, "a file with a depth", found);
    if (radix_in_memheader(options) == radix::bin) {
        refuse_gaps(image, "#Format=Bin", found);
    }
    return found;
}

void write_memheader(const memory_image& image, const write_options& options, text_sink& output) {
    sink_buffer buffer(output);
    buffer.write(header_of(image, options));
    const bool with_addresses = needs_addresses(image, options);
    const std::size_t digits = digits_of_addresses(image);
    for_each_shown_word(image, radix_in_memheader(options),
                        [&](std::uint64_t address, std::string_view word) {
                            if (with_addresses) {
                                buffer.write(fmt::format("{:0{}X}:", address, digits));
                            }
                            buffer.write(word);
                            buffer.write("\n");
                        });
    buffer.flush();
}

std::uint64_t written_memheader_size(const memory_image& image, const write_options& options) {
    const std::size_t address = needs_addresses(image, options) ? digits_of_addresses(image) + 1 : 0;
    const std::size_t word = most_characters_of_word(radix_in_memheader(options), image.width()) + 1;
    return header_of(image, options).size() + image.count_set() * (address + word);
}

} // namespace kvrimage
