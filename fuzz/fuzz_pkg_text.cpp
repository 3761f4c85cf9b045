// The PKG text reader on arbitrary text.
//
// Input: the text of a PKG file.
//
// Property: whatever the reader takes from the text, its ASCII dump is a fixed point: the
// dump read into a fresh package dumps to the same text, and reading that again gives an
// equal model.
#include <cstdint>
#include <memory>
#include <string>

#include "dev_pkg_info.h"
#include "fuzz_support.h"
#include "host/cfg.h"

namespace {

std::unique_ptr<DEV_PKG_INFO_BODY> read(const std::string& path) {
    auto body = std::make_unique<DEV_PKG_INFO_BODY>();
    body->read_pkg_file(FIO_PATH(path));
    return body;
}

std::string dump_of(const DEV_PKG_INFO_BODY& body, const std::string& path) {
    FUZZ_CHECK(body.write_pkg_file(FIO_PATH(path), 0), "the dump could not be written");
    return fuzz::read_file(path);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    // Allocating pins is the reader's right; a few thousand keep an input fast.
    static const bool capped = (cfg_set_value("dev_max_pin_count", "1000"), true);
    (void)capped;
    fuzz::quiet_reports().clear();
    const std::string input = fuzz::scratch_file("input.pkg");
    fuzz::write_file(input, std::string(reinterpret_cast<const char*>(data), size));

    const std::string dumped = dump_of(*read(input), fuzz::scratch_file("first_dump.pkg"));
    std::unique_ptr<DEV_PKG_INFO_BODY> again = read(fuzz::scratch_file("first_dump.pkg"));
    FUZZ_CHECK(dump_of(*again, fuzz::scratch_file("second_dump.pkg")) == dumped, "the dump read back dumps differently");
    std::unique_ptr<DEV_PKG_INFO_BODY> third = read(fuzz::scratch_file("second_dump.pkg"));
    FUZZ_CHECK(*third == *again, "the dump read back twice holds another model");
    return 0;
}
