#pragma once

#include "fuzz/expectation.h"
#include "fuzz/same_words.h"
#include "kvr/memory/memory_file.h"
#include "kvr/memory/memory_state.h"

namespace kvr_fuzz {

/// Expects that the two memories are equal in everything that the formats have in common.
inline void expect_same_state(const kvr::memory_state& left, const kvr::memory_state& right) {
    expect(left.number_of_words == right.number_of_words, "the depths differ");
    expect(left.word_size == right.word_size, "the widths differ");
    expect(left.address_radix == right.address_radix, "the address radixes differ");
    expect(left.memory_radix == right.memory_radix, "the memory radixes differ");
    expect(left.error_occurred == right.error_occurred, "one of the reads failed");
    expect(left.error_state == right.error_state, "the error states differ");
    expect(left.invalid_line_number == right.invalid_line_number, "the invalid line numbers differ");
    expect(same_words(left.data_words, right.data_words), "the words differ");
}

/// Expects that both have the same error messages.
inline void expect_same_messages(KVR_MEMORY_FILE& left, KVR_MEMORY_FILE& right) {
    left.reset_error_message_list();
    right.reset_error_message_list();
    bool more = true;
    while (more) {
        const std::string message = left.get_next_error_message();
        expect(message == right.get_next_error_message(), "the messages differ");
        more = !message.empty();
    }
}

} // namespace kvr_fuzz
