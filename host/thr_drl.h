// Host dynamic modules, over dlopen.
#ifndef VELCORA_HOST_THR_DRL_H
#define VELCORA_HOST_THR_DRL_H

#include "host/host_export.h"

typedef void* THR_DRL_HANDLE;

// Loads the module (null on failure; thr_drl_get_error tells why).
HOST_EXPORT THR_DRL_HANDLE thr_drl_load(const char* path);
// The address of an exported function of a loaded module, or null.
HOST_EXPORT void* thr_drl_find_function(THR_DRL_HANDLE handle, const char* name);
// The text of the last failure of this module's calls ("" when none).
HOST_EXPORT const char* thr_drl_get_error();
HOST_EXPORT bool thr_drl_unload(THR_DRL_HANDLE handle);

#endif
