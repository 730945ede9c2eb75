#pragma once

#include "kvr/memory/store/page_texts.h"
#include "kvr/memory/store/word_batch.h"
#include "kvr/memory/store/word_store.h"
#include "tests/models/choices.h"
#include "tests/models/random_texts.h"

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace kvr_test {

/// Makes random changes to a word store and to a plain model of it, and compares the results of all ways to
/// read the store with the model.
///
/// The model is a std::deque<std::string>, which cannot hold billions of words. The words before the first
/// address of the deque, the origin, repeat a few values, starting at address 0.
class word_store_operations {
public:
    /// @p source must outlive it.
    explicit word_store_operations(choices& source);

    /// Makes one change and compares the pages around it. Compares all words in every 16th step and if the
    /// store is small.
    /// @throws std::logic_error that describes the difference and names the change.
    void step();

    /// @throws std::logic_error
    void compare_all();

    /// The number of rows of several words and of cycles of several values that the store has returned. It
    /// may be 0.
    [[nodiscard]] std::uint64_t rows() const noexcept { return rows_seen; }
    [[nodiscard]] std::uint64_t cycles() const noexcept { return cycles_seen; }

private:
    struct stretch {
        std::uint32_t first; ///< address
        std::uint32_t count;
    };

    // The changes. Each returns the addresses that it may have changed.
    stretch set();
    stretch set_neighbors();
    stretch set_side_by_side();
    stretch set_page();
    stretch set_in_batch();
    stretch fill();
    stretch fill_from_start();
    stretch resize();
    stretch transform();
    stretch move();

    void batch_some(kvr::word_batch& batch, stretch& changed);
    void put_side_by_side(kvr::word_batch& batch, std::uint32_t first, std::string_view all,
                          std::size_t length);
    void resize_model(std::uint32_t size, const std::string& text);
    std::string side_by_side(std::uint32_t count, std::size_t length);
    std::vector<std::string> some_values();

    [[nodiscard]] std::uint32_t end() const noexcept {
        return origin + static_cast<std::uint32_t>(model.size());
    }
    [[nodiscard]] std::uint32_t any_address() { return chosen.between(origin, end() - 1); }
    [[nodiscard]] stretch any_stretch(std::uint32_t longest);
    [[nodiscard]] std::string& at(std::uint32_t address) { return model[address - origin]; }
    [[nodiscard]] const std::string& at(std::uint32_t address) const { return model[address - origin]; }
    [[nodiscard]] auto from(std::uint32_t address) const { return model.begin() + (address - origin); }

    void compare_around(stretch changed);
    void compare_words(stretch part) const;
    void compare_runs(stretch part) const;
    void compare_rows(stretch part);
    void compare_cycle(std::uint32_t address);
    void compare_before_origin();
    void expect(bool holds, std::string_view what, std::uint32_t address) const {
        if (!holds) {
            fail(what, address);
        }
    }
    [[noreturn]] void fail(std::string_view what, std::uint32_t address) const;

    choices& chosen;
    random_texts texts;
    kvr::page_texts_maker pages;
    kvr::word_store words;
    std::deque<std::string> model;
    std::uint32_t origin = 0;
    std::vector<std::string> before = {"0"}; ///< the repeated words before the origin
    std::uint32_t most_words = 0;            ///< of the model
    std::string_view change;                 ///< the latest one
    std::uint64_t steps = 0;
    std::uint64_t rows_seen = 0;
    std::uint64_t cycles_seen = 0;
};

} // namespace kvr_test
