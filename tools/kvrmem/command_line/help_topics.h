#pragma once

#include <span>
#include <string>
#include <string_view>

namespace kvrmem {

/// A page of the help about what several commands have in common. One with the name of a command is a part of
/// that command's help.
struct help_topic {
    std::string_view name;
    std::string_view title;   ///< heading of the page
    std::string_view summary; ///< one line, for the list of the topics
    std::string (*text)();    ///< paragraphs and tables, in lines of at most 100 characters
};

/// In the order in which the help shows them.
[[nodiscard]] std::span<const help_topic> help_topics() noexcept;

/// The topic @p name; null when there is none.
[[nodiscard]] const help_topic* topic_called(std::string_view name) noexcept;

/// The text of the page, under its heading.
[[nodiscard]] std::string page_of(const help_topic& topic);

/// What `kvrmem help` takes: the names of the commands, and of the topics that are none; separated by blanks.
[[nodiscard]] std::string names_with_help();

} // namespace kvrmem
