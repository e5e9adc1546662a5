// The one suite that a process keeps.
#pragma once

#include "errors/host_suite.h"

namespace zentor_test {

inline ZT_HostExtensions& Extensions() {
    static ZT_HostExtensions extensions{};
    return extensions;
}

inline ZT_HostSuite& Suite() {
    static ZT_HostSuite suite{};
    suite.extensions = &Extensions();
    return suite;
}

}  // namespace zentor_test
