#include "kvr/numeric/exact_value.h"
#include "kvr/numeric/radix_conversion.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>
#include <string>

namespace {

/// A word whose top bit is set, so that none of its texts is shorter than the width requires.
std::string word_text(std::size_t width, KVR_MEMORY_RADIXES radix) {
    std::mt19937_64 random(width);
    std::string bits = "1";
    while (bits.size() < width) {
        bits += random() % 2 != 0 ? '1' : '0';
    }
    std::string text;
    kvr::exact_text(bits, radix, text);
    return text;
}

void convert(benchmark::State& state, KVR_MEMORY_RADIXES from, KVR_MEMORY_RADIXES to) {
    const auto width = static_cast<unsigned>(state.range(0));
    const std::string input = word_text(width, from);
    std::string output;
    for (auto unused : state) {
        static_cast<void>(unused);
        kvr_radix_conversion(input, &output, from, to, width);
        benchmark::DoNotOptimize(output.data());
    }
    state.SetItemsProcessed(state.iterations());
}

void convert_exactly(benchmark::State& state, KVR_MEMORY_RADIXES from, KVR_MEMORY_RADIXES to) {
    const auto width = static_cast<std::size_t>(state.range(0));
    const std::string input = word_text(width, from);
    std::string output;
    for (auto unused : state) {
        static_cast<void>(unused);
        output.clear();
        kvr::append_exact_word(output, input, {from, to, width});
        benchmark::DoNotOptimize(output.data());
    }
    state.SetItemsProcessed(state.iterations());
}

void word_widths(benchmark::internal::Benchmark* benchmark) {
    for (const std::int64_t width : {8, 32, 64, 128, 1024, 4096}) {
        benchmark->Arg(width);
    }
}

BENCHMARK_CAPTURE(convert, hexadecimal_to_signed, RADIX_HEX, RADIX_DEC)->Apply(word_widths);
BENCHMARK_CAPTURE(convert, signed_to_hexadecimal, RADIX_DEC, RADIX_HEX)->Apply(word_widths);
BENCHMARK_CAPTURE(convert, hexadecimal_to_binary, RADIX_HEX, RADIX_BIN)->Apply(word_widths);
BENCHMARK_CAPTURE(convert_exactly, hexadecimal_to_signed, RADIX_HEX, RADIX_DEC)->Apply(word_widths);
BENCHMARK_CAPTURE(convert_exactly, signed_to_hexadecimal, RADIX_DEC, RADIX_HEX)->Apply(word_widths);
BENCHMARK_CAPTURE(convert_exactly, hexadecimal_to_binary, RADIX_HEX, RADIX_BIN)->Apply(word_widths);
BENCHMARK_CAPTURE(convert_exactly, hexadecimal_to_hexadecimal, RADIX_HEX, RADIX_HEX)->Apply(word_widths);

} // namespace
