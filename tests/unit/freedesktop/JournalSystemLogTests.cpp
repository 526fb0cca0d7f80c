#include "platform/freedesktop/session/JournalSystemLog.h"

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <array>
#include <csignal>

#include "platform/freedesktop/files/FileDescriptor.h"
#include "platform/freedesktop/processes/StandardStreams.h"
#include "tests/support/TemporaryFolder.h"

namespace platform::freedesktop {
namespace {

// Where a journal would listen.
class StandInJournal {
  public:
    explicit StandInJournal(const std::string& path) {
        sockaddr_un address{AF_UNIX, {}};
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        if (::bind(socket_.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
            throw std::runtime_error("cannot bind " + path);
    }

    // The next entry; empty when there is none.
    std::string next() {
        std::string entry(1 << 20, '\0');
        const auto size = ::recv(socket_.number(), entry.data(), entry.size(), MSG_DONTWAIT);
        return entry.substr(0, size > 0 ? static_cast<std::size_t>(size) : 0);
    }

  private:
    platform::freedesktop::FileDescriptor socket_{::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)};
};

// The fields of an entry of less than 256 bytes each.
std::string entryOf(const std::string& message, const std::string& category) {
    std::string entry;
    for (const auto& [name, value] : {std::pair<std::string, std::string>("MESSAGE", message),
                                      {"PRIORITY", "6"},
                                      {"SYSLOG_IDENTIFIER", "orvello"},
                                      {"ORVELLO_SUBSYSTEM", "org.norvath.orvello"},
                                      {"ORVELLO_CATEGORY", category}})
        entry +=
            fmt::format("{}\n{}{}{}\n", name, static_cast<char>(value.size()), std::string(7, '\0'), value);
    return entry;
}

TEST(JournalSystemLogTests, SendsEntriesToTheJournalThatIsThere) {
    const desktop_test::TemporaryFolder folder;
    const auto path = (folder.path() / "journal").string();
    JournalSystemLog log(path);
    log.write("nav", "before there is a journal");
    {
        const StandInJournal stuck(path);
        for (int i = 0; i < 5000; ++i) log.write("nav", "more than a socket holds");
    }
    log.write("nav", "the journal is gone");
    std::filesystem::remove(path);
    StandInJournal journal(path);
    const std::string message("two\nlines\0\xff", 11);
    log.write("nav", message);
    EXPECT_EQ(journal.next(), entryOf(message, "nav"));

    testing::internal::CaptureStderr();
    log.writeGeneral("orvello: hello");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "orvello: hello\n");
    EXPECT_EQ(journal.next(), entryOf("orvello: hello", "general"));

    log.write("mc", std::string(10 << 20, 'x'));
    EXPECT_TRUE(journal.next().starts_with("MESSAGE\n"));
    JournalSystemLog(std::string(200, 'x')).write("nav", "a path that no socket can have");
}

[[noreturn]] void writeToNobody() {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) ::_exit(1);
    ::close(ends[0]);
    ::dup2(ends[1], STDERR_FILENO);
    ::signal(SIGPIPE, SIG_DFL);
    writeStandardError("nobody reads this");
    sigset_t pending;
    sigpending(&pending);
    ::_exit(sigismember(&pending, SIGPIPE) == 0 ? 0 : 2);
}

TEST(StandardErrorTests, OutlivesAReaderThatIsGone) {
    EXPECT_EXIT(writeToNobody(), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace platform::freedesktop
