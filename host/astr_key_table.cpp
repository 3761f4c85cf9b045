#include "host/astr_key_table.h"

#include <cstring>

#include "host/dstr_table.h"

const char* astr_kind_prefix(ASTR_KIND kind) {
    static const char* const prefixes[ASTR_KIND_COUNT] = {
        "BOOL_", "INT_", "ENUM_", "STRING_", "2D_INT_", "VEC_INT_", "VEC_DOUBLE_", "VEC_STRING_"};
    return static_cast<unsigned>(kind) < ASTR_KIND_COUNT ? prefixes[kind] : "";
}

ASTR_KEY_TABLE::ASTR_KEY_TABLE(const char* enum_name, const char* bound_name, ASTR_KIND kind,
                               const ASTR_KEY_ENTRY* entries, int count)
    : m_enum_name(enum_name), m_bound_name(bound_name), m_kind(kind), m_entries(entries),
      m_count(count) {
    size_t size = 4;
    while (size < static_cast<size_t>(count) * 2) size *= 2;
    m_slots.assign(size, -1);
    m_mask = size - 1;
    m_lengths.resize(static_cast<size_t>(count));
    for (int key = 0; key < count; ++key) {
        const size_t length = std::strlen(entries[key].debug);
        m_lengths[key] = static_cast<uint32_t>(length);
        size_t slot = hash(entries[key].debug, length) & m_mask;
        while (m_slots[slot] >= 0) slot = (slot + 1) & m_mask;
        m_slots[slot] = key;
    }
}

// Eight bytes at a time, each word mixed in by a multiply; key names are short.
uint64_t ASTR_KEY_TABLE::hash(const char* text, size_t length) {
    const uint64_t mul = 0x9E3779B97F4A7C15ULL;
    uint64_t h = length * mul;
    size_t i = 0;
    for (; i + 8 <= length; i += 8) {
        uint64_t word;
        std::memcpy(&word, text + i, 8);
        h = (h ^ word) * mul;
        h ^= h >> 32;
    }
    uint64_t tail = 0;
    for (size_t shift = 0; i < length; ++i, shift += 8)
        tail |= static_cast<uint64_t>(static_cast<unsigned char>(text[i])) << shift;
    h = (h ^ tail) * mul;
    return h ^ (h >> 29);
}

bool ASTR_KEY_TABLE::exists_by_string(const std::string& name) const {
    return get_by_string(name) < m_count;
}

int ASTR_KEY_TABLE::get_by_string(const std::string& name) const {
    const size_t length = name.size();
    for (size_t slot = hash(name.data(), length) & m_mask;; slot = (slot + 1) & m_mask) {
        const int key = m_slots[slot];
        if (key < 0) return m_count;
        if (m_lengths[key] == length && std::memcmp(m_entries[key].debug, name.data(), length) == 0)
            return key;
    }
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
