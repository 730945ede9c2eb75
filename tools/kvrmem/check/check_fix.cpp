#include "tools/kvrmem/check/check_fix.h"

#include "tools/kvrmem/check/check_hex.h"
#include "tools/kvrmem/check/check_mif.h"
#include "tools/kvrmem/check/check_report.h"
#include "tools/kvrmem/check/check_rif.h"

#include <algorithm>

namespace kvrmem {

namespace {

/// Repairs that are made in one go; the next one finds the rest.
constexpr std::size_t repairs_at_once = 100000;
/// A repair can bring to light what the next one mends; this is only for a mistake of ours.
constexpr int most_rounds = 1000;

/// The faults that can be mended, in the order of the file.
std::vector<check_fault> mendable(const fault_list& faults) {
    std::vector<check_fault> found = faults.sorted();
    std::stable_sort(found.begin(), found.end(), [](const check_fault& left, const check_fault& right) {
        return left.mended->offset < right.mended->offset;
    });
    return found;
}

std::string mend(const std::string& text, const std::vector<check_fault>& faults,
                 std::vector<change>& changes) {
    std::string result;
    result.reserve(text.size() + faults.size());
    std::size_t copied = 0;
    for (const check_fault& fault : faults) {
        const repair& each = *fault.mended;
        if (each.offset < copied) {
            continue; // it touches what was just changed; the next round sees
        }
        result.append(text, copied, each.offset - copied).append(each.inserted);
        copied = each.offset + each.removed;
        changes.push_back({fault.line, fault.column, each.what});
    }
    return result.append(text, copied);
}

} // namespace

void check_format(const check_source& source, const input_options& options, fault_list& faults) {
    switch (options.format) {
    case FILE_TYPE_MIF:
        check_mif(source, options, faults);
        break;
    case FILE_TYPE_HEX:
        check_hex(source, options, faults);
        break;
    default:
        check_rif(source, options, faults);
        break;
    }
}

repaired_file repair_faults(const check_source& source, const input_options& options) {
    std::string text = source.text();
    std::vector<change> changes;
    for (int round = 0; round < most_rounds; ++round) {
        fault_list faults(repairs_at_once, fault_list::keeping::mendable);
        check_format(check_source(text), options, faults);
        const std::vector<check_fault> found = mendable(faults);
        if (found.empty()) {
            break;
        }
        text = mend(text, found, changes);
    }
    repaired_file result{check_source(std::move(text)), std::move(changes), fault_list(shown_faults)};
    check_format(result.source, options, result.left);
    return result;
}

} // namespace kvrmem
