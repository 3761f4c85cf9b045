// Dynamic modules over dlopen.
#include "host/thr_drl.h"

#include <dlfcn.h>

#include <string>

namespace {
std::string g_error;

void take_error(const char* fallback) {
    const char* e = dlerror();
    g_error = e ? e : fallback;
}
}  // namespace

THR_DRL_HANDLE thr_drl_load(const char* path) {
    g_error.clear();
    if (!path || !*path) {
        g_error = "no module path given";
        return nullptr;
    }
    void* h = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (!h) take_error("cannot load module");
    return h;
}

void* thr_drl_find_function(THR_DRL_HANDLE handle, const char* name) {
    g_error.clear();
    if (!handle || !name) {
        g_error = "no module or function name given";
        return nullptr;
    }
    dlerror();
    void* f = dlsym(handle, name);
    if (!f) take_error("function not found");
    return f;
}

const char* thr_drl_get_error() { return g_error.c_str(); }

bool thr_drl_unload(THR_DRL_HANDLE handle) {
    g_error.clear();
    if (!handle) return false;
    if (dlclose(handle) != 0) {
        take_error("cannot unload module");
        return false;
    }
    return true;
}
