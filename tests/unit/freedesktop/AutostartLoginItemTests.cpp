#include "platform/freedesktop/files/AutostartLoginItem.h"

#include <gtest/gtest.h>

#include "platform/simulated/SimulatedFiles.h"

namespace platform::freedesktop {
namespace {

const std::filesystem::path kEntry = "/c/autostart/org.norvath.orvello.desktop";

class AutostartLoginItemTests : public testing::Test {
  protected:
    simulated::SimulatedFileSystem files_;
    AutostartLoginItem item_{files_, "/c", "/usr/bin/orvello"};
};

TEST_F(AutostartLoginItemTests, HidesTheEntryAndKeepsTheRest) {
    struct Row {
        std::string before;
        bool enabled;
        std::string after;
    };
    const std::string off = "[Desktop Entry]\nX-GNOME-Autostart-enabled=false";
    const Row rows[] = {
        {"[Desktop Entry]\nName=a\n", true, "[Desktop Entry]\nHidden=true\nName=a\n"},
        {"# c\n[Desktop Entry]\r\nHidden = false\nName=a\n[X]\nHidden=true", true,
         "# c\n[Desktop Entry]\r\nHidden=true\nName=a\n[X]\nHidden=true"},
        {"[Desktop Entry]\nX-Hidden=true\nX-GNOME-Autostart-enabled=true\n#Hidden=true", true,
         "[Desktop Entry]\nHidden=true\nX-Hidden=true\nX-GNOME-Autostart-enabled=true\n#Hidden=true"},
        {"[Desktop Entry]\nHidden=false", true, "[Desktop Entry]\nHidden=true"},
        {"[Desktop Entry]\nHidden= true \n", false, "[Desktop Entry]\nHidden= true \n"},
        {off, false, off},
        {"Name=a\n", false, "Name=a\n"},
        {"", false, ""}};
    EXPECT_FALSE(item_.isEnabled());
    EXPECT_EQ(item_.disable(), std::nullopt);
    EXPECT_FALSE(files_.exists(kEntry));
    for (const auto& row : rows) {
        SCOPED_TRACE(row.before);
        files_.put(kEntry, row.before);
        EXPECT_EQ(item_.isEnabled(), row.enabled);
        EXPECT_EQ(item_.disable(), std::nullopt);
        EXPECT_EQ(files_.files[kEntry], row.after);
        EXPECT_FALSE(item_.isEnabled());
        EXPECT_EQ(item_.enable(), std::nullopt);
        EXPECT_TRUE(item_.isEnabled());
    }
}

TEST_F(AutostartLoginItemTests, QuotesTheExecutable) {
    const std::pair<std::string, std::string> rows[] = {{"/usr/bin/orvello", R"("/usr/bin/orvello")"},
                                                        {"/a b/'c'", R"("/a b/'c'")"},
                                                        {R"(/q"x)", R"("/q\\"x")"},
                                                        {"/$HOME/`x`", R"("/\\$HOME/\\`x\\`")"},
                                                        {R"(/b\c)", R"("/b\\\\c")"},
                                                        {"/100%f", R"("/100%%f")"},
                                                        {"/n\nHidden=true", R"("/n\nHidden=true")"}};
    for (const auto& [path, quoted] : rows) {
        EXPECT_EQ(AutostartLoginItem(files_, "/c", path).enable(), std::nullopt);
        EXPECT_NE(files_.files[kEntry].find("\nExec=" + quoted + "\n"), std::string::npos) << path;
    }
}

TEST_F(AutostartLoginItemTests, ReportsWhatFails) {
    EXPECT_TRUE(AutostartLoginItem(files_, std::nullopt, "/x").enable());
    EXPECT_EQ(AutostartLoginItem(files_, std::nullopt, "/x").disable(), std::nullopt);
    files_.unwritable = {"/c"};
    EXPECT_EQ(item_.enable(), Error{"mkdir: Permission denied"});
    files_.put(kEntry, "[Desktop Entry]\n");
    EXPECT_EQ(item_.enable(), Error{"open: Permission denied"});
    EXPECT_EQ(item_.disable(), Error{"open: Permission denied"});
    EXPECT_TRUE(item_.isEnabled());
    files_.unreadable = {kEntry};
    EXPECT_FALSE(item_.isEnabled());
    EXPECT_EQ(item_.disable(), Error{"open: Permission denied"});
}

}  // namespace
}  // namespace platform::freedesktop
