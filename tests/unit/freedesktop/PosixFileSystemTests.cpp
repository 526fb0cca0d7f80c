#include "platform/freedesktop/files/PosixFileSystem.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

#include "tests/support/TemporaryFolder.h"

namespace platform::freedesktop {
namespace {

namespace fs = std::filesystem;
using desktop_test::writeFile;

class PosixFileSystemTests : public testing::Test {
  protected:
    PosixFileSystemTests() { writeFile(file_, "old"); }

    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> all;
        for (const auto& entry : fs::directory_iterator(root_)) all.push_back(entry.path().filename());
        std::ranges::sort(all);
        return all;
    }

    desktop_test::TemporaryFolder folder_;
    fs::path root_ = folder_.path();
    fs::path file_ = root_ / "file";
    PosixFileSystem files_;
};

int fail(int code) {
    errno = code;
    return -1;
}

TEST_F(PosixFileSystemTests, LeavesTheOldFileAloneWhenAWriteFails) {
    const auto openingFails = [](int flag, int code) {
        return FileCalls{.open = [=](const char* path, int flags, mode_t mode) {
            return (flags & flag) == flag ? fail(code) : ::open(path, flags, mode);
        }};
    };
    int written = 0;
    const std::pair<FileCalls, std::string> rows[] = {
        {openingFails(O_DIRECTORY, EACCES), "open: Permission denied"},
        {openingFails(O_CREAT, EROFS), "open: Read-only file system"},
        {openingFails(O_CREAT, EEXIST), "open: File exists"},
        {{.write = [&](int f, const void* bytes, std::size_t) -> ssize_t {
             return written++ == 0 ? ::write(f, bytes, 1) : fail(ENOSPC);
         }},
         "write: No space left on device"},
        {{.write = [](int, const void*, std::size_t) -> ssize_t { return 0; }}, "write: Input/output error"},
        {{.fsync = [](int) { return fail(EIO); }}, "fsync: Input/output error"},
        {{.rename = [](const char*, const char*) { return fail(EACCES); }}, "rename: Permission denied"}};
    for (const auto& [calls, text] : rows) {
        SCOPED_TRACE(text);
        EXPECT_EQ(PosixFileSystem(calls).writeAtomically(file_, "new content"), Error{text});
        EXPECT_EQ(files_.read(file_).value(), "old");
        EXPECT_EQ(names(), std::vector<std::string>{"file"});
    }
}

TEST_F(PosixFileSystemTests, SyncsAllBytesBeforeTheRenameAndTheFolderAfterIt) {
    int calls = 0;
    std::vector<std::string> order;
    FileCalls slow;  // interrupted every other time, at most three bytes at once
    slow.write = [&](int f, const void* bytes, std::size_t size) -> ssize_t {
        return ++calls % 2 ? fail(EINTR) : ::write(f, bytes, std::min<std::size_t>(size, 3));
    };
    slow.fsync = [&](int f) {
        if (++calls % 2) return fail(EINTR);
        struct stat status {};
        ::fstat(f, &status);
        order.push_back(S_ISDIR(status.st_mode) ? "folder" : std::to_string(status.st_size));
        return S_ISDIR(status.st_mode) ? fail(EINVAL) : 0;  // as where folders cannot be synced
    };
    slow.rename = [&](const char* from, const char* to) {
        order.emplace_back("rename");
        return ::rename(from, to);
    };
    EXPECT_EQ(PosixFileSystem(slow).writeAtomically(file_, "new content"), std::nullopt);
    EXPECT_EQ(files_.read(file_).value(), "new content");
    EXPECT_EQ(order, (std::vector<std::string>{"11", "rename", "folder"}));
}

TEST_F(PosixFileSystemTests, KeepsPermissionsAndMakesNewFilesPrivate) {
    const auto permissionsAfterWrite = [](FileSystem& files, const fs::path& path) {
        EXPECT_EQ(files.writeAtomically(path, "new"), std::nullopt);
        return static_cast<unsigned>(fs::status(path).permissions());
    };
    PosixFileSystem stranger({.changeGroup = [](int, gid_t) { return fail(EPERM); }});
    const std::pair<unsigned, unsigned> rows[] = {{0644, 0644}, {0400, 0400}, {0660, 0600}, {0654, 0644}};
    for (const auto& [mode, ofAnotherGroup] : rows) {
        fs::permissions(file_, static_cast<fs::perms>(mode));
        EXPECT_EQ(permissionsAfterWrite(files_, file_), mode);
        EXPECT_EQ(permissionsAfterWrite(stranger, file_), ofAnotherGroup);
    }
    EXPECT_EQ(permissionsAfterWrite(files_, root_ / "new"), 0600U);
}

TEST_F(PosixFileSystemTests, ClearsAwayWhatKilledWritersLeft) {
    const std::string left = ".orvello-2147483647-0.tmp";  // more than a process id can be
    const std::vector<std::string> others = {".orvello-1-0.tmp", left + "x", ".orvello-x-0.tmp", "file"};
    for (const auto& name : others) writeFile(root_ / name, "");
    writeFile(root_ / left, "half of");
    EXPECT_EQ(files_.writeAtomically(file_, "new"), std::nullopt);
    EXPECT_EQ(names(), others);
}

TEST_F(PosixFileSystemTests, FollowsSymbolicLinks) {
    fs::create_directory(root_ / "sub");
    fs::create_symlink("sub/second", root_ / "first");
    fs::create_symlink(file_, root_ / "sub/second");
    fs::create_symlink("sub/new", root_ / "dangling");
    fs::create_symlink("nowhere/new", root_ / "lost");
    fs::create_symlink("cycle", root_ / "cycle");
    EXPECT_EQ(files_.writeAtomically(root_ / "first", "through two"), std::nullopt);
    EXPECT_EQ(files_.read(file_).value(), "through two");
    EXPECT_EQ(files_.writeAtomically(root_ / "dangling", "made"), std::nullopt);
    EXPECT_EQ(files_.read(root_ / "sub/new").value(), "made");
    for (const char* link : {"first", "sub/second", "dangling"}) EXPECT_TRUE(fs::is_symlink(root_ / link));
    EXPECT_EQ(files_.writeAtomically(root_ / "lost", "x")->description, "open: No such file or directory");
    EXPECT_EQ(files_.writeAtomically(root_ / "cycle", "x")->description,
              "open: Too many levels of symbolic links");
    for (const char* link : {"first", "cycle"}) EXPECT_TRUE(files_.exists(root_ / link)) << link;
    EXPECT_EQ(files_.writeNew(root_ / "lost", "x"), Error{"rename: File exists"});
    EXPECT_FALSE(files_.exists(root_ / "lost")) << "a dangling link is no file";
    EXPECT_FALSE(files_.exists(file_ / "below"));
    EXPECT_TRUE(files_.exists(root_ / std::string(1000, 'x'))) << "nobody can tell";
}

TEST_F(PosixFileSystemTests, MovesWhatALinkStandsForAndKeepsTheLink) {
    fs::create_symlink("file", root_ / "link");
    fs::create_symlink("cycle", root_ / "cycle");
    EXPECT_EQ(files_.move(root_ / "link", root_ / "aside"), std::nullopt);
    EXPECT_EQ(files_.read(root_ / "aside").value(), "old");
    EXPECT_TRUE(fs::is_symlink(root_ / "link"));
    EXPECT_FALSE(fs::exists(file_));
    EXPECT_EQ(files_.move(root_ / "cycle", root_ / "broken"), std::nullopt) << "a link that leads nowhere";
    EXPECT_EQ(names(), (std::vector<std::string>{"aside", "broken", "link"}));

    PosixFileSystem apart({.renameNoReplace = [](const char* from, const char* to) {
        return std::string_view(from).ends_with("aside") ? fail(EXDEV)
                                                         : FileCalls().renameNoReplace(from, to);
    }});
    EXPECT_EQ(apart.move(root_ / "aside", root_ / "link"), Error{"rename: File exists"});
    EXPECT_EQ(apart.move(root_ / "aside", root_ / "copy"), std::nullopt) << "on another disk";
    EXPECT_EQ(files_.read(root_ / "copy").value(), "old");
    EXPECT_FALSE(fs::exists(root_ / "aside"));
}

TEST_F(PosixFileSystemTests, RefusesWhatIsNoFileOrTooLarge) {
    ::mkfifo((root_ / "pipe").c_str(), 0600);
    EXPECT_EQ(files_.read(root_ / "pipe").error().description, "read: Not a regular file");
    EXPECT_EQ(files_.writeAtomically(root_ / "pipe", "x")->description, "open: Not a regular file");
    constexpr std::uintmax_t kLimit = 64U << 20;
    fs::resize_file(file_, kLimit);
    EXPECT_EQ(files_.read(file_).value().size(), kLimit);
    fs::resize_file(file_, kLimit + 1);
    EXPECT_EQ(files_.read(file_).error().description, "read: File too large");
}

TEST_F(PosixFileSystemTests, MovesInTwoStepsWhereOneIsNotSupported) {
    for (const int code : {ENOSYS, EINVAL}) {
        PosixFileSystem old({.renameNoReplace = [code](const char*, const char*) { return fail(code); }});
        writeFile(root_ / "taken", "taken");
        fs::create_directories(root_ / "folder/inner");
        for (const auto& from : {file_, root_ / "folder"})
            EXPECT_EQ(old.move(from, root_ / "taken"), Error{"rename: File exists"});
        EXPECT_EQ(files_.read(root_ / "taken").value(), "taken");
        EXPECT_EQ(old.move(root_ / "taken", root_ / "moved"), std::nullopt);
        EXPECT_EQ(old.move(root_ / "gone", root_ / "new"), Error{"rename: No such file or directory"});
        EXPECT_EQ(old.move(root_ / "folder", root_ / "folder/below"), Error{"rename: Invalid argument"});
        EXPECT_EQ(old.move(root_ / "folder", root_ / "other"), std::nullopt);
        EXPECT_TRUE(fs::is_directory(root_ / "other/inner"));
        EXPECT_EQ(names(), (std::vector<std::string>{"file", "moved", "other"}));
        fs::remove(root_ / "moved");
        fs::remove_all(root_ / "other");
    }
}

}  // namespace
}  // namespace platform::freedesktop
