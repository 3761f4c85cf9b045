// The bundled installation holds the device file of every device of an installed family and,
// unless the device has no basic info (device trait NO_HDR_DATA), its basic info: as HDR text,
// or for the families with NEW_DDB_SUPPORT compiled (ddb_<device>_hdr.ddb) and without a text
// copy, the text standing in while ddbtool cannot compile it. Nothing for the families that are
// not installed.
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

    // Reads the global attribute lines of an HDR text, which come before its first block,
    // into a basic info (2D values over several lines included); false on any line it rejects.
    static bool read_globals(const std::string& path, DEV_BASIC_INFO_BODY* body) {
        std::ifstream in(path);
        DEV_ATTRIBUTE_SYNTAX syntax(DEV_ATTRIBUTE_FORMAT::hdr());
        std::string line, message, pending;
        bool has_pending = false;
        int lines = 0;
        auto next_line = [&in](std::string& text) { return static_cast<bool>(std::getline(in, text)); };
        // The line after a 2D value over several lines is the next one to read.
        auto advance = [&]() {
            if (!has_pending) return next_line(line);
            has_pending = false;
            line.swap(pending);
            return true;
        };
        for (bool more = advance(); more; more = advance()) {
            if (line.empty() || line[0] == '#') continue;
            if (line.rfind("location ", 0) == 0 || line.rfind("port ", 0) == 0 || line.rfind("element ", 0) == 0)
                break;
            ++lines;
            if (dev_attribute_read_any(syntax, line, *body, &message, next_line, &pending, &has_pending) !=
                DEV_ATTRIBUTE_STORED) {
                ADD_FAILURE() << path << ": " << line << " " << message;
                return false;
            }
        }
        return lines > 0;
    }
};

TEST_F(BundledDeviceFilesTest, InstalledDevicesHaveTheirDeviceFileAndBasicInfo) {
    DEV_FAMILY_INFO_MGR_BODY catalogue;
    ASSERT_TRUE(catalogue.read_family_data(FIO_PATH(std::string(VELCORA_BUNDLED_ROOT) + "/h/dev_part_manager_auto.part")));
    // The searches read the process-wide store: give it the same records.
    DEV_FAMILY_INFO_MGR_BODY& store = *DEV_FAMILY_INFO_MGR_BODY::get_instance();
    for (int f = DEV_FAMILY_INVALID + 1; f < DEV_FAMILY_GENERIC; ++f)
        if (const DEV_FAMILY_DESC* desc = catalogue.find_desc_of(DEV_FAMILY_ENUM(f)))
            store.take_desc(new DEV_FAMILY_DESC(*desc), true);

    int installed_devices = 0, hdr_devices = 0, compiled_form_devices = 0, other_devices = 0;
    for (int d = DEV_DEVICE_INVALID + 1; d < DEV_DEVICE_GENERIC; ++d) {
        const DEV_DEVICE_ENUM device = DEV_DEVICE_ENUM(d);
        const DEV_DEVICE_DESC* desc = catalogue.find_desc_of(device);
        ASSERT_NE(desc, nullptr) << d;
        store.take_desc(new DEV_DEVICE_DESC(*desc), true);
        const DEV_FAMILY_DESC* family = catalogue.find_desc_of(desc->get_family());
        ASSERT_NE(family, nullptr) << d;
        const bool installed = !family->has_trait(DEV_FAMILY_TRAIT_NOT_INSTALLED);
        const bool has_hdr = installed && !desc->has_trait(DEV_DEVICE_TRAIT_NO_HDR_DATA);
        const bool compiled_form = family->has_trait(DEV_FAMILY_TRAIT_NEW_DDB_SUPPORT);
        const std::string folder =
            std::string(VELCORA_BUNDLED_ROOT) + "/ddb/" + catalogue.get_devices_folder(desc->get_family()) + "/";
        const std::string name = dstr_get_debug_string(device);
        std::string base = folder + "ddb_";
        for (char c : name) base += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        const std::string text = base + ".hdr", compiled = base + "_hdr.ddb";

        EXPECT_EQ(FIO_FILE_SYSTEM::exists(folder + desc->get_file_name()), installed) << name;
        FIO_PATH found;
        EXPECT_EQ(DEV_PATH::get_existing_device_file_path(device, "device", &found), installed) << name;
        EXPECT_EQ(found.full_path(), folder + desc->get_file_name()) << name;
        EXPECT_EQ(DEV_PATH::get_existing_device_file_path(device, "hdr", &found), has_hdr) << name;
        if (!has_hdr || !compiled_form) {
            EXPECT_FALSE(FIO_FILE_SYSTEM::exists(compiled)) << name;
        }
        if (!has_hdr) {
            EXPECT_FALSE(FIO_FILE_SYSTEM::exists(text)) << name;
        } else if (compiled_form) {
            EXPECT_NE(FIO_FILE_SYSTEM::exists(compiled), FIO_FILE_SYSTEM::exists(text)) << name;
        }
        if (has_hdr && found.full_path() == text) {
            DEV_BASIC_INFO_BODY body;
            if (read_globals(text, &body)) {
                EXPECT_EQ(body.get_device_enum(), device);
                EXPECT_EQ(body.get_family_enum(), desc->get_family());
                EXPECT_EQ(body.get_string_data(DEV_BASIC_INFO_STRING_DEVICE_NAME), name);
            }
        } else if (has_hdr) {
            EXPECT_EQ(found.full_path(), compiled) << name;
        }
        (installed ? installed_devices : other_devices) += 1;
        hdr_devices += has_hdr;
        compiled_form_devices += has_hdr && compiled_form;
    }
    // The product line has installed and uninstalled families, devices with and without basic
    // info, and basic info in both forms.
    EXPECT_GT(other_devices, 0);
    EXPECT_GT(compiled_form_devices, 0);
    EXPECT_LT(compiled_form_devices, hdr_devices);
    EXPECT_LT(hdr_devices, installed_devices);
    EXPECT_EQ(errors(), std::vector<std::string>());
}

}  // namespace
