// The persistent form of pads and packages: what loads equals what was written, links point
// at the loaded body's own records, the report texts, and damaged files refused.
#include <gtest/gtest.h>

#include <fstream>

#include "host/cfg.h"
#include "pads_fixture.h"

namespace {

const char* const PADS = "INT_NUM_PADS = 2\nINT_DEFAULT_IO_STANDARD = LVTTL\n"
                         "io_standard A\n\tINT_IO_STANDARD = LVTTL\n\tBOOL_IS_DEFAULT = true\n\tCURRENT_SET = 2MA\nend\n"
                         "io_rule VCCIO_MATCH\n\tINT_RULE_VALUE = 1\nend\n"
                         "default_pad\n\tIO_STANDARDS = A\n\tBOOL_IS_USER_IO = true\nend\n"
                         "pad 1\n\tIO_STANDARDS = A\n\tINT_GLOBAL_ID = 9\n\tSTRING_PAD_NAMES = \"X/Y\"\nend\n";

}  // namespace

TEST_F(PadTextTest, PadInfoRoundTripsWithLinksToItsOwnRecords) {
    DEV_PAD_INFO_BODY& pads = read(PADS);
    const FIO_PATH file(m_dir.file("pads_pad.DDB"));
    ASSERT_TRUE(pads.write_pad_to_pdb(file, 9));
    std::unique_ptr<DEV_PAD_INFO_BODY> loaded(DEV_PAD_INFO_BODY::load_pad_from_pdb(file));
    ASSERT_NE(loaded, nullptr);
    EXPECT_TRUE(errors().empty());
    EXPECT_TRUE(*loaded == pads);
    const DEV_IO_STANDARD_DESC* a = loaded->get_io_standard_descs().at(0);
    EXPECT_EQ(loaded->get_io_standard_by_string("A"), a);
    EXPECT_EQ(loaded->get_default_desc_for_io_standard(DEV_IO_STANDARD_LVTTL), a);
    EXPECT_EQ(loaded->get_pad(1)->get_io_standard_descs().at(0), a);
    EXPECT_EQ(loaded->get_pad(1)->get_io_standard_desc_by_enum(DEV_IO_STANDARD_LVTTL), a);
    EXPECT_EQ(loaded->get_pad(0)->get_body()->get_default_pad_body(), loaded->get_default_pad_body());
    EXPECT_EQ(loaded->get_default_pad_body()->get_io_standard_descs().at(0), a);
    EXPECT_EQ(loaded->get_pad_id_by_string("y"), 1u);
    EXPECT_EQ(loaded->get_pad_by_global_id(9), loaded->get_pad(1));
    EXPECT_TRUE(loaded->get_pad(0)->get_bool_data(DEV_PAD_BOOL_IS_USER_IO));
    EXPECT_TRUE(has_note("Spent 0 seconds loading PAD info from PDB: " + file.full_path()));

    EXPECT_TRUE(capture().has_debug("Spent 0 seconds writing PAD info to PDB: " + file.full_path()));

    // Another extension, and a level of 0, in the form's own words.
    pads.write_pad_to_pdb(FIO_PATH(m_dir.file("pads.bin")), 0);
    DEV_PAD_INFO_BODY::load_pad_from_pdb(FIO_PATH(m_dir.file("pads.bin")));
    EXPECT_EQ(errors(), (std::vector<std::string>{"gen_stricmp(\"ddb\", filename.extension().c_str() )== 0",
                                                  "compression_level != 0",
                                                  "gen_stricmp(\"ddb\", filename.extension().c_str()) == 0"}));
}

TEST_F(PadTextTest, DamagedPersistentFilesAreRefused) {
    read(PADS);
    const std::string file = m_dir.file("pads_pad.ddb");
    ASSERT_TRUE(m_pads->write_pad_to_pdb(FIO_PATH(file), 1));
    const std::string bytes = read_file(file);
    for (size_t cut : {bytes.size() / 2, bytes.size() - 1, size_t(10)}) {
        m_dir.write("cut_pad.ddb", bytes.substr(0, cut));
        EXPECT_EQ(DEV_PAD_INFO_BODY::load_pad_from_pdb(FIO_PATH(m_dir.file("cut_pad.ddb"))), nullptr) << cut;
    }
    // A package file is no pad file.
    read_pkg("INT_NUM_PINS = 1\n");
    ASSERT_TRUE(m_pkg->write_pkg_to_pdb(FIO_PATH(m_dir.file("pins_pkg.ddb")), 9));
    EXPECT_EQ(DEV_PAD_INFO_BODY::load_pad_from_pdb(FIO_PATH(m_dir.file("pins_pkg.ddb"))), nullptr);
    EXPECT_EQ(DEV_PKG_INFO_BODY::load_pkg_from_pdb(FIO_PATH(file)), nullptr);
    // A failed write leaves the previous file as it was.
    std::ofstream(m_dir.file("ro"), std::ios::trunc);
    EXPECT_FALSE(m_pads->write_pad_to_pdb(FIO_PATH(m_dir.file("ro/x_pad.ddb")), 9));
    EXPECT_EQ(read_file(file), bytes);
}

TEST_F(PadTextTest, PackageRoundTripsAndLoadDataFollowsTheSwitch) {
    read_pkg("INT_NUM_PINS = 2\nVEC_DOUBLE_THERMAL_COEFFICIENTS = {1.5}\npin 1\n\tPAD_IDS = 4\n"
             "\tSTRING_PIN_NAME = \"A2\"\n\tVEC_INT_VOLTAGES = {3}\nend\n");
    const FIO_PATH file(m_dir.file("pins_pkg.ddb"));
    ASSERT_TRUE(m_pkg->write_pkg_to_pdb(file, 6));
    std::unique_ptr<DEV_PKG_INFO_BODY> loaded(DEV_PKG_INFO_BODY::load_pkg_from_pdb(file));
    ASSERT_NE(loaded, nullptr);
    EXPECT_TRUE(*loaded == *m_pkg);
    EXPECT_EQ(loaded->get_pin_id_by_string("a2"), 1u);
    EXPECT_TRUE(loaded->is_valid_pin_vec_int_enum(DEV_PIN_VEC_INT_VOLTAGES));
    EXPECT_TRUE(capture().has_debug("Spent 0 seconds loading PKG info from PDB: " + file.full_path()));

    // DEV_PAD_INFO::load_data(path): the persistent file, or with the switch on the text
    // beside it read into the body.
    read(PADS, NEW_FORMAT_DEVICE, "dev.pad");
    ASSERT_TRUE(m_pads->write_pad_to_pdb(FIO_PATH(m_dir.file("dev.ddb")), 9));
    DEV_PAD_INFO info(new DEV_PAD_INFO_BODY);
    info.get_body()->set_device(m_device.get());
    EXPECT_TRUE(info.load_data(FIO_PATH(m_dir.file("dev.ddb"))));
    EXPECT_EQ(info.get_number_of_pads(), 2u);
    EXPECT_EQ(info.get_body()->get_device(), m_device.get());
    cfg_set_value("dev_load_pad_info_from_ascii", "on");
    EXPECT_TRUE(info.load_data(FIO_PATH(m_dir.file("dev.ddb"))));
    EXPECT_EQ(info.get_number_of_pads(), 4u);  // the text's pads added to the loaded ones
}
