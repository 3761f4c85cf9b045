// DEV_PAD_INFO_BODY: the data of a device's pad info. Global attributes live in the typed
// attribute tables of the kinds BOOL, INT, STRING, 2D_INT and VEC_STRING (INT key 0 the
// number of pads, INT key 3 the device-scope default I/O standard). The body owns:
//   - the pads, indexed by pad id (ids 0, 1, 2, ... in order of addition), and the default
//     pad that is the parent of every pad;
//   - the I/O standard descriptors in order of creation, with a table of descriptors by
//     name (case-sensitive), the distinct standards in first-seen order and the default
//     descriptor of each standard (filled by fill_in_io_standard_enums);
//   - the I/O rules;
// and looks pads up by global id (one pad may have several; a global id names one pad) and
// by name (case-insensitive; the first pad to claim a name keeps it). The three tables start
// with 61 buckets.
//
// Conflicts keep the first entry and are internal errors: a global id given to two pads
// ("A different PAD_ID with key %d already exists in the hash table!"), a descriptor name
// given to two descriptors.
//
// The body is filled from a PAD text (read_pad_file) or read whole from a persistent file
// (load_pad_from_pdb), and written to either (write_pad_file, write_pad_to_pdb).
#ifndef VELCORA_DEV_PAD_INFO_BODY_H
#define VELCORA_DEV_PAD_INFO_BODY_H

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "dev_attribute_table.h"
#include "dev_export.h"
#include "dev_io_rule.h"
#include "dev_io_standard_desc.h"
#include "dev_owned_vector.h"
#include "dev_pad.h"
#include "dev_persistent.h"
#include "host/astr.h"
#include "host/fio.h"
#include "host/vtl_hash.h"

class DEV_DEVICE;

#define DEV_PAD_INFO_BODY_PDB_FIELDS(F)                                                                          \
    F(m_pad_list) F(m_default_pad_body) F(m_bool_data) F(m_int_data) F(m_string_data) F(m_vec_string_data)     \
        F(m_2d_int_data) F(m_bool_enum_is_valid) F(m_int_enum_is_valid) F(m_string_enum_is_valid)               \
            F(m_vec_string_enum_is_valid) F(m_2d_int_enum_is_valid) F(m_ids_by_global_id) F(m_ids_by_string)    \
                F(m_io_standards) F(m_io_standards_by_string) F(m_default_io_standards_by_enum)                 \
                    F(m_io_standard_enums) F(m_io_rules)

class DEV_EXPORT DEV_PAD_INFO_BODY
    : public DEV_ATTRIBUTE_TABLE<DEV_PAD_INFO_BOOL_DATA_ENUM, DEV_PAD_INFO_INT_DATA_ENUM, DEV_PAD_INFO_STRING_DATA_ENUM,
                                 DEV_PAD_INFO_2D_INT_DATA_ENUM, DEV_PAD_INFO_VEC_STRING_DATA_ENUM> {
public:
    typedef VTL_HASH<uint32_t, uint32_t> IDS_BY_GLOBAL_ID;
    typedef VTL_HASH<std::string, uint32_t, VTL_HASH_NOCASE> IDS_BY_NAME;
    typedef VTL_HASH<std::string, DEV_IO_STANDARD_DESC*> DESCS_BY_NAME;

    DEV_PAD_INFO_BODY();
    ~DEV_PAD_INFO_BODY();
    DEV_PAD_INFO_BODY(const DEV_PAD_INFO_BODY&) = delete;
    DEV_PAD_INFO_BODY& operator=(const DEV_PAD_INFO_BODY&) = delete;

    // The device the pads belong to (not owned; not stored in the persistent form).
    void set_device(DEV_DEVICE* device) { m_device = device; }
    DEV_DEVICE* get_device() const { return m_device; }

    // ---- pads ------------------------------------------------------------------------------------
    uint32_t get_number_of_pads() const { return static_cast<uint32_t>(m_pad_list.size()); }
    const std::vector<DEV_PAD*>& get_pads() const { return m_pad_list; }
    // Null (or DEV_ILLEGAL_PAD_ID) when unknown.
    DEV_PAD* get_pad(uint32_t pad_id) const { return pad_id < m_pad_list.size() ? m_pad_list[pad_id] : nullptr; }
    DEV_PAD* get_pad_by_global_id(uint32_t gid) const { return get_pad(get_pad_id_by_global_id(gid)); }
    uint32_t get_pad_id_by_global_id(uint32_t gid) const {
        const uint32_t* pad_id = m_ids_by_global_id.find(gid);
        return pad_id ? *pad_id : DEV_ILLEGAL_PAD_ID;
    }
    DEV_PAD* get_pad_by_string(const std::string& name) const { return get_pad(get_pad_id_by_string(name)); }
    uint32_t get_pad_id_by_string(const std::string& name) const {
        const uint32_t* pad_id = m_ids_by_string.find(name);
        return pad_id ? *pad_id : DEV_ILLEGAL_PAD_ID;
    }
    // Empties `gids`, then appends every global id of the pad, in the table's bucket order.
    void get_pad_gids(uint32_t pad_id, std::vector<uint32_t>* gids) const;
    const IDS_BY_GLOBAL_ID& get_ids_by_global_id() const { return m_ids_by_global_id; }
    DEV_PAD_BODY* get_default_pad_body() const { return m_default_pad_body.get(); }
    // The default pad, created when absent.
    DEV_PAD_BODY* make_default_pad_body();

    // Takes ownership of the pad, whose id becomes the number of pads before it.
    void add_pad(DEV_PAD* pad);
    // Binds gid to the pad unless it names a pad already (the same pad: nothing; another:
    // the conflict report, the first binding stays); with `set_on_pad` also sets the pad's
    // INT key 0.
    void add_to_ids_by_global_id_hash(uint32_t gid, uint32_t pad_id, bool set_on_pad);
    // Binds the name (case-insensitive) unless a pad has claimed it.
    void add_to_ids_by_string_hash(const std::string& name, uint32_t pad_id);

    // ---- I/O standards ---------------------------------------------------------------------------
    const std::vector<DEV_IO_STANDARD_DESC*>& get_io_standard_descs() const { return m_io_standards; }
    const std::vector<DEV_IO_STANDARD_ENUM>& get_io_standard_enums() const { return m_io_standard_enums; }
    int get_total_io_standards() const { return static_cast<int>(m_io_standards.size()); }
    // The descriptor of exactly that name, or null.
    DEV_IO_STANDARD_DESC* get_io_standard_by_string(const std::string& name) const;
    // INT key 3, which must be set.
    DEV_IO_STANDARD_ENUM get_default_io_standard_enum() const;
    // The standard's default descriptor, or null (the standard must lie in 1..83).
    DEV_IO_STANDARD_DESC* get_default_desc_for_io_standard(DEV_IO_STANDARD_ENUM io_std_enum) const;

    // Takes ownership of the descriptor and enters its name (STRING key 0), when set.
    void add_io_standard(DEV_IO_STANDARD_DESC* desc);
    void add_to_io_standards_by_string_hash(const std::string& name, DEV_IO_STANDARD_DESC* desc);
    // Takes the descriptor off every pad, off the default table and the distinct standards,
    // and out of the name table, then destroys it. Removing the default descriptor of the
    // device-scope default standard is reported first.
    void remove_io_standard(DEV_IO_STANDARD_DESC* desc);
    void remove_all_io_standards();
    // Lists the distinct standards of the descriptors and their default descriptors; reports
    // each standard without one.
    void fill_in_io_standard_enums();

    // ---- I/O rules -------------------------------------------------------------------------------
    const std::vector<DEV_IO_RULE*>& get_io_rules() const { return m_io_rules; }
    int get_total_io_rules() const { return static_cast<int>(m_io_rules.size()); }
    // The last rule of that enumerator, or null (the rule must lie in 0..49).
    DEV_IO_RULE* get_io_rule_by_enum(DEV_IO_RULE_ENUM io_rule_enum) const;
    void add_io_rule(DEV_IO_RULE* rule);
    void remove_all_io_rules();

    // ---- files -----------------------------------------------------------------------------------
    // Reads a PAD text (and its includes) into this body, creating the default pad first,
    // then fills in the I/O standards; false when the file could not be read.
    bool read_pad_file(const FIO_PATH& path);
    // The ASCII dump, which read_pad_file reads back; `compression` 0 writes plain text.
    bool write_pad_file(const FIO_PATH& path, int compression) const;
    // The persistent form (a ".ddb" path, a level of 1 to 9); read into a new body (null on
    // failure).
    bool write_pad_to_pdb(const FIO_PATH& path, int compression_level);
    static DEV_PAD_INFO_BODY* load_pad_from_pdb(const FIO_PATH& path);
    // Frees pads, the default pad, descriptors and rules, and empties the tables.
    void destroy_data();

    // The same attributes, pads, default pad, descriptors, rules and tables (records
    // compared by content and position).
    bool operator==(const DEV_PAD_INFO_BODY& other) const;
    bool operator!=(const DEV_PAD_INFO_BODY& other) const { return !(*this == other); }
    // A body read from a file holds together: tables of their sizes, ids equal to positions,
    // every pad's parent the default pad. False with the reason.
    bool check_structure(std::string* problem) const;

    DEV_PDB_FRIEND(DEV_PAD_INFO_BODY)

private:
    DEV_DEVICE* m_device = nullptr;
    DEV_OWNED_VECTOR<DEV_PAD> m_pad_list;
    std::unique_ptr<DEV_PAD_BODY> m_default_pad_body;
    IDS_BY_GLOBAL_ID m_ids_by_global_id;
    IDS_BY_NAME m_ids_by_string;
    DEV_OWNED_VECTOR<DEV_IO_STANDARD_DESC> m_io_standards;
    DESCS_BY_NAME m_io_standards_by_string;
    DEV_IO_STANDARD_DESC* m_default_io_standards_by_enum[DEV_IO_STANDARD_MAX] = {};
    std::vector<DEV_IO_STANDARD_ENUM> m_io_standard_enums;
    DEV_OWNED_VECTOR<DEV_IO_RULE> m_io_rules;
};

#endif
