#include "kvrimage/formats/registry.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace {

using namespace kvrimage;

TEST(Registry, FindsFormatsByIdAndExtension) {
    ASSERT_NE(format_of_name("MIF"), nullptr);
    EXPECT_EQ(format_of_name("MIF")->id, "mif");
    EXPECT_EQ(format_of_path("a.b/boot.Hex"), format_of_name("hex"));
    EXPECT_EQ(format_of_path("a.mif/boot"), nullptr);
    EXPECT_EQ(format_of_name("nothing"), nullptr);
    EXPECT_EQ(format_of_name("S19"), format_of_name("srec"));
}

TEST(Registry, FindsNoFormatInOtherText) {
    EXPECT_TRUE(sniff("").empty());
    EXPECT_TRUE(sniff("no memory at all\n", "a.mif").empty());
}

/// Formats that a program adds to the registry.
struct own_formats {
    format bare = {.id = "bare", .title = "Bare", .extensions = {}};
    format twin = {
        .id = "twin", .title = "Twin", .extensions = twin_extensions, .sniff = [](std::string_view head) {
            return head.starts_with("own twin!") ? certainty::likely : certainty::no;
        }};
    format second_twin = {
        .id = "second_twin", .title = "Second twin", .extensions = twin_extensions, .sniff = twin.sniff};

    own_formats() {
        for (const format* each : {&bare, &twin, &second_twin}) {
            add_format(*each);
        }
    }
    static constexpr std::string_view twin_extensions[] = {"twin_file"};
};

const own_formats& added_formats() {
    static const own_formats added;
    return added;
}

TEST(Registry, FindsAFormatWithoutExtensionsByItsId) {
    const format& bare = added_formats().bare;
    EXPECT_EQ(format_of_name("BARE"), &bare);
    EXPECT_EQ(format_of_path("a.bare"), nullptr);
}

TEST(Registry, OfEquallySureFormatsWithOneExtensionTheFirstIsFirst) {
    const own_formats& added = added_formats();
    const std::vector<sniffed> found = sniff("own twin! WIDTH", "a.twin_file");
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].as, &added.twin);
    EXPECT_EQ(found[1].as, &added.second_twin);
}

std::vector<std::string_view> sniffed_ids(std::string_view head, std::string_view file_name) {
    std::vector<std::string_view> ids;
    for (const sniffed& each : sniff(head, file_name)) {
        ids.push_back(each.as->id);
    }
    return ids;
}

TEST(Registry, OfEquallySureFormatsTheExtensionDecides) {
    const std::string_view both = "WIDTH=8;\nDEPTH=8;\n:00000001FF\n";
    const std::vector<std::string_view> mif_first = {"mif", "hex"};
    const std::vector<std::string_view> hex_first = {"hex", "mif"};
    EXPECT_EQ(sniffed_ids(both, ""), mif_first);
    EXPECT_EQ(sniffed_ids(both, "a.mif"), mif_first);
    EXPECT_EQ(sniffed_ids(both, "a.HEX"), hex_first);
}

TEST(Registry, TheSurestFormatIsFirstWhateverTheExtension) {
    const std::vector<std::string_view> mif_first = {"mif", "hex"};
    EXPECT_EQ(sniffed_ids("WIDTH=8;\nDEPTH=8;\n:0000000100\n", "a.hex"), mif_first);
}

} // namespace
