#pragma once

#include "platform/x11/connection/XConnection.h"

namespace platform::x11 {

// The server's description of an extension, from when the connection was opened (XConnection::open); null
// when the server lacks it. The X library would wait without a bound for an extension that was not asked
// about then.
[[nodiscard]] const xcb_query_extension_reply_t* findExtension(XConnection& connection, xcb_extension_t& id);

}  // namespace platform::x11
