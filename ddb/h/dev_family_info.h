// DEV_FAMILY_INFO: the storage object of the catalogue store, the unit written to and read
// from the catalogue ".ddb" files: three lists of records (families, devices, parts).
//
// Gathered for output (prepare_output) it borrows the store's records and owns none. Read
// from a file it owns what it holds: the store takes a record by moving the pointer out of
// the list (leaving null), and the destructor deletes whatever is left.
#ifndef VELCORA_DEV_FAMILY_INFO_H
#define VELCORA_DEV_FAMILY_INFO_H

#include "dev_export.h"

#include <vector>

#include "dev_device_desc.h"
#include "dev_family_desc.h"
#include "dev_part_desc.h"

class DEV_EXPORT DEV_FAMILY_INFO {
public:
    explicit DEV_FAMILY_INFO(bool owns_records = false) : m_owns_records(owns_records) {}
    ~DEV_FAMILY_INFO() { clear(); }
    DEV_FAMILY_INFO(const DEV_FAMILY_INFO&) = delete;
    DEV_FAMILY_INFO& operator=(const DEV_FAMILY_INFO&) = delete;

    bool owns_records() const { return m_owns_records; }
    void set_owns_records(bool owns) { m_owns_records = owns; }

    // The persistent store's auto-match hook; not generated for this class (reports so).
    static bool is_auto_match_pdb_xfr(DEV_FAMILY_INFO* object, PDB_MATCH_DATA* data);

    // Empties the lists (deleting the records when owned).
    void clear() {
        if (m_owns_records) {
            for (DEV_FAMILY_DESC* d : m_family_data) delete d;
            for (DEV_DEVICE_DESC* d : m_device_data) delete d;
            for (DEV_PART_DESC* d : m_part_data) delete d;
        }
        m_family_data.clear();
        m_device_data.clear();
        m_part_data.clear();
    }

    std::vector<DEV_FAMILY_DESC*> m_family_data;
    std::vector<DEV_DEVICE_DESC*> m_device_data;
    std::vector<DEV_PART_DESC*> m_part_data;

private:
    bool m_owns_records;
};

#endif
