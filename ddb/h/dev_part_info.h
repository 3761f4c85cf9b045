// DEV_PART_INFO: the data of one orderable part rather than of its die: a few part-level
// attributes (BOOL, INT, ENUM, STRING and 2D_INT) and the part's power supplies, a handle
// over DEV_PART_INFO_BODY. Unlike most handles it also exposes the body's setters, and it may
// be built without a body, the state its loader expects.
//
// The body owns its power-supply descriptors in order of addition and indexes them by
// DEV_POWER_SUPPLY_ENUM (one descriptor per supply, with a validity bit each). It is filled
// from a PART_INFO text file (read_ascii_file, which also reads its includes) or read whole
// from a persistent file (load_from_pdb), and written to either.
#ifndef VELCORA_DEV_PART_INFO_H
#define VELCORA_DEV_PART_INFO_H

#include <string>
#include <vector>

#include "dev_export.h"
#include "dev_handle.h"
#include "dev_owned_vector.h"
#include "dev_persistent.h"
#include "dev_power_supply_desc.h"
#include "host/astr.h"
#include "host/dstr_fwd.h"
#include "host/fio.h"
#include "host/vtl_bool_vector.h"

class DEV_DEVICE;

#define DEV_PART_INFO_BODY_PDB_FIELDS(F)                                                                        \
    F(m_bool_data) F(m_enum_data) F(m_int_data) F(m_string_data) F(m_2d_int_data) F(m_power_supplies)            \
        F(m_power_supplies_by_enum) F(m_part) F(m_bool_enum_is_valid) F(m_int_enum_is_valid) F(m_enum_enum_is_valid) \
            F(m_string_enum_is_valid) F(m_2d_int_enum_is_valid) F(m_power_supply_desc_is_valid)

class DEV_EXPORT DEV_PART_INFO_BODY
    : public DEV_ATTRIBUTE_TABLE<DEV_PART_INFO_BOOL_DATA_ENUM, DEV_PART_INFO_INT_DATA_ENUM, DEV_PART_INFO_ENUM_DATA_ENUM,
                                 DEV_PART_INFO_STRING_DATA_ENUM, DEV_PART_INFO_2D_INT_DATA_ENUM> {
public:
    DEV_PART_INFO_BODY();
    ~DEV_PART_INFO_BODY();
    DEV_PART_INFO_BODY(const DEV_PART_INFO_BODY&) = delete;
    DEV_PART_INFO_BODY& operator=(const DEV_PART_INFO_BODY&) = delete;

    // ---- power supplies -----------------------------------------------------------------------
    // Takes ownership of `desc` and appends it; its supply must be set
    // ("power_supply_enum != DEV_POWER_SUPPLY_INVALID") and not yet present
    // ("!is_valid_power_supply_enum(power_supply_enum)"). A descriptor that breaks either is
    // kept (the body owns it) but indexed only when its supply is in range.
    void add_power_supply(DEV_POWER_SUPPLY_DESC* desc);
    // The descriptor of `supply`: "key >= 0 && key < DEV_POWER_SUPPLY_MAX" is asserted, and a
    // supply the part lacks is reported ("Power supply is not valid for part: <user name>");
    // null in both cases.
    DEV_POWER_SUPPLY_DESC* get_power_supply_desc(DEV_POWER_SUPPLY_ENUM supply) const;
    // False for a supply out of range, without a report.
    bool is_valid_power_supply_enum(DEV_POWER_SUPPLY_ENUM supply) const;
    const std::vector<DEV_POWER_SUPPLY_DESC*>& get_power_supply_desc_vec() const { return m_power_supplies; }

    // ---- the part and its device ------------------------------------------------------------
    DEV_PART_ENUM get_part() const { return m_part; }
    void set_part(DEV_PART_ENUM part) { m_part = part; }
    DEV_DEVICE* get_device() const { return m_device; }
    void set_device(DEV_DEVICE* device) { m_device = device; }
    bool is_initialized() const { return m_initialized; }
    void set_initialized(bool initialized) { m_initialized = initialized; }

    // ---- files ------------------------------------------------------------------------------
    // Reads a PART_INFO text file (and its includes, paths taken as written), then marks the
    // body initialized; false when the file could not be read.
    bool read_ascii_file(const FIO_PATH& path);
    // Writes the ASCII dump; `compression` 0 writes plain text.
    bool write_ascii_file(const FIO_PATH& path, int compression) const;
    // The persistent form, to a ".ddb" path; read into a new, initialized body (null on
    // failure).
    bool write_to_pdb(const FIO_PATH& path, int compression_level);
    static DEV_PART_INFO_BODY* load_from_pdb(const FIO_PATH& path);

    // The same part, attributes and supplies (in the same order).
    bool operator==(const DEV_PART_INFO_BODY& other) const;
    bool operator!=(const DEV_PART_INFO_BODY& other) const { return !(*this == other); }
    // A body read from a file holds together: tables of their sizes, every supply indexed
    // under its own enumerator exactly when its bit is set. False with the reason.
    bool check_structure(std::string* problem) const;

    static bool is_auto_match_pdb_xfr(DEV_PART_INFO_BODY* object, PDB_MATCH_DATA* data);
    DEV_PDB_FRIEND(DEV_PART_INFO_BODY)

private:
    DEV_OWNED_VECTOR<DEV_POWER_SUPPLY_DESC> m_power_supplies;
    DEV_POWER_SUPPLY_DESC* m_power_supplies_by_enum[DEV_POWER_SUPPLY_MAX];
    VTL_BOOL_VECTOR m_power_supply_desc_is_valid;
    DEV_DEVICE* m_device = nullptr;
    DEV_PART_ENUM m_part;
    bool m_initialized = false;
};

class DEV_EXPORT DEV_PART_INFO : public DEV_HANDLE<DEV_PART_INFO_BODY>, public DEV_HANDLE_SETTERS<DEV_PART_INFO> {
public:
    typedef DEV_PART_INFO_BODY BODY;

    // Without a body: load_data or load_from_ascii creates it.
    DEV_PART_INFO() = default;
    // Takes ownership of `body` (a null body is reported, "body != 0").
    explicit DEV_PART_INFO(DEV_PART_INFO_BODY* body) : DEV_HANDLE(body) {}

    // Loads the part's "part_info" file that DEV_PATH finds: a persistent file whole, a text
    // file into a new body; then the body's part and device are set. The part must be valid
    // ("dstr_is_valid_dev_part_enum(part)") and no body may exist yet ("m_body == NULL"). A
    // missing file is no error: only the debug note "PART_INFO file for <part> not
    // installed". True when a body exists afterwards.
    bool load_data(DEV_DEVICE* device, DEV_PART_ENUM part);
    // Reads a text file into the body (created if absent); false when it could not be read.
    bool load_from_ascii(const FIO_PATH& path);
    // Destroys the body: the part info is as built without one.
    void destroy_data() { set_body(nullptr); }

    bool is_initialized() const { return m_body && m_body->is_initialized(); }
    // Asserts "is_initialized()".
    DEV_DEVICE* get_device() const;
    DEV_PART_ENUM get_part() const;
    DEV_POWER_SUPPLY_DESC* get_power_supply_desc(DEV_POWER_SUPPLY_ENUM supply) const {
        return forward(&BODY::get_power_supply_desc, supply);
    }
    bool is_valid_power_supply_enum(DEV_POWER_SUPPLY_ENUM supply) const {
        return m_body && m_body->is_valid_power_supply_enum(supply);
    }
    const std::vector<DEV_POWER_SUPPLY_DESC*>& get_power_supply_desc_vec() const {
        return forward(&BODY::get_power_supply_desc_vec);
    }
    void add_power_supply(DEV_POWER_SUPPLY_DESC* desc);
};

#endif
