#pragma once

#include "kvr/memory/store/word_store.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// The expected contents of a word store. It can hold billions of words, because it is a list of stretches of
/// addresses, each with the values that repeat in it.
class word_store_model {
public:
    [[nodiscard]] std::uint32_t size() const { return static_cast<std::uint32_t>(word_count); }
    [[nodiscard]] const std::string& operator[](std::uint32_t address) const;
    [[nodiscard]] std::uint32_t end_of_run(std::uint32_t address) const;

    void resize(std::uint32_t size, const std::string& fill);
    void fill(std::uint32_t first, std::uint32_t last, const std::vector<std::string>& values);

private:
    struct stretch {
        std::uint64_t origin; ///< address of the first value
        std::vector<std::string> values;
    };

    void cut(std::uint64_t address);

    std::uint64_t word_count = 0;
    std::map<std::uint64_t, stretch> stretches; ///< by first address; each ends before the next one
};

/// Changes a store and its model in the same way.
struct compared_stores {
    kvr::word_store words;
    word_store_model model;

    void resize(std::uint32_t size, const std::string& fill);
    void set(std::uint32_t address, const std::string& text);
    void fill(std::uint32_t first, std::uint32_t last, const std::vector<std::string>& values);
};

std::vector<std::string_view> views_of(const std::vector<std::string>& values);

/// Compares the words from @p first to @p last and the runs that start there.
void expect_same_words(const compared_stores& stores, std::uint32_t first, std::uint32_t last);

/// Compares all words, run by run.
void expect_same_runs(const compared_stores& stores);
