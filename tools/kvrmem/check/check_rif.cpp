#include "tools/kvrmem/check/check_rif.h"

#include "kvr/memory/rif/rif_reader.h"
#include "tools/kvrmem/check/check_gaps.h"
#include "tools/kvrmem/memory/fault_text.h"
#include "tools/kvrmem/memory/rif_line.h"
#include "tools/kvrmem/memory/rif_word_judge.h"
#include "tools/kvrmem/memory/word_lines.h"
#include "tools/kvrmem/surroundings/visible_text.h"

#include <fmt/format.h>

#include <string>

namespace kvrmem {

namespace {

/// What the library's reader finds.
class rif_error_collector : public kvr::read_observer {
public:
    explicit rif_error_collector(fault_list& list) : faults(list) {}
    bool fault(const kvr::read_fault& fault, std::string_view text) override {
        fault_text told = describe_rif_fault(fault, text);
        faults.add({severity::error, told.code, fault.line, fault.column, fault.length,
                    std::move(told.message), std::move(told.hint), std::nullopt});
        return true;
    }
    void words(std::uint64_t /*first*/, std::uint64_t /*last*/, std::uint64_t /*line*/) override {}

private:
    fault_list& faults;
};

void find_errors(const check_source& source, fault_list& faults) {
    kvr::rif_memory memory(nullptr);
    rif_error_collector collector(faults);
    kvr::line_source lines = source.lines(kvr::line_source::unlimited);
    kvr::rif_reader(memory, &collector).read(lines);
}

/// What it reads without a word.
class line_checker {
public:
    line_checker(const check_source& checked, const input_options& given, fault_list& list)
        : source(checked),
          options(given),
          faults(list),
          lines(every_address),
          judge(given.width) {}

    void check() {
        kvr::line_source text = source.lines(kvr::line_source::unlimited);
        while (!text.at_end()) {
            const std::string_view raw = text.next_line();
            const std::string_view line = kvr::without_carriage_return(raw, text.line_had_newline());
            ++number;
            if (kvr::is_rif_data(line)) {
                check_words(line);
            } else if (is_rif_address_line(line)) {
                check_address_line(line);
            }
        }
        if (faults.count(severity::error) == 0) {
            check_gaps(lines, options.depth, "the library leaves them empty", faults);
        }
    }

private:
    void add(severity level, const char* code, std::size_t column, std::size_t length, std::string message,
             std::string hint = "") {
        faults.add({level, code, number, column, length, std::move(message), std::move(hint), std::nullopt});
    }

    void check_address_line(std::string_view line) {
        const rif_address_line parts = split_rif_address(line);
        address = kvr::rif_address(line);
        if (!parts.is_proper) {
            std::string effect = "the library drops the words that follow";
            if (address != kvr::rif_address_outside) {
                effect = fmt::format("the library goes on at address {}", address);
            }
            add(severity::warning, "address-syntax", parts.text.begin + 1, parts.text.text.size(),
                fmt::format("'{}' is no '@' with a hexadecimal address", visible(parts.text.text)),
                std::move(effect));
        } else if (address == kvr::rif_address_outside) {
            add(severity::warning, "address-outside", parts.text.begin + 1, parts.text.text.size(),
                fmt::format("address {} does not fit 32 bits", visible(parts.digits)),
                "the library drops the words that follow");
        }
    }

    void check_words(std::string_view line) {
        const std::uint64_t first = address;
        std::size_t end = 0;
        for_each_rif_word(line, [&](const rif_piece& text) {
            check_word(text.text, text.begin + 1);
            check_depth(text.begin + 1, text.text.size());
            ++address;
            end = text.end();
        });
        if (address == first) {
            return;
        }
        const std::size_t begin = line.find_first_not_of(' ');
        const auto before = lines.set(first, address - 1, number);
        if (before) {
            add(severity::warning, "set-twice", begin + 1, end - begin,
                fmt::format("address {} is set twice, already at line {}", before->address, before->line),
                "the later line holds");
        }
    }

    void check_word(std::string_view text, std::size_t column) {
        const auto fault = judge.judge(text);
        if (!fault) {
            return;
        }
        if (fault->is_too_wide) {
            add(options.width ? severity::error : severity::warning, "too-wide", column + fault->begin,
                fault->length, fault->message);
        } else {
            add(severity::warning, "bad-digit", column + fault->begin, fault->length, fault->message,
                "the library reads it unchecked");
        }
    }

    void check_depth(std::size_t column, std::size_t length) {
        if (options.depth && address >= *options.depth && address < kvr::rif_address_outside) {
            add(severity::error, "beyond-depth", column, length,
                address_beyond(std::to_string(address), address, "the given depth", *options.depth));
        }
    }

    const check_source& source;
    const input_options& options;
    fault_list& faults;
    word_lines lines;
    std::uint64_t number = 0;
    std::uint64_t address = 0;
    rif_word_judge judge;
};

} // namespace

void check_rif(const check_source& source, const input_options& options, fault_list& faults) {
    find_errors(source, faults);
    line_checker(source, options, faults).check();
}

} // namespace kvrmem
