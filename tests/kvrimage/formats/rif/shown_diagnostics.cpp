#include "tests/kvrimage/formats/rif/shown_diagnostics.h"

#include "kvrimage/formats/rif/rif_reader.h"

#include <fmt/format.h>

#include <algorithm>

namespace kvrimage {

std::vector<std::string> shown(const std::vector<diagnostic>& diagnostics) {
    std::vector<std::string> result;
    for (const diagnostic& each : diagnostics) {
        const place& where = each.where;
        result.push_back(
            fmt::format("{} {}:{}+{}", about(each.id).code, where.line, where.column, where.length));
        result.back() += each.count > 1 ? fmt::format(" x{}", each.count) : "";
    }
    return result;
}

std::vector<std::string> rif_diagnostics_of(std::string_view contents) {
    return shown(read_rif(contents, {}).diagnostics);
}

std::string repaired_rif(std::string_view contents) {
    std::vector<text_edit> edits;
    read_options options;
    options.wants_repairs = true;
    for (const diagnostic& each : read_rif(contents, options).diagnostics) {
        edits.insert(edits.end(), each.fix.begin(), each.fix.end());
    }
    std::ranges::sort(edits, {}, &text_edit::offset);
    return with_text_edits(std::string(contents), edits);
}

std::string with_text_edits(std::string contents, const std::vector<text_edit>& edits) {
    for (auto edit = edits.rbegin(); edit != edits.rend(); ++edit) {
        contents.replace(edit->offset, edit->length, edit->replacement);
    }
    return contents;
}

} // namespace kvrimage
