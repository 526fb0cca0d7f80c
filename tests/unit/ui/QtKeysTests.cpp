#include "ui/widgets/QtKeys.h"

#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon.h>

#include <QKeySequence>

#include "platform/Keys.h"

namespace ui {
namespace {

using namespace platform::modifier;
using platform::x11::KeyChord;

TEST(QtKeysTest, AreTheSymbolsThatTheLayoutHas) {
    struct Row {
        const char* keys = nullptr;  // as the toolkit writes them
        KeyChord chord;
    };
    constexpr Row kRows[] = {
        {"Meta+W", {'w', kCommand}},
        {"Meta+F8", {XKB_KEY_F8, kCommand}},
        {"Ctrl+F10", {XKB_KEY_F10, kControl}},
        {"Shift+Alt+Up", {XKB_KEY_Up, kShift | kOption}},
        {"PgDown", {XKB_KEY_Page_Down}},
        {"F35", {XKB_KEY_F35}},
        {"Launch (C)", {XKB_KEY_XF86LaunchC}},
        {"Meta+Tab", {XKB_KEY_Tab, kCommand}},
        {"Meta+1", {'1', kCommand}},
        {"Alt+Ä", {XKB_KEY_adiaeresis, kOption}},
        {"×", {XKB_KEY_multiply}},
        {"Meta+Ж", {XKB_KEY_Cyrillic_zhe, kCommand}},
        {"Meta+Ω", {XKB_KEY_Greek_omega, kCommand}},
        {"Meta+Ә", {XKB_KEY_Cyrillic_schwa, kCommand}},
    };
    for (const auto& [keys, chord] : kRows) {
        const QKeySequence sequence(QString::fromUtf8(keys), QKeySequence::PortableText);
        ASSERT_EQ(sequence.count(), 1) << keys;
        const auto qtKey = static_cast<std::uint32_t>(sequence[0].toCombined());
        EXPECT_EQ(chordOfQtKey(qtKey), chord) << keys;
        EXPECT_EQ(qtKeyOf(chord), qtKey) << keys;
    }
    const QKeyCombination onNumberPad(Qt::MetaModifier | Qt::KeypadModifier, Qt::Key_5);
    EXPECT_EQ(chordOfQtKey(static_cast<std::uint32_t>(onNumberPad.toCombined())), (KeyChord{'5', kCommand}));
    for (const int noChord : {0, int{Qt::MetaModifier}, int{Qt::Key_unknown}})
        EXPECT_EQ(chordOfQtKey(static_cast<std::uint32_t>(noChord)), std::nullopt) << noChord;
}

}  // namespace
}  // namespace ui
