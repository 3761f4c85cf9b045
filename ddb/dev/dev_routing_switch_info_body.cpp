// DEV_ROUTING_SWITCH_INFO_BODY: the records of a device's routing-switch model, their indexes
// and string lists, the checks a body read from a file must pass, and its persistent form.
#include "dev_routing_switch_info_body.h"

#include "dev_pdb_object.h"
#include "host/msg.h"

namespace {

const int STRING_KEYS = DEV_ROUTING_SWITCH_DESC_STRING_DATA_MAX;

// Binds `name` to `record` unless it is bound: to the same record nothing happens, to
// another one it is the conflict report and the first binding stays.
template <typename T>
void bind_name(VTL_HASH<std::string, T*>& table, const std::string& name, T* record, const char* what) {
    T** bound = table.find(name);
    if (!bound)
        table.insert(name, record);
    else if (*bound != record)
        DEV_INTERNAL_ERROR(std::string("A different ") + what + " with key " + name + " already exists in the hash table!");
}

template <typename T>
T* find_name(const VTL_HASH<std::string, T*>& table, const char* name) {
    if (!name) return nullptr;
    T* const* record = table.find(name);
    return record ? *record : nullptr;
}

// The first name bound to `record` ("" when none).
template <typename T>
std::string name_bound_to(const VTL_HASH<std::string, T*>& table, const T* record) {
    std::string found;
    table.for_each([&](const std::string& name, T* bound) {
        if (bound == record && found.empty()) found = name;
    });
    return found;
}

}  // namespace

DEV_ROUTING_SWITCH_INFO_BODY::DEV_ROUTING_SWITCH_INFO_BODY()
    : m_routing_switches_by_enum(), m_pass_trees_by_enum(), m_nlspc_strings(STRING_LIST_SIZE, nullptr) {}

DEV_ROUTING_SWITCH_INFO_BODY::~DEV_ROUTING_SWITCH_INFO_BODY() = default;

void DEV_ROUTING_SWITCH_INFO_BODY::set_global_info(DEV_ROUTING_GLOBAL_INFO* global_info) {
    m_global_info.reset(global_info);
    if (global_info && global_info->get_body()) global_info->get_body()->set_id(0);
}

void DEV_ROUTING_SWITCH_INFO_BODY::add_routing_switch(DEV_ROUTING_SWITCH_DESC* routing_switch) {
    DEV_ROUTING_SWITCH_DESC_BODY* body = routing_switch ? routing_switch->get_body() : nullptr;
    if (!DEV_ASSERT_TEXT(body != NULL, "routing_switch != NULL")) {
        delete routing_switch;
        return;
    }
    body->set_id(static_cast<int32_t>(m_routing_switches.size()));
    m_routing_switches.push_back(routing_switch);
    const DEV_ROUTING_SWITCH_ENUM key = body->get_routing_switch_enum();
    if (!DEV_ASSERT_TEXT(key > DEV_ROUTING_SWITCH_INVALID && key < DEV_ROUTING_SWITCH_MAX,
                         "routing_switch_enum > DEV_ROUTING_SWITCH_INVALID && routing_switch_enum < DEV_ROUTING_SWITCH_MAX"))
        return;
    m_routing_switches_by_enum[key] = routing_switch;
    m_routing_switch_enums.push_back(key);
}

void DEV_ROUTING_SWITCH_INFO_BODY::add_pass_tree(DEV_PASS_TREE_DESC* pass_tree) {
    DEV_PASS_TREE_DESC_BODY* body = pass_tree ? pass_tree->get_body() : nullptr;
    if (!DEV_ASSERT_TEXT(body != NULL, "pass_tree != NULL")) {
        delete pass_tree;
        return;
    }
    body->set_id(static_cast<int32_t>(m_pass_trees.size()));
    m_pass_trees.push_back(pass_tree);
    const DEV_PASS_TREE_ENUM key = body->get_pass_tree_enum();
    if (!DEV_ASSERT_TEXT(key > DEV_PASS_TREE_INVALID && key < DEV_PASS_TREE_MAX,
                         "pass_tree_enum > DEV_PASS_TREE_INVALID && pass_tree_enum < DEV_PASS_TREE_MAX"))
        return;
    m_pass_trees_by_enum[key] = pass_tree;
    m_pass_tree_enums.push_back(key);
}

void DEV_ROUTING_SWITCH_INFO_BODY::add_to_routing_switches_by_string_hash(const std::string& name,
                                                                          DEV_ROUTING_SWITCH_DESC* routing_switch) {
    bind_name(m_routing_switches_by_string, name, routing_switch, "routing switch");
}

void DEV_ROUTING_SWITCH_INFO_BODY::add_to_pass_trees_by_string_hash(const std::string& name,
                                                                    DEV_PASS_TREE_DESC* pass_tree) {
    bind_name(m_pass_trees_by_string, name, pass_tree, "pass tree");
}

void DEV_ROUTING_SWITCH_INFO_BODY::add_to_routing_switch_enums_by_mcf_string_hash(const std::string& text,
                                                                                  DEV_ROUTING_SWITCH_ENUM key) {
    const DEV_ROUTING_SWITCH_ENUM* bound = m_routing_switch_enums_by_mcf_string.find(text);
    if (!bound) {
        m_routing_switch_enums_by_mcf_string.insert(text, key);
        DEV_DEBUG("Adding to list %s at spot %d", text.c_str(), static_cast<int>(key));
    } else if (*bound != key) {
        DEV_INTERNAL_ERROR("A different switch_enum with key " + text + " already exists in the hash table!");
    }
}

// ---------------------------------------------------------------------------------------
// Look-ups

namespace {

// Each bound is its own report, as the callers have always seen them.
bool switch_in_range(int key) {
    const bool below = DEV_ASSERT_TEXT(key < DEV_ROUTING_SWITCH_MAX, "key < DEV_ROUTING_SWITCH_MAX");
    const bool above = DEV_ASSERT_TEXT(key >= DEV_ROUTING_SWITCH_BEGIN, "key >= DEV_ROUTING_SWITCH_BEGIN");
    const bool set = DEV_ASSERT_TEXT(key != DEV_ROUTING_SWITCH_INVALID, "key != DEV_ROUTING_SWITCH_INVALID");
    return below && above && set;
}

bool pass_tree_in_range(int key) {
    const bool below = DEV_ASSERT_TEXT(key < DEV_PASS_TREE_MAX, "key < DEV_PASS_TREE_MAX");
    const bool above = DEV_ASSERT_TEXT(key >= DEV_PASS_TREE_BEGIN, "key >= DEV_PASS_TREE_BEGIN");
    const bool set = DEV_ASSERT_TEXT(key != DEV_PASS_TREE_INVALID, "key != DEV_PASS_TREE_INVALID");
    return below && above && set;
}

}  // namespace

DEV_ROUTING_SWITCH_DESC* DEV_ROUTING_SWITCH_INFO_BODY::get_routing_switch_by_enum(DEV_ROUTING_SWITCH_ENUM key) const {
    return switch_in_range(key) ? m_routing_switches_by_enum[key] : nullptr;
}

DEV_PASS_TREE_DESC* DEV_ROUTING_SWITCH_INFO_BODY::get_pass_tree_by_enum(DEV_PASS_TREE_ENUM key) const {
    return pass_tree_in_range(key) ? m_pass_trees_by_enum[key] : nullptr;
}

DEV_ROUTING_SWITCH_DESC* DEV_ROUTING_SWITCH_INFO_BODY::get_routing_switch_by_id(int id) const {
    const bool in_range = DEV_ASSERT_TEXT(id >= 0 && id < static_cast<int>(this->m_routing_switches.size()),
                                          "id >= 0 && id < static_cast<int>(this->m_routing_switches.size())");
    return in_range ? m_routing_switches[id] : nullptr;
}

DEV_PASS_TREE_DESC* DEV_ROUTING_SWITCH_INFO_BODY::get_pass_tree_by_id(int id) const {
    const bool in_range = DEV_ASSERT_TEXT(id >= 0 && id < static_cast<int>(this->m_pass_trees.size()),
                                          "id >= 0 && id < static_cast<int>(this->m_pass_trees.size())");
    return in_range ? m_pass_trees[id] : nullptr;
}

DEV_ROUTING_SWITCH_DESC* DEV_ROUTING_SWITCH_INFO_BODY::get_routing_switch_by_string(const char* name) const {
    return find_name(m_routing_switches_by_string, name);
}

DEV_PASS_TREE_DESC* DEV_ROUTING_SWITCH_INFO_BODY::get_pass_tree_by_string(const char* name) const {
    return find_name(m_pass_trees_by_string, name);
}

DEV_ROUTING_SWITCH_ENUM DEV_ROUTING_SWITCH_INFO_BODY::get_routing_switch_enum_by_mcf_string(const char* text) const {
    const DEV_ROUTING_SWITCH_ENUM* bound = text ? m_routing_switch_enums_by_mcf_string.find(text) : nullptr;
    return bound ? *bound : DEV_ROUTING_SWITCH_INVALID;
}

std::string DEV_ROUTING_SWITCH_INFO_BODY::get_name_of(const DEV_ROUTING_SWITCH_DESC* routing_switch) const {
    const char* name = routing_switch && routing_switch->get_body() ? routing_switch->get_body()->get_name() : "";
    return *name ? std::string(name) : name_bound_to(m_routing_switches_by_string, routing_switch);
}

std::string DEV_ROUTING_SWITCH_INFO_BODY::get_name_of(const DEV_PASS_TREE_DESC* pass_tree) const {
    const DEV_PASS_TREE_ENUM tree = pass_tree ? pass_tree->get_pass_tree_enum() : DEV_PASS_TREE_INVALID;
    return dstr_is_valid_dev_pass_tree_enum(tree) ? std::string(dstr_get_debug_string(tree))
                                                  : name_bound_to(m_pass_trees_by_string, pass_tree);
}

// ---------------------------------------------------------------------------------------
// The string lists

const char* DEV_ROUTING_SWITCH_INFO_BODY::get_nlspc_string_by_enum(DEV_ROUTING_SWITCH_ENUM key) const {
    const DEV_ROUTING_SWITCH_DESC* routing_switch = get_routing_switch_by_enum(key);
    if (!DEV_ASSERT_TEXT(routing_switch != NULL, "routing_switch != NULL")) return nullptr;
    const DEV_ROUTING_SWITCH_DESC_BODY* body = routing_switch->get_body();
    if (!body || !body->is_valid_string_enum(DEV_ROUTING_SWITCH_DESC_STRING_NLSPC_NAME)) {
        DEV_INTERNAL_ERROR("This is not a valid data entry for the switch.");
        return nullptr;
    }
    return body->get_string_data(DEV_ROUTING_SWITCH_DESC_STRING_NLSPC_NAME).c_str();
}

bool DEV_ROUTING_SWITCH_INFO_BODY::has_nlspc_string_by_enum(DEV_ROUTING_SWITCH_ENUM key) const {
    const DEV_ROUTING_SWITCH_DESC* routing_switch = get_routing_switch_by_enum(key);
    return DEV_ASSERT_TEXT(routing_switch != NULL, "routing_switch != NULL") &&
           routing_switch->is_valid_string_enum(DEV_ROUTING_SWITCH_DESC_STRING_NLSPC_NAME);
}

namespace {

// STRING key `key` of the switch, or null.
const char* string_of(const DEV_ROUTING_SWITCH_DESC* routing_switch, int key) {
    const DEV_ROUTING_SWITCH_DESC_STRING_DATA_ENUM k = static_cast<DEV_ROUTING_SWITCH_DESC_STRING_DATA_ENUM>(key);
    const DEV_ROUTING_SWITCH_DESC_BODY* body = routing_switch ? routing_switch->get_body() : nullptr;
    return body && body->is_valid_string_enum(k) ? body->get_string_data(k).c_str() : nullptr;
}

}  // namespace

const char* const* DEV_ROUTING_SWITCH_INFO_BODY::get_nlspc_string_list() const {
    for (int e = 0; e < STRING_LIST_SIZE; ++e)
        m_nlspc_strings[e] = string_of(m_routing_switches_by_enum[e], DEV_ROUTING_SWITCH_DESC_STRING_NLSPC_NAME);
    return m_nlspc_strings.data();
}

const char* const* const* DEV_ROUTING_SWITCH_INFO_BODY::get_all_string_lists() const {
    if (m_string_lists.empty()) {
        m_all_strings.assign(static_cast<size_t>(STRING_KEYS) * STRING_LIST_SIZE, nullptr);
        for (int k = 0; k < STRING_KEYS; ++k) m_string_lists.push_back(m_all_strings.data() + k * STRING_LIST_SIZE);
    }
    for (int k = 0; k < STRING_KEYS; ++k)
        for (int e = 0; e < STRING_LIST_SIZE; ++e)
            m_all_strings[k * STRING_LIST_SIZE + e] = string_of(m_routing_switches_by_enum[e], k);
    return m_string_lists.data();
}

void DEV_ROUTING_SWITCH_INFO_BODY::destroy_data() {
    m_global_info.reset();
    m_routing_switches.clear();
    m_pass_trees.clear();
    for (DEV_ROUTING_SWITCH_DESC*& slot : m_routing_switches_by_enum) slot = nullptr;
    for (DEV_PASS_TREE_DESC*& slot : m_pass_trees_by_enum) slot = nullptr;
    m_routing_switch_enums.clear();
    m_pass_tree_enums.clear();
    m_routing_switch_enums_by_mcf_string.clear();
    m_routing_switches_by_string.clear();
    m_pass_trees_by_string.clear();
    m_initialized = false;
}

// ---------------------------------------------------------------------------------------
// Equality and structure

namespace {

template <typename T>
bool same_records(const std::vector<T*>& a, const std::vector<T*>& b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i) {
        const auto* x = a[i] ? a[i]->get_body() : nullptr;
        const auto* y = b[i] ? b[i]->get_body() : nullptr;
        if ((x == nullptr) != (y == nullptr) || (x && !(*x == *y))) return false;
    }
    return true;
}

template <typename T>
int id_of(const T* record) {
    return record ? record->get_id() : -1;
}

template <typename T, size_t N>
bool same_slots(T* const (&a)[N], T* const (&b)[N]) {
    for (size_t i = 0; i < N; ++i)
        if (id_of(a[i]) != id_of(b[i])) return false;
    return true;
}

template <typename T>
bool same_names(const VTL_HASH<std::string, T*>& a, const VTL_HASH<std::string, T*>& b) {
    if (a.size() != b.size()) return false;
    bool same = true;
    a.for_each([&](const std::string& name, T* record) {
        T* const* other = b.find(name);
        same = same && other && id_of(*other) == id_of(record);
    });
    return same;
}

template <typename T>
bool ids_are_positions(const std::vector<T*>& records) {
    for (size_t i = 0; i < records.size(); ++i)
        if (!records[i] || !records[i]->get_body() || records[i]->get_body()->get_id() != static_cast<int32_t>(i) ||
            !records[i]->get_body()->attributes_sized())
            return false;
    return true;
}

// Slot e holds null or a record of the list whose enumerator is e (`enum_of` tells).
template <typename T, size_t N, typename ENUM_OF>
bool slots_fit(T* const (&slots)[N], const std::vector<T*>& records, ENUM_OF enum_of) {
    for (size_t e = 0; e < N; ++e) {
        const T* p = slots[e];
        if (p && (p->get_id() < 0 || static_cast<size_t>(p->get_id()) >= records.size() ||
                  records[p->get_id()] != p || enum_of(p) != static_cast<int>(e)))
            return false;
    }
    return true;
}

}  // namespace

bool DEV_ROUTING_SWITCH_INFO_BODY::operator==(const DEV_ROUTING_SWITCH_INFO_BODY& other) const {
    const DEV_ROUTING_GLOBAL_INFO_BODY* g = m_global_info ? m_global_info->get_body() : nullptr;
    const DEV_ROUTING_GLOBAL_INFO_BODY* h = other.m_global_info ? other.m_global_info->get_body() : nullptr;
    if ((g == nullptr) != (h == nullptr) || (g && !(*g == *h))) return false;
    bool same_mcf = m_routing_switch_enums_by_mcf_string.size() == other.m_routing_switch_enums_by_mcf_string.size();
    m_routing_switch_enums_by_mcf_string.for_each([&](const std::string& text, DEV_ROUTING_SWITCH_ENUM e) {
        const DEV_ROUTING_SWITCH_ENUM* bound = other.m_routing_switch_enums_by_mcf_string.find(text);
        same_mcf = same_mcf && bound && *bound == e;
    });
    return same_mcf && same_records(m_routing_switches, other.m_routing_switches) &&
           same_records(m_pass_trees, other.m_pass_trees) &&
           same_slots(m_routing_switches_by_enum, other.m_routing_switches_by_enum) &&
           same_slots(m_pass_trees_by_enum, other.m_pass_trees_by_enum) &&
           m_routing_switch_enums == other.m_routing_switch_enums && m_pass_tree_enums == other.m_pass_tree_enums &&
           same_names(m_routing_switches_by_string, other.m_routing_switches_by_string) &&
           same_names(m_pass_trees_by_string, other.m_pass_trees_by_string);
}

bool DEV_ROUTING_SWITCH_INFO_BODY::check_structure(std::string* problem) const {
    const char* wrong = nullptr;
    if (m_global_info && (!m_global_info->get_body() || !m_global_info->get_body()->attributes_sized()))
        wrong = "a global record without a body of its size";
    else if (!ids_are_positions(m_routing_switches) || !ids_are_positions(m_pass_trees))
        wrong = "a record whose id is not its position, or without a body of its size";
    else if (!slots_fit(m_routing_switches_by_enum, m_routing_switches,
                        [](const DEV_ROUTING_SWITCH_DESC* s) { return int(s->get_routing_switch_enum()); }) ||
             !slots_fit(m_pass_trees_by_enum, m_pass_trees,
                        [](const DEV_PASS_TREE_DESC* t) { return int(t->get_pass_tree_enum()); }))
        wrong = "an index pointing outside its records or under another enumerator";
    for (DEV_ROUTING_SWITCH_ENUM e : m_routing_switch_enums)
        if (!wrong && !dstr_is_valid_dev_routing_switch_enum(e)) wrong = "a switch enumerator out of range";
    for (DEV_PASS_TREE_ENUM e : m_pass_tree_enums)
        if (!wrong && !dstr_is_valid_dev_pass_tree_enum(e)) wrong = "a pass-tree enumerator out of range";
    m_routing_switch_enums_by_mcf_string.for_each([&](const std::string&, DEV_ROUTING_SWITCH_ENUM e) {
        if (!wrong && !dstr_is_valid_dev_routing_switch_enum(e)) wrong = "an MCF string of a switch out of range";
    });
    if (wrong && problem) *problem = wrong;
    return wrong == nullptr;
}

// ---------------------------------------------------------------------------------------
// The persistent form (whole seconds in its notes)

namespace {

const DEV_PDB_WORDING RSI_PDB_WORDING = {
    "0 == gen_stricmp(\"ddb\", filename.extension().c_str())",
    "gen_stricmp(\"ddb\", filename.extension().c_str() ) == 0",
    "Spent %d seconds writing RSI info to PDB: %s",
    "Spent %d seconds loading RSI info from PDB: %s",
    true,
};

}  // namespace

bool DEV_ROUTING_SWITCH_INFO_BODY::write_rsi_to_pdb(const FIO_PATH& path, int compression_level) {
    return dev_pdb_write_root(*this, path, compression_level, RSI_PDB_WORDING);
}

DEV_ROUTING_SWITCH_INFO_BODY* DEV_ROUTING_SWITCH_INFO_BODY::load_rsi_from_pdb(const FIO_PATH& path) {
    return dev_pdb_read_root<DEV_ROUTING_SWITCH_INFO_BODY>(path, RSI_PDB_WORDING);
}
