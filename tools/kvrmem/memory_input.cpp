#include "tools/kvrmem/memory_input.h"

#include "tools/kvrmem/file_format.h"
#include "tools/kvrmem/hex_input.h"
#include "tools/kvrmem/mif_input.h"
#include "tools/kvrmem/rif_input.h"
#include "tools/kvrmem/tool_error.h"

#include <fmt/format.h>

namespace kvrmem {

namespace {

memory_image read_format(const input_file& file, const input_options& options) {
    switch (options.format) {
    case FILE_TYPE_MIF:
        return read_mif(file, options);
    case FILE_TYPE_HEX:
        return read_hex(file, options);
    default:
        return read_rif(file, options);
    }
}

} // namespace

KVR_FILE_TYPES format_for(const std::optional<KVR_FILE_TYPES>& given, const std::string& path,
                          const char* option) {
    if (given) {
        return *given;
    }
    const auto format = format_of_path(path);
    if (!format) {
        throw tool_error(
            exit_code::wrong_usage,
            fmt::format("{}: the name does not tell the format (.mif, .hex, .ihex, .rif); give {}", path,
                        option));
    }
    return *format;
}

memory_image read_memory(const input_file& file, const input_options& options) {
    memory_image image = read_format(file, options);
    const auto bounds = bounds_of(image.words);
    if (options.depth && bounds && bounds->highest >= *options.depth) {
        const std::uint64_t line = line_that_sets(file, options, bounds->highest);
        throw tool_error(exit_code::bad_input,
                         fmt::format("{}:{}: error: address {} is beyond the depth {} (0 to {})", file.name(),
                                     line, bounds->highest, *options.depth, *options.depth - 1));
    }
    const std::uint32_t found = image.depth != 0 ? image.depth : bounds ? bounds->highest + 1 : 1;
    image.depth = options.depth.value_or(found);
    image.words.resize(image.depth, "");
    return image;
}

std::uint64_t line_that_sets(const input_file& file, const input_options& options, std::uint32_t address) {
    switch (options.format) {
    case FILE_TYPE_MIF:
        return mif_line_that_sets(file, address);
    case FILE_TYPE_HEX:
        return hex_line_that_sets(file, options, address);
    default:
        return rif_line_that_sets(file, address);
    }
}

} // namespace kvrmem
