// filter_part_list and device_is_installed: every criterion over the bundled catalogue,
// cross-checked against the test's own reading of the text, and installation on a scratch
// root where device files come and go.
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <set>

#include "capture_fixture.h"
#include "catalogue_text.h"
#include "dev_family_info_mgr_body.h"
#include "dev_part_manager.h"
#include "host/gen.h"

namespace {

const std::string kCatalogue = std::string(VELCORA_SOURCE_DIR) + "/data/h/dev_part_manager_auto.part";

// The bundled records in the process-wide store (the data-file searches read that one).
struct GLOBAL_CATALOGUE {
    TEXT_CATALOGUE text;
    bool ok = false;
    GLOBAL_CATALOGUE() {
        MSG_CAPTURE quiet;
        DEV_FAMILY_INFO_MGR_BODY read;
        ok = read.read_family_data(FIO_PATH(kCatalogue)) && text.load(kCatalogue);
        DEV_FAMILY_INFO_MGR_BODY& store = *DEV_FAMILY_INFO_MGR_BODY::get_instance();
        for (int f = 1; f < DEV_FAMILY_GENERIC; ++f)
            if (auto* d = read.find_desc_of(DEV_FAMILY_ENUM(f))) store.take_desc(new DEV_FAMILY_DESC(*d), true);
        for (int d = 1; d < DEV_DEVICE_GENERIC; ++d)
            if (auto* r = read.find_desc_of(DEV_DEVICE_ENUM(d))) store.take_desc(new DEV_DEVICE_DESC(*r), true);
        for (int p = 1; p < DEV_PART_GENERIC; ++p)
            if (auto* r = read.find_desc_of(DEV_PART_ENUM(p))) store.take_desc(new DEV_PART_DESC(*r), true);
    }
};

GLOBAL_CATALOGUE& catalogue() {
    static GLOBAL_CATALOGUE c;
    return c;
}

typedef std::function<bool(const TEXT_BLOCK&)> PREDICATE;

class PartFilter : public CaptureTest {
protected:
    void SetUp() override {
        CaptureTest::SetUp();
        ASSERT_TRUE(catalogue().ok);
        gen_set_velcora_path(VELCORA_BUNDLED_ROOT);
    }
    void TearDown() override {
        gen_set_velcora_path("");
        CaptureTest::TearDown();
    }
    const TEXT_CATALOGUE& text() { return catalogue().text; }
    // The bundled installation holds the data of every family not marked NOT_INSTALLED.
    bool installed(const TEXT_BLOCK& part) { return !text().families.at(part.one("FAMILY")).has("TRAITS", "NOT_INSTALLED"); }
    std::vector<DEV_PART_ENUM> expected(const PREDICATE& keep) {
        std::vector<DEV_PART_ENUM> out;
        for (int p = 1; p < DEV_PART_GENERIC; ++p) {
            const TEXT_BLOCK& b = text().parts.at(dstr_get_debug_string(DEV_PART_ENUM(p)));
            if (installed(b) && keep(b)) out.push_back(DEV_PART_ENUM(p));
        }
        return out;
    }
    std::vector<DEV_PART_ENUM> filter(const std::string& family, const std::string& device, const std::string& package,
                                      const std::string& pins, const std::string& speed) {
        std::vector<DEV_PART_ENUM> out;
        pm.filter_part_list(&out, family, device, package, pins, speed);
        return out;
    }
    // Every value a key takes in the part blocks.
    std::set<std::string> values_of(const std::string& key) {
        std::set<std::string> v;
        for (const auto& [name, b] : text().parts)
            if (!b.one(key).empty()) v.insert(b.one(key));
        return v;
    }
    DEV_PART_MANAGER pm;
};

}  // namespace

TEST_F(PartFilter, AnyCriterionSelectsEveryInstalledPart) {
    const std::vector<DEV_PART_ENUM> all = expected([](const TEXT_BLOCK&) { return true; });
    EXPECT_GT(all.size(), 1000u);
    EXPECT_LT(all.size(), 3566u);  // some families are not installed
    EXPECT_EQ(filter("any", "ANY", "Any", "aNy", "any"), all);
    EXPECT_EQ(filter("any", "any", "any", "0", "any"), all);  // pin count 0 is no criterion
    EXPECT_EQ(notes().front(), "==> FILTER: family = any, device = ANY, package = Any, pin_count = aNy, speed = any");
    EXPECT_TRUE(errors().empty());
}

TEST_F(PartFilter, EachCriterionAlone) {
    for (const auto& [name, b] : text().families)
        EXPECT_EQ(filter(name, "any", "any", "any", "any"),
                  expected([&](const TEXT_BLOCK& p) { return p.one("FAMILY") == name; })) << name;
    for (const auto& [name, b] : text().devices)
        EXPECT_EQ(filter("any", name, "any", "any", "any"),
                  expected([&](const TEXT_BLOCK& p) { return p.one("DEVICE") == name; })) << name;
    for (const std::string& v : values_of("PACKAGE"))
        EXPECT_EQ(filter("any", "any", v, "any", "any"),
                  expected([&](const TEXT_BLOCK& p) { return p.one("PACKAGE") == v; })) << v;
    for (const std::string& v : values_of("PIN_COUNT"))
        EXPECT_EQ(filter("any", "any", "any", v, "any"),
                  expected([&](const TEXT_BLOCK& p) { return p.one("PIN_COUNT") == v; })) << v;
    for (const std::string& v : values_of("SPEED_GRADE"))
        EXPECT_EQ(filter("any", "any", "any", "any", v),
                  expected([&](const TEXT_BLOCK& p) { return p.one("SPEED_GRADE") == v; })) << v;
    EXPECT_TRUE(errors().empty());
}

TEST_F(PartFilter, TraitsStandForPackagesAndSpeeds) {
    for (const char* trait : {"FLIP_CHIP", "LEAD_FREE", "BARE_DIE"}) {
        ASSERT_FALSE(dstr_exists_dev_pkg_enum_by_string(trait));
        const auto want = expected([&](const TEXT_BLOCK& p) { return p.has("TRAITS", trait); });
        EXPECT_FALSE(want.empty()) << trait;
        EXPECT_EQ(filter("any", "any", trait, "any", "any"), want) << trait;
    }
    for (const char* trait : {"LOW_POWER", "HIGH_SPEED", "AUTOMOTIVE_QUALIFIED"}) {
        ASSERT_FALSE(dstr_exists_dev_speed_enum_by_string(trait));
        EXPECT_EQ(filter("any", "any", "any", "any", trait),
                  expected([&](const TEXT_BLOCK& p) { return p.has("TRAITS", trait); })) << trait;
    }
}

TEST_F(PartFilter, AllCriteriaTogetherAndUnknownNames) {
    const std::vector<DEV_PART_ENUM> all = expected([](const TEXT_BLOCK&) { return true; });
    for (size_t i = 0; i < all.size(); i += 97) {
        const TEXT_BLOCK& b = text().parts.at(dstr_get_debug_string(all[i]));
        const auto got = filter(b.one("FAMILY"), b.one("DEVICE"), b.one("PACKAGE"), b.one("PIN_COUNT"), b.one("SPEED_GRADE"));
        EXPECT_EQ(got, expected([&](const TEXT_BLOCK& p) {
                      return p.one("DEVICE") == b.one("DEVICE") && p.one("PACKAGE") == b.one("PACKAGE") &&
                             p.one("PIN_COUNT") == b.one("PIN_COUNT") && p.one("SPEED_GRADE") == b.one("SPEED_GRADE");
                  }));
        EXPECT_NE(std::find(got.begin(), got.end(), all[i]), got.end());
    }
    EXPECT_TRUE(filter("NO_SUCH_FAMILY", "any", "any", "any", "any").empty());
    EXPECT_TRUE(filter("any", "NO_SUCH_DEVICE", "any", "any", "any").empty());
    EXPECT_TRUE(filter("any", "any", "NO_SUCH_PACKAGE", "any", "any").empty());
    EXPECT_TRUE(filter("any", "any", "any", "any", "NO_SUCH_SPEED").empty());
    EXPECT_TRUE(filter("any", "any", "any", "7", "any").empty());
    // The result is appended to.
    std::vector<DEV_PART_ENUM> out{DEV_PART_GENERIC};
    pm.filter_part_list(&out, dstr_get_debug_string(pm.get_family_of(all[0])), "any", "any", "any", "any");
    EXPECT_EQ(out[0], DEV_PART_GENERIC);
    EXPECT_EQ(out[1], all[0]);
    EXPECT_TRUE(errors().empty());
}

TEST_F(PartFilter, InstalledMeansTheDeviceFileAndWhereNeededTheHdrFile) {
    TempDir root;
    gen_set_velcora_path(root.path() + "/");
    // One device of a family that needs HDR data, and one of a family that does not.
    DEV_DEVICE_ENUM with_hdr = DEV_DEVICE_INVALID, plain = DEV_DEVICE_INVALID;
    for (const auto& [name, b] : text().devices) {
        const TEXT_BLOCK& f = text().families.at(b.one("FAMILY"));
        const bool hdr = f.has("TRAITS", "NEW_DDB_SUPPORT") || f.has("TRAITS", "REQUIRES_HDR_DATA");
        (hdr ? with_hdr : plain) = dstr_get_dev_device_enum_by_string(name);
    }
    ASSERT_NE(with_hdr, DEV_DEVICE_INVALID);
    ASSERT_NE(plain, DEV_DEVICE_INVALID);
    auto folder = [&](DEV_DEVICE_ENUM d) {
        std::string path;
        DEV_FAMILY_INFO_MGR_BODY::get_instance()->get_ddb_fullpath_of(pm.get_family_of(d), path);
        return path + "/";
    };
    auto device_file = [&](DEV_DEVICE_ENUM d) {
        return folder(d) + text().devices.at(dstr_get_debug_string(d)).one("FILE_NAME");
    };
    auto parts_of = [&](DEV_DEVICE_ENUM d) { return filter("any", dstr_get_debug_string(d), "any", "any", "any"); };

    EXPECT_FALSE(pm.device_is_installed(plain));
    EXPECT_TRUE(parts_of(plain).empty());
    std::filesystem::create_directories(folder(plain));
    root.write(device_file(plain).substr(root.path().size() + 1), "");
    EXPECT_TRUE(pm.device_is_installed(plain));
    size_t parts_of_plain = 0;
    for (const auto& [name, b] : text().parts) parts_of_plain += b.one("DEVICE") == dstr_get_debug_string(plain);
    EXPECT_EQ(parts_of(plain).size(), parts_of_plain);
    std::filesystem::remove(device_file(plain));
    EXPECT_FALSE(pm.device_is_installed(plain));

    root.write(device_file(with_hdr).substr(root.path().size() + 1), "");
    EXPECT_FALSE(pm.device_is_installed(with_hdr));  // the HDR file is missing
    std::string hdr = "ddb_";
    for (char c : std::string(dstr_get_debug_string(with_hdr))) hdr += static_cast<char>(std::tolower(c));
    root.write((folder(with_hdr) + hdr + ".hdr").substr(root.path().size() + 1), "");
    EXPECT_TRUE(pm.device_is_installed(with_hdr));
    EXPECT_FALSE(parts_of(with_hdr).empty());
    EXPECT_TRUE(errors().empty());
}
