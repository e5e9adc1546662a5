#include "util/resource.h"

#include <strings.h>

#include <string>

#include "util/embedded_resource.h"

namespace zentor::os {

std::string_view FindOwnResource(std::string_view type, std::string_view name) {
    const std::string wantedType(type);
    const std::string wantedName(name);
    for (const EmbeddedResource& resource : kEmbeddedResources) {
        if (strcasecmp(resource.type, wantedType.c_str()) == 0 && strcasecmp(resource.name, wantedName.c_str()) == 0) {
            return {reinterpret_cast<const char*>(resource.bytes), resource.size};
        }
    }
    return {};
}

}  // namespace zentor::os
