#pragma once

#include <QDialog>
#include <functional>

#include "platform/Panels.h"
#include "platform/x11/connection/Atoms.h"

class QHBoxLayout;

namespace ui {

// An alert's window. It blocks the application's other windows, so it is on every desktop.
class AlertBox final : public QDialog {
  public:
    // `answered` is called once, with the index of the chosen button; closing it chooses the last.
    AlertBox(const platform::Alert& alert, const platform::x11::Atoms& atoms,
             std::function<void(std::size_t)> answered);

  private:
    [[nodiscard]] QHBoxLayout* makeButtons(const platform::Alert& alert);

    std::size_t answer_;
};

}  // namespace ui
