#include "kvrimage/formats/foreign_content.h"

#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/diagnostics/diagnostic_list.h"
#include "kvrimage/formats/registry.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <utility>

namespace kvrimage {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view foreign_blanks = " \t\r\f\v";
constexpr std::string_view name_characters =
    "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_";

/// Iterates over the nonempty lines at the start of a text, without surrounding blanks.
class filled_lines {
public:
    explicit filled_lines(std::string_view contents)
        : rest(contents.substr(0, sniffed_bytes)),
          is_cut(contents.size() > sniffed_bytes) {
        if (rest.starts_with("\xEF\xBB\xBF")) {
            rest.remove_prefix(3);
        }
    }

    /// Returns the next line, or "" at the end. A cut last line is returned only if it is the only one.
    std::string_view next() {
        while (!rest.empty()) {
            const std::size_t end = rest.find('\n');
            if (end == std::string_view::npos && is_cut && has_given) {
                return "";
            }
            const std::string_view line = trimmed(rest.substr(0, end));
            rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
            if (!line.empty()) {
                has_given = true;
                return line;
            }
        }
        return "";
    }

private:
    static std::string_view trimmed(std::string_view line) {
        const std::size_t begin = std::min(line.find_first_not_of(foreign_blanks), line.size());
        line.remove_prefix(begin);
        return line.substr(0, line.find_last_not_of(foreign_blanks) + 1);
    }

    std::string_view rest;
    bool is_cut;
    bool has_given = false;
};

std::string_view first_line(std::string_view contents) {
    return filled_lines(contents).next();
}

/// Returns whether all nonempty lines consist of @p digits and blanks.
bool has_rows_of(std::string_view contents, std::string_view digits) {
    const std::string allowed = std::string(digits) + std::string(foreign_blanks);
    filled_lines lines(contents);
    std::string_view line = lines.next();
    const bool has_lines = !line.empty();
    while (!line.empty() && line.find_first_not_of(allowed) == std::string_view::npos) {
        line = lines.next();
    }
    return has_lines && line.empty();
}

bool has_binary_rows(std::string_view contents) {
    return has_rows_of(contents, "01");
}

bool has_hexadecimal_rows(std::string_view contents) {
    return has_rows_of(contents, "0123456789ABCDEFabcdef");
}

bool has_markup(std::string_view contents) {
    const std::string_view line = first_line(contents);
    return line.size() > 1 && line.front() == '<' &&
           (line[1] == '?' || line[1] == '!' || (line[1] >= 'A' && line[1] <= 'Z') ||
            (line[1] >= 'a' && line[1] <= 'z'));
}

/// Matches a name followed by a number or "=": "VERSION 300", "radix=16;".
bool has_other_settings(std::string_view contents) {
    const std::string_view line = first_line(contents);
    const std::size_t name = std::min(line.find_first_not_of(name_characters), line.size());
    const std::size_t next = std::min(line.find_first_not_of(foreign_blanks, name), line.size());
    const char follows = next != line.size() ? line[next] : '\0';
    return name > 1 && line.front() > '9' &&
           (follows == '=' || (next > name && follows >= '0' && follows <= '9'));
}

/// Returns whether every other byte at the start is NUL.
bool is_utf16_without_mark(std::string_view contents) {
    constexpr std::size_t shortest = 4;
    const std::string_view front = contents.substr(0, 64);
    std::array<std::size_t, 2> zeros{};
    for (std::size_t i = 0; i < front.size(); ++i) {
        zeros[i % 2] += front[i] == '\0' ? 1U : 0U;
    }
    return front.size() >= shortest && (zeros[0] == 0 || zeros[1] == 0) &&
           zeros[0] + zeros[1] == front.size() / 2;
}

bool has_nul(std::string_view contents) {
    return contents.substr(0, sniffed_bytes).find('\0') != std::string_view::npos;
}

constexpr std::string_view to_utf8_16 = "use iconv -f UTF-16 -t UTF-8 to convert it to plain text";
constexpr std::string_view to_utf8_32 = "use iconv -f UTF-32 -t UTF-8 to convert it to plain text";

/// Contents that begin with `bytes`.
struct foreign_beginning {
    std::string_view bytes;
    std::string_view what;
    std::string_view advice;
};

constexpr auto foreign_beginnings = std::to_array<foreign_beginning>({
    {"\xFF\xFE\0\0"sv, "UTF-32 text", to_utf8_32},
    {"\0\0\xFE\xFF"sv, "UTF-32 text", to_utf8_32},
    {"\xFF\xFE"sv, "UTF-16 text", to_utf8_16},
    {"\xFE\xFF"sv, "UTF-16 text", to_utf8_16},
    {"\x7F"
     "ELF"sv,
     "an ELF program", ""},
    {"MZ\x90\0"sv, "a program", ""},
    {"\x89PNG\r\n"sv, "a PNG picture", ""},
    {"\xFF\xD8\xFF"sv, "a JPEG picture", ""},
    {"GIF8"sv, "a GIF picture", ""},
    {"%PDF-"sv, "a PDF document", ""},
    {"PK\x03\x04"sv, "a zip archive", "unpack it first"},
    {"\x1F\x8B"sv, "a gzip archive", "unpack it first"},
    {"BZh9"sv, "a bzip2 archive", "unpack it first"},
    {"\xFD"
     "7zXZ\0"sv,
     "an xz archive", "unpack it first"},
    {"\x28\xB5\x2F\xFD"sv, "a zstd archive", "unpack it first"},
});

/// Contents that satisfy `fits`; the first match counts.
struct foreign_kind {
    bool (*fits)(std::string_view contents);
    std::string_view what;
    std::string_view advice;
};

constexpr auto foreign_kinds = std::to_array<foreign_kind>({
    {is_utf16_without_mark, "UTF-16 text", to_utf8_16},
    {has_nul, "a binary file", ""},
    {has_markup, "markup text of other software", ""},
    {has_binary_rows, "bare rows of binary words",
     "use --from readmemb, or --from readmemh if the digits are hexadecimal"},
    {has_hexadecimal_rows, "bare rows of hexadecimal words", "use --from readmemh"},
});

/// Finds another format of @p contents with a confidence of at least @p least.
std::optional<diagnostic> content_of_other_format(std::string_view contents, const format& expected,
                                                  certainty least) {
    const std::vector<sniffed> all = sniff(contents);
    const auto found = std::ranges::find_if(all, [&expected, least](const sniffed& each) {
        return each.as != &expected && each.as->read != nullptr && each.how_sure >= least;
    });
    return found != all.end()
               ? std::optional(diagnose::other_format({}, found->as->title, expected.title, found->as->id))
               : std::nullopt;
}

} // namespace

std::optional<diagnostic> foreign_content(std::string_view contents, const format* expected,
                                          certainty least) {
    if (expected != nullptr) {
        if (auto found = content_of_other_format(contents, *expected, least)) {
            return found;
        }
    }
    const auto begun = std::ranges::find_if(foreign_beginnings, [contents](const foreign_beginning& each) {
        return contents.starts_with(each.bytes);
    });
    if (begun != foreign_beginnings.end()) {
        return diagnose::foreign_content(span{0, begun->bytes.size()}, begun->what, begun->advice);
    }
    const auto found = std::ranges::find_if(
        foreign_kinds, [contents](const foreign_kind& each) { return each.fits(contents); });
    const std::string_view line = first_line(contents);
    const span where{line.empty() ? 0 : static_cast<std::uint64_t>(line.data() - contents.data()),
                     std::max<std::size_t>(line.size(), 1)};
    if (found != foreign_kinds.end()) {
        return diagnose::foreign_content(where, found->what, found->advice);
    }
    if (expected != nullptr && has_other_settings(contents)) {
        return diagnose::foreign_content(where, "text of other software", "");
    }
    return std::nullopt;
}

read_result only_finding(const format& as, std::string_view contents, diagnostic only) {
    diagnostic_list list;
    list.add(std::move(only));
    read_result result;
    result.facts.as = &as;
    result.diagnostics = list.finish(contents);
    return result;
}

} // namespace kvrimage
