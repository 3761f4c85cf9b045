// The pad info's model through its API: global-id and name conflicts, descriptors and their
// removal, rules, currents, inheritance reports.
#include <gtest/gtest.h>

#include "pads_fixture.h"

namespace {

DEV_IO_STANDARD_DESC* descriptor(const char* name, DEV_IO_STANDARD_ENUM standard, bool is_default) {
    DEV_IO_STANDARD_DESC* desc = DEV_IO_STANDARD_DESC::create();
    desc->get_body()->set_string_data(DEV_IO_STANDARD_DESC_STRING_INTERNAL_NAME, name);
    desc->get_body()->set_int_data(DEV_IO_STANDARD_DESC_INT_IO_STANDARD, standard);
    desc->get_body()->set_bool_data(DEV_IO_STANDARD_DESC_BOOL_IS_DEFAULT, is_default);
    return desc;
}

struct TWO_PADS {
    DEV_PAD_INFO_BODY info;
    TWO_PADS() {
        DEV_PAD_BODY* parent = info.make_default_pad_body();
        info.add_pad(new DEV_PAD(new DEV_PAD_BODY(parent)));
        info.add_pad(new DEV_PAD(new DEV_PAD_BODY(parent)));
    }
};

}  // namespace

TEST_F(CaptureTest, GlobalIdConflictsKeepTheFirstPad) {
    TWO_PADS p;
    p.info.add_to_ids_by_global_id_hash(500, 0, true);
    p.info.add_to_ids_by_global_id_hash(500, 0, true);
    EXPECT_TRUE(errors().empty());
    p.info.add_to_ids_by_global_id_hash(500, 1, true);
    EXPECT_EQ(errors(), std::vector<std::string>{"A different PAD_ID with key 500 already exists in the hash table!"});
    EXPECT_TRUE(capture().has_debug("add_to_ids_by_global_id_hash(PAD = 1, KEY = 500)"));
    EXPECT_EQ(p.info.get_pad_id_by_global_id(500), 0u);
    EXPECT_EQ(p.info.get_pad(0)->get_int_data(DEV_PAD_INT_GLOBAL_ID), 500);
    EXPECT_FALSE(p.info.get_pad(1)->is_valid_int_enum(DEV_PAD_INT_GLOBAL_ID));
    // Without set_on_pad the pad keeps its key as it was.
    p.info.add_to_ids_by_global_id_hash(501, 1, false);
    EXPECT_FALSE(p.info.get_pad(1)->is_valid_int_enum(DEV_PAD_INT_GLOBAL_ID));
    p.info.get_pad_gids(0, nullptr);
    EXPECT_TRUE(capture().has_internal_error("Caller passed NULL gid_vec tp get_pad_gids"));
}

TEST_F(CaptureTest, PadReadsFallBackToTheDefaultPadAndNameMissingKeys) {
    TWO_PADS p;
    p.info.get_default_pad_body()->set_bool_data(DEV_PAD_BOOL_IS_USER_IO, true);
    DEV_PAD_BODY& pad = *p.info.get_pad(0)->get_body();
    EXPECT_TRUE(pad.is_valid_bool_enum(DEV_PAD_BOOL_IS_USER_IO));
    EXPECT_FALSE(pad.sets(DEV_PAD_BOOL_IS_USER_IO));
    EXPECT_TRUE(pad.get_bool_data(DEV_PAD_BOOL_IS_USER_IO));
    pad.set_bool_data(DEV_PAD_BOOL_IS_USER_IO, false);
    EXPECT_FALSE(pad.get_bool_data(DEV_PAD_BOOL_IS_USER_IO));
    EXPECT_TRUE(errors().empty());
    EXPECT_EQ(pad.get_string_data(DEV_PAD_STRING_PAD_NAME), "");
    pad.get_int_data(static_cast<DEV_PAD_INT_DATA_ENUM>(DEV_PAD_INT_DATA_MAX));
    EXPECT_EQ(errors(), (std::vector<std::string>{"Key not defined in data file: STRING_PAD_NAME",
                                                  "key >= 0 && key < DEV_PAD_INT_DATA_MAX"}));
}

TEST_F(CaptureTest, DescriptorsByNameDefaultsAndRemoval) {
    TWO_PADS p;
    DEV_IO_STANDARD_DESC* a = descriptor("A", DEV_IO_STANDARD_LVTTL, true);
    DEV_IO_STANDARD_DESC* b = descriptor("B", DEV_IO_STANDARD_LVTTL, false);
    DEV_IO_STANDARD_DESC* c = descriptor("C", DEV_IO_STANDARD_LVCMOS33, true);
    p.info.add_io_standard(a);
    p.info.add_io_standard(b);
    p.info.add_io_standard(c);
    p.info.add_to_io_standards_by_string_hash("A", b);
    EXPECT_EQ(errors(), std::vector<std::string>{"A different element with key A already exists in the hash table!"});
    EXPECT_EQ(p.info.get_io_standard_by_string("A"), a);
    p.info.fill_in_io_standard_enums();
    EXPECT_EQ(p.info.get_io_standard_enums(),
              (std::vector<DEV_IO_STANDARD_ENUM>{DEV_IO_STANDARD_LVTTL, DEV_IO_STANDARD_LVCMOS33}));
    p.info.get_pad(0)->get_body()->add_io_standard(a);
    p.info.get_pad(0)->get_body()->add_io_standard(c);
    p.info.get_pad(1)->get_body()->add_io_standard(b);

    // Removing a non-default descriptor is silent; it leaves every pad and the name table.
    clear_reports();
    p.info.remove_io_standard(b);
    EXPECT_TRUE(errors().empty());
    EXPECT_TRUE(p.info.get_pad(1)->get_io_standard_descs().empty());
    EXPECT_EQ(p.info.get_io_standard_by_string("B"), nullptr);
    // The standard leaves the default table and the distinct list even though descriptor A,
    // its default, is still of it.
    EXPECT_EQ(p.info.get_default_desc_for_io_standard(DEV_IO_STANDARD_LVTTL), nullptr);
    EXPECT_EQ(p.info.get_io_standard_enums(), std::vector<DEV_IO_STANDARD_ENUM>{DEV_IO_STANDARD_LVCMOS33});
    // The default descriptor of the device-scope default standard is reported, and removed.
    p.info.set_int_data(DEV_PAD_INFO_INT_DEFAULT_IO_STANDARD, DEV_IO_STANDARD_LVCMOS33);
    p.info.remove_io_standard(c);
    EXPECT_EQ(errors(), std::vector<std::string>{"Removing device-scope default IO std not allowed. Change the default first!"});
    EXPECT_EQ(p.info.get_default_desc_for_io_standard(DEV_IO_STANDARD_LVCMOS33), nullptr);
    EXPECT_EQ(p.info.get_pad(0)->get_io_standard_descs(), std::vector<DEV_IO_STANDARD_DESC*>{a});
    EXPECT_EQ(p.info.get_total_io_standards(), 1);

    clear_reports();
    p.info.get_default_desc_for_io_standard(DEV_IO_STANDARD_INVALID);
    p.info.get_pad(0)->get_io_standard_desc_by_enum(DEV_IO_STANDARD_MAX);
    DEV_PAD_INFO_BODY empty;
    empty.get_default_io_standard_enum();
    EXPECT_EQ(errors(), (std::vector<std::string>{
                            "io_std_enum > DEV_IO_STANDARD_INVALID && io_std_enum < DEV_IO_STANDARD_MAX",
                            "io_standard_enum > DEV_IO_STANDARD_INVALID && io_standard_enum < DEV_IO_STANDARD_MAX",
                            "this->is_valid_int_enum(DEV_PAD_INFO_INT_DEFAULT_IO_STANDARD)"}));
}

TEST_F(CaptureTest, RulesAndCurrents) {
    DEV_PAD_INFO_BODY info;
    for (int value : {1, 2}) {
        DEV_IO_RULE* rule = DEV_IO_RULE::create();
        rule->get_body()->set_int_data(DEV_IO_RULE_INT_IO_RULE, DEV_IO_RULE_VCCIO_MATCH);
        rule->get_body()->set_int_data(DEV_IO_RULE_INT_RULE_VALUE, value);
        info.add_io_rule(rule);
    }
    EXPECT_EQ(info.get_io_rule_by_enum(DEV_IO_RULE_VCCIO_MATCH)->get_int_data(DEV_IO_RULE_INT_RULE_VALUE), 2);
    EXPECT_EQ(info.get_io_rule_by_enum(DEV_IO_RULE_VREF_MATCH), nullptr);
    info.get_io_rule_by_enum(DEV_IO_RULE_MAX);
    EXPECT_EQ(errors(), std::vector<std::string>{"io_rule_enum > DEV_IO_RULE_INVALID && io_rule_enum < DEV_IO_RULE_MAX"});

    // A current is read only for a strength of the set; setting one does not list it.
    clear_reports();
    DEV_IO_STANDARD_DESC_BODY desc;
    desc.set_real_vcc_current(DEV_CURRENT_STRENGTH_MA_2, 7);
    EXPECT_FALSE(desc.is_valid_current_enum(DEV_CURRENT_STRENGTH_MA_2));
    desc.get_real_vcc_current(DEV_CURRENT_STRENGTH_MA_2);
    EXPECT_EQ(errors(), std::vector<std::string>{"this->is_valid_current_enum(current_enum)"});
    desc.add_current_enum(DEV_CURRENT_STRENGTH_MA_2);
    desc.add_current_enum(DEV_CURRENT_STRENGTH_MA_2);
    EXPECT_EQ(desc.get_current_set().size(), 2u);
    EXPECT_EQ(desc.get_real_vcc_current(DEV_CURRENT_STRENGTH_MA_2), 7);
    clear_reports();
    desc.add_current_enum(DEV_CURRENT_STRENGTH_MAX);
    EXPECT_EQ(errors(), std::vector<std::string>{"current_enum >= 0 && current_enum < DEV_CURRENT_STRENGTH_MAX"});
    // The voltages read 0 when unset, without a report.
    EXPECT_EQ(desc.get_vref_voltage_enum(), 0);
}
