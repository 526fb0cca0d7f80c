#include "platform/freedesktop/bus/BareBusCall.h"

#include <fmt/format.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdlib>

#include "platform/Text.h"
#include "platform/freedesktop/bus/BusWire.h"
#include "platform/freedesktop/files/FileDescriptor.h"

namespace platform::freedesktop {

namespace {

constexpr std::uint32_t kHello = 1;  // serials
constexpr std::uint32_t kQuestion = 2;

// A value of an address, where % and two hexadecimal digits are a byte.
std::string unescaped(std::string_view text) {
    std::string plain;
    for (; !text.empty(); text.remove_prefix(1)) {
        plain += text.front();
        if (text.front() != '%' || text.size() < 3) continue;
        plain.back() = static_cast<char>(std::strtol(std::string(text.substr(1, 2)).c_str(), nullptr, 16));
        text.remove_prefix(2);
    }
    return plain;
}

// The socket's name of "unix:path=…" or "unix:abstract=…"; the latter begins with a zero byte. Empty for any
// other address.
std::string socketName(std::string_view address) {
    constexpr std::string_view kUnix = "unix:";
    if (!address.starts_with(kUnix)) return {};
    address.remove_prefix(kUnix.size());
    constexpr std::string_view kPath = "path=";
    constexpr std::string_view kAbstract = "abstract=";
    for (const auto part : split(address, ',')) {
        if (part.starts_with(kPath)) return unescaped(part.substr(kPath.size()));
        if (part.starts_with(kAbstract))
            return std::string(1, '\0') + unescaped(part.substr(kAbstract.size()));
    }
    return {};
}

FileDescriptor connectTo(std::string_view address) {
    const auto name = socketName(address);
    sockaddr_un socketAddress{};
    socketAddress.sun_family = AF_UNIX;
    if (name.empty() || name.size() >= sizeof socketAddress.sun_path) return {};
    std::ranges::copy(name, socketAddress.sun_path);
    const bool isPath = name.front() != '\0';
    const auto size = offsetof(sockaddr_un, sun_path) + name.size() + (isPath ? 1 : 0);
    FileDescriptor connection(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    const auto* target = reinterpret_cast<const sockaddr*>(&socketAddress);
    const bool isConnected = connect(connection.number(), target, static_cast<socklen_t>(size)) == 0;
    return isConnected ? std::move(connection) : FileDescriptor();
}

FileDescriptor connectToFirst(std::string_view addresses) {
    for (const auto address : split(addresses, ';'))
        if (auto connection = connectTo(address); connection.isOpen()) return connection;
    return {};
}

// Everything that there is to say: who asks (D-Bus Specification, "Authentication Protocol", EXTERNAL), the
// greeting that has to come first, and the question.
std::string request(const BusCall& call) {
    std::string user;
    for (const char digit : std::to_string(getuid())) user += fmt::format("{:02x}", digit);
    const BusCall hello{.service = "org.freedesktop.DBus",
                        .path = "/org/freedesktop/DBus",
                        .interface = "org.freedesktop.DBus",
                        .member = "Hello"};
    return std::string(1, '\0') + "AUTH EXTERNAL " + user + "\r\nBEGIN\r\n" + wireCall(hello, kHello) +
           wireCall(call, kQuestion);
}

// Takes what has come from the bus apart.
class Conversation {
  public:
    bool hasEnded = false;
    std::optional<BusArguments> reply;

    void receive(std::string_view bytes) {
        received_ += bytes;
        if (!isAccepted_) takeAcceptance();
        while (isAccepted_ && !hasEnded && takeMessage()) {
        }
    }

  private:
    void takeAcceptance() {
        const auto end = received_.find("\r\n");
        if (end == std::string::npos) return;
        isAccepted_ = received_.starts_with("OK");
        hasEnded = !isAccepted_;
        received_.erase(0, end + 2);
    }

    bool takeMessage() {
        const auto length = wireLength(received_);
        if (!length || *length > received_.size()) return false;
        const auto answer = wireAnswer(std::string_view(received_).substr(0, *length), kQuestion);
        if (answer && !answer->isError) reply = wireArguments(*answer);
        hasEnded = *length == 0 || answer.has_value();
        received_.erase(0, *length);
        return true;
    }

    std::string received_;
    bool isAccepted_ = false;
};

// False when time is up.
bool awaitBytes(int connection, Instant deadline) {
    pollfd readable{connection, POLLIN, 0};
    while (true) {
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0) return false;
        const int answered = poll(&readable, 1, static_cast<int>(left.count()));
        if (answered > 0) return true;
        if (answered < 0 && errno != EINTR) return false;
    }
}

}  // namespace

std::optional<BusArguments> askBus(std::string_view addresses, const BusCall& call, Instant deadline) {
    const auto connection = connectToFirst(addresses);
    const auto said = request(call);
    if (send(connection.number(), said.data(), said.size(), MSG_NOSIGNAL) !=
        static_cast<ssize_t>(said.size()))
        return std::nullopt;
    Conversation conversation;
    std::array<char, 8192> bytes{};
    while (!conversation.hasEnded && awaitBytes(connection.number(), deadline)) {
        const auto count = recv(connection.number(), bytes.data(), bytes.size(), 0);
        if (count == 0 || (count < 0 && errno != EAGAIN && errno != EINTR)) break;
        if (count > 0) conversation.receive({bytes.data(), static_cast<std::size_t>(count)});
    }
    return std::move(conversation.reply);
}

}  // namespace platform::freedesktop
