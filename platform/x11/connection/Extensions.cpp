#include "platform/x11/connection/Extensions.h"

#include <xcb/randr.h>
#include <xcb/screensaver.h>
#include <xcb/shape.h>
#include <xcb/xfixes.h>
#include <xcb/xinput.h>

#include <utility>

#include "platform/x11/connection/Xkb.h"

namespace platform::x11 {

std::unique_ptr<XConnection> openWithExtensions(const char* displayName, Duration patience) {
    auto connection = XConnection::open(displayName, patience);
    if (!connection) return nullptr;
    for (auto* extension :
         {&xcb_randr_id, &xcb_shape_id, &xcb_xfixes_id, &xcb_input_id, &xcb_xkb_id, &xcb_screensaver_id})
        xcb_prefetch_extension_data(connection->get(), extension);
    xcb_prefetch_maximum_request_length(connection->get());
    connection->synchronize();
    return connection->isLate() ? nullptr : std::move(connection);
}

const xcb_query_extension_reply_t* findExtension(XConnection& connection, xcb_extension_t& id) {
    const auto* extension = xcb_get_extension_data(connection.get(), &id);
    return extension && extension->present ? extension : nullptr;
}

}  // namespace platform::x11
