#pragma once

#include <QCoreApplication>
#include <QTimer>
#include <algorithm>
#include <functional>

#include "tests/support/Wait.h"
#include "ui/shell/QtRunLoop.h"

namespace desktop_test {

// The application's own main loop, for tests of code that really waits. There is one at a time.
struct MainLoop {
    MainLoop() = default;
    MainLoop(const MainLoop&) = delete;
    MainLoop& operator=(const MainLoop&) = delete;
    // Deletes the objects whose deletion has been left to the loop.
    ~MainLoop() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    // Runs until `holds` says true; false when it still does not at the deadline.
    [[nodiscard]] bool runUntil(const std::function<bool()>& holds) {
        QTimer wake;  // the state may change outside this loop
        wake.start(std::chrono::milliseconds(10));
        const auto end = runLoop.now() + kGenerousDeadline;
        while (!holds()) {
            const auto start = runLoop.now();
            if (start > end) return false;
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            longestTurn = std::max(longestTurn, runLoop.now() - start);
        }
        return true;
    }

    char program[6] = "tests";
    char* arguments[2] = {program, nullptr};
    int argumentCount = 1;
    QCoreApplication application{argumentCount, arguments};
    ui::QtRunLoop runLoop;
    platform::Duration longestTurn{};
};

}  // namespace desktop_test
