// The data columns of the voltage and timing-model definitions: millivolts per voltage and
// the (voltage, temperature) operating point per timing model.
#include "host/tables/dev_timing_model_enum.h"
#include "host/tables/dev_voltage_enum.h"

namespace {

struct VOLTAGE_ROW {
    DEV_VOLTAGE_ENUM voltage;
    int millivolts;
};

struct TIMING_MODEL_ROW {
    DEV_TIMING_MODEL_ENUM model;
    DEV_VOLTAGE_ENUM voltage;
    int temperature;
};

#define DSTR_ENUM_BEGIN(TYPE, name)
#define DSTR_INVALID(ID, value)
#define DSTR_GENERIC(ID, value, debug, user)
#define DSTR_BOUND(ID, value)
#define DSTR_ENUM_END(TYPE, name, INVALID, BOUND)

#define DSTR_MEMBER(ID, value, debug, user, millivolts) {ID, millivolts},
const VOLTAGE_ROW VOLTAGE_ROWS[] = {
#include "host/tables/dev_voltage_enum.def"
};
#undef DSTR_MEMBER

#define DSTR_MEMBER(ID, value, debug, user, voltage, temperature) {ID, voltage, temperature},
const TIMING_MODEL_ROW TIMING_MODEL_ROWS[] = {
#include "host/tables/dev_timing_model_enum.def"
};

#include "host/dstr_undef.h"

}  // namespace

int dstr_get_voltage_millivolts(int voltage) {
    for (const VOLTAGE_ROW& row : VOLTAGE_ROWS)
        if (row.voltage == voltage) return row.millivolts;
    return -1;
}

DEV_VOLTAGE_ENUM dstr_get_voltage_by_millivolts(int millivolts) {
    if (millivolts == DEV_NO_MILLIVOLTS) return DEV_VOLTAGE_INVALID;
    for (const VOLTAGE_ROW& row : VOLTAGE_ROWS)
        if (row.millivolts == millivolts) return row.voltage;
    return DEV_VOLTAGE_INVALID;
}

bool dstr_get_timing_model_operating_point(int model, DEV_VOLTAGE_ENUM* voltage, int* temperature) {
    for (const TIMING_MODEL_ROW& row : TIMING_MODEL_ROWS) {
        if (row.model != model) continue;
        if (voltage) *voltage = row.voltage;
        if (temperature) *temperature = row.temperature;
        return true;
    }
    return false;
}

DEV_TIMING_MODEL_ENUM dstr_get_timing_model_by_operating_point(DEV_VOLTAGE_ENUM voltage,
                                                               int temperature) {
    for (const TIMING_MODEL_ROW& row : TIMING_MODEL_ROWS)
        if (row.voltage == voltage && row.temperature == temperature) return row.model;
    return DEV_TIMING_MODEL_INVALID;
}
