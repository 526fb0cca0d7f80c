#include "ui/AboutView.h"

#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "ui/ApplicationIcon.h"
#include "ui/FormParts.h"
#include "ui/PlainText.h"

namespace ui {

using orvellos::About;

namespace {

constexpr int kIcon = 72;

QLabel* makeBuildLine(const std::string& text) {
    auto* line = makeSecondary(text);
    line->setFont(fixedFont(11));
    line->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return line;
}

QWidget* makeShortcuts(const std::vector<About::ShortcutRow>& rows) {
    auto* list = new QWidget;
    auto* grid = new QGridLayout(list);
    grid->setContentsMargins(12, 0, 12, 0);
    grid->setVerticalSpacing(7);
    int line = 0;
    for (const auto& row : rows) {
        auto* keys = makeSecondary(row.keys.empty() ? "—" : row.keys, QFont::Medium);
        keys->setAlignment(Qt::AlignRight);
        grid->addWidget(makeText(row.title), line, 0);
        grid->addWidget(keys, line++, 1);
    }
    return list;
}

}  // namespace

AboutView::AboutView(const About& about) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(20, 20, 20, 18);
    column->setSpacing(4);
    const auto add = [&](QLabel* label) {
        label->setAlignment(Qt::AlignCenter);
        column->addWidget(label);
    };
    add(makeApplicationIcon(kIcon));
    add(inSize(makeHeading(About::kName), 20, QFont::Bold));
    add(makeSecondary(About::kTagline));
    column->addSpacing(6);
    add(makeBuildLine(about.buildText));
    column->addStretch();
    column->addWidget(makeShortcuts(about.shortcuts));
    column->addStretch();
    add(makeSecondary(About::kFootnote));
}

}  // namespace ui
