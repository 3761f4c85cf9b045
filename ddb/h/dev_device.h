// DEV_DEVICE: everything the library knows about one device, a handle over DEV_DEVICE_BODY,
// which holds one pointer per aspect (null while the aspect is absent). The device reads no
// file itself: its creator (DEV_DEVICE_FACTORY) loads the aspects and installs them; the
// getters hand them out as stored. The body owns its aspects but the timing info and the
// power-information manager, which it only borrows.
#ifndef VELCORA_DEV_DEVICE_H
#define VELCORA_DEV_DEVICE_H

#include "dev_device_aspects.h"
#include "dev_export.h"

class DEV_BASIC_INFO;
class DEV_BASIC_INFO_BODY;
class DEV_PAD_INFO;
class DEV_PAD_INFO_BODY;
class DEV_PKG_INFO;
class DEV_PKG_INFO_BODY;
class DEV_PART_INFO;
class DEV_ROUTING_SWITCH_INFO;
class DEV_ROUTING_SWITCH_INFO_BODY;
class DEV_ASM_INFO;

class DEV_EXPORT DEV_DEVICE_BODY {
public:
    // Clears every field but the drawing info and the part info, which the creator must set
    // (to an object or to null) before the body may be destroyed.
    DEV_DEVICE_BODY();
    // Destroys, in this order, the basic info, die info, assembler data, pad info, package
    // info, migration info, drawing info, routing switch info, KX info and part info; leaves
    // the timing info and the power-information manager alone.
    ~DEV_DEVICE_BODY();
    DEV_DEVICE_BODY(const DEV_DEVICE_BODY&) = delete;
    DEV_DEVICE_BODY& operator=(const DEV_DEVICE_BODY&) = delete;

    DEV_BASIC_INFO* get_basic_info() const { return m_basic_info; }
    DEV_DIE_INFO* get_die_info() const { return m_die_info; }
    DEV_PAD_INFO* get_pad_info() const { return m_pad_info; }
    DEV_PKG_INFO* get_pkg_info() const { return m_pkg_info; }
    DTM_TIMING_INFO* get_timing_info() const { return m_timing_info; }
    DEV_ASM_INFO* get_asm_info() const { return m_asm_info; }
    DEV_MIGRATION_INFO* get_migration_info() const { return m_migration_info; }
    DEV_ACE_INFO* get_ace_info() const { return m_ace_info; }
    DEV_ROUTING_SWITCH_INFO* get_routing_switch_info() const { return m_routing_switch_info; }
    DEV_KX_INFO* get_kx_info() const { return m_kx_info; }
    DPOW_INFO_MANAGER* get_dpow_info_manager() const { return m_dpow_info_manager; }
    DEV_PART_INFO* get_part_info() const { return m_part_info; }

    // The aspect's body, or null when the aspect is absent.
    DEV_BASIC_INFO_BODY* get_basic_info_body() const;
    DEV_DIE_INFO* get_die_info_body() const { return m_die_info; }
    DEV_PAD_INFO_BODY* get_pad_info_body() const;
    DEV_PKG_INFO_BODY* get_pkg_info_body() const;
    DEV_MIGRATION_INFO* get_migration_info_body() const { return m_migration_info; }
    DEV_ROUTING_SWITCH_INFO_BODY* get_routing_switch_info_body() const;
    DEV_KX_INFO* get_kx_info_body() const { return m_kx_info; }

    // Store the pointer as given; an aspect replaced is not destroyed (the caller disposes
    // of it).
    void set_basic_info(DEV_BASIC_INFO* basic_info) { m_basic_info = basic_info; }
    void set_die_info(DEV_DIE_INFO* die_info) { m_die_info = die_info; }
    void set_pad_info(DEV_PAD_INFO* pad_info) { m_pad_info = pad_info; }
    void set_pkg_info(DEV_PKG_INFO* pkg_info) { m_pkg_info = pkg_info; }
    void set_timing_info(DTM_TIMING_INFO* timing_info) { m_timing_info = timing_info; }
    void set_asm_info(DEV_ASM_INFO* asm_info) { m_asm_info = asm_info; }
    void set_migration_info(DEV_MIGRATION_INFO* migration_info) { m_migration_info = migration_info; }
    void set_ace_info(DEV_ACE_INFO* ace_info) { m_ace_info = ace_info; }
    void set_routing_switch_info(DEV_ROUTING_SWITCH_INFO* info) { m_routing_switch_info = info; }
    void set_kx_info(DEV_KX_INFO* kx_info) { m_kx_info = kx_info; }
    void set_dpow_info_manager(DPOW_INFO_MANAGER* manager) { m_dpow_info_manager = manager; }
    void set_part_info(DEV_PART_INFO* part_info) { m_part_info = part_info; }

private:
    DEV_BASIC_INFO* m_basic_info;
    DEV_DIE_INFO* m_die_info;
    DTM_TIMING_INFO* m_timing_info;
    DEV_ASM_INFO* m_asm_info;
    DEV_PAD_INFO* m_pad_info;
    DEV_PKG_INFO* m_pkg_info;
    DEV_MIGRATION_INFO* m_migration_info;
    DEV_ACE_INFO* m_ace_info;  // left unset by the default constructor
    DEV_ROUTING_SWITCH_INFO* m_routing_switch_info;
    DEV_KX_INFO* m_kx_info;
    DPOW_INFO_MANAGER* m_dpow_info_manager;
    DEV_PART_INFO* m_part_info;  // left unset by the default constructor
};

class DEV_EXPORT DEV_DEVICE {
public:
    // Takes ownership of `body`; a null body is reported ("body != 0") but the device is built.
    explicit DEV_DEVICE(DEV_DEVICE_BODY* body);
    ~DEV_DEVICE();
    DEV_DEVICE(const DEV_DEVICE&) = delete;
    DEV_DEVICE& operator=(const DEV_DEVICE&) = delete;

    DEV_DEVICE_BODY* get_body() const { return m_body; }

    // Each aspect as stored (null when absent); nothing is loaded on access.
    DEV_BASIC_INFO* get_basic_info() const { return m_body ? m_body->get_basic_info() : nullptr; }
    DEV_DIE_INFO* get_die_info() const { return m_body ? m_body->get_die_info() : nullptr; }
    DEV_PAD_INFO* get_pad_info() const { return m_body ? m_body->get_pad_info() : nullptr; }
    DEV_PKG_INFO* get_pkg_info() const { return m_body ? m_body->get_pkg_info() : nullptr; }
    DTM_TIMING_INFO* get_timing_info() const { return m_body ? m_body->get_timing_info() : nullptr; }
    DEV_ASM_INFO* get_asm_info() const { return m_body ? m_body->get_asm_info() : nullptr; }
    DEV_MIGRATION_INFO* get_migration_info() const { return m_body ? m_body->get_migration_info() : nullptr; }
    DEV_ACE_INFO* get_ace_info() const { return m_body ? m_body->get_ace_info() : nullptr; }
    DEV_ROUTING_SWITCH_INFO* get_routing_switch_info() const {
        return m_body ? m_body->get_routing_switch_info() : nullptr;
    }
    DEV_KX_INFO* get_kx_info() const { return m_body ? m_body->get_kx_info() : nullptr; }
    DPOW_INFO_MANAGER* get_dpow_info_manager() const { return m_body ? m_body->get_dpow_info_manager() : nullptr; }
    DEV_PART_INFO* get_part_info() const { return m_body ? m_body->get_part_info() : nullptr; }

private:
    DEV_DEVICE_BODY* m_body;
};

#endif
