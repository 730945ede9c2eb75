#pragma once

#include "kvrimage/files/input_file.h"
#include "kvrimage/formats/format.h"
#include "tools/kvrmem/command_line/option_table.h"
#include "tools/kvrmem/platform/tool_error.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kvrmem {

/// A file that no command accepts, at least with the given options. The message is a diagnostic in one line.
class broken_file : public tool_error {
public:
    /// @param name of the file with @p contents, for messages
    /// @param after lines to follow the diagnostic
    broken_file(const arguments& given, const kvrimage::diagnostic& found, std::string_view name,
                std::string_view contents, std::string_view after = "");
    /// Returns the diagnostic in several lines, as `check` shows it.
    [[nodiscard]] const std::string& shown() const noexcept { return *text; }

private:
    std::shared_ptr<const std::string> text; ///< shared, so that copying the exception does not throw
};

/// Returns whether the fault is in the command line: an option that the format does not have, or an invalid
/// value.
[[nodiscard]] bool is_wrong_usage(const kvrimage::diagnostic& found);

/// Returns the first broken diagnostic of @p result; null if there is none.
[[nodiscard]] const kvrimage::diagnostic* first_broken(const kvrimage::read_result& result);

/// Returns the error for @p file, read from @p path, with its diagnostic @p shown.
/// @param later the obstacles that remain after the options requested by @p result are given
[[nodiscard]] broken_file refusal_of(const arguments& given, const std::string& path,
                                     const kvrimage::input_file& file, const kvrimage::read_result& result,
                                     const kvrimage::diagnostic& shown,
                                     std::span<const kvrimage::diagnostic> later = {});

/// Returns the options that the broken diagnostics of @p found request, adapted to the addresses in @p given;
/// none if these options do not resolve all of them.
[[nodiscard]] std::vector<std::string> options_asked_for(const arguments& given,
                                                         std::span<const kvrimage::diagnostic> found);

/// Returns "try: kvrmem ...\n" with the command line of @p given and its missing options, if options resolve
/// all broken diagnostics of @p found; else "".
[[nodiscard]] std::string remedy_of(const arguments& given, std::span<const kvrimage::diagnostic> found);

/// Returns the command line that shows all diagnostics of the file @p path, ready to be copied.
[[nodiscard]] std::string check_line(const arguments& given, const std::string& path);

} // namespace kvrmem
