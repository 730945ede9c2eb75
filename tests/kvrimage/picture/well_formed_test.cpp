#include "tests/kvrimage/picture/well_formed.h"

#include <gtest/gtest.h>

namespace {

using namespace kvrimage;

TEST(WellFormed, FindsFaults) {
    EXPECT_EQ(fault_of_xml("<svg a=\"1\" b=\"&lt;\"><g/>x &amp; y</svg>\n"), std::nullopt);
    for (const char* ill_formed :
         {"", "text", "<svg>", "</svg>", "<svg></g>", "<svg/><svg/>", "<svg>&</svg>", "<svg>\x01</svg>",
          "<svg a=1/>", "<svg a=\"1/>", "<svg a=\"<\"/>", "<svg a=\"&\"/>", "<svg>a<b</svg>",
          "<svg a=\"1\"b=\"2\"/>", "<svg", "< svg/>"}) {
        EXPECT_NE(fault_of_xml(ill_formed), std::nullopt) << ill_formed;
    }
}

} // namespace
