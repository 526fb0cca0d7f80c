#include "orvellos/panels/CreateTagForm.h"

#include "orvellos/base/Text.h"

namespace orvellos {

bool CreateTagForm::canCreate() const {
    return !trimmed(label).empty();
}

void CreateTagForm::submit() const {
    if (!canCreate()) return;
    const auto create = onCreate_;
    create(std::string(trimmed(label)), std::string(colorHex));
}

void CreateTagForm::cancel() const {
    const auto cancel = onCancel_;
    cancel();
}

}  // namespace orvellos
