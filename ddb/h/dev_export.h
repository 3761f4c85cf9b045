// DEV_EXPORT marks what libvelcora_ddb exports: the classes and functions of its public
// headers. Everything else in the library is hidden.
#ifndef VELCORA_DEV_EXPORT_H
#define VELCORA_DEV_EXPORT_H

#define DEV_EXPORT __attribute__((visibility("default")))

#endif
