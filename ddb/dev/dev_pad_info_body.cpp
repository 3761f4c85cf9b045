// DEV_PAD_INFO_BODY: pads, global ids, pad names, I/O standard descriptors and I/O rules,
// the checks a body read from a file must pass, and the persistent form.
#include "dev_pad_info_body.h"

#include <algorithm>
#include <unordered_map>

#include "dev_pdb_object.h"
#include "host/dstr.h"
#include "host/msg.h"

namespace {
// The three tables start with this many buckets.
constexpr size_t INITIAL_BUCKETS = 61;
}  // namespace

DEV_PAD_INFO_BODY::DEV_PAD_INFO_BODY()
    : m_ids_by_global_id(INITIAL_BUCKETS), m_ids_by_string(INITIAL_BUCKETS), m_io_standards_by_string(INITIAL_BUCKETS) {}

DEV_PAD_INFO_BODY::~DEV_PAD_INFO_BODY() { destroy_data(); }

void DEV_PAD_INFO_BODY::destroy_data() {
    // Pads point at the default pad and the descriptors: they go first.
    m_pad_list.clear();
    m_default_pad_body.reset();
    m_io_standards.clear();
    m_io_rules.clear();
    m_ids_by_global_id = IDS_BY_GLOBAL_ID(INITIAL_BUCKETS);
    m_ids_by_string = IDS_BY_NAME(INITIAL_BUCKETS);
    m_io_standards_by_string = DESCS_BY_NAME(INITIAL_BUCKETS);
    std::fill(std::begin(m_default_io_standards_by_enum), std::end(m_default_io_standards_by_enum), nullptr);
    m_io_standard_enums.clear();
}

// ---------------------------------------------------------------------------------------
// Pads, global ids and names

void DEV_PAD_INFO_BODY::get_pad_gids(uint32_t pad_id, std::vector<uint32_t>* gids) const {
    if (!DEV_ASSERT_TEXT(gids != NULL, "Caller passed NULL gid_vec tp get_pad_gids")) return;
    gids->clear();
    if (pad_id == DEV_ILLEGAL_PAD_ID) return;
    m_ids_by_global_id.for_each([&](uint32_t gid, uint32_t id) {
        if (id == pad_id) gids->push_back(gid);
    });
}

DEV_PAD_BODY* DEV_PAD_INFO_BODY::make_default_pad_body() {
    if (!m_default_pad_body) m_default_pad_body.reset(new DEV_PAD_BODY);
    return m_default_pad_body.get();
}

void DEV_PAD_INFO_BODY::add_pad(DEV_PAD* pad) {
    if (!DEV_ASSERT_TEXT(pad != NULL, "pad != NULL")) return;
    if (DEV_PAD_BODY* body = pad->get_body()) body->set_id(static_cast<uint32_t>(m_pad_list.size()));
    m_pad_list.push_back(pad);
}

void DEV_PAD_INFO_BODY::add_to_ids_by_global_id_hash(uint32_t gid, uint32_t pad_id, bool set_on_pad) {
    if (const uint32_t* bound = m_ids_by_global_id.find(gid)) {
        if (*bound == pad_id) return;
        DEV_DEBUG("add_to_ids_by_global_id_hash(PAD = %d, KEY = %d)", static_cast<int>(pad_id), static_cast<int>(gid));
        DEV_INTERNAL_ERROR("A different PAD_ID with key " + std::to_string(static_cast<int>(gid)) +
                           " already exists in the hash table!");
        return;
    }
    m_ids_by_global_id.insert(gid, pad_id);
    DEV_PAD* pad = set_on_pad ? get_pad(pad_id) : nullptr;
    if (pad && pad->get_body()) pad->get_body()->set_int_data(DEV_PAD_INT_GLOBAL_ID, static_cast<int>(gid));
}

void DEV_PAD_INFO_BODY::add_to_ids_by_string_hash(const std::string& name, uint32_t pad_id) {
    m_ids_by_string.insert(name, pad_id);  // a name already claimed keeps its pad
}

// ---------------------------------------------------------------------------------------
// I/O standard descriptors

DEV_IO_STANDARD_DESC* DEV_PAD_INFO_BODY::get_io_standard_by_string(const std::string& name) const {
    DEV_IO_STANDARD_DESC* const* desc = m_io_standards_by_string.find(name);
    return desc ? *desc : nullptr;
}

DEV_IO_STANDARD_ENUM DEV_PAD_INFO_BODY::get_default_io_standard_enum() const {
    DEV_ASSERT_TEXT(this->is_valid_int_enum(DEV_PAD_INFO_INT_DEFAULT_IO_STANDARD),
                    "this->is_valid_int_enum(DEV_PAD_INFO_INT_DEFAULT_IO_STANDARD)");
    int standard = DEV_IO_STANDARD_INVALID;
    get_int_data(DEV_PAD_INFO_INT_DEFAULT_IO_STANDARD, &standard);
    return static_cast<DEV_IO_STANDARD_ENUM>(standard);
}

DEV_IO_STANDARD_DESC* DEV_PAD_INFO_BODY::get_default_desc_for_io_standard(DEV_IO_STANDARD_ENUM io_std_enum) const {
    if (!DEV_ASSERT_TEXT(io_std_enum > DEV_IO_STANDARD_INVALID && io_std_enum < DEV_IO_STANDARD_MAX,
                         "io_std_enum > DEV_IO_STANDARD_INVALID && io_std_enum < DEV_IO_STANDARD_MAX"))
        return nullptr;
    return m_default_io_standards_by_enum[io_std_enum];
}

void DEV_PAD_INFO_BODY::add_io_standard(DEV_IO_STANDARD_DESC* desc) {
    if (!DEV_ASSERT_TEXT(desc && desc->get_body() != NULL, "body != NULL")) return;
    m_io_standards.push_back(desc);
    if (desc->get_body()->is_valid_string_enum(DEV_IO_STANDARD_DESC_STRING_INTERNAL_NAME))
        add_to_io_standards_by_string_hash(desc->get_name(), desc);
}

void DEV_PAD_INFO_BODY::add_to_io_standards_by_string_hash(const std::string& name, DEV_IO_STANDARD_DESC* desc) {
    DEV_IO_STANDARD_DESC* const* bound = m_io_standards_by_string.find(name);
    if (!bound)
        m_io_standards_by_string.insert(name, desc);
    else if (*bound != desc)
        DEV_INTERNAL_ERROR("A different element with key " + name + " already exists in the hash table!");
}

void DEV_PAD_INFO_BODY::remove_io_standard(DEV_IO_STANDARD_DESC* desc) {
    auto owned = std::find(m_io_standards.begin(), m_io_standards.end(), desc);
    if (!desc || owned == m_io_standards.end()) return;
    // Every pad (the default pad too) lets go of the descriptor, whatever its standard: none
    // may keep pointing at a destroyed descriptor.
    auto let_go = [desc](DEV_PAD_BODY* pad) {
        while (pad && std::count(pad->get_io_standard_descs().begin(), pad->get_io_standard_descs().end(), desc))
            pad->remove_io_standard(desc);
    };
    for (DEV_PAD* pad : m_pad_list) let_go(pad->get_body());
    let_go(m_default_pad_body.get());
    const DEV_IO_STANDARD_ENUM standard = desc->get_io_standard_enum();
    if (standard != DEV_IO_STANDARD_INVALID) {
        int device_default = DEV_IO_STANDARD_INVALID;
        if (desc->is_default() && get_int_data(DEV_PAD_INFO_INT_DEFAULT_IO_STANDARD, &device_default) &&
            device_default == standard)
            DEV_INTERNAL_ERROR("Removing device-scope default IO std not allowed. Change the default first!");
        if (standard > DEV_IO_STANDARD_INVALID && standard < DEV_IO_STANDARD_MAX)
            m_default_io_standards_by_enum[standard] = nullptr;
        auto listed = std::find(m_io_standard_enums.begin(), m_io_standard_enums.end(), standard);
        if (listed != m_io_standard_enums.end()) m_io_standard_enums.erase(listed);
    }
    if (desc->get_body()->is_valid_string_enum(DEV_IO_STANDARD_DESC_STRING_INTERNAL_NAME))
        m_io_standards_by_string.erase(desc->get_name());
    m_io_standards.erase(owned);
    delete desc;
}

// The pads, tables and lists that point at descriptors are emptied with them.
void DEV_PAD_INFO_BODY::remove_all_io_standards() {
    for (DEV_PAD* pad : m_pad_list)
        if (pad->get_body()) pad->get_body()->remove_all_io_standards();
    if (m_default_pad_body) m_default_pad_body->remove_all_io_standards();
    m_io_standards_by_string = DESCS_BY_NAME(INITIAL_BUCKETS);
    std::fill(std::begin(m_default_io_standards_by_enum), std::end(m_default_io_standards_by_enum), nullptr);
    m_io_standard_enums.clear();
    m_io_standards.clear();
}

void DEV_PAD_INFO_BODY::fill_in_io_standard_enums() {
    for (const DEV_IO_STANDARD_DESC* desc : m_io_standards) {
        const DEV_IO_STANDARD_ENUM standard = desc->get_io_standard_enum();
        // A standard outside the table names no slot: reported and passed over.
        if (!DEV_ASSERT_TEXT(standard > DEV_IO_STANDARD_INVALID && standard < DEV_IO_STANDARD_MAX,
                             "io_standard_enum > DEV_IO_STANDARD_INVALID && io_standard_enum < DEV_IO_STANDARD_MAX"))
            continue;
        if (std::find(m_io_standard_enums.begin(), m_io_standard_enums.end(), standard) == m_io_standard_enums.end())
            m_io_standard_enums.push_back(standard);
        if (desc->is_default()) m_default_io_standards_by_enum[standard] = const_cast<DEV_IO_STANDARD_DESC*>(desc);
    }
    for (DEV_IO_STANDARD_ENUM standard : m_io_standard_enums)
        if (!m_default_io_standards_by_enum[standard])
            DEV_INTERNAL_ERROR(std::string("IO standard ") + dstr_get_debug_string(standard) +
                               " does not have a default descriptor!");
}

// ---------------------------------------------------------------------------------------
// I/O rules

DEV_IO_RULE* DEV_PAD_INFO_BODY::get_io_rule_by_enum(DEV_IO_RULE_ENUM io_rule_enum) const {
    if (!DEV_ASSERT_TEXT(io_rule_enum > DEV_IO_RULE_INVALID && io_rule_enum < DEV_IO_RULE_MAX,
                         "io_rule_enum > DEV_IO_RULE_INVALID && io_rule_enum < DEV_IO_RULE_MAX"))
        return nullptr;
    DEV_IO_RULE* found = nullptr;
    for (DEV_IO_RULE* rule : m_io_rules)
        if (rule->get_io_rule_enum() == io_rule_enum) found = rule;
    return found;
}

void DEV_PAD_INFO_BODY::add_io_rule(DEV_IO_RULE* rule) {
    if (rule) m_io_rules.push_back(rule);
}

void DEV_PAD_INFO_BODY::remove_all_io_rules() { m_io_rules.clear(); }

// ---------------------------------------------------------------------------------------
// Equality and structure

namespace {

// Positions of the owned records, to compare links by position.
template <typename T>
std::unordered_map<const T*, size_t> positions(const std::vector<T*>& records) {
    std::unordered_map<const T*, size_t> at;
    for (size_t i = 0; i < records.size(); ++i) at.emplace(records[i], i);
    return at;
}

template <typename T>
long position_of(const std::unordered_map<const T*, size_t>& at, const T* record) {
    if (!record) return -1;
    auto found = at.find(record);
    return found == at.end() ? -2 : static_cast<long>(found->second);
}

template <typename T>
bool same_bodies(const std::vector<T*>& a, const std::vector<T*>& b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (!(*a[i]->get_body() == *b[i]->get_body())) return false;
    return true;
}

template <typename K, typename V, typename H, typename SAME>
bool same_entries(const VTL_HASH<K, V, H>& a, const VTL_HASH<K, V, H>& b, SAME same) {
    if (a.size() != b.size()) return false;
    bool equal = true;
    a.for_each([&](const K& key, const V& value) {
        const V* other = b.find(key);
        equal = equal && other && same(value, *other);
    });
    return equal;
}

}  // namespace

bool DEV_PAD_INFO_BODY::operator==(const DEV_PAD_INFO_BODY& other) const {
    const auto mine = positions<DEV_IO_STANDARD_DESC>(m_io_standards);
    const auto theirs = positions<DEV_IO_STANDARD_DESC>(other.m_io_standards);
    auto same_desc = [&](const DEV_IO_STANDARD_DESC* a, const DEV_IO_STANDARD_DESC* b) {
        return position_of(mine, a) == position_of(theirs, b);
    };
    if (!attributes_equal(other) || m_pad_list.size() != other.m_pad_list.size() ||
        !same_bodies(m_io_standards, other.m_io_standards) || !same_bodies(m_io_rules, other.m_io_rules) ||
        m_io_standard_enums != other.m_io_standard_enums || (m_default_pad_body == nullptr) != (other.m_default_pad_body == nullptr))
        return false;
    if (m_default_pad_body && !m_default_pad_body->equals(*other.m_default_pad_body, same_desc)) return false;
    for (size_t i = 0; i < m_pad_list.size(); ++i)
        if (!m_pad_list[i]->get_body()->equals(*other.m_pad_list[i]->get_body(), same_desc)) return false;
    for (int s = 0; s < DEV_IO_STANDARD_MAX; ++s)
        if (!same_desc(m_default_io_standards_by_enum[s], other.m_default_io_standards_by_enum[s])) return false;
    auto same_id = [](uint32_t a, uint32_t b) { return a == b; };
    return same_entries(m_ids_by_global_id, other.m_ids_by_global_id, same_id) &&
           same_entries(m_ids_by_string, other.m_ids_by_string, same_id) &&
           same_entries(m_io_standards_by_string, other.m_io_standards_by_string, same_desc);
}

bool DEV_PAD_INFO_BODY::check_structure(std::string* problem) const {
    const char* wrong = nullptr;
    if (!attributes_sized() || (m_default_pad_body && !m_default_pad_body->is_sized()))
        wrong = "an attribute table of the wrong size";
    else if (m_default_pad_body && m_default_pad_body->get_default_pad_body())
        wrong = "a default pad with a parent";
    for (size_t i = 0; !wrong && i < m_pad_list.size(); ++i) {
        const DEV_PAD_BODY* body = m_pad_list[i] ? m_pad_list[i]->get_body() : nullptr;
        if (!body || body->get_id() != i)
            wrong = "a pad whose id is not its position";
        else if (body->get_default_pad_body() != m_default_pad_body.get() || !body->is_sized())
            wrong = "a pad whose parent is not the default pad";
    }
    for (const DEV_IO_STANDARD_DESC* desc : m_io_standards)
        if (!wrong && (!desc->get_body() || !desc->get_body()->is_sized())) wrong = "an I/O standard of the wrong size";
    for (const DEV_IO_RULE* rule : m_io_rules)
        if (!wrong && (!rule->get_body() || !rule->get_body()->attributes_sized())) wrong = "an I/O rule of the wrong size";
    for (DEV_IO_STANDARD_ENUM standard : m_io_standard_enums)
        if (!wrong && (standard <= DEV_IO_STANDARD_INVALID || standard >= DEV_IO_STANDARD_MAX))
            wrong = "an I/O standard outside its enumeration";
    if (wrong && problem) *problem = wrong;
    return wrong == nullptr;
}

// ---------------------------------------------------------------------------------------
// The persistent form

namespace {

const DEV_PDB_WORDING PAD_PDB_WORDING = {
    "gen_stricmp(\"ddb\", filename.extension().c_str() )== 0",
    "gen_stricmp(\"ddb\", filename.extension().c_str()) == 0",
    "Spent %.0f seconds writing PAD info to PDB: %s",
    "Spent %.0f seconds loading PAD info from PDB: %s",
    false,
};

}  // namespace

bool DEV_PAD_INFO_BODY::write_pad_to_pdb(const FIO_PATH& path, int compression_level) {
    return dev_pdb_write_root(*this, path, compression_level, PAD_PDB_WORDING);
}

DEV_PAD_INFO_BODY* DEV_PAD_INFO_BODY::load_pad_from_pdb(const FIO_PATH& path) {
    return dev_pdb_read_root<DEV_PAD_INFO_BODY>(path, PAD_PDB_WORDING);
}
