#include "tests/support/Picture.h"

#include <algorithm>
#include <cstdlib>
#include <span>
#include <stdexcept>
#include <string>

#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

namespace desktop_test {

bool isNear(Rgb a, Rgb b, int tolerance) {
    const auto component = [](Rgb color, int shift) {
        return static_cast<int>(color >> static_cast<unsigned>(shift) & 0xFFU);
    };
    return std::ranges::all_of(std::initializer_list<int>{0, 8, 16}, [&](int shift) {
        return std::abs(component(a, shift) - component(b, shift)) <= tolerance;
    });
}

Rgb Picture::at(int x, int y) const {
    if (x < 0 || x >= width_ || y < 0 || y >= height_) throw std::out_of_range("no such pixel");
    return pixels_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
                   static_cast<std::size_t>(x)];
}

int Picture::count(Rectangle area, Rgb color, int tolerance) const {
    int result = 0;
    for (int y = std::max(area.y, 0); y < std::min(area.y + area.height, height_); ++y)
        for (int x = std::max(area.x, 0); x < std::min(area.x + area.width, width_); ++x)
            result += isNear(at(x, y), color, tolerance) ? 1 : 0;
    return result;
}

int Picture::count(Rgb color, int tolerance) const {
    return count({0, 0, width_, height_}, color, tolerance);
}

// Through the plainest of image formats, which ImageMagick turns into the one asked for.
void Picture::writePng(const std::filesystem::path& path) const {
    std::string plain = "P6\n" + std::to_string(width_) + " " + std::to_string(height_) + "\n255\n";
    for (const auto pixel : pixels_)
        for (const auto shift : {16U, 8U, 0U}) plain += static_cast<char>(pixel >> shift & 0xFFU);
    const TemporaryFolder folder;
    const auto source = folder.path() / "picture.ppm";
    writeFile(source, plain);
    std::filesystem::create_directories(path.parent_path());
    if (runCommand({"convert", source.string(), "png:" + path.string()}, {}).status != 0)
        throw std::runtime_error("cannot write " + path.string());
}

Picture takePicture(XClient& client) {
    return takePicture(client, client.geometry(client.root()).value_or(Rectangle{}));
}

Picture takePicture(XClient& client, const Rectangle& area) {
    const auto cookie =
        xcb_get_image(client.connection(), XCB_IMAGE_FORMAT_Z_PIXMAP, client.root(),
                      static_cast<std::int16_t>(area.x), static_cast<std::int16_t>(area.y),
                      static_cast<std::uint16_t>(area.width), static_cast<std::uint16_t>(area.height), ~0U);
    const Reply<xcb_get_image_reply_t> reply(xcb_get_image_reply(client.connection(), cookie, nullptr));
    if (!reply || reply->depth != 24) throw std::runtime_error("the screen gives no picture of 24 bits");
    const std::span data(reinterpret_cast<const Rgb*>(xcb_get_image_data(reply.get())),
                         static_cast<std::size_t>(xcb_get_image_data_length(reply.get())) / sizeof(Rgb));
    std::vector<Rgb> pixels;
    pixels.reserve(data.size());
    for (const auto pixel : data) pixels.push_back(pixel & 0xFFFFFFU);
    return {area.width, area.height, std::move(pixels)};
}

}  // namespace desktop_test
