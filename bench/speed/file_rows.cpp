// Reads, writes and converts whole files.

#include "bench/speed/corpus.h"
#include "bench/speed/table.h"
#include "bench/speed/timing.h"
#include "bench/speed/work.h"
#include "kvr/kvr.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>

namespace speed {

namespace {

constexpr std::uint32_t mebi = 1U << 20;

struct read_row {
    const char* work;
    corpus_file file;
    std::uint32_t text_length; ///< per word in the store
    double target;
    double stretch;
};

constexpr std::array<read_row, 13> read_rows = {{
    {"read MIF, 8 bits", {"m8.mif", file_shape::one_word_a_line, 8, mebi}, 2, 3.2, 2.0},
    {"read MIF, 32 bits", {"m32.mif", file_shape::one_word_a_line, 32, mebi}, 8, 1.8, 1.2},
    {"read MIF, 128 bits", {"m128.mif", file_shape::one_word_a_line, 128, mebi}, 32, 1.6, 0.8},
    {"read MIF, 8 values a line", {"m8x8.mif", file_shape::eight_values_a_line, 8, mebi}, 2, 5, 2.5},
    {"read MIF, a comment on every line", {"mc.mif", file_shape::comment_on_every_line, 8, mebi}, 2, 10, 5},
    {"read MIF, mixed decimals", {"md.mif", file_shape::mixed_decimals, 16, mebi}, 4, 7, 4},
    {"read HEX, 8 bits", {"h8.hex", file_shape::one_word_a_line, 8, mebi}, 2, 3.8, 2},
    {"read HEX, 32 bits", {"h32.hex", file_shape::one_word_a_line, 32, mebi}, 8, 2.2, 1.2},
    {"read HEX, 32 bytes a record",
     {"h8x32.hex", file_shape::thirty_two_bytes_a_record, 8, mebi},
     2,
     1.8,
     1.1},
    {"read RIF, 8 bits", {"r8.rif", file_shape::one_word_a_line, 8, mebi}, 2, 5.5, 2.5},
    {"read RIF, 32 bits", {"r32.rif", file_shape::one_word_a_line, 32, mebi}, 8, 2.5, 1.3},
    {"read RIF, 128 bits", {"r128.rif", file_shape::one_word_a_line, 128, mebi}, 32, 1.4, 0.8},
    {"read MIF, 16 Mi words of 8 bits", {"m8_16M.mif", file_shape::one_word_a_line, 8, 16 * mebi}, 2, 3.5, 2},
}};

void print_read(const table_settings& settings, const read_row& row) {
    const std::string path = make_file(settings.folder, row.file);
    const std::string store = std::to_string(std::uint64_t{row.file.words} * row.text_length);
    const comparison result = compare(
        [&] {
            return time_of_process({settings.self, "read", path, std::to_string(row.file.bits)});
        },
        [&] {
            return time_of_process({settings.self, "floor-read", path, store});
        },
        settings.rounds);
    print_row({row.work, result.ratio, row.target, row.stretch, milliseconds(result)});
}

void print_peak(const table_settings& settings) {
    const std::string path = settings.folder + "/m8_16M.mif";
    const double peak = peak_of_process({settings.self, "read", path, "8"});
    print_row({"the same, peak in MB", peak, 45, 28, ""});
}

struct write_row {
    const char* work;
    KVR_FILE_TYPES type;
    const char* name;
    double target;
    double stretch;
};

constexpr std::array<write_row, 3> write_rows = {{
    {"write HEX, 8 bits", FILE_TYPE_HEX, "w8.hex", 1.8, 1.2},
    {"write MIF, 8 bits", FILE_TYPE_MIF, "w8.mif", 2.2, 1.3},
    {"write RIF, 8 bits", FILE_TYPE_RIF, "w8.rif", 3.5, 1.5},
}};

/// A memory in another format with the words of the MIF file.
std::unique_ptr<KVR_MEMORY_FILE> filled(const std::string& source, const write_row& row,
                                        const std::string& path) {
    KVR_MEMORY_FILE read;
    read.set_file_type(FILE_TYPE_MIF);
    read.set_file_name(source);
    if (!read.read_file()) {
        std::exit(1);
    }
    auto file = std::make_unique<KVR_MEMORY_FILE>();
    file->set_file_type(row.type);
    file->set_file_name(path);
    file->set_word_size(8);
    file->set_memory_radix(RADIX_HEX);
    file->set_address_radix(RADIX_HEX);
    file->set_number_of_words(mebi);
    for (unsigned address = 0; address < mebi; ++address) {
        file->set_data_word(address, read.get_data_word(address, RADIX_HEX), RADIX_HEX);
    }
    return file;
}

void print_write(const table_settings& settings, const write_row& row) {
    const std::string path = settings.folder + "/" + row.name;
    const auto file = filled(settings.folder + "/m8.mif", row, path);
    if (!file->write_file()) {
        std::exit(1);
    }
    const std::uint64_t bytes = std::filesystem::file_size(path);
    const auto timed = [&path](const std::function<void()>& write) {
        std::filesystem::remove(path);
        const double begin = now();
        write();
        return now() - begin;
    };
    const comparison result =
        compare([&] { return timed([&file] { static_cast<void>(file->write_file()); }); },
                [&] { return timed([&] { write_blocks(path, bytes); }); }, settings.rounds);
    print_row({row.work, result.ratio, row.target, row.stretch, milliseconds(result)});
}

} // namespace

void file_rows(const table_settings& settings) {
    for (const read_row& row : read_rows) {
        print_read(settings, row);
    }
    print_peak(settings);
    for (const write_row& row : write_rows) {
        print_write(settings, row);
    }
}

} // namespace speed
