// The catalogue store's persistent reader (load_data_from_pdb with an explicit path).
//
// Input: a persistent file as fuzz::persistent_file_from makes it (raw, or a payload under a
// valid header, plain or compressed).
//
// Property: whatever loads writes back, and the written file loads to equal records, slot by
// slot (a field the writer drops or the reader takes differently breaks it).
#include <cstdint>
#include <string>

#include "dev_archive_export.h"
#include "dev_family_info_mgr_body.h"
#include "fuzz_support.h"

namespace {

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
    std::string file;
    if (!fuzz::persistent_file_from(data, size, file)) return 0;
    fuzz::quiet_reports().clear();
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
