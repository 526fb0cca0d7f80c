// The application body: makes the services of an X11 desktop, hands them to the application and runs its main
// loop.

#include <QGuiApplication>
#include <cstdio>
#include <cstdlib>
#include <mutex>

#include "orvellos/AppDelegate.h"
#include "orvellos/DebugLog.h"
#include "platform/freedesktop/JournalSystemLog.h"
#include "platform/freedesktop/StandardError.h"
#include "platform/freedesktop/SystemdLibrary.h"
#include "platform/x11/XConnection.h"
#include "programs/orvellos/Desktop.h"
#include "ui/QtRunLoop.h"
#include "ui/TerminationSignals.h"

namespace {

using platform::freedesktop::writeStandardError;

constexpr auto kPatienceAtStart = std::chrono::seconds(2);

// Without a session bus Qt would have one started for it, which nobody would end.
void keepQtFromStartingABus() {
    if (platform::freedesktop::sessionBusAddress().empty())
        setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
}

void sayThatTheServerIsGone() {
    static std::once_flag said;
    std::call_once(said, [] { writeStandardError("orvello: the display server has gone away\n"); });
}

// Qt has a connection of its own to the server. When it is the first to notice the server's end it says so in
// this message and ends the process with status 1.
void handleQtMessage(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& message) {
    if (message.startsWith("The X11 connection broke")) {
        sayThatTheServerIsGone();
    } else {
        writeStandardError(message.toStdString() + "\n");
    }
}

int runApplication(int argc, char** argv, platform::x11::XConnection& connection) {
    keepQtFromStartingABus();
    qInstallMessageHandler(handleQtMessage);
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
        sayThatTheServerIsGone();
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
