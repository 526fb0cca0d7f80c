#include "platform/freedesktop/session/JournalSystemLog.h"

#include <fmt/format.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <syslog.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>

#include "platform/freedesktop/processes/StandardStreams.h"

namespace platform::freedesktop {

namespace {

constexpr const char* kIdentifier = "orvello";
constexpr std::size_t kLongestMessage = std::size_t{48} * 1024;  // fits into one datagram

// One field of the journal's native protocol in its binary form, which takes any value: the name, a line
// feed, the length as 64 bits little-endian, the value, a line feed.
void appendField(std::string& entry, std::string_view name, std::string_view value) {
    entry += name;
    entry += '\n';
    for (int shift = 0; shift < 64; shift += 8)
        entry += static_cast<char>(static_cast<std::uint64_t>(value.size()) >> shift & 0xFF);
    entry += value;
    entry += '\n';
}

std::string journalEntry(std::string_view category, std::string_view message) {
    std::string entry;
    appendField(entry, "MESSAGE", message);
    appendField(entry, "PRIORITY", fmt::format("{}", LOG_INFO));
    appendField(entry, "SYSLOG_IDENTIFIER", kIdentifier);
    appendField(entry, "ORVELLO_SUBSYSTEM", "org.norvath.orvello");
    appendField(entry, "ORVELLO_CATEGORY", category);
    return entry;
}

}  // namespace

JournalSystemLog::JournalSystemLog(std::string journalSocket)
    : journalSocket_(std::move(journalSocket)),
      socket_(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {
    ::openlog(kIdentifier, LOG_PID, LOG_USER);
}

JournalSystemLog::~JournalSystemLog() {
    if (socket_ >= 0) ::close(socket_);
}

// False when no journal is there; one that is too busy counts as having taken it. The socket is addressed
// anew each time, so that a journal which restarts is found again.
bool JournalSystemLog::sendToJournal(const std::string& entry) {
    sockaddr_un address{};
    if (socket_ < 0 || journalSocket_.size() >= sizeof address.sun_path) return false;
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, journalSocket_.data(), journalSocket_.size());
    const auto* generic = reinterpret_cast<const sockaddr*>(&address);
    if (::sendto(socket_, entry.data(), entry.size(), MSG_NOSIGNAL, generic, sizeof address) >= 0)
        return true;
    return errno == EAGAIN || errno == ENOBUFS || errno == EMSGSIZE;
}

void JournalSystemLog::write(std::string_view category, std::string_view message) {
    message = message.substr(0, kLongestMessage);
    if (sendToJournal(journalEntry(category, message))) return;
    ::syslog(LOG_INFO, "[%.*s] %.*s", static_cast<int>(category.size()), category.data(),
             static_cast<int>(message.size()), message.data());
}

void JournalSystemLog::writeGeneral(std::string_view message) {
    write("general", message);
    writeStandardError(fmt::format("{}\n", message));
}

}  // namespace platform::freedesktop
