// The application body: makes the services of an X11 desktop, hands them to the application and runs its main
// loop.

#include <QGuiApplication>
#include <cstdio>
#include <cstdlib>

#include "orvellos/AppDelegate.h"
#include "orvellos/DebugLog.h"
#include "platform/freedesktop/JournalSystemLog.h"
#include "platform/freedesktop/SystemdLibrary.h"
#include "platform/x11/XConnection.h"
#include "programs/orvellos/Desktop.h"
#include "ui/QtRunLoop.h"
#include "ui/TerminationSignals.h"

namespace {

constexpr auto kPatienceAtStart = std::chrono::seconds(2);

void writeStandardError(std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stderr);
}

// Without a session bus Qt would have one started for it, which nobody would end.
void keepQtFromStartingABus() {
    if (platform::freedesktop::sessionBusAddress().empty())
        setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
}

int runApplication(int argc, char** argv, platform::x11::XConnection& connection) {
    keepQtFromStartingABus();
    QGuiApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    ui::QtRunLoop runLoop;
    platform::freedesktop::SystemdLibrary systemd;
    platform::freedesktop::JournalSystemLog systemLog;
    orvellos::connectDebugLog(
        {&systemLog, writeStandardError, &runLoop, orvellos::asksForDebugEcho(std::getenv("ORVELLO_DEBUG"))});
    Desktop desktop(connection, runLoop, systemd, application.devicePixelRatio());
    const ui::TerminationSignals termination(runLoop, [] { QCoreApplication::quit(); });
    const auto broken = desktop.onServerGone([] {
        writeStandardError("orvello: the display server has gone away\n");
        QCoreApplication::exit(1);
    });
    runLoop.post([&desktop] { desktop.launch(); });
    const int status = QCoreApplication::exec();
    desktop.terminate();
    orvellos::connectDebugLog({});
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    const auto connection = platform::x11::XConnection::open(nullptr, kPatienceAtStart);
    if (!connection) {
        const char* display = std::getenv("DISPLAY");
        std::fprintf(stderr, "orvello: cannot open the display \"%s\"\n", display ? display : "");
        return 1;
    }
    return runApplication(argc, argv, *connection);
}
