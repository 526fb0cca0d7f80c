#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "tests/support/XClient.h"

namespace desktop_test {

// A colour as 0xRRGGBB.
using Rgb = std::uint32_t;

// Whether every component differs by `tolerance` at most.
[[nodiscard]] bool isNear(Rgb a, Rgb b, int tolerance = 8);

// Pixels, rows from the top.
class Picture {
  public:
    Picture(int width, int height, std::vector<Rgb> pixels)
        : width_(width), height_(height), pixels_(std::move(pixels)) {}

    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] int height() const { return height_; }
    // Throws std::out_of_range beside the picture.
    [[nodiscard]] Rgb at(int x, int y) const;
    // How many pixels of the area (the part of it inside the picture) are near the colour.
    [[nodiscard]] int count(Rectangle area, Rgb color, int tolerance = 8) const;
    [[nodiscard]] int count(Rgb color, int tolerance = 8) const;
    [[nodiscard]] bool operator==(const Picture&) const = default;
    // Throws std::runtime_error when it cannot be written.
    void writePng(const std::filesystem::path& path) const;

  private:
    int width_;
    int height_;
    std::vector<Rgb> pixels_;
};

// What the screen shows. Throws std::runtime_error when the server does not say.
[[nodiscard]] Picture takePicture(XClient& client);
// The same of an area that is on the screen.
[[nodiscard]] Picture takePicture(XClient& client, const Rectangle& area);

}  // namespace desktop_test
