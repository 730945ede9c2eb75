#include "kvrimage/formats/readmem/readmem_banner.h"

#include <fmt/format.h>

#include <algorithm>

namespace kvrimage {

namespace {

/// Removes leading digits of @p text. Returns false if there are none.
bool skip_banner_number(std::string_view& text) {
    const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
    text.remove_prefix(digits);
    return digits != 0;
}

bool skip_banner_text(std::string_view& text, std::string_view expected) {
    const bool is_there = text.starts_with(expected);
    text.remove_prefix(is_there ? expected.size() : 0);
    return is_there;
}

} // namespace

std::string readmem_banner(const memory_image& image) {
    return fmt::format("// {} words of {} bits\n", image.depth(), image.width());
}

bool is_readmem_banner(std::string_view contents, const span& where) {
    std::string_view text = where.in(contents);
    return where.offset == 0 && skip_banner_text(text, "// ") && skip_banner_number(text) &&
           skip_banner_text(text, " words of ") && skip_banner_number(text) && text == " bits";
}

} // namespace kvrimage
