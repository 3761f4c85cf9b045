// The bundled part info and routing switches: every compiled file equals the text it was
// compiled from (kept in the build's staging folder), every text compiles and loads back
// equal, and every dump of them reads back to the same data (the part's INT keys and the
// RSI dump's global block aside, which the dumps do not carry back). (A sanitizer build
// takes every VELCORA_INSTALLATION_SAMPLE-th file only.)
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <regex>
#include <string>

#include "capture_fixture.h"
#include "dev_part_info.h"
#include "dev_routing_switch_info_body.h"

namespace fs = std::filesystem;

namespace {

using InstallationData = CaptureTest;

// Reads a file of either form.
template <typename BODY>
std::unique_ptr<BODY> load(const std::string& path);
template <>
std::unique_ptr<DEV_PART_INFO_BODY> load(const std::string& path) {
    if (path.size() > 4 && path.compare(path.size() - 4, 4, ".ddb") == 0)
        return std::unique_ptr<DEV_PART_INFO_BODY>(DEV_PART_INFO_BODY::load_from_pdb(FIO_PATH(path)));
    auto body = std::make_unique<DEV_PART_INFO_BODY>();
    return body->read_ascii_file(FIO_PATH(path)) ? std::move(body) : nullptr;
}
template <>
std::unique_ptr<DEV_ROUTING_SWITCH_INFO_BODY> load(const std::string& path) {
    if (path.size() > 4 && path.compare(path.size() - 4, 4, ".ddb") == 0)
        return std::unique_ptr<DEV_ROUTING_SWITCH_INFO_BODY>(DEV_ROUTING_SWITCH_INFO_BODY::load_rsi_from_pdb(FIO_PATH(path)));
    auto body = std::make_unique<DEV_ROUTING_SWITCH_INFO_BODY>();
    return body->read_rsi_file(FIO_PATH(path)) ? std::move(body) : nullptr;
}

bool write_pdb(DEV_PART_INFO_BODY& body, const std::string& path) { return body.write_to_pdb(FIO_PATH(path), 1); }
bool write_pdb(DEV_ROUTING_SWITCH_INFO_BODY& body, const std::string& path) {
    return body.write_rsi_to_pdb(FIO_PATH(path), 1);
}

// The dump read back equals the data but for what the dump does not carry: the INT keys of a
// part info (written as their names), the global record and the switches' BOOL keys of an RSI
// file. So the second dump is compared with the first.
template <typename BODY>
std::string dump(const BODY& body, const std::string& path);
template <>
std::string dump(const DEV_PART_INFO_BODY& body, const std::string& path) {
    EXPECT_TRUE(body.write_ascii_file(FIO_PATH(path), 0));
    return read_file(path);
}
template <>
std::string dump(const DEV_ROUTING_SWITCH_INFO_BODY& body, const std::string& path) {
    EXPECT_TRUE(body.write_rsi_file(FIO_PATH(path), 0));
    const std::string text = read_file(path);
    return text.substr(text.find('\n', 60));  // from after the date
}

template <typename BODY>
void check_kind(const std::string& extension, int* compiled, int* texts) {
    TempDir dir;
    // The compiled files: each against its staged text.
    std::ifstream manifest(std::string(VELCORA_DEVICE_STAGING) + "/device_manifest.txt");
    std::string line;
    int n = 0;
    while (std::getline(manifest, line)) {
        const size_t tab = line.find('\t');
        const std::string text = line.substr(0, tab), target = line.substr(tab + 1);
        if (text.size() < extension.size() || text.compare(text.size() - extension.size(), extension.size(), extension) != 0 ||
            n++ % VELCORA_INSTALLATION_SAMPLE != 0)
            continue;
        std::unique_ptr<BODY> from_text = load<BODY>(text), from_ddb = load<BODY>(target);
        ASSERT_TRUE(from_text && from_ddb) << target;
        EXPECT_TRUE(*from_text == *from_ddb) << target;
        ++*compiled;
        // One in twenty also reads back its dump to the same dump.
        if (*compiled % 20 == 1) {
            dump(*from_ddb, dir.file("first" + extension));
            std::unique_ptr<BODY> again = load<BODY>(dir.file("first" + extension));
            ASSERT_NE(again, nullptr);
            const std::string second = dump(*again, dir.file("second" + extension));
            std::unique_ptr<BODY> third = load<BODY>(dir.file("second" + extension));
            ASSERT_NE(third, nullptr);
            EXPECT_EQ(second, dump(*third, dir.file("third" + extension))) << target;
        }
    }
    // The texts installed as they are: each compiles and loads back equal (a sample: writing
    // waits for the disk).
    for (const auto& e : fs::recursive_directory_iterator(fs::path(VELCORA_BUNDLED_ROOT) / "ddb")) {
        if (e.path().extension() != extension || n++ % (17 * VELCORA_INSTALLATION_SAMPLE) != 0) continue;
        std::unique_ptr<BODY> from_text = load<BODY>(e.path().string());
        ASSERT_NE(from_text, nullptr) << e.path();
        const std::string path = dir.file("compiled" + extension + ".ddb");
        ASSERT_TRUE(write_pdb(*from_text, path)) << e.path();
        std::unique_ptr<BODY> loaded = load<BODY>(path);
        ASSERT_NE(loaded, nullptr) << e.path();
        EXPECT_TRUE(*loaded == *from_text) << e.path();
        ++*texts;
    }
}

TEST_F(InstallationData, PartInfoAndRoutingSwitchesAreTheSameInEitherForm) {
    int compiled = 0, texts = 0;
    check_kind<DEV_PART_INFO_BODY>(".part_info", &compiled, &texts);
    check_kind<DEV_ROUTING_SWITCH_INFO_BODY>(".rsi", &compiled, &texts);
    EXPECT_GT(compiled, 0);
    EXPECT_GT(texts, 0);
    // Reading the dumps back reports what they always made of the data: a part info's INT
    // keys, an RSI file's global block and switch enumerators (set by the blocks' openers
    // already); nothing else may be reported.
    for (const std::string& e : errors()) {
        const bool expected = e.rfind("Invalid int value: INT_", 0) == 0 ||
                              e == "!this->m_int_enum_is_valid.get_value(key)" ||
                              std::regex_match(e, std::regex(R"(Syntax error in file (first|second)\.rsi, line [0-9]+: )"
                                                             R"((global_data|\t?INT_.*|2D_INT_.*|\t\{.*|end))"));
        EXPECT_TRUE(expected) << e;
    }
}

}  // namespace
