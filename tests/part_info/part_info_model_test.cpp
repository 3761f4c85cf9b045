// The part info model: the supply index and its reports, the handle's setters and loader, and
// the persistent form (links to the owned descriptors, its kept wording, damaged files).
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "capture_fixture.h"
#include "dev_device.h"
#include "dev_device_factory.h"
#include "dev_family_info_mgr_body.h"
#include "dev_part_info.h"
#include "host/dstr.h"

namespace {

using PartInfoModel = CaptureTest;

TEST_F(PartInfoModel, SuppliesAreIndexedOnceAndAbsentOnesReported) {
    DEV_PART_INFO_BODY body;
    body.add_power_supply(DEV_POWER_SUPPLY_DESC::create(DEV_POWER_SUPPLY_VCCAUX));
    EXPECT_TRUE(errors().empty());
    EXPECT_TRUE(body.is_valid_power_supply_enum(DEV_POWER_SUPPLY_VCCAUX));
    EXPECT_FALSE(body.is_valid_power_supply_enum(DEV_POWER_SUPPLY_MAX));

    EXPECT_EQ(body.get_power_supply_desc(DEV_POWER_SUPPLY_VCCIO1), nullptr);
    EXPECT_EQ(body.get_power_supply_desc(DEV_POWER_SUPPLY_MAX), nullptr);
    EXPECT_EQ(errors(), (std::vector<std::string>{"Power supply is not valid for part: I/O bank 1 supply",
                                                  "key >= 0 && key < DEV_POWER_SUPPLY_MAX"}));
    clear_reports();

    // A second descriptor of a supply, or one without a supply, is reported; the body keeps
    // (and frees) it, and the first descriptor keeps the slot.
    DEV_POWER_SUPPLY_DESC* first = body.get_power_supply_desc(DEV_POWER_SUPPLY_VCCAUX);
    body.add_power_supply(DEV_POWER_SUPPLY_DESC::create(DEV_POWER_SUPPLY_VCCAUX));
    body.add_power_supply(new DEV_POWER_SUPPLY_DESC(new DEV_POWER_SUPPLY_DESC_BODY));
    EXPECT_EQ(errors(), (std::vector<std::string>{"!is_valid_power_supply_enum(power_supply_enum)",
                                                  "power_supply_enum != DEV_POWER_SUPPLY_INVALID"}));
    EXPECT_EQ(body.get_power_supply_desc_vec().size(), 3u);
    EXPECT_NE(body.get_power_supply_desc(DEV_POWER_SUPPLY_VCCAUX), first);
}

TEST_F(PartInfoModel, HandleWithoutBodyReportsItsReadsAndWrites) {
    DEV_PART_INFO info;
    EXPECT_TRUE(errors().empty());
    EXPECT_FALSE(info.is_initialized());
    info.set_int_data(DEV_PART_INFO_INT_MAX_JUNCTION_TEMP, 1);
    EXPECT_EQ(info.get_int_data(DEV_PART_INFO_INT_MAX_JUNCTION_TEMP), 0);
    info.add_power_supply(DEV_POWER_SUPPLY_DESC::create(DEV_POWER_SUPPLY_VCCINT));  // freed, not leaked
    EXPECT_EQ(info.get_device(), nullptr);
    EXPECT_EQ(errors(), (std::vector<std::string>{"m_body != 0", "m_body != 0", "m_body != 0", "is_initialized()"}));
    clear_reports();

    info.set_body(new DEV_PART_INFO_BODY);
    info.set_string_data(DEV_PART_INFO_STRING_COMMENT, std::string("c"));
    info.set_2d_int_data(DEV_PART_INFO_2D_INT_CURRENT_LIMITS, DEV_2D_INT_ARRAY{{1}});
    EXPECT_EQ(info.get_string_data(DEV_PART_INFO_STRING_COMMENT), "c");
    // A key never set: its validity report and the default.
    EXPECT_FALSE(info.get_bool_data(DEV_PART_INFO_BOOL_IS_PRELIMINARY));
    EXPECT_EQ(errors(), std::vector<std::string>{"this->is_valid_bool_enum(key)"});
}

TEST_F(PartInfoModel, PersistentFormLinksTheOwnedSuppliesAndKeepsItsWording) {
    TempDir dir;
    DEV_PART_INFO_BODY body;
    body.set_part(DEV_PART_ENUM(1));
    body.set_enum_data(DEV_PART_INFO_ENUM_TEMPERATURE_GRADE, DEV_TEMPERATURE_COMMERCIAL);
    for (DEV_POWER_SUPPLY_ENUM s : {DEV_POWER_SUPPLY_VCC_ONE, DEV_POWER_SUPPLY_VCCINT}) {
        DEV_POWER_SUPPLY_DESC* desc = DEV_POWER_SUPPLY_DESC::create(s);
        desc->set_2d_int_data(DEV_POWER_SUPPLY_DESC_2D_INT_RIPPLE_TABLE, DEV_2D_INT_ARRAY{{int(s)}, {}});
        body.add_power_supply(desc);
    }
    const FIO_PATH path(dir.file("p_part_info.DDB"));
    ASSERT_TRUE(body.write_to_pdb(path, 0));  // plain files are allowed here
    std::unique_ptr<DEV_PART_INFO_BODY> loaded(DEV_PART_INFO_BODY::load_from_pdb(path));
    ASSERT_NE(loaded, nullptr);
    EXPECT_TRUE(*loaded == body);
    EXPECT_TRUE(loaded->is_initialized());
    EXPECT_EQ(loaded->get_part(), DEV_PART_ENUM(1));
    EXPECT_EQ(loaded->get_power_supply_desc(DEV_POWER_SUPPLY_VCCINT), loaded->get_power_supply_desc_vec()[1]);
    EXPECT_TRUE(errors().empty());
    EXPECT_TRUE(capture().has_debug("Spent 0 seconds writing HDR info to PDB: " + path.full_path()));
    EXPECT_TRUE(capture().has_debug("Spent 0 seconds loading HDR info from PDB: " + path.full_path()));

    // Another extension: both reported in their own words (the writer writes the .ddb).
    const FIO_PATH text_path(dir.file("p.part_info"));
    EXPECT_TRUE(body.write_to_pdb(text_path, 9));
    EXPECT_EQ(DEV_PART_INFO_BODY::load_from_pdb(text_path), nullptr);
    EXPECT_EQ(errors(), (std::vector<std::string>{"0 == gen_stricmp(\"ddb\", filename.extension().c_str())",
                                                  "gen_stricmp(\"ddb\", filename.extension().c_str() ) == 0"}));

    // Every truncation of a compressed file, and a flipped byte anywhere, is refused or
    // loads a body that holds together.
    const std::string whole = read_file(dir.file("p.ddb"));
    for (size_t cut = 0; cut < whole.size(); cut += 7) {
        const std::string damaged = dir.write("d_part_info.ddb", whole.substr(0, cut));
        std::unique_ptr<DEV_PART_INFO_BODY> partial(DEV_PART_INFO_BODY::load_from_pdb(FIO_PATH(damaged)));
        EXPECT_EQ(partial, nullptr) << cut;
    }
    const std::string plain = read_file(path.full_path());
    for (size_t at = 0; at < plain.size(); at += 11) {
        std::string flipped = plain;
        flipped[at] = static_cast<char>(flipped[at] ^ 0x5A);
        std::unique_ptr<DEV_PART_INFO_BODY> odd(
            DEV_PART_INFO_BODY::load_from_pdb(FIO_PATH(dir.write("f_part_info.ddb", flipped))));
        std::string problem;
        EXPECT_TRUE(!odd || odd->check_structure(&problem)) << at;
    }
}

TEST_F(PartInfoModel, LoadDataFindsThePartsFileInEitherFormOrNotesItsAbsence) {
    const DEV_FAMILY_INFO_MGR_BODY& catalogue = *DEV_FAMILY_INFO_MGR_BODY::get_instance();
    DEV_PART_ENUM text_part = DEV_PART_INVALID, ddb_part = DEV_PART_INVALID, without = DEV_PART_INVALID;
    for (int p = DEV_PART_INVALID + 1; p < DEV_PART_GENERIC; ++p) {
        const DEV_PART_DESC* part = catalogue.find_desc_of(DEV_PART_ENUM(p));
        const DEV_DEVICE_DESC* device = part ? catalogue.find_desc_of(part->get_device()) : nullptr;
        const DEV_FAMILY_DESC* family = device ? catalogue.find_desc_of(device->get_family()) : nullptr;
        if (!family || family->has_trait(DEV_FAMILY_TRAIT_NOT_INSTALLED)) continue;
        DEV_PART_ENUM& slot = device->has_trait(DEV_DEVICE_TRAIT_NO_HDR_DATA)         ? without
                              : family->has_trait(DEV_FAMILY_TRAIT_NEW_DDB_SUPPORT) ? ddb_part
                                                                                     : text_part;
        if (slot == DEV_PART_INVALID) slot = DEV_PART_ENUM(p);
    }
    for (DEV_PART_ENUM part : {text_part, ddb_part}) {
        ASSERT_NE(part, DEV_PART_INVALID);
        DEV_DEVICE device(new DEV_DEVICE_BODY);
        device.get_body()->set_part_info(nullptr);
        device.get_body()->set_ace_info(nullptr);
        DEV_PART_INFO info;
        ASSERT_TRUE(info.load_data(&device, part)) << dstr_get_debug_string(part);
        EXPECT_TRUE(info.is_initialized());
        EXPECT_EQ(info.get_part(), part);
        EXPECT_EQ(info.get_device(), &device);
        EXPECT_FALSE(info.get_power_supply_desc_vec().empty());
        // Loading again: the body is there already.
        EXPECT_TRUE(info.load_data(&device, part));
    }
    EXPECT_EQ(errors(), (std::vector<std::string>{"m_body == NULL", "m_body == NULL"}));
    clear_reports();

    ASSERT_NE(without, DEV_PART_INVALID);
    DEV_PART_INFO none;
    EXPECT_FALSE(none.load_data(nullptr, without));
    EXPECT_TRUE(errors().empty());
    EXPECT_TRUE(capture().has_debug(std::string("PART_INFO file for ") + dstr_get_debug_string(without) +
                                    " not installed"));
    EXPECT_FALSE(none.load_data(nullptr, DEV_PART_INVALID));
    EXPECT_EQ(errors(), std::vector<std::string>{"dstr_is_valid_dev_part_enum(part)"});
}

}  // namespace
