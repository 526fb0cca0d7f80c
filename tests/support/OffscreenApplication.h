#pragma once

#include <QApplication>
#include <QEvent>
#include <array>
#include <cstdlib>

namespace desktop_test {

// The toolkit without a screen, for tests of single widgets. One at a time.
class OffscreenApplication {
  public:
    OffscreenApplication() { QApplication::setQuitOnLastWindowClosed(false); }
    OffscreenApplication(const OffscreenApplication&) = delete;
    OffscreenApplication& operator=(const OffscreenApplication&) = delete;
    // What waits for the main loop to be deleted is deleted, with no loop to do it.
    ~OffscreenApplication() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    // Does what is due now.
    static void settle() { QCoreApplication::processEvents(); }

  private:
    std::array<char, 6> name_{'t', 'e', 's', 't', 's', 0};
    std::array<char, 10> option_{'-', 'p', 'l', 'a', 't', 'f', 'o', 'r', 'm', 0};
    std::array<char, 10> platform_{'o', 'f', 'f', 's', 'c', 'r', 'e', 'e', 'n', 0};
    std::array<char*, 4> arguments_{name_.data(), option_.data(), platform_.data(), nullptr};
    int argumentCount_ = 3;
    QApplication application_{argumentCount_, arguments_.data()};
};

}  // namespace desktop_test
