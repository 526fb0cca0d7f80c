#include "orvellos/tags/Labels.h"

#include <gtest/gtest.h>

namespace orvellos {
namespace {

TEST(DisplayLabelTest, IsOneLineOfBoundedLength) {
    struct Row {
        const char* name;
        std::string label;
        std::string shown;
    };
    std::string families;
    for (int i = 0; i < 4; ++i) families += "👨‍👩‍👧";
    for (const Row& row : {Row{"plain", "Mail", "Mail"}, Row{"as long as may be", "12345", "12345"},
                           Row{"too long", "123456", "1234…"}, Row{"lines and tabs", "a\nb\tc", "a b c"},
                           Row{"one break of two characters", "a\r\nb", "a b"},
                           Row{"markup stays", "<b>&", "<b>&"}, Row{"emoji are whole", families, families},
                           Row{"no UTF-8", "a\xFFz", "a\xFFz"}, Row{"empty", "", ""}})
        EXPECT_EQ(shortLabel(row.label, 5), row.shown) << row.name;
    EXPECT_EQ(shortLabel(std::string(10'000, 'x')).size(), 59 + sizeof "…" - 1);
}

}  // namespace
}  // namespace orvellos
