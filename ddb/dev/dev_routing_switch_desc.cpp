// DEV_ROUTING_SWITCH_DESC and DEV_PASS_TREE_DESC: the keys with a fixed meaning, and the
// conflict rule of a switch's STRING keys.
#include "dev_pass_tree_desc.h"
#include "dev_routing_switch_desc.h"

#include "host/msg.h"

DEV_ROUTING_SWITCH_ENUM DEV_ROUTING_SWITCH_DESC_BODY::get_routing_switch_enum() const {
    int routing_switch = DEV_ROUTING_SWITCH_INVALID;
    get_int_data(DEV_ROUTING_SWITCH_DESC_INT_ROUTING_SWITCH, &routing_switch);
    return static_cast<DEV_ROUTING_SWITCH_ENUM>(routing_switch);
}

const char* DEV_ROUTING_SWITCH_DESC_BODY::get_name() const {
    const DEV_ROUTING_SWITCH_ENUM routing_switch = get_routing_switch_enum();
    return dstr_is_valid_dev_routing_switch_enum(routing_switch) ? dstr_get_debug_string(routing_switch) : "";
}

void DEV_ROUTING_SWITCH_DESC_BODY::set_string_data(DEV_ROUTING_SWITCH_DESC_STRING_DATA_ENUM key,
                                                   const std::string& value) {
    if (is_valid_string_enum(key)) {
        DEV_DEBUG("Error: routing string %s %s %s", get_name(), astr_get_debug_string(key), value.c_str());
        DEV_INTERNAL_ERROR("Conflicting entries in RSI file");
    }
    STRINGS::set_string_data(key, value);
}

DEV_ROUTING_SWITCH_DESC* DEV_ROUTING_SWITCH_DESC::create(DEV_ROUTING_SWITCH_ENUM routing_switch) {
    auto* body = new BODY;
    body->set_int_data(DEV_ROUTING_SWITCH_DESC_INT_ROUTING_SWITCH, routing_switch);
    return new DEV_ROUTING_SWITCH_DESC(body);
}

DEV_PASS_TREE_DESC* DEV_PASS_TREE_DESC::create(DEV_PASS_TREE_ENUM tree) {
    auto* body = new BODY;
    body->set_int_data(DEV_PASS_TREE_DESC_INT_PASS_TREE, tree);
    return new DEV_PASS_TREE_DESC(body);
}
