// The bundled installation holds the device file of every device of an installed family, and
// an HDR file (readable attribute lines naming the device and its family) where the family
// needs one; nothing for the families that are not installed.
#include <gtest/gtest.h>

#include <cctype>
#include <fstream>
#include <memory>
#include <string>

#include "capture_fixture.h"
#include "ddb/dev/dev_attribute_io.h"
#include "dev_basic_info_body.h"
#include "dev_family_info_mgr_body.h"
#include "dev_path.h"
#include "host/gen.h"

namespace {

class BundledDeviceFilesTest : public CaptureTest {
protected:
    void SetUp() override {
        CaptureTest::SetUp();
        gen_set_velcora_path(VELCORA_BUNDLED_ROOT);
    }
    void TearDown() override {
        gen_set_velcora_path("");
        CaptureTest::TearDown();
    }

    // Reads an HDR file's attribute lines into a basic info; false on any line it rejects.
    static bool read_hdr(const std::string& path, DEV_BASIC_INFO_BODY* body) {
        std::ifstream in(path);
        DEV_ATTRIBUTE_SYNTAX syntax(DEV_ATTRIBUTE_FORMAT::hdr());
        std::string line, message, pending;
        bool has_pending = false;
        int lines = 0;
        auto no_continuation = [](std::string&) { return false; };
        while (std::getline(in, line)) {
            if (line.empty() || line[0] == '#') continue;
            ++lines;
            if (dev_attribute_read_any(syntax, line, *body, &message, no_continuation, &pending, &has_pending) !=
                DEV_ATTRIBUTE_STORED) {
                ADD_FAILURE() << path << ": " << line << " " << message;
                return false;
            }
        }
        return lines > 0;
    }
};

TEST_F(BundledDeviceFilesTest, InstalledFamiliesHaveTheirDeviceAndHdrFiles) {
    DEV_FAMILY_INFO_MGR_BODY catalogue;
    ASSERT_TRUE(catalogue.read_family_data(FIO_PATH(std::string(VELCORA_BUNDLED_ROOT) + "/h/dev_part_manager_auto.part")));
    // The searches read the process-wide store: give it the same records.
    DEV_FAMILY_INFO_MGR_BODY& store = *DEV_FAMILY_INFO_MGR_BODY::get_instance();
    for (int f = DEV_FAMILY_INVALID + 1; f < DEV_FAMILY_GENERIC; ++f)
        if (const DEV_FAMILY_DESC* desc = catalogue.find_desc_of(DEV_FAMILY_ENUM(f)))
            store.take_desc(new DEV_FAMILY_DESC(*desc), true);

    int installed_devices = 0, hdr_devices = 0, other_devices = 0;
    for (int d = DEV_DEVICE_INVALID + 1; d < DEV_DEVICE_GENERIC; ++d) {
        const DEV_DEVICE_ENUM device = DEV_DEVICE_ENUM(d);
        const DEV_DEVICE_DESC* desc = catalogue.find_desc_of(device);
        ASSERT_NE(desc, nullptr) << d;
        store.take_desc(new DEV_DEVICE_DESC(*desc), true);
        const DEV_FAMILY_DESC* family = catalogue.find_desc_of(desc->get_family());
        ASSERT_NE(family, nullptr) << d;
        const bool installed = !family->has_trait(DEV_FAMILY_TRAIT_NOT_INSTALLED);
        const bool needs_hdr = installed && (family->has_trait(DEV_FAMILY_TRAIT_NEW_DDB_SUPPORT) ||
                                             family->has_trait(DEV_FAMILY_TRAIT_REQUIRES_HDR_DATA));
        const std::string folder =
            std::string(VELCORA_BUNDLED_ROOT) + "/ddb/" + catalogue.get_devices_folder(desc->get_family()) + "/";
        const std::string name = dstr_get_debug_string(device);

        EXPECT_EQ(FIO_FILE_SYSTEM::exists(folder + desc->get_file_name()), installed) << name;
        std::string hdr_path = folder + "ddb_";
        for (char c : name) hdr_path += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        hdr_path += ".hdr";
        EXPECT_EQ(FIO_FILE_SYSTEM::exists(hdr_path), needs_hdr) << name;

        FIO_PATH found;
        EXPECT_EQ(DEV_PATH::get_existing_device_file_path(device, "device", &found), installed) << name;
        EXPECT_EQ(found.full_path(), folder + desc->get_file_name()) << name;
        EXPECT_EQ(DEV_PATH::get_existing_device_file_path(device, "hdr", &found), needs_hdr) << name;
        if (needs_hdr) {
            EXPECT_EQ(found.full_path(), hdr_path);
            DEV_BASIC_INFO_BODY body;
            if (read_hdr(hdr_path, &body)) {
                EXPECT_EQ(body.get_device_enum(), device);
                EXPECT_EQ(body.get_family_enum(), desc->get_family());
                EXPECT_EQ(body.get_string_data(DEV_BASIC_INFO_STRING_DEVICE_NAME), name);
            }
        }
        (installed ? installed_devices : other_devices) += 1;
        hdr_devices += needs_hdr;
    }
    // The product line has installed and uninstalled families, with and without HDR data.
    EXPECT_GT(installed_devices, 0);
    EXPECT_GT(other_devices, 0);
    EXPECT_GT(hdr_devices, 0);
    EXPECT_LT(hdr_devices, installed_devices);
    EXPECT_EQ(errors(), std::vector<std::string>());
}

}  // namespace
