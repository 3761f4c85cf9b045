// The assembler database module (libvelcora_asmdb): the bit-stream assembler's description
// of a device's die and of its routing, stored in the module's own ".ddb" form through the
// device library's archive. The device library loads the module on demand and calls the six
// functions below by name (DEV_ASM_INFO); the types are opaque to it.
//
//   ASMDB_DIE   the die: a grid of columns x rows tiles, each tile of one kind; each kind
//               with its configuration-bit count and the default settings of its mode bits.
//   ASMDB_DIRT  the routing: per tile kind, how many switches of each routing-switch kind a
//               tile holds, and how many of them each pass tree serves.
//
// Both are read and written under the die file's path; the routing description lies beside
// the die file, under the same name with "_die" replaced by "_dirt" (or "_dirt" appended).
// A file that is missing, foreign, truncated or corrupted reads as null; a failed write
// leaves the previous file as it was.
#ifndef VELCORA_ASMDB_H
#define VELCORA_ASMDB_H

#include <cstdint>
#include <string>
#include <vector>

#include "db_bit_setting.h"

#define ASMDB_EXPORT __attribute__((visibility("default")))

class DEV_BASIC_INFO_BODY;
class DEV_ROUTING_SWITCH_INFO_BODY;

struct ASMDB_TILE_KIND {
    std::string name;                     // "LAB", "RAM_M", "IO", "EMPTY", ...
    int32_t config_bits = 0;              // per tile
    DB_BIT_SETTING_ARRAY_SHELL defaults;  // the mode bits' settings after power-up
    bool operator==(const ASMDB_TILE_KIND& o) const {
        return name == o.name && config_bits == o.config_bits && defaults == o.defaults;
    }
};

struct ASMDB_EXPORT ASMDB_DIE {
    std::string device;
    int32_t columns = 0;
    int32_t rows = 0;
    std::vector<ASMDB_TILE_KIND> kinds;
    std::vector<uint8_t> tiles;  // the kind of each tile, row by row from (0, 0)

    const ASMDB_TILE_KIND* kind_at(int column, int row) const;
    int64_t total_config_bits() const;
    // The grid is complete and names only kinds it has; false with the reason.
    bool holds_together(std::string* problem) const;
    bool operator==(const ASMDB_DIE& o) const {
        return device == o.device && columns == o.columns && rows == o.rows && kinds == o.kinds && tiles == o.tiles;
    }
};

// A count of one enumerator (a routing-switch or pass-tree kind).
struct ASMDB_COUNT {
    int32_t key = 0;
    int32_t count = 0;
    bool operator==(const ASMDB_COUNT& o) const { return key == o.key && count == o.count; }
};

struct ASMDB_TILE_ROUTING {
    std::string kind;                      // a tile kind of the die, or a network without tiles
    std::vector<ASMDB_COUNT> switches;     // DEV_ROUTING_SWITCH_ENUM, per tile
    std::vector<ASMDB_COUNT> pass_trees;   // DEV_PASS_TREE_ENUM, switches served per tile
    bool operator==(const ASMDB_TILE_ROUTING& o) const {
        return kind == o.kind && switches == o.switches && pass_trees == o.pass_trees;
    }
};

struct ASMDB_EXPORT ASMDB_DIRT {
    std::string device;
    std::vector<ASMDB_TILE_ROUTING> kinds;

    // The switch and pass-tree enumerators are in range and every count positive; false
    // with the reason.
    bool holds_together(std::string* problem) const;
    bool operator==(const ASMDB_DIRT& o) const { return device == o.device && kinds == o.kinds; }
};

extern "C" {
ASMDB_EXPORT ASMDB_DIE* asmdb_pdb_read_die(const char* path);
ASMDB_EXPORT ASMDB_DIRT* asmdb_pdb_read_dirt(const char* path);
// Non-zero on success.
ASMDB_EXPORT int asmdb_pdb_write_die(const ASMDB_DIE* die, const char* path, int compression_level);
ASMDB_EXPORT int asmdb_pdb_write_dirt(const ASMDB_DIRT* dirt, const char* path, int compression_level);
ASMDB_EXPORT void asmdb_delete_die(ASMDB_DIE* die);
ASMDB_EXPORT void asmdb_delete_dirt(ASMDB_DIRT* dirt);
}

// The routing description's path for a die file's path.
ASMDB_EXPORT std::string asmdb_dirt_path(const std::string& die_path);

// The descriptions of a device from its device data: the die from the basic info's grid
// (columns and rows, the columns of each kind, the I/O rows and columns, the configuration
// frames), the routing from the routing switches' locations, sizes and pass trees. New
// objects, for asmdb_delete_die / asmdb_delete_dirt.
ASMDB_EXPORT ASMDB_DIE* asmdb_build_die(const DEV_BASIC_INFO_BODY& basic_info);
ASMDB_EXPORT ASMDB_DIRT* asmdb_build_dirt(const ASMDB_DIE& die, const DEV_ROUTING_SWITCH_INFO_BODY& routing);

#endif
