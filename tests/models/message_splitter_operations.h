#pragma once

#include "tests/models/choices.h"
#include "tools/kvrmem/lsp/message_splitter.h"

#include <string>
#include <string_view>
#include <vector>

namespace kvr_test {

/// Feeds streams of messages in random pieces to a message_splitter, and compares what comes out with the
/// messages of the stream as a whole.
class message_splitter_operations {
public:
    /// @p source must outlive it.
    explicit message_splitter_operations(choices& source) : chosen(source) {}

    /// Feeds some more bytes.
    /// @throws std::logic_error that says what differs
    void step();
    /// @throws std::logic_error that says what differs
    void compare_all();

private:
    [[nodiscard]] std::string more_bytes();
    void split_messages();
    [[nodiscard]] std::vector<std::string> plain_messages() const;

    choices& chosen;
    std::string stream;             ///< all that was fed
    std::vector<std::string> found; ///< what has come out
    kvrmem::lsp::message_splitter splitter{limits};
    static constexpr kvrmem::lsp::message_limits limits = {.message = 40, .skipped = 90, .header = 60};
};

} // namespace kvr_test
