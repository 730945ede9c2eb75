#pragma once

#include "kvrimage/formats/format.h"
#include "tools/kvrmem/command_line/option_table.h"
#include "tools/kvrmem/files/memory_input.h"
#include "tools/kvrmem/platform/json.h"

#include <span>
#include <string>

namespace kvrmem {

// The output of writing commands with --json, in the schemas kvrmem-convert-1, kvrmem-join-1, kvrmem-merge-1
// and kvrmem-split-report-1.

/// @throws tool_error (wrong usage) if both the document and @p target go to standard output
void require_json_apart(const arguments& given, const std::string& target);

/// Returns a document with the schema @p schema and `inputs`: file and format of each.
[[nodiscard]] json_value report_on_inputs(const char* schema, std::span<const memory_input> inputs);

/// Returns the file, format, width, depth and number of set words of @p image, written to @p target.
[[nodiscard]] json_value output_as_json(const std::string& target, const kvrimage::memory_image& image,
                                        const kvrimage::write_options& options);

} // namespace kvrmem
