// Reading, writing and converting whole files.

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
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace speed {

namespace {

constexpr std::uint32_t mebi = 1U << 20;

struct read_row {
    const char* work;
    corpus_file file;
    std::uint32_t text_length; ///< of a word, as the store holds it
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

std::string milliseconds(const comparison& result) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.1f ms / %.1f ms", result.work * 1e3, result.floor * 1e3);
    return text.data();
}

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

/// The most memory that a child process of this program held, in MB.
double peak_of(const std::vector<std::string>& command) {
    const pid_t child = fork();
    if (child == 0) {
        std::vector<std::string> words = command;
        const std::vector<char*> pointers = argument_pointers(words);
        execv(pointers[0], pointers.data());
        _exit(1);
    }
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-union-access): how the system declares it
    return static_cast<double>(usage.ru_maxrss) / 1000;
}

void print_peak(const table_settings& settings) {
    const std::string path = settings.folder + "/m8_16M.mif";
    const double peak = peak_of({settings.self, "read", path, "8"});
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

/// The words of the MIF in another format.
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

void print_conversion(const table_settings& settings) {
    const std::string input = settings.folder + "/m8.mif";
    const std::string output = settings.folder + "/converted.hex";
    static_cast<void>(time_of_process({settings.tool, "convert", input, output}));
    const std::string bytes = std::to_string(std::filesystem::file_size(output));
    const comparison result = compare(
        [&] {
            return time_of_process({settings.tool, "convert", input, output});
        },
        [&] {
            return time_of_process({settings.self, "floor-convert", input, bytes, output});
        },
        settings.rounds);
    print_row({"convert MIF to HEX, whole tool", result.ratio, 2.3, 1.4, milliseconds(result)});
}

void print_start(const table_settings& settings) {
    constexpr int rounds = 301;
    const comparison result = compare(
        [&] {
            return time_of_process({settings.tool, "--version"});
        },
        [] { return time_of_process({"/bin/true"}); }, rounds);
    print_row({"start of the tool, against /bin/true", result.ratio, 1.15, 1.0, milliseconds(result)});
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
    print_conversion(settings);
    print_start(settings);
}

} // namespace speed
