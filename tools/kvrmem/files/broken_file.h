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

/// A file that no command takes, or not with the options that were given. The message is a diagnostic in one
/// line.
class broken_file : public tool_error {
public:
    /// @param name of the file with @p contents, as messages show it
    /// @param after lines that follow the diagnostic
    broken_file(const arguments& given, const kvrimage::diagnostic& found, std::string_view name,
                std::string_view contents, std::string_view after = "");
    /// The diagnostic as `check` shows it, in lines.
    [[nodiscard]] const std::string& shown() const noexcept { return *text; }

private:
    std::shared_ptr<const std::string> text; ///< shared: an exception is copied without an exception
};

/// True for a fault of the command line: an option that its format does not have, or a value that it does not
/// know.
[[nodiscard]] bool is_wrong_usage(const kvrimage::diagnostic& found);

/// The first broken diagnostic of @p result; null when there is none.
[[nodiscard]] const kvrimage::diagnostic* first_broken(const kvrimage::read_result& result);

/// The refusal of @p file, read from @p path, of whose diagnostics @p shown is the one to show.
/// @param later what would be refused next, once the options that @p result asks for are given
[[nodiscard]] broken_file refusal_of(const arguments& given, const std::string& path,
                                     const kvrimage::input_file& file, const kvrimage::read_result& result,
                                     const kvrimage::diagnostic& shown,
                                     std::span<const kvrimage::diagnostic> later = {});

/// The options that the broken ones of @p found ask for, as they suit the addresses that @p given names; none
/// when they are not all that is wrong.
[[nodiscard]] std::vector<std::string> options_asked_for(const arguments& given,
                                                         std::span<const kvrimage::diagnostic> found);

/// "try: kvrmem ...\n": the command line of @p given with what it lacks, where options are all that the
/// broken ones of @p found ask for; else "".
[[nodiscard]] std::string remedy_of(const arguments& given, std::span<const kvrimage::diagnostic> found);

/// The command line that shows all diagnostics of the file @p path, ready to be copied.
[[nodiscard]] std::string check_line(const arguments& given, const std::string& path);

} // namespace kvrmem
