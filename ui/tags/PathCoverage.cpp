#include "ui/tags/PathCoverage.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace ui {

namespace {

// Sums up the outline's edges. A pixel's number is by how much the area to the left of the outline differs
// from that of the pixel before, so that the areas are the sums along a row.
class EdgeSums {
  public:
    explicit EdgeSums(const QSize& size)
        : width_(size.width()),
          height_(size.height()),
          sums_(static_cast<std::size_t>(width_ + 2) * static_cast<std::size_t>(height_)) {}

    void add(QPointF from, QPointF to) {
        const bool down = from.y() < to.y();
        if (!down) std::swap(from, to);
        const double slope = (to.x() - from.x()) / (to.y() - from.y());
        const double bottom = std::min<double>(to.y(), height_);
        for (double y = std::max(from.y(), 0.0); y < bottom;) {
            const int row = static_cast<int>(y);
            const double end = std::min(row + 1.0, bottom);
            const auto xAt = [&](double height) { return from.x() + (height - from.y()) * slope; };
            addInRow(row, xAt(y), xAt(end), down ? end - y : y - end);
            y = end;
        }
    }

    [[nodiscard]] QImage areas() const {
        QImage image(width_, height_, QImage::Format_Alpha8);
        for (int y = 0; y < height_; ++y) {
            const auto* row = &sums_[startOf(y)];
            auto* pixels = image.scanLine(y);
            double sum = 0;
            for (int x = 0; x < width_; ++x) {
                sum += row[x];
                const double folded = std::abs(sum - 2 * std::round(sum / 2));  // odd-even
                pixels[x] = static_cast<uchar>(std::lround(255 * folded));
            }
        }
        return image;
    }

  private:
    [[nodiscard]] std::size_t startOf(int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_ + 2);
    }

    // A piece of an edge within one row, `height` high, negative upwards.
    void addInRow(int row, double left, double right, double height) {
        left = std::clamp<double>(left, 0, width_);
        right = std::clamp<double>(right, 0, width_);
        if (left > right) std::swap(left, right);
        const double heightOfUnit = right > left ? height / (right - left) : 0;
        auto* sums = &sums_[startOf(row)];
        double x = left;
        do {
            const int column = static_cast<int>(x);
            const double end = std::min(column + 1.0, right);
            const double part = right > left ? heightOfUnit * (end - x) : height;
            const double beside = (x + end) / 2 - column;  // how much of the pixel is left of the edge
            sums[column] += static_cast<float>(part * (1 - beside));
            sums[column + 1] += static_cast<float>(part * beside);
            x = end;
        } while (x < right);
    }

    int width_;
    int height_;
    std::vector<float> sums_;
};

}  // namespace

QImage pathCoverage(const QPainterPath& path, const QSize& size) {
    EdgeSums sums(size);
    for (const auto& polygon : path.toSubpathPolygons())
        for (qsizetype i = 0; i < polygon.size(); ++i) {
            const auto& next = polygon[(i + 1) % polygon.size()];
            if (polygon[i].y() != next.y()) sums.add(polygon[i], next);
        }
    return sums.areas();
}

}  // namespace ui
