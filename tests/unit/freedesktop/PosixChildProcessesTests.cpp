#include "platform/freedesktop/processes/PosixChildProcesses.h"

#include <BuildInformation.h>
#include <gtest/gtest.h>

#include "platform/freedesktop/processes/PosixBackgroundProcesses.h"
#include "platform/freedesktop/processes/Programs.h"
#include "tests/support/MainLoop.h"

namespace platform::freedesktop {
namespace {

TEST(PosixChildProcessesTest, GivesTheExitStatusOfALocatedProgram) {
    PosixChildProcesses processes([](const std::string& program) {
        return program == "/usr/bin/known" ? Program{"/bin/sh", {"NEW=1", "PATH=/nowhere"}}
                                           : Program{program};
    });
    const auto run = [&](const std::string& program, const std::string& script) {
        const std::vector<std::string> arguments = {"-c", script};
        return processes.run(program, arguments);
    };
    EXPECT_EQ(run("/usr/bin/known", "exit 7"), 7);
    EXPECT_EQ(run("/usr/bin/known", "test \"$(printf '%s' 'a  b')\" = 'a  b'"), 0);
    EXPECT_EQ(run("/usr/bin/known", "test \"$NEW $PATH\" = '1 /nowhere'"), 0);
    EXPECT_EQ(run("/usr/bin/known", "kill -KILL $$"), std::nullopt);
    EXPECT_EQ(run("/nowhere/to/be/found", ""), std::nullopt);
}

TEST(PosixBackgroundProcessesTest, TellsHowEachEnded) {
    desktop_test::MainLoop loop;
    PosixBackgroundProcesses processes(loop.runLoop, [](const auto& program) { return program; });
    std::map<std::string, BackgroundProcesses::Ended> ended;
    for (const std::string script : {"echo no >&2; echo yes; exit 3", "exec 2>&-; exit 0", "kill -KILL $$",
                                     "yes | head -c 300000 >&2; exit 4"}) {
        const std::vector<std::string> arguments = {"-c", script};
        EXPECT_EQ(
            processes.start("/bin/sh", arguments, [&, script](const auto& how) { ended[script] = how; }),
            std::nullopt);
    }
    EXPECT_EQ(processes.start("/nowhere/to/be/found", {}, [](const auto&) {}), "No such file or directory");
    ASSERT_TRUE(loop.runUntil([&] { return ended.size() == 4; }));
    std::vector<std::pair<std::optional<int>, std::string>> found;
    found.reserve(ended.size());
    for (const auto& [script, how] : ended) found.emplace_back(how.status, how.standardError.substr(0, 4));
    EXPECT_EQ(ended["echo no >&2; echo yes; exit 3"].standardOutput, "yes\n");
    EXPECT_EQ(found, (std::vector<std::pair<std::optional<int>, std::string>>{
                         {3, "no\n"}, {0, ""}, {std::nullopt, ""}, {4, "y\ny\n"}}));
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
