#pragma once

#include <QApplication>
#include <QEvent>
#include <array>
#include <string>

#include "ui/widgets/Appearance.h"

namespace desktop_test {

// The toolkit without a screen, for tests of single widgets. There is one at a time. The environment can
// describe its screens (QT_QPA_PLATFORM=offscreen:configfile=FILE).
class OffscreenApplication {
  public:
    OffscreenApplication() {
        QApplication::setQuitOnLastWindowClosed(false);
        ui::applyColorScheme(ui::ColorScheme::Unknown);
    }
    OffscreenApplication(const OffscreenApplication&) = delete;
    OffscreenApplication& operator=(const OffscreenApplication&) = delete;
    // Deletes the objects whose deletion has been left to the main loop.
    ~OffscreenApplication() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    // Handles everything that is due now.
    static void settle() { QCoreApplication::processEvents(); }

  private:
    static std::string platform() {
        auto given = qEnvironmentVariable("QT_QPA_PLATFORM").toStdString();
        return given.starts_with("offscreen:") ? given : "offscreen";
    }

    std::string name_ = "tests";
    std::string option_ = "-platform";
    std::string platform_ = platform();
    std::array<char*, 4> arguments_{name_.data(), option_.data(), platform_.data(), nullptr};
    int argumentCount_ = 3;
    QApplication application_{argumentCount_, arguments_.data()};
};

}  // namespace desktop_test
