// Host dynamic modules, over dlopen.
#ifndef VELCORA_HOST_THR_DRL_H
#define VELCORA_HOST_THR_DRL_H

typedef void* THR_DRL_HANDLE;

// Loads the module (null on failure; thr_drl_get_error tells why).
THR_DRL_HANDLE thr_drl_load(const char* path);
// The address of an exported function of a loaded module, or null.
void* thr_drl_find_function(THR_DRL_HANDLE handle, const char* name);
// The text of the last failure of this module's calls ("" when none).
const char* thr_drl_get_error();
bool thr_drl_unload(THR_DRL_HANDLE handle);

#endif
