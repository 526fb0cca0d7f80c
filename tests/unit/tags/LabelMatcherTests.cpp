#include "orvellos/tags/Labels.h"

#include <gtest/gtest.h>

namespace orvellos {
namespace {

TEST(LabelMatcherTest, comparesLettersAndNumbersByWholeCharacters) {
    struct Case {
        const char* name;
        const char* query;
        const char* label;
        bool matches;
    };
    for (const auto& [name, query, label, matches] : std::vector<Case>{
             {"part of the label", "mail", "Mail & Chat", true},
             {"other case, no spaces", "MAILCHAT", "Mail & Chat", true},
             {"other punctuation", "mail & chat!!", "Mail & Chat", true},
             {"the query contains the label", "xmailx", "Mail", true},
             {"another word", "web", "Mail", false},
             {"sharp s", "STRAßE", "Straße", true},
             {"sharp s is not folded", "strasse", "Straße", false},
             {"full-width", "ａ１", "Ａ１", true},
             {"full-width is not ASCII", "a1", "Ａ１", false},
             {"composed and decomposed", "caf\u00E9", "CAFE\u0301", true},
             {"a letter is not found inside a precomposed one", "e", "\u00E9", false},
             {"nor inside a combined one", "x", "x\u0302", false},
             {"the order of marks", "a\u0301\u0323", "a\u0323\u0301", true},
             {"dotted capital I", "\u0130", "i\u0307", true},
             {"dotless i is another letter", "I", "\u0131", false},
             {"Hangul syllable and its jamo", "\uD55C", "\u1112\u1161\u11AB", true},
             {"Cyrillic", "РАБОТА", "Работа 2", true},
             {"letter-like number", "Ⅳ", "ⅳ", true},
             {"emoji-only query", "🙂", "Mail 🙂", false},
             {"emoji-only label", "mail", "🙂🎉", false},
             {"flag", "🇩🇪", "🇩🇪 mail", false},
             {"family of joined emoji", "👩‍👩‍👧", "👩‍👩‍👧", false},
             {"emoji between letters", "mailbox", "mail🙂box", true},
             {"punctuation-only query", "...", "...", false},
             {"empty label", "mail", "", false},
             {"a lone mark", "\u0301", "\u0301", false},
             {"bytes that are no UTF-8", "mail",
              "\xFFm\xC3"
              "ail",
              true},
             {"only such bytes", "\xFF\xFE", "\xFF\xFE", false},
         }) {
        EXPECT_EQ(LabelMatcher(query).matches(label), matches) << name;
    }
}

}  // namespace
}  // namespace orvellos
