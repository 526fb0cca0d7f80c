#include "orvellos/windows/Animation.h"

#include <algorithm>
#include <memory>

namespace orvellos {

namespace {

constexpr auto kStep = platform::seconds(1.0 / 60);

double bezier(double first, double second, double t) {
    const double rest = 1 - t;
    return 3 * rest * rest * t * first + 3 * rest * t * t * second + t * t * t;
}

}  // namespace

double TimingCurve::progress(double time) const {
    if (time <= 0) return 0;
    if (time >= 1) return 1;
    // x grows with the curve's parameter, so halving finds it; 40 halvings are exact for a double's purposes.
    double low = 0;
    double high = 1;
    for (int i = 0; i < 40; ++i) {
        const double middle = (low + high) / 2;
        (bezier(x1, x2, middle) < time ? low : high) = middle;
    }
    return bezier(y1, y2, low);
}

double cubicEaseInOut(double time) {
    if (time < 0.5) return 4 * time * time * time;
    const double rest = 2 - 2 * time;
    return 1 - rest * rest * rest / 2;
}

void Animation::start(platform::Duration duration, std::function<void(double)> step) {
    const auto begin = runLoop_.now();
    timer_ =
        runLoop_.every(kStep, platform::Duration::zero(), [this, begin, duration, step = std::move(step)] {
            const auto run = step;  // a step may start another animation, which ends this one
            const double elapsed = std::chrono::duration<double>(runLoop_.now() - begin).count();
            const double time =
                std::clamp(elapsed / std::chrono::duration<double>(duration).count(), 0.0, 1.0);
            if (time >= 1) stop();
            run(time);
        });
}

}  // namespace orvellos
