// The generic attribute table: setters, validity tests, reporting and non-reporting
// getters, the set-once variant and the 2D setter from text, over real key enumerations.
#include <string>
#include <vector>

#include "host/tables/dev_voltage_enum.h"
#include "capture_fixture.h"
#include "dev_attribute_table.h"

namespace {

typedef DEV_ATTRIBUTE_TABLE<DEV_BASIC_INFO_BOOL_DATA_ENUM, DEV_BASIC_INFO_INT_DATA_ENUM,
                            DEV_BASIC_INFO_ENUM_DATA_ENUM, DEV_BASIC_INFO_STRING_DATA_ENUM,
                            DEV_BASIC_INFO_2D_INT_DATA_ENUM>
    BASIC_INFO_TABLES;
typedef DEV_ATTRIBUTE_TABLE<DEV_PAD_BOOL_DATA_ENUM, DEV_PAD_INT_DATA_ENUM, DEV_PAD_STRING_DATA_ENUM,
                            DEV_PAD_2D_INT_DATA_ENUM>
    PAD_TABLES;
typedef DEV_ATTRIBUTE_TABLE<DEV_SET_ONCE<DEV_ROUTING_SWITCH_DESC_BOOL_DATA_ENUM>,
                            DEV_SET_ONCE<DEV_ROUTING_SWITCH_DESC_INT_DATA_ENUM>,
                            DEV_ROUTING_SWITCH_DESC_STRING_DATA_ENUM,
                            DEV_SET_ONCE<DEV_ROUTING_SWITCH_DESC_2D_INT_DATA_ENUM>>
    SWITCH_TABLES;
typedef DEV_ATTRIBUTE_TABLE<DEV_PIN_VEC_INT_DATA_ENUM, DEV_PKG_INFO_VEC_DOUBLE_DATA_ENUM,
                            DEV_PAD_INFO_VEC_STRING_DATA_ENUM>
    VECTOR_TABLES;

template <typename KEY>
KEY key_of(int k) {
    return static_cast<KEY>(k);
}

class AttrTable : public CaptureTest {};

TEST_F(AttrTable, ValidityTestsNeverReportAndCoverOnlyTheRange) {
    BASIC_INFO_TABLES t;
    const auto bool_key = key_of<DEV_BASIC_INFO_BOOL_DATA_ENUM>;
    EXPECT_FALSE(t.is_valid_bool_enum(bool_key(-1)));
    EXPECT_FALSE(t.is_valid_bool_enum(DEV_BASIC_INFO_BOOL_DATA_MAX));
    EXPECT_FALSE(t.is_valid_bool_enum(bool_key(0)));
    t.set_bool_data(bool_key(155), false);
    EXPECT_TRUE(t.is_valid_bool_enum(bool_key(155)));  // the last key, in the third word
    EXPECT_FALSE(t.is_valid_bool_enum(bool_key(154)));
    EXPECT_FALSE(t.get_bool_data(bool_key(155)));
    EXPECT_FALSE(t.is_valid_string_enum(key_of<DEV_BASIC_INFO_STRING_DATA_ENUM>(-2147483647 - 1)));
    EXPECT_TRUE(errors().empty());
}

TEST_F(AttrTable, OutOfRangeKeysReportTheRecordsOwnBound) {
    BASIC_INFO_TABLES info;
    PAD_TABLES pad;
    info.set_bool_data(DEV_BASIC_INFO_BOOL_DATA_MAX, true);
    EXPECT_TRUE(info.get_bool_data(key_of<DEV_BASIC_INFO_BOOL_DATA_ENUM>(-1)) == false);
    EXPECT_EQ(0, pad.get_int_data(DEV_PAD_INT_DATA_MAX));
    EXPECT_EQ("", pad.get_string_data(key_of<DEV_PAD_STRING_DATA_ENUM>(-3)));
    EXPECT_TRUE(pad.get_2d_int_data(DEV_PAD_2D_INT_DATA_MAX).empty());
    info.set_enum_data(key_of<DEV_BASIC_INFO_ENUM_DATA_ENUM>(6), 3);
    EXPECT_EQ((std::vector<std::string>{
                  "key >= 0 && key < DEV_BASIC_INFO_BOOL_DATA_MAX",
                  "key >= 0 && key < DEV_BASIC_INFO_BOOL_DATA_MAX",
                  "key >= 0 && key < DEV_PAD_INT_DATA_MAX",
                  "key >= 0 && key < DEV_PAD_STRING_DATA_MAX",
                  "key >= 0 && key < DEV_PAD_2D_INT_DATA_MAX",
                  "key >= 0 && key < DEV_BASIC_INFO_ENUM_DATA_MAX",
              }),
              errors());
    ASSERT_FALSE(capture().records().empty());
    EXPECT_EQ("ddb/dev/dev_attribute_table", capture().records()[0].source);
    // Nothing in range was touched by the bad stores.
    for (int k = 0; k < DEV_BASIC_INFO_BOOL_DATA_MAX; ++k)
        EXPECT_FALSE(info.is_valid_bool_enum(key_of<DEV_BASIC_INFO_BOOL_DATA_ENUM>(k)));
}

TEST_F(AttrTable, UnsetKeysReportTheValidityConditionAndReturnTheDefault) {
    PAD_TABLES pad;
    BASIC_INFO_TABLES info;
    EXPECT_EQ(0, pad.get_int_data(DEV_PAD_INT_GLOBAL_ID));
    EXPECT_FALSE(pad.get_bool_data(DEV_PAD_BOOL_IS_BONDED));
    EXPECT_EQ("", pad.get_string_data(DEV_PAD_STRING_PAD_NAMES));
    EXPECT_TRUE(pad.get_2d_int_data(DEV_PAD_2D_INT_ADJACENT_PADS).empty());
    EXPECT_EQ(0, info.get_enum_data(DEV_BASIC_INFO_ENUM_FAMILY));
    EXPECT_EQ((std::vector<std::string>{"this->is_valid_int_enum(key)", "this->is_valid_bool_enum(key)",
                                        "this->is_valid_string_enum(key)", "this->is_valid_2d_int_enum(key)",
                                        "this->is_valid_enum_enum(key)"}),
              errors());
}

TEST_F(AttrTable, SettersStoreAndOverwriteAndGettersReturnTheStoredValues) {
    PAD_TABLES pad;
    pad.set_int_data(DEV_PAD_INT_GLOBAL_ID, -12);
    pad.set_int_data(DEV_PAD_INT_GLOBAL_ID, 40);
    pad.set_string_data(DEV_PAD_STRING_PAD_NAMES, "A1,IO_7");
    pad.set_bool_data(DEV_PAD_BOOL_IS_BONDED, true);
    pad.set_2d_int_data(DEV_PAD_2D_INT_ADJACENT_PADS, {{1, 2, 3}, {}, {-4}});
    EXPECT_EQ(40, pad.get_int_data(DEV_PAD_INT_GLOBAL_ID));
    EXPECT_EQ("A1,IO_7", pad.get_string_data(DEV_PAD_STRING_PAD_NAMES));
    EXPECT_TRUE(pad.get_bool_data(DEV_PAD_BOOL_IS_BONDED));
    EXPECT_EQ((DEV_2D_INT_ARRAY{{1, 2, 3}, {}, {-4}}), pad.get_2d_int_data(DEV_PAD_2D_INT_ADJACENT_PADS));
    // Other keys stay unset.
    EXPECT_FALSE(pad.is_valid_int_enum(DEV_PAD_INT_IO_BANK));
    EXPECT_FALSE(pad.is_valid_bool_enum(DEV_PAD_BOOL_IS_USER_IO));

    VECTOR_TABLES vectors;
    vectors.set_vec_int_data(DEV_PIN_VEC_INT_NEIGHBOUR_PINS, {5, -6});
    vectors.set_vec_double_data(DEV_PKG_INFO_VEC_DOUBLE_ROW_OFFSETS_MM, {0.5, 1e-3});
    vectors.set_vec_string_data(DEV_PAD_INFO_VEC_STRING_BANK_NAMES, {"3A", "3 B"});
    EXPECT_EQ((std::vector<int>{5, -6}), vectors.get_vec_int_data(DEV_PIN_VEC_INT_NEIGHBOUR_PINS));
    EXPECT_EQ((std::vector<double>{0.5, 1e-3}), vectors.get_vec_double_data(DEV_PKG_INFO_VEC_DOUBLE_ROW_OFFSETS_MM));
    EXPECT_EQ((std::vector<std::string>{"3A", "3 B"}),
              vectors.get_vec_string_data(DEV_PAD_INFO_VEC_STRING_BANK_NAMES));
    EXPECT_TRUE(errors().empty());
}

TEST_F(AttrTable, NonReportingGettersTellWhetherTheKeyIsSet) {
    BASIC_INFO_TABLES info;
    bool b = true;
    int i = 99;
    std::string s = "unchanged";
    EXPECT_FALSE(info.get_bool_data(DEV_BASIC_INFO_BOOL_HAS_PLL, &b));
    EXPECT_FALSE(info.get_int_data(key_of<DEV_BASIC_INFO_INT_DATA_ENUM>(-1), &i));
    EXPECT_FALSE(info.get_string_data(DEV_BASIC_INFO_STRING_DATA_MAX, &s));
    EXPECT_TRUE(b);
    EXPECT_EQ(99, i);
    EXPECT_EQ("unchanged", s);
    info.set_int_data(DEV_BASIC_INFO_INT_NUM_LABS, 0);
    info.set_string_data(DEV_BASIC_INFO_STRING_DATA_FILE_STEM, "");
    EXPECT_TRUE(info.get_int_data(DEV_BASIC_INFO_INT_NUM_LABS, &i));
    EXPECT_TRUE(info.get_string_data(DEV_BASIC_INFO_STRING_DATA_FILE_STEM, &s));
    EXPECT_EQ(0, i);
    EXPECT_EQ("", s);
    EXPECT_TRUE(errors().empty());
}

TEST_F(AttrTable, SetOnceKeysReportASecondSettingAndOtherKindsOverwriteSilently) {
    SWITCH_TABLES sw;
    sw.set_int_data(DEV_ROUTING_SWITCH_DESC_INT_MUX_SIZE, 4);
    sw.set_bool_data(DEV_ROUTING_SWITCH_DESC_BOOL_IS_BUFFERED, true);
    sw.set_2d_int_data(DEV_ROUTING_SWITCH_DESC_2D_INT_STAGE_SIZES, {{2}});
    sw.set_string_data(DEV_ROUTING_SWITCH_DESC_STRING_NLSPC_NAME, "a");
    EXPECT_TRUE(errors().empty());
    sw.set_int_data(DEV_ROUTING_SWITCH_DESC_INT_MUX_SIZE, 8);
    sw.set_bool_data(DEV_ROUTING_SWITCH_DESC_BOOL_IS_BUFFERED, false);
    sw.set_2d_int_data(DEV_ROUTING_SWITCH_DESC_2D_INT_STAGE_SIZES, {{3}});
    sw.set_string_data(DEV_ROUTING_SWITCH_DESC_STRING_NLSPC_NAME, "b");
    EXPECT_EQ((std::vector<std::string>{"!this->m_int_enum_is_valid.get_value(key)",
                                        "!this->m_bool_enum_is_valid.get_value(key)",
                                        "!this->m_2d_int_enum_is_valid.get_value(key)"}),
              errors());
    // The report does not stop the store.
    EXPECT_EQ(8, sw.get_int_data(DEV_ROUTING_SWITCH_DESC_INT_MUX_SIZE));
    EXPECT_EQ("b", sw.get_string_data(DEV_ROUTING_SWITCH_DESC_STRING_NLSPC_NAME));
}

TEST_F(AttrTable, TwoDimensionalSetterFromText) {
    BASIC_INFO_TABLES info;
    const DSTR_ENTRY& volt = dstr_table_dev_voltage_enum().entry(1);
    EXPECT_TRUE(info.set_2d_int_data_from_string(DEV_BASIC_INFO_2D_INT_IO_BANK_VCCIO,
                                                 std::string("{{1, ") + volt.debug + "}, {2 -3}}"));
    EXPECT_EQ((DEV_2D_INT_ARRAY{{1, volt.value}, {2, -3}}),
              info.get_2d_int_data(DEV_BASIC_INFO_2D_INT_IO_BANK_VCCIO));
    // A name in a column that names nothing is refused; the slot keeps its value.
    EXPECT_FALSE(info.set_2d_int_data_from_string(DEV_BASIC_INFO_2D_INT_IO_BANK_VCCIO,
                                                  std::string("{{") + volt.debug + "}}"));
    EXPECT_EQ((std::vector<std::string>{std::string("Invalid string for DEV_2D_INT_ARRAY: {{") + volt.debug + "}}"}),
              errors());
    EXPECT_EQ((DEV_2D_INT_ARRAY{{1, volt.value}, {2, -3}}),
              info.get_2d_int_data(DEV_BASIC_INFO_2D_INT_IO_BANK_VCCIO));
    // One brace level is an empty array.
    EXPECT_TRUE(info.set_2d_int_data_from_string(DEV_BASIC_INFO_2D_INT_PLL_LOCATIONS, "{1, 2}"));
    EXPECT_TRUE(info.is_valid_2d_int_enum(DEV_BASIC_INFO_2D_INT_PLL_LOCATIONS));
    EXPECT_TRUE(info.get_2d_int_data(DEV_BASIC_INFO_2D_INT_PLL_LOCATIONS).empty());
}

}  // namespace
