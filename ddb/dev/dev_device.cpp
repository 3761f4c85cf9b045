// DEV_DEVICE and its body: the aspects a device holds, and their destruction.
#include "dev_device.h"

#include "dev_asm_info.h"
#include "dev_basic_info.h"
#include "dev_pad_info.h"
#include "dev_part_info.h"
#include "dev_pkg_info.h"
#include "dev_routing_switch_info.h"
#include "host/msg.h"

DEV_DIE_INFO::~DEV_DIE_INFO() = default;
DEV_MIGRATION_INFO::~DEV_MIGRATION_INFO() = default;
DEV_ACE_INFO::~DEV_ACE_INFO() = default;
DEV_KX_INFO::~DEV_KX_INFO() = default;
DTM_TIMING_INFO::~DTM_TIMING_INFO() = default;
DPOW_INFO_MANAGER::~DPOW_INFO_MANAGER() = default;

// The drawing info and the part info are left for the creator to set.
DEV_DEVICE_BODY::DEV_DEVICE_BODY()
    : m_basic_info(nullptr),
      m_die_info(nullptr),
      m_timing_info(nullptr),
      m_asm_info(nullptr),
      m_pad_info(nullptr),
      m_pkg_info(nullptr),
      m_migration_info(nullptr),
      m_routing_switch_info(nullptr),
      m_kx_info(nullptr),
      m_dpow_info_manager(nullptr) {}

namespace {
template <typename T>
void destroy(T*& aspect) {
    delete aspect;
    aspect = nullptr;
}
}  // namespace

DEV_DEVICE_BODY::~DEV_DEVICE_BODY() {
    destroy(m_basic_info);
    destroy(m_die_info);
    destroy(m_asm_info);
    destroy(m_pad_info);
    destroy(m_pkg_info);
    destroy(m_migration_info);
    destroy(m_ace_info);
    destroy(m_routing_switch_info);
    destroy(m_kx_info);
    destroy(m_part_info);
}

DEV_BASIC_INFO_BODY* DEV_DEVICE_BODY::get_basic_info_body() const {
    return m_basic_info ? m_basic_info->get_body() : nullptr;
}
DEV_PAD_INFO_BODY* DEV_DEVICE_BODY::get_pad_info_body() const { return m_pad_info ? m_pad_info->get_body() : nullptr; }
DEV_PKG_INFO_BODY* DEV_DEVICE_BODY::get_pkg_info_body() const { return m_pkg_info ? m_pkg_info->get_body() : nullptr; }
DEV_ROUTING_SWITCH_INFO_BODY* DEV_DEVICE_BODY::get_routing_switch_info_body() const {
    return m_routing_switch_info ? m_routing_switch_info->get_body() : nullptr;
}

DEV_DEVICE::DEV_DEVICE(DEV_DEVICE_BODY* body) : m_body(body) { DEV_ASSERT_TEXT(body != 0, "body != 0"); }

DEV_DEVICE::~DEV_DEVICE() {
    delete m_body;
    m_body = nullptr;
}
