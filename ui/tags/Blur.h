#pragma once

#include <QImage>

namespace ui {

// Blurs an image of the format Alpha8 in place like a Gaussian of the standard deviation `sigma` (pixels), by
// three box blurs.
void blurAlpha(QImage& image, double sigma);

}  // namespace ui
