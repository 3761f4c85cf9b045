// The bundled installation's pads and packages, family by family: each file loads in the
// form the library finds and equals its other form (the staged text of a compiled file, the
// compiled form of a text), and every package's pins are bonded to pads of its device (every
// bonded pad exists; no user I/O pad is bonded twice).
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "dev_path.h"
#include "host/gen.h"
#include "pads_fixture.h"

namespace {

class InstalledPadsAndPackages : public PadTextTest, public ::testing::WithParamInterface<int> {
protected:
    void SetUp() override {
        PadTextTest::SetUp();
        gen_set_velcora_path(VELCORA_BUNDLED_ROOT);
    }
    void TearDown() override {
        gen_set_velcora_path("");
        PadTextTest::TearDown();
    }

    // The text of a compiled file: where the build staged it.
    static std::string staged_text(const FIO_PATH& compiled, const char* type) {
        const std::string folder = FIO_PATH(compiled.directory()).file_name();
        std::string base = compiled.base_name();
        base.resize(base.size() - std::string(type).size() - 1);
        return std::string(VELCORA_DEVICE_STAGING) + "/" + folder + "/" + base + "." + type;
    }

    // Loads `path` in its form and in the other one; both must load and be equal.
    template <typename BODY, typename READ_TEXT, typename LOAD, typename WRITE>
    std::unique_ptr<BODY> both_forms(const FIO_PATH& path, const char* type, READ_TEXT read_text, LOAD load,
                                     WRITE write) {
        std::unique_ptr<BODY> text, compiled;
        if (DEV_PATH::is_pdb_file(path)) {
            compiled.reset(load(path));
            text = read_text(FIO_PATH(staged_text(path, type)));
        } else {
            text = read_text(path);
            const FIO_PATH temp(m_dir.file(std::string("x_") + type + ".ddb"));
            EXPECT_TRUE(write(*text, temp)) << path.full_path();
            compiled.reset(load(temp));
        }
        EXPECT_NE(compiled, nullptr) << path.full_path();
        EXPECT_TRUE(compiled && *compiled == *text) << path.full_path();
        return compiled;
    }
};

TEST_P(InstalledPadsAndPackages, LoadAlikeFromTextAndDdbAndBondToRealPads) {
    const DEV_FAMILY_ENUM family = static_cast<DEV_FAMILY_ENUM>(GetParam());
    const DEV_FAMILY_INFO_MGR_BODY& store = *DEV_FAMILY_INFO_MGR_BODY::get_instance();
    std::map<DEV_DEVICE_ENUM, std::unique_ptr<DEV_PAD_INFO_BODY>> pads;
    std::map<DEV_DEVICE_ENUM, std::unique_ptr<DEV_DEVICE>> devices;
    for (int d = DEV_DEVICE_INVALID + 1; d < DEV_DEVICE_GENERIC; ++d) {
        const DEV_DEVICE_ENUM device = static_cast<DEV_DEVICE_ENUM>(d);
        const DEV_DEVICE_DESC* desc = store.find_desc_of(device);
        FIO_PATH path;
        if (!desc || desc->get_family() != family || !DEV_PATH::get_existing_device_file_path(device, "pad", &path))
            continue;
        devices[device] = stand_in_device(dstr_get_debug_string(device));
        DEV_DEVICE* owner = devices[device].get();
        pads[device] = both_forms<DEV_PAD_INFO_BODY>(
            path, "pad",
            [owner](const FIO_PATH& text) {
                auto body = std::make_unique<DEV_PAD_INFO_BODY>();
                body->set_device(owner);
                EXPECT_TRUE(body->read_pad_file(text)) << text.full_path();
                return body;
            },
            DEV_PAD_INFO_BODY::load_pad_from_pdb,
            [](DEV_PAD_INFO_BODY& body, const FIO_PATH& to) { return body.write_pad_to_pdb(to, 1); });
        EXPECT_GT(pads[device]->get_number_of_pads(), 0u) << path.full_path();
    }
    if (pads.empty()) GTEST_SKIP() << "no pad data in family " << dstr_get_debug_string(family);

    std::set<std::string> seen;
    for (int p = DEV_PART_INVALID + 1; p < DEV_PART_GENERIC; ++p) {
        const DEV_PART_ENUM part = static_cast<DEV_PART_ENUM>(p);
        const DEV_PART_DESC* desc = store.find_desc_of(part);
        FIO_PATH path;
        if (!desc || !pads.count(desc->get_device()) || !DEV_PATH::get_existing_device_file_path(part, "pkg", &path) ||
            !seen.insert(path.full_path()).second)
            continue;
        std::unique_ptr<DEV_PKG_INFO_BODY> pkg = both_forms<DEV_PKG_INFO_BODY>(
            path, "pkg",
            [](const FIO_PATH& text) {
                auto body = std::make_unique<DEV_PKG_INFO_BODY>();
                EXPECT_TRUE(body->read_pkg_file(text)) << text.full_path();
                return body;
            },
            DEV_PKG_INFO_BODY::load_pkg_from_pdb,
            [](DEV_PKG_INFO_BODY& body, const FIO_PATH& to) { return body.write_pkg_to_pdb(to, 1); });
        if (!pkg) continue;
        const DEV_PAD_INFO_BODY& device_pads = *pads[desc->get_device()];
        std::map<uint32_t, int> bonds;
        for (const DEV_PIN* pin : pkg->get_pins())
            for (uint32_t pad_id : pin->get_list_of_pad_ids()) {
                EXPECT_LT(pad_id, device_pads.get_number_of_pads()) << path.full_path() << " pin " << pin->get_name();
                ++bonds[pad_id];
            }
        for (const auto& bond : bonds) {
            const DEV_PAD* pad = device_pads.get_pad(bond.first);
            if (pad && pad->get_bool_data(DEV_PAD_BOOL_IS_USER_IO)) {
                EXPECT_EQ(bond.second, 1) << path.full_path() << " pad " << bond.first;
            }
        }
        EXPECT_FALSE(bonds.empty()) << path.full_path();
    }
    EXPECT_FALSE(seen.empty()) << "no package of family " << dstr_get_debug_string(family);
    EXPECT_TRUE(errors().empty()) << errors().front();
}

INSTANTIATE_TEST_SUITE_P(EveryFamily, InstalledPadsAndPackages,
                         ::testing::Range(static_cast<int>(DEV_FAMILY_INVALID) + 1, static_cast<int>(DEV_FAMILY_GENERIC)),
                         [](const ::testing::TestParamInfo<int>& info) {
                             return std::string(dstr_get_debug_string(static_cast<DEV_FAMILY_ENUM>(info.param)));
                         });

}  // namespace
