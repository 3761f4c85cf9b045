// DEV_POWER_SUPPLY_DESC: a descriptor of one supply.
#include "dev_power_supply_desc.h"

DEV_POWER_SUPPLY_DESC* DEV_POWER_SUPPLY_DESC::create(DEV_POWER_SUPPLY_ENUM supply) {
    auto* body = new DEV_POWER_SUPPLY_DESC_BODY;
    body->set_power_supply_enum(supply);
    return new DEV_POWER_SUPPLY_DESC(body);
}

void DEV_POWER_SUPPLY_DESC::set_power_supply_enum(DEV_POWER_SUPPLY_ENUM supply) {
    if (BODY* body = body_to_write()) body->set_power_supply_enum(supply);
}
