#include "ui/tags/Blur.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace ui {

namespace {

// Averages a line of `count` values, `stride` bytes apart, over a window of 2 × radius + 1.
void boxBlur(uchar* line, int count, qsizetype stride, int radius, std::vector<uchar>& copy) {
    for (int i = 0; i < count; ++i) copy[static_cast<std::size_t>(i)] = line[i * stride];
    const int width = 2 * radius + 1;
    const auto at = [&](int i) { return i < 0 || i >= count ? 0 : int{copy[static_cast<std::size_t>(i)]}; };
    int sum = 0;
    for (int i = -radius; i <= radius; ++i) sum += at(i);
    for (int i = 0; i < count; ++i) {
        line[i * stride] = static_cast<uchar>((sum + width / 2) / width);
        sum += at(i + radius + 1) - at(i - radius);
    }
}

}  // namespace

void blurAlpha(QImage& image, double sigma) {
    // Three boxes of this radius have the variance of the Gaussian: 3 · ((2r + 1)² − 1) / 12 = sigma².
    const int radius = static_cast<int>(std::lround((std::sqrt(4 * sigma * sigma + 1) - 1) / 2));
    if (radius < 1) return;
    std::vector<uchar> copy(static_cast<std::size_t>(std::max(image.width(), image.height())));
    auto* bits = image.bits();
    for (int pass = 0; pass < 3; ++pass) {
        for (int y = 0; y < image.height(); ++y)
            boxBlur(bits + y * image.bytesPerLine(), image.width(), 1, radius, copy);
        for (int x = 0; x < image.width(); ++x)
            boxBlur(bits + x, image.height(), image.bytesPerLine(), radius, copy);
    }
}

}  // namespace ui
