#include "kvr/memory/store/word_store.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

// The word store, compared with the std::deque<std::string> that it replaces. The argument is the length of
// the words; 0 means unpadded decimal numbers of one to five digits.

namespace {

constexpr std::uint32_t depth = 1U << 20;
constexpr std::size_t samples = 4096;

/// Texts of which no two adjacent ones are equal.
std::vector<std::string> sample_texts(std::int64_t length) {
    std::vector<std::string> texts;
    std::minstd_rand random(1);
    for (std::size_t i = 0; i < samples; ++i) {
        if (length == 0) {
            texts.push_back(std::to_string(random() % 65536));
            continue;
        }
        std::string text(static_cast<std::size_t>(length), '0');
        for (char& digit : text) {
            digit = "0123456789ABCDEF"[random() % 16];
        }
        texts.push_back(text);
    }
    return texts;
}

/// Addresses in random order.
std::vector<std::uint32_t> shuffled_addresses() {
    std::vector<std::uint32_t> addresses;
    std::mt19937 random(1);
    for (std::uint32_t i = 0; i < 65536; ++i) {
        addresses.push_back(static_cast<std::uint32_t>(random() % depth));
    }
    return addresses;
}

struct packed_store {
    explicit packed_store(std::uint32_t size) { words.resize(size, "0"); }
    void set(std::uint32_t address, std::string_view text) { words.set(address, text); }
    std::string_view get(std::uint32_t address) const { return words[address]; }

    kvr::word_store words;
};

struct deque_of_strings {
    explicit deque_of_strings(std::uint32_t size) : words(size, "0") {}
    void set(std::uint32_t address, std::string_view text) { words[address] = text; }
    std::string_view get(std::uint32_t address) const { return words[address]; }

    std::deque<std::string> words;
};

template <class Store>
void set_all(Store& store, const std::vector<std::string>& texts) {
    for (std::uint32_t address = 0; address < depth; ++address) {
        store.set(address, texts[address % samples]);
    }
}

template <class Store>
void set_ascending(benchmark::State& state) {
    const std::vector<std::string> texts = sample_texts(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        auto store = std::make_unique<Store>(depth);
        state.ResumeTiming();
        set_all(*store, texts);
        state.PauseTiming();
        store.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * depth);
}

template <class Store>
void overwrite_ascending(benchmark::State& state) {
    const std::vector<std::string> texts = sample_texts(state.range(0));
    Store store(depth);
    set_all(store, texts);
    for (auto _ : state) {
        set_all(store, texts);
    }
    state.SetItemsProcessed(state.iterations() * depth);
}

template <class Store>
void get_ascending(benchmark::State& state) {
    Store store(depth);
    set_all(store, sample_texts(state.range(0)));
    for (auto _ : state) {
        std::size_t sum = 0;
        for (std::uint32_t address = 0; address < depth; ++address) {
            const std::string_view text = store.get(address);
            sum += text.size() + static_cast<unsigned char>(text.back());
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * depth);
}

template <class Store>
void get_random(benchmark::State& state) {
    Store store(depth);
    set_all(store, sample_texts(state.range(0)));
    const std::vector<std::uint32_t> addresses = shuffled_addresses();
    for (auto _ : state) {
        std::size_t sum = 0;
        for (const std::uint32_t address : addresses) {
            const std::string_view text = store.get(address);
            sum += text.size() + static_cast<unsigned char>(text.back());
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(addresses.size()));
}

} // namespace

// NOLINTNEXTLINE(cppcoreguidelines-macro-usage): it registers by name, which no function can
#define KVR_COMPARE(operation)                                                                               \
    BENCHMARK_TEMPLATE(operation, packed_store)->Arg(2)->Arg(8)->Arg(32)->Arg(0);                            \
    BENCHMARK_TEMPLATE(operation, deque_of_strings)->Arg(2)->Arg(8)->Arg(32)->Arg(0)

KVR_COMPARE(set_ascending);
KVR_COMPARE(overwrite_ascending);
KVR_COMPARE(get_ascending);
KVR_COMPARE(get_random);
