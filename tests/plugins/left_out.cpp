// A library that a module needs, and that is not there when the module is loaded.
#include <zentor/plugin/plugin.h>

ZT_PLUGIN_EXPORT int ZentorLeftOut() { return 0; }
