// Each allocation of the list of formats fails, one per trial.

#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "tests/faults/allocation_faults.h"
#include "tests/memory/temporary_directory.h"
#include "tests/util/working_directory.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kvrimage_tests {

namespace {

using namespace kvrimage;

struct registry_trial {
    std::vector<const format*> found;
    std::size_t count = 0;

    [[nodiscard]] std::string outcome() const {
        std::string text = std::to_string(count);
        for (const format* each : found) {
            text += ' ';
            text += each->id;
        }
        return text;
    }
};

void ask_nothing(registry_trial& /*trial*/) {}

const kvr_test::faulty_call<registry_trial> questions_to_registry[] = {
    {"formats", ask_nothing, [](registry_trial& trial) { trial.count = formats().size(); }, false},
    {"format_of_name, an identifier", ask_nothing,
     [](registry_trial& trial) { trial.count = format_of_name("titxt") != nullptr ? 1 : 0; }, false},
    {"format_of_name, an extension", ask_nothing,
     [](registry_trial& trial) { trial.count = format_of_name("s19") != nullptr ? 1 : 0; }},
    {"format_of_path", ask_nothing,
     [](registry_trial& trial) { trial.count = format_of_path("a.mem") != nullptr ? 1 : 0; }},
    {"formats_of_path", ask_nothing, [](registry_trial& trial) { trial.found = formats_of_path("a.txt"); }},
};

TEST(RegistryAllocationFaults, QuestionsSurviveThem) {
    kvr_test::expect_allocation_faults_survived(questions_to_registry);
}

/// The list grows during the test, so that only some calls allocate.
TEST(RegistryAllocationFaults, AFormatThatCannotBeAddedIsNotThere) {
    static const format added = {.id = "added", .title = "Added", .extensions = {}};
    bool has_failed = false;
    const std::size_t most = 2 * formats().size() + 1; // a full list grows at most to the double
    for (std::size_t attempt = 0; attempt < most && !has_failed; ++attempt) {
        const std::size_t before = formats().size();
        try {
            const failing_allocation failing(1);
            add_format(added);
        } catch (const std::bad_alloc&) {
            has_failed = true;
            EXPECT_EQ(formats().size(), before);
            add_format(added);
        }
        EXPECT_EQ(formats().size(), before + 1);
        EXPECT_EQ(formats().back(), &added);
    }
    EXPECT_TRUE(has_failed);
}

} // namespace

} // namespace kvrimage_tests
