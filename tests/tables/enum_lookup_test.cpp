// Name look-up over every enumeration table: each member's debug string maps back to it,
// unknown names give the invalid member, and the names can be written in data files.
#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "host/dstr.h"

namespace {

// Every table, collected from the same definition list that builds them.
std::vector<const DSTR_TABLE*> all_tables() {
    std::vector<const DSTR_TABLE*> tables;
#define DSTR_ENUM_BEGIN(TYPE, name)
#define DSTR_INVALID(ID, value)
#define DSTR_MEMBER(ID, value, debug, user, ...)
#define DSTR_GENERIC(ID, value, debug, user)
#define DSTR_BOUND(ID, value)
#define DSTR_ENUM_END(TYPE, name, INVALID, BOUND) tables.push_back(&dstr_table_##name());
#include "host/tables/dstr_enums.inc"
#include "host/dstr_undef.h"
    return tables;
}

bool is_word(const char* s) {
    if (!*s) return false;
    for (; *s; ++s)
        if (!(isalnum(static_cast<unsigned char>(*s)) || *s == '_')) return false;
    return true;
}

TEST(EnumLookup, EveryMemberRoundTripsThroughItsDebugString) {
    std::vector<const DSTR_TABLE*> tables = all_tables();
    EXPECT_EQ(tables.size(), 26u);
    for (const DSTR_TABLE* t : tables) {
        SCOPED_TRACE(t->enum_name());
        std::set<int> values;
        for (size_t i = 0; i < t->size(); ++i) {
            const DSTR_ENTRY& e = t->entry(i);
            EXPECT_TRUE(values.insert(e.value).second) << "value given twice: " << e.value;
            EXPECT_TRUE(t->exists_by_string(e.debug)) << e.debug;
            EXPECT_EQ(t->get_by_string(e.debug), e.value) << e.debug;
            EXPECT_STREQ(t->debug_string(e.value), e.debug);
            EXPECT_STREQ(t->user_string(e.value), e.user);
            EXPECT_STRNE(e.user, "") << e.debug;
            // Members lie inside the range; only the generic member sits on the bound.
            EXPECT_GT(e.value, t->invalid_value()) << e.debug;
            EXPECT_LE(e.value, t->bound_value()) << e.debug;
            // Data files match enumerated names as words; resources are quoted instead.
            if (std::strcmp(t->enum_name(), "DEV_RESOURCE_ENUM") != 0) {
                EXPECT_TRUE(is_word(e.debug)) << e.debug;
            }
        }
        EXPECT_FALSE(t->exists_by_string("NO_SUCH_MEMBER"));
        EXPECT_EQ(t->get_by_string("NO_SUCH_MEMBER"), t->invalid_value());
        EXPECT_FALSE(t->exists_by_string(""));
        EXPECT_STREQ(t->debug_string(t->invalid_value()), "");
    }
}

TEST(EnumLookup, TypedFunctionsForwardToTheirTable) {
    EXPECT_TRUE(dstr_exists_dev_location_enum_by_string("LAB"));
    EXPECT_EQ(dstr_get_dev_location_enum_by_string("LAB"), DEV_LOCATION_LAB);
    EXPECT_EQ(dstr_get_dev_location_enum_by_string(std::string("IO_PAD")), DEV_LOCATION_IO_PAD);
    // Names are case-sensitive; a null name is simply unknown.
    EXPECT_FALSE(dstr_exists_dev_location_enum_by_string("lab"));
    EXPECT_FALSE(dstr_exists_dev_location_enum_by_string(static_cast<const char*>(nullptr)));
    EXPECT_EQ(dstr_get_dev_io_rule_enum_by_string(static_cast<const char*>(nullptr)), DEV_IO_RULE_INVALID);
    EXPECT_EQ(dstr_get_dev_power_supply_enum_by_string("VCC_NONE"), DEV_POWER_SUPPLY_INVALID);
    // The generic location and element have names, so that a reader can warn about them.
    EXPECT_EQ(dstr_get_dev_location_enum_by_string(dstr_get_debug_string(DEV_LOCATION_GENERIC)),
              DEV_LOCATION_GENERIC);
    EXPECT_FALSE(dstr_is_valid_dev_location_enum(DEV_LOCATION_GENERIC));
    EXPECT_EQ(dstr_get_dev_element_enum_by_string(dstr_get_debug_string(DEV_ELEMENT_GENERIC)),
              DEV_ELEMENT_GENERIC);
    EXPECT_STREQ(dstr_get_user_string(DEV_TEMPERATURE_INDUSTRIAL), "Industrial");
    EXPECT_STREQ(dstr_get_debug_string(static_cast<DEV_IO_STANDARD_ENUM>(DEV_IO_STANDARD_MAX)), "");
}

TEST(EnumLookup, ResourceNamesReadBackFromTheirUserStrings) {
    // The family-info dump writes a resource by its user string; the reader looks the
    // name up as a debug string.
    for (int r = 0; r < DEV_RESOURCE_END; ++r) {
        const char* user = dstr_get_user_string(static_cast<DEV_RESOURCE_ENUM>(r));
        EXPECT_EQ(dstr_get_dev_resource_enum_by_string(user), r) << user;
        EXPECT_EQ(std::strchr(user, '"'), nullptr) << user;
    }
}

}  // namespace
