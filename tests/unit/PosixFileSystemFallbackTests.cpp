#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>

#include "platform/freedesktop/PosixFileSystem.h"

namespace platform::freedesktop {
namespace {

namespace fs = std::filesystem;

int failWith(int error) {
    errno = error;
    return -1;
}

// A folder on a file system that has neither a rename that never replaces nor a way to sync folders.
class PosixFileSystemFallbackTests : public testing::Test {
  protected:
    PosixFileSystemFallbackTests() {
        auto name = (fs::temp_directory_path() / "orvello-test-XXXXXX").string();
        folder_ = ::mkdtemp(name.data());
    }
    ~PosixFileSystemFallbackTests() override { fs::remove_all(folder_); }

    [[nodiscard]] long entries() const {
        return std::distance(fs::directory_iterator(folder_), fs::directory_iterator());
    }

    fs::path folder_;
    PosixFileSystem files_{{.fsync =
                                [](int file) {
                                    struct stat status {};
                                    ::fstat(file, &status);
                                    return S_ISDIR(status.st_mode) ? failWith(EINVAL) : ::fsync(file);
                                },
                            .renameNoReplace = [](const char*, const char*) { return failWith(EINVAL); }}};
};

TEST_F(PosixFileSystemFallbackTests, WritesAndMovesFilesAndFoldersWithoutReplacing) {
    const auto from = folder_ / "from";
    const auto to = folder_ / "to";
    for (const bool movesFolder : {false, true}) {
        SCOPED_TRACE(movesFolder);
        if (movesFolder)
            fs::create_directories(from / "inner");
        else
            EXPECT_EQ(files_.writeAtomically(from, "kept"), std::nullopt);
        EXPECT_EQ(files_.writeAtomically(to, "there before"), std::nullopt);
        EXPECT_EQ(files_.move(from, to), Error{"rename: File exists"});
        EXPECT_EQ(files_.read(to).value(), "there before");
        fs::remove(to);
        EXPECT_EQ(files_.move(from, to), std::nullopt);
        EXPECT_TRUE(movesFolder ? fs::is_directory(to / "inner") : files_.read(to).value() == "kept");
        EXPECT_EQ(files_.move(from, folder_ / "else"), Error{"rename: No such file or directory"});
        EXPECT_EQ(files_.move(to, to / "below"),
                  Error{movesFolder ? "rename: Invalid argument" : "rename: Not a directory"});
        EXPECT_EQ(entries(), 1);
        fs::remove_all(to);
    }
}

}  // namespace
}  // namespace platform::freedesktop
