// The catalogue store's persistent reader (load_data_from_pdb with an explicit path).
//
// Input: byte 0 picks the file (mod 3): 0 the rest of the input as the file; 1 the rest as a
// segment payload under a valid header (magic, version, length, checksum), so mutations
// reach the record decoder instead of dying at the checksum; 2 that segment compressed as
// one zlib stream at level byte 1 (mod 9, plus 1). Byte 1 is skipped in every mode.
//
// Property: whatever loads writes back, and the written file loads to equal records, slot by
// slot (a field the writer drops or the reader takes differently breaks it).
#include <zlib.h>

#include <cstdint>
#include <string>

#include "dev_archive_export.h"
#include "dev_family_info_mgr_body.h"
#include "fuzz_support.h"

namespace {

void put_le(std::string& out, uint64_t v, int bytes) {
    for (int i = 0; i < bytes; ++i) out.push_back(static_cast<char>((v >> (8 * i)) & 0xFF));
}

// The segment's header as the persistent store writes it: "VDDB", format version 1, two
// reserved bytes, the payload length (8 bytes) and its CRC-32, little endian.
std::string wrapped(const std::string& payload) {
    std::string out("VDDB");
    put_le(out, 1, 2);
    put_le(out, 0, 2);
    put_le(out, payload.size(), 8);
    put_le(out, crc32(0L, reinterpret_cast<const Bytef*>(payload.data()), static_cast<uInt>(payload.size())),
           4);
    return out + payload;
}

std::string compressed(const std::string& bytes, int level) {
    uLongf size = compressBound(bytes.size());
    std::string out(size, '\0');
    FUZZ_CHECK(compress2(reinterpret_cast<Bytef*>(&out[0]), &size, reinterpret_cast<const Bytef*>(bytes.data()),
                         bytes.size(), level) == Z_OK,
               "zlib could not compress the segment");
    out.resize(size);
    return out;
}

template <typename DESC>
bool same(const DESC* a, const DESC* b) {
    return a == nullptr ? b == nullptr : b != nullptr && *a == *b;
}

void check_same_records(const DEV_FAMILY_INFO_MGR_BODY& a, const DEV_FAMILY_INFO_MGR_BODY& b) {
    for (int f = DEV_FAMILY_INVALID + 1; f < DEV_FAMILY_GENERIC; ++f)
        FUZZ_CHECK(same(a.find_desc_of(DEV_FAMILY_ENUM(f)), b.find_desc_of(DEV_FAMILY_ENUM(f))),
                   "a family record changed through write and load");
    for (int d = DEV_DEVICE_INVALID + 1; d < DEV_DEVICE_GENERIC; ++d)
        FUZZ_CHECK(same(a.find_desc_of(DEV_DEVICE_ENUM(d)), b.find_desc_of(DEV_DEVICE_ENUM(d))),
                   "a device record changed through write and load");
    for (int p = DEV_PART_INVALID + 1; p < DEV_PART_GENERIC; ++p)
        FUZZ_CHECK(same(a.find_desc_of(DEV_PART_ENUM(p)), b.find_desc_of(DEV_PART_ENUM(p))),
                   "a part record changed through write and load");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 2) return 0;
    fuzz::quiet_reports().clear();
    const std::string rest(reinterpret_cast<const char*>(data) + 2, size - 2);
    std::string file;
    switch (data[0] % 3) {
    case 0: file = rest; break;
    case 1: file = wrapped(rest); break;
    default: file = compressed(wrapped(rest), data[1] % 9 + 1); break;
    }
    const FIO_PATH input(fuzz::scratch_file("input.ddb"));
    const FIO_PATH output(fuzz::scratch_file("written.ddb"));
    fuzz::write_file(input.full_path(), file);

    DEV_FAMILY_INFO_MGR_BODY loaded;
    if (!loaded.load_data_from_pdb(DEV_FAMILY_GENERIC, DEV_FAMILY_DATA_TYPE_INFO, &input)) return 0;
    FUZZ_CHECK(loaded.write_data_to_pdb(DEV_FAMILY_GENERIC, DEV_FAMILY_DATA_TYPE_INFO, &output, 9),
               "loaded records could not be written");
    DEV_FAMILY_INFO_MGR_BODY reloaded;
    FUZZ_CHECK(reloaded.load_data_from_pdb(DEV_FAMILY_GENERIC, DEV_FAMILY_DATA_TYPE_INFO, &output),
               "written records do not load");
    check_same_records(loaded, reloaded);
    return 0;
}
