// The PART_INFO text reader on arbitrary text.
//
// Input: the text of a PART_INFO file.
//
// Property: whatever the reader takes from the text, its ASCII dump comes to a fixed point
// after one read-back: the dump writes the part's INT keys by their names, which the reader
// does not take back, so the second dump is the first that must read back to itself (and to
// an equal model).
#include <cstdint>
#include <string>

#include "dev_part_info.h"
#include "fuzz_support.h"

namespace {

std::string dump_of(const DEV_PART_INFO_BODY& body, const std::string& path) {
    FUZZ_CHECK(body.write_ascii_file(FIO_PATH(path), 0), "the dump could not be written");
    return fuzz::read_file(path);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fuzz::quiet_reports().clear();
    const std::string input = fuzz::scratch_file("input.part_info");
    const std::string first = fuzz::scratch_file("first_dump.part_info");
    const std::string second = fuzz::scratch_file("second_dump.part_info");
    const std::string third = fuzz::scratch_file("third_dump.part_info");
    fuzz::write_file(input, std::string(reinterpret_cast<const char*>(data), size));

    DEV_PART_INFO_BODY given;
    given.read_ascii_file(FIO_PATH(input));
    dump_of(given, first);
    DEV_PART_INFO_BODY again;
    again.read_ascii_file(FIO_PATH(first));
    const std::string dumped = dump_of(again, second);
    DEV_PART_INFO_BODY stable;
    stable.read_ascii_file(FIO_PATH(second));
    FUZZ_CHECK(dump_of(stable, third) == dumped, "the dump read back dumps differently");
    FUZZ_CHECK(stable == again, "the dump read back holds another model");
    return 0;
}
