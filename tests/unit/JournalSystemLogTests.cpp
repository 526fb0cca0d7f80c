#include "platform/freedesktop/JournalSystemLog.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <array>
#include <csignal>
#include <cstring>

#include "platform/freedesktop/StandardError.h"
#include "tests/support/FileDescriptor.h"
#include "tests/support/TemporaryFolder.h"

namespace platform::freedesktop {
namespace {

using desktop_test::FileDescriptor;

// Where a journal would listen.
class StandInJournal {
  public:
    explicit StandInJournal(const std::string& path)
        : socket_(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        if (::bind(socket_.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
            throw std::runtime_error("cannot bind " + path);
    }

    // The next entry; empty when there is none.
    std::string next() {
        std::string entry(1 << 20, '\0');
        const auto size = ::recv(socket_.number(), entry.data(), entry.size(), MSG_DONTWAIT);
        entry.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
        return entry;
    }

  private:
    FileDescriptor socket_;
};

std::string field(const std::string& name, const std::string& value) {
    const std::uint64_t size = value.size();
    std::string length(8, '\0');
    std::memcpy(length.data(), &size, 8);  // the tests' machines are little-endian
    return name + '\n' + length + value + '\n';
}

TEST(JournalSystemLogTests, SendsTheMessageWithItsFields) {
    const desktop_test::TemporaryFolder folder;
    const auto path = (folder.path() / "journal").string();
    StandInJournal journal(path);
    JournalSystemLog log(path);
    const std::string message("two\nlines\0\xff", 11);
    log.write("nav", message);
    const auto fields = field("PRIORITY", "6") + field("SYSLOG_IDENTIFIER", "orvello") +
                        field("ORVELLO_SUBSYSTEM", "org.norvath.orvello");
    EXPECT_EQ(journal.next(), field("MESSAGE", message) + fields + field("ORVELLO_CATEGORY", "nav"));

    testing::internal::CaptureStderr();
    log.writeGeneral("orvello: hello");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "orvello: hello\n");
    EXPECT_EQ(journal.next(),
              field("MESSAGE", "orvello: hello") + fields + field("ORVELLO_CATEGORY", "general"));

    log.write("mc", std::string(10 << 20, 'x'));
    EXPECT_TRUE(journal.next().starts_with("MESSAGE\n"));
}

TEST(JournalSystemLogTests, DropsEntriesWhenTheJournalIsStuckOrGone) {
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
    StandInJournal restarted(path);
    log.write("nav", "back");
    EXPECT_TRUE(restarted.next().starts_with(field("MESSAGE", "back")));
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
