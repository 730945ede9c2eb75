// Each allocation of the handlers fails, one per trial. These handlers have no memory file as owner;
// memory_file_faults_test.cpp tries the calls with an owner.

#include "kvr/memory/hex/hex_file.h"
#include "kvr/memory/memory_file.h"
#include "kvr/memory/mif/mif_file.h"
#include "kvr/memory/rif/rif_file.h"
#include "tests/faults/allocation_faults.h"
#include "tests/memory/error_messages.h"

#include <gtest/gtest.h>

#include <deque>
#include <string>

namespace {

/// Handlers that report to the same memory file.
struct handler_trial {
    KVR_MEMORY_FILE owner;
    KVR_MEMORY_MIF_FILE mif{&owner};
    KVR_MEMORY_HEX_FILE hex{&owner};
    KVR_MEMORY_RIF_FILE rif{&owner};
    bool answer = false;
    std::string text;
    std::deque<std::string> texts;

    std::string outcome() {
        std::string out = text + (answer ? " true" : " false");
        for (unsigned address = 0; address < 4; ++address) {
            out += ' ' + mif.get_mif_data_word(address, RADIX_NONE) + ' ' +
                   hex.get_hex_data_word(address, RADIX_NONE) + ' ' +
                   rif.get_rif_data_word(address, RADIX_NONE);
        }
        for (const std::string& one : texts) {
            out += '|' + one;
        }
        for (const std::string& message : kvr_test::error_messages(owner)) {
            out += '\n' + message;
        }
        return out;
    }
};

const std::string long_comment = "a comment that is longer than what a string holds inside of itself";
const std::string long_digits = "0123456789ABCDEF0123456789ABCDEF0123456789ABCDEF";

void no_words(handler_trial& /*trial*/) {}

void four_words(handler_trial& trial) {
    trial.mif.set_number_of_words(4);
    trial.hex.set_number_of_words(4);
    trial.rif.set_number_of_words(4);
}

void four_words_and_comments(handler_trial& trial) {
    four_words(trial);
    trial.texts.assign({long_comment, long_comment});
    trial.mif.set_comment_deque(1, &trial.texts);
    trial.mif.set_mif_data_comments(&trial.texts);
    trial.texts.clear();
}

void four_words_and_texts(handler_trial& trial) {
    four_words(trial);
    trial.texts.assign({long_comment, long_comment});
}

const kvr_test::faulty_call<handler_trial> handler_calls[] = {
    {"MIF, construction", no_words,
     [](handler_trial& trial) { const KVR_MEMORY_MIF_FILE other(&trial.owner); }},
    {"HEX, construction", no_words,
     [](handler_trial& trial) { const KVR_MEMORY_HEX_FILE other(&trial.owner); }},
    {"RIF, construction", no_words,
     [](handler_trial& trial) { const KVR_MEMORY_RIF_FILE other(&trial.owner); }},
    {"MIF, set_number_of_words", no_words, [](handler_trial& trial) { trial.mif.set_number_of_words(4); }},
    {"HEX, set_number_of_words", no_words, [](handler_trial& trial) { trial.hex.set_number_of_words(4); }},
    {"RIF, set_number_of_words", no_words, [](handler_trial& trial) { trial.rif.set_number_of_words(4); }},
    {"MIF, set a word", four_words,
     [](handler_trial& trial) { trial.answer = trial.mif.set_mif_data_word(2, long_digits, RADIX_HEX); }},
    {"HEX, set a word", four_words,
     [](handler_trial& trial) { trial.answer = trial.hex.set_hex_data_word(2, long_digits, RADIX_HEX); }},
    {"RIF, set a word", four_words,
     [](handler_trial& trial) { trial.answer = trial.rif.set_rif_data_word(2, long_digits, RADIX_HEX); }},
    {"MIF, get a word outside", four_words,
     [](handler_trial& trial) { trial.text = trial.mif.get_mif_data_word(4, RADIX_HEX); }},
    {"HEX, get a word outside", four_words,
     [](handler_trial& trial) { trial.text = trial.hex.get_hex_data_word(4, RADIX_HEX); }},
    {"RIF, get a word outside", four_words,
     [](handler_trial& trial) { trial.text = trial.rif.get_rif_data_word(4, RADIX_HEX); }},
    {"MIF, set a word with a comment", four_words,
     [](handler_trial& trial) {
         trial.answer = trial.mif.set_mif_data_word_with_comments(2, long_digits, long_comment, RADIX_HEX);
     }},
    {"MIF, get_mif_data_comments", four_words_and_comments,
     [](handler_trial& trial) { trial.answer = trial.mif.get_mif_data_comments(&trial.texts); }},
    {"MIF, set_mif_data_comments", four_words_and_texts,
     [](handler_trial& trial) { trial.answer = trial.mif.set_mif_data_comments(&trial.texts); }},
    {"MIF, get_comment_deque", four_words_and_comments,
     [](handler_trial& trial) { trial.answer = trial.mif.get_comment_deque(1, &trial.texts); }},
    {"MIF, set_comment_deque", four_words_and_texts,
     [](handler_trial& trial) { trial.answer = trial.mif.set_comment_deque(1, &trial.texts); }},
    // No file name has been set.
    {"MIF, read", four_words, [](handler_trial& trial) { trial.answer = trial.mif.read_in_mif_file(); }},
    {"HEX, read", four_words, [](handler_trial& trial) { trial.answer = trial.hex.read_in_hex_file(); }},
    {"RIF, read", four_words, [](handler_trial& trial) { trial.answer = trial.rif.read_in_rif_file(); },
     false},
    {"MIF, write", four_words, [](handler_trial& trial) { trial.answer = trial.mif.write_out_mif_file(); }},
    {"HEX, write", four_words, [](handler_trial& trial) { trial.answer = trial.hex.write_out_hex_file(); }},
    {"RIF, write", four_words, [](handler_trial& trial) { trial.answer = trial.rif.write_out_rif_file(); }},
    {"questions", four_words,
     [](handler_trial& trial) {
         trial.answer = trial.mif.can_proceed_with_read() || trial.mif.can_proceed_with_write() ||
                        trial.hex.can_proceed_with_read() || trial.hex.can_proceed_with_write() ||
                        trial.rif.can_proceed_with_read() || trial.rif.can_proceed_with_write() ||
                        trial.rif.check_if_cell_value_is_valid(long_comment);
     },
     false},
};

TEST(MemoryHandlerAllocationFaults, EveryCallSurvivesThem) {
    kvr_test::expect_allocation_faults_survived(handler_calls);
}

} // namespace
