// Resources where the system has none: the build makes a table of them.
#pragma once

#include <cstddef>
#include <span>

namespace zentor {

struct EmbeddedResource {
    const char* type;
    const char* name;
    const unsigned char* bytes;
    std::size_t size;
};

extern const std::span<const EmbeddedResource> kEmbeddedResources;

}  // namespace zentor
