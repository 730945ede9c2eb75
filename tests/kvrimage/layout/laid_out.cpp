#include "tests/kvrimage/layout/laid_out.h"

#include "kvrimage/formats/format_text.h"
#include "kvrimage/formats/registry.h"

#include <gtest/gtest.h>

namespace kvrimage_tests {

using namespace kvrimage;

std::string laid_out(std::string_view contents, const read_options& options) {
    const formatted_text once = format_text(contents, options);
    std::string messages;
    for (const diagnostic& each : once.diagnostics) {
        messages += each.message + "\n";
    }
    if (messages.empty()) {
        EXPECT_EQ(format_text(once.text, options).text, once.text);
    }
    return messages + once.text;
}

std::string laid_out(std::string_view contents, std::string_view name) {
    read_options options;
    options.as = format_of_name(name);
    return laid_out(contents, options);
}

} // namespace kvrimage_tests
