// The symbolic value names of one record key kind (for example the INT keys of basic
// info): the names that data files may write instead of numbers, per key, and per row
// and column for 2D keys. The value converters of the library are written against this
// interface; the host's attribute-key tables supply one instance per record key kind.
#ifndef VELCORA_HOST_ASTR_VALUE_NAMES_H
#define VELCORA_HOST_ASTR_VALUE_NAMES_H

#include "host/host_export.h"

#include <string>

class HOST_EXPORT ASTR_VALUE_NAMES {
public:
    virtual ~ASTR_VALUE_NAMES() = default;

    // Whole-key values (INT, ENUM keys).
    virtual bool exists_enum_data_by_string(int key, const std::string& name) const = 0;
    virtual int get_enum_data_by_string(int key, const std::string& name) const = 0;
    // The symbolic name of `value` for `key`, or "" when the key names no such value.
    virtual std::string get_enum_data_name(int key, int value) const = 0;

    // 2D keys: names per row and column.
    virtual bool exists_enum_data_by_string(int key, int row, int column,
                                            const std::string& name) const = 0;
    virtual int get_enum_data_by_string(int key, int row, int column,
                                        const std::string& name) const = 0;
    virtual std::string get_enum_data_name(int key, int row, int column, int value) const = 0;
};

// An instance that knows no names at all (plain numbers only).
class HOST_EXPORT ASTR_NO_VALUE_NAMES : public ASTR_VALUE_NAMES {
public:
    bool exists_enum_data_by_string(int, const std::string&) const override { return false; }
    int get_enum_data_by_string(int, const std::string&) const override { return 0; }
    std::string get_enum_data_name(int, int) const override { return std::string(); }
    bool exists_enum_data_by_string(int, int, int, const std::string&) const override { return false; }
    int get_enum_data_by_string(int, int, int, const std::string&) const override { return 0; }
    std::string get_enum_data_name(int, int, int, int) const override { return std::string(); }
};

#endif
