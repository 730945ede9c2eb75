#include "tests/kvrimage/formats/readmem/shown_readmem.h"

#include "kvrimage/formats/readmem/readmem_reader.h"
#include "kvrimage/image/image_words.h"
#include "tests/kvrimage/formats/rif/shown_diagnostics.h"

#include <fmt/format.h>

namespace kvrimage {

std::string shown_image(const read_result& result) {
    if (!result.image) {
        return "none";
    }
    std::string text = fmt::format("{} bits, {} words:", result.image->width(), result.image->depth());
    for (std::uint64_t address = 0; address < result.image->depth(); ++address) {
        const std::string_view word = result.image->words()[address];
        text.append(" ").append(word.empty() ? "-" : word);
    }
    return text;
}

std::vector<std::string> readmemh_diagnostics_of(std::string_view contents, const read_options& options) {
    return shown(read_readmemh(contents, options).diagnostics);
}

std::vector<std::string> readmemb_diagnostics_of(std::string_view contents, const read_options& options) {
    return shown(read_readmemb(contents, options).diagnostics);
}

read_options with_bits(std::uint32_t width) {
    read_options options;
    options.width = width;
    return options;
}

read_options counting_bytes(std::optional<std::uint32_t> width) {
    read_options options;
    options.width = width;
    options.unit = address_unit::byte;
    return options;
}

} // namespace kvrimage
