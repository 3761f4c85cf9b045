// DEV_PKG_INFO_BODY: pins, their names and keys, the checks a body read from a file must pass,
// and the persistent form.
#include "dev_pkg_info_body.h"

#include <cctype>

#include "dev_pdb_object.h"
#include "host/msg.h"

DEV_PKG_INFO_BODY::DEV_PKG_INFO_BODY()
    : m_pin_bool_enum_is_valid(DEV_PIN_BOOL_DATA_MAX),
      m_pin_int_enum_is_valid(DEV_PIN_INT_DATA_MAX),
      m_pin_string_enum_is_valid(DEV_PIN_STRING_DATA_MAX),
      m_pin_vec_int_enum_is_valid(DEV_PIN_VEC_INT_DATA_MAX) {
    // Every pin has BOOL key 0 from its creation.
    m_pin_bool_enum_is_valid.set_value(DEV_PIN_BOOL_IS_BONDED, true);
}

void DEV_PKG_INFO_BODY::destroy_data() {
    m_pin_list.clear();
    m_ids_by_string.clear();
    m_pins_by_folded_name = VTL_HASH<std::string, uint32_t, VTL_HASH_NOCASE>();
    m_pin_bool_enum_is_valid = VTL_BOOL_VECTOR(DEV_PIN_BOOL_DATA_MAX);
    m_pin_bool_enum_is_valid.set_value(DEV_PIN_BOOL_IS_BONDED, true);
    m_pin_int_enum_is_valid = VTL_BOOL_VECTOR(DEV_PIN_INT_DATA_MAX);
    m_pin_string_enum_is_valid = VTL_BOOL_VECTOR(DEV_PIN_STRING_DATA_MAX);
    m_pin_vec_int_enum_is_valid = VTL_BOOL_VECTOR(DEV_PIN_VEC_INT_DATA_MAX);
}

DEV_PKG_ENUM DEV_PKG_INFO_BODY::get_package_enum() const {
    int package = DEV_PKG_INVALID;
    get_int_data(DEV_PKG_INFO_INT_PACKAGE, &package);
    return static_cast<DEV_PKG_ENUM>(package);
}

void DEV_PKG_INFO_BODY::add_pin(DEV_PIN* pin) {
    if (!DEV_ASSERT_TEXT(pin != NULL, "pin != NULL")) return;
    pin->set_id(static_cast<uint32_t>(m_pin_list.size()));
    m_pin_list.push_back(pin);
}

DEV_PIN* DEV_PKG_INFO_BODY::checked_pin(uint32_t id, const char* text) const {
    DEV_PIN* pin = get_pin(id);
    DEV_ASSERT_TEXT(pin != nullptr, text);
    return pin;
}

void DEV_PKG_INFO_BODY::add_pad_id_to_pin(uint32_t pin_id, uint32_t pad_id) {
    if (DEV_PIN* pin = checked_pin(pin_id, "this->m_pin_list[pin_id] != 0")) pin->add_pad_id_to_pin(pad_id);
}

const std::vector<uint32_t>& DEV_PKG_INFO_BODY::get_list_of_pad_ids(uint32_t pin_id) const {
    const DEV_PIN* pin = checked_pin(pin_id, "this->m_pin_list[pin_id] != 0");
    return pin ? pin->get_list_of_pad_ids() : dev_attribute_default<std::vector<uint32_t>>();
}

namespace {
std::string upper_cased(const std::string& name) {
    std::string upper = name;
    for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return upper;
}
}  // namespace

// A name bound to pin 0 is taken over silently by the next pin that claims it.
void DEV_PKG_INFO_BODY::add_to_ids_by_string_hash(const std::string& name, uint32_t pin_id) {
    const std::string key = upper_cased(name);
    auto bound = m_ids_by_string.find(key);
    if (bound == m_ids_by_string.end() || bound->second == 0) {
        m_ids_by_string[key] = pin_id;
        if (uint32_t* indexed = m_pins_by_folded_name.find(key))
            *indexed = pin_id;
        else
            m_pins_by_folded_name.insert(key, pin_id);
    } else if (bound->second != pin_id) {
        DEV_INTERNAL_ERROR("A different PIN_ID with key " + key + " already exists in the hash table!");
    }
}

// Upper-cased keys hash and compare as the index folds them, so a look-up there finds what
// the map would.
void DEV_PKG_INFO_BODY::index_pin_names() {
    m_pins_by_folded_name = VTL_HASH<std::string, uint32_t, VTL_HASH_NOCASE>(2 * m_ids_by_string.size() + 1);
    for (const auto& entry : m_ids_by_string) m_pins_by_folded_name.insert(entry.first, entry.second);
}

bool DEV_PKG_INFO_BODY::operator==(const DEV_PKG_INFO_BODY& other) const {
    if (!attributes_equal(other) || m_pin_list.size() != other.m_pin_list.size() ||
        !(m_pin_bool_enum_is_valid == other.m_pin_bool_enum_is_valid) ||
        !(m_pin_int_enum_is_valid == other.m_pin_int_enum_is_valid) ||
        !(m_pin_string_enum_is_valid == other.m_pin_string_enum_is_valid) ||
        !(m_pin_vec_int_enum_is_valid == other.m_pin_vec_int_enum_is_valid) || m_ids_by_string != other.m_ids_by_string)
        return false;
    for (size_t i = 0; i < m_pin_list.size(); ++i)
        if (!(*m_pin_list[i] == *other.m_pin_list[i])) return false;
    return true;
}

bool DEV_PKG_INFO_BODY::check_structure(std::string* problem) const {
    const char* wrong = nullptr;
    if (!attributes_sized() || m_pin_bool_enum_is_valid.size() != static_cast<size_t>(DEV_PIN_BOOL_DATA_MAX) ||
        m_pin_int_enum_is_valid.size() != static_cast<size_t>(DEV_PIN_INT_DATA_MAX) ||
        m_pin_string_enum_is_valid.size() != static_cast<size_t>(DEV_PIN_STRING_DATA_MAX) ||
        m_pin_vec_int_enum_is_valid.size() != static_cast<size_t>(DEV_PIN_VEC_INT_DATA_MAX))
        wrong = "an attribute table of the wrong size";
    for (size_t i = 0; !wrong && i < m_pin_list.size(); ++i) {
        if (!m_pin_list[i] || m_pin_list[i]->get_id() != i)
            wrong = "a pin whose id is not its position";
        else if (!m_pin_list[i]->attributes_sized())
            wrong = "a pin table of the wrong size";
    }
    if (wrong && problem) *problem = wrong;
    return wrong == nullptr;
}

// ---------------------------------------------------------------------------------------
// The persistent form

namespace {

const DEV_PDB_WORDING PKG_PDB_WORDING = {
    "gen_stricmp(\"ddb\", filename.extension().c_str()) == 0",
    "gen_stricmp(\"ddb\", filename.extension().c_str()) == 0",
    "Spent %.0f seconds writing PKG info to PDB: %s",
    "Spent %.0f seconds loading PKG info from PDB: %s",
    false,
};

}  // namespace

bool DEV_PKG_INFO_BODY::write_pkg_to_pdb(const FIO_PATH& path, int compression_level) {
    return dev_pdb_write_root(*this, path, compression_level, PKG_PDB_WORDING);
}

DEV_PKG_INFO_BODY* DEV_PKG_INFO_BODY::load_pkg_from_pdb(const FIO_PATH& path) {
    DEV_PKG_INFO_BODY* body = dev_pdb_read_root<DEV_PKG_INFO_BODY>(path, PKG_PDB_WORDING);
    if (body) body->index_pin_names();
    return body;
}
