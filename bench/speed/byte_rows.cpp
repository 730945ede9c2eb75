// Files of bytes and lists of words: whole processes of the tool, compared with other programs that do the
// same.

#include "bench/speed/corpus.h"
#include "bench/speed/table.h"
#include "bench/speed/timing.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace speed {

namespace {

constexpr std::uint32_t bytes_measured = 1U << 24;

/// A format that the tool can convert, and the faster of two other programs that support it.
struct byte_format {
    const char* id;
    const char* peer;      ///< a program
    const char* peer_name; ///< the name that the program uses for the format
};
constexpr std::array<byte_format, 4> byte_formats = {{{"binary", "objcopy", "binary"},
                                                      {"hexbytes", "objcopy", "ihex"},
                                                      {"srec", "objcopy", "srec"},
                                                      {"titxt", "srec_cat", "-ti-txt"}}};

std::string path_of(const char* program) {
    return std::string("/usr/bin/") + program;
}

/// The command with which the peer converts @p input to @p output in the format @p to.
std::vector<std::string> peer_command(const byte_format& from, const byte_format& to,
                                      const std::string& input, const std::string& output) {
    const byte_format& known = from.peer == std::string("srec_cat") ? from : to;
    if (known.peer == std::string("objcopy")) {
        return {path_of("objcopy"), "-I", from.peer_name, "-O", to.peer_name, input, output};
    }
    const auto name = [](const byte_format& format) {
        return format.id == std::string("binary") ? std::string("-binary") : std::string(format.peer_name);
    };
    return {path_of("srec_cat"), input, name(from), "-o", output, name(to)};
}

/// A conversion between a format and binary, compared with the peer and with the minimum cost of reading and
/// writing the bytes.
class conversion {
public:
    conversion(const table_settings& with, const byte_format& input_format, const byte_format& output_format)
        : settings(with),
          from(input_format),
          to(output_format),
          input(settings.folder + "/bytes." + from.id),
          output(settings.folder + "/made." + to.id) {}

    /// The command that converts @p input to @p output.
    static std::vector<std::string> command(const table_settings& settings, const std::string& input,
                                            const std::string& from, const std::string& output,
                                            const std::string& to) {
        return {settings.tool, "convert", "--force", "--from", from, "--to", to, input, output};
    }

    void print(const std::string& work) const {
        const std::vector<std::string> ours = command(settings, input, from.id, output, to.id);
        const std::vector<std::string> peers =
            peer_command(from, to, input, settings.folder + "/made_by_peer." + to.id);
        if (std::filesystem::exists(peers.front())) {
            print_against(work + ", against " + peers.front(), ours, peers, 0.1, 0.05);
        }
        static_cast<void>(processor_time_of_process(ours));
        const std::string size = std::to_string(std::filesystem::file_size(output));
        print_against(work + ", against RW", ours, {settings.self, "floor-convert", input, size, output}, 2.3,
                      1.4);
    }

private:
    void print_against(const std::string& work, const std::vector<std::string>& ours,
                       const std::vector<std::string>& other, double target, double stretch) const {
        const comparison result = compare([&] { return processor_time_of_process(ours); },
                                          [&] { return processor_time_of_process(other); }, settings.rounds);
        print_row({work, result.ratio, target, stretch, milliseconds(result)});
    }

    const table_settings& settings;
    const byte_format& from;
    const byte_format& to;
    std::string input;
    std::string output;
};

/// The peak memory of a read, in units of the file size.
void print_peak_of_bytes(const table_settings& settings, const std::string& path) {
    constexpr double bytes_per_mb = 1e6;
    const double peak = peak_of_process({settings.tool, "get", "--from", "binary", path, "77"});
    print_row({"read binary, peak of memory against the file", peak / (bytes_measured / bytes_per_mb), 1.3,
               1.1, ""});
}

/// Measures writing alone: converts a binary file, which costs almost nothing to read, to the same list.
void print_list_writing(const table_settings& settings, const std::string& list) {
    const std::string binary = settings.folder + "/list.binary";
    const std::string made = settings.folder + "/written.mem";
    static_cast<void>(processor_time_of_process({settings.tool, "convert", "--force", "--from", "readmemh",
                                                 "--to", "binary", "--endian", "little", list, binary}));
    const std::vector<std::string> ours = {settings.tool, "convert", "--force",  "--from", "binary",
                                           "--width",     "32",      "--endian", "little", "--to",
                                           "readmemh",    binary,    made};
    static_cast<void>(processor_time_of_process(ours));
    const std::string size = std::to_string(std::filesystem::file_size(made));
    const comparison write =
        compare([&] { return processor_time_of_process(ours); },
                [&] {
                    return processor_time_of_process({settings.self, "floor-convert", binary, size, made});
                },
                settings.rounds);
    print_row({"write readmemh, 32 bits, from binary, against RW", write.ratio, 2, 1.3, milliseconds(write)});
}

/// Compares a read of one word with a simulator that reads the list and prints the word.
void print_list_against_simulator(const table_settings& settings, const std::string& list) {
    const std::string compiler = path_of("iverilog");
    const std::string simulator = path_of("vvp");
    if (!std::filesystem::exists(compiler) || !std::filesystem::exists(simulator)) {
        return;
    }
    const std::string source = settings.folder + "/list.v";
    const std::string program = settings.folder + "/list.vvp";
    std::ofstream(source) << "module list;\nreg [31:0] words [0:" << words_measured - 1
                          << "];\ninitial begin\n$readmemh(\"" << list
                          << "\", words);\n$display(\"%h\", words[77]);\nend\nendmodule\n";
    static_cast<void>(processor_time_of_process({compiler, "-o", program, source}));
    const comparison read = compare(
        [&] {
            return processor_time_of_process({settings.tool, "get", list, "77"});
        },
        [&] {
            return processor_time_of_process({simulator, program});
        },
        settings.rounds);
    print_row({"read readmemh, 32 bits, against " + simulator, read.ratio, 0.1, 0.05, milliseconds(read)});
}

void print_list_rows(const table_settings& settings) {
    const corpus_file file{"m32.mif", file_shape::one_word_a_line, 32, words_measured};
    const std::string source = make_file(settings.folder, file);
    const std::string list = settings.folder + "/list.mem";
    const std::string copy = settings.folder + "/copy.mem";
    static_cast<void>(
        processor_time_of_process(conversion::command(settings, source, "mif", list, "readmemh")));
    const std::string size = std::to_string(std::filesystem::file_size(list));
    const auto ours = conversion::command(settings, list, "readmemh", copy, "readmemh");
    const std::string texts = std::to_string(std::uint64_t{words_measured} * 8);
    const comparison read = compare(
        [&] {
            return processor_time_of_process({settings.tool, "get", list, "77"});
        },
        [&] {
            return processor_time_of_process({settings.self, "floor-read", list, texts});
        },
        settings.rounds);
    print_row({"read readmemh, 32 bits", read.ratio, 3, 1.5, milliseconds(read)});
    print_list_against_simulator(settings, list);
    print_list_writing(settings, list);
    const comparison both =
        compare([&] { return processor_time_of_process(ours); },
                [&] {
                    return processor_time_of_process({settings.self, "floor-convert", list, size, copy});
                },
                settings.rounds);
    print_row({"readmemh to readmemh, 32 bits, against RW", both.ratio, 3.6, 2, milliseconds(both)});
}

} // namespace

void byte_rows(const table_settings& settings) {
    const std::string binary = make_bytes(settings.folder + "/bytes.binary", bytes_measured);
    for (const byte_format& format : byte_formats) {
        const std::string path = settings.folder + "/bytes." + format.id;
        if (path != binary) {
            static_cast<void>(
                processor_time_of_process(conversion::command(settings, binary, "binary", path, format.id)));
        }
        const std::string id = format.id;
        conversion(settings, format, byte_formats[0]).print(id + " to binary");
        if (path != binary) {
            conversion(settings, byte_formats[0], format).print("binary to " + id);
        }
    }
    print_peak_of_bytes(settings, binary);
    print_list_rows(settings);
}

} // namespace speed
