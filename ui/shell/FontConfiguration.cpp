#include "ui/shell/FontConfiguration.h"

#include <fontconfig/fontconfig.h>

namespace ui {

std::future<void> readFontConfiguration() {
    return std::async(std::launch::async, [] { FcInit(); });
}

}  // namespace ui
