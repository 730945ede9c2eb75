#include "tools/kvrmem/memory/rif_output.h"

#include "tools/kvrmem/memory/word_runs.h"
#include "tools/kvrmem/memory/word_text.h"

#include <fmt/format.h>

#include <string>
#include <string_view>

namespace kvrmem {

namespace {

constexpr std::uint32_t words_per_line = 8;

class rif_writer {
public:
    explicit rif_writer(kvr::output_file& to) : output(to) {}

    void write(std::uint32_t address, std::string_view word) {
        if (address != next || address % words_per_line == 0) {
            output.write(fmt::format("{}@{:x}\n", line_open ? "\n" : "", address));
        }
        output.write(word);
        output.write(' ');
        line_open = true;
        next = std::uint64_t{address} + 1;
    }
    /// Behind the last word; there is one at least.
    void finish() { output.write('\n'); }

private:
    static constexpr std::uint64_t nowhere = ~std::uint64_t{0};

    kvr::output_file& output;
    std::uint64_t next = nowhere;
    bool line_open = false;
};

} // namespace

void write_rif(const memory_image& image, kvr::output_file& output) {
    rif_writer writer(output);
    std::string text;
    for_each_set_run(image.words, [&](const kvr::word_run& run) {
        show_word(run.text, RADIX_HEX, image.width, text);
        for (std::uint64_t address = run.first; address <= run.last; ++address) {
            writer.write(static_cast<std::uint32_t>(address), text);
        }
    });
    writer.finish();
}

} // namespace kvrmem
