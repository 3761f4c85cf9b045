// DEV_ROUTING_SWITCH_INFO: a device's routing switches, pass trees and global routing data, a
// handle over DEV_ROUTING_SWITCH_INFO_BODY.
#ifndef VELCORA_DEV_ROUTING_SWITCH_INFO_H
#define VELCORA_DEV_ROUTING_SWITCH_INFO_H

#include "dev_export.h"
#include "dev_handle.h"

class DEV_EXPORT DEV_ROUTING_SWITCH_INFO_BODY : public DEV_ATTRIBUTE_TABLE<> {};

class DEV_EXPORT DEV_ROUTING_SWITCH_INFO : public DEV_HANDLE<DEV_ROUTING_SWITCH_INFO_BODY> {
public:
    explicit DEV_ROUTING_SWITCH_INFO(DEV_ROUTING_SWITCH_INFO_BODY* body) : DEV_HANDLE(body) {}
};

#endif
