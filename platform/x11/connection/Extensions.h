#pragma once

#include <memory>

#include "platform/x11/connection/XConnection.h"

namespace platform::x11 {

// Connects like XConnection::open and has the server tell about every extension that this layer uses, in one
// round trip. Null also when it does not tell within `patience`: the X library would wait without a bound for
// an extension that it has not been told about.
[[nodiscard]] std::unique_ptr<XConnection> openWithExtensions(const char* displayName, Duration patience);

// What the server has said of an extension; null when it has not got it.
[[nodiscard]] const xcb_query_extension_reply_t* findExtension(XConnection& connection, xcb_extension_t& id);

}  // namespace platform::x11
