// Every part, device and family of the bundled catalogue: the part and family managers'
// answers against expectations recomputed from the text by the test's own reader.
#include <gtest/gtest.h>

#include <set>

#include "capture_fixture.h"
#include "dev_family_info_mgr_body.h"
#include "dev_family_manager.h"
#include "dev_part_manager.h"
#include "expectation.h"

namespace {

const std::string kCatalogue = std::string(VELCORA_SOURCE_DIR) + "/data/h/dev_part_manager_auto.part";

// The bundled catalogue read once into a store of the tests' own, and its text.
struct BUNDLED {
    DEV_FAMILY_INFO_MGR_BODY store;
    TEXT_CATALOGUE text;
    bool ok = false;
    BUNDLED() {
        MSG_CAPTURE quiet;
        ok = store.read_family_data(FIO_PATH(kCatalogue)) && text.load(kCatalogue);
    }
};

BUNDLED& bundled() {
    static BUNDLED b;
    return b;
}

template <typename T>
std::set<int> as_set(const std::vector<T>& v) {
    return std::set<int>(v.begin(), v.end());
}

int number(const TEXT_BLOCK& b, const std::string& key) {
    return b.one(key).empty() ? 0 : std::stoi(b.one(key));
}

}  // namespace

class CatalogueQueries : public CaptureTest {};

TEST_F(CatalogueQueries, RecordFieldsOfEveryPartMatchTheText) {
    ASSERT_TRUE(bundled().ok);
    const TEXT_CATALOGUE& cat = bundled().text;
    DEV_PART_MANAGER pm(&bundled().store);
    ASSERT_EQ(cat.part_order.size(), 3566u);
    for (const std::string& name : cat.part_order) {
        SCOPED_TRACE(name);
        const TEXT_BLOCK& b = cat.parts.at(name);
        ASSERT_TRUE(pm.exists_part_enum_by_string(name));
        const DEV_PART_ENUM p = pm.get_part_enum_by_string(name);
        EXPECT_STREQ(dstr_get_debug_string(pm.get_family_of(p)), b.one("FAMILY").c_str());
        const DEV_DEVICE_ENUM device = pm.get_device_of(p);
        EXPECT_STREQ(dstr_get_debug_string(device), b.one("DEVICE").c_str());
        EXPECT_EQ(pm.get_family_of(device), pm.get_family_of(p));
        EXPECT_STREQ(dstr_get_debug_string(pm.get_pkg_of(p)), b.one("PACKAGE").c_str());
        EXPECT_STREQ(dstr_get_debug_string(pm.get_speed_of(p)), b.one("SPEED_GRADE").c_str());
        EXPECT_STREQ(dstr_get_debug_string(pm.get_temperature_grade_of(p)), b.one("TEMPERATURE_GRADE").c_str());
        EXPECT_EQ(pm.get_pin_count_of(p), number(b, "PIN_COUNT"));
        EXPECT_EQ(pm.get_io_count_of(p), number(b, "NUM_OF_IO"));
        EXPECT_EQ(pm.get_lcell_count_of(p), number(b, "NUM_OF_LCELLS"));
        EXPECT_EQ(pm.get_ordering_code_of(p), b.one("ORDERING_CODE"));
        EXPECT_EQ(pm.get_ddb_package_file_suffix_of(p), b.one("PACKAGE_DDB_FILE_NAME_SUFFIX"));
        EXPECT_STREQ(dstr_get_debug_string(pm.get_voltage_of(p)),
                     cat.devices.at(b.one("DEVICE")).one("VOLTAGE").c_str());
        for (const std::string& trait : b.all("TRAITS"))
            EXPECT_TRUE(pm.test_part_trait_of(p, dstr_get_dev_part_trait_enum_by_string(trait))) << trait;
        // Resources are written under their user names; the others are not given (-1).
        std::set<int> given;
        for (int r = 0; r < DEV_RESOURCE_END; ++r) {
            const std::string key = std::string("\"") + dstr_get_user_string(static_cast<DEV_RESOURCE_ENUM>(r)) + "\"";
            const int expected = b.one(key).empty() ? -1 : std::stoi(b.one(key));
            EXPECT_EQ(pm.get_device_resource_count_of(p, static_cast<DEV_RESOURCE_ENUM>(r)), expected) << key;
        }
    }
    EXPECT_TRUE(errors().empty()) << errors().front();
}

TEST_F(CatalogueQueries, VoltagesTemperaturesAndCornersOfEveryPart) {
    ASSERT_TRUE(bundled().ok);
    const TEXT_CATALOGUE& cat = bundled().text;
    DEV_PART_MANAGER pm(&bundled().store);
    int selectable_voltage = 0, selectable_temperature = 0, corner_families = 0;
    for (const std::string& name : cat.part_order) {
        SCOPED_TRACE(name);
        const DEV_PART_ENUM p = pm.get_part_enum_by_string(name);
        const expect::PART_EXPECTATION e = expect::compute(cat, name);

        EXPECT_EQ(as_set(pm.get_voltage_list(p)), e.voltages);
        EXPECT_EQ(pm.get_voltage_list(p).size(), e.voltages.size()) << "a voltage listed twice";
        EXPECT_EQ(pm.has_selectable_core_voltage(p), e.voltages.size() > 1);
        for (int v = 1; v <= 27; ++v)
            EXPECT_EQ(pm.test_voltage_of(p, static_cast<DEV_VOLTAGE_ENUM>(v)), e.voltages.count(v) == 1) << v;
        EXPECT_EQ(pm.get_default_voltage(p), e.default_voltage);

        EXPECT_EQ(pm.get_default_slow_timing_corner(p), e.default_slow);
        EXPECT_EQ(pm.get_default_fast_timing_corner(p), e.default_fast);
        const auto slow_pairs = pm.get_slow_corner_voltage_temperature_pairs(p);
        const auto& slow_names = cat.parts.at(name).all("SLOW_TIMING_CORNERS");
        ASSERT_EQ(slow_pairs.size(), slow_names.size());
        for (size_t i = 0; i < slow_names.size(); ++i) {
            EXPECT_EQ(std::make_pair(static_cast<int>(slow_pairs[i].first), slow_pairs[i].second),
                      expect::operating_point(expect::model_of(slow_names[i])));
            EXPECT_TRUE(pm.test_slow_timing_corner_of(p, static_cast<DEV_TIMING_MODEL_ENUM>(expect::model_of(slow_names[i]))));
        }

        EXPECT_EQ(as_set(pm.get_max_temp_list(p)), e.max_temps);
        EXPECT_EQ(as_set(pm.get_min_temp_list(p)), e.min_temps);
        EXPECT_EQ(pm.get_default_max_temp(p), e.default_max);
        EXPECT_EQ(pm.get_default_min_temp(p), e.default_min);
        EXPECT_EQ(pm.has_selectable_temperature_range(p), e.max_temps.size() > 1 || e.min_temps.size() > 1);
        EXPECT_EQ(pm.test_temp_range_of(p, e.default_min, e.default_max),
                  e.min_temps.count(e.default_min) && e.max_temps.count(e.default_max));
        EXPECT_FALSE(pm.test_temp_range_of(p, e.default_max, e.default_min - 1000));

        selectable_voltage += pm.has_selectable_core_voltage(p);
        selectable_temperature += pm.has_selectable_temperature_range(p);
        corner_families += pm.get_max_temp_list(p).size() != 1;
    }
    EXPECT_TRUE(errors().empty()) << errors().front();
    // The product line exercises both sides of each rule.
    EXPECT_GT(selectable_voltage, 0);
    EXPECT_GT(selectable_temperature, 0);
    EXPECT_GT(corner_families, 0);
}

TEST_F(CatalogueQueries, CachedListsAreComputedOnceAndKept) {
    ASSERT_TRUE(bundled().ok);
    DEV_PART_MANAGER pm(&bundled().store);
    DEV_PART_MANAGER copy = pm;
    const DEV_PART_ENUM p = static_cast<DEV_PART_ENUM>(1);
    const std::vector<DEV_VOLTAGE_ENUM>* first = &pm.get_voltage_list(p);
    // Many other parts' lists later, the same list is handed out, by the copy too.
    for (int q = 2; q < DEV_PART_GENERIC; ++q) pm.get_voltage_list(static_cast<DEV_PART_ENUM>(q));
    EXPECT_EQ(&copy.get_voltage_list(p), first);
    EXPECT_EQ(&pm.get_max_temp_list(p), &pm.get_max_temp_list(p));
    // A handle on another store keeps lists of its own.
    DEV_FAMILY_INFO_MGR_BODY empty;
    DEV_PART_MANAGER other(&empty);
    EXPECT_TRUE(other.get_voltage_list(p).empty());
    EXPECT_EQ(errors(), std::vector<std::string>{std::string("Failed obtaining data for part ") +
                                                  dstr_get_debug_string(p)});
}

TEST_F(CatalogueQueries, FamilyRecordsMatchTheText) {
    ASSERT_TRUE(bundled().ok);
    const TEXT_CATALOGUE& cat = bundled().text;
    DEV_FAMILY_MANAGER fm(&bundled().store);
    const char* grades[] = {"", "COMMERCIAL", "INDUSTRIAL", "EXTENDED", "AUTOMOTIVE", "MILITARY"};
    ASSERT_EQ(cat.families.size(), 47u);
    for (const auto& [name, b] : cat.families) {
        SCOPED_TRACE(name);
        const DEV_FAMILY_ENUM f = fm.get_family_enum_by_string(name);
        ASSERT_TRUE(fm.exists_family_enum_by_string(name));
        for (int g = 1; g <= 5; ++g) {
            EXPECT_EQ(fm.get_max_temperature_of(f, static_cast<DEV_TEMPERATURE_ENUM>(g)),
                      number(b, std::string("MAX_") + grades[g] + "_TEMP"));
            EXPECT_EQ(fm.get_min_temperature_of(f, static_cast<DEV_TEMPERATURE_ENUM>(g)),
                      number(b, std::string("MIN_") + grades[g] + "_TEMP"));
        }
        EXPECT_EQ(fm.get_bak_version_of(f), number(b, "BAK_VERSION"));
        EXPECT_EQ(fm.get_encryption_id_of(f), number(b, "ENCRYPTION_ID"));
        EXPECT_STREQ(dstr_get_debug_string(fm.get_base_family_enum(f)), b.one("BASE_FAMILY_ID").c_str());
        EXPECT_STREQ(dstr_get_debug_string(fm.get_kx_library_family_of(f)), b.one("KX_LIBRARY_FAMILY").c_str());
        EXPECT_STREQ(dstr_get_debug_string(fm.get_max_nominal_core_supply_voltage_enum_of(f)),
                     b.one("MAX_NOMINAL_CORE_SUPPLY_VOLTAGE").c_str());
        EXPECT_STREQ(dstr_get_debug_string(fm.get_min_nominal_core_supply_voltage_enum_of(f)),
                     b.one("MIN_NOMINAL_CORE_SUPPLY_VOLTAGE").c_str());
        std::string suffix = "stale";
        EXPECT_EQ(fm.get_unified_suffix_of(f, suffix), !b.one("UNIFIED_SUFFIX").empty());
        EXPECT_EQ(suffix, b.one("UNIFIED_SUFFIX"));
        EXPECT_EQ(fm.has_new_ddb_support(f), b.has("TRAITS", "NEW_DDB_SUPPORT"));
        for (int t = 1; t < DEV_FAMILY_TRAIT_GENERIC; ++t) {
            const DEV_FAMILY_TRAIT_ENUM trait = static_cast<DEV_FAMILY_TRAIT_ENUM>(t);
            EXPECT_EQ(fm.test_trait_of(f, trait), b.has("TRAITS", dstr_get_debug_string(trait)) &&
                                                      dstr_is_valid_dev_family_trait_enum(t)) << t;
        }
        std::vector<DEV_DEVICE_ENUM> config{DEV_DEVICE_INVALID};  // appended to, not replaced
        fm.add_configuration_devices_of(f, &config);
        ASSERT_EQ(config.size(), b.all("CONFIG_DEVICES").size() + 1);
        for (size_t i = 0; i < b.all("CONFIG_DEVICES").size(); ++i)
            EXPECT_STREQ(dstr_get_debug_string(config[i + 1]), b.all("CONFIG_DEVICES")[i].c_str());
        std::vector<DEV_FAMILY_ENUM> migration{DEV_FAMILY_GENERIC};  // replaced
        fm.get_tech_migration_families_of(f, &migration);
        ASSERT_EQ(migration.size(), b.all("MIGRATION_FAMILIES").size());
        for (size_t i = 0; i < migration.size(); ++i)
            EXPECT_STREQ(dstr_get_debug_string(migration[i]), b.all("MIGRATION_FAMILIES")[i].c_str());
    }
    EXPECT_TRUE(errors().empty()) << errors().front();
}

TEST_F(CatalogueQueries, FamilyListSelection) {
    ASSERT_TRUE(bundled().ok);
    const TEXT_CATALOGUE& cat = bundled().text;
    DEV_FAMILY_MANAGER fm(&bundled().store);
    auto expected = [&](const std::vector<std::string>& traits, bool skip) {
        std::vector<DEV_FAMILY_ENUM> out;
        for (int f = 1; f < DEV_FAMILY_GENERIC; ++f) {
            auto it = cat.families.find(dstr_get_debug_string(static_cast<DEV_FAMILY_ENUM>(f)));
            if (it == cat.families.end()) continue;
            bool keep = !(skip && (it->second.has("TRAITS", "NOT_LISTED") || it->second.has("TRAITS", "NOT_INSTALLED") ||
                                   it->second.has("TRAITS", "NO_COMPILER_SUPPORT")));
            for (const std::string& t : traits) keep = keep && it->second.has("TRAITS", t);
            if (keep) out.push_back(static_cast<DEV_FAMILY_ENUM>(f));
        }
        return out;
    };
    std::vector<DEV_FAMILY_ENUM> got;
    fm.filter_family_list(&got, DEV_FAMILY_GENERIC, nullptr, false);
    EXPECT_EQ(got, expected({}, false));
    EXPECT_EQ(got.size(), 47u);
    fm.filter_family_list(&got, DEV_FAMILY_GENERIC, nullptr, true);
    EXPECT_EQ(got, expected({}, true));
    EXPECT_LT(got.size(), 47u);
    const std::vector<DEV_FAMILY_TRAIT_ENUM> traits{DEV_FAMILY_TRAIT_HAS_PLL, DEV_FAMILY_TRAIT_NEW_DDB_SUPPORT};
    fm.filter_family_list(&got, DEV_FAMILY_GENERIC, &traits, true);
    EXPECT_EQ(got, expected({"HAS_PLL", "NEW_DDB_SUPPORT"}, true));
    EXPECT_FALSE(got.empty());
    // One family: itself when it qualifies, else nothing.
    fm.filter_family_list(&got, got.front(), &traits, true);
    EXPECT_EQ(got.size(), 1u);
    const DEV_FAMILY_ENUM unlisted = expected({"NOT_INSTALLED"}, false).front();
    fm.filter_family_list(&got, unlisted, nullptr, true);
    EXPECT_TRUE(got.empty());
    fm.filter_family_list(&got, unlisted, nullptr, false);
    EXPECT_EQ(got, std::vector<DEV_FAMILY_ENUM>{unlisted});
    EXPECT_TRUE(errors().empty());
}
