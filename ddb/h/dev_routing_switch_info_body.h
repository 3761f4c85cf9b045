// DEV_ROUTING_SWITCH_INFO_BODY: a device's routing-switch model: the global record (owned,
// created on demand), the routing switches and the pass trees (owned; a record's id is its
// position), each indexed by enumerator and by name, and the table from MCF string to switch
// enumerator (case-sensitive). It also keeps the switches' STRING keys as arrays of 340 text
// pointers indexed by switch enumerator, for callers that want them all at once.
//
// Conflicts keep the first binding and are internal errors: a name bound to another switch
// ("A different routing switch with key <name> already exists in the hash table!") or pass
// tree ("A different pass tree with key ..."), an MCF string bound to another switch ("A
// different switch_enum with key <text> already exists in the hash table!"). Look-ups by
// enumerator or id report an argument out of range and answer null.
//
// The body is filled from an RSI text (read_rsi_file) or read whole from a persistent file
// (load_rsi_from_pdb), and written to either (write_rsi_file, write_rsi_to_pdb).
#ifndef VELCORA_DEV_ROUTING_SWITCH_INFO_BODY_H
#define VELCORA_DEV_ROUTING_SWITCH_INFO_BODY_H

#include <memory>
#include <string>
#include <vector>

#include "dev_export.h"
#include "dev_owned_vector.h"
#include "dev_pass_tree_desc.h"
#include "dev_persistent.h"
#include "dev_routing_global_info.h"
#include "dev_routing_switch_desc.h"
#include "host/fio.h"
#include "host/vtl_hash.h"

class DEV_DEVICE;

#define DEV_ROUTING_SWITCH_INFO_BODY_PDB_FIELDS(F)                                                               \
    F(m_global_info) F(m_routing_switches) F(m_pass_trees) F(m_routing_switches_by_enum) F(m_pass_trees_by_enum) \
        F(m_routing_switch_enums) F(m_pass_tree_enums) F(m_routing_switch_enums_by_mcf_string)                  \
            F(m_routing_switches_by_string) F(m_pass_trees_by_string)

class DEV_EXPORT DEV_ROUTING_SWITCH_INFO_BODY {
public:
    // No attribute tables of its own (its records have them).
    typedef DEV_ATTRIBUTE_KEY_LIST<> attribute_keys;
    // Both the nlspc list and each list of get_all_string_lists hold this many entries.
    static constexpr int STRING_LIST_SIZE = DEV_ROUTING_SWITCH_MAX;

    DEV_ROUTING_SWITCH_INFO_BODY();
    ~DEV_ROUTING_SWITCH_INFO_BODY();
    DEV_ROUTING_SWITCH_INFO_BODY(const DEV_ROUTING_SWITCH_INFO_BODY&) = delete;
    DEV_ROUTING_SWITCH_INFO_BODY& operator=(const DEV_ROUTING_SWITCH_INFO_BODY&) = delete;

    // ---- the global record ----------------------------------------------------------------------
    DEV_ROUTING_GLOBAL_INFO* get_global_info() const { return m_global_info.get(); }
    // Takes ownership (a held record is destroyed).
    void set_global_info(DEV_ROUTING_GLOBAL_INFO* global_info);

    // ---- switches and pass trees ----------------------------------------------------------------
    // Takes ownership: the record's id becomes its position; a record whose enumerator (INT
    // key 0) is in range takes the enumerator's slot (asserted) and its enumerator is listed.
    void add_routing_switch(DEV_ROUTING_SWITCH_DESC* routing_switch);
    void add_pass_tree(DEV_PASS_TREE_DESC* pass_tree);
    void add_to_routing_switches_by_string_hash(const std::string& name, DEV_ROUTING_SWITCH_DESC* routing_switch);
    void add_to_pass_trees_by_string_hash(const std::string& name, DEV_PASS_TREE_DESC* pass_tree);
    // Binds an MCF string to a switch enumerator; a new binding is noted ("Adding to list %s at
    // spot %d").
    void add_to_routing_switch_enums_by_mcf_string_hash(const std::string& text, DEV_ROUTING_SWITCH_ENUM key);

    // The bounds are asserted ("key < DEV_ROUTING_SWITCH_MAX", "key >= DEV_ROUTING_SWITCH_BEGIN",
    // "key != DEV_ROUTING_SWITCH_INVALID"; the same for pass trees); null when absent.
    DEV_ROUTING_SWITCH_DESC* get_routing_switch_by_enum(DEV_ROUTING_SWITCH_ENUM key) const;
    DEV_PASS_TREE_DESC* get_pass_tree_by_enum(DEV_PASS_TREE_ENUM key) const;
    // Asserts "id >= 0 && id < static_cast<int>(this->m_routing_switches.size())" (pass trees
    // alike).
    DEV_ROUTING_SWITCH_DESC* get_routing_switch_by_id(int id) const;
    DEV_PASS_TREE_DESC* get_pass_tree_by_id(int id) const;
    // Null for an unknown name (or a null one), without a report.
    DEV_ROUTING_SWITCH_DESC* get_routing_switch_by_string(const char* name) const;
    DEV_PASS_TREE_DESC* get_pass_tree_by_string(const char* name) const;
    // The switch enumerator bound to an MCF string, or DEV_ROUTING_SWITCH_INVALID (-1).
    DEV_ROUTING_SWITCH_ENUM get_routing_switch_enum_by_mcf_string(const char* text) const;
    int get_total_routing_switches() const { return static_cast<int>(m_routing_switches.size()); }
    int get_total_pass_trees() const { return static_cast<int>(m_pass_trees.size()); }
    const std::vector<DEV_ROUTING_SWITCH_DESC*>& get_routing_switches() const { return m_routing_switches; }
    const std::vector<DEV_PASS_TREE_DESC*>& get_pass_trees() const { return m_pass_trees; }
    const std::vector<DEV_ROUTING_SWITCH_ENUM>& get_routing_switch_enums() const { return m_routing_switch_enums; }
    const std::vector<DEV_PASS_TREE_ENUM>& get_pass_tree_enums() const { return m_pass_tree_enums; }
    // The name a switch or pass tree is known by: its enumerator's, else the first name bound
    // to it ("" when none).
    std::string get_name_of(const DEV_ROUTING_SWITCH_DESC* routing_switch) const;
    std::string get_name_of(const DEV_PASS_TREE_DESC* pass_tree) const;

    // ---- the nlspc strings (STRING key 0) and the other STRING keys ---------------------------
    // The switch must exist ("routing_switch != NULL") and have STRING key 0 ("This is not a
    // valid data entry for the switch."); null otherwise.
    const char* get_nlspc_string_by_enum(DEV_ROUTING_SWITCH_ENUM key) const;
    // Whether the switch (which must exist) has STRING key 0.
    bool has_nlspc_string_by_enum(DEV_ROUTING_SWITCH_ENUM key) const;
    // Refilled on every call: entry e is STRING key 0 of switch e, or null. Valid until the
    // next call or a change of the switches.
    const char* const* get_nlspc_string_list() const;
    // The six lists, allocated on the first call and refilled on every call: entry [k][e] is
    // STRING key k of switch e, or null.
    const char* const* const* get_all_string_lists() const;

    // ---- state --------------------------------------------------------------------------------
    DEV_DEVICE* get_device() const { return m_device; }
    void set_device(DEV_DEVICE* device) { m_device = device; }
    bool is_initialized() const { return m_initialized; }
    void set_initialized(bool initialized) { m_initialized = initialized; }
    // Destroys every record and empties every table (the device stays).
    void destroy_data();

    // ---- files --------------------------------------------------------------------------------
    // Reads an RSI text file (and its includes, relative paths beside the including file);
    // false when the file could not be read.
    bool read_rsi_file(const FIO_PATH& path);
    // Writes the ASCII dump; `compression_level` 0 writes plain text.
    bool write_rsi_file(const FIO_PATH& path, int compression_level) const;
    // The persistent form: written at a level of 1 to 9 to a ".ddb" path; read into a new body
    // (null on failure).
    bool write_rsi_to_pdb(const FIO_PATH& path, int compression_level);
    static DEV_ROUTING_SWITCH_INFO_BODY* load_rsi_from_pdb(const FIO_PATH& path);

    // The same global record, switches, pass trees (by content and id) and tables.
    bool operator==(const DEV_ROUTING_SWITCH_INFO_BODY& other) const;
    bool operator!=(const DEV_ROUTING_SWITCH_INFO_BODY& other) const { return !(*this == other); }
    // A body read from a file holds together: ids equal positions, every table of its size
    // and pointing at the body's own records under their own enumerators. False with the
    // reason.
    bool check_structure(std::string* problem) const;

    static bool is_auto_match_pdb_xfr(DEV_ROUTING_SWITCH_INFO_BODY* object, PDB_MATCH_DATA* data);
    DEV_PDB_FRIEND(DEV_ROUTING_SWITCH_INFO_BODY)

private:
    std::unique_ptr<DEV_ROUTING_GLOBAL_INFO> m_global_info;
    DEV_OWNED_VECTOR<DEV_ROUTING_SWITCH_DESC> m_routing_switches;
    DEV_OWNED_VECTOR<DEV_PASS_TREE_DESC> m_pass_trees;
    DEV_ROUTING_SWITCH_DESC* m_routing_switches_by_enum[DEV_ROUTING_SWITCH_MAX];
    DEV_PASS_TREE_DESC* m_pass_trees_by_enum[DEV_PASS_TREE_MAX];
    std::vector<DEV_ROUTING_SWITCH_ENUM> m_routing_switch_enums;
    std::vector<DEV_PASS_TREE_ENUM> m_pass_tree_enums;
    VTL_HASH<std::string, DEV_ROUTING_SWITCH_ENUM> m_routing_switch_enums_by_mcf_string;
    VTL_HASH<std::string, DEV_ROUTING_SWITCH_DESC*> m_routing_switches_by_string;
    VTL_HASH<std::string, DEV_PASS_TREE_DESC*> m_pass_trees_by_string;

    DEV_DEVICE* m_device = nullptr;
    bool m_initialized = false;
    // The lists handed out by get_nlspc_string_list and get_all_string_lists.
    mutable std::vector<const char*> m_nlspc_strings;
    mutable std::vector<const char*> m_all_strings;          // 6 lists of 340, one after the other
    mutable std::vector<const char* const*> m_string_lists;  // the start of each
};

#endif
