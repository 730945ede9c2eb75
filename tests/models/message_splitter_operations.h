#pragma once

#include "tests/models/choices.h"
#include "tools/kvrmem/lsp/message_splitter.h"

#include <string>
#include <string_view>
#include <vector>

namespace kvr_test {

/// Feeds streams of messages to a message_splitter in random pieces, and compares the resulting messages with
/// those of the whole stream.
class message_splitter_operations {
public:
    /// @p source must outlive it.
    explicit message_splitter_operations(choices& source) : chosen(source) {}

    /// Feeds more bytes.
    /// @throws std::logic_error that describes the difference
    void step();
    /// @throws std::logic_error that describes the difference
    void compare_all();

private:
    [[nodiscard]] std::string more_bytes();
    void split_messages();
    [[nodiscard]] std::vector<std::string> plain_messages() const;

    choices& chosen;
    std::string stream;             ///< everything that was fed
    std::vector<std::string> found; ///< the messages that came out
    kvrmem::lsp::message_splitter splitter{limits};
    static constexpr kvrmem::lsp::message_limits limits = {.message = 40, .skipped = 90, .header = 60};
};

} // namespace kvr_test
