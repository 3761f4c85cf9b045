// The HDR (basic info) text reader on arbitrary text.
//
// Input: the text of an HDR file.
//
// Property: whatever the reader takes from the text, its ASCII dump is a fixed point: the
// dump read into a fresh body dumps to the same text, and reading that again gives an equal
// model. (The first read-back may number the ports differently from the input: the dump
// writes them in the order of the port-name table.)
#include <cstdint>
#include <string>

#include "dev_basic_info_body.h"
#include "fuzz_support.h"

namespace {

std::string dump_of(DEV_BASIC_INFO_BODY& body, const std::string& path) {
    FUZZ_CHECK(body.write_hdr_file(FIO_PATH(path), 0), "the dump could not be written");
    return fuzz::read_file(path);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fuzz::quiet_reports().clear();
    const std::string input = fuzz::scratch_file("input.hdr");
    const std::string first = fuzz::scratch_file("first_dump.hdr");
    const std::string second = fuzz::scratch_file("second_dump.hdr");
    fuzz::write_file(input, std::string(reinterpret_cast<const char*>(data), size));

    DEV_BASIC_INFO_BODY given;
    given.read_hdr_file(FIO_PATH(input));
    const std::string dumped = dump_of(given, first);

    DEV_BASIC_INFO_BODY again;
    again.read_hdr_file(FIO_PATH(first));
    FUZZ_CHECK(dump_of(again, second) == dumped, "the dump read back dumps differently");
    DEV_BASIC_INFO_BODY third;
    third.read_hdr_file(FIO_PATH(second));
    FUZZ_CHECK(third == again, "the dump read back twice holds another model");
    return 0;
}
