// Each allocation of each member of the memory file fails, one per trial.

#include "kvr/memory/memory_file.h"
#include "tests/faults/allocation_faults.h"
#include "tests/memory/error_messages.h"
#include "tests/memory/temporary_directory.h"
#include "tests/util/working_directory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <deque>
#include <sstream>
#include <string>

namespace {

/// A memory file that reads and writes "memory.txt" in the working directory.
struct memory_trial {
    KVR_MEMORY_FILE file;
    bool answer = false;
    std::string text;
    std::deque<std::string> texts;

    memory_trial() {
        // Otherwise a file of an earlier trial could be taken for the result.
        std::remove("memory.txt");
    }
    std::string outcome();

private:
    void print_settings(std::ostream& out) const;
    void print_words(std::ostream& out);
    void print_comments(std::ostream& out);
    void print_messages(std::ostream& out);
};

void memory_trial::print_settings(std::ostream& out) const {
    out << file.get_file_type() << ' ' << file.get_number_of_words() << ' ' << file.get_word_size() << ' '
        << file.get_memory_radix() << ' ' << file.get_address_radix() << ' ' << file.get_error_occurred()
        << ' ' << file.get_file_not_found() << ' ' << file.get_invalid_line_number() << ' '
        << file.get_error_state() << ' ' << file.get_lowest_address() << ' ' << file.get_highest_address()
        << ' ' << file.get_file_name() << ' ' << file.can_proceed_with_read() << file.can_proceed_with_write()
        << '\n';
}

void memory_trial::print_words(std::ostream& out) {
    constexpr unsigned most = 5000;
    const unsigned count = file.get_number_of_words();
    for (unsigned address = 0; address < std::min(count, most); ++address) {
        out << file.get_data_word(address, RADIX_NONE) << ' ';
    }
    out << (count > most ? file.get_data_word(count - 1, RADIX_NONE) : "") << '\n';
}

void memory_trial::print_comments(std::ostream& out) {
    std::deque<std::string> comments;
    for (int index = 0; index < 6; ++index) {
        out << file.get_comment_deque(index, &comments) << ':';
        for (const std::string& comment : comments) {
            out << comment << '|';
        }
    }
    comments.clear();
    out << file.get_data_comments(&comments) << ':';
    for (const std::string& comment : comments) {
        out << comment << '|';
    }
    out << '\n';
}

void memory_trial::print_messages(std::ostream& out) {
    file.reset_error_message_list();
    file.reset_warning_message_list();
    file.reset_info_message_list();
    for (auto next : {&KVR_MEMORY_FILE::get_next_error_message, &KVR_MEMORY_FILE::get_next_warning_message,
                      &KVR_MEMORY_FILE::get_next_info_message}) {
        for (std::string message = (file.*next)(); !message.empty(); message = (file.*next)()) {
            out << message << '\n';
        }
    }
}

std::string memory_trial::outcome() {
    std::ostringstream out;
    out << answer << ' ' << text << '\n';
    for (const std::string& one : texts) {
        out << one << '|';
    }
    print_settings(out);
    print_words(out);
    print_comments(out);
    print_messages(out);
    out << kvr_test::content_of("memory.txt");
    return std::move(out).str();
}

// A text that is too long to be stored without an allocation.
const std::string text_of_its_own = "a text that is longer than what a string holds inside of itself";
const std::string long_word = "0123456789ABCDEF0123456789ABCDEF0123456789ABCDEF";

constexpr unsigned long_word_bits = 192;

void nothing(memory_trial& /*trial*/) {}

template <KVR_FILE_TYPES Type>
void empty_memory(memory_trial& trial) {
    trial.file.set_file_type(Type);
    trial.file.set_file_name("memory.txt");
    trial.file.set_word_size(long_word_bits);
    trial.file.set_memory_radix(RADIX_HEX);
    trial.file.set_address_radix(RADIX_HEX);
}

/// Words that are equal, words that differ, and words of several lengths.
template <KVR_FILE_TYPES Type>
void filled_memory(memory_trial& trial) {
    empty_memory<Type>(trial);
    trial.file.set_number_of_words(40);
    trial.file.set_data_word(1, long_word, RADIX_HEX);
    trial.file.set_data_word(2, "5", RADIX_HEX);
    trial.file.set_data_word(39, "A", RADIX_HEX);
}

/// More than one page of packed words.
template <KVR_FILE_TYPES Type>
void packed_memory(memory_trial& trial) {
    empty_memory<Type>(trial);
    trial.file.set_word_size(16);
    trial.file.set_number_of_words(1200);
    for (unsigned address = 0; address < 1200; ++address) {
        trial.file.set_data_word(address, std::to_string(address), RADIX_HEX);
    }
}

void all_handlers(memory_trial& trial) {
    for (const KVR_FILE_TYPES type : {FILE_TYPE_HEX, FILE_TYPE_RIF, FILE_TYPE_MIF}) {
        trial.file.set_file_type(type);
    }
}

void texts_for_comments(memory_trial& trial) {
    filled_memory<FILE_TYPE_MIF>(trial);
    trial.texts.assign({text_of_its_own, "short", text_of_its_own + text_of_its_own});
}

void commented_memory(memory_trial& trial) {
    texts_for_comments(trial);
    for (int index = 0; index < 6; ++index) {
        trial.file.set_comment_deque(index, &trial.texts);
    }
    trial.file.set_data_comments(&trial.texts);
}

void messages(memory_trial& trial) {
    for (int count = 0; count < 3; ++count) {
        trial.file.add_error_message(text_of_its_own);
        trial.file.add_warning_message(text_of_its_own);
        trial.file.add_info_message(text_of_its_own);
    }
    trial.file.reset_error_message_list();
    trial.file.reset_warning_message_list();
    trial.file.reset_info_message_list();
}

/// Writes @p content to the file and selects it, with the type @p type, for @p trial.
void file_of(memory_trial& trial, KVR_FILE_TYPES type, const std::string& content) {
    kvr_test::write_content("memory.txt", content);
    trial.file.set_file_type(type);
    trial.file.set_file_name("memory.txt");
}

void mif_file(memory_trial& trial) {
    file_of(
        trial, FILE_TYPE_MIF,
        "-- " + text_of_its_own + "\nWIDTH=192; -- " + text_of_its_own + "\nDEPTH=64;\n% " + text_of_its_own +
            " %\nADDRESS_RADIX=HEX;\nDATA_RADIX=HEX;\nCONTENT\nBEGIN\n0 : " + long_word +
            ";\n1 : 1 2 3;\n[8..F] : A B C;\n10 :\n11;\n[20..3F] : 7;\nEND;\n-- " + text_of_its_own + "\n");
}

/// Lines in the form of a writer, which are read in runs.
void regular_mif_file(memory_trial& trial) {
    std::string lines = "WIDTH=16;\nDEPTH=1500;\nADDRESS_RADIX=HEX;\nDATA_RADIX=HEX;\nCONTENT BEGIN\n";
    for (unsigned address = 0; address < 1500; ++address) {
        std::array<char, 32> line{};
        const int length =
            std::snprintf(line.data(), line.size(), "\t%03x  :   %04X;\n", address, address * 37U);
        lines.append(line.data(), static_cast<std::size_t>(length));
    }
    file_of(trial, FILE_TYPE_MIF, lines + "END;\n");
}

void bad_mif_file(memory_trial& trial) {
    file_of(trial, FILE_TYPE_MIF,
            "WIDTH=8;\nDEPTH=16;\nCONTENT BEGIN\n0 : 1;\n[9..3] : " + long_word + ";\nEND;\n");
}

void long_line_of_mif(memory_trial& trial) {
    file_of(trial, FILE_TYPE_MIF,
            "WIDTH=8;\nDEPTH=16;\nCONTENT BEGIN\n0 : " + std::string(600, '1') + ";\nEND;\n");
}

void huge_mif_file(memory_trial& trial) {
    file_of(trial, FILE_TYPE_MIF,
            "WIDTH=8;\nDEPTH=2147483647;\nCONTENT BEGIN\n[0..7FFFFFFE] : 1 2 3;\n7F0000 : FF;\nEND;\n");
}

void hex_file(memory_trial& trial) {
    // A read uses the offset of the previous read first. This file sets the same offset, so a second read
    // gives the same words.
    file_of(trial, FILE_TYPE_HEX,
            text_of_its_own +
                "\n:020000040000FA\n:0100000001FE\n:0100010002FC\n:020000040001F9\n:01000000AA55\n" +
                ":020000021000EC\n:02000000 0102FB\n:00000001FF\n");
}

void regular_hex_file(memory_trial& trial) {
    std::string lines;
    for (unsigned address = 0; address < 1500; ++address) {
        const unsigned high = address >> 8U;
        const unsigned low = address & 255U;
        const unsigned sum = (4U + high + low + 0xA0U + 3U * low) & 255U;
        std::array<char, 32> line{};
        const int length = std::snprintf(line.data(), line.size(), ":04%04X00A0%02X%02X%02X%02X\n", address,
                                         low, low, low, (256U - sum) & 255U);
        lines.append(line.data(), static_cast<std::size_t>(length));
    }
    file_of(trial, FILE_TYPE_HEX, lines + ":00000001FF\n");
    trial.file.set_word_size(32);
}

void bad_hex_file(memory_trial& trial) {
    file_of(trial, FILE_TYPE_HEX, ":0100000001FE\n:20000000" + long_word + "00\n:00000001FF\n");
}

void long_line_of_hex(memory_trial& trial) {
    file_of(trial, FILE_TYPE_HEX, ":" + std::string(700, '0') + "\n");
}

void rif_of(memory_trial& trial, const std::string& content) {
    file_of(trial, FILE_TYPE_RIF, content);
    trial.file.set_word_size(long_word_bits);
    trial.file.set_number_of_words(1500);
}

void rif_file(memory_trial& trial) {
    rif_of(trial, "\n@0\n" + long_word + " 1 2 \n@10\nab Xu\n@FFFFF\n1 \n@20\n" + long_word);
}

void regular_rif_file(memory_trial& trial) {
    std::string lines;
    for (unsigned address = 0; address < 1500; ++address) {
        std::array<char, 32> text{};
        const int length =
            address % 8 == 0 ? std::snprintf(text.data(), text.size(), "\n@%x\n%04X ", address, address * 41U)
                             : std::snprintf(text.data(), text.size(), "%04X ", address * 41U);
        lines.append(text.data(), static_cast<std::size_t>(length));
    }
    rif_of(trial, lines);
}

void bad_rif_file(memory_trial& trial) {
    rif_of(trial, "\n@0\n1 \n" + long_word + " G \n");
}

template <KVR_FILE_TYPES Type>
void without_folder(memory_trial& trial) {
    filled_memory<Type>(trial);
    trial.file.set_file_name("no such folder/" + text_of_its_own);
}

/// Comments accumulate over reads, so a trial removes them before it starts again.
void remove_comments(memory_trial& trial) {
    for (int index = 0; index < 6; ++index) {
        trial.file.set_comment_deque(index, &trial.texts);
    }
    trial.file.set_data_comments(&trial.texts);
}

void read_call(memory_trial& trial) {
    remove_comments(trial);
    trial.answer = trial.file.read_file();
}
void write_call(memory_trial& trial) {
    trial.answer = trial.file.write_file();
}
void set_long_word(memory_trial& trial) {
    trial.answer = trial.file.set_data_word(3, long_word, RADIX_HEX);
}
void set_word_in_binary(memory_trial& trial) {
    trial.answer = trial.file.set_data_word(3, long_word, RADIX_BIN);
}
void set_word_outside(memory_trial& trial) {
    trial.answer = trial.file.set_data_word(40, long_word, RADIX_HEX);
}
void set_commented_word(memory_trial& trial) {
    trial.answer = trial.file.set_data_word_with_comments(3, long_word, text_of_its_own, RADIX_HEX);
}
template <KVR_MEMORY_RADIXES Radix>
void get_long_word(memory_trial& trial) {
    trial.text = trial.file.get_data_word(1, Radix);
}
void get_word_outside(memory_trial& trial) {
    trial.text = trial.file.get_data_word(40, RADIX_HEX);
}

const kvr_test::faulty_call<memory_trial> construction_and_settings[] = {
    {"construction", nothing, [](memory_trial& /*trial*/) { const KVR_MEMORY_FILE other; }},
    {"set_file_type, MIF", nothing, [](memory_trial& trial) { trial.file.set_file_type(FILE_TYPE_MIF); }},
    {"set_file_type, HEX", nothing, [](memory_trial& trial) { trial.file.set_file_type(FILE_TYPE_HEX); }},
    {"set_file_type, RIF", nothing, [](memory_trial& trial) { trial.file.set_file_type(FILE_TYPE_RIF); }},
    {"set_file_type, unknown", nothing,
     [](memory_trial& trial) { trial.file.set_file_type(FILE_TYPE_UNSET); }, false},
    {"set_file_type, a second time", all_handlers,
     [](memory_trial& trial) { trial.file.set_file_type(FILE_TYPE_HEX); }, false},
    {"set_word_size", all_handlers, [](memory_trial& trial) { trial.file.set_word_size(7); }, false},
    {"set_memory_radix", all_handlers, [](memory_trial& trial) { trial.file.set_memory_radix(RADIX_OCT); },
     false},
    {"set_address_radix", all_handlers, [](memory_trial& trial) { trial.file.set_address_radix(RADIX_OCT); },
     false},
    {"set_dont_consolidate_data", all_handlers,
     [](memory_trial& trial) { trial.file.set_dont_consolidate_data(true); }, false},
    {"set_file_name", all_handlers, [](memory_trial& trial) { trial.file.set_file_name(text_of_its_own); }},
    {"set_memory_initialize_value", all_handlers,
     [](memory_trial& trial) { trial.file.set_memory_initialize_value(long_word); }},
    {"set_number_of_words, growing", all_handlers,
     [](memory_trial& trial) { trial.file.set_number_of_words(100000); }},
    {"set_number_of_words, growing after words", filled_memory<FILE_TYPE_MIF>,
     [](memory_trial& trial) { trial.file.set_number_of_words(100000); }},
    {"set_number_of_words, shrinking", packed_memory<FILE_TYPE_MIF>,
     [](memory_trial& trial) { trial.file.set_number_of_words(1100); }, false},
    {"get_file_name", without_folder<FILE_TYPE_MIF>,
     [](memory_trial& trial) { trial.text = trial.file.get_file_name(); }},
    {"getters of numbers", filled_memory<FILE_TYPE_MIF>,
     [](memory_trial& trial) {
         trial.answer = trial.file.get_number_of_words() == 40 && trial.file.get_word_size() == 192 &&
                        trial.file.get_memory_radix() == RADIX_HEX &&
                        trial.file.get_address_radix() == RADIX_HEX && !trial.file.get_error_occurred() &&
                        !trial.file.get_file_not_found() && trial.file.get_invalid_line_number() == 0 &&
                        trial.file.get_error_state() == ERROR_STATE_NONE &&
                        trial.file.get_lowest_address() == 0 && trial.file.get_highest_address() == 40 &&
                        trial.file.get_file_type() == FILE_TYPE_MIF && !trial.file.can_proceed_with_read() &&
                        trial.file.can_proceed_with_write();
     },
     false},
};

const kvr_test::faulty_call<memory_trial> words_and_comments[] = {
    {"set_data_word, MIF", filled_memory<FILE_TYPE_MIF>, set_long_word},
    {"set_data_word, HEX", filled_memory<FILE_TYPE_HEX>, set_long_word},
    {"set_data_word, RIF", filled_memory<FILE_TYPE_RIF>, set_long_word},
    {"set_data_word, MIF, another radix", filled_memory<FILE_TYPE_MIF>, set_word_in_binary},
    {"set_data_word, HEX, another radix", filled_memory<FILE_TYPE_HEX>, set_word_in_binary},
    {"set_data_word, RIF, another radix", filled_memory<FILE_TYPE_RIF>, set_word_in_binary},
    {"set_data_word among packed words", packed_memory<FILE_TYPE_MIF>, set_word_in_binary},
    {"set_data_word, MIF, outside", filled_memory<FILE_TYPE_MIF>, set_word_outside},
    {"set_data_word, HEX, outside", filled_memory<FILE_TYPE_HEX>, set_word_outside},
    {"set_data_word, RIF, outside", filled_memory<FILE_TYPE_RIF>, set_word_outside},
    {"get_data_word, MIF, as it stands", filled_memory<FILE_TYPE_MIF>, get_long_word<RADIX_NONE>},
    {"get_data_word, MIF, binary", filled_memory<FILE_TYPE_MIF>, get_long_word<RADIX_BIN>},
    {"get_data_word, HEX, decimal", filled_memory<FILE_TYPE_HEX>, get_long_word<RADIX_DEC>},
    {"get_data_word, RIF, octal", filled_memory<FILE_TYPE_RIF>, get_long_word<RADIX_OCT>},
    {"get_data_word, MIF, outside", filled_memory<FILE_TYPE_MIF>, get_word_outside},
    {"get_data_word, HEX, outside", filled_memory<FILE_TYPE_HEX>, get_word_outside},
    {"get_data_word, RIF, outside", filled_memory<FILE_TYPE_RIF>, get_word_outside},
    {"set_data_word_with_comments, the first", filled_memory<FILE_TYPE_MIF>, set_commented_word},
    {"set_data_word_with_comments, another", commented_memory, set_commented_word},
    {"get_data_comments", commented_memory,
     [](memory_trial& trial) { trial.answer = trial.file.get_data_comments(&trial.texts); }},
    {"set_data_comments", texts_for_comments,
     [](memory_trial& trial) { trial.answer = trial.file.set_data_comments(&trial.texts); }},
    {"get_comment_deque", commented_memory,
     [](memory_trial& trial) { trial.answer = trial.file.get_comment_deque(2, &trial.texts); }},
    {"set_comment_deque", texts_for_comments,
     [](memory_trial& trial) { trial.answer = trial.file.set_comment_deque(2, &trial.texts); }},
};

const kvr_test::faulty_call<memory_trial> message_lists[] = {
    {"add_error_message", messages,
     [](memory_trial& trial) { trial.file.add_error_message(text_of_its_own); }},
    {"add_warning_message", messages,
     [](memory_trial& trial) { trial.file.add_warning_message(text_of_its_own); }},
    {"add_info_message", messages, [](memory_trial& trial) { trial.file.add_info_message(text_of_its_own); }},
    {"get_next_error_message", messages,
     [](memory_trial& trial) { trial.text = trial.file.get_next_error_message(); }},
    {"get_next_warning_message", messages,
     [](memory_trial& trial) { trial.text = trial.file.get_next_warning_message(); }},
    {"get_next_info_message", messages,
     [](memory_trial& trial) { trial.text = trial.file.get_next_info_message(); }},
    {"has and reset", messages,
     [](memory_trial& trial) {
         trial.answer = trial.file.has_error_messages() && trial.file.has_warning_messages() &&
                        trial.file.has_info_messages();
         trial.file.reset_error_message_list();
         trial.file.reset_warning_message_list();
         trial.file.reset_info_message_list();
     },
     false},
};

const kvr_test::faulty_call<memory_trial> reads[] = {
    {"read_file without a file", all_handlers,
     [](memory_trial& trial) { trial.answer = trial.file.read_file(); }, false},
    {"read_file, MIF", mif_file, read_call},
    {"read_file, regular MIF", regular_mif_file, read_call},
    {"read_file, bad MIF", bad_mif_file, read_call},
    {"read_file, long line of MIF", long_line_of_mif, read_call},
    {"read_file, huge MIF", huge_mif_file, read_call},
    {"read_file, HEX", hex_file, read_call},
    {"read_file, regular HEX", regular_hex_file, read_call},
    {"read_file, bad HEX", bad_hex_file, read_call},
    {"read_file, long line of HEX", long_line_of_hex, read_call},
    {"read_file, RIF", rif_file, read_call},
    {"read_file, regular RIF", regular_rif_file, read_call},
    {"read_file, bad RIF", bad_rif_file, read_call},
};

const kvr_test::faulty_call<memory_trial> writes[] = {
    {"write_file without words", empty_memory<FILE_TYPE_MIF>, write_call, false},
    {"write_file, MIF", filled_memory<FILE_TYPE_MIF>, write_call},
    {"write_file, MIF with comments", commented_memory, write_call},
    {"write_file, packed MIF", packed_memory<FILE_TYPE_MIF>, write_call},
    {"write_file, MIF that cannot be opened", without_folder<FILE_TYPE_MIF>, write_call},
    {"write_file, HEX", filled_memory<FILE_TYPE_HEX>, write_call},
    {"write_file, packed HEX", packed_memory<FILE_TYPE_HEX>, write_call},
    {"write_file, HEX that cannot be opened", without_folder<FILE_TYPE_HEX>, write_call},
    {"write_file, RIF", filled_memory<FILE_TYPE_RIF>, write_call},
    {"write_file, packed RIF", packed_memory<FILE_TYPE_RIF>, write_call},
    {"write_file, RIF that cannot be opened", without_folder<FILE_TYPE_RIF>, write_call},
};

class MemoryFileAllocationFaults : public testing::Test {
    kvr_test::temporary_directory folder;
    kvr_test::working_directory inside{folder.path("")};
};

TEST_F(MemoryFileAllocationFaults, ConstructionAndSettingsSurviveThem) {
    kvr_test::expect_allocation_faults_survived(construction_and_settings);
}

TEST_F(MemoryFileAllocationFaults, WordsAndCommentsSurviveThem) {
    kvr_test::expect_allocation_faults_survived(words_and_comments);
}

TEST_F(MemoryFileAllocationFaults, MessagesSurviveThem) {
    kvr_test::expect_allocation_faults_survived(message_lists);
}

TEST_F(MemoryFileAllocationFaults, ReadsSurviveThem) {
    kvr_test::expect_allocation_faults_survived(reads);
}

TEST_F(MemoryFileAllocationFaults, WritesSurviveThem) {
    kvr_test::expect_allocation_faults_survived(writes);
}

} // namespace
