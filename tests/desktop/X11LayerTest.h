#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "platform/simulated/SimulatedRunLoop.h"
#include "platform/x11/connection/Atoms.h"
#include "platform/x11/connection/Extensions.h"
#include "platform/x11/connection/XEvents.h"
#include "tests/support/PrivateDesktop.h"

namespace desktop_test {

// The descriptor is read when the test says so.
class HandDrivenWatcher final : public platform::DescriptorWatcher {
  public:
    platform::Subscription watchReadable(int /*descriptor*/, std::function<void()> action) override {
        return readable_.subscribe(std::move(action));
    }
    platform::Subscription watchWritable(int /*descriptor*/, std::function<void()> /*action*/) override {
        return {};
    }
    void read() { readable_.notify(); }

  private:
    platform::Observers<> readable_;
};

// A part of the X11 layer on a real server, in virtual time. Where there is no window manager the test plays
// one.
class X11LayerTest : public testing::Test {
  protected:
    explicit X11LayerTest(DesktopOptions options = {.windowManager = {.kind = WindowManager::None}})
        : desktop(std::move(options)) {}

    // Lets everything that the test or the window manager has done so far reach the layer, and then so much
    // time pass.
    void deliver(platform::Duration passing = {}) {
        x.synchronize();
        connection->synchronize();
        watcher.read();
        runLoop.advance(passing);
    }

    // The server answers nobody but the test until thaw.
    void freeze() {
        xcb_grab_server(x.connection());
        x.synchronize();
        connection->setPatience(std::chrono::milliseconds(1));
    }
    void thaw() {
        xcb_ungrab_server(x.connection());
        x.synchronize();
        connection->setPatience(kGenerousDeadline);
    }

    void setRoot(const std::string& property, const std::vector<std::uint32_t>& values) {
        x.setCardinals(x.root(), property, values);
    }
    void setAtoms(const std::string& property, const std::vector<std::string>& names) {
        std::vector<xcb_atom_t> values;
        values.reserve(names.size());
        for (const auto& name : names) values.push_back(x.atom(name));
        xcb_change_property(x.connection(), XCB_PROP_MODE_REPLACE, x.root(), x.atom(property), XCB_ATOM_ATOM,
                            32, static_cast<std::uint32_t>(values.size()), values.data());
    }
    void setCheckWindow(xcb_window_t owner, xcb_window_t check) {
        xcb_change_property(x.connection(), XCB_PROP_MODE_REPLACE, owner, x.atom("_NET_SUPPORTING_WM_CHECK"),
                            XCB_ATOM_WINDOW, 32, 1, &check);
    }
    xcb_window_t makeWindow() {
        const auto window = xcb_generate_id(x.connection());
        xcb_create_window(x.connection(), XCB_COPY_FROM_PARENT, window, x.root(), 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        return window;
    }

    PrivateDesktop desktop;
    XClient& x = desktop.x();
    platform::simulated::SimulatedRunLoop runLoop;
    HandDrivenWatcher watcher;
    std::unique_ptr<platform::x11::XConnection> connection =
        platform::x11::openWithExtensions(desktop.display().c_str(), kGenerousDeadline);
    platform::x11::Atoms atoms = platform::x11::Atoms::intern(*connection);
    platform::x11::XEvents events{*connection, watcher, runLoop};
};

}  // namespace desktop_test
