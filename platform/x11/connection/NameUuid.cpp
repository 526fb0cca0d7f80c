#include "platform/x11/connection/NameUuid.h"

#include <uuid/uuid.h>

namespace platform::x11 {

std::string nameUuid(const char* nameSpace, std::string_view name) {
    uuid_t space;
    uuid_parse(nameSpace, space);
    uuid_t uuid;
    uuid_generate_sha1(uuid, space, name.data(), name.size());
    char text[UUID_STR_LEN];
    uuid_unparse_upper(uuid, text);
    return text;
}

}  // namespace platform::x11
