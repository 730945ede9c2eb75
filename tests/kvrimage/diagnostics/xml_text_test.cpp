#include "kvrimage/diagnostics/xml_text.h"

#include <gtest/gtest.h>

namespace {

using kvrimage::xml_text;

TEST(XmlText, CharactersOfTheMarkupAreEscaped) {
    EXPECT_EQ(xml_text("<a b=\"1\">&amp;</a>"), "&lt;a b=&quot;1&quot;&gt;&amp;amp;&lt;/a&gt;");
}

TEST(XmlText, OthersStay) {
    EXPECT_EQ(xml_text(""), "");
    EXPECT_EQ(xml_text("it's \xC3\xA4"), "it's \xC3\xA4");
}

} // namespace
