#pragma once

#include "tools/kvrmem/check/check_fault.h"
#include "tools/kvrmem/check/check_source.h"
#include "tools/kvrmem/surroundings/json.h"
#include "tools/kvrmem/surroundings/terminal.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace kvrmem {

/// Faults of one severity in one file that are shown as text.
inline constexpr std::size_t shown_faults = 100;
/// Faults of one severity in one file that are told in JSON.
inline constexpr std::size_t told_faults = 10000;

/// The faults of the file @p name for a person: each with its line, a mark under the place, and a hint.
[[nodiscard]] std::string faults_as_text(const std::string& name, const check_source& source,
                                         const fault_list& faults, const painter& paint);

/// "2 errors, 1 warning"
[[nodiscard]] std::string counted_faults(std::uint64_t errors, std::uint64_t warnings);

/// A member of "files" in the schema kvrmem-check-1.
[[nodiscard]] json_value faults_as_json(const std::string& path, const char* format,
                                        const fault_list& faults);

} // namespace kvrmem
