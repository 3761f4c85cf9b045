#include "host/astr_key_table.h"

#include "host/dstr_table.h"
#include "host/vtl_hash.h"

const char* astr_kind_prefix(ASTR_KIND kind) {
    static const char* const prefixes[ASTR_KIND_COUNT] = {
        "BOOL_", "INT_", "ENUM_", "STRING_", "2D_INT_", "VEC_INT_", "VEC_DOUBLE_", "VEC_STRING_"};
    return static_cast<unsigned>(kind) < ASTR_KIND_COUNT ? prefixes[kind] : "";
}

struct ASTR_KEY_TABLE::INDEX {
    VTL_HASH<std::string, int> by_name;
    explicit INDEX(size_t n) : by_name(n * 2 + 1) {}
};

ASTR_KEY_TABLE::ASTR_KEY_TABLE(const char* enum_name, const char* bound_name, ASTR_KIND kind,
                               const ASTR_KEY_ENTRY* entries, int count)
    : m_enum_name(enum_name), m_bound_name(bound_name), m_kind(kind), m_entries(entries),
      m_count(count) {}

ASTR_KEY_TABLE::~ASTR_KEY_TABLE() = default;

const ASTR_KEY_TABLE::INDEX& ASTR_KEY_TABLE::index() const {
    if (!m_index) {
        auto idx = std::make_unique<INDEX>(static_cast<size_t>(m_count));
        for (int i = 0; i < m_count; ++i) idx->by_name.insert(m_entries[i].debug, i);
        m_index = std::move(idx);
    }
    return *m_index;
}

bool ASTR_KEY_TABLE::exists_by_string(const std::string& name) const {
    return index().by_name.contains(name);
}

int ASTR_KEY_TABLE::get_by_string(const std::string& name) const {
    const int* key = index().by_name.find(name);
    return key ? *key : m_count;
}

const char* ASTR_KEY_TABLE::debug_string(int key) const {
    return static_cast<unsigned>(key) < static_cast<unsigned>(m_count) ? m_entries[key].debug : "";
}

const char* ASTR_KEY_TABLE::user_string(int key) const {
    return static_cast<unsigned>(key) < static_cast<unsigned>(m_count) ? m_entries[key].user : "";
}

const DSTR_TABLE* ASTR_KEY_TABLE::value_table(int key, int row, int column) const {
    if (static_cast<unsigned>(key) >= static_cast<unsigned>(m_count)) return nullptr;
    ASTR_VALUE_TABLE_FN fn = m_entries[key].values;
    return fn ? fn(row, column) : nullptr;
}

bool ASTR_KEY_TABLE::exists_enum_data_by_string(int key, const std::string& name) const {
    return exists_enum_data_by_string(key, -1, -1, name);
}

int ASTR_KEY_TABLE::get_enum_data_by_string(int key, const std::string& name) const {
    return get_enum_data_by_string(key, -1, -1, name);
}

std::string ASTR_KEY_TABLE::get_enum_data_name(int key, int value) const {
    return get_enum_data_name(key, -1, -1, value);
}

bool ASTR_KEY_TABLE::exists_enum_data_by_string(int key, int row, int column,
                                                const std::string& name) const {
    const DSTR_TABLE* values = value_table(key, row, column);
    return values && values->exists_by_string(name);
}

int ASTR_KEY_TABLE::get_enum_data_by_string(int key, int row, int column,
                                            const std::string& name) const {
    const DSTR_TABLE* values = value_table(key, row, column);
    return values ? values->get_by_string(name) : 0;
}

std::string ASTR_KEY_TABLE::get_enum_data_name(int key, int row, int column, int value) const {
    const DSTR_TABLE* values = value_table(key, row, column);
    return values ? std::string(values->debug_string(value)) : std::string();
}
