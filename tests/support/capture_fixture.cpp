#include "capture_fixture.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

TempDir::TempDir() {
    std::string templ = (std::filesystem::temp_directory_path() / "velcora_test_XXXXXX").string();
    char* p = mkdtemp(&templ[0]);
    m_path = p ? p : templ;
}

TempDir::~TempDir() {
    std::error_code ec;
    std::filesystem::remove_all(m_path, ec);
}

std::string TempDir::write(const std::string& name, const std::string& content) const {
    std::string full = file(name);
    std::filesystem::create_directories(std::filesystem::path(full).parent_path());
    std::ofstream out(full, std::ios::binary);
    out << content;
    return full;
}

std::string read_file(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream ss;
    ss << in.rdbuf();
    return ss.str();
}
