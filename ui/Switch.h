#pragma once

#include <QCheckBox>

namespace ui {

// An on-off switch, drawn as a knob in a track, without a text of its own.
class Switch final : public QCheckBox {
  public:
    explicit Switch(const QString& name) { setAccessibleName(name); }
    [[nodiscard]] QSize sizeHint() const override { return {38, 24}; }

  protected:
    [[nodiscard]] bool hitButton(const QPoint& point) const override { return rect().contains(point); }
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace ui
