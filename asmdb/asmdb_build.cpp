// The descriptions of a device built from its device data.
//
// The die: the basic info's grid of INT_NUM_COLUMNS x INT_NUM_ROWS tiles; the columns that
// 2D_INT_LAB_COLUMNS, _RAM_S_, _RAM_M_, _RAM_L_ and _DSP_COLUMNS list ({column, first row,
// last row, ...}) hold tiles of that kind, the I/O columns and rows ({column, first row, last
// row} and {row, first column, last column}) I/O tiles, the rest is EMPTY. A tile's
// configuration bits are its column's frames (from the column's first frame, which the
// bottom row of 2D_INT_CONFIG_FRAME_MAP gives, to the next column's) times the frame's bits,
// shared by the column's rows; a kind has the mean of its tiles. Without a frame map the
// device's INT_CONFIG_BITS are shared evenly.
//
// The routing: every routing switch counts in the tile kind its location names (the I/O
// tile column's switches in the I/O tiles; locations that are no tile kind, such as the
// clock networks, stand as kinds of their own), once per wire segment it drives per
// output; each of its pass trees serves those switches.
#include <algorithm>
#include <map>

#include "asmdb.h"
#include "dev_basic_info_body.h"
#include "dev_routing_switch_info_body.h"
#include "host/dstr.h"

namespace {

enum KIND : uint8_t { EMPTY, LAB, RAM_S, RAM_M, RAM_L, DSP, IO, KIND_COUNT };
const char* const KIND_NAMES[KIND_COUNT] = {"EMPTY", "LAB", "RAM_S", "RAM_M", "RAM_L", "DSP", "IO"};
// Grids larger than this are no grid of a real die.
const int64_t MAX_TILES = 1 << 24;

const DEV_2D_INT_ARRAY& table(const DEV_BASIC_INFO_BODY& b, DEV_BASIC_INFO_2D_INT_DATA_ENUM key) {
    static const DEV_2D_INT_ARRAY none;
    return b.is_valid_2d_int_enum(key) ? b.get_2d_int_data(key) : none;
}

int number(const DEV_BASIC_INFO_BODY& b, DEV_BASIC_INFO_INT_DATA_ENUM key) {
    int value = 0;
    b.get_int_data(key, &value);
    return value;
}

// Marks the tiles of a run: along a column (`vertical`) or along a row.
void mark(ASMDB_DIE& die, const std::vector<int>& run, bool vertical, KIND kind) {
    if (run.size() < 3) return;
    const int at = run[0], first = std::max(0, run[1]), last = run[2];
    const int along = vertical ? die.rows : die.columns, across = vertical ? die.columns : die.rows;
    if (at < 0 || at >= across) return;
    for (int i = first; i <= last && i < along; ++i) {
        const int column = vertical ? at : i, row = vertical ? i : at;
        die.tiles[static_cast<size_t>(row) * die.columns + column] = kind;
    }
}

// The configuration bits of each tile.
std::vector<int64_t> tile_bits(const DEV_BASIC_INFO_BODY& b, const ASMDB_DIE& die) {
    const size_t count = die.tiles.size();
    const DEV_2D_INT_ARRAY& frames = table(b, DEV_BASIC_INFO_2D_INT_CONFIG_FRAME_MAP);
    const int64_t frame_bits = number(b, DEV_BASIC_INFO_INT_CONFIG_FRAME_BITS);
    if (frames.size() != static_cast<size_t>(die.rows) || frames.back().size() < static_cast<size_t>(die.columns) ||
        frame_bits <= 0)
        return std::vector<int64_t>(count, std::max<int64_t>(0, number(b, DEV_BASIC_INFO_INT_CONFIG_BITS)) /
                                               static_cast<int64_t>(std::max<size_t>(1, count)));
    // The map's last row (the bottom row) holds each column's first frame.
    const std::vector<int>& first = frames.back();
    const int64_t total = number(b, DEV_BASIC_INFO_INT_CONFIG_FRAMES);
    std::vector<int64_t> bits(count, 0);
    for (int column = 0; column < die.columns; ++column) {
        const int64_t end = column + 1 < die.columns ? first[column + 1] : total;
        const int64_t per_tile = std::max<int64_t>(0, end - first[column]) * frame_bits / die.rows;
        for (int row = 0; row < die.rows; ++row) bits[static_cast<size_t>(row) * die.columns + column] = per_tile;
    }
    return bits;
}

}  // namespace

ASMDB_DIE* asmdb_build_die(const DEV_BASIC_INFO_BODY& b) {
    auto* die = new ASMDB_DIE;
    die->device = b.is_valid_string_enum(DEV_BASIC_INFO_STRING_DEVICE_NAME)
                      ? b.get_string_data(DEV_BASIC_INFO_STRING_DEVICE_NAME)
                      : std::string();
    die->columns = std::max(1, number(b, DEV_BASIC_INFO_INT_NUM_COLUMNS));
    die->rows = std::max(1, number(b, DEV_BASIC_INFO_INT_NUM_ROWS));
    if (static_cast<int64_t>(die->columns) * die->rows > MAX_TILES) die->columns = die->rows = 1;
    die->tiles.assign(static_cast<size_t>(die->columns) * die->rows, EMPTY);
    const std::pair<DEV_BASIC_INFO_2D_INT_DATA_ENUM, KIND> columns[] = {
        {DEV_BASIC_INFO_2D_INT_LAB_COLUMNS, LAB},     {DEV_BASIC_INFO_2D_INT_RAM_S_COLUMNS, RAM_S},
        {DEV_BASIC_INFO_2D_INT_RAM_M_COLUMNS, RAM_M}, {DEV_BASIC_INFO_2D_INT_RAM_L_COLUMNS, RAM_L},
        {DEV_BASIC_INFO_2D_INT_DSP_COLUMNS, DSP},     {DEV_BASIC_INFO_2D_INT_IO_COLUMNS, IO}};
    for (const auto& c : columns)
        for (const std::vector<int>& run : table(b, c.first)) mark(*die, run, true, c.second);
    for (const std::vector<int>& run : table(b, DEV_BASIC_INFO_2D_INT_IO_ROWS)) mark(*die, run, false, IO);

    const std::vector<int64_t> bits = tile_bits(b, *die);
    int64_t sum[KIND_COUNT] = {}, tiles[KIND_COUNT] = {};
    for (size_t i = 0; i < bits.size(); ++i) {
        sum[die->tiles[i]] += bits[i];
        ++tiles[die->tiles[i]];
    }
    for (int k = 0; k < KIND_COUNT; ++k) {
        ASMDB_TILE_KIND kind;
        kind.name = KIND_NAMES[k];
        kind.config_bits = tiles[k] ? static_cast<int32_t>(std::min<int64_t>(INT32_MAX, sum[k] / tiles[k])) : 0;
        // The mode bits: one in a hundred of the kind's bits, at most 64, in a fixed pattern.
        const int mode_bits = static_cast<int>(std::min<int64_t>(64, kind.config_bits / 100));
        for (int i = 0; i < mode_bits; ++i)
            kind.defaults.m_data.push_back(DB_BIT_SETTING(static_cast<DB_BIT_SETTING::VALUE>((i * 7 + k) % 3)));
        die->kinds.push_back(std::move(kind));
    }
    return die;
}

ASMDB_DIRT* asmdb_build_dirt(const ASMDB_DIE& die, const DEV_ROUTING_SWITCH_INFO_BODY& routing) {
    auto* dirt = new ASMDB_DIRT;
    dirt->device = die.device;
    std::map<std::string, size_t> kind_index;
    std::vector<std::map<int, int>> trees;
    for (const DEV_ROUTING_SWITCH_DESC* s : routing.get_routing_switches()) {
        const DEV_ROUTING_SWITCH_DESC_BODY& body = *s->get_body();
        const DEV_ROUTING_SWITCH_ENUM key = body.get_routing_switch_enum();
        if (!dstr_is_valid_dev_routing_switch_enum(key)) continue;
        int location = DEV_LOCATION_LAB, outputs = 1, length = 1;
        body.get_int_data(DEV_ROUTING_SWITCH_DESC_INT_LOCATION, &location);
        body.get_int_data(DEV_ROUTING_SWITCH_DESC_INT_NUM_OUTPUTS, &outputs);
        body.get_int_data(DEV_ROUTING_SWITCH_DESC_INT_WIRE_LENGTH, &length);
        const char* name = dstr_is_valid_dev_location_enum(location) ? dstr_get_debug_string(DEV_LOCATION_ENUM(location))
                                                                      : "LAB";
        const std::string kind = std::string(name) == "IO_TILE_COL" ? "IO" : name;
        auto found = kind_index.emplace(kind, dirt->kinds.size());
        if (found.second) {
            dirt->kinds.push_back(ASMDB_TILE_ROUTING{kind, {}, {}});
            trees.emplace_back();
        }
        const int count = std::max(1, outputs) * std::max(1, length);
        dirt->kinds[found.first->second].switches.push_back(ASMDB_COUNT{key, count});
        for (DEV_PASS_TREE_ENUM tree : body.get_pass_tree_enums())
            if (dstr_is_valid_dev_pass_tree_enum(tree)) trees[found.first->second][tree] += count;
    }
    for (size_t i = 0; i < trees.size(); ++i)
        for (const auto& t : trees[i]) dirt->kinds[i].pass_trees.push_back(ASMDB_COUNT{t.first, t.second});
    return dirt;
}
