#include "platform/freedesktop/PosixChildProcesses.h"

#include <gtest/gtest.h>

#include "platform/freedesktop/ProgramLocations.h"

namespace platform::freedesktop {
namespace {

TEST(PosixChildProcessesTest, GivesTheExitStatusOfALocatedProgram) {
    PosixChildProcesses processes(
        [](const std::string& program) { return program == "/usr/bin/known" ? "/bin/sh" : program; });
    const auto run = [&](const std::string& program, const std::string& script) {
        const std::vector<std::string> arguments = {"-c", script};
        return processes.run(program, arguments);
    };
    EXPECT_EQ(run("/usr/bin/known", "exit 7"), 7);
    EXPECT_EQ(run("/usr/bin/known", "test \"$(printf '%s' 'a  b')\" = 'a  b'"), 0);
    EXPECT_EQ(run("/usr/bin/known", "kill -KILL $$"), std::nullopt);
    EXPECT_EQ(run("/nowhere/to/be/found", ""), std::nullopt);
}

TEST(ProgramLocationsTest, FindsItsOwnInstallation) {
    EXPECT_EQ(ProgramLocations("/opt/o/bin/orvello").libexecProgram("osascript"),
              "/opt/o/libexec/orvello/osascript");
    EXPECT_EQ(ProgramLocations("/opt/o/libexec/orvello/orvellos").libexecProgram("osascript"),
              "/opt/o/libexec/orvello/osascript");
}

}  // namespace
}  // namespace platform::freedesktop
