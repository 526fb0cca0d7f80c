#include "platform/x11/windows/TagDesktop.h"

#include <array>

#include "platform/x11/spaces/EwmhDesktops.h"

namespace platform::x11 {

namespace {
constexpr auto kRetryDelay = std::chrono::milliseconds(250);
constexpr int kMostReturns = 4;
constexpr auto kReturnMemory = std::chrono::seconds(10);
}  // namespace

void TagDesktop::moveTo(std::uint32_t desktop) {
    number_.ask(desktop);
    if (owner_.isMapped()) {
        // A window manager does not answer where the window is there already, so it goes by a detour.
        if (number_.isOutdated()) ask(kEveryDesktop);
        ask(desktop);
    } else {
        write();
        number_.tell(desktop);
    }
    context_.connection.flush();
}

void TagDesktop::ask(std::uint32_t desktop) const {
    const std::array<std::uint32_t, 2> data = {desktop, kSourceApplication};
    sendRootMessage(context_.connection, window_, context_.atoms[Atom::NetWmDesktop], data);
}

void TagDesktop::write() const {
    if (const auto own = number_.wanted())
        setProperty32(context_.connection, window_, context_.atoms[Atom::NetWmDesktop], XCB_ATOM_CARDINAL,
                      {*own});
}

void TagDesktop::read() {
    const auto cookie = requestProperty(context_.connection, window_, context_.atoms[Atom::NetWmDesktop],
                                        XCB_ATOM_CARDINAL, 1);
    const auto reply = context_.connection.reply<xcb_get_property_reply_t>(cookie);
    if (const auto told = value32(reply.get(), XCB_ATOM_CARDINAL)) follow(*told);
    if (context_.connection.isLate()) timer_ = context_.runLoop.after(kRetryDelay, [this] { read(); });
}

void TagDesktop::follow(std::uint32_t told) {
    const auto own = get();
    if (told != kEveryDesktop || !own) return number_.tell(told);
    if (!owner_.isMapped() || own == kEveryDesktop) return;
    const auto now = context_.runLoop.now();
    if (now - lastReturn_ > kReturnMemory) returns_ = 0;
    lastReturn_ = now;
    if (returns_++ >= kMostReturns) return;
    ask(*own);
    context_.connection.flush();
}

}  // namespace platform::x11
