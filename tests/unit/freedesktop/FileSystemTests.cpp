#include <gtest/gtest.h>

#include "platform/freedesktop/files/PosixFileSystem.h"
#include "platform/simulated/SimulatedFiles.h"
#include "tests/support/TemporaryFolder.h"

namespace {

using platform::FileSystem;

// What both the real files and those of the tests promise.
void expectContract(FileSystem& files, const std::filesystem::path& root) {
    const auto folder = root / "a" / "b";
    const auto file = folder / "f";
    EXPECT_EQ(files.writeAtomically(file, "x")->description, "open: No such file or directory");
    EXPECT_EQ(files.writeAtomically("", "x")->description, "open: No such file or directory");
    EXPECT_EQ(files.createFolders(folder), std::nullopt);
    EXPECT_EQ(files.createFolders(folder / ""), std::nullopt);
    EXPECT_FALSE(files.exists(file));
    EXPECT_FALSE(files.modificationDate(file));
    EXPECT_EQ(files.read(file).error().description, "open: No such file or directory");
    EXPECT_EQ(files.read(folder).error().description, "read: Is a directory");
    EXPECT_EQ(files.writeAtomically(folder, "x")->description, "open: Is a directory");

    for (const std::string& bytes : {std::string("one"), std::string(3, '\0'), std::string()}) {
        EXPECT_EQ(files.writeAtomically(file, bytes), std::nullopt);
        EXPECT_EQ(files.read(file).value(), bytes);
    }
    EXPECT_TRUE(files.modificationDate(file));
    EXPECT_EQ(files.createFolders(file / "c")->description, "mkdir: Not a directory");

    EXPECT_EQ(files.writeNew(root / "g", "g"), std::nullopt);
    EXPECT_EQ(files.writeNew(root / "g", "x")->description, "rename: File exists");
    EXPECT_EQ(files.writeNew(folder, "x")->description, "rename: File exists");
    EXPECT_EQ(files.read(root / "g").value(), "g");
    EXPECT_EQ(files.move(root / "g", file)->description, "rename: File exists");
    EXPECT_EQ(files.move(root / "h", file)->description, "rename: No such file or directory");
    EXPECT_EQ(files.read(file).value(), "");
    EXPECT_EQ(files.move(root / "g", folder / "g"), std::nullopt);
    EXPECT_FALSE(files.exists(root / "g"));
    EXPECT_EQ(files.read(folder / "g").value(), "g");
}

TEST(FileSystemTests, KeepsItsPromisesOnRealAndSimulatedFiles) {
    const desktop_test::TemporaryFolder root;
    platform::freedesktop::PosixFileSystem real;
    expectContract(real, root.path());
    platform::simulated::SimulatedFileSystem simulated;
    expectContract(simulated, "/");
}

}  // namespace
