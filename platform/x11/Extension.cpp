#include "platform/x11/Extension.h"

namespace platform::x11 {

const xcb_query_extension_reply_t* findExtension(XConnection& connection, xcb_extension_t& id) {
    xcb_prefetch_extension_data(connection.get(), &id);
    const auto later = xcb_get_input_focus(connection.get());
    // Answers come in the order of the questions, so that the one before has come too.
    if (!connection.reply<xcb_get_input_focus_reply_t>(later)) return nullptr;
    const auto* extension = xcb_get_extension_data(connection.get(), &id);
    return extension && extension->present ? extension : nullptr;
}

}  // namespace platform::x11
