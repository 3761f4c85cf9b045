// Paths and file-system queries over std::filesystem.
#include "host/fio.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
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

namespace {

// The file a write to `target` replaces: a symbolic link is followed to the file it names,
// so the link stays and the file it points at gets the new content.
std::string replaced_file(const std::string& target) {
    std::error_code ec;
    if (!fs::is_symlink(target, ec)) return target;
    fs::path resolved = fs::canonical(target, ec);
    return ec ? target : resolved.string();
}

std::string directory_of(const std::string& path) {
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string system_reason(int error) { return std::strerror(error); }

}  // namespace

std::FILE* FIO_FILE_SYSTEM::create_beside(const std::string& target, std::string& temporary, std::string& reason) {
    temporary.clear();
    const std::string file = replaced_file(target);
    struct stat st;
    const bool exists = ::stat(file.c_str(), &st) == 0;
    if (exists && !S_ISREG(st.st_mode) && !S_ISDIR(st.st_mode)) {
        std::FILE* direct = std::fopen(file.c_str(), "wb");
        if (!direct) reason = system_reason(errno);
        return direct;
    }
    const size_t slash = file.rfind('/');
    const std::string name = slash == std::string::npos ? file : file.substr(slash + 1);
    std::string pattern = (slash == std::string::npos ? std::string() : file.substr(0, slash + 1)) + "." +
                          name + ".tmp.XXXXXX";
    const int fd = ::mkstemp(&pattern[0]);
    if (fd < 0) {
        reason = system_reason(errno);
        return nullptr;
    }
    mode_t mode;
    if (exists && S_ISREG(st.st_mode)) {
        mode = st.st_mode & 07777;
    } else {
        const mode_t mask = ::umask(0);
        ::umask(mask);
        mode = 0666 & ~mask;
    }
    std::FILE* stream = ::fchmod(fd, mode) == 0 ? ::fdopen(fd, "wb") : nullptr;
    if (!stream) {
        reason = system_reason(errno);
        ::close(fd);
        ::unlink(pattern.c_str());
        return nullptr;
    }
    temporary = pattern;
    return stream;
}

bool FIO_FILE_SYSTEM::sync(std::FILE* file, std::string& reason) {
    if (std::fflush(file) != 0) {
        reason = system_reason(errno);
        return false;
    }
    // A pipe or a device has nothing to make durable (EINVAL).
    if (::fsync(::fileno(file)) != 0 && errno != EINVAL) {
        reason = system_reason(errno);
        return false;
    }
    return true;
}

bool FIO_FILE_SYSTEM::rename_over(const std::string& from, const std::string& to, std::string& reason) {
    const std::string file = replaced_file(to);
    if (::rename(from.c_str(), file.c_str()) != 0) {
        reason = system_reason(errno);
        return false;
    }
    // The new entry survives a crash once its directory is on disk too; a directory that
    // cannot be synchronised (some file systems refuse) leaves the rename done all the same.
    const int dir = ::open(directory_of(file).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (dir >= 0) {
        ::fsync(dir);
        ::close(dir);
    }
    return true;
}
