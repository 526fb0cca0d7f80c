#pragma once

#include "platform/x11/XConnection.h"

namespace platform::x11 {

// What the server says of an extension; null when it has not got it or does not answer in time. Never waits
// longer than the connection's patience, which the X library's own question does.
[[nodiscard]] const xcb_query_extension_reply_t* findExtension(XConnection& connection, xcb_extension_t& id);

}  // namespace platform::x11
