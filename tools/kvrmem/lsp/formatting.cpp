#include "kvrimage/formats/format_text.h"
#include "tools/kvrmem/lsp/features.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kvrmem::lsp {

namespace {

/// Returns the edit from @p text to @p wanted, without their common leading lines; nothing if they are equal.
std::vector<kvrimage::text_edit> edit_between(std::string_view text, std::string_view wanted) {
    if (text == wanted) {
        return {};
    }
    const auto differing = std::ranges::mismatch(text, wanted).in1;
    const auto equal = static_cast<std::size_t>(differing - text.begin());
    const std::size_t line_end = equal == 0 ? std::string_view::npos : text.rfind('\n', equal - 1);
    const std::size_t begin = line_end == std::string_view::npos ? 0 : line_end + 1;
    return {{begin, text.size() - begin, std::string(wanted.substr(begin))}};
}

} // namespace

json formatting_in(document& of, const json& /*params*/) {
    const kvrimage::format* const as = of.result().facts.as;
    if (as == nullptr || as->lay_out == nullptr) {
        throw request_error(error_code::request_failed,
                            fmt::format("there are no rules for the layout of {}",
                                        as == nullptr ? "this text" : std::string(as->title)));
    }
    const kvrimage::formatted_text wanted = kvrimage::format_text(of.text(), of.reading());
    if (!wanted.diagnostics.empty()) {
        throw request_error(error_code::request_failed,
                            "a file with errors is not formatted: " + wanted.diagnostics.front().message);
    }
    return of.edits(edit_between(of.text(), wanted.text));
}

} // namespace kvrmem::lsp
