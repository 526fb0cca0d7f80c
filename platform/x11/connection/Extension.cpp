#include "platform/x11/connection/Extension.h"

namespace platform::x11 {

const xcb_query_extension_reply_t* findExtension(XConnection& connection, xcb_extension_t& id) {
    const auto* extension = xcb_get_extension_data(connection.get(), &id);
    return extension && extension->present ? extension : nullptr;
}

}  // namespace platform::x11
