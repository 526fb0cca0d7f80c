#include "platform/x11/connection/SelectionWatch.h"

#include <xcb/xfixes.h>

#include <utility>

namespace platform::x11 {

SelectionWatch::SelectionWatch(XConnection& connection, XEvents& events, xcb_atom_t selection,
                               std::function<void(xcb_window_t)> changed)
    : changed_(std::move(changed)), selection_(selection) {
    if (const auto* extension = xcb_get_extension_data(connection.get(), &xcb_xfixes_id);
        extension && extension->present) {
        xfixesEvents_ = extension->first_event;
        connection.discard(xcb_xfixes_query_version(connection.get(), 5, 0));
        xcb_xfixes_select_selection_input(connection.get(), connection.root(), selection_,
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                              XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                              XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    }
    const auto cookie = xcb_get_selection_owner(connection.get(), selection_);
    const auto owner = connection.reply<xcb_get_selection_owner_reply_t>(cookie);
    if (owner) owner_ = owner->owner;
    subscription_ = events.subscribe([this](const auto& event) { handle(event); });
}

void SelectionWatch::handle(const xcb_generic_event_t& event) {
    if (xfixesEvents_ == 0 || XEvents::type(event) != xfixesEvents_ + XCB_XFIXES_SELECTION_NOTIFY) return;
    const auto& notify = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
    if (notify.selection != selection_) return;
    if (std::exchange(owner_, notify.owner) != notify.owner) changed_(notify.owner);
}

}  // namespace platform::x11
