// DEV_FAMILY_DESC: the temperature range of a grade.
#include "dev_family_desc.h"

#include <cstdio>

#include "host/msg.h"

// Grades are numbered commercial, industrial, extended, automotive, military, while the
// record keeps them alphabetically.
int DEV_FAMILY_DESC::get_grade_temperature(DEV_TEMPERATURE_ENUM grade, bool maximum) const {
    switch (grade) {
        case DEV_TEMPERATURE_COMMERCIAL: return maximum ? m_max_commercial_temp : m_min_commercial_temp;
        case DEV_TEMPERATURE_INDUSTRIAL: return maximum ? m_max_industrial_temp : m_min_industrial_temp;
        case DEV_TEMPERATURE_EXTENDED: return maximum ? m_max_extended_temp : m_min_extended_temp;
        case DEV_TEMPERATURE_AUTOMOTIVE: return maximum ? m_max_automotive_temp : m_min_automotive_temp;
        case DEV_TEMPERATURE_MILITARY: return maximum ? m_max_military_temp : m_min_military_temp;
        default: break;
    }
    char text[128];
    std::snprintf(text, sizeof text, "Illegal value (%d) of temprerature grade argument in %s", grade,
                  maximum ? "get_max_temperature_of" : "get_min_temperature_of");
    DEV_INTERNAL_ERROR(text);
    return 0;
}
