#include "ui/widgets/QtKeys.h"

#include <utility>

#include "platform/Keys.h"

namespace ui {

namespace {

constexpr std::pair<std::uint64_t, Qt::KeyboardModifier> kModifiers[] = {
    {platform::modifier::kShift, Qt::ShiftModifier},
    {platform::modifier::kControl, Qt::ControlModifier},
    {platform::modifier::kOption, Qt::AltModifier},
    {platform::modifier::kCommand, Qt::MetaModifier}};

}  // namespace

Qt::KeyboardModifiers toolkitModifiers(std::uint64_t modifierFlags) {
    Qt::KeyboardModifiers modifiers;
    for (const auto& [flag, modifier] : kModifiers) modifiers.setFlag(modifier, (modifierFlags & flag) != 0);
    return modifiers;
}

std::uint64_t modifierFlags(Qt::KeyboardModifiers modifiers) {
    std::uint64_t flags = 0;
    for (const auto& [flag, modifier] : kModifiers)
        if (modifiers.testFlag(modifier)) flags |= flag;
    return flags;
}

}  // namespace ui
