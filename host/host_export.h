// HOST_EXPORT marks what libvelcora_host exports: the host services the device database
// library and its users call. Everything else in the host library is hidden.
#ifndef VELCORA_HOST_EXPORT_H
#define VELCORA_HOST_EXPORT_H

#define HOST_EXPORT __attribute__((visibility("default")))

#endif
