#pragma once

#include <span>
#include <string>
#include <string_view>

namespace kvrmem {

/// A help page on a subject of several commands. A topic with the name of a command is part of that command's
/// help.
struct help_topic {
    std::string_view name;
    std::string_view title;   ///< heading of the page
    std::string_view summary; ///< one line, for the list of topics
    std::string (*text)();    ///< paragraphs and tables, in lines of at most 100 characters
};

/// Returns the topics in the order of the help.
[[nodiscard]] std::span<const help_topic> help_topics() noexcept;

/// Returns the topic @p name; null if there is none.
[[nodiscard]] const help_topic* topic_called(std::string_view name) noexcept;

/// Returns the page with its heading.
[[nodiscard]] std::string page_of(const help_topic& topic);

/// Returns the operands of `kvrmem help`, separated by blanks: the commands and the topics that are not
/// commands.
[[nodiscard]] std::string names_with_help();

} // namespace kvrmem
