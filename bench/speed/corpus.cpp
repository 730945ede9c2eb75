#include "bench/speed/corpus.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace speed {

namespace {

constexpr std::string_view hex_digits = "0123456789ABCDEF";

/// Words that resemble data: a fixed sequence of pseudo-random digits.
class word_sequence {
public:
    explicit word_sequence(std::uint32_t bits) : length(bits / 4) {}
    std::string next_word() {
        std::string word;
        while (word.size() < length) {
            word += hex_digits[next() % hex_digits.size()];
        }
        return word;
    }
    std::string next_decimal() {
        const std::uint64_t number = next();
        const std::string text = std::to_string(number % 32768 >> number / 32768 % 15);
        return number % 3 == 0 && text != "0" ? "-" + text : text;
    }

private:
    std::uint64_t next() {
        state = state * 6364136223846793005U + 1442695040888963407U;
        return state >> 33U;
    }
    std::size_t length;
    std::uint64_t state = 20261121;
};

std::string in_hex(std::uint32_t number, std::size_t length) {
    std::string text(length, '0');
    for (std::size_t at = length; at-- > 0; number /= 16) {
        text[at] = hex_digits[number % 16];
    }
    return text;
}

std::string mif_text(const corpus_file& file) {
    word_sequence sequence(file.bits);
    const bool is_decimal = file.shape == file_shape::mixed_decimals;
    std::string text = "WIDTH=" + std::to_string(file.bits) + ";\nDEPTH=" + std::to_string(file.words) +
                       ";\n\nADDRESS_RADIX=HEX;\nDATA_RADIX=" + (is_decimal ? "DEC" : "HEX") +
                       ";\n\nCONTENT BEGIN\n";
    const std::uint32_t step = file.shape == file_shape::eight_values_a_line ? 8 : 1;
    for (std::uint32_t address = 0; address < file.words; address += step) {
        text += "\t" + in_hex(address, 6) + "  :  ";
        for (std::uint32_t index = 0; index < step; ++index) {
            text += " " + (is_decimal ? sequence.next_decimal() : sequence.next_word());
        }
        text += file.shape == file_shape::comment_on_every_line ? ";  -- entry of the table\n" : ";\n";
    }
    return text + "END;\n";
}

std::string record(std::uint32_t address, std::string_view type, const std::string& data) {
    const std::string fields = in_hex(static_cast<std::uint32_t>(data.size() / 2), 2) +
                               in_hex(address % 65536, 4) + std::string(type) + data;
    unsigned sum = 0;
    for (std::size_t at = 0; at < fields.size(); at += 2) {
        sum += static_cast<unsigned>(std::stoul(fields.substr(at, 2), nullptr, 16));
    }
    return ":" + fields + in_hex((0U - sum) & 0xFFU, 2) + "\n";
}

std::string hex_text(const corpus_file& file) {
    word_sequence sequence(file.bits);
    const std::uint32_t step = file.shape == file_shape::thirty_two_bytes_a_record ? 32 / (file.bits / 8) : 1;
    std::string text;
    for (std::uint32_t address = 0; address < file.words; address += step) {
        if (address % 65536 == 0 && address != 0) {
            text += record(0, "04", in_hex(address / 65536, 4));
        }
        std::string data;
        for (std::uint32_t index = 0; index < step; ++index) {
            data += sequence.next_word();
        }
        text += record(address, "00", data);
    }
    return text + ":00000001FF\n";
}

std::string rif_text(const corpus_file& file) {
    constexpr std::uint32_t words_a_line = 8;
    word_sequence sequence(file.bits);
    std::string text;
    for (std::uint32_t address = 0; address < file.words; address += words_a_line) {
        text += "@" + in_hex(address, 6) + "\n";
        for (std::uint32_t index = 0; index < words_a_line; ++index) {
            text += sequence.next_word() + " ";
        }
        text += "\n";
    }
    return text;
}

std::string text_of(const corpus_file& file) {
    const std::string_view name = file.name;
    const std::string_view extension = name.substr(name.rfind('.'));
    return extension == ".mif" ? mif_text(file) : extension == ".hex" ? hex_text(file) : rif_text(file);
}

void write_text(const std::string& path, std::string_view text) {
    std::FILE* stream = std::fopen(path.c_str(), "wb");
    if (stream == nullptr || std::fwrite(text.data(), 1, text.size(), stream) != text.size() ||
        std::fclose(stream) != 0) {
        std::perror(path.c_str());
        std::exit(1);
    }
}

} // namespace

std::string make_file(const std::string& folder, const corpus_file& file) {
    std::string path = folder + "/" + file.name;
    write_text(path, text_of(file));
    return path;
}

std::string make_bytes(const std::string& path, std::uint32_t count) {
    std::string bytes;
    std::uint32_t state = 20261121;
    while (bytes.size() < count) {
        state = state * 1664525U + 1013904223U;
        bytes += static_cast<char>(state >> 24U);
    }
    write_text(path, bytes);
    return path;
}

} // namespace speed
