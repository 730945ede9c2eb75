#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "kvrimage/formats/rif/rif_format.h"
#include "tests/kvrimage/formats/rif/shown_diagnostics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace kvrimage;
using testing::ElementsAre;
using testing::IsEmpty;

check_options as_rif() {
    check_options options;
    options.read.as = &rif_format;
    return options;
}

TEST(RifFormat, HasItsNameAndExtension) {
    EXPECT_EQ(format_of_name("rif"), &rif_format);
    EXPECT_EQ(format_of_path("boot.rif"), &rif_format);
}

TEST(RifFormat, IsFoundByItsContents) {
    const read_result result = parse("@0\n01 02\n@10\n03\n");
    EXPECT_EQ(result.facts.as, &rif_format);
    EXPECT_EQ(result.image->depth(), 17U);
}

TEST(RifFormat, ChecksForTheLibrary) {
    EXPECT_THAT(shown(check("@0\n1 2\n", as_rif()).diagnostics), IsEmpty());
    EXPECT_THAT(shown(check("@0\n1\t2\n", as_rif()).diagnostics), ElementsAre("rif-tab 2:2+1"));
    EXPECT_THAT(shown(check("@ffffffff\n1 2\n", as_rif()).diagnostics), ElementsAre("address-outside 2:3+1"));
}

TEST(RifFormat, IsRepairedUntilNothingIsLeftToRepair) {
    const repaired result = repair("\xEF\xBB\xBF// table\n@0x0 0x1\t0x2 // two\r0x3 @0x3 0x4\n", as_rif());
    EXPECT_EQ(result.contents, "\n@0\n1 2 \n3\n@3\n4\n");
    EXPECT_THAT(shown(result.left.diagnostics), IsEmpty());
}

TEST(RifFormat, WritesWhatItReads) {
    const read_result result = parse("@0\n01 02\n@10\n03\n");
    write_options options;
    options.as = &rif_format;
    EXPECT_EQ(to_text(*result.image, options), "@0\n01 02 \n@10\n03 \n");
}

} // namespace
