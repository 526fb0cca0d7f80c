#include "orvellos/panels/CreateTagForm.h"

#include "orvellos/base/Text.h"

namespace orvellos {

bool CreateTagForm::canCreate() const {
    return !trimmed(label).empty();
}

void CreateTagForm::submit() const {
    if (canCreate()) owner_.createTag(std::string(trimmed(label)), std::string(colorHex));
}

}  // namespace orvellos
