// Host installation and general helpers.
#ifndef VELCORA_HOST_GEN_H
#define VELCORA_HOST_GEN_H

#include <string>

// The installation root, always ending in "/": VELCORA_ROOTDIR when set, else the
// installed data beside the library (<prefix>/share/velcora) when present, else the
// bundled installation of the build tree.
std::string gen_get_velcora_path();
// The device-database root: the installation root followed by "ddb" (no trailing "/").
std::string gen_get_ddb_root();
// Overrides the installation root for this process (empty: back to the default rule).
void gen_set_velcora_path(const std::string& root);

// strcmp without regard to ASCII case.
int gen_stricmp(const char* a, const char* b);

#endif
