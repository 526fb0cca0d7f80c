#include "ui/panels/AboutView.h"

#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "ui/panels/FormParts.h"
#include "ui/shell/ApplicationIcon.h"
#include "ui/widgets/Labels.h"
#include "ui/widgets/Metrics.h"

namespace ui {

using orvellos::About;

namespace {

constexpr int kIcon = 72;

QLabel* makeBuildLine(const std::string& text) {
    auto* line = makeSecondary(text);
    line->setAlignment(Qt::AlignCenter);
    line->setWordWrap(false);
    line->setFont(fixedFont(font_scale::kFineprint));
    line->setContentsMargins(10, 4, 10, 4);
    line->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    line->setFocusPolicy(Qt::StrongFocus);
    return line;
}

QWidget* makeShortcuts(const std::vector<About::ShortcutRow>& rows) {
    auto* list = new QWidget;
    auto* grid = new QGridLayout(list);
    grid->setContentsMargins(12, 0, 12, 0);
    grid->setVerticalSpacing(7);
    grid->setColumnStretch(0, 1);
    int line = 0;
    for (const auto& row : rows) {
        auto* keys = makeSecondary(row.keys.empty() ? "—" : row.keys, QFont::Medium);
        keys->setWordWrap(false);
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
    add(inSize(makeHeading(About::kName), font_scale::kTitle, QFont::Bold));
    add(makeSecondary(About::kTagline));
    column->addWidget(makeBuildLine(about.buildText), 0, Qt::AlignHCenter);
    column->addStretch();
    column->addWidget(makeShortcuts(about.shortcuts));
    column->addStretch();
    add(makeSecondary(About::kFootnote));
}

}  // namespace ui
