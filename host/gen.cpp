// Installation root and general helpers.
#include "host/gen.h"

#include <dlfcn.h>

#include <cstdlib>
#include <string>

#include "host/fio.h"

namespace {

std::string g_override;

std::string with_slash(std::string p) {
    if (!p.empty() && p.back() != '/') p += '/';
    return p;
}

// <libdir>/../share/velcora beside the loaded library.
std::string installed_root() {
    Dl_info info{};
    if (!dladdr(reinterpret_cast<void*>(&gen_get_velcora_path), &info) || !info.dli_fname) return "";
    FIO_PATH lib(info.dli_fname);
    return FIO_PATH::simplify(lib.directory() + "/../share/velcora");
}

}  // namespace

std::string gen_get_velcora_path() {
    if (!g_override.empty()) return with_slash(g_override);
    const char* env = std::getenv("VELCORA_ROOTDIR");
    if (env && *env) return with_slash(env);
    static const std::string installed = installed_root();
    return with_slash(installed);
}

std::string gen_get_ddb_root() { return gen_get_velcora_path() + "ddb"; }

void gen_set_velcora_path(const std::string& root) { g_override = root; }

int gen_stricmp(const char* a, const char* b) {
    const unsigned char* p = reinterpret_cast<const unsigned char*>(a ? a : "");
    const unsigned char* q = reinterpret_cast<const unsigned char*>(b ? b : "");
    for (;; ++p, ++q) {
        int x = (*p >= 'A' && *p <= 'Z') ? *p + 32 : *p;
        int y = (*q >= 'A' && *q <= 'Z') ? *q + 32 : *q;
        if (x != y || x == 0) return x - y;
    }
}
