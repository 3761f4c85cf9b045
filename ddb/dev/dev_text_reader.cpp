// The text-reader engine: files, line counting, the pending line, includes and located
// reports shared by every block-structured reader.
#include "dev_text_reader.h"

#include <cstring>

#include "host/msg.h"

namespace {

bool is_word_char(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

bool is_blank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f'; }

}  // namespace

bool DEV_WORD::operator==(const char* word) const {
    return std::strlen(word) == length && std::memcmp(begin, word, length) == 0;
}

bool DEV_WORD::starts_with(const char* prefix) const {
    const size_t n = std::strlen(prefix);
    return n <= length && std::memcmp(begin, prefix, n) == 0;
}

DEV_WORD dev_first_word(const std::string& line) {
    size_t i = 0;
    const size_t n = line.size();
    while (i < n && is_blank(line[i])) ++i;
    size_t j = i;
    while (j < n && is_word_char(line[j])) ++j;
    return DEV_WORD{line.data() + i, j - i};
}

namespace {
const DEV_REGEXP& blank_pattern() {
    static const DEV_REGEXP pattern("^\\s*$");
    return pattern;
}
const DEV_REGEXP& comment_pattern() {
    static const DEV_REGEXP pattern("^\\s*#.*$");
    return pattern;
}
}  // namespace

DEV_SKIPPED_LINES::DEV_SKIPPED_LINES() : m_blank(blank_pattern()), m_comment(comment_pattern()) {}

bool DEV_SKIPPED_LINES::matches(const std::string& line) {
    const size_t i = line.find_first_not_of(" \t\n\r\f");
    if (i == std::string::npos) return m_blank.match(line);
    return line[i] == '#' && m_comment.match(line);
}

// ---------------------------------------------------------------------------------------
// The reader

DEV_TEXT_READER::DEV_TEXT_READER(DEV_INCLUDE_POLICY policy) : m_policy(policy) {}

std::string DEV_TEXT_READER::chain_text(const std::string& next) const {
    std::string chain;
    for (const DEV_TEXT_FILE* f : m_files) {
        chain += f->path().full_path();
        chain += " -> ";
    }
    return chain + next;
}

bool DEV_TEXT_READER::resolve_include(const std::string& written, FIO_PATH* path) {
    *path = FIO_PATH(written);
    const DEV_TEXT_FILE* includer = current();
    if (m_policy == DEV_INCLUDE_BESIDE_INCLUDER && includer && !includer->path().directory().empty() &&
        (written.empty() || written[0] != '/')) {
        const std::string& directory = includer->path().directory();
        DEV_DEBUG("directory %s", directory.c_str());
        const std::string resolved = FIO_PATH::simplify(directory + "/" + written);
        DEV_DEBUG("File %s's relative include file %s resolved to %s", includer->path().full_path().c_str(),
                  written.c_str(), resolved.c_str());
        *path = FIO_PATH(resolved);
    }
    const std::string full = path->full_path();
    if (m_files.size() >= static_cast<size_t>(MAX_INCLUDE_DEPTH)) {
        error("Refused to include " + full + ": includes nest deeper than " + std::to_string(MAX_INCLUDE_DEPTH) +
              " files (" + chain_text(full) + ")");
        return false;
    }
    const std::string identity = FIO_FILE_SYSTEM::canonical(full);
    for (const std::string& open : m_identities) {
        if (open == identity) {
            error("Refused to include " + full + ": it is already being read (" + chain_text(full) + ")");
            return false;
        }
    }
    return true;
}

namespace {

// "Error at <source>, line <line> parsing file <file>, line number <n> - <message>".
std::string located(const char* what, const char* source, int line, const DEV_TEXT_FILE& file,
                    const std::string& message) {
    return std::string(what) + " at " + msg_source_name(source) + ", line " + std::to_string(line) +
           " parsing file " + file.path().full_path() + ", line number " + std::to_string(file.line_number()) + " - " +
           message;
}

}  // namespace

void DEV_TEXT_READER::diagnose(DEV_TEXT_DIAGNOSTIC::KIND kind, const std::string& message,
                               std::vector<std::string> reports) {
    const DEV_TEXT_FILE* file = current();
    DEV_TEXT_DIAGNOSTICS::add(DEV_TEXT_DIAGNOSTIC{kind, file ? file->path().full_path() : std::string(),
                                                  file ? file->line_number() : 0, message, std::move(reports)});
}

void DEV_TEXT_READER::error(const std::string& message, const char* source, int line) {
    std::vector<std::string> reports;
    if (const DEV_TEXT_FILE* file = current()) {
        reports.push_back(located("Error", source, line, *file, message));
        DEV_DEBUG("%s", reports.back().c_str());
    }
    MSG_INTERNAL_ERROR_report(message, "DEV", msg_source_name(source).c_str(), line);
    reports.push_back(message);
    diagnose(DEV_TEXT_DIAGNOSTIC::ERROR, message, std::move(reports));
}

void DEV_TEXT_READER::raise(const std::string& message, const char* source, int line) {
    MSG_INTERNAL_ERROR_report(message, "DEV", msg_source_name(source).c_str(), line);
    diagnose(DEV_TEXT_DIAGNOSTIC::ERROR, message, {message});
}

void DEV_TEXT_READER::warning(const std::string& message, const char* source, int line) {
    const DEV_TEXT_FILE* file = current();
    const std::string text = file ? located("Warning", source, line, *file, message) : message;
    DEV_DEBUG("%s", text.c_str());
    diagnose(DEV_TEXT_DIAGNOSTIC::WARNING, message, {text});
}

void DEV_TEXT_READER::note(const std::string& message) {
    DEV_DEBUG("%s", message.c_str());
    diagnose(DEV_TEXT_DIAGNOSTIC::NOTE, message, {message});
}

// ---------------------------------------------------------------------------------------
// Diagnostics

namespace {
// Per thread, like the host's message captures: a reader reports to the capture of its own thread.
thread_local DEV_TEXT_DIAGNOSTICS* innermost_diagnostics = nullptr;
}

DEV_TEXT_DIAGNOSTICS::DEV_TEXT_DIAGNOSTICS() : m_previous(innermost_diagnostics) { innermost_diagnostics = this; }

DEV_TEXT_DIAGNOSTICS::~DEV_TEXT_DIAGNOSTICS() { innermost_diagnostics = m_previous; }

void DEV_TEXT_DIAGNOSTICS::add(DEV_TEXT_DIAGNOSTIC diagnostic) {
    if (innermost_diagnostics) innermost_diagnostics->m_diagnostics.push_back(std::move(diagnostic));
}

std::string DEV_TEXT_READER::syntax_error_message(const std::string& text) const {
    const DEV_TEXT_FILE* file = current();
    const std::string name = file ? file->path().file_name() : std::string();
    return "Syntax error in file " + name + ", line " + std::to_string(file ? file->line_number() : 0) + ": " + text;
}

// ---------------------------------------------------------------------------------------
// Files

DEV_TEXT_FILE::DEV_TEXT_FILE(DEV_TEXT_READER& reader, const FIO_PATH& path, const DEV_TEXT_OPEN_REPORTS& reports)
    : m_reader(reader), m_path(path), m_archive(ZLIB_NO_COMPRESSION) {
    m_reader.m_files.push_back(this);
    m_reader.m_identities.push_back(FIO_FILE_SYSTEM::canonical(path.full_path()));
    const std::string full = path.full_path();
    const bool exists = FIO_FILE_SYSTEM::exists(path);
    const bool directory = exists && FIO_FILE_SYSTEM::is_directory(full);
    // A directory is no file to read (the archive would open it and fail on the first read).
    if (!directory) m_open = m_archive.open(path, DEV_ARCHIVE::READ) && m_archive.good();
    if (m_open) return;
    std::vector<std::string> texts;
    // The archive's own note on a missing file stands for the same problem.
    if (!exists) texts.push_back("File " + full + " does not exist.");
    if (!exists && reports.missing_file) {
        std::string text(reports.missing_file);
        const size_t at = text.find("%s");
        if (at != std::string::npos) text.replace(at, 2, full);
        DEV_INTERNAL_ERROR(text);
        texts.push_back(text);
    }
    if (directory) DEV_DEBUG("%s is a directory, not a file", full.c_str());
    DEV_INTERNAL_ERROR(reports.not_good);
    texts.push_back(reports.not_good);
    // The diagnostic stands at the include line that named the file, if one did.
    const std::string why = !exists ? "no such file" : directory ? "it is a directory" : "it cannot be read";
    const size_t depth = m_reader.m_files.size();
    const DEV_TEXT_FILE* includer = depth > 1 ? m_reader.m_files[depth - 2] : nullptr;
    DEV_TEXT_DIAGNOSTICS::add(DEV_TEXT_DIAGNOSTIC{DEV_TEXT_DIAGNOSTIC::ERROR,
                                                  includer ? includer->path().full_path() : full,
                                                  includer ? includer->line_number() : 0,
                                                  "cannot read " + full + ": " + why, std::move(texts)});
}

DEV_TEXT_FILE::~DEV_TEXT_FILE() {
    // A file read to its end closes quietly; one that failed to open is closed by the archive
    // itself, with its note.
    if (m_open) m_archive.close(true);
    m_reader.m_files.pop_back();
    m_reader.m_identities.pop_back();
}

bool DEV_TEXT_FILE::at_end() const {
    return !m_has_pending && (!m_open || !m_archive.good() || m_archive.eof());
}

bool DEV_TEXT_FILE::next_uncounted_line(std::string& line) {
    // The last line counts even when the stream ends inside it.
    if (!m_open || !m_archive.good() || m_archive.eof()) {
        line.clear();
        return false;
    }
    return m_archive.getline(line, '\n') || !line.empty();
}

bool DEV_TEXT_FILE::next_line(std::string& line) {
    if (m_has_pending) {
        m_has_pending = false;
        line.swap(m_pending);
        return true;
    }
    if (!next_uncounted_line(line)) return false;
    ++m_line_number;
    return true;
}

void DEV_TEXT_FILE::put_back(std::string&& line) {
    m_pending = std::move(line);
    m_has_pending = true;
}
