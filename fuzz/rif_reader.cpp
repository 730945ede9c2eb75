// Reads a RIF file by the fast path and by the exact path, then writes it, reads it and writes it again.

#include "kvr/memory/rif/rif_reader.h"

#include "fuzz/exact_bytes.h"
#include "fuzz/input_bytes.h"
#include "fuzz/library_targets.h"
#include "fuzz/resource_limits.h"
#include "fuzz/same_state.h"
#include "fuzz/scratch.h"
#include "kvr/memory/io/line_source.h"
#include "kvr/memory/rif/rif_memory.h"
#include "kvr/memory/rif/rif_writer.h"

#include <array>
#include <string>

namespace kvr_fuzz {

namespace {

constexpr std::array<std::uint32_t, 8> rif_word_sizes = {16, 8, 1, 5, 32, 64, 100, 0};
constexpr std::array<std::uint32_t, 8> rif_depths = {64, 8, 0, 1, 300, 1100, 70000, 0xFFFFFFFF};

class rif_word_observer : public kvr::read_observer {
public:
    explicit rif_word_observer(bool goes_on_after_faults) : goes_on(goes_on_after_faults) {}
    bool fault(const kvr::read_fault& fault, std::string_view text) override {
        expect(fault.column != 0 && fault.column - 1 + fault.length <= text.size(),
               "a fault lies outside of its line");
        faults_seen = true;
        return goes_on;
    }
    void words(std::uint64_t first, std::uint64_t last, std::uint64_t /*line*/) override {
        expect(first <= last, "a line has set a range that descends");
    }
    [[nodiscard]] bool saw_faults() const noexcept { return faults_seen; }

private:
    bool goes_on;
    bool faults_seen = false;
};

struct rif_reading {
    rif_reading(std::uint32_t word_size, std::uint32_t depth) : memory(&owner) {
        memory.word_size = word_size;
        memory.resize_words(depth);
    }

    void read(std::string_view text, kvr::read_observer* observer) {
        kvr::line_source source(text);
        kvr::rif_reader(memory, observer).read(source);
    }

    KVR_MEMORY_FILE owner;
    kvr::rif_memory memory;
};

std::string written(kvr::rif_memory& memory) {
    static const scratch_file file;
    memory.file_name = file.path();
    expect(kvr::write_rif_file(memory) && !memory.error_occurred, "the memory cannot be written");
    return file.contents();
}

void expect_same_after_writing(kvr::rif_memory& memory) {
    const std::string text = written(memory);
    rif_reading again(memory.word_size, memory.number_of_words);
    again.read(text, nullptr);
    expect(again.memory.error_state == ERROR_STATE_NONE, "what was written cannot be read");
    expect(written(again.memory) == text, "what was written and read is written otherwise");
}

} // namespace

void try_rif_reader(std::string_view input) {
    const resource_limits limits(input.size());
    input_bytes settings(input);
    const std::uint32_t word_size = settings.choose(rif_word_sizes);
    const std::uint32_t depth = settings.choose(rif_depths);
    const exact_bytes bytes(settings.rest());

    rif_reading fast(word_size, depth);
    fast.read(bytes.view(), nullptr);
    rif_word_observer stopping(false);
    rif_reading exact(word_size, depth);
    exact.read(bytes.view(), &stopping);
    expect_same_state(fast.memory, exact.memory);
    expect(fast.owner.has_error_messages() == stopping.saw_faults(), "only one way finds a fault");

    if (stopping.saw_faults()) {
        rif_word_observer going_on(true);
        rif_reading whole(word_size, depth);
        whole.read(bytes.view(), &going_on);
        expect(going_on.saw_faults(), "going on after faults changes whether there are some");
    }
    constexpr std::uint32_t few_words = 2048;
    if (word_size != 0 && depth != 0 && depth <= few_words) {
        expect_same_after_writing(fast.memory);
    }
}

} // namespace kvr_fuzz
