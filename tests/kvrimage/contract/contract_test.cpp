#include "tests/kvrimage/contract/contract.h"
#include "tests/kvrimage/rounds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace kvrimage_tests {

namespace {

using namespace kvrimage;

namespace fs = std::filesystem;

struct input {
    std::string name;
    std::string contents;
};

std::string contents_of(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Adds the files of a recorded case: sections that begin with "=== file NAME".
void add_files_of_case(const fs::path& path, std::vector<input>& inputs) {
    std::ifstream file(path);
    bool in_file = false;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("=== ")) {
            in_file = line.starts_with("=== file ");
            if (in_file) {
                inputs.push_back({path.filename().string() + ":" + line.substr(9), ""});
            }
        } else if (in_file) {
            inputs.back().contents += line + "\n";
        }
    }
}

/// Every memory file of the tests and of the examples, and the inputs that fuzzing has found.
std::vector<input> all_inputs() {
    const fs::path root = KVR_SOURCE_DIR;
    std::vector<input> inputs;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root / "tests/cli/cases")) {
        if (entry.path().extension() == ".case") {
            add_files_of_case(entry.path(), inputs);
        }
    }
    for (const char* folder : {"examples", "fuzz/corpus/mif_reader", "fuzz/corpus/hex_reader",
                               "fuzz/corpus/rif_reader", "fuzz/corpus/check"}) {
        for (const fs::directory_entry& entry : fs::directory_iterator(root / folder)) {
            if (entry.is_regular_file()) {
                inputs.push_back({entry.path().filename().string(), contents_of(entry.path())});
            }
        }
    }
    std::ranges::sort(inputs, {}, &input::name);
    return inputs;
}

/// @p contents with a few random bytes changed, removed or repeated.
std::string damaged(std::string contents, std::mt19937& random) {
    static constexpr std::string_view likely = "0123456789ABCDEFXx:;[]-. \t\r\n%@=/";
    for (auto left = 1 + random() % 3; left > 0 && !contents.empty(); --left) {
        const std::size_t at = random() % contents.size();
        const std::size_t length = std::min<std::size_t>(1 + random() % 4, contents.size() - at);
        switch (random() % 4) {
        case 0:
            contents.erase(at, length);
            break;
        case 1:
            contents.insert(at, contents.substr(at, length));
            break;
        case 2:
            contents.insert(at, 1, likely[random() % likely.size()]);
            break;
        default:
            contents[at] = likely[random() % likely.size()];
        }
    }
    return contents;
}

void expect_kept(const input& file, const std::string& contents, const read_options& options) {
    for (const std::string& broken : broken_promises(contents, options)) {
        ADD_FAILURE() << file.name << " as " << options.as->title << ": " << broken << "\n"
                      << testing::PrintToString(contents.substr(0, 2000));
    }
}

/// Calls @p take with every @p step th pair of an input and a readable format.
template <class Take>
void for_each_reading(Take&& take, std::size_t step = 1) {
    const std::vector<input> inputs = all_inputs();
    ASSERT_GT(inputs.size(), 500U);
    std::size_t number = 0;
    for (const input& file : inputs) {
        for (const format* as : formats_of_the_library()) {
            if (as->read == nullptr) {
                continue;
            }
            read_options options;
            options.as = as;
            if (++number % step == 0) {
                take(file, options);
            }
        }
    }
}

/// If code is counted or checked, the tests use a part of the files, and those with several variants of each
/// file a smaller part. The steps have no common divisor with the number of formats, so that each format gets
/// its share.
#ifdef KVR_SANITIZED
constexpr std::size_t step_of_files = 23;
constexpr std::size_t step_of_variants = 55;
#elif defined(KVR_SLOW_BUILD)
constexpr std::size_t step_of_files = 1;
constexpr std::size_t step_of_variants = 5;
#else
constexpr std::size_t step_of_files = 1;
constexpr std::size_t step_of_variants = 1;
#endif

TEST(Contract, HoldsForEveryFileOfTheTests) {
    for_each_reading(
        [](const input& file, const read_options& options) { expect_kept(file, file.contents, options); },
        step_of_files);
}

TEST(Contract, HoldsForFilesThatEndTooEarly) {
    constexpr std::size_t parts = 4;
    for_each_reading(
        [](const input& file, const read_options& options) {
            const std::size_t size = file.contents.size();
            for (std::size_t part = 1; part < parts && size < 4096; ++part) {
                expect_kept(file, file.contents.substr(0, size * part / parts), options);
            }
        },
        step_of_variants);
}

TEST(Contract, HoldsForDamagedFiles) {
    std::mt19937 random(11);
    for_each_reading(
        [&random](const input& file, const read_options& options) {
            for (int round = 0; round < rounds(3) && file.contents.size() < 4096; ++round) {
                expect_kept(file, damaged(file.contents, random), options);
            }
        },
        step_of_variants);
}

TEST(Contract, HoldsWithAWidthAndADepth) {
    for_each_reading(
        [](const input& file, read_options options) {
            for (const std::uint32_t width : {1U, 8U, 12U, 32U}) {
                options.width = width;
                options.depth = width == 12 ? std::optional<std::uint64_t>(16) : std::nullopt;
                expect_kept(file, file.contents, options);
            }
        },
        step_of_variants);
}

} // namespace

} // namespace kvrimage_tests
