#pragma once

#include "kvr/memory/read_fault.h"

#include <cstdint>
#include <ostream>

namespace kvr_test {

/// A fault that can be compared and printed.
struct seen_fault {
    seen_fault(kvr::fault_code what, std::uint64_t on_line, std::uint32_t from, std::uint32_t bytes)
        : code(what),
          line(on_line),
          column(from),
          length(bytes) {}
    seen_fault(const kvr::read_fault& fault)
        : seen_fault(fault.code, fault.line, fault.column, fault.length) {}

    friend bool operator==(const seen_fault&, const seen_fault&) = default;
    friend std::ostream& operator<<(std::ostream& stream, const seen_fault& fault) {
        return stream << "code " << static_cast<int>(fault.code) << " line " << fault.line << " column "
                      << fault.column << " length " << fault.length;
    }

    kvr::fault_code code;
    std::uint64_t line;
    std::uint32_t column;
    std::uint32_t length;
};

} // namespace kvr_test
