#include "tests/memory/store/word_store_model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

const std::string& word_store_model::operator[](std::uint32_t address) const {
    const auto& [first, held] = *std::prev(stretches.upper_bound(address));
    return held.values[(address - held.origin) % held.values.size()];
}

std::uint32_t word_store_model::end_of_run(std::uint32_t address) const {
    const std::string& text = (*this)[address];
    std::uint64_t next = std::uint64_t{address} + 1;
    while (next < word_count && (*this)[static_cast<std::uint32_t>(next)] == text) {
        const auto following = stretches.upper_bound(next);
        const bool single_value = std::prev(following)->second.values.size() == 1;
        next = !single_value ? next + 1 : following != stretches.end() ? following->first : word_count;
    }
    return static_cast<std::uint32_t>(next - 1);
}

void word_store_model::resize(std::uint32_t size, const std::string& fill) {
    if (size > word_count) {
        stretches[word_count] = {word_count, {fill}};
    } else {
        stretches.erase(stretches.lower_bound(size), stretches.end());
    }
    word_count = size;
}

void word_store_model::fill(std::uint32_t first, std::uint32_t last, const std::vector<std::string>& values) {
    const std::uint64_t end = std::uint64_t{last} + 1;
    cut(end);
    cut(first);
    stretches.erase(stretches.lower_bound(first), stretches.lower_bound(end));
    const bool all_equal = std::all_of(values.begin(), values.end(),
                                       [&](const std::string& value) { return value == values.front(); });
    stretches[first] = {first, all_equal ? std::vector<std::string>{values.front()} : values};
}

/// Begins a new stretch at @p address.
void word_store_model::cut(std::uint64_t address) {
    if (address < word_count && stretches.count(address) == 0) {
        stretches[address] = std::prev(stretches.upper_bound(address))->second;
    }
}

void compared_stores::resize(std::uint32_t size, const std::string& fill) {
    words.resize(size, fill);
    model.resize(size, fill);
}

void compared_stores::set(std::uint32_t address, const std::string& text) {
    words.set(address, text);
    model.fill(address, address, {text});
}

void compared_stores::fill(std::uint32_t first, std::uint32_t last, const std::vector<std::string>& values) {
    words.fill(first, last, views_of(values));
    model.fill(first, last, values);
}

std::vector<std::string_view> views_of(const std::vector<std::string>& values) {
    return {values.begin(), values.end()};
}

namespace {

/// Compares the row at @p address, if there is one.
void expect_same_row(const compared_stores& stores, std::uint32_t address) {
    const kvr::word_row row = stores.words.row_at(address);
    ASSERT_LE(row.count, stores.model.size() - address);
    for (const std::uint32_t i : {0U, 1U, row.count / 2, row.count - 1}) {
        if (i < row.count) {
            ASSERT_EQ(row[i], stores.model[address + i]) << "in the row at " << address;
        }
    }
}

} // namespace

void expect_same_words(const compared_stores& stores, std::uint32_t first, std::uint32_t last) {
    for (std::uint64_t i = first; i <= last; ++i) {
        const auto address = static_cast<std::uint32_t>(i);
        ASSERT_EQ(stores.words[address], stores.model[address]) << "at " << address;
        const kvr::word_run run = stores.words.run_at(address);
        ASSERT_EQ(run.first, address);
        ASSERT_EQ(run.last, stores.model.end_of_run(address)) << "at " << address;
        ASSERT_EQ(run.text, stores.model[address]) << "at " << address;
        expect_same_row(stores, address);
    }
}

void expect_same_runs(const compared_stores& stores) {
    ASSERT_EQ(stores.words.size(), stores.model.size());
    ASSERT_EQ(stores.words.empty(), stores.model.size() == 0);
    for (std::uint64_t next = 0; next < stores.model.size();) {
        const auto address = static_cast<std::uint32_t>(next);
        const kvr::word_run run = stores.words.run_at(address);
        ASSERT_EQ(run.first, address);
        ASSERT_EQ(run.last, stores.model.end_of_run(address)) << "at " << address;
        ASSERT_EQ(run.text, stores.model[address]) << "at " << address;
        next = std::uint64_t{run.last} + 1;
    }
}
