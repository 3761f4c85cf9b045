// The assembler data: the die file's name, the slots, the real module (the installed files
// and a write and read back) and modules that are missing or lack functions.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "asmdb.h"
#include "capture_fixture.h"
#include "dev_asm_info.h"
#include "dev_basic_info.h"
#include "dev_device.h"
#include "dev_device_factory.h"
#include "dev_family_info_mgr_body.h"
#include "dev_path.h"
#include "dev_routing_switch_info.h"
#include "host/cfg.h"
#include "host/dstr.h"

namespace {

class AsmInfo : public CaptureTest {
protected:
    // The first installed device of a family with the new database, opened with `aspects`.
    static std::unique_ptr<DEV_DEVICE> new_database_device(unsigned aspects) {
        const DEV_FAMILY_INFO_MGR_BODY& catalogue = *DEV_FAMILY_INFO_MGR_BODY::get_instance();
        for (int d = DEV_DEVICE_INVALID + 1; d < DEV_DEVICE_GENERIC; ++d) {
            const DEV_DEVICE_DESC* device = catalogue.find_desc_of(DEV_DEVICE_ENUM(d));
            const DEV_FAMILY_DESC* family = device ? catalogue.find_desc_of(device->get_family()) : nullptr;
            if (family && family->has_trait(DEV_FAMILY_TRAIT_NEW_DDB_SUPPORT) &&
                !family->has_trait(DEV_FAMILY_TRAIT_NOT_INSTALLED) && !device->has_trait(DEV_DEVICE_TRAIT_NO_HDR_DATA))
                return std::unique_ptr<DEV_DEVICE>(DEV_DEVICE_FACTORY::create(DEV_DEVICE_ENUM(d), aspects));
        }
        return nullptr;
    }
};

TEST_F(AsmInfo, TheDieFileIsNamedByKey10ElseKey13ElseTheDevice) {
    const DEV_DEVICE_ENUM device = DEV_DEVICE_ENUM(DEV_DEVICE_INVALID + 1);
    auto* body = new DEV_BASIC_INFO_BODY;
    body->set_enum_data(DEV_BASIC_INFO_ENUM_DEVICE, device);
    body->set_enum_data(DEV_BASIC_INFO_ENUM_FAMILY, DEV_FAMILY_ENUM(DEV_FAMILY_INVALID + 1));
    DEV_BASIC_INFO info(body);
    FIO_PATH folder, path;
    DEV_PATH::get_ddb_path_of(DEV_FAMILY_ENUM(DEV_FAMILY_INVALID + 1), &folder);
    const std::string dir = folder.directory() + "/";

    ASSERT_TRUE(DEV_ASM_INFO::get_die_file_path(&info, &path));
    std::string name = std::string("ddb_") + dstr_get_debug_string(device) + ".ddb";
    for (char& c : name) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    EXPECT_EQ(path.full_path(), dir + name);
    body->set_string_data(DEV_BASIC_INFO_STRING_DATA_FILE_STEM, "Stem");
    ASSERT_TRUE(DEV_ASM_INFO::get_die_file_path(&info, &path));
    EXPECT_EQ(path.full_path(), dir + "ddb_stem.ddb");
    body->set_string_data(DEV_BASIC_INFO_STRING_DIE_FILE_NAME, "Die_Of_Stem");
    ASSERT_TRUE(DEV_ASM_INFO::get_die_file_path(&info, &path));
    EXPECT_EQ(path.full_path(), dir + "ddb_die_of_stem.ddb");
    EXPECT_FALSE(DEV_ASM_INFO::get_die_file_path(nullptr, &path));
    EXPECT_TRUE(errors().empty());
}

TEST_F(AsmInfo, TheInstalledDescriptionsAreThoseOfTheDeviceDataAndWriteBackEqual) {
    std::unique_ptr<DEV_DEVICE> device = new_database_device(DEV_DEVICE_FACTORY::ALL);
    ASSERT_NE(device, nullptr);
    DEV_ASM_INFO* info = device->get_asm_info();
    ASSERT_TRUE(info && info->get_asmdb_die() && info->get_asmdb_dirt());
    const ASMDB_DIE& die = *info->get_asmdb_die();
    std::unique_ptr<ASMDB_DIE> built(asmdb_build_die(*device->get_basic_info()->get_body()));
    EXPECT_TRUE(die == *built);
    EXPECT_GT(die.total_config_bits(), 0);
    EXPECT_FALSE(die.kinds[1].defaults.m_data.empty());
    std::unique_ptr<ASMDB_DIRT> routing(asmdb_build_dirt(die, *device->get_routing_switch_info()->get_body()));
    EXPECT_TRUE(*info->get_asmdb_dirt() == *routing);
    EXPECT_TRUE(errors().empty());

    // Written at the configured level, both read back equal through the module.
    TempDir dir;
    const std::string path = dir.file("x_die.ddb");
    cfg_set_value("ddb_compression_level", "3");
    EXPECT_TRUE(info->write_data_to_pdb(FIO_PATH(path)));
    EXPECT_TRUE(capture().has_debug("Compression Level: 3"));
    std::unique_ptr<ASMDB_DIE> die_again(asmdb_pdb_read_die(path.c_str()));
    std::unique_ptr<ASMDB_DIRT> dirt_again(asmdb_pdb_read_dirt(path.c_str()));
    ASSERT_TRUE(die_again && dirt_again);
    EXPECT_TRUE(*die_again == die);
    EXPECT_TRUE(*dirt_again == *routing);
    EXPECT_EQ(read_file(dir.file("x_dirt.ddb")).empty(), false);

    // A damaged file is refused, not misread.
    const std::string whole = read_file(path);
    for (size_t cut = 0; cut < whole.size(); cut += whole.size() / 13 + 1) {
        dir.write("cut_die.ddb", whole.substr(0, cut));
        EXPECT_EQ(std::unique_ptr<ASMDB_DIE>(asmdb_pdb_read_die(dir.file("cut_die.ddb").c_str())), nullptr) << cut;
    }

    // Nothing held: nothing written, and true.
    DEV_ASM_INFO empty;
    cfg_unset_value("ddb_compression_level");
    EXPECT_TRUE(empty.write_data_to_pdb(FIO_PATH(dir.file("none_die.ddb"))));
    EXPECT_TRUE(capture().has_debug("Compression Level: 9"));
    EXPECT_FALSE(FIO_FILE_SYSTEM::exists(FIO_PATH(dir.file("none_die.ddb"))));
}

TEST_F(AsmInfo, SlotsMustBeEmptyToBeSetOrLoaded) {
    std::unique_ptr<DEV_DEVICE> device = new_database_device(DEV_DEVICE_FACTORY::BASIC_INFO | DEV_DEVICE_FACTORY::ASM_INFO);
    ASSERT_TRUE(device && device->get_asm_info());
    DEV_ASM_INFO& info = *device->get_asm_info();
    ASMDB_DIE* die = info.get_asmdb_die();
    EXPECT_FALSE(info.load_data_from_pdb(device->get_basic_info()));
    EXPECT_EQ(errors(), (std::vector<std::string>{"m_asmdb_die == NULL", "m_asmdb_dirt == NULL"}));
    EXPECT_EQ(info.get_asmdb_die(), die);
    clear_reports();

    // Overwritten without deleting: the caller takes the old one back.
    info.set_asmdb_die(asmdb_build_die(*device->get_basic_info()->get_body()));
    EXPECT_EQ(errors(), std::vector<std::string>{"m_asmdb_die == NULL"});
    asmdb_delete_die(die);
    info.purge_data();
    EXPECT_EQ(info.get_asmdb_die(), nullptr);
    EXPECT_EQ(info.get_asmdb_dirt(), nullptr);
}

TEST_F(AsmInfo, AModuleLackingAFunctionOrMissingIsReportedWithItsErrorAndTheDeviceStaysUsable) {
    std::unique_ptr<DEV_DEVICE> device = new_database_device(DEV_DEVICE_FACTORY::BASIC_INFO);
    ASSERT_NE(device, nullptr);
    cfg_set_value("dev_asmdb_module", VELCORA_LACKING_ASMDB);
    DEV_ASM_INFO info;
    EXPECT_FALSE(info.load_data_from_pdb(device->get_basic_info()));
    EXPECT_NE(info.get_asmdb_die(), nullptr);
    ASSERT_EQ(errors().size(), 1u);
    EXPECT_NE(errors()[0].find("asmdb_pdb_read_dirt"), std::string::npos) << errors()[0];
    clear_reports();
    info.set_asmdb_dirt(reinterpret_cast<ASMDB_DIRT*>(info.get_asmdb_die()));  // freed by no one
    EXPECT_FALSE(info.write_data_to_pdb(FIO_PATH("/nonexistent/x_die.ddb")));
    info.purge_data();
    ASSERT_EQ(errors().size(), 2u);
    EXPECT_NE(errors()[0].find("asmdb_pdb_write_dirt"), std::string::npos) << errors()[0];
    EXPECT_NE(errors()[1].find("asmdb_delete_dirt"), std::string::npos) << errors()[1];
    EXPECT_EQ(info.get_asmdb_dirt(), nullptr);
    clear_reports();

    // No module at all: one report with the host's text; the device opens with its other aspects.
    cfg_set_value("dev_asmdb_module", "/nonexistent/libvelcora_asmdb.so");
    std::unique_ptr<DEV_DEVICE> opened = new_database_device(DEV_DEVICE_FACTORY::ALL);
    ASSERT_NE(opened, nullptr);
    EXPECT_EQ(opened->get_asm_info(), nullptr);
    EXPECT_NE(opened->get_basic_info(), nullptr);
    EXPECT_NE(opened->get_routing_switch_info(), nullptr);
    ASSERT_EQ(errors().size(), 1u);
    EXPECT_NE(errors()[0].find("/nonexistent/libvelcora_asmdb.so"), std::string::npos) << errors()[0];
}

}  // namespace
