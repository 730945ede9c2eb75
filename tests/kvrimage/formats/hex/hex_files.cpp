#include "tests/kvrimage/formats/hex/hex_files.h"

#include "kvrimage/formats/hex/hex_writer.h"

#include <algorithm>
#include <array>
#include <sstream>

namespace kvrimage::hex_test {

namespace {

class text_collector : public text_sink {
public:
    void write(std::string_view text) override { all.append(text); }
    std::string all;
};

} // namespace

read_options of_width(std::uint32_t width) {
    read_options options;
    options.width = width;
    return options;
}

std::string record(const std::string& fields) {
    return ":" + fields + hex_checksum(fields) + "\n";
}

std::string report_of(const read_result& result) {
    constexpr std::array<const char*, 3> levels = {"broken", "consumer", "suspect"};
    std::ostringstream text;
    for (const diagnostic& each : result.diagnostics) {
        const diagnostic_kind& kind = about(each.id);
        text << levels.at(static_cast<std::size_t>(kind.level)) << ' ' << kind.code << ' ' << each.where.line
             << ':' << each.where.column << '+' << each.where.length << " x" << each.count << '\n';
    }
    return text.str();
}

std::string with_repairs(std::string_view text, const read_result& result) {
    std::vector<text_edit> edits;
    for (const diagnostic& each : result.diagnostics) {
        edits.insert(edits.end(), each.fix.begin(), each.fix.end());
    }
    std::ranges::stable_sort(edits, {}, [](const text_edit& edit) { return edit.offset; });
    return with_edits_of(text, edits);
}

std::string with_edits_of(std::string_view text, const std::vector<text_edit>& edits) {
    std::string result(text);
    for (auto edit = edits.rbegin(); edit != edits.rend(); ++edit) {
        result.replace(edit->offset, edit->length, edit->replacement);
    }
    return result;
}

std::string words_of(const read_result& result) {
    if (!result.image) {
        return "none";
    }
    std::ostringstream text;
    for (const run& each : result.image->runs()) {
        for (std::uint64_t address = each.addresses.first; each.value && address <= each.addresses.last;
             ++address) {
            text << (text.tellp() == 0 ? "" : " ") << address << '=' << *each.value->to_text(radix::hex);
        }
    }
    return text.str();
}

std::string written_hex(const memory_image& image) {
    text_collector text;
    write_hex(image, {}, text);
    return text.all;
}

} // namespace kvrimage::hex_test
