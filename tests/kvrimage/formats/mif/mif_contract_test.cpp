#include "kvr/memory/io/line_source.h"
#include "kvr/memory/mif/mif_reader.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/mif/mif_format.h"
#include "kvrimage/formats/mif/mif_reader.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word_text.h"
#include "tests/kvrimage/rounds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace kvrimage;

/// The files "*.mif" in the recorded cases of the command line.
std::vector<std::string> mif_files_of_cases() {
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(KVR_CLI_CASES)) {
        std::ifstream input(entry.path(), std::ios::binary);
        std::string line;
        bool is_mif = false;
        while (entry.is_regular_file() && std::getline(input, line)) {
            if (line.starts_with("=== ")) {
                is_mif = line.starts_with("=== file ") && line.ends_with(".mif");
                if (is_mif) {
                    files.emplace_back();
                }
            } else if (is_mif) {
                files.back() += line + "\n";
            }
        }
    }
    return files;
}

bool has_class(const std::vector<diagnostic>& found, diagnostic_class level) {
    return std::ranges::any_of(found,
                               [level](const diagnostic& each) { return about(each.id).level == level; });
}

/// The result of read_mif() as a text, for comparisons.
std::string shown_reading(const read_result& result) {
    std::string text;
    for (const diagnostic& each : result.diagnostics) {
        text += std::string(about(each.id).code) + " " + std::to_string(each.where.offset) + " " +
                std::to_string(each.count) + " " + each.message + "\n";
    }
    for (std::uint64_t i = 0; result.image && i < std::min<std::uint64_t>(result.image->words().size(), 64);
         ++i) {
        text += std::string(result.image->words()[i]) + ",";
    }
    for (const address_range& each : result.unreadable) {
        text += " ?" + std::to_string(each.first) + ".." + std::to_string(each.last);
    }
    return text;
}

/// @p file with some characters removed, doubled or changed.
std::string with_mistakes(std::string file, std::mt19937& random) {
    constexpr std::string_view others = "\n\n ;;:[]%-.,0F1x";
    for (auto left = random() % 4; left != 0 && !file.empty(); --left) {
        const std::size_t at = random() % file.size();
        switch (random() % 3) {
        case 0:
            file.erase(at, 1);
            break;
        case 1:
            file.insert(at, 1, others[random() % others.size()]);
            break;
        default:
            file[at] = others[random() % others.size()];
        }
    }
    return file;
}

/// A file of mostly regular statements, which may set words twice.
std::string random_file(std::mt19937& random) {
    std::string file = "WIDTH=8;\nDEPTH=64;\nADDRESS_RADIX=UNS;\nCONTENT BEGIN\n";
    unsigned address = 0;
    for (auto left = random() % 40; left != 0; --left) {
        address = random() % 4 != 0 ? address + 1 : static_cast<unsigned>(random() % 64);
        const std::string first = std::to_string(address % 64);
        file += random() % 2 != 0 ? "\t" : "";
        file += random() % 8 != 0 ? first + " : "
                                  : "[" + first + ".." + std::to_string((address + 2) % 64) + "] : ";
        for (auto values = random() % 6 != 0 ? 1 : 1 + random() % 3; values != 0; --values) {
            file +=
                std::string(1, "0123456789abcdefABCDEFG"[random() % (random() % 20 != 0 ? 22 : 23)]) + " ";
        }
        file += random() % 10 != 0 ? ";\n" : "; -- a\n";
    }
    return file + "END;\n";
}

void expect_same_without_fast_path(const std::string& file) {
    const read_options options{.keep_going = true};
    EXPECT_EQ(shown_reading(read_mif(file, options)),
              shown_reading(read_mif(file, options, mif_fast_path::unused)))
        << file;
}

/// True if kvr accepts @p file and holds the texts of the words of @p ours.
bool kvr_agrees(const std::string& file, const read_result& ours) {
    kvr::mif_memory memory(nullptr);
    kvr::fill_radix_names(memory);
    memory.memory_initialize_value.clear();
    kvr::line_source lines(file, kvr::mif_reader::source_limit);
    if (!kvr::mif_reader(memory).read(lines) || memory.number_of_words != ours.image->depth()) {
        return false;
    }
    std::string word;
    for (std::uint32_t i = 0; i < std::min<std::uint32_t>(memory.number_of_words, 64); ++i) {
        word.clear();
        bool is_unsigned = false;
        if (!memory.data_words[i].empty() &&
            make_word_of_any_sign(memory.data_words[i], *ours.facts.data_radix, ours.image->width(), word,
                                  is_unsigned)) {
            return false;
        }
        if (word != ours.image->words()[i]) {
            return false;
        }
    }
    return true;
}

/// Expects that broken files are refused and others have an image. If there is no diagnostic for kvr, kvr
/// must read the same words.
void expect_contract(const std::string& file) {
    check_options options;
    options.read.as = &mif_format;
    const read_result result = check(file, options);
    EXPECT_EQ(result.image.has_value(), !has_class(result.diagnostics, diagnostic_class::broken)) << file;
    if (result.image && !has_class(result.diagnostics, diagnostic_class::consumer)) {
        EXPECT_TRUE(kvr_agrees(file, result)) << file;
    }
    for (const diagnostic& each : result.diagnostics) {
        EXPECT_LE(each.where.offset + each.where.length, file.size() + 1) << each.message << "\n" << file;
        EXPECT_FALSE(each.message.empty());
    }
}

TEST(MifContract, HoldsForTheFilesOfTheCases) {
    const std::vector<std::string> files = mif_files_of_cases();
    ASSERT_GT(files.size(), 100U);
    for (const std::string& file : files) {
        expect_contract(file);
        expect_same_without_fast_path(file);
    }
}

TEST(MifContract, HoldsForFilesWithMistakes) {
    const std::vector<std::string> files = mif_files_of_cases();
    std::mt19937 random(1);
    for (std::uint32_t i = 0; i < 2000 / sweep_step; ++i) {
        const std::string file = with_mistakes(files[random() % files.size()], random);
        if (file.size() < 5000) {
            expect_contract(file);
            expect_same_without_fast_path(file);
        }
    }
}

TEST(MifContract, TheFastPathChangesNothing) {
    std::mt19937 random(2);
    for (std::uint32_t i = 0; i < 1000 / sweep_step; ++i) {
        expect_same_without_fast_path(random_file(random));
        expect_same_without_fast_path(with_mistakes(random_file(random), random));
    }
}

} // namespace
