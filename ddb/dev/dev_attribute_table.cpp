// Reports of the typed attribute tables.
#include "dev_attribute_table.h"

#include "host/msg.h"

void dev_attribute_report(const char* text) { DEV_INTERNAL_ERROR(text); }

void dev_report_invalid_2d_int_string(const std::string& text) {
    DEV_INTERNAL_ERROR("Invalid string for DEV_2D_INT_ARRAY: " + text);
}

void dev_report_key_not_defined(const char* key_name) {
    DEV_INTERNAL_ERROR(std::string("Key not defined in data file: ") + key_name);
}
