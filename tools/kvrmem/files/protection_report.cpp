#include "tools/kvrmem/files/protection_report.h"

#include "tools/kvrmem/operations/named_scheme.h"
#include "tools/kvrmem/platform/counted.h"
#include "tools/kvrmem/platform/progress.h"
#include "tools/kvrmem/platform/tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <numeric>
#include <stdexcept>
#include <utility>

namespace kvrmem {

namespace {

using kvrimage::ecc_finding;

/// Returns "address 0x5", "addresses 0x5..0x8", or "addresses 0x5, 0x7..0xB (4 words)".
std::string addresses_of(const ecc_finding& found) {
    if (found.count == 1) {
        return fmt::format("address 0x{:X}", found.address);
    }
    const std::uint64_t last = found.address + (found.count - 1) * found.step;
    if (found.step == 1) {
        return fmt::format("addresses 0x{:X}..0x{:X}", found.address, last);
    }
    return fmt::format("addresses 0x{:X}, 0x{:X}..0x{:X} ({})", found.address, found.address + found.step,
                       last, counted(found.count, "word"));
}

std::uint64_t words_of(const std::vector<ecc_finding>& findings) {
    return std::transform_reduce(findings.begin(), findings.end(), std::uint64_t{0}, std::plus<>(),
                                 [](const ecc_finding& each) { return each.count; });
}

} // namespace

protection_result check_protection(const memory_input& input, const std::string& scheme) {
    const std::string title = fmt::format("{}: --ecc {}", input.name(), scheme);
    try {
        const kvrimage::ecc_scheme bits = scheme_of_protected(scheme, input.image().width());
        show_operation("--ecc " + scheme, input.name());
        return {scheme, kvrimage::check_protection(input.image(), bits), weakness_of(scheme, bits)};
    } catch (const std::invalid_argument& error) {
        usage_error(fmt::format("{}: {}", title, error.what()));
    } catch (const std::domain_error& error) {
        throw tool_error(exit_code::bad_input, fmt::format("{}: {}", title, error.what()));
    }
}

std::vector<std::string> wrong_bits_of(const protection_result& result) {
    std::vector<std::string> texts;
    for (const ecc_finding& each : result.report.findings) {
        texts.push_back(fmt::format("{}: {}", addresses_of(each),
                                    each.bit ? fmt::format("bit {} is wrong", *each.bit)
                                             : "bits are wrong, but the check bits do not identify them"));
    }
    return texts;
}

std::uint64_t words_beyond(const protection_result& result) {
    return result.wrong() - words_of(result.report.findings);
}

std::string protection_as_text(const std::string& name, const protection_result& result) {
    std::string text;
    for (const std::string& each : wrong_bits_of(result)) {
        text += fmt::format("{}: error: {}\n", name, each);
    }
    if (const std::uint64_t beyond = words_beyond(result); beyond != 0) {
        text += fmt::format("{}: {} with wrong bits beyond these\n", name, counted(beyond, "word"));
    }
    return text + fmt::format("{}: {} checked by {}: {}{}\n", name, counted(result.report.checked, "word"),
                              result.scheme,
                              result.wrong() == 0
                                  ? std::string("no wrong bit")
                                  : fmt::format("{} can be corrected, {} cannot", result.report.corrected,
                                                result.report.damaged),
                              result.weakness);
}

json_value protection_as_json(const protection_result& result) {
    json_value findings = json_value::array();
    for (const ecc_finding& each : result.report.findings) {
        findings.push_back({{"address", each.address},
                            {"count", each.count},
                            {"step", each.step},
                            {"bit", each.bit ? json_value(*each.bit) : json_value(nullptr)}});
    }
    return {{"scheme", json_name(result.scheme)},
            {"checked", result.report.checked},
            {"corrected", result.report.corrected},
            {"damaged", result.report.damaged},
            {"findings", std::move(findings)}};
}

} // namespace kvrmem
