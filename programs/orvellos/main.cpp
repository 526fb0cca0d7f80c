// The application body: makes the services of an X11 desktop, hands them to the application and runs its main
// loop.

#include <fontconfig/fontconfig.h>
#include <unistd.h>

#include <QApplication>
#include <QSessionManager>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <future>
#include <memory>
#include <mutex>

#include "orvellos/app/AppDelegate.h"
#include "orvellos/base/DebugLog.h"
#include "platform/freedesktop/bus/BusMessage.h"
#include "platform/freedesktop/bus/SystemdLibrary.h"
#include "platform/freedesktop/processes/StandardStreams.h"
#include "platform/freedesktop/session/JournalSystemLog.h"
#include "platform/x11/connection/Extensions.h"
#include "programs/Alarm.h"
#include "programs/orvellos/X11Application.h"
#include "ui/shell/QtRunLoop.h"
#include "ui/shell/TerminationSignals.h"
#include "ui/widgets/Appearance.h"

namespace {

using platform::freedesktop::writeStandardError;

constexpr auto kPatienceAtStart = std::chrono::seconds(2);

// Begins to read which fonts the system has, on a thread of its own: the first text that is measured or
// painted waits for it, and it takes as long as a good part of the toolkit's start.
std::future<void> readFontConfiguration() {
    return std::async(std::launch::async, [] { FcInit(); });
}

// Where the variable is not set, or names something to start, Qt would have a session bus started for it,
// which nobody would end.
void keepQtFromStartingABus() {
    const auto address = platform::freedesktop::sessionBusAddress();
    setenv("DBUS_SESSION_BUS_ADDRESS",
           address.empty() ? platform::freedesktop::kNoSessionBus : address.c_str(), 1);
}

// Allocates nothing, for it also runs in a signal handler.
int failToOpenDisplay() {
    const char* display = std::getenv("DISPLAY");
    for (const std::string_view part :
         {"orvello: cannot open the display \"", display ? display : "", "\"\n"})
        writeStandardError(part);
    return 1;
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

// Whether the program starts at login is the user's own setting. A session manager (XSMP) that brings back
// what was running would start it a second time, which the first would take for a wish to see it.
void startAtNoRestoredSession(const QApplication& application) {
    QObject::connect(
        &application, &QGuiApplication::saveStateRequest, &application,
        [](QSessionManager& session) { session.setRestartHint(QSessionManager::RestartNever); },
        Qt::DirectConnection);
}

int runApplication(int argc, char** argv, platform::x11::XConnection& connection,
                   const std::future<void>& fonts) {
    keepQtFromStartingABus();
    qInstallMessageHandler(handleQtMessage);
    argc = std::min(argc, 1);  // the user's arguments are not for Qt, which would take some of them
    std::array<char*, 2> name = {argv[0], nullptr};
    QApplication application(argc, name.data());
    QApplication::setQuitOnLastWindowClosed(false);
    startAtNoRestoredSession(application);
    ui::applyColorScheme(ui::ColorScheme::Unknown);  // until the desktop says
    ui::QtRunLoop runLoop;
    platform::freedesktop::SystemdLibrary systemd;
    platform::freedesktop::JournalSystemLog systemLog;
    orvellos::connectDebugLog(
        {&systemLog, writeStandardError, &runLoop, orvellos::asksForDebugEcho(std::getenv("ORVELLO_DEBUG"))});
    programs::X11Application orvello(connection, runLoop, systemd, application.devicePixelRatio(),
                                     [] { QCoreApplication::quit(); });
    const ui::TerminationSignals termination(runLoop, [] { QCoreApplication::quit(); });
    const auto broken = orvello.onServerGone([] {
        sayThatTheServerIsGone();
        QCoreApplication::exit(1);
    });
    runLoop.post([&] {
        fonts.wait();
        orvello.launch();
    });
    // What was asked of the server up to here, atoms among it, is not asked again.
    const int status = connection.isLate() ? failToOpenDisplay() : QCoreApplication::exec();
    orvello.terminate();
    orvellos::connectDebugLog({});
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    const auto fonts = readFontConfiguration();
    std::unique_ptr<platform::x11::XConnection> connection;
    {
        const programs::Alarm unlessAnswered(kPatienceAtStart, [](int) { _exit(failToOpenDisplay()); });
        connection = platform::x11::openWithExtensions(nullptr, kPatienceAtStart);
    }
    return connection ? runApplication(argc, argv, *connection, fonts) : failToOpenDisplay();
}
