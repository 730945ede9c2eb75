// Reads a MIF file by the fast paths and by the exact path, then writes it and reads it again.

#include "kvr/memory/mif/mif_reader.h"

#include "fuzz/exact_bytes.h"
#include "fuzz/library_targets.h"
#include "fuzz/resource_limits.h"
#include "fuzz/same_state.h"
#include "fuzz/scratch.h"
#include "kvr/memory/io/line_source.h"
#include "kvr/memory/mif/mif_header.h"
#include "kvr/memory/mif/mif_writer.h"

#include <deque>
#include <string>

namespace kvr_fuzz {

namespace {

/// Makes the reader take the exact path for every line and records the addresses that the lines have set.
class exact_path_observer : public kvr::mif_observer {
public:
    explicit exact_path_observer(bool goes_on_after_faults) : goes_on(goes_on_after_faults) {}

    [[nodiscard]] bool wants_every_line() const override { return true; }
    void content_line(const kvr::mif_content& /*content*/) override {}
    void cut_at_percent(std::string_view /*rest*/, std::uint64_t /*line*/) override {}
    bool fault(const kvr::read_fault& fault, std::string_view /*text*/) override {
        expect(fault.line != 0, "a fault has no line");
        return goes_on;
    }
    void words(std::uint64_t first, std::uint64_t last, std::uint64_t /*line*/) override {
        firsts.push_back(first);
        lasts.push_back(last);
    }

    bool goes_on;
    std::deque<std::uint64_t> firsts;
    std::deque<std::uint64_t> lasts;
};

/// A memory and the file that receives its messages.
struct mif_reading {
    mif_reading() : memory(&owner) { kvr::fill_radix_names(memory); }

    /// Reads @p text; true if it was read up to its END.
    bool read(std::string_view text, kvr::mif_observer* observer) {
        kvr::line_source source(text, kvr::mif_reader::source_limit);
        return kvr::mif_reader(memory, observer).read(source);
    }

    KVR_MEMORY_FILE owner;
    kvr::mif_memory memory;
};

void expect_same_comments(const kvr::mif_memory& left, const kvr::mif_memory& right) {
    std::deque<std::string> left_comments;
    std::deque<std::string> right_comments;
    left.data_comments.copy_to(left_comments);
    right.data_comments.copy_to(right_comments);
    expect(left_comments == right_comments, "the comments differ");
    for (std::size_t index = 0; index < left.header_comments.size(); ++index) {
        const kvr::header_comment_list& list = left.header_comments[index];
        expect(list.lines == right.header_comments[index].lines, "the header comments differ");
        expect(list.count == right.header_comments[index].count, "the counts of header comments differ");
    }
}

/// Compares the memories around @p places, where lines begin and end. The readers can differ there, because
/// only the first runs were compared, and in the addresses that they recorded.
void expect_same_around(const std::deque<std::uint64_t>& places, const kvr::mif_memory& left,
                        const kvr::mif_memory& right) {
    constexpr int few_runs = 4;
    const bool has_more_words = has_many_runs(left.data_words);
    for (const std::uint64_t place : places) {
        const std::uint64_t first = place - (place != 0 ? 1 : 0);
        for (std::uint64_t near = first; near <= place + 1; ++near) {
            const auto address = static_cast<std::uint32_t>(near);
            expect(left.address_set.contains(address) == right.address_set.contains(address),
                   "the sets of addresses differ");
        }
        expect(!has_more_words || same_words(left.data_words, right.data_words, first, few_runs),
               "the words of a line differ");
    }
}

bool has_long_line(std::string_view text) {
    std::size_t begin = 0;
    for (std::size_t end = text.find('\n'); end != text.npos; end = text.find('\n', begin)) {
        if (end - begin > kvr::mif_reader::line_limit) {
            return true;
        }
        begin = end + 1;
    }
    return text.size() - begin > kvr::mif_reader::line_limit;
}

/// Each run takes a line. Comments split runs into single addresses, even in a memory of billions of words.
bool can_be_written(const kvr::mif_memory& memory) {
    constexpr std::uint32_t few_words = 4096;
    return memory.number_of_words > 0 && memory.word_size > 0 && memory.address_radix != RADIX_NONE &&
           memory.memory_radix != RADIX_NONE && !memory.data_words.empty() &&
           (memory.data_comments.empty() || memory.data_words.size() <= few_words) &&
           !has_many_runs(memory.data_words);
}

/// Writes @p memory and reads the result. Header comments and joined values can make lines too long to read.
void expect_same_after_writing(kvr::mif_memory& memory) {
    static const scratch_file file;
    memory.file_name = file.path();
    expect(kvr::write_mif_file(memory), "the memory cannot be written");
    const std::string written = file.contents();
    if (has_long_line(written)) {
        return;
    }
    mif_reading again;
    expect(again.read(written, nullptr), "what was written cannot be read");
    expect(again.memory.word_size == memory.word_size, "the width is another one after writing");
    expect(again.memory.address_radix == memory.address_radix,
           "the address radix is another one after writing");
    expect(again.memory.memory_radix == memory.memory_radix, "the memory radix is another one after writing");
    expect(same_words(again.memory.data_words, memory.data_words), "the words are other ones after writing");
}

/// If a reader stops at a fault of a file, one that continues after faults must not accept the file.
void go_through_all_faults(std::string_view text) {
    mif_reading reading;
    exact_path_observer observer(true);
    expect(!reading.read(text, &observer), "going on after faults changes the verdict");
}

} // namespace

void try_mif_reader(std::string_view input) {
    const resource_limits limits(input.size());
    const exact_bytes bytes(input);
    mif_reading fast;
    const bool complete = fast.read(bytes.view(), nullptr);
    mif_reading exact;
    exact_path_observer observer(false);
    expect(exact.read(bytes.view(), &observer) == complete, "only one way reads the file to its end");
    expect_same_state(fast.memory, exact.memory);
    expect_same_messages(fast.owner, exact.owner);
    expect_same_comments(fast.memory, exact.memory);
    expect_same_around(observer.firsts, fast.memory, exact.memory);
    expect_same_around(observer.lasts, fast.memory, exact.memory);
    if (!complete) {
        go_through_all_faults(bytes.view());
    }
    if (can_be_written(fast.memory)) {
        expect_same_after_writing(fast.memory);
    }
}

} // namespace kvr_fuzz
