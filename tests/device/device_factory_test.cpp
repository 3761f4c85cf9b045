// The device object and its factory: what a device owns and destroys (and in which order),
// what it only borrows, and what the factory gives for uninstalled devices, missing files,
// parts and enumerators out of range.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "capture_fixture.h"
#include "dev_basic_info.h"
#include "dev_device.h"
#include "dev_device_aspects.h"
#include "dev_device_factory.h"
#include "dev_family_info_mgr_body.h"
#include "host/dstr.h"
#include "host/gen.h"

namespace {

std::vector<std::string> destroyed;

template <typename ASPECT>
struct RECORDED : ASPECT {
    explicit RECORDED(const char* name) : m_name(name) {}
    ~RECORDED() override { destroyed.push_back(m_name); }
    const char* m_name;
};

TEST(Device, OwnsItsAspectsBorrowsTimingAndPowerAndDestroysInOrder) {
    destroyed.clear();
    RECORDED<DTM_TIMING_INFO> timing("timing");
    RECORDED<DPOW_INFO_MANAGER> power("power");
    {
        auto* body = new DEV_DEVICE_BODY;
        body->set_part_info(nullptr);  // left unset by the constructor, as the drawing info
        DEV_DEVICE device(body);
        auto* first_die = new RECORDED<DEV_DIE_INFO>("first die");
        body->set_die_info(first_die);
        // A setter does not destroy what it replaces: the caller still owns that.
        body->set_die_info(new RECORDED<DEV_DIE_INFO>("die"));
        EXPECT_TRUE(destroyed.empty());
        delete first_die;
        destroyed.clear();
        body->set_kx_info(new RECORDED<DEV_KX_INFO>("kx"));
        body->set_ace_info(new RECORDED<DEV_ACE_INFO>("drawing"));
        body->set_migration_info(new RECORDED<DEV_MIGRATION_INFO>("migration"));
        body->set_timing_info(&timing);
        body->set_dpow_info_manager(&power);
        EXPECT_EQ(device.get_timing_info(), &timing);
        EXPECT_EQ(device.get_dpow_info_manager(), &power);
        EXPECT_EQ(device.get_basic_info(), nullptr);
    }
    EXPECT_EQ(destroyed, (std::vector<std::string>{"die", "migration", "drawing", "kx"}));
}

class DeviceFactory : public CaptureTest {
protected:
    // The first device of the catalogue that `wanted` accepts.
    template <typename PRED>
    static DEV_DEVICE_ENUM first_device(PRED wanted) {
        const DEV_FAMILY_INFO_MGR_BODY& catalogue = *DEV_FAMILY_INFO_MGR_BODY::get_instance();
        for (int d = DEV_DEVICE_INVALID + 1; d < DEV_DEVICE_GENERIC; ++d) {
            const DEV_DEVICE_DESC* desc = catalogue.find_desc_of(DEV_DEVICE_ENUM(d));
            const DEV_FAMILY_DESC* family = desc ? catalogue.find_desc_of(desc->get_family()) : nullptr;
            if (family && wanted(*family, *desc)) return DEV_DEVICE_ENUM(d);
        }
        return DEV_DEVICE_INVALID;
    }
    static bool installed_with_hdr(const DEV_FAMILY_DESC& family, const DEV_DEVICE_DESC& device) {
        return !family.has_trait(DEV_FAMILY_TRAIT_NOT_INSTALLED) && !device.has_trait(DEV_DEVICE_TRAIT_NO_HDR_DATA);
    }
};

TEST_F(DeviceFactory, OpensDevicesAndPartsWithTheirEnumerators) {
    const DEV_DEVICE_ENUM device = first_device(installed_with_hdr);
    ASSERT_NE(device, DEV_DEVICE_INVALID);
    std::unique_ptr<DEV_DEVICE> opened(DEV_DEVICE_FACTORY::create(device, DEV_DEVICE_FACTORY::ALL));
    ASSERT_TRUE(opened && opened->get_basic_info());
    EXPECT_EQ(opened->get_basic_info()->get_device_enum(), device);
    EXPECT_EQ(opened->get_basic_info()->get_part_enum(), DEV_PART_INVALID);
    EXPECT_EQ(opened->get_ace_info(), nullptr);
    EXPECT_EQ(opened->get_part_info(), nullptr);
    // Nothing asked, nothing loaded.
    opened.reset(DEV_DEVICE_FACTORY::create(device, 0));
    ASSERT_NE(opened, nullptr);
    EXPECT_EQ(opened->get_basic_info(), nullptr);

    // A part opens its device, with the part in the basic info.
    const DEV_FAMILY_INFO_MGR_BODY& catalogue = *DEV_FAMILY_INFO_MGR_BODY::get_instance();
    DEV_PART_ENUM part = DEV_PART_INVALID;
    for (int p = DEV_PART_INVALID + 1; p < DEV_PART_GENERIC && part == DEV_PART_INVALID; ++p)
        if (const DEV_PART_DESC* desc = catalogue.find_desc_of(DEV_PART_ENUM(p)))
            if (desc->get_device() == device) part = DEV_PART_ENUM(p);
    ASSERT_NE(part, DEV_PART_INVALID);
    opened.reset(DEV_DEVICE_FACTORY::create_for_part(part, DEV_DEVICE_FACTORY::BASIC_INFO));
    ASSERT_TRUE(opened && opened->get_basic_info());
    EXPECT_EQ(opened->get_basic_info()->get_device_enum(), device);
    EXPECT_EQ(opened->get_basic_info()->get_part_enum(), part);
    EXPECT_TRUE(errors().empty()) << ::testing::PrintToString(errors());

    EXPECT_EQ(DEV_DEVICE_FACTORY::create(DEV_DEVICE_INVALID, DEV_DEVICE_FACTORY::ALL), nullptr);
    EXPECT_EQ(DEV_DEVICE_FACTORY::create_for_part(DEV_PART_GENERIC, DEV_DEVICE_FACTORY::ALL), nullptr);
    EXPECT_EQ(errors().size(), 2u);
}

TEST_F(DeviceFactory, MissingFilesLeaveTheAspectNullAndAreReported) {
    // A device of a family that is not installed.
    const DEV_DEVICE_ENUM uninstalled = first_device(
        [](const DEV_FAMILY_DESC& family, const DEV_DEVICE_DESC&) { return family.has_trait(DEV_FAMILY_TRAIT_NOT_INSTALLED); });
    ASSERT_NE(uninstalled, DEV_DEVICE_INVALID);
    std::unique_ptr<DEV_DEVICE> opened(DEV_DEVICE_FACTORY::create(uninstalled, DEV_DEVICE_FACTORY::BASIC_INFO));
    ASSERT_NE(opened, nullptr);
    EXPECT_EQ(opened->get_basic_info(), nullptr);
    ASSERT_EQ(errors().size(), 1u);
    EXPECT_EQ(errors()[0].rfind("BASIC_INFO's HDR file ", 0), 0u) << errors()[0];

    // An installed device whose file has gone (an installation root without device files).
    clear_reports();
    const DEV_DEVICE_ENUM device = first_device(installed_with_hdr);
    TempDir empty_root;
    gen_set_velcora_path(empty_root.path());
    opened.reset(DEV_DEVICE_FACTORY::create(device, DEV_DEVICE_FACTORY::BASIC_INFO));
    gen_set_velcora_path("");
    ASSERT_NE(opened, nullptr);
    EXPECT_EQ(opened->get_basic_info(), nullptr);
    ASSERT_EQ(errors().size(), 1u);
    EXPECT_NE(errors()[0].find(empty_root.path()), std::string::npos) << errors()[0];

    // A device the catalogue says has no basic info is not looked for.
    clear_reports();
    const DEV_DEVICE_ENUM without = first_device([](const DEV_FAMILY_DESC& family, const DEV_DEVICE_DESC& desc) {
        return !family.has_trait(DEV_FAMILY_TRAIT_NOT_INSTALLED) && desc.has_trait(DEV_DEVICE_TRAIT_NO_HDR_DATA);
    });
    ASSERT_NE(without, DEV_DEVICE_INVALID);
    opened.reset(DEV_DEVICE_FACTORY::create(without, DEV_DEVICE_FACTORY::ALL));
    ASSERT_NE(opened, nullptr);
    EXPECT_EQ(opened->get_basic_info(), nullptr);
    EXPECT_TRUE(errors().empty()) << ::testing::PrintToString(errors());
}

}  // namespace
