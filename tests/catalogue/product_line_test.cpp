// The generated product line as the library sees it: the compiled family, device, part,
// package and speed-grade tables, the family folder table, and the names used by the
// text catalogue against those tables (a catalogue written from a different definition
// than the compiled enumerations would name unknown or missing records).
#include <gtest/gtest.h>

#include <cctype>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "host/dstr.h"

namespace {

struct FOLDER_ROW {
    DEV_FAMILY_ENUM family;
    const char* folder;
};

#define DEV_FAMILY_FOLDER(ID, folder) {ID, folder},
const FOLDER_ROW k_folders[] = {
#include "host/tables/dev_family_folder.def"
};
#undef DEV_FAMILY_FOLDER

bool is_identifier(const std::string& s) {
    if (s.empty()) return false;
    for (char c : s)
        if (!std::isupper(static_cast<unsigned char>(c)) && !std::isdigit(static_cast<unsigned char>(c)) && c != '_')
            return false;
    return true;
}

// Every value strictly between the invalid member and the bound is a named member whose
// debug string is an identifier that resolves back to it; returns the debug strings.
std::vector<std::string> dense_names(const DSTR_TABLE& table, int bound) {
    SCOPED_TRACE(table.enum_name());
    EXPECT_EQ(table.bound_value(), bound);
    EXPECT_EQ(table.invalid_value(), 0);
    std::vector<std::string> names;
    for (int v = 1; v < bound; ++v) {
        std::string name = table.debug_string(v);
        EXPECT_TRUE(table.is_valid(v)) << v;
        EXPECT_TRUE(is_identifier(name)) << v << " " << name;
        EXPECT_STRNE(table.user_string(v), "") << v;
        EXPECT_EQ(table.get_by_string(name), v) << name;
        names.push_back(name);
    }
    EXPECT_FALSE(table.is_valid(bound));
    return names;
}

TEST(ProductLine, EnumerationsAreDenseWithUniqueIdentifierNames) {
    EXPECT_EQ(DEV_FAMILY_GENERIC, 48);
    EXPECT_EQ(DEV_FAMILY_MAX, 49);
    EXPECT_EQ(DEV_DEVICE_GENERIC, 323);
    EXPECT_EQ(DEV_PKG_GENERIC, 31);
    EXPECT_EQ(DEV_SPEED_GENERIC, 16);
    EXPECT_EQ(DEV_PART_MAX, DEV_PART_GENERIC + 1);
    EXPECT_GT(DEV_PART_GENERIC, 2000);

    std::set<std::string> all;
    size_t count = 0;
    for (const auto& names : {dense_names(dstr_table_dev_family_enum(), DEV_FAMILY_GENERIC),
                              dense_names(dstr_table_dev_device_enum(), DEV_DEVICE_GENERIC),
                              dense_names(dstr_table_dev_part_enum(), DEV_PART_GENERIC),
                              dense_names(dstr_table_dev_pkg_enum(), DEV_PKG_GENERIC),
                              dense_names(dstr_table_dev_speed_enum(), DEV_SPEED_GENERIC)}) {
        all.insert(names.begin(), names.end());
        count += names.size();
    }
    EXPECT_EQ(all.size(), count) << "a debug string names two members";
    EXPECT_STREQ(dstr_get_debug_string(DEV_FAMILY_GENERIC), "GENERIC_FAMILY");
    EXPECT_TRUE(dstr_is_valid_dev_family_enum(41));
}

TEST(ProductLine, EveryFamilyHasOneLowerCaseFolder) {
    std::set<int> seen;
    for (const FOLDER_ROW& row : k_folders) {
        EXPECT_TRUE(dstr_is_valid_dev_family_enum(row.family)) << row.family;
        EXPECT_TRUE(seen.insert(row.family).second) << "second row for " << row.family;
        std::string folder = row.folder;
        EXPECT_FALSE(folder.empty());
        for (char c : folder) EXPECT_TRUE(std::islower(static_cast<unsigned char>(c)) || std::isdigit(static_cast<unsigned char>(c))) << folder;
    }
    EXPECT_EQ(seen.size(), static_cast<size_t>(DEV_FAMILY_GENERIC - 1));
}

// The text catalogue's blocks against the compiled tables: one block per family, device
// and part, each key value naming a member of its enumeration, and each family that
// uses its base family's data naming that base family.
TEST(ProductLine, TextCatalogueNamesEveryCompiledMemberOnce) {
    std::ifstream in(VELCORA_SOURCE_DIR "/data/h/dev_part_manager_auto.part");
    ASSERT_TRUE(in.good());
    std::map<std::string, std::set<std::string>> blocks;
    std::map<std::string, std::map<std::string, std::vector<std::string>>> families;
    std::string kind, name, line;
    std::vector<std::string> unresolved;
    auto check = [&](bool known, const std::string& what) {
        if (!known) unresolved.push_back(what);
    };
    while (std::getline(in, line)) {
        const size_t tab = line.find('\t');
        const std::string word = tab == std::string::npos ? line : line.substr(0, tab);
        if (tab != std::string::npos && (word == "family" || word == "device" || word == "part")) {
            kind = word;
            name = line.substr(tab + 1);
            EXPECT_TRUE(blocks[kind].insert(name).second) << "second block for " << name;
            continue;
        }
        if (line == "end") kind.clear();
        const size_t eq = line.find(" = ");
        if (kind.empty() || line.empty() || line[0] != '\t' || eq == std::string::npos) continue;
        const std::string key = line.substr(1, eq - 1);
        std::string value = line.substr(eq + 3);
        if (value.size() >= 2 && value.front() == '"' && value.back() == '"') value = value.substr(1, value.size() - 2);
        if (kind == "family") families[name][key].push_back(value);
        if (key == "FAMILY" || key == "BASE_FAMILY_ID" || key == "KX_LIBRARY_FAMILY" || key == "MIGRATION_FAMILIES")
            check(dstr_exists_dev_family_enum_by_string(value), key + " " + value);
        else if (key == "DEVICE" || key == "BASE_DEVICE" || key == "CONFIG_DEVICES" || key == "MIGRATION_DEVICES" ||
                 key == "MIGRATION_DEVICES_EXCLUDE")
            check(dstr_exists_dev_device_enum_by_string(value), key + " " + value);
        else if (key == "MIGRATION_PARTS")
            check(dstr_exists_dev_part_enum_by_string(value), key + " " + value);
        else if (key == "PACKAGE")
            check(dstr_exists_dev_pkg_enum_by_string(value), key + " " + value);
        else if (key == "SPEED_GRADE" || key == "FAST_CORNER_GRADE")
            check(dstr_exists_dev_speed_enum_by_string(value), key + " " + value);
        else if (key == "SLOW_TIMING_CORNERS" || key == "FAST_TIMING_CORNERS")
            check(dstr_exists_dev_timing_model_enum_by_string(value), key + " " + value);
    }
    EXPECT_TRUE(unresolved.empty()) << unresolved.size() << " unknown names, first " << unresolved.front();

    const struct {
        const char* kind;
        const DSTR_TABLE& table;
    } kinds[] = {{"family", dstr_table_dev_family_enum()},
                 {"device", dstr_table_dev_device_enum()},
                 {"part", dstr_table_dev_part_enum()}};
    for (const auto& k : kinds) {
        std::set<std::string> compiled;
        for (int v = 1; v < k.table.bound_value(); ++v) compiled.insert(k.table.debug_string(v));
        EXPECT_EQ(blocks[k.kind], compiled) << k.kind;
    }

    int with_base = 0;
    for (const auto& [family, keys] : families) {
        const auto traits = keys.count("TRAITS") ? keys.at("TRAITS") : std::vector<std::string>{};
        bool uses_base = false;
        for (const std::string& t : traits)
            uses_base |= dstr_get_dev_family_trait_enum_by_string(t) == DEV_FAMILY_TRAIT_USES_BASE_FAMILY_DATA;
        if (!uses_base) continue;
        ++with_base;
        ASSERT_EQ(keys.count("BASE_FAMILY_ID"), 1u) << family;
        EXPECT_NE(keys.at("BASE_FAMILY_ID").front(), family);
    }
    EXPECT_GT(with_base, 0);
}

}  // namespace
