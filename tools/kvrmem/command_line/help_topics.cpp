#include "tools/kvrmem/command_line/help_topics.h"

#include "kvrimage/formats/registry.h"
#include "tools/kvrmem/command_line/command_words.h"
#include "tools/kvrmem/command_line/format_names.h"
#include "tools/kvrmem/command_line/format_table.h"
#include "tools/kvrmem/commands/commands.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <vector>

namespace kvrmem {

namespace {

std::string formats_page() {
    return short_format_table() +
           "\n"
           "--from names the format of an input. Without it, the extension determines which formats\n"
           "are possible, and the contents select one of them. If the extension is unknown, the\n"
           "contents must fit one format only. Contents that two formats read as different words\n"
           "are refused.\n"
           "\n"
           "--to names the format of an output. Without it, the first format in the table with the\n"
           "extension is used.\n"
           "\n"
           "If addresses can count words or bytes, --address-unit selects one; for bytes, --endian\n"
           "states the byte order of words. If a file does not state its width, use --width.\n";
}

std::string numbers_page() {
    return "Addresses, sizes and values\n"
           "  31  -5  0x1F  0b1010  0o17     decimal, hexadecimal, binary, octal\n"
           "  0xFFFF_0000                    _ is allowed between two digits\n"
           "\n"
           "Ranges\n"
           "  0x10..0x1F                     FIRST..LAST, both included; one address is a range, too\n"
           "  0..7,0x20..0x2F                several, if the help shows FIRST..LAST,...\n"
           "\n"
           "Values of set and fill\n"
           "  0x10=0xFF                      a word\n"
           "  0x10=-5                        two's complement; -1 sets all bits\n"
           "  '3[7:4]=0xA'                   bits 7 to 4 of a word; bit 0 is the lowest one\n"
           "  '0x40=\"v1.2\\n\"'               a text, one word per byte; \\n \\r \\t \\0 \\\\ \\\" \\xNN\n"
           "  0=fixed:1.15:0.5               a fraction: 1 bit before the binary point, 15 after it\n"
           "  0..7=1,2                       with fill: repeated in order over the range\n"
           "\n"
           "Fractions are rounded to the nearest word, halves away from 0, or as --round states.\n"
           "Fractions out of range are refused; with --saturate they become the largest or smallest\n"
           "word.\n"
           "\n"
           "Radixes for showing words\n"
           "  bin  oct  dec  uns  hex        dec is two's complement, uns is without sign\n"
           "  fixed:I.F                      two's complement with F of its I + F bits after the point\n"
           "\n"
           "Values are exact at any width: a value that does not fit is refused, never cut.\n";
}

/// Returns the consumers of `check --for`, each with its formats.
std::string consumer_lines() {
    std::string text;
    for (const std::string& name : consumer_choices()) {
        std::string_view reader_title;
        std::vector<std::string_view> titles;
        for (const kvrimage::format* one : kvrimage::formats()) {
            const auto found = std::ranges::find(one->consumers, name, &kvrimage::consumer::name);
            if (found != one->consumers.end()) {
                reader_title = found->title;
                titles.push_back(one->title);
            }
        }
        text += titles.empty() // "none" is not a consumer
                    ? ""
                    : fmt::format("  {:<11} {}, for {}\n", name, reader_title, fmt::join(titles, ", "));
    }
    return text;
}

std::string check_page() {
    return "Classes\n"
           "  error       the meaning of the file is in doubt; every command refuses it\n"
           "  error for   a reader named by --for refuses the file, or reads other words from it\n"
           "  warning     is read, but probably a mistake; counts for the exit code with --strict\n"
           "\n"
           "Readers (--for NAME,... or none; default: kvr)\n" +
           consumer_lines() +
           "\n"
           "Exit codes\n"
           "  0  no errors\n"
           "  1  errors; with --strict also warnings; with --fix, errors that are left\n"
           "  2  bad input, such as a line without end\n"
           "  3  a file cannot be read or written\n"
           "  4  wrong usage\n"
           "  5  internal error or out of memory\n";
}

constexpr std::array<help_topic, 3> topics = {{
    {"formats", "Choice of the format", "The formats, and how the format of a file is chosen.", formats_page},
    {"numbers", "Numbers", "How numbers, ranges, texts and fractions are written.", numbers_page},
    {"check", "Classes, readers and exit codes", "Errors, warnings, readers, and exit codes.", check_page},
}};

} // namespace

std::span<const help_topic> help_topics() noexcept {
    return topics;
}

const help_topic* topic_called(std::string_view name) noexcept {
    const auto* const found = std::ranges::find(topics, name, &help_topic::name);
    return found != topics.end() ? found : nullptr;
}

std::string page_of(const help_topic& topic) {
    return fmt::format("{}\n\n{}", topic.title, topic.text());
}

std::string names_with_help() {
    std::string names = command_names();
    for (const help_topic& topic : topics) {
        if (!is_command(topic.name)) {
            names += fmt::format(" {}", topic.name);
        }
    }
    return names;
}

} // namespace kvrmem
