// Host paths and file-system queries.
#ifndef VELCORA_HOST_FIO_H
#define VELCORA_HOST_FIO_H

#include "host/host_export.h"

#include <cstdio>
#include <string>

// A path split into directory, base name and extension. The extension is the text after
// the last "." of the file name (without the dot); the directory has no trailing "/"
// unless it is the root itself.
class HOST_EXPORT FIO_PATH {
public:
    FIO_PATH() = default;
    FIO_PATH(const std::string& full_path) { set_full_path(full_path); }  // NOLINT: implicit by design
    FIO_PATH(const char* full_path) { set_full_path(full_path ? full_path : ""); }  // NOLINT
    FIO_PATH(const std::string& directory, const std::string& base_name,
             const std::string& extension)
        : m_directory(directory), m_base_name(base_name), m_extension(extension) {}

    const std::string& directory() const { return m_directory; }
    const std::string& base_name() const { return m_base_name; }
    const std::string& extension() const { return m_extension; }
    // base name, plus "." and the extension when there is one
    std::string file_name() const;
    // directory, "/", file name (the directory alone when there is no file name)
    std::string full_path() const;

    void set_full_path(const std::string& full_path);
    void set_directory(const std::string& directory) { m_directory = directory; }
    void set_base_name(const std::string& base_name) { m_base_name = base_name; }
    void set_extension(const std::string& extension) { m_extension = extension; }
    void set_file_name(const std::string& file_name);

    // The path of `relative` below this path's full path (an absolute `relative` stands alone).
    FIO_PATH join(const std::string& relative) const;
    // Removes "." parts, folds "dir/.." pairs and repeated separators.
    static std::string simplify(const std::string& path);

    bool empty() const { return m_directory.empty() && m_base_name.empty() && m_extension.empty(); }
    void clear() { m_directory.clear(); m_base_name.clear(); m_extension.clear(); }
    bool operator==(const FIO_PATH& o) const { return full_path() == o.full_path(); }
    bool operator!=(const FIO_PATH& o) const { return !(*this == o); }

private:
    std::string m_directory;
    std::string m_base_name;
    std::string m_extension;
};

class HOST_EXPORT FIO_FILE_SYSTEM {
public:
    static bool exists(const FIO_PATH& path);
    static bool exists(const std::string& path);
    static bool is_directory(const std::string& path);
    // Size in bytes, or -1 when the file cannot be examined.
    static long long file_size(const std::string& path);
    static bool remove(const std::string& path);
    static bool create_directories(const std::string& path);
    // The absolute path with ".", ".." and symbolic links resolved as far as the path exists
    // (one spelling per file, for telling whether two paths name the same file).
    static std::string canonical(const std::string& path);

    // Replacing a file without ever leaving it half written: write a temporary file beside
    // the target, make it durable, then rename it over the target. Each step answers false
    // with the system's reason (strerror's text) in `reason`.
    //
    // Creates a new file of a unique name in the directory of `target` (of the file it
    // names, when `target` is a symbolic link) and opens it for writing; `temporary`
    // receives its path. It gets the target's permissions, or those of a new file. A target
    // that exists but is neither a regular file nor a directory (a device, a pipe) cannot
    // be replaced: it is then opened for writing itself and `temporary` is left empty.
    static std::FILE* create_beside(const std::string& target, std::string& temporary, std::string& reason);
    // Hands the stream's buffered bytes to the system and waits until they are on disk.
    static bool sync(std::FILE* file, std::string& reason);
    // Renames `from` over `to` in one step (through a symbolic link `to` onto the file it
    // names), then makes the directory entry durable.
    static bool rename_over(const std::string& from, const std::string& to, std::string& reason);
};

#endif
