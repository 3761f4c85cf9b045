// DEV_PART_MANAGER: the query face of the catalogue for parts and devices. A cheap handle:
// the records live in the process-wide DEV_FAMILY_INFO_MGR_BODY, and the per-part voltage and
// temperature lists are computed once per part and kept by that store until its records
// change.
//
// Every part argument must lie strictly between DEV_PART_INVALID and DEV_PART_GENERIC (and
// likewise for devices); a bad argument or an absent record is reported as an internal error
// and the query returns its default (0, the invalid enumerator, an empty string or list).
#ifndef VELCORA_DEV_PART_MANAGER_H
#define VELCORA_DEV_PART_MANAGER_H

#include "dev_export.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/dstr_fwd.h"
#include "host/tables/dev_device_trait_enum.h"
#include "host/tables/dev_family_variant_enum.h"
#include "host/tables/dev_grade_revision_enum.h"
#include "host/tables/dev_part_trait_enum.h"
#include "host/tables/dev_power_model_status_enum.h"
#include "host/tables/dev_resource_enum.h"
#include "host/tables/dev_temperature_enum.h"
#include "host/tables/dev_timing_model_enum.h"
#include "host/tables/dev_voltage_enum.h"

class DEV_FAMILY_INFO_MGR_BODY;
class DEV_FAMILY_DESC;
class DEV_DEVICE_DESC;
class DEV_PART_DESC;

// Which corner list a best-match query works on.
enum dat_timing_models : int { DAT_SLOW_MODEL = 0, DAT_FAST_MODEL = 1 };

// Room temperature in degrees Celsius: the line between maximum and minimum corners.
constexpr int ROOM_TEMPERATURE = 25;

// One operating point: a voltage and a temperature in degrees Celsius.
typedef std::pair<DEV_VOLTAGE_ENUM, int> DEV_VOLTAGE_TEMPERATURE_PAIR;

class DEV_EXPORT DEV_PART_MANAGER {
public:
    // A handle on the process-wide store (created, and the catalogue loaded, on first use).
    DEV_PART_MANAGER();
    // A handle on a store of the caller's own (tools and tests). The store must outlive the
    // handle and its copies.
    explicit DEV_PART_MANAGER(DEV_FAMILY_INFO_MGR_BODY* store);

    DEV_FAMILY_INFO_MGR_BODY* get_store() const { return m_store; }

    // ---- plain record queries -----------------------------------------------------------
    DEV_FAMILY_ENUM get_family_of(DEV_PART_ENUM part) const;
    DEV_FAMILY_ENUM get_family_of(DEV_DEVICE_ENUM device) const;
    DEV_DEVICE_ENUM get_device_of(DEV_PART_ENUM part) const;
    DEV_PKG_ENUM get_pkg_of(DEV_PART_ENUM part) const;
    DEV_SPEED_ENUM get_speed_of(DEV_PART_ENUM part) const;
    DEV_SPEED_ENUM get_fast_corner_speed_of(DEV_PART_ENUM part) const;
    DEV_GRADE_REVISION_ENUM get_grade_revision_of(DEV_PART_ENUM part) const;
    DEV_GRADE_REVISION_ENUM get_fast_grade_revision_of(DEV_PART_ENUM part) const;
    DEV_FAMILY_VARIANT_ENUM get_family_variant_of(DEV_PART_ENUM part) const;
    DEV_TEMPERATURE_ENUM get_temperature_grade_of(DEV_PART_ENUM part) const;
    DEV_TEMPERATURE_ENUM get_max_power_characteristics_temperature_grade_of(DEV_PART_ENUM part) const;
    DEV_POWER_MODEL_STATUS_ENUM get_power_model_status(DEV_PART_ENUM part) const;
    int get_pin_count_of(DEV_PART_ENUM part) const;
    int get_io_count_of(DEV_PART_ENUM part) const;
    int get_lcell_count_of(DEV_PART_ENUM part) const;
    std::string get_ordering_code_of(DEV_PART_ENUM part) const;
    std::string get_ddb_package_file_suffix_of(DEV_PART_ENUM part) const;
    // The device record's "VOLTAGE" (of the part's device for a part).
    DEV_VOLTAGE_ENUM get_voltage_of(DEV_DEVICE_ENUM device) const;
    DEV_VOLTAGE_ENUM get_voltage_of(DEV_PART_ENUM part) const;
    int get_bak_version_of(DEV_DEVICE_ENUM device) const;
    DEV_DEVICE_ENUM get_base_device_of(DEV_DEVICE_ENUM device) const;

    // ---- names ----------------------------------------------------------------------------
    const char* get_user_string_name(DEV_PART_ENUM part) const;
    DEV_PART_ENUM get_part_enum_by_string(const std::string& name) const;
    bool exists_part_enum_by_string(const std::string& name) const;
    // Decimal text to integer and back.
    static int temperature_str_to_int(const std::string& text);
    static std::string temperature_int_to_str(int temperature);

    // ---- traits ---------------------------------------------------------------------------
    bool test_part_trait_of(DEV_PART_ENUM part, DEV_PART_TRAIT_ENUM trait) const;
    bool test_device_trait_of(DEV_DEVICE_ENUM device, DEV_DEVICE_TRAIT_ENUM trait) const;
    // True when every listed part's bit equals `value` (an empty list: true).
    bool trait_matches_test_value_for_all_parts_in_list(DEV_PART_TRAIT_ENUM trait, bool value,
                                                        const std::vector<DEV_PART_ENUM>& parts) const;
    // True when at least one listed part's bit equals `value` (an empty list: false).
    bool trait_matches_test_value_for_any_part_in_list(DEV_PART_TRAIT_ENUM trait, bool value,
                                                       const std::vector<DEV_PART_ENUM>& parts) const;

    // ---- resources ------------------------------------------------------------------------
    // The part's count of a resource (0..25); -1 when not given.
    int get_device_resource_count_of(DEV_PART_ENUM part, DEV_RESOURCE_ENUM resource) const;

    // ---- timing corners -------------------------------------------------------------------
    // The corners in the order of the text; an unknown name is reported and kept as
    // DEV_TIMING_MODEL_INVALID.
    std::vector<DEV_TIMING_MODEL_ENUM> get_slow_timing_corner_list(DEV_PART_ENUM part) const;
    std::vector<DEV_TIMING_MODEL_ENUM> get_fast_timing_corner_list(DEV_PART_ENUM part) const;
    bool test_slow_timing_corner_of(DEV_PART_ENUM part, DEV_TIMING_MODEL_ENUM corner) const;
    bool test_fast_timing_corner_of(DEV_PART_ENUM part, DEV_TIMING_MODEL_ENUM corner) const;
    // The first corner of the list; DEV_TIMING_MODEL_INVALID when the list is empty.
    DEV_TIMING_MODEL_ENUM get_default_slow_timing_corner(DEV_PART_ENUM part) const;
    DEV_TIMING_MODEL_ENUM get_default_fast_timing_corner(DEV_PART_ENUM part) const;
    // The operating points of the list's corners, in list order.
    std::vector<DEV_VOLTAGE_TEMPERATURE_PAIR> get_slow_corner_voltage_temperature_pairs(DEV_PART_ENUM part) const;
    std::vector<DEV_VOLTAGE_TEMPERATURE_PAIR> get_fast_corner_voltage_temperature_pairs(DEV_PART_ENUM part) const;

    // ---- voltages -------------------------------------------------------------------------
    DEV_VOLTAGE_ENUM get_default_voltage(DEV_PART_ENUM part) const;
    // The part's core voltages, each once (a set: callers must not rely on the order). The
    // reference stays valid until the records of the handle's store change.
    const std::vector<DEV_VOLTAGE_ENUM>& get_voltage_list(DEV_PART_ENUM part) const;
    bool has_selectable_core_voltage(DEV_PART_ENUM part) const;
    bool test_voltage_of(DEV_PART_ENUM part, DEV_VOLTAGE_ENUM voltage) const;
    // Millivolts of a voltage: 2147483647 for one without a numeric value, -1 after an error.
    static int voltage_enum_to_mv(DEV_VOLTAGE_ENUM voltage);
    // The voltage of exactly `millivolts`; DEV_VOLTAGE_INVALID when none has it.
    static DEV_VOLTAGE_ENUM voltage_mv_to_enum(int millivolts);

    // ---- temperatures ---------------------------------------------------------------------
    int get_default_max_temp(DEV_PART_ENUM part) const;
    int get_default_min_temp(DEV_PART_ENUM part) const;
    // The part's maximum (minimum) temperatures, each once (sets, as the voltage list).
    const std::vector<int>& get_max_temp_list(DEV_PART_ENUM part) const;
    const std::vector<int>& get_min_temp_list(DEV_PART_ENUM part) const;
    bool has_selectable_temperature_range(DEV_PART_ENUM part) const;
    bool test_temp_range_of(DEV_PART_ENUM part, int min_temp, int max_temp) const;

    // ---- operating points of timing models ------------------------------------------------
    // The corner of `model`'s list that best fits the operating point (voltage, temperature).
    DEV_TIMING_MODEL_ENUM get_best_match_timing_model_enum(DEV_PART_ENUM part, dat_timing_models model,
                                                           DEV_VOLTAGE_ENUM voltage, int temperature) const;
    // The timing model's voltage (DEV_VOLTAGE_INVALID when none) and temperature
    // (DEV_NO_TEMPERATURE when none).
    static void get_vt_from_timing_model_enum(DEV_TIMING_MODEL_ENUM model, DEV_VOLTAGE_ENUM* return_voltage,
                                              int* return_temp);
    static DEV_VOLTAGE_ENUM get_voltage_from_timing_model_enum(DEV_TIMING_MODEL_ENUM model);
    static int get_temperature_from_timing_model_enum(DEV_TIMING_MODEL_ENUM model);
    // The first timing model of that operating point; DEV_TIMING_MODEL_INVALID when none.
    static DEV_TIMING_MODEL_ENUM get_timing_model_enum_from_vt(DEV_VOLTAGE_ENUM voltage, int temperature);

    // ---- selection ------------------------------------------------------------------------
    // Appends, in enumerator order, every part of an installed device that meets all criteria.
    // Each text is "any" (in any case) or a name: family, device, package (or a part trait
    // the part must carry), pin count (decimal, used when above 0), speed grade (or a part
    // trait). An unknown name matches no part.
    void filter_part_list(std::vector<DEV_PART_ENUM>* parts, const std::string& family,
                          const std::string& device, const std::string& package,
                          const std::string& pin_count, const std::string& speed) const;
    // The device's catalogue file exists (and its HDR file, for families of traits 8 or 9).
    bool device_is_installed(DEV_DEVICE_ENUM device) const;

private:
    const DEV_PART_DESC* part_desc(DEV_PART_ENUM part) const;
    const DEV_DEVICE_DESC* device_desc(DEV_DEVICE_ENUM device) const;
    const DEV_FAMILY_DESC* family_desc_of(const DEV_PART_DESC& part) const;
    bool family_has_corner_temperatures(const DEV_PART_DESC& part) const;
    std::vector<DEV_TIMING_MODEL_ENUM> corner_list(const std::string& list) const;
    std::vector<DEV_TIMING_MODEL_ENUM> corner_list_of(const DEV_PART_DESC& part, dat_timing_models model) const;
    int family_grade_temperature(const DEV_PART_DESC& part, bool maximum) const;
    int default_max_temp(const DEV_PART_DESC& part) const;
    int default_min_temp(const DEV_PART_DESC& part) const;
    std::vector<int> temperature_list(const DEV_PART_DESC& part, bool maximum) const;
    const std::vector<int>& cached_temperature_list(DEV_PART_ENUM part, bool maximum) const;

    DEV_FAMILY_INFO_MGR_BODY* m_store = nullptr;
};

#endif
