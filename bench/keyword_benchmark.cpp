#include "bench/folded_text.h"
#include "kvr/keywords/keyword_registry.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

// Each pair queries the registry and, for comparison, an unordered_set of the same names in lower case.

namespace {

/// The names of the registry in random order.
std::vector<std::string> keywords() {
    std::vector<std::string> names;
    for (const auto& entry : kvr::keyword_map(KVR_UTIL_KEYWORD_REGR())) {
        names.push_back(entry.first);
    }
    std::shuffle(names.begin(), names.end(), std::mt19937(1));
    return names;
}

std::vector<std::string> other_names() {
    std::vector<std::string> names = keywords();
    for (std::string& name : names) {
        name.back() = 'Q';
    }
    return names;
}

std::unordered_set<std::string> set_of(const std::vector<std::string>& names) {
    std::unordered_set<std::string> set;
    for (const std::string& name : names) {
        set.insert(folded(name));
    }
    return set;
}

void look_up_in_registry(benchmark::State& state, const std::vector<std::string>& names) {
    KVR_UTIL_KEYWORD_REGR registry;
    for (auto _ : state) {
        for (const std::string& name : names) {
            benchmark::DoNotOptimize(registry.is_keyword(name.c_str()));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(names.size()));
}

void look_up_in_set(benchmark::State& state, const std::vector<std::string>& names) {
    const std::unordered_set<std::string> set = set_of(keywords());
    for (auto _ : state) {
        for (const std::string& name : names) {
            benchmark::DoNotOptimize(set.find(folded(name.c_str())) != set.end());
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(names.size()));
}

void registry_construction(benchmark::State& state) {
    for (auto _ : state) {
        KVR_UTIL_KEYWORD_REGR registry;
        benchmark::DoNotOptimize(registry);
    }
}

void registry_copy(benchmark::State& state) {
    KVR_UTIL_KEYWORD_REGR registry;
    for (int number = 0; number < 10; ++number) {
        registry.add_keyword("added_by_the_caller_" + std::to_string(number));
    }
    for (auto _ : state) {
        KVR_UTIL_KEYWORD_REGR copy(registry);
        benchmark::DoNotOptimize(copy);
    }
}

void filling_a_set(benchmark::State& state) {
    const std::vector<std::string> names = keywords();
    for (auto _ : state) {
        std::unordered_set<std::string> set = set_of(names);
        benchmark::DoNotOptimize(set);
    }
}

BENCHMARK(registry_construction);
BENCHMARK(registry_copy);
BENCHMARK(filling_a_set);
BENCHMARK_CAPTURE(look_up_in_registry, keywords, keywords());
BENCHMARK_CAPTURE(look_up_in_set, keywords, keywords());
BENCHMARK_CAPTURE(look_up_in_registry, other_names, other_names());
BENCHMARK_CAPTURE(look_up_in_set, other_names, other_names());

} // namespace
