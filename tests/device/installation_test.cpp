// The bundled installation, device by device: the device file of every installed device, its
// basic info unless the device has none (trait NO_HDR_DATA), as text or, for the families with
// the new database, compiled only; opened through the factory either way. The compiled form
// equals its text (kept in the build's staging folder), and every dump reads back to itself.
// (A sanitizer build takes every VELCORA_INSTALLATION_SAMPLE-th installed device only.)
#include <gtest/gtest.h>

#include <cctype>
#include <memory>
#include <string>

#include "capture_fixture.h"
#include "dev_basic_info.h"
#include "dev_device.h"
#include "dev_device_factory.h"
#include "dev_family_info_mgr_body.h"
#include "dev_path.h"
#include "host/dstr.h"

namespace {

using Installation = CaptureTest;

std::string lower(const std::string& text) {
    std::string out;
    for (char c : text) out += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return out;
}

std::string dump_of(const DEV_BASIC_INFO_BODY& body, const std::string& path) {
    EXPECT_TRUE(body.write_hdr_file(FIO_PATH(path), 0));
    return read_file(path);
}

// The dump of `body` reads back to a body that dumps the same.
void expect_dump_fixed_point(const DEV_BASIC_INFO_BODY& body, const TempDir& dir, const std::string& name) {
    const std::string first = dump_of(body, dir.file("first.hdr"));
    DEV_BASIC_INFO_BODY again;
    EXPECT_TRUE(again.read_hdr_file(FIO_PATH(dir.file("first.hdr")))) << name;
    EXPECT_TRUE(dump_of(again, dir.file("second.hdr")) == first) << name;
}

TEST_F(Installation, EveryInstalledDeviceOpensWithItsBasicInfoTheSameFromTextOrDdb) {
    const DEV_FAMILY_INFO_MGR_BODY& catalogue = *DEV_FAMILY_INFO_MGR_BODY::get_instance();
    TempDir dir;
    int installed = 0, uninstalled = 0, from_text = 0, from_ddb = 0, without = 0;
    for (int d = DEV_DEVICE_INVALID + 1; d < DEV_DEVICE_GENERIC; ++d) {
        const DEV_DEVICE_ENUM device = DEV_DEVICE_ENUM(d);
        const DEV_DEVICE_DESC* desc = catalogue.find_desc_of(device);
        ASSERT_NE(desc, nullptr) << d;
        const DEV_FAMILY_DESC* family = catalogue.find_desc_of(desc->get_family());
        ASSERT_NE(family, nullptr) << d;
        const std::string name = dstr_get_debug_string(device);
        const std::string folder = catalogue.get_devices_folder(desc->get_family());
        const bool is_installed = !family->has_trait(DEV_FAMILY_TRAIT_NOT_INSTALLED);
        const bool has_hdr = is_installed && !desc->has_trait(DEV_DEVICE_TRAIT_NO_HDR_DATA);
        const bool compiled = family->has_trait(DEV_FAMILY_TRAIT_NEW_DDB_SUPPORT);

        FIO_PATH found;
        EXPECT_EQ(DEV_PATH::get_existing_device_file_path(device, "device", &found), is_installed) << name;
        EXPECT_EQ(DEV_PATH::get_existing_device_file_path(device, "hdr", &found), has_hdr) << name;
        if (!is_installed) {
            ++uninstalled;
            continue;
        }
        (!has_hdr ? without : compiled ? from_ddb : from_text)++;
        if (installed++ % VELCORA_INSTALLATION_SAMPLE != 0) continue;
        const std::string base = "ddb_" + lower(name);
        std::unique_ptr<DEV_DEVICE> opened(DEV_DEVICE_FACTORY::create(device, DEV_DEVICE_FACTORY::BASIC_INFO));
        ASSERT_NE(opened, nullptr) << name;
        const DEV_BASIC_INFO* info = opened->get_basic_info();
        if (!has_hdr) {
            EXPECT_EQ(info, nullptr) << name;
            continue;
        }
        ASSERT_TRUE(info && info->get_body() && info->is_initialized()) << name;
        const DEV_BASIC_INFO_BODY& body = *info->get_body();
        EXPECT_EQ(body.get_device_enum(), device);
        EXPECT_EQ(body.get_family_enum(), desc->get_family());
        EXPECT_EQ(body.get_string_data(DEV_BASIC_INFO_STRING_DEVICE_NAME), name);
        EXPECT_FALSE(body.get_element_descs().empty()) << name;

        // The other form of the same data: the staged text of a compiled file, the compiled
        // form of a text.
        DEV_BASIC_INFO_BODY other;
        if (compiled) {
            EXPECT_EQ(found.full_path(), std::string(VELCORA_BUNDLED_ROOT) + "/ddb/" + folder + "/" + base + "_hdr.ddb");
            ASSERT_TRUE(other.read_hdr_file(FIO_PATH(std::string(VELCORA_DEVICE_STAGING) + "/" + folder + "/" + base + ".hdr")))
                << name;
        } else {
            EXPECT_EQ(found.extension(), "hdr") << name;
            ASSERT_TRUE(other.read_hdr_file(found)) << name;
            const std::string path = dir.file(base + "_hdr.ddb");
            ASSERT_TRUE(other.write_hdr_to_pdb(FIO_PATH(path), 1)) << name;
            std::unique_ptr<DEV_BASIC_INFO_BODY> loaded(DEV_BASIC_INFO_BODY::load_hdr_from_pdb(FIO_PATH(path)));
            ASSERT_NE(loaded, nullptr) << name;
            EXPECT_TRUE(*loaded == other) << name;
        }
        EXPECT_TRUE(other == body) << name;
        expect_dump_fixed_point(body, dir, name);
    }
    // The product line has installed and uninstalled families, devices without basic info, and
    // basic info in both forms.
    EXPECT_GT(uninstalled, 0);
    EXPECT_GT(without, 0);
    EXPECT_GT(from_text, 0);
    EXPECT_GT(from_ddb, 0);
    EXPECT_EQ(installed, from_text + from_ddb + without);
    EXPECT_EQ(errors(), std::vector<std::string>());
}

}  // namespace
