#include "orvellos/base/Text.h"

#include <gtest/gtest.h>

#include <string>

namespace orvellos {

TEST(TrimmedTextTests, CutsWhiteSpaceOfEveryScriptAtTheEndsOnly) {
    const std::pair<std::string_view, std::string_view> rows[] = {
        {"", ""},
        {" \t\r\n\v\f", ""},
        {"\u00A0\u2003 a \u3000b\u2028\u0085", "a \u3000b"},
        {"é", "é"},
        {"\u200B", "\u200B"},            // zero-width space is none
        {"\xA0 a \x80", "\xA0 a \x80"},  // no UTF-8
        {"a\xC2", "a\xC2"},
        {"\x80\x80\x80", "\x80\x80\x80"},
    };
    for (const auto& [text, expected] : rows) EXPECT_EQ(trimmed(text), expected) << text;
}

}  // namespace orvellos
