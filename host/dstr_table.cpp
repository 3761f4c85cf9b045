#include "host/dstr_table.h"

#include <vector>

#include "host/vtl_hash.h"

struct DSTR_TABLE::INDEX {
    VTL_HASH<std::string, int> by_name;
    VTL_HASH<std::string, int> by_user;
    // value - min_value -> entry index (+1; 0 means none)
    std::vector<unsigned> by_value;
    int min_value = 0;
    explicit INDEX(size_t n) : by_name(n * 2 + 1), by_user(n * 2 + 1) {}
};

DSTR_TABLE::DSTR_TABLE(const char* enum_name, const DSTR_ENTRY* entries, size_t count, int invalid,
                       int bound)
    : m_enum_name(enum_name), m_entries(entries), m_count(count), m_invalid(invalid), m_bound(bound) {}

DSTR_TABLE::~DSTR_TABLE() = default;

const DSTR_TABLE::INDEX& DSTR_TABLE::index() const {
    if (!m_index) {
        auto idx = std::make_unique<INDEX>(m_count);
        int lo = 0, hi = -1;
        for (size_t i = 0; i < m_count; ++i) {
            if (i == 0 || m_entries[i].value < lo) lo = m_entries[i].value;
            if (i == 0 || m_entries[i].value > hi) hi = m_entries[i].value;
        }
        idx->min_value = lo;
        if (m_count) idx->by_value.assign(static_cast<size_t>(hi - lo) + 1, 0);
        for (size_t i = 0; i < m_count; ++i) {
            idx->by_name.insert(m_entries[i].debug, static_cast<int>(i));
            idx->by_user.insert(m_entries[i].user, static_cast<int>(i));  // the first one stays
            unsigned& slot = idx->by_value[static_cast<size_t>(m_entries[i].value - lo)];
            if (!slot) slot = static_cast<unsigned>(i + 1);
        }
        m_index = std::move(idx);
    }
    return *m_index;
}

bool DSTR_TABLE::exists_by_string(const std::string& name) const {
    return index().by_name.find(name) != nullptr;
}

int DSTR_TABLE::get_by_string(const std::string& name) const {
    const int* i = index().by_name.find(name);
    return i ? m_entries[*i].value : m_invalid;
}

bool DSTR_TABLE::exists_by_user_string(const std::string& name) const {
    return index().by_user.find(name) != nullptr;
}

int DSTR_TABLE::get_by_user_string(const std::string& name) const {
    const int* i = index().by_user.find(name);
    return i ? m_entries[*i].value : m_invalid;
}

const DSTR_ENTRY* DSTR_TABLE::find(int value) const {
    const INDEX& idx = index();
    if (value < idx.min_value) return nullptr;
    size_t off = static_cast<size_t>(static_cast<long long>(value) - idx.min_value);
    if (off >= idx.by_value.size() || !idx.by_value[off]) return nullptr;
    return &m_entries[idx.by_value[off] - 1];
}

const char* DSTR_TABLE::debug_string(int value) const {
    const DSTR_ENTRY* e = find(value);
    return e ? e->debug : "";
}

const char* DSTR_TABLE::user_string(int value) const {
    const DSTR_ENTRY* e = find(value);
    return e ? e->user : "";
}

bool DSTR_TABLE::is_valid(int value) const {
    return value > m_invalid && value < m_bound && find(value) != nullptr;
}
