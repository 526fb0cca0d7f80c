#include "platform/x11/windows/TagShapes.h"

#include <vector>

namespace platform::x11 {

void TagShapes::set(xcb_shape_kind_t kind, std::optional<Shape>& sent, Extent extent,
                    const Outline& outline) {
    Shape wanted{.extent = extent};
    if (extent == Extent::Silhouette) wanted = {extent, outline.version, outline.geometry};
    if (sent == wanted) return;
    sent = wanted;
    auto* connection = context_.connection.get();
    if (extent == Extent::Everything) {
        xcb_shape_mask(connection, XCB_SHAPE_SO_SET, kind, window_, 0, 0, XCB_PIXMAP_NONE);
        return;
    }
    std::vector<xcb_rectangle_t> rectangles;
    if (extent == Extent::Silhouette)
        for (const auto& r : context_.painter.silhouette(outline.layers, outline.geometry))
            rectangles.push_back({static_cast<std::int16_t>(r.x), static_cast<std::int16_t>(r.y),
                                  static_cast<std::uint16_t>(r.width), static_cast<std::uint16_t>(r.height)});
    xcb_shape_rectangles(connection, XCB_SHAPE_SO_SET, kind, XCB_CLIP_ORDERING_UNSORTED, window_, 0, 0,
                         static_cast<std::uint32_t>(rectangles.size()), rectangles.data());
}

}  // namespace platform::x11
