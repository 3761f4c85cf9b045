// The device factory opens pads and packages for a part from the bundled installation.
#include <gtest/gtest.h>

#include "dev_device_factory.h"
#include "host/gen.h"
#include "pads_fixture.h"

TEST_F(CaptureTest, FactoryOpensPadsAndThePackageOfAPart) {
    gen_set_velcora_path(VELCORA_BUNDLED_ROOT);
    const DEV_PART_ENUM part = dstr_get_dev_part_enum_by_string("OS6G2700LG2912C1ES");
    std::unique_ptr<DEV_DEVICE> device(
        DEV_DEVICE_FACTORY::create_for_part(part, DEV_DEVICE_FACTORY::PAD_INFO | DEV_DEVICE_FACTORY::PKG_INFO));
    ASSERT_NE(device, nullptr);
    // Pads bring the basic info along; the persistent files give bodies of their own, which
    // still know their device.
    ASSERT_NE(device->get_basic_info(), nullptr);
    const DEV_PAD_INFO* pads = device->get_pad_info();
    const DEV_PKG_INFO* pkg = device->get_pkg_info();
    ASSERT_TRUE(pads && pkg);
    EXPECT_GT(pads->get_number_of_pads(), 1500u);
    EXPECT_GT(pkg->get_number_of_pins(), 1900u);
    EXPECT_EQ(pkg->get_device(), device.get());
    EXPECT_EQ(pads->get_body()->get_device(), device.get());
    EXPECT_EQ(pkg->get_package_enum(), dstr_get_dev_pkg_enum_by_string("LGA"));
    const uint32_t pin = pkg->get_pin_id_by_string("a1");
    ASSERT_NE(pin, DEV_ILLEGAL_PIN_ID);
    for (uint32_t pad_id : pkg->get_list_of_pad_ids(pin)) EXPECT_NE(pads->get_pad(pad_id), nullptr);
    EXPECT_TRUE(capture().has_debug("Loading PKG file: " + std::string(VELCORA_BUNDLED_ROOT) +
                                    "/ddb/ostrel6/ddb_os6g2700lga2912_pkg.ddb"));
    EXPECT_TRUE(errors().empty());

    // Opened for a device, there is no package; a part whose package file is missing says so.
    std::unique_ptr<DEV_DEVICE> alone(
        DEV_DEVICE_FACTORY::create(dstr_get_dev_device_enum_by_string("OS6G2700"), DEV_DEVICE_FACTORY::ALL));
    EXPECT_EQ(alone->get_pkg_info(), nullptr);
    EXPECT_GT(alone->get_pad_info()->get_number_of_pads(), 1500u);
    TempDir empty;
    DEV_PKG_INFO missing(new DEV_PKG_INFO_BODY);
    const DEV_PART_ENUM uninstalled = dstr_get_dev_part_enum_by_string("CV2E004N68C6");
    gen_set_velcora_path(empty.path());
    missing.load_data(uninstalled);
    gen_set_velcora_path("");
    const std::vector<std::string> reported = errors();
    EXPECT_TRUE(std::any_of(reported.begin(), reported.end(), [](const std::string& e) {
        return e.rfind("PKG file ", 0) == 0 && e.find(" not installed") != std::string::npos;
    }));
}
