#pragma once

#include "platform/x11/connection/XConnection.h"

namespace platform::x11 {

// What the server has said of an extension when the connection was opened (XConnection::open); null when it
// has not got it. The X library would wait without a bound for an extension that was not asked about then.
[[nodiscard]] const xcb_query_extension_reply_t* findExtension(XConnection& connection, xcb_extension_t& id);

}  // namespace platform::x11
