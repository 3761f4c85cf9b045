// Reports of the handle template.
#include "dev_handle.h"

#include "host/msg.h"

void dev_handle_report(const char* text) { DEV_INTERNAL_ERROR(text); }
