#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "platform/freedesktop/bus/MessageBus.h"
#include "platform/freedesktop/processes/PosixBackgroundProcesses.h"
#include "tests/support/MainLoop.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/TemporaryFolder.h"

namespace platform::freedesktop {

// A bus and programs of the test's own, which answer for a desktop's settings.
class DesktopSettingsTest : public testing::Test {
  protected:
    // Makes a program of the shell script, in place of the one before.
    void writeGsettings(const std::string& script) const {
        const auto written = folder_.path() / "new";
        desktop_test::writeFile(written, "#!/bin/sh\n" + script + "\n");
        std::filesystem::permissions(written, std::filesystem::perms::owner_all);
        std::filesystem::rename(written, folder_.path() / "gsettings");
    }

    desktop_test::PrivateBus daemon_;
    desktop_test::MainLoop loop_;
    desktop_test::TemporaryFolder folder_;
    SystemdLibrary library_;
    MessageBus bus_{library_, loop_.runLoop, loop_.runLoop, [this] { return daemon_.address(); }};
    PosixBackgroundProcesses processes_{
        loop_.runLoop, [this](const std::string& name) { return (folder_.path() / name).string(); }};
};

}  // namespace platform::freedesktop
