#pragma once

#include "kvr/memory/memory_types.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kvrmem {

/// What a person may say behind a command, whichever command it is.
struct arguments {
    std::vector<std::string> files;
    std::optional<KVR_FILE_TYPES> from;
    std::optional<KVR_FILE_TYPES> to;
    std::optional<std::uint32_t> width;
    std::optional<std::uint32_t> depth;
    std::optional<KVR_MEMORY_RADIXES> data_radix;
    std::optional<KVR_MEMORY_RADIXES> address_radix;
    std::optional<std::string> fill;
    bool no_runs = false;
    bool help = false;
};

/// One command of the tool.
struct command {
    const char* name;
    const char* operands; ///< as the usage line shows them
    const char* summary;  ///< one line
    const char* examples; ///< lines of the help, each "  $ …"
    std::size_t least_files;
    std::size_t most_files;
    const char* options; ///< short letters of the options that it takes, see the option table
    void (*run)(const arguments&);
};

/// Takes the words behind the command's name apart.
/// @throws tool_error (wrong usage) for unknown options, bad values, too few or too many files.
[[nodiscard]] arguments parse_arguments(const command& which, int count, char** words);

/// The help for one command: examples first, then usage and options.
[[nodiscard]] std::string help_for(const command& which);

} // namespace kvrmem
