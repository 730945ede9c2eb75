#include "kvrimage/diagnostics/visible_text.h"
#include "tools/kvrmem/check/outputs.h"
#include "tools/kvrmem/check/reported_fault.h"
#include "tools/kvrmem/platform/json.h"

#include <fmt/format.h>

#include <cstdint>
#include <map>
#include <string>

namespace kvrmem {

namespace {

/// FNV-1a with 64 bits, which needs no library and stays the same in all versions.
std::uint64_t hash_of(std::string_view text) {
    constexpr std::uint64_t start = 0xCBF29CE484222325;
    constexpr std::uint64_t factor = 0x100000001B3;
    std::uint64_t hash = start;
    for (const char character : text) {
        hash = (hash ^ static_cast<unsigned char>(character)) * factor;
    }
    return hash;
}

const char* severity_of(const reported_fault& fault) {
    if (fault.is_broken) {
        return "critical";
    }
    return fault.is_error ? "major" : "minor";
}

class gitlab_output final : public check_output {
public:
    [[nodiscard]] std::size_t most_diagnostics() const override { return most_in_json; }
    void take(const checked_file& file) override {
        for (const reported_fault& fault : faults_of(file)) {
            for (const kvrimage::place& where : fault.places()) {
                add(file.input.path, where.line, fault.code, {fault.sentence(), fault.lasting_sentence()},
                    severity_of(fault));
            }
        }
    }
    void report_refused(const std::string& path, std::string_view reason) override {
        const std::string text = kvrimage::make_visible(reason).text;
        add(path, 0, "not-checked", {text, text}, "blocker");
    }
    void finish(const check_totals& /*totals*/) override { print_json(findings); }

private:
    struct description {
        std::string shown;
        std::string lasting; ///< input of the fingerprint
    };

    /// @param line 0 for the whole file, which is reported as line 1
    void add(const std::string& path, std::uint64_t line, std::string_view code, const description& text,
             const char* severity) {
        const std::string name = json_name(path);
        findings.push_back({{"description", text.shown},
                            {"check_name", code},
                            {"fingerprint", fingerprint_of(name, code, text.lasting)},
                            {"severity", severity},
                            {"location", {{"path", name}, {"lines", {{"begin", line != 0 ? line : 1}}}}}});
    }
    /// Equal faults get different fingerprints.
    std::string fingerprint_of(const std::string& name, std::string_view code, const std::string& text) {
        const std::string key = fmt::format("{}\n{}\n{}", name, code, text);
        return fmt::format("{:016x}", hash_of(fmt::format("{}\n{}", key, seen[key]++)));
    }

    json_value findings = json_value::array();
    std::map<std::string, std::uint64_t> seen; ///< counts by input of the fingerprint
};

} // namespace

std::unique_ptr<check_output> make_gitlab_output(const arguments& /*given*/) {
    return std::make_unique<gitlab_output>();
}

} // namespace kvrmem
