// Element codes of the persistent files. The stored component code of an element and its
// DEV_ELEMENT_ENUM share one numbering, so the conversions return their argument's value.
#ifndef VELCORA_DEV_ELEMENT_CODE_H
#define VELCORA_DEV_ELEMENT_CODE_H

#include "dev_export.h"

#include "host/tables/dev_element_enum.h"

struct DEV_EXPORT DDB_CODE {
    enum _COMPONENT : int {
        COMPONENT_INVALID = DEV_ELEMENT_INVALID,
        COMPONENT_GENERIC = DEV_ELEMENT_GENERIC,
    };
};

DEV_EXPORT DDB_CODE::_COMPONENT dev_get_ddb_code_by_element(DEV_ELEMENT_ENUM element);
DEV_EXPORT DEV_ELEMENT_ENUM dev_get_element_by_ddb_code(DDB_CODE::_COMPONENT code);

#endif
