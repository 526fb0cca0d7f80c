#include <xcb/randr.h>
#include <xcb/screensaver.h>
#include <xcb/shape.h>
#include <xcb/xfixes.h>
#include <xcb/xinput.h>

#include <future>
#include <thread>

#include "platform/x11/connection/XConnection.h"
#include "platform/x11/connection/Xkb.h"

// Apart from the rest of the connection, so that programs that connect without a bound do not link it.

namespace platform::x11 {

namespace {

struct Opened {
    xcb_connection_t* connection = nullptr;
    int screenNumber = 0;
};

// The library's own connect waits for ever for a stopped server, so a thread waits in our place; a thread
// that is given up on ends with the process.
std::optional<Opened> connectWithin(std::optional<std::string> displayName, Duration patience) {
    std::promise<Opened> promise;
    auto future = promise.get_future();
    std::thread([promise = std::move(promise), displayName = std::move(displayName)]() mutable {
        Opened opened;
        opened.connection = xcb_connect(displayName ? displayName->c_str() : nullptr, &opened.screenNumber);
        promise.set_value(opened);
    }).detach();
    if (future.wait_for(patience) != std::future_status::ready) return std::nullopt;
    return future.get();
}

}  // namespace

std::unique_ptr<XConnection> XConnection::open(const char* displayName, Duration patience) {
    const auto opened =
        connectWithin(displayName ? std::optional<std::string>(displayName) : std::nullopt, patience);
    auto connection = opened ? adopt(opened->connection, opened->screenNumber, patience) : nullptr;
    if (!connection) return nullptr;
    connection->prefetchExtensions();
    return connection->isLate() ? nullptr : std::move(connection);
}

// The X library waits without a bound for an extension that it is not told about here.
void XConnection::prefetchExtensions() {
    for (auto* extension :
         {&xcb_randr_id, &xcb_shape_id, &xcb_xfixes_id, &xcb_input_id, &xcb_xkb_id, &xcb_screensaver_id})
        xcb_prefetch_extension_data(connection_, extension);
    xcb_prefetch_maximum_request_length(connection_);
    synchronize();
}

}  // namespace platform::x11
