// DEV_BASIC_INFO_BODY: the records of a device's basic info, their indexes and the checks a
// body read from a file must pass.
#include "dev_basic_info_body.h"

#include "dev_pdb_object.h"

#include "host/msg.h"
#include "host/tables/dev_device_enum.h"
#include "host/tables/dev_family_enum.h"
#include "host/tables/dev_part_enum.h"

// ---------------------------------------------------------------------------------------
// Ports by name

void DEV_PORT_TABLE::add(const std::string& name, DEV_PORT_DESC* port) {
    if (!port) return;
    // A port of the table sits at its id.
    const int32_t id = port->get_id();
    const bool owned = id >= 0 && static_cast<size_t>(id) < m_ports.size() && m_ports[id] == port;
    if (!owned) {
        if (DEV_PORT_DESC_BODY* body = port->get_body()) body->set_id(static_cast<int32_t>(m_ports.size()));
        m_ports.push_back(port);
    }
    DEV_PORT_DESC** bound = m_by_name.find(name);
    if (!bound)
        m_by_name.insert(name, port);
    else if (*bound != port)
        DEV_INTERNAL_ERROR("A different port with key " + name + " already exists in the hash table!");
}

DEV_PORT_DESC* DEV_PORT_TABLE::find(const std::string& name) const {
    DEV_PORT_DESC* const* port = m_by_name.find(name);
    return port ? *port : nullptr;
}

// ---------------------------------------------------------------------------------------
// The body

DEV_BASIC_INFO_BODY::DEV_BASIC_INFO_BODY()
    : m_locations_by_enum(DEV_LOCATION_GENERIC + 1, nullptr),
      m_elements_by_enum(DEV_ELEMENT_GENERIC + 1, nullptr),
      m_elements_by_cdb_re_type(CDB_RE_ILLEGAL_TYPE, nullptr) {}

DEV_BASIC_INFO_BODY::~DEV_BASIC_INFO_BODY() = default;

DEV_DEVICE_ENUM DEV_BASIC_INFO_BODY::get_device_enum() const {
    return static_cast<DEV_DEVICE_ENUM>(get_enum_data(DEV_BASIC_INFO_ENUM_DEVICE));
}

DEV_FAMILY_ENUM DEV_BASIC_INFO_BODY::get_family_enum() const {
    return static_cast<DEV_FAMILY_ENUM>(get_enum_data(DEV_BASIC_INFO_ENUM_FAMILY));
}

DEV_PART_ENUM DEV_BASIC_INFO_BODY::get_part_enum() const {
    int part = DEV_PART_INVALID;
    get_enum_data(DEV_BASIC_INFO_ENUM_PART, &part);
    return static_cast<DEV_PART_ENUM>(part);
}

namespace {

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
T* find_name(const VTL_HASH<std::string, T*>& table, const std::string& name) {
    T* const* record = table.find(name);
    return record ? *record : nullptr;
}

// The slot of `value` after the range check (reported with `range_text`); null outside.
template <typename T>
T* slot_of(const std::vector<T*>& slots, int value, bool in_range, const char* range_text) {
    DEV_ASSERT_TEXT(in_range, range_text);
    return value >= 0 && static_cast<size_t>(value) < slots.size() ? slots[value] : nullptr;
}

}  // namespace

void DEV_BASIC_INFO_BODY::add_location(DEV_LOCATION_DESC* location) {
    DEV_LOCATION_DESC_BODY* body = location ? location->get_body() : nullptr;
    if (!DEV_ASSERT_TEXT(body != NULL, "body != NULL")) {
        delete location;
        return;
    }
    body->set_id(static_cast<int32_t>(m_locations.size()));
    m_locations.push_back(location);
    const int value = body->get_int_data(DEV_LOCATION_DESC_INT_LOCATION);
    if (value != DEV_LOCATION_INVALID && value != DEV_LOCATION_GENERIC &&
        DEV_ASSERT_TEXT(value > DEV_LOCATION_INVALID && value < DEV_LOCATION_GENERIC,
                        "location > DEV_LOCATION_INVALID && location < DEV_LOCATION_GENERIC")) {
        m_locations_by_enum[value] = location;
        m_location_enums.push_back(static_cast<DEV_LOCATION_ENUM>(value));
    }
    if (body->is_valid_string_enum(DEV_LOCATION_DESC_STRING_NAME))
        add_to_locations_by_string_hash(body->get_string_data(DEV_LOCATION_DESC_STRING_NAME), location);
}

void DEV_BASIC_INFO_BODY::add_element(DEV_ELEMENT_DESC* element) {
    DEV_ELEMENT_DESC_BODY* body = element ? element->get_body() : nullptr;
    if (!DEV_ASSERT_TEXT(body != NULL, "body != NULL")) {
        delete element;
        return;
    }
    body->set_id(static_cast<int32_t>(m_elements.size()));
    m_elements.push_back(element);
    const int value = body->get_int_data(DEV_ELEMENT_DESC_INT_ELEMENT);
    if (value != DEV_ELEMENT_INVALID && value != DEV_ELEMENT_GENERIC &&
        DEV_ASSERT_TEXT(value > DEV_ELEMENT_INVALID && value < DEV_ELEMENT_GENERIC,
                        "element > DEV_ELEMENT_INVALID && element < DEV_ELEMENT_GENERIC")) {
        m_elements_by_enum[value] = element;
        m_element_enums.push_back(static_cast<DEV_ELEMENT_ENUM>(value));
    }
    if (body->is_valid_string_enum(DEV_ELEMENT_DESC_STRING_NAME))
        add_to_elements_by_string_hash(body->get_string_data(DEV_ELEMENT_DESC_STRING_NAME), element);
}

void DEV_BASIC_INFO_BODY::add_to_locations_by_string_hash(const std::string& name, DEV_LOCATION_DESC* location) {
    bind_name(m_locations_by_string, name, location, "location");
}

void DEV_BASIC_INFO_BODY::add_to_ports_by_string_hash(const std::string& name, DEV_PORT_DESC* port) {
    m_ports_by_string.add(name, port);
}

void DEV_BASIC_INFO_BODY::add_to_elements_by_string_hash(const std::string& name, DEV_ELEMENT_DESC* element) {
    bind_name(m_elements_by_string, name, element, "element");
}

void DEV_BASIC_INFO_BODY::add_to_elements_by_cdb_re_type(CDB_RE_TYPE re, DEV_ELEMENT_DESC* element) {
    if (!DEV_ASSERT_TEXT(re >= 0 && re < CDB_RE_ILLEGAL_TYPE, "re < CDB_RE_ILLEGAL_TYPE")) return;
    DEV_ELEMENT_DESC*& slot = m_elements_by_cdb_re_type[re];
    if (!slot)
        slot = element;
    else if (slot != element)
        DEV_INTERNAL_ERROR("A different element with the same key already exists in the m_elements_by_cdb_re vector !");
}

DEV_LOCATION_DESC* DEV_BASIC_INFO_BODY::get_location_by_enum(DEV_LOCATION_ENUM location) const {
    return slot_of(m_locations_by_enum, location, location > DEV_LOCATION_INVALID && location < DEV_LOCATION_GENERIC,
                   "location > DEV_LOCATION_INVALID && location < DEV_LOCATION_GENERIC");
}

DEV_ELEMENT_DESC* DEV_BASIC_INFO_BODY::get_element_by_enum(DEV_ELEMENT_ENUM element) const {
    return slot_of(m_elements_by_enum, element, element > DEV_ELEMENT_INVALID && element < DEV_ELEMENT_GENERIC,
                   "element > DEV_ELEMENT_INVALID && element < DEV_ELEMENT_GENERIC");
}

DEV_ELEMENT_DESC* DEV_BASIC_INFO_BODY::get_element_by_cdb_re_type(CDB_RE_TYPE re) const {
    return slot_of(m_elements_by_cdb_re_type, re, re < CDB_RE_ILLEGAL_TYPE, "re < CDB_RE_ILLEGAL_TYPE");
}

DEV_LOCATION_DESC* DEV_BASIC_INFO_BODY::get_location_by_id(int id) const {
    return slot_of<DEV_LOCATION_DESC>(m_locations, id, id >= 0 && id < static_cast<int>(this->m_locations.size()),
                                      "id >= 0 && id < static_cast<int>(this->m_locations.size())");
}

DEV_ELEMENT_DESC* DEV_BASIC_INFO_BODY::get_element_by_id(int id) const {
    return slot_of<DEV_ELEMENT_DESC>(m_elements, id, id >= 0 && id < static_cast<int>(this->m_elements.size()),
                                     "id >= 0 && id < static_cast<int>(this->m_elements.size())");
}

DEV_LOCATION_DESC* DEV_BASIC_INFO_BODY::get_location_by_string(const std::string& name) const {
    return find_name(m_locations_by_string, name);
}

DEV_PORT_DESC* DEV_BASIC_INFO_BODY::get_port_by_string(const std::string& name) const {
    return m_ports_by_string.find(name);
}

DEV_ELEMENT_DESC* DEV_BASIC_INFO_BODY::get_element_by_string(const std::string& name) const {
    return find_name(m_elements_by_string, name);
}

// ---------------------------------------------------------------------------------------
// Equality and structure

namespace {

// The records at the same positions have equal bodies.
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

int id_of(const DEV_LOCATION_DESC* r) { return r ? r->get_id() : -1; }
int id_of(const DEV_ELEMENT_DESC* r) { return r ? r->get_id() : -1; }
int id_of(const DEV_PORT_DESC* r) { return r ? r->get_id() : -1; }

// The same slots point at records of the same ids.
template <typename T>
bool same_slots(const std::vector<T*>& a, const std::vector<T*>& b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (id_of(a[i]) != id_of(b[i])) return false;
    return true;
}

// The same names bound to records of the same ids.
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

// Every pointer of `slots` is null or one of `records`' (checked by id and position).
template <typename T>
bool points_into(const std::vector<T*>& slots, const std::vector<T*>& records) {
    for (T* p : slots)
        if (p && (p->get_id() < 0 || static_cast<size_t>(p->get_id()) >= records.size() || records[p->get_id()] != p))
            return false;
    return true;
}

template <typename T>
bool ids_are_positions(const std::vector<T*>& records) {
    for (size_t i = 0; i < records.size(); ++i)
        if (!records[i] || !records[i]->get_body() || records[i]->get_body()->get_id() != static_cast<int32_t>(i))
            return false;
    return true;
}

}  // namespace

bool DEV_BASIC_INFO_BODY::operator==(const DEV_BASIC_INFO_BODY& other) const {
    return attributes_equal(other) && same_records(m_locations, other.m_locations) &&
           same_records(m_elements, other.m_elements) &&
           same_records(m_ports_by_string.ports(), other.m_ports_by_string.ports()) &&
           same_slots(m_locations_by_enum, other.m_locations_by_enum) &&
           same_slots(m_elements_by_enum, other.m_elements_by_enum) &&
           same_slots(m_elements_by_cdb_re_type, other.m_elements_by_cdb_re_type) &&
           same_names(m_locations_by_string, other.m_locations_by_string) &&
           same_names(m_elements_by_string, other.m_elements_by_string) &&
           same_names(m_ports_by_string.by_name(), other.m_ports_by_string.by_name()) &&
           m_location_enums == other.m_location_enums && m_element_enums == other.m_element_enums;
}

bool DEV_BASIC_INFO_BODY::check_structure(std::string* problem) const {
    const char* wrong = nullptr;
    if (!attributes_sized())
        wrong = "an attribute table of the wrong size";
    else if (m_locations_by_enum.size() != DEV_LOCATION_GENERIC + 1u ||
             m_elements_by_enum.size() != DEV_ELEMENT_GENERIC + 1u ||
             m_elements_by_cdb_re_type.size() != static_cast<size_t>(CDB_RE_ILLEGAL_TYPE))
        wrong = "an index of the wrong size";
    else if (!ids_are_positions(m_locations) || !ids_are_positions(m_elements) ||
             !ids_are_positions(m_ports_by_string.ports()))
        wrong = "a record whose id is not its position";
    else if (!points_into(m_locations_by_enum, m_locations) || !points_into(m_elements_by_enum, m_elements) ||
             !points_into(m_elements_by_cdb_re_type, m_elements))
        wrong = "an index pointing outside its records";
    if (!wrong) {
        for (const DEV_LOCATION_DESC* l : m_locations)
            if (!l->get_body()->attributes_sized()) wrong = "a location table of the wrong size";
        for (const DEV_PORT_DESC* p : m_ports_by_string.ports())
            if (!p->get_body()->attributes_sized()) wrong = "a port table of the wrong size";
        for (const DEV_ELEMENT_DESC* e : m_elements) {
            const DEV_ELEMENT_DESC_BODY* body = e->get_body();
            if (!body->attributes_sized() || body->get_location_descs().size() != body->get_location_enums().size() ||
                !points_into(body->get_location_descs(), m_locations) ||
                !points_into(body->get_port_descs(), m_ports_by_string.ports()))
                wrong = "an element table or list that does not fit";
        }
    }
    if (wrong && problem) *problem = wrong;
    return wrong == nullptr;
}

// ---------------------------------------------------------------------------------------
// The persistent form

namespace {

const DEV_PDB_WORDING HDR_PDB_WORDING = {
    "0 == gen_stricmp(\"ddb\", filename.extension().c_str())",
    "gen_stricmp(\"ddb\", filename.extension().c_str() ) == 0",
    "Spent %.0f seconds writing HDR info to PDB: %s",
    "Spent %.0f seconds loading HDR info from PDB: %s",
    false,
};

}  // namespace

bool DEV_BASIC_INFO_BODY::write_hdr_to_pdb(const FIO_PATH& path, int compression_level) {
    return dev_pdb_write_root(*this, path, compression_level, HDR_PDB_WORDING);
}

DEV_BASIC_INFO_BODY* DEV_BASIC_INFO_BODY::load_hdr_from_pdb(const FIO_PATH& path) {
    return dev_pdb_read_root<DEV_BASIC_INFO_BODY>(path, HDR_PDB_WORDING);
}
