// The family-info text reader on arbitrary text.
//
// Input: the text of a family-info file.
//
// Property: whatever the reader takes from the text, its ASCII dump is a fixed point: the
// dump read into a fresh store dumps to the same text. (A record the reader kept but the dump
// cannot express, or a dump line the reader takes differently, breaks it.)
#include <cstdint>
#include <string>

#include "dev_archive_export.h"
#include "dev_family_info_mgr_body.h"
#include "fuzz_support.h"

namespace {

std::string dump_of(DEV_FAMILY_INFO_MGR_BODY& store, const std::string& path) {
    FUZZ_CHECK(store.write_family_data(DEV_FAMILY_GENERIC, DEV_FAMILY_DATA_TYPE_INFO, FIO_PATH(path),
                                       ZLIB_NO_COMPRESSION),
               "the dump could not be written");
    return fuzz::read_file(path);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fuzz::quiet_reports().clear();
    const std::string input = fuzz::scratch_file("input.part");
    const std::string first = fuzz::scratch_file("first_dump.part");
    const std::string second = fuzz::scratch_file("second_dump.part");
    fuzz::write_file(input, std::string(reinterpret_cast<const char*>(data), size));

    DEV_FAMILY_INFO_MGR_BODY given;
    given.read_family_data(FIO_PATH(input));
    const std::string dumped = dump_of(given, first);

    DEV_FAMILY_INFO_MGR_BODY again;
    again.read_family_data(FIO_PATH(first));
    FUZZ_CHECK(dump_of(again, second) == dumped, "the dump read back dumps differently");
    return 0;
}
