#include "platform/freedesktop/PosixChildProcesses.h"

#include <BuildInformation.h>
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
    const std::filesystem::path prefix = "/opt/o";
    for (const auto& self :
         {prefix / build::kBinFolder / "orvello", prefix / build::kLibexecFolder / "orvellos"}) {
        const ProgramLocations locations(self);
        EXPECT_EQ(locations.libexecProgram("osascript"), prefix / build::kLibexecFolder / "osascript")
            << self;
        EXPECT_EQ(locations.command(), prefix / build::kBinFolder / "orvello") << self;
    }
}

}  // namespace
}  // namespace platform::freedesktop
