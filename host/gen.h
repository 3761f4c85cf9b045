// Host installation and general helpers.
#ifndef VELCORA_HOST_GEN_H
#define VELCORA_HOST_GEN_H

#include "host/host_export.h"

#include <string>

// The installation root, always ending in "/": VELCORA_ROOTDIR when set, else the installed
// data beside the library (<prefix>/share/velcora for a library in <prefix>/lib). A build
// tree's bundled installation is named through VELCORA_ROOTDIR.
HOST_EXPORT std::string gen_get_velcora_path();
// The device-database root: the installation root followed by "ddb" (no trailing "/").
HOST_EXPORT std::string gen_get_ddb_root();
// Overrides the installation root for this process (empty: back to the default rule).
HOST_EXPORT void gen_set_velcora_path(const std::string& root);

// strcmp without regard to ASCII case.
HOST_EXPORT int gen_stricmp(const char* a, const char* b);

#endif
