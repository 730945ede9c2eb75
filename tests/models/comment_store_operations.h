#pragma once

#include "kvr/memory/store/comment_store.h"
#include "tests/models/choices.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

namespace kvr_test {

/// Makes random changes to a comment store and to a std::deque<std::string>, and compares the results of all
/// ways to read the store with the deque.
class comment_store_operations {
public:
    /// @p source must outlive it.
    explicit comment_store_operations(choices& source);

    /// Makes one change and compares the comments near it. Compares all comments in every 16th step and if
    /// there are few.
    /// @throws std::logic_error that describes the difference and names the change.
    void step();

    /// @throws std::logic_error
    void compare_all();

private:
    // The changes. Each returns an index near the change.
    std::size_t push_front();
    std::size_t append_empty();
    std::size_t insert();
    std::size_t insert_ascending();
    std::size_t insert_descending();
    std::size_t assign();
    std::size_t clear();

    void insert_at(std::size_t index);
    std::string text();
    std::uint32_t some();
    [[nodiscard]] std::size_t any_index() {
        return chosen.below(static_cast<std::uint32_t>(model.size() + 1));
    }
    void compare_around(std::size_t index) const;
    void compare_comment(std::size_t index) const;
    void expect(bool holds, std::string_view what, std::size_t index) const;

    choices& chosen;
    kvr::comment_store comments;
    std::deque<std::string> model;
    std::size_t most_comments;
    std::string_view change; ///< the latest one
    std::uint64_t steps = 0;
};

} // namespace kvr_test
