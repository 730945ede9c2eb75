// The conditions under which a handler without a memory file can read.

#include "tests/memory/hex/hex_steps.h"
#include "tests/memory/mif/mif_steps.h"
#include "tests/memory/rif/rif_steps.h"
#include "tests/memory/temporary_directory.h"

#include <gtest/gtest.h>

namespace {

/// @p memory belongs to @p handler.
template <class Handler>
void expect_to_read_files_that_exist(const Handler& handler, kvr::memory_state& memory) {
    const kvr_test::temporary_directory directory;
    EXPECT_FALSE(handler.can_proceed_with_read()) << "no name";
    memory.file_name = directory.path("missing");
    EXPECT_FALSE(handler.can_proceed_with_read());
    memory.file_name = directory.file("there", "");
    EXPECT_TRUE(handler.can_proceed_with_read());
}

TEST(HandlersProceed, ToReadAnIntelHexFileThatExists) {
    KVR_MEMORY_HEX_FILE handler(nullptr);
    expect_to_read_files_that_exist(handler, kvr::hex_steps{handler}.memory());
}

TEST(HandlersProceed, ToReadAMifThatExists) {
    KVR_MEMORY_MIF_FILE handler(nullptr);
    expect_to_read_files_that_exist(handler, kvr::mif_steps{handler}.memory());
}

TEST(HandlersProceed, ToReadARifThatExists) {
    KVR_MEMORY_RIF_FILE handler(nullptr);
    expect_to_read_files_that_exist(handler, kvr::rif_steps{handler}.memory());
}

} // namespace
