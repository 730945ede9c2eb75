// A width-ratio check, compared with looking up its two texts in hash maps: each text is folded to lower case
// in a temporary string and then found in an unordered_map.

#include "bench/folded_text.h"
#include "kvr/ram_rules/device_families.h"
#include "kvr/ram_rules/width_ratio.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace {

using text_map = std::unordered_map<std::string, int>;

const char* const block_names[] = {"AUTO",   "KBLK-A", "KBLK-B", "KBLK-C", "KBLK-D",
                                   "KBLK-E", "KBLK-F", "KBLK-G", "KBLK-L"};

const char* const unknown_families[] = {"",           "SERIES",          "SERIES_Z9",
                                        "SERIES  A5", "SERIES A5 (LPX)", "an unknown family"};
const char* const unknown_blocks[] = {"", "KBLK-H", "KBLK-BB", "an unknown block"};

// The texts of one check: block type and family.
using question = std::pair<std::string, std::string>;

enum class texts { known, unknown, all };

std::vector<std::string> block_texts(texts kind) {
    std::vector<std::string> blocks;
    if (kind != texts::unknown) {
        blocks.insert(blocks.end(), std::begin(block_names), std::end(block_names));
    }
    if (kind != texts::known) {
        blocks.insert(blocks.end(), std::begin(unknown_blocks), std::end(unknown_blocks));
    }
    return blocks;
}

std::vector<std::string> family_texts(texts kind) {
    std::vector<std::string> families;
    if (kind != texts::unknown) {
        for (const kvr::device_family& family : kvr::device_families()) {
            families.insert(families.end(), family.spellings.begin(), family.spellings.end());
        }
    }
    if (kind != texts::known) {
        families.insert(families.end(), std::begin(unknown_families), std::end(unknown_families));
    }
    return families;
}

// Every family text once, each with the next block text.
std::vector<question> questions(texts kind) {
    const std::vector<std::string> blocks = block_texts(kind);
    std::vector<question> all;
    for (const std::string& family : family_texts(kind)) {
        all.emplace_back(blocks[all.size() % blocks.size()], family);
    }
    return all;
}

void two_map_lookups(benchmark::State& state, texts kind) {
    text_map blocks;
    for (const char* name : block_names) {
        blocks.emplace(folded(std::string_view(name)), static_cast<int>(blocks.size()));
    }
    text_map families;
    for (const std::string& spelling : family_texts(texts::known)) {
        families.emplace(folded(spelling), static_cast<int>(families.size()));
    }
    const std::vector<question> asked = questions(kind);
    for (auto _ : state) {
        for (const question& each : asked) {
            benchmark::DoNotOptimize(blocks.find(folded(each.first)));
            benchmark::DoNotOptimize(families.find(folded(each.second)));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(asked.size()));
}

void one_way_check(benchmark::State& state, texts kind) {
    const std::vector<question> asked = questions(kind);
    for (auto _ : state) {
        for (const question& each : asked) {
            benchmark::DoNotOptimize(is_valid_dual_port_memory_width_ratio_in_hardware(
                32, 8, each.first, each.second, false, true, 8));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(asked.size()));
}

void bidir_check(benchmark::State& state, texts kind) {
    const std::vector<question> asked = questions(kind);
    for (auto _ : state) {
        for (const question& each : asked) {
            benchmark::DoNotOptimize(is_valid_bidir_dual_port_memory_width_ratio(
                8, 32, each.first, each.second, true, true, true, 8));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(asked.size()));
}

BENCHMARK_CAPTURE(two_map_lookups, all_texts, texts::all);
BENCHMARK_CAPTURE(one_way_check, all_texts, texts::all);
BENCHMARK_CAPTURE(bidir_check, all_texts, texts::all);
BENCHMARK_CAPTURE(two_map_lookups, known_texts, texts::known);
BENCHMARK_CAPTURE(one_way_check, known_texts, texts::known);
BENCHMARK_CAPTURE(bidir_check, known_texts, texts::known);
BENCHMARK_CAPTURE(two_map_lookups, unknown_texts, texts::unknown);
BENCHMARK_CAPTURE(one_way_check, unknown_texts, texts::unknown);
BENCHMARK_CAPTURE(bidir_check, unknown_texts, texts::unknown);

} // namespace
