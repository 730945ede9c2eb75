#include "tools/kvrmem/check/check_output.h"

#include "tools/kvrmem/platform/counted.h"

#include <fmt/format.h>

namespace kvrmem {

std::string check_totals::faults() const {
    const std::string words =
        wrong_words != 0 ? counted(wrong_words, "word") + " with wrong bits" : std::string();
    return found.none() ? words : found.text() + (words.empty() ? "" : ", ") + words;
}

std::string summary_of(const check_totals& totals, const std::string& only) {
    if (totals.files == 0) {
        return "";
    }
    if (!only.empty()) {
        return totals.faulty == 0 ? fmt::format("{}: no faults\n", only)
                                  : fmt::format("{} in {}\n", totals.faults(), only);
    }
    const std::string left_out = totals.refused == 0 ? "" : fmt::format(", {} not checked", totals.refused);
    return totals.faulty == 0 ? fmt::format("{}: no faults{}\n", counted(totals.files, "file"), left_out)
                              : fmt::format("{} in {} of {}{}\n", totals.faults(), totals.faulty,
                                            counted(totals.files + totals.refused, "file"), left_out);
}

} // namespace kvrmem
