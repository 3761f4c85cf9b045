// The PKG reader and dump: pins through the package, pin names, package-level pin getters,
// vectors, messages, includes as written, and the dump read back.
#include <gtest/gtest.h>

#include <unistd.h>

#include "pads_fixture.h"

namespace {

const char* const PINS = R"(BOOL_IS_FLIP_CHIP = true
INT_NUM_PINS = 4
INT_PACKAGE = FBGA
VEC_DOUBLE_ROW_OFFSETS_MM = {0.5, 1, 2.25}
2D_INT_BALL_MAP = {
	{ 0 1 }
	{ 2 3 }}
pin 0
	PAD_IDS = 7, 7, 9
	STRING_PIN_NAME = "a1"
	VEC_INT_IO_STANDARDS = {LVTTL, 2, LVCMOS30}
end
pin 1
	STRING_PIN_NAME = "A1"
	INT_IO_BANK = 3
end
pin 2
	STRING_PIN_NAME = "B1"
	BOOL_IS_POWER = true
end
pin 3
	STRING_PIN_NAME = "b1"
end
)";

}  // namespace

TEST_F(PadTextTest, PinsNamesAndPackageLevelGetters) {
    DEV_PKG_INFO_BODY& pkg = read_pkg(PINS);
    ASSERT_EQ(pkg.get_number_of_pins(), 4u);
    EXPECT_TRUE(has_note("Allocating 4 PINS"));
    EXPECT_EQ(pkg.get_package_enum(), dstr_get_dev_pkg_enum_by_string("FBGA"));
    EXPECT_EQ(pkg.get_vec_double_data(DEV_PKG_INFO_VEC_DOUBLE_ROW_OFFSETS_MM), (std::vector<double>{0.5, 1, 2.25}));
    EXPECT_EQ(pkg.get_2d_int_data(DEV_PKG_INFO_2D_INT_BALL_MAP), (DEV_2D_INT_ARRAY{{0, 1}, {2, 3}}));
    EXPECT_EQ(pkg.get_list_of_pad_ids(0), (std::vector<uint32_t>{7, 7, 9}));
    EXPECT_EQ(pkg.get_pin_vec_int_data(0, DEV_PIN_VEC_INT_IO_STANDARDS),
              (DEV_INT_VECTOR{DEV_IO_STANDARD_LVTTL, 2, DEV_IO_STANDARD_LVCMOS30}));

    // A name first given to pin 0 is taken over by a later pin; between other pins the
    // first stays, reported; look-up ignores letter case.
    EXPECT_EQ(pkg.get_pin_id_by_string("a1"), 1u);
    EXPECT_EQ(pkg.get_pin_id_by_string("b1"), 2u);
    EXPECT_EQ(errors(), std::vector<std::string>{"A different PIN_ID with key B1 already exists in the hash table!"});
    EXPECT_EQ(pkg.get_pin_id_by_string("C1"), DEV_ILLEGAL_PIN_ID);

    // Package-level getters read any pin's stored value once some pin has the key.
    EXPECT_TRUE(pkg.is_valid_pin_int_enum(DEV_PIN_INT_IO_BANK));
    EXPECT_FALSE(pkg.is_valid_pin_int_enum(0, DEV_PIN_INT_IO_BANK));
    EXPECT_EQ(pkg.get_pin_int_data(0, DEV_PIN_INT_IO_BANK), 0);
    EXPECT_EQ(pkg.get_pin_int_data(1, DEV_PIN_INT_IO_BANK), 3);
    EXPECT_FALSE(pkg.get_pin_bool_data(1, DEV_PIN_BOOL_IS_POWER));
    EXPECT_FALSE(pkg.get_pin_bool_data(3, DEV_PIN_BOOL_IS_BONDED));  // every pin has BOOL key 0
    clear_reports();
    pkg.get_pin_int_data(0, DEV_PIN_INT_ROW);
    pkg.get_pin_int_data(9, DEV_PIN_INT_IO_BANK);
    pkg.get_pins()[0]->get_int_data(DEV_PIN_INT_IO_BANK);
    EXPECT_EQ(errors(), (std::vector<std::string>{"Key not defined in data file: INT_ROW",
                                                  "id < this->m_pin_list.size()", "this->m_pin_list[id] != 0",
                                                  "Key not defined in data file: INT_IO_BANK"}));
}

TEST_F(PadTextTest, PkgMessagesAndPinLabels) {
    read_pkg("INT_NUM_PINS = many\n"
             "INT_NUM_PINS = 2\n"
             "BOOL_IS_LIDDED = true \n"
             "BOOL_IS_LIDDED = yes\n"
             "BOOL_NO_KEY = true\n"
             "VEC_DOUBLE_NO_KEY = {1}\n"
             "VEC_DOUBLE_ROW_OFFSETS_MM = {x}\n"
             "end\n"
             "pin 5\n"
             "\tINT_IO_BANK = 1\n"
             "end\n"
             "pin one\n"
             "pin 1\n"
             "\tPAD_IDS = 3, x\n"
             "\tVEC_INT_VOLTAGES = {1, NOT_A_VOLTAGE, 2}\n"
             "\tVEC_INT_NO_KEY = {1}\n"
             "\tINT_NUM_PINS = 4\n"
             "\tBOOL_IS_POWER = true\n"
             "end\n");
    EXPECT_TRUE(has_error("Invalid int value: many"));
    // The BOOL pattern takes no trailing blanks: that line is a syntax error.
    EXPECT_TRUE(has_error("Syntax error in file pins.pkg, line 3: BOOL_IS_LIDDED = true "));
    EXPECT_TRUE(has_error("Invalid bool value: yes"));
    EXPECT_TRUE(has_error("Invalid bool key: BOOL_NO_KEY"));
    EXPECT_TRUE(has_error("Invalid string key: VEC_DOUBLE_NO_KEY"));
    EXPECT_TRUE(has_error("Invalid VEC_DOUBLE value: {x}"));
    EXPECT_TRUE(has_error("Syntax error in file pins.pkg, line 8: end"));
    // Pin labels are only noted; the lines of such a block trip the assertion.
    EXPECT_TRUE(has_note("ERROR: Ignoring pin 5 as PKG_INFO only has 2 pins"));
    EXPECT_TRUE(has_note("ERROR: pin label should be an integer number!"));
    const std::vector<std::string> all = errors();
    EXPECT_EQ(std::count(all.begin(), all.end(), "pin_id != DEV_ILLEGAL_PIN_ID"), 2);
    EXPECT_TRUE(has_error("Embedded definitions not allowed!"));
    EXPECT_TRUE(has_error("Invalid DEV_PAD_ID value: x"));
    EXPECT_TRUE(has_error("Invalid VEC_INT value: {1, NOT_A_VOLTAGE, 2}"));
    EXPECT_TRUE(has_error("Invalid string key: VEC_INT_NO_KEY"));
    EXPECT_TRUE(has_error("Invalid int key: INT_NUM_PINS"));
    EXPECT_EQ(m_pkg->get_list_of_pad_ids(1), std::vector<uint32_t>{3});
    EXPECT_TRUE(m_pkg->get_pin_bool_data(1, DEV_PIN_BOOL_IS_POWER));
    EXPECT_FALSE(m_pkg->is_valid_pin_vec_int_enum(DEV_PIN_VEC_INT_VOLTAGES));
}

TEST_F(PadTextTest, PkgIncludesAreTakenAsWritten) {
    m_dir.write("sub/pins.pkg", "INT_NUM_PINS = 1\n");
    m_dir.write("sub/main.pkg", "include \"sub/pins.pkg\"\nINT_NUM_COLUMNS = 2\n");
    char* previous = getcwd(nullptr, 0);
    ASSERT_EQ(chdir(m_dir.path().c_str()), 0);
    m_pkg = std::make_unique<DEV_PKG_INFO_BODY>();
    m_pkg->read_pkg_file(FIO_PATH(m_dir.file("sub/main.pkg")));
    EXPECT_EQ(chdir(previous), 0);
    free(previous);
    EXPECT_TRUE(errors().empty());
    EXPECT_EQ(m_pkg->get_number_of_pins(), 1u);
    EXPECT_EQ(m_pkg->get_int_data(DEV_PKG_INFO_INT_NUM_COLUMNS), 2);
}

TEST_F(PadTextTest, PkgDumpReadsBackToTheSameText) {
    DEV_PKG_INFO_BODY& pkg = read_pkg(PINS);
    const std::string first = m_dir.file("first.pkg");
    ASSERT_TRUE(pkg.write_pkg_file(FIO_PATH(first), 0));
    const std::string dump = read_file(first);
    EXPECT_EQ(dump.rfind("#######################################################\n### PKG info - ASCII dump by DEV\n", 0), 0u);
    EXPECT_NE(dump.find("BOOL_IS_FLIP_CHIP = true\nINT_NUM_PINS = 4\nINT_PACKAGE = FBGA\n"), std::string::npos);
    EXPECT_NE(dump.find("VEC_DOUBLE_ROW_OFFSETS_MM = {0.5, 1, 2.25}\n"), std::string::npos);
    EXPECT_NE(dump.find("pin 0\n\tPAD_IDS = 7, 7, 9\n\tBOOL_IS_BONDED = false\n"), std::string::npos);
    EXPECT_NE(dump.find("\tVEC_INT_IO_STANDARDS = {LVTTL, LVCMOS33, LVCMOS30}\n"), std::string::npos);
    DEV_PKG_INFO_BODY& again = read_pkg(dump, "again.pkg");
    const std::string second = m_dir.file("second.pkg");
    ASSERT_TRUE(again.write_pkg_file(FIO_PATH(second), 0));
    EXPECT_EQ(read_file(second), dump);
}
