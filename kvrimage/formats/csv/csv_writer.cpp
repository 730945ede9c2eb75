#include "kvrimage/formats/csv/csv_writer.h"

#include "kvr/util/letter_case.h"
#include "kvrimage/formats/shown_words.h"
#include "kvrimage/formats/sink_buffer.h"

#include <fmt/format.h>

#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>

namespace kvrimage {

namespace {

/// .tsv files have tabs.
char separator_of(const write_options& options) {
    constexpr std::string_view extension = ".tsv";
    const std::string_view name = options.file_name;
    const bool has_tabs = name.size() > extension.size() &&
                          kvr::equal_ignoring_case(name.substr(name.size() - extension.size()), extension);
    return has_tabs ? '\t' : ',';
}

std::string csv_header(char separator) {
    return fmt::format("address{}value\n", separator);
}

radix radix_in_csv(std::optional<radix> wanted) {
    return wanted && *wanted != radix::oct ? *wanted : radix::hex;
}

std::string_view prefix_in_csv(radix of) {
    switch (of) {
    case radix::hex:
        return "0x";
    case radix::bin:
        return "0b";
    default:
        return "";
    }
}

/// Appends the address at the start of a line. Hexadecimal and binary addresses have @p digits digits.
void append_csv_address(std::string& line, std::uint64_t address, radix in, std::size_t digits) {
    line += prefix_in_csv(in);
    switch (in) {
    case radix::hex:
        fmt::format_to(std::back_inserter(line), "{:0{}X}", address, digits);
        break;
    case radix::bin:
        fmt::format_to(std::back_inserter(line), "{:0{}b}", address, digits);
        break;
    default:
        fmt::format_to(std::back_inserter(line), "{}", address);
    }
}

/// Returns the largest address to write.
std::uint64_t last_csv_address(const memory_image& image) {
    return image.bounds().value_or(address_range{0, 0}).last;
}

std::size_t digits_of_csv_addresses(const memory_image& image, radix in) {
    const std::uint64_t last = last_csv_address(image);
    return in == radix::bin ? fmt::formatted_size("{:b}", last) : fmt::formatted_size("{:X}", last);
}

} // namespace

void write_csv(const memory_image& image, const write_options& options, text_sink& output) {
    const radix addresses = radix_in_csv(options.address_radix);
    const radix digits = radix_in_csv(options.data_radix);
    const std::size_t address_digits = digits_of_csv_addresses(image, addresses);
    sink_buffer buffer(output);
    const char separator = separator_of(options);
    buffer.write(csv_header(separator));
    std::string line;
    for_each_shown_word(image, digits, [&](std::uint64_t address, std::string_view word) {
        line.clear();
        append_csv_address(line, address, addresses, address_digits);
        line += separator;
        line += prefix_in_csv(digits);
        line += word;
        line += '\n';
        buffer.write(line);
    });
    buffer.flush();
}

std::uint64_t written_csv_size(const memory_image& image, const write_options& options) {
    const radix digits = radix_in_csv(options.data_radix);
    std::string address;
    const radix addresses = radix_in_csv(options.address_radix);
    append_csv_address(address, last_csv_address(image), addresses,
                       digits_of_csv_addresses(image, addresses));
    const std::size_t around_word = address.size() + prefix_in_csv(digits).size() + 2; // separator, line end
    return csv_header(',').size() + image.count_set() * around_word + count_shown_characters(image, digits);
}

} // namespace kvrimage
