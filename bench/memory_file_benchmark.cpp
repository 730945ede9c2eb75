// Reads and writes each format and accesses single words, with 1 Mi words.

#include "kvr/kvr.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <filesystem>
#include <string>

namespace {

constexpr unsigned file_depth = 1U << 20;

/// Words that resemble data: a fixed sequence of pseudo-random numbers.
class word_sequence {
public:
    explicit word_sequence(unsigned bits) : digits(bits / 4) {}
    std::string next() {
        std::string word;
        while (word.size() < digits) {
            state = state * 6364136223846793005U + 1442695040888963407U;
            word += "0123456789ABCDEF"[state >> 60U];
        }
        return word;
    }

private:
    std::size_t digits;
    std::uint64_t state = 20261121;
};

std::string file_name(KVR_FILE_TYPES type, unsigned width) {
    const auto folder = std::filesystem::temp_directory_path();
    return (folder / ("kvr_benchmark_" + std::to_string(type) + "_" + std::to_string(width))).string();
}

void configure(KVR_MEMORY_FILE& file, KVR_FILE_TYPES type, unsigned width) {
    file.set_file_type(type);
    file.set_file_name(file_name(type, width));
    file.set_word_size(width);
    file.set_memory_radix(RADIX_HEX);
    file.set_address_radix(RADIX_HEX);
    file.set_number_of_words(file_depth);
}

void fill(KVR_MEMORY_FILE& file, unsigned width) {
    word_sequence words(width);
    for (unsigned address = 0; address < file_depth; ++address) {
        file.set_data_word(address, words.next(), RADIX_HEX);
    }
}

KVR_FILE_TYPES type_of(const benchmark::State& state) {
    return static_cast<KVR_FILE_TYPES>(state.range(0));
}
unsigned width_of(const benchmark::State& state) {
    return static_cast<unsigned>(state.range(1));
}

/// Counts the words and the bytes of the file, then removes it.
void count_work(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * file_depth);
    const std::string name = file_name(type_of(state), width_of(state));
    const auto bytes = std::filesystem::file_size(name);
    std::filesystem::remove(name);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
}

void write_file(benchmark::State& state) {
    KVR_MEMORY_FILE file;
    configure(file, type_of(state), width_of(state));
    fill(file, width_of(state));
    for (auto _ : state) {
        if (!file.write_file()) {
            state.SkipWithError("the file cannot be written");
        }
    }
    count_work(state);
}

void read_file(benchmark::State& state) {
    KVR_MEMORY_FILE source;
    configure(source, type_of(state), width_of(state));
    fill(source, width_of(state));
    if (!source.write_file()) {
        state.SkipWithError("the file cannot be written");
        return;
    }
    for (auto _ : state) {
        KVR_MEMORY_FILE file;
        configure(file, type_of(state), width_of(state));
        if (!file.read_file() || file.has_error_messages()) {
            state.SkipWithError("the file cannot be read");
        }
    }
    count_work(state);
}

void get_word(benchmark::State& state) {
    KVR_MEMORY_FILE file;
    configure(file, FILE_TYPE_MIF, 32);
    fill(file, 32);
    const auto radix = static_cast<KVR_MEMORY_RADIXES>(state.range(0));
    unsigned address = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(file.get_data_word(address, radix));
        address = (address + 1) % file_depth;
    }
}

void set_word(benchmark::State& state) {
    KVR_MEMORY_FILE file;
    configure(file, FILE_TYPE_MIF, 32);
    const std::string word = "DEADC0DE";
    unsigned address = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(file.set_data_word(address, word, RADIX_HEX));
        address = (address + 1) % file_depth;
    }
}

void set_word_with_comment(benchmark::State& state) {
    KVR_MEMORY_FILE file;
    configure(file, FILE_TYPE_MIF, 32);
    const std::string word = "DEADC0DE";
    const std::string comment = "a comment";
    unsigned address = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(file.set_data_word_with_comments(address, word, comment, RADIX_HEX));
        address = (address + 1) % file_depth;
    }
}

void formats_and_widths(benchmark::internal::Benchmark* bench) {
    bench->ArgNames({"type", "bits"});
    for (const auto type : {FILE_TYPE_HEX, FILE_TYPE_MIF, FILE_TYPE_RIF}) {
        for (const int width : {8, 32, 128}) {
            bench->Args({static_cast<std::int64_t>(type), width});
        }
    }
    bench->Unit(benchmark::kMillisecond);
}

BENCHMARK(read_file)->Apply(formats_and_widths);
BENCHMARK(write_file)->Apply(formats_and_widths);
BENCHMARK(get_word)->ArgName("radix")->Arg(RADIX_HEX)->Arg(RADIX_BIN)->Arg(RADIX_DEC);
BENCHMARK(set_word);
BENCHMARK(set_word_with_comment)->Iterations(65536);

} // namespace
