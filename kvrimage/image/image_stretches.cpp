#include "kvrimage/image/image_words.h"
#include "kvrimage/image/memory_image.h"
#include "kvrimage/image/word_runs.h"
#include "kvrimage/image/word_text.h"

#include <limits>
#include <stdexcept>
#include <string>

namespace kvrimage {

void memory_image::fill_unset(const word& value) {
    if (value.width() != bits) {
        throw std::invalid_argument("the word has another width than the memory");
    }
    const std::string text = text_of_word(value);
    const auto skip_cycle = [](const text_cycle& cycle) { return length_of(cycle); };
    for_each_cycle_or_run(*contents, skip_cycle, [this, &text](const text_run& run) {
        if (run.text.empty()) {
            contents->fill(run.first, run.last, {text});
        }
    });
}

void memory_image::resize(std::uint64_t depth) {
    if (depth == 0 || depth > deepest_memory) {
        throw std::invalid_argument("a memory has 1 to 2^32 words");
    }
    if (depth - 1 > std::numeric_limits<std::uint64_t>::max() - lowest) {
        throw std::invalid_argument("addresses have 64 bits");
    }
    contents->resize(depth);
}

repetition memory_image::repetition_at(std::uint64_t address) const {
    if (address < lowest || address > last_address()) {
        throw std::out_of_range("the address is not in the memory");
    }
    const text_cycle cycle = contents->cycle_at(address - lowest);
    if (cycle.period > 1) {
        return {lowest + cycle.last, cycle.period};
    }
    return {lowest + contents->run_at(address - lowest).last, 1};
}

} // namespace kvrimage
