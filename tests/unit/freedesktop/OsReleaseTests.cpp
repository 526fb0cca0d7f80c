#include "platform/freedesktop/files/OsRelease.h"

#include <gtest/gtest.h>
#include <sys/utsname.h>

#include "platform/freedesktop/files/PosixFileSystem.h"
#include "platform/simulated/SimulatedFiles.h"

namespace platform::freedesktop {
namespace {

TEST(OsReleaseTests, ReadsAFieldAsAShellWould) {
    const std::pair<const char*, const char*> rows[] = {
        {"NAME=x\nPRETTY_NAME=\"Debian GNU/Linux 12 (bookworm)\"\nID=y\n", "Debian GNU/Linux 12 (bookworm)"},
        {"PRETTY_NAME=Arch", "Arch"},
        {"PRETTY_NAME='a \\b \"c\"'", "a \\b \"c\""},
        {"PRETTY_NAME=\"a \\\"b\\\" \\$c\"", "a \"b\" $c"},
        {"#PRETTY_NAME=no\nPRETTY_NAMES=no\n", ""},
        {"PRETTY_NAME=\"unfinished \\", "unfinished \\"},
        {"PRETTY_NAME=", ""},
        {"", ""}};
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(osReleaseField(text, "PRETTY_NAME"), expected) << text;
}

TEST(OsReleaseTests, PutsTheDistributionBeforeTheKernel) {
    utsname kernel{};
    ASSERT_EQ(::uname(&kernel), 0);
    const std::string release = std::string(kernel.sysname) + " " + kernel.release;
    simulated::SimulatedFileSystem files;
    const OsRelease system(files);
    EXPECT_EQ(system.operatingSystemVersion(), release);
    files.put("/usr/lib/os-release", "PRETTY_NAME=Vendor");
    EXPECT_EQ(system.operatingSystemVersion(), "Vendor, " + release);
    files.put("/etc/os-release", "PRETTY_NAME=Local");
    EXPECT_EQ(system.operatingSystemVersion(), "Local, " + release);
    EXPECT_TRUE(PosixFileSystem().modificationDate(*system.executablePath()));
}

}  // namespace
}  // namespace platform::freedesktop
