// Shows where plug-ins are looked for, a folder a line.
#include "conversion/plugin/search_path.h"

#include <cstdio>

int main() {
    for (const std::string& folder : ZT_PLUGIN::SearchPath()) std::printf("%s\n", folder.c_str());
}
