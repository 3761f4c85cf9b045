// The device aspects whose subsystems this library does not specify: die info, pin migration
// info, drawing (floorplan) info and KX cell-library info, and the host's timing info and
// power-information manager. Each is a minimal polymorphic type with a virtual destructor, so
// that a device can hold and destroy one; the subsystems that own them derive their real
// classes from these. Nothing else is pretended here.
#ifndef VELCORA_DEV_DEVICE_ASPECTS_H
#define VELCORA_DEV_DEVICE_ASPECTS_H

#include "dev_export.h"

class DEV_DEVICE;

// Die info: keeps a back pointer to its device.
class DEV_EXPORT DEV_DIE_INFO {
public:
    virtual ~DEV_DIE_INFO();
    void set_device(DEV_DEVICE* device) { m_device = device; }
    DEV_DEVICE* get_device() const { return m_device; }

private:
    DEV_DEVICE* m_device = nullptr;
};

class DEV_EXPORT DEV_MIGRATION_INFO {
public:
    virtual ~DEV_MIGRATION_INFO();
};

class DEV_EXPORT DEV_ACE_INFO {
public:
    virtual ~DEV_ACE_INFO();
};

class DEV_EXPORT DEV_KX_INFO {
public:
    virtual ~DEV_KX_INFO();
};

// The host's timing model and power-information manager: a device only borrows them.
class DEV_EXPORT DTM_TIMING_INFO {
public:
    virtual ~DTM_TIMING_INFO();
};

class DEV_EXPORT DPOW_INFO_MANAGER {
public:
    virtual ~DPOW_INFO_MANAGER();
};

#endif
