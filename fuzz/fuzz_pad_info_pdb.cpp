// The pad info's persistent reader (DEV_PAD_INFO_BODY::load_pad_from_pdb).
//
// Input: a persistent file as fuzz::persistent_file_from makes it (raw, or a payload under a
// valid header, plain or compressed).
//
// Property: whatever loads holds together (every pad's parent is the default pad, ids are
// positions, tables have their sizes), can be used (look-ups, the dump), writes back, and the
// written file loads to an equal model.
#include <cstdint>
#include <memory>
#include <string>

#include "dev_pad_info.h"
#include "fuzz_support.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::string file;
    if (!fuzz::persistent_file_from(data, size, file)) return 0;
    fuzz::quiet_reports().clear();
    const FIO_PATH input(fuzz::scratch_file("input_pad.ddb"));
    const FIO_PATH output(fuzz::scratch_file("written_pad.ddb"));
    fuzz::write_file(input.full_path(), file);

    std::unique_ptr<DEV_PAD_INFO_BODY> loaded(DEV_PAD_INFO_BODY::load_pad_from_pdb(input));
    if (!loaded) return 0;
    std::string problem;
    FUZZ_CHECK(loaded->check_structure(&problem), "a loaded body does not hold together");
    FUZZ_CHECK(loaded->write_pad_file(FIO_PATH(fuzz::scratch_file("loaded_dump.pad")), 0), "a loaded body has no dump");
    FUZZ_CHECK(loaded->write_pad_to_pdb(output, 9), "a loaded body could not be written");
    std::unique_ptr<DEV_PAD_INFO_BODY> reloaded(DEV_PAD_INFO_BODY::load_pad_from_pdb(output));
    FUZZ_CHECK(reloaded != nullptr, "a written body does not load");
    FUZZ_CHECK(*reloaded == *loaded, "a body changed through write and load");
    return 0;
}
