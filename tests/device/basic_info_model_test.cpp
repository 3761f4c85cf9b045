// The basic info model: conflicts in its indexes, look-up preconditions, the location kinds
// helper, and the persistent form, which must bring every index back onto the owned records.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "capture_fixture.h"
#include "dev_basic_info_body.h"
#include "dev_element_desc.h"
#include "dev_location.h"
#include "dev_location_desc.h"
#include "dev_port_desc.h"
#include "host/tables/cdb_re_type.h"
#include "host/tables/dev_part_enum.h"

namespace {

using BasicInfo = CaptureTest;

DEV_LOCATION_DESC* location_of(DEV_LOCATION_ENUM kind, const std::string& name) {
    DEV_LOCATION_DESC* location = DEV_LOCATION_DESC::create();
    location->get_body()->set_int_data(DEV_LOCATION_DESC_INT_LOCATION, kind);
    location->get_body()->set_string_data(DEV_LOCATION_DESC_STRING_NAME, name);
    return location;
}

TEST_F(BasicInfo, IndexConflictsKeepTheFirstBindingLookUpsCheckTheirRange) {
    DEV_BASIC_INFO_BODY body;
    DEV_LOCATION_DESC* first = location_of(DEV_LOCATION_LAB, "LAB");
    DEV_LOCATION_DESC* second = location_of(DEV_LOCATION_LAB, "LAB_TOO");
    DEV_LOCATION_DESC* generic = location_of(DEV_LOCATION_GENERIC, "ANY");
    body.add_location(first);
    body.add_location(second);
    body.add_location(generic);
    EXPECT_TRUE(errors().empty());
    // Both kept by id; the later one takes the enumerator's slot; the generic one has none.
    EXPECT_EQ(second->get_id(), 1);
    EXPECT_EQ(body.get_location_by_enum(DEV_LOCATION_LAB), second);
    EXPECT_EQ(body.get_location_enums(), (std::vector<DEV_LOCATION_ENUM>{DEV_LOCATION_LAB, DEV_LOCATION_LAB}));
    EXPECT_EQ(body.get_location_by_string("ANY"), generic);

    body.add_to_locations_by_string_hash("LAB", first);  // the same binding again: nothing
    body.add_to_locations_by_string_hash("LAB", second);
    DEV_PORT_DESC* p = DEV_PORT_DESC::create();
    DEV_PORT_DESC* q = DEV_PORT_DESC::create();
    body.add_to_ports_by_string_hash("P", p);
    body.add_to_ports_by_string_hash("P", q);
    DEV_ELEMENT_DESC* lut = DEV_ELEMENT_DESC::create();
    DEV_ELEMENT_DESC* ff = DEV_ELEMENT_DESC::create();
    lut->get_body()->set_int_data(DEV_ELEMENT_DESC_INT_ELEMENT, DEV_ELEMENT_LOGIC_LUT);
    ff->get_body()->set_int_data(DEV_ELEMENT_DESC_INT_ELEMENT, DEV_ELEMENT_LOGIC_FF);
    body.add_element(lut);
    body.add_element(ff);
    body.add_to_elements_by_string_hash("E", lut);
    body.add_to_elements_by_string_hash("E", ff);
    body.add_to_elements_by_cdb_re_type(CDB_RE_LOGIC_LUT, lut);
    body.add_to_elements_by_cdb_re_type(CDB_RE_LOGIC_LUT, ff);
    EXPECT_EQ(errors(), (std::vector<std::string>{
                            "A different location with key LAB already exists in the hash table!",
                            "A different port with key P already exists in the hash table!",
                            "A different element with key E already exists in the hash table!",
                            "A different element with the same key already exists in the m_elements_by_cdb_re vector !",
                        }));
    EXPECT_EQ(body.get_location_by_string("LAB"), first);
    EXPECT_EQ(body.get_port_by_string("P"), p);
    EXPECT_EQ(body.get_element_by_string("E"), lut);
    EXPECT_EQ(body.get_element_by_cdb_re_type(CDB_RE_LOGIC_LUT), lut);

    clear_reports();
    EXPECT_EQ(body.get_location_by_enum(DEV_LOCATION_GENERIC), nullptr);
    EXPECT_EQ(body.get_element_by_enum(DEV_ELEMENT_INVALID), nullptr);
    EXPECT_EQ(body.get_element_by_cdb_re_type(CDB_RE_ILLEGAL_TYPE), nullptr);
    EXPECT_EQ(body.get_location_by_id(3), nullptr);
    EXPECT_EQ(body.get_element_by_id(-1), nullptr);
    EXPECT_EQ(body.get_port_by_string("absent"), nullptr);
    body.get_device_enum();
    EXPECT_EQ(body.get_part_enum(), DEV_PART_INVALID);
    EXPECT_EQ(errors(), (std::vector<std::string>{
                            "location > DEV_LOCATION_INVALID && location < DEV_LOCATION_GENERIC",
                            "element > DEV_ELEMENT_INVALID && element < DEV_ELEMENT_GENERIC",
                            "re < CDB_RE_ILLEGAL_TYPE",
                            "id >= 0 && id < static_cast<int>(this->m_locations.size())",
                            "id >= 0 && id < static_cast<int>(this->m_elements.size())",
                            "this->is_valid_enum_enum(key)",
                        }));

    // Location kinds by name (the device's own names first) and by enumerator.
    clear_reports();
    const DEV_LOCATION kinds(body);
    EXPECT_EQ(kinds.get_by_string("LAB_TOO"), DEV_LOCATION_LAB);
    EXPECT_EQ(kinds.get_by_string("RAM_S"), DEV_LOCATION_RAM_S);
    EXPECT_EQ(kinds.get_by_string("NONE_SUCH"), DEV_LOCATION_INVALID);
    EXPECT_EQ(kinds[DEV_LOCATION_LAB], 1);
    EXPECT_FALSE(kinds.location_exists(DEV_LOCATION_RAM_S));
    EXPECT_FALSE(kinds.location_exists(DEV_LOCATION_GENERIC));
    EXPECT_TRUE(errors().empty());
}

class BasicInfoPdb : public CaptureTest {
protected:
    void SetUp() override {
        CaptureTest::SetUp();
        const std::string text = m_dir.write("dev.hdr",
                                             "INT_NUM_LABS = 4\n"
                                             "location LAB\n\tSTRING_ALT_NAME = \"LB\"\nend\n"
                                             "location RAM_S\nend\n"
                                             "port A\n\tINT_INPUT_PORT_TYPE = IN_A\nend\n"
                                             "port Q\n\tINT_OUTPUT_PORT_TYPE = LUT_OUT\nend\n"
                                             "element LOGIC_LUT\n\tLOCATIONS = LAB RAM_S\n\tPORTS = Q, A\n"
                                             "\tINT_CDB_RE_TYPE = LOGIC_LUT\n\t2D_INT_MODE_TABLE = {{1, 2}}\nend\n"
                                             "element LOGIC_FF\n\tLOCATIONS = LAB\n\tPORTS = A\nend\n");
        ASSERT_TRUE(m_text.read_hdr_file(FIO_PATH(text)));
        clear_reports();
    }
    bool has_note(const std::string& text) { return capture().has_debug(text); }

    TempDir m_dir;
    DEV_BASIC_INFO_BODY m_text;
};

TEST_F(BasicInfoPdb, LoadsEqualWithEveryIndexOnItsOwnRecords) {
    const std::string path = m_dir.file("dev_hdr.DDB");  // the extension in any case
    ASSERT_TRUE(m_text.write_hdr_to_pdb(FIO_PATH(path), 9));
    EXPECT_TRUE(errors().empty());
    EXPECT_TRUE(has_note("Spent 0 seconds writing HDR info to PDB: " + path));

    std::unique_ptr<DEV_BASIC_INFO_BODY> loaded(DEV_BASIC_INFO_BODY::load_hdr_from_pdb(FIO_PATH(path)));
    ASSERT_NE(loaded, nullptr);
    EXPECT_TRUE(has_note("Spent 0 seconds loading HDR info from PDB: " + path));
    EXPECT_TRUE(*loaded == m_text);

    DEV_LOCATION_DESC* lab = loaded->get_location_by_id(0);
    DEV_LOCATION_DESC* ram = loaded->get_location_by_id(1);
    DEV_ELEMENT_DESC* lut = loaded->get_element_by_id(0);
    EXPECT_EQ(loaded->get_location_by_enum(DEV_LOCATION_LAB), lab);
    EXPECT_EQ(loaded->get_location_by_string("LB"), lab);
    EXPECT_EQ(loaded->get_element_by_enum(DEV_ELEMENT_LOGIC_LUT), lut);
    EXPECT_EQ(loaded->get_element_by_string("LOGIC_LUT"), lut);
    EXPECT_EQ(loaded->get_element_by_cdb_re_type(CDB_RE_LOGIC_LUT), lut);
    EXPECT_EQ(lut->get_location_descs(), (std::vector<DEV_LOCATION_DESC*>{lab, ram}));
    DEV_PORT_DESC* a = loaded->get_port_by_string("A");
    EXPECT_EQ(lut->get_port_descs(), (std::vector<DEV_PORT_DESC*>{loaded->get_port_by_string("Q"), a}));
    EXPECT_EQ(loaded->get_element_by_id(1)->get_port_descs(), std::vector<DEV_PORT_DESC*>{a});
    EXPECT_EQ(loaded->get_port_descs()[a->get_id()], a);
}

TEST_F(BasicInfoPdb, ExtensionAndLevelRulesAndDamagedFiles) {
    // A wrong extension is reported and replaced; level 0 is reported and written plain.
    ASSERT_TRUE(m_text.write_hdr_to_pdb(FIO_PATH(m_dir.file("dev.txt")), 0));
    EXPECT_EQ(errors(), (std::vector<std::string>{"0 == gen_stricmp(\"ddb\", filename.extension().c_str())",
                                                  "compression_level != 0"}));
    const std::string path = m_dir.file("dev.ddb");
    const std::string bytes = read_file(path);
    ASSERT_EQ(bytes.substr(0, 4), "VDDB");
    clear_reports();
    delete DEV_BASIC_INFO_BODY::load_hdr_from_pdb(FIO_PATH(m_dir.write("copy.bin", bytes)));
    EXPECT_EQ(errors(), std::vector<std::string>{"gen_stricmp(\"ddb\", filename.extension().c_str() ) == 0"});

    // Truncated, flipped or foreign files give no body and a note naming the file.
    const std::string catalogue = std::string(VELCORA_BUNDLED_ROOT) + "/ddb/legacy/ddb_lumio_family.ddb";
    const std::string damaged[] = {
        m_dir.write("cut.ddb", bytes.substr(0, bytes.size() / 2)),
        m_dir.write("flipped.ddb", bytes.substr(0, 100) + char(bytes[100] ^ 0x40) + bytes.substr(101)),
        m_dir.write("empty.ddb", ""),
        catalogue,
    };
    for (const std::string& file : damaged) {
        clear_reports();
        EXPECT_EQ(DEV_BASIC_INFO_BODY::load_hdr_from_pdb(FIO_PATH(file)), nullptr) << file;
        bool named = false;
        for (const std::string& note : notes()) named = named || note.rfind(file + ": ", 0) == 0;
        EXPECT_TRUE(named) << file << ::testing::PrintToString(notes());
    }
}

}  // namespace
