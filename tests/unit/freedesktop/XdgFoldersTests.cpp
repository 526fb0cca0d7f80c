#include "platform/freedesktop/files/XdgFolders.h"

#include <gtest/gtest.h>

#include <map>

#include "tests/support/TemporaryFolder.h"

namespace platform::freedesktop {
namespace {

namespace fs = std::filesystem;

class XdgFoldersTests : public testing::Test {
  protected:
    desktop_test::TemporaryFolder folder_;
    fs::path home_ = folder_.path();
    std::map<std::string, std::string> variables_ = {{"HOME", home_}};
    std::optional<fs::path> registered_;
    XdgFolders folders_{[this](const char* name) {
                            const auto found = variables_.find(name);
                            return found == variables_.end() ? std::nullopt : std::optional(found->second);
                        },
                        [this] { return registered_; }};
};

TEST_F(XdgFoldersTests, FallsBackToTheRegisteredHome) {
    EXPECT_EQ(folders_.home(), home_);
    for (const char* unusable : {"", "relative"}) {
        variables_["HOME"] = unusable;
        registered_ = "/home/registered";
        EXPECT_EQ(folders_.home(), "/home/registered");
        registered_ = std::nullopt;
        EXPECT_EQ(folders_.home(), std::nullopt);
    }
    EXPECT_EQ(folders_.applicationSupport(), std::nullopt);
    EXPECT_EQ(folders_.configHome(), std::nullopt);
    EXPECT_EQ(folders_.desktop(), std::nullopt);
    variables_["XDG_DATA_HOME"] = "/data";
    EXPECT_EQ(folders_.applicationSupport(), "/data");
}

TEST_F(XdgFoldersTests, TakesAbsolutePathsFromTheEnvironment) {
    const std::pair<std::string, bool> rows[] = {{"/elsewhere", true}, {"", false}, {"relative", false}};
    for (const auto& [value, used] : rows) {
        for (const char* name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "TMPDIR"}) variables_[name] = value;
        EXPECT_EQ(folders_.applicationSupport(), used ? fs::path(value) : home_ / ".local/share");
        EXPECT_EQ(folders_.configHome(), used ? fs::path(value) : home_ / ".config");
        EXPECT_EQ(folders_.temporary(), used ? value : "/tmp");
    }
    fs::create_directories(home_ / "Library/Application Support");
    variables_["XDG_DATA_HOME"] = "/elsewhere";
    EXPECT_EQ(folders_.applicationSupport(), home_ / "Library/Application Support");
}

TEST_F(XdgFoldersTests, FindsTheDesktopThatTheUserConfigured) {
    EXPECT_EQ(folders_.desktop(), std::nullopt);
    for (const char* name : {"Desktop", "Büro \"1\"", ".config"}) fs::create_directory(home_ / name);
    const auto desktop = home_ / "Desktop";
    EXPECT_EQ(folders_.desktop(), desktop);
    const std::pair<std::string, fs::path> rows[] = {
        {"# comment\nXDG_MUSIC_DIR=\"$HOME/.config\"\n XDG_DESKTOP_DIR = \"$HOME/B\xC3\xBCro \\\"1\\\"\" \n",
         home_ / "Büro \"1\""},
        {"XDG_DESKTOP_DIR=\"$HOME/.config\"\nXDG_DESKTOP_DIR=\"/\"", "/"},
        {"XDG_DESKTOP_DIR=\"$HOME\"", home_},
        {"XDG_DESKTOP_DIR=\"$HOME/missing\"", desktop},
        {"XDG_DESKTOP_DIR=\"$HOMEX/.config\"", desktop},
        {"#XDG_DESKTOP_DIR=\"/\"\nXDG_DESKTOP_DIRS=\"/\"\nXDG_DESKTOP_DIR=/\n\"", desktop},
        {"XDG_DESKTOP_DIR=\"\\", desktop}};
    for (const auto& [text, expected] : rows) {
        desktop_test::writeFile(home_ / ".config/user-dirs.dirs", text);
        EXPECT_EQ(folders_.desktop(), expected) << text;
    }
}

}  // namespace
}  // namespace platform::freedesktop
