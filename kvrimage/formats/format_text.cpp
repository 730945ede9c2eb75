#include "kvrimage/formats/format_text.h"

#include "kvrimage/formats/memory_file.h"

#include <fmt/format.h>

#include <stdexcept>
#include <utility>

namespace kvrimage {

formatted_text format_text(std::string_view contents, const read_options& options) {
    read_options strictly = options;
    strictly.keep_going = false;
    read_result ours = parse(contents, strictly);
    if (!ours.image) {
        std::erase_if(ours.diagnostics, [](const diagnostic& each) {
            return about(each.id).level != diagnostic_class::broken;
        });
        return {"", std::move(ours.diagnostics)};
    }
    return {format_text(contents, strictly, ours), {}};
}

std::string format_text(std::string_view contents, const read_options& options, const read_result& read) {
    const format& as = *read.facts.as;
    if (as.lay_out == nullptr) {
        throw std::invalid_argument(fmt::format("there are no rules for the layout of {}", as.title));
    }
    std::string text = as.lay_out(contents, options, read);
    read_options again = options;
    again.as = &as;
    const read_result laid_out = parse(text, again);
    if (!laid_out.image || !(*laid_out.image == *read.image)) {
        throw std::logic_error("the layout would change words");
    }
    return text;
}

} // namespace kvrimage
