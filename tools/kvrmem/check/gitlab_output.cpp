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

/// A hash that no library is needed for, and that no version changes: FNV-1a with 64 bits.
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
        std::string lasting; ///< what the fingerprint is of
    };

    /// @param line 0 for the file as a whole, which the report has no other word for than its first line
    void add(const std::string& path, std::uint64_t line, std::string_view code, const description& text,
             const char* severity) {
        const std::string name = json_name(path);
        findings.push_back({{"description", text.shown},
                            {"check_name", code},
                            {"fingerprint", fingerprint_of(name, code, text.lasting)},
                            {"severity", severity},
                            {"location", {{"path", name}, {"lines", {{"begin", line != 0 ? line : 1}}}}}});
    }
    /// Of several equal ones, each has another.
    std::string fingerprint_of(const std::string& name, std::string_view code, const std::string& text) {
        const std::string key = fmt::format("{}\n{}\n{}", name, code, text);
        return fmt::format("{:016x}", hash_of(fmt::format("{}\n{}", key, seen[key]++)));
    }

    json_value findings = json_value::array();
    std::map<std::string, std::uint64_t> seen; ///< how often, by what the fingerprint is of
};

} // namespace

std::unique_ptr<check_output> make_gitlab_output(const arguments& /*given*/) {
    return std::make_unique<gitlab_output>();
}

} // namespace kvrmem
