// The module's stored form: its objects through the persistent store, each file one segment
// written and read by the device library's archive; and the six functions the library calls.
#include <memory>
#include <new>
#include <string>

#include "asmdb.h"
#include "dev_pdb_file.h"
#include "host/pdb_stl.h"
#include "host/tables/dev_pass_tree_enum.h"
#include "host/tables/dev_routing_switch_enum.h"

// ---------------------------------------------------------------------------------------
// The objects

const ASMDB_TILE_KIND* ASMDB_DIE::kind_at(int column, int row) const {
    if (column < 0 || row < 0 || column >= columns || row >= rows) return nullptr;
    const size_t at = static_cast<size_t>(row) * columns + column;
    return at < tiles.size() && tiles[at] < kinds.size() ? &kinds[tiles[at]] : nullptr;
}

int64_t ASMDB_DIE::total_config_bits() const {
    int64_t bits = 0;
    for (uint8_t t : tiles) bits += t < kinds.size() ? kinds[t].config_bits : 0;
    return bits;
}

bool ASMDB_DIE::holds_together(std::string* problem) const {
    const char* wrong = nullptr;
    if (columns <= 0 || rows <= 0 || static_cast<int64_t>(columns) * rows != static_cast<int64_t>(tiles.size()))
        wrong = "a grid whose size is not its columns times its rows";
    else if (kinds.empty() || kinds.size() > 256)
        wrong = "no tile kinds, or more than a tile can name";
    for (uint8_t t : tiles)
        if (!wrong && t >= kinds.size()) wrong = "a tile of a kind the die does not have";
    for (const ASMDB_TILE_KIND& k : kinds)
        if (!wrong && k.config_bits < 0) wrong = "a negative bit count";
    if (wrong && problem) *problem = wrong;
    return wrong == nullptr;
}

bool ASMDB_DIRT::holds_together(std::string* problem) const {
    const char* wrong = nullptr;
    for (const ASMDB_TILE_ROUTING& k : kinds) {
        for (const ASMDB_COUNT& c : k.switches)
            if (!wrong && (!dstr_is_valid_dev_routing_switch_enum(c.key) || c.count <= 0))
                wrong = "a switch count of no switch kind, or not positive";
        for (const ASMDB_COUNT& c : k.pass_trees)
            if (!wrong && (!dstr_is_valid_dev_pass_tree_enum(c.key) || c.count <= 0))
                wrong = "a pass-tree count of no pass tree, or not positive";
    }
    if (wrong && problem) *problem = wrong;
    return wrong == nullptr;
}

std::string asmdb_dirt_path(const std::string& die_path) {
    const size_t slash = die_path.rfind('/');
    const size_t dot = die_path.rfind('.');
    const size_t end = dot != std::string::npos && (slash == std::string::npos || dot > slash) ? dot : die_path.size();
    std::string base = die_path.substr(0, end);
    const std::string suffix = "_die";
    if (base.size() >= suffix.size() && base.compare(base.size() - suffix.size(), suffix.size(), suffix) == 0)
        base.resize(base.size() - suffix.size());
    return base + "_dirt" + die_path.substr(end);
}

// ---------------------------------------------------------------------------------------
// Serialisers: each object's class identity, then its fields in order

namespace {

template <typename T>
void bracket(PDB_DDB_SEGMENT& seg, const char* name, T& object) {
    static const PDB_CLASS_INFO info(name);
    PDB_SEGMENT_BASE::serialize_begin(seg, info, &object);
}

}  // namespace

PDB_DDB_SEGMENT& operator<<(PDB_DDB_SEGMENT& seg, ASMDB_TILE_KIND& kind) {
    bracket(seg, "ASMDB_TILE_KIND", kind);
    PDB_FIELD(seg, kind.name);
    PDB_FIELD(seg, kind.config_bits);
    kind.defaults.serialize(seg);
    PDB_SEGMENT_BASE::serialize_end(seg);
    return seg;
}

PDB_DDB_SEGMENT& operator<<(PDB_DDB_SEGMENT& seg, ASMDB_DIE& die) {
    bracket(seg, "ASMDB_DIE", die);
    PDB_FIELD(seg, die.device);
    PDB_FIELD(seg, die.columns);
    PDB_FIELD(seg, die.rows);
    PDB_FIELD(seg, die.kinds);
    PDB_FIELD(seg, die.tiles);
    PDB_SEGMENT_BASE::serialize_end(seg);
    return seg;
}

PDB_DDB_SEGMENT& operator<<(PDB_DDB_SEGMENT& seg, ASMDB_COUNT& count) {
    bracket(seg, "ASMDB_COUNT", count);
    PDB_FIELD(seg, count.key);
    PDB_FIELD(seg, count.count);
    PDB_SEGMENT_BASE::serialize_end(seg);
    return seg;
}

PDB_DDB_SEGMENT& operator<<(PDB_DDB_SEGMENT& seg, ASMDB_TILE_ROUTING& routing) {
    bracket(seg, "ASMDB_TILE_ROUTING", routing);
    PDB_FIELD(seg, routing.kind);
    PDB_FIELD(seg, routing.switches);
    PDB_FIELD(seg, routing.pass_trees);
    PDB_SEGMENT_BASE::serialize_end(seg);
    return seg;
}

PDB_DDB_SEGMENT& operator<<(PDB_DDB_SEGMENT& seg, ASMDB_DIRT& dirt) {
    bracket(seg, "ASMDB_DIRT", dirt);
    PDB_FIELD(seg, dirt.device);
    PDB_FIELD(seg, dirt.kinds);
    PDB_SEGMENT_BASE::serialize_end(seg);
    return seg;
}

// ---------------------------------------------------------------------------------------
// Files

namespace {

template <typename T>
int write_object(const T* object, const std::string& path, int compression_level) {
    if (!object || compression_level < 0 || compression_level > 9) return 0;
    try {
        PDB_DDB_SEGMENT segment(true);
        segment << const_cast<T&>(*object);
        std::string error;
        return !segment.failed() && dev_pdb_write_file(segment, FIO_PATH(path), compression_level, error) ? 1 : 0;
    } catch (const std::bad_alloc&) {
        return 0;
    }
}

template <typename T>
T* read_object(const std::string& path) {
    try {
        PDB_DDB_SEGMENT segment(false);
        std::string error;
        if (!dev_pdb_read_file(FIO_PATH(path), segment, error)) return nullptr;
        std::unique_ptr<T> object(new T());
        segment << *object;
        std::string problem;
        if (segment.failed() || !segment.at_end() || !object->holds_together(&problem)) return nullptr;
        return object.release();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

}  // namespace

extern "C" {

ASMDB_DIE* asmdb_pdb_read_die(const char* path) { return path ? read_object<ASMDB_DIE>(path) : nullptr; }

ASMDB_DIRT* asmdb_pdb_read_dirt(const char* path) {
    return path ? read_object<ASMDB_DIRT>(asmdb_dirt_path(path)) : nullptr;
}

int asmdb_pdb_write_die(const ASMDB_DIE* die, const char* path, int compression_level) {
    return path ? write_object(die, path, compression_level) : 0;
}

int asmdb_pdb_write_dirt(const ASMDB_DIRT* dirt, const char* path, int compression_level) {
    return path ? write_object(dirt, asmdb_dirt_path(path), compression_level) : 0;
}

void asmdb_delete_die(ASMDB_DIE* die) { delete die; }

void asmdb_delete_dirt(ASMDB_DIRT* dirt) { delete dirt; }
}
