#include "orvellos/base/Text.h"

#include <gtest/gtest.h>

#include <string>

namespace orvellos {

TEST(GraphemeClustersTests, CountsAsAReaderDoes) {
    using Parts = std::vector<std::string_view>;
    const std::pair<std::string, Parts> rows[] = {{"", {}},
                                                  {"ab", {"a", "b"}},
                                                  {"e\u0301x", {"e\u0301", "x"}},
                                                  {"\r\n\n", {"\r\n", "\n"}},
                                                  {"🇩🇪🇫🇷", {"🇩🇪", "🇫🇷"}},
                                                  {"👨‍👩‍👧!", {"👨‍👩‍👧", "!"}},
                                                  {"\xFF\xFEz", {"\xFF", "\xFE", "z"}},
                                                  {"🇩🇪\xFF🇫🇷", {"🇩🇪", "\xFF", "🇫🇷"}},
                                                  {"z\xE2\x82", {"z", "\xE2", "\x82"}}};
    for (const auto& [text, parts] : rows) {
        EXPECT_EQ(graphemeClusters(text, 10), parts) << text;
        const auto two = graphemeClusters(text, 2);
        EXPECT_EQ(two, Parts(parts.begin(), parts.begin() + static_cast<long>(two.size()))) << text;
        EXPECT_EQ(two.size(), std::min<std::size_t>(parts.size(), 2)) << text;
    }
}

}  // namespace orvellos
