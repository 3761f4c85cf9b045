#include "dev_element_code.h"

DDB_CODE::_COMPONENT dev_get_ddb_code_by_element(DEV_ELEMENT_ENUM element) {
    return static_cast<DDB_CODE::_COMPONENT>(static_cast<int>(element));
}

DEV_ELEMENT_ENUM dev_get_element_by_ddb_code(DDB_CODE::_COMPONENT code) {
    return static_cast<DEV_ELEMENT_ENUM>(static_cast<int>(code));
}
