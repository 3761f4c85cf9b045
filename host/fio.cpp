// Paths and file-system queries over std::filesystem.
#include "host/fio.h"

#include <filesystem>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;

std::string FIO_PATH::file_name() const {
    return m_extension.empty() ? m_base_name : m_base_name + "." + m_extension;
}

std::string FIO_PATH::full_path() const {
    std::string name = file_name();
    if (m_directory.empty()) return name;
    if (name.empty()) return m_directory;
    if (m_directory.back() == '/') return m_directory + name;
    return m_directory + "/" + name;
}

void FIO_PATH::set_file_name(const std::string& file_name) {
    size_t dot = file_name.rfind('.');
    if (dot == std::string::npos || dot == 0) {
        m_base_name = file_name;
        m_extension.clear();
    } else {
        m_base_name = file_name.substr(0, dot);
        m_extension = file_name.substr(dot + 1);
    }
}

void FIO_PATH::set_full_path(const std::string& full_path) {
    size_t slash = full_path.rfind('/');
    if (slash == std::string::npos) {
        m_directory.clear();
        set_file_name(full_path);
    } else {
        m_directory = slash == 0 ? "/" : full_path.substr(0, slash);
        set_file_name(full_path.substr(slash + 1));
    }
}

FIO_PATH FIO_PATH::join(const std::string& relative) const {
    if (!relative.empty() && relative[0] == '/') return FIO_PATH(relative);
    std::string base = full_path();
    if (base.empty()) return FIO_PATH(relative);
    if (base.back() != '/') base += '/';
    return FIO_PATH(base + relative);
}

std::string FIO_PATH::simplify(const std::string& path) {
    if (path.empty()) return path;
    bool absolute = path[0] == '/';
    std::vector<std::string> parts;
    size_t i = 0;
    while (i <= path.size()) {
        size_t j = path.find('/', i);
        if (j == std::string::npos) j = path.size();
        std::string part = path.substr(i, j - i);
        if (part.empty() || part == ".") {
        } else if (part == ".." && !parts.empty() && parts.back() != "..") {
            parts.pop_back();
        } else if (part == ".." && absolute) {
            // above the root stays at the root
        } else {
            parts.push_back(part);
        }
        i = j + 1;
    }
    std::string out = absolute ? "/" : "";
    for (size_t k = 0; k < parts.size(); ++k) {
        if (k) out += '/';
        out += parts[k];
    }
    if (out.empty()) out = ".";
    return out;
}

bool FIO_FILE_SYSTEM::exists(const FIO_PATH& path) { return exists(path.full_path()); }

bool FIO_FILE_SYSTEM::exists(const std::string& path) {
    if (path.empty()) return false;
    std::error_code ec;
    return fs::exists(path, ec);
}

bool FIO_FILE_SYSTEM::is_directory(const std::string& path) {
    std::error_code ec;
    return fs::is_directory(path, ec);
}

long long FIO_FILE_SYSTEM::file_size(const std::string& path) {
    std::error_code ec;
    auto n = fs::file_size(path, ec);
    return ec ? -1 : static_cast<long long>(n);
}

bool FIO_FILE_SYSTEM::remove(const std::string& path) {
    std::error_code ec;
    return fs::remove(path, ec);
}

bool FIO_FILE_SYSTEM::create_directories(const std::string& path) {
    std::error_code ec;
    fs::create_directories(path, ec);
    return !ec && fs::is_directory(path, ec);
}

std::string FIO_FILE_SYSTEM::canonical(const std::string& path) {
    std::error_code ec;
    fs::path p = fs::weakly_canonical(fs::absolute(path, ec), ec);
    return ec ? FIO_PATH::simplify(path) : p.lexically_normal().string();
}
