// DEV_PART_INFO_BODY: the part's power supplies, their index by supply, equality and the
// checks a body read from a file must pass, and its persistent form.
#include "dev_part_info.h"

#include "dev_pdb_object.h"
#include "host/msg.h"
#include "host/tables/dev_part_enum.h"

DEV_PART_INFO_BODY::DEV_PART_INFO_BODY()
    : m_power_supplies_by_enum(), m_power_supply_desc_is_valid(DEV_POWER_SUPPLY_MAX), m_part(DEV_PART_INVALID) {}

DEV_PART_INFO_BODY::~DEV_PART_INFO_BODY() = default;

namespace {
bool in_range(int supply) { return supply >= 0 && supply < DEV_POWER_SUPPLY_MAX; }
}  // namespace

void DEV_PART_INFO_BODY::add_power_supply(DEV_POWER_SUPPLY_DESC* desc) {
    if (!DEV_ASSERT_TEXT(desc != NULL, "desc != NULL")) return;
    const DEV_POWER_SUPPLY_ENUM power_supply_enum = desc->get_power_supply_enum();
    const bool set = DEV_ASSERT_TEXT(power_supply_enum != DEV_POWER_SUPPLY_INVALID,
                                     "power_supply_enum != DEV_POWER_SUPPLY_INVALID");
    DEV_ASSERT_TEXT(!is_valid_power_supply_enum(power_supply_enum), "!is_valid_power_supply_enum(power_supply_enum)");
    m_power_supplies.push_back(desc);
    if (!set || !DEV_ASSERT_TEXT(in_range(power_supply_enum),
                                 "power_supply_enum >= 0 && power_supply_enum < DEV_POWER_SUPPLY_MAX"))
        return;
    m_power_supplies_by_enum[power_supply_enum] = desc;
    m_power_supply_desc_is_valid.set_value(power_supply_enum, true);
}

bool DEV_PART_INFO_BODY::is_valid_power_supply_enum(DEV_POWER_SUPPLY_ENUM supply) const {
    return in_range(supply) && m_power_supply_desc_is_valid.get_value(supply);
}

DEV_POWER_SUPPLY_DESC* DEV_PART_INFO_BODY::get_power_supply_desc(DEV_POWER_SUPPLY_ENUM key) const {
    if (!DEV_ASSERT_TEXT(in_range(key), "key >= 0 && key < DEV_POWER_SUPPLY_MAX")) return nullptr;
    if (is_valid_power_supply_enum(key)) return m_power_supplies_by_enum[key];
    DEV_INTERNAL_ERROR(std::string("Power supply is not valid for part: ") + astr_get_user_string(key));
    return nullptr;
}

// ---------------------------------------------------------------------------------------
// Equality and structure

bool DEV_PART_INFO_BODY::operator==(const DEV_PART_INFO_BODY& other) const {
    if (m_part != other.m_part || !attributes_equal(other) || m_power_supplies.size() != other.m_power_supplies.size() ||
        !(m_power_supply_desc_is_valid == other.m_power_supply_desc_is_valid))
        return false;
    for (size_t i = 0; i < m_power_supplies.size(); ++i) {
        const DEV_POWER_SUPPLY_DESC_BODY* a = m_power_supplies[i]->get_body();
        const DEV_POWER_SUPPLY_DESC_BODY* b = other.m_power_supplies[i]->get_body();
        if ((a == nullptr) != (b == nullptr) || (a && *a != *b)) return false;
    }
    return true;
}

bool DEV_PART_INFO_BODY::check_structure(std::string* problem) const {
    const char* wrong = nullptr;
    if (!attributes_sized() || m_power_supply_desc_is_valid.size() != static_cast<size_t>(DEV_POWER_SUPPLY_MAX))
        wrong = "an attribute table of the wrong size";
    for (const DEV_POWER_SUPPLY_DESC* desc : m_power_supplies)
        if (!wrong && (!desc || !desc->get_body() || !desc->get_body()->attributes_sized()))
            wrong = "a power supply without a body of its size";
    for (int s = 0; s < DEV_POWER_SUPPLY_MAX && !wrong; ++s) {
        const DEV_POWER_SUPPLY_DESC* desc = m_power_supplies_by_enum[s];
        if ((desc != nullptr) != m_power_supply_desc_is_valid.get_value(s) ||
            (desc && desc->get_power_supply_enum() != s))
            wrong = "a power supply indexed under another supply";
    }
    if (wrong && problem) *problem = wrong;
    return wrong == nullptr;
}

// ---------------------------------------------------------------------------------------
// The persistent form (its reports keep the word HDR)

namespace {

const DEV_PDB_WORDING PART_INFO_PDB_WORDING = {
    "0 == gen_stricmp(\"ddb\", filename.extension().c_str())",
    "gen_stricmp(\"ddb\", filename.extension().c_str() ) == 0",
    "Spent %.0f seconds writing HDR info to PDB: %s",
    "Spent %.0f seconds loading HDR info from PDB: %s",
    false,
    true,
};

}  // namespace

bool DEV_PART_INFO_BODY::write_to_pdb(const FIO_PATH& path, int compression_level) {
    return dev_pdb_write_root(*this, path, compression_level, PART_INFO_PDB_WORDING);
}

DEV_PART_INFO_BODY* DEV_PART_INFO_BODY::load_from_pdb(const FIO_PATH& path) {
    DEV_PART_INFO_BODY* body = dev_pdb_read_root<DEV_PART_INFO_BODY>(path, PART_INFO_PDB_WORDING);
    if (body) body->set_initialized(true);
    return body;
}
