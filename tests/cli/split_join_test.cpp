#include "kvrimage/formats/format.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "kvrimage/image/memory_image.h"
#include "tests/kvrimage/files/test_folder.h"
#include "tools/kvrmem/commands/program.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

using kvrimage::format;
using kvrimage::memory_image;

/// The exit code of the tool and its messages.
struct outcome {
    int code;
    std::string errors;
};

outcome run_tool(std::vector<std::string> words) {
    words.insert(words.begin(), "kvrmem");
    std::vector<char*> pointers;
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    testing::internal::CaptureStderr();
    const int code = kvrmem::run_program(static_cast<int>(words.size()), pointers.data());
    return {code, testing::internal::GetCapturedStderr()};
}

constexpr std::uint64_t split_depth = 16;

/// The pattern of the set words of a memory.
struct occupancy {
    const char* name;
    bool (*is_set)(std::uint64_t address);
};

constexpr std::array<occupancy, 2> occupancies = {{
    {"all", [](std::uint64_t) { return true; }},
    {"pairs", [](std::uint64_t address) { return address / 2 % 2 == 0; }}, // banks have every second word
}};

memory_image random_memory(std::uint32_t width, const occupancy& words, std::mt19937_64& engine) {
    memory_image image(width, split_depth);
    for (std::uint64_t address = 0; address < split_depth; ++address) {
        std::string bits(width, '0');
        for (char& bit : bits) {
            bit = (engine() & 1U) != 0 ? '1' : '0';
        }
        if (words.is_set(address)) {
            image.set(address, *kvrimage::word::parse(bits, kvrimage::radix::bin, width).value);
        }
    }
    return image;
}

std::vector<const format*> formats_of_parts() {
    std::vector<const format*> found;
    for (const format* each : kvrimage::formats()) {
        if (each->read != nullptr && each->write != nullptr) {
            found.push_back(each);
        }
    }
    return found;
}

class SplitAndJoin : public testing::TestWithParam<const format*> {
protected:
    void expect_that_it_comes_back(const memory_image& image, const std::vector<std::string>& options) {
        const format& as = *GetParam();
        const std::string source = folder.path("source.mif");
        kvrimage::write(image, source);
        const std::string manifest = folder.path("parts.json");
        std::vector<std::string> split = {"split", "--manifest",       manifest,
                                          "--to",  std::string(as.id), "--force"};
        split.insert(split.end(), options.begin(), options.end());
        if (as.counts == kvrimage::address_unit::byte) { // words of several bytes need a byte order
            split.insert(split.end(), {"--endian", orders[++order % orders.size()]});
        }
        split.insert(split.end(), {source, folder.path("part%d.bits")});
        const outcome parts = run_tool(split);
        ASSERT_EQ(parts.code, 0) << parts.errors;
        const std::string joined = folder.path("joined.mif");
        const outcome whole = run_tool({"join", "--manifest", manifest, "-o", joined, "--force"});
        ASSERT_EQ(whole.code, 0) << whole.errors << folder.read("parts.json") << folder.read("part0.bits");
        EXPECT_TRUE(kvrimage::read(joined).image == image) << folder.read("parts.json");
    }

    static constexpr std::array<const char*, 2> orders = {"little", "big"};
    test_folder folder;
    std::size_t order = 0;
};

TEST_P(SplitAndJoin, ByAManifestGivesTheSameMemory) {
    const format& as = *GetParam();
    std::mt19937_64 engine(20260104);
    for (const std::uint32_t width : {2U, 12U, 32U, 72U}) {
        for (const occupancy& words : occupancies) {
            if (!as.holds_unset && &words != occupancies.data()) {
                continue;
            }
            const memory_image image = random_memory(width, words, engine);
            for (const std::vector<std::string>& plan : std::vector<std::vector<std::string>>{
                     {"--every", "2"}, {"--blocks", "4"}, {"--bits", std::to_string(width / 2)}}) {
                SCOPED_TRACE(testing::Message() << width << ' ' << words.name << ' ' << plan[0]);
                expect_that_it_comes_back(image, plan);
                if (HasFatalFailure()) {
                    return;
                }
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, SplitAndJoin, testing::ValuesIn(formats_of_parts()),
                         [](const auto& tested) { return std::string(tested.param->id); });

} // namespace
