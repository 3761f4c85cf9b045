// Host configuration switches and test settings.
//
// Values come from a settings file of "name = value" lines (path from VELCORA_INI, else
// velcora.ini in the working directory when present) and can be set in code. Names are
// compared without regard to case. Test settings are kept per section and key.
#ifndef VELCORA_HOST_CFG_H
#define VELCORA_HOST_CFG_H

#include "host/host_export.h"

#include <string>

// A switch is on for the values 1, on, true, yes (any case); off for 0, off, false, no.
HOST_EXPORT bool cfg_is_on(const char* name, bool default_value);
HOST_EXPORT int cfg_get_int_value(const char* name, int default_value);
// The value as written, or `default_value` when the name is not set.
HOST_EXPORT std::string cfg_get_value(const char* name, const char* default_value = "");
HOST_EXPORT bool cfg_has_value(const char* name);

HOST_EXPORT void cfg_set_value(const char* name, const std::string& value);
HOST_EXPORT void cfg_unset_value(const char* name);
// Forgets everything set in code and reads the settings file again.
HOST_EXPORT void cfg_reload();

// Every change of a value bumps the generation; CFG_SWITCH re-reads its value when the
// generation moved, so tests can change switches the library caches per process.
HOST_EXPORT unsigned long cfg_generation();
HOST_EXPORT void cfg_reset_cached_switches();

// A switch read once and cached until the configuration changes.
class HOST_EXPORT CFG_SWITCH {
public:
    CFG_SWITCH(const char* name, bool default_value)
        : m_name(name), m_default(default_value) {}
    bool is_on() const {
        unsigned long g = cfg_generation();
        if (g != m_generation) {
            m_value = cfg_is_on(m_name, m_default);
            m_generation = g;
        }
        return m_value;
    }
    const char* name() const { return m_name; }

private:
    const char* m_name;
    bool m_default;
    mutable unsigned long m_generation = ~0UL;
    mutable bool m_value = false;
};

// Test settings: an empty string when the key is not set.
HOST_EXPORT std::string tst_get_value(const std::string& section, const std::string& key);
HOST_EXPORT bool tst_has_value(const std::string& section, const std::string& key);
HOST_EXPORT void tst_set_value(const std::string& section, const std::string& key, const std::string& value);
HOST_EXPORT void tst_clear();

#endif
