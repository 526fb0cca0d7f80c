#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orvellos/base/DebugLog.h"
#include "orvellos/commandline/OrvelloCLI.h"
#include "orvellos/spaces/SpaceSwitcher.h"
#include "orvellos/tags/TagStore.h"
#include "platform/freedesktop/files/PosixFileSystem.h"
#include "platform/freedesktop/files/XdgFolders.h"
#include "platform/freedesktop/processes/PosixChildProcesses.h"
#include "platform/freedesktop/processes/Programs.h"
#include "platform/freedesktop/session/JournalSystemLog.h"
#include "programs/ScriptRunner.h"
#include "programs/orvello/CommandDesktop.h"

// The entry point of both personalities: runs a command, or becomes the application.

namespace {

using orvellos::OrvelloCLI;

// A standard stream that this process was started without must not become the X connection.
void keepStandardStreamsTaken() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(stream, F_GETFD) < 0 && errno == EBADF) static_cast<void>(open("/dev/null", O_RDWR));
}

// False when the reader has gone or the disk is full.
bool writeAll(int stream, std::string_view text) {
    while (!text.empty()) {
        const auto written = write(stream, text.data(), text.size());
        if (written >= 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EAGAIN) {
            pollfd writable{stream, POLLOUT, 0};
            poll(&writable, 1, -1);
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

int becomeApplication(char** argv) {
    const auto body = platform::freedesktop::ProgramLocations().libexecProgram("orvellos");
    execv(body.c_str(), argv);
    const auto reason = std::string(std::strerror(errno));
    writeAll(STDERR_FILENO, "orvello: cannot start the application " + body + ": " + reason + "\n");
    return 1;
}

std::optional<std::string> readTagFile() {
    using namespace platform::freedesktop;
    const auto content = PosixFileSystem().read(orvellos::tagFilePath(XdgFolders()));
    return content ? std::optional(content.value()) : std::nullopt;
}

int runCommand(OrvelloCLI::Command command, const std::vector<std::string_view>& arguments, char** argv) {
    CommandDesktop desktop(argv);
    platform::freedesktop::PosixChildProcesses childProcesses(
        [&desktop](const std::string&) { return programs::scriptRunner(desktop.currentDesktop()); });
    const CommandScreen screen;
    const orvellos::SpaceIdentifier spaces(desktop, desktop, desktop, screen);
    bool written = true;
    const OrvelloCLI cli(
        {.spaces = spaces,
         .windows = desktop,
         .childProcesses = childProcesses,
         .readTagFile = readTagFile,
         .switchToSpace =
             [&](const std::string& uuid) {
                 desktop.forgetLayout();
                 return switchToSpace(spaces, uuid);
             },
         .standardOutput = [&](std::string_view text) { written &= writeAll(STDOUT_FILENO, text); },
         .standardError = [](std::string_view text) { writeAll(STDERR_FILENO, text); }});
    const int status = cli.run(command, arguments);
    return written ? status : 1;
}

}  // namespace

int main(int argc, char** argv) {
    keepStandardStreamsTaken();
    const std::vector<std::string_view> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    const auto command = OrvelloCLI::commandOf(arguments);
    if (!command) return becomeApplication(argv);
    std::optional<platform::freedesktop::JournalSystemLog> systemLog;
    if (orvellos::asksForDebugEcho(std::getenv("ORVELLO_DEBUG")))
        orvellos::connectDebugLog({&systemLog.emplace(), {}, nullptr, true});
    signal(SIGPIPE, SIG_IGN);
    signal(SIGCHLD, SIG_DFL);  // a parent that ignores its children passes that on
    return runCommand(*command, arguments, argv);
}
