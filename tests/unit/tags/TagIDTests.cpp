#include "orvellos/tags/Tag.h"

#include <gtest/gtest.h>

namespace orvellos {

TEST(TagIDTests, ReadsTheCanonicalFormOnly) {
    const std::string upper = "6BA7B810-9DAD-11D1-80B4-00C04FD430C8";
    const std::string lower = "6ba7b810-9dad-11d1-80b4-00c04fd430c8";
    ASSERT_TRUE(TagID::parse(upper));
    EXPECT_EQ(TagID::parse(lower), TagID::parse(upper));
    EXPECT_EQ(TagID::parse(lower)->text(), upper);
    EXPECT_EQ(TagID::parse(std::string_view(upper + "0").substr(0, 36)), TagID::parse(upper));
    for (const auto& text :
         {std::string(), upper + "0", upper.substr(1), "{" + upper + "}", "G" + upper.substr(1), " " + upper,
          upper.substr(0, 35) + " ", std::string("6BA7B8109-DAD-11D1-80B4-00C04FD430C8")})
        EXPECT_EQ(TagID::parse(text), std::nullopt) << text;
    EXPECT_NE(TagID::random(), TagID::random());
}

}  // namespace orvellos
