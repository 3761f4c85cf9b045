// The RSI text reader on arbitrary text.
//
// Input: the text of an RSI file.
//
// Property: the ASCII dump comes to a fixed point after one read-back (the dump's global
// block, switch booleans and MCF strings do not read back, so the second dump is the first
// that must read back to itself, and to an equal model). The dumps' date lines are left out
// of the comparison.
#include <cstdint>
#include <string>

#include "dev_routing_switch_info_body.h"
#include "fuzz_support.h"

namespace {

std::string dump_of(const DEV_ROUTING_SWITCH_INFO_BODY& body, const std::string& path) {
    FUZZ_CHECK(body.write_rsi_file(FIO_PATH(path), 0), "the dump could not be written");
    const std::string text = fuzz::read_file(path);
    const size_t date = text.find("### Information written on ");
    FUZZ_CHECK(date != std::string::npos, "the dump has no date line");
    return text.substr(0, date) + text.substr(text.find('\n', date));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fuzz::quiet_reports().clear();
    const std::string input = fuzz::scratch_file("input.rsi");
    const std::string first = fuzz::scratch_file("first_dump.rsi");
    const std::string second = fuzz::scratch_file("second_dump.rsi");
    const std::string third = fuzz::scratch_file("third_dump.rsi");
    fuzz::write_file(input, std::string(reinterpret_cast<const char*>(data), size));

    DEV_ROUTING_SWITCH_INFO_BODY given;
    given.read_rsi_file(FIO_PATH(input));
    dump_of(given, first);
    DEV_ROUTING_SWITCH_INFO_BODY again;
    again.read_rsi_file(FIO_PATH(first));
    const std::string dumped = dump_of(again, second);
    DEV_ROUTING_SWITCH_INFO_BODY stable;
    stable.read_rsi_file(FIO_PATH(second));
    FUZZ_CHECK(dump_of(stable, third) == dumped, "the dump read back dumps differently");
    FUZZ_CHECK(stable == again, "the dump read back holds another model");
    return 0;
}
